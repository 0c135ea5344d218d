"""Call-path micro-benchmark: the binding side by side with a no-op extension.

Run (after a build):
    PYTHONPATH=build/stage:build/bench python3.9 bench/bench_calls.py

Prints nanoseconds per call for an int property get, an object-returning
property get (wrapper creation included) and a method call with one str
argument, each next to the no-op C baseline doing the same Python-side work,
then the time from interpreter start to the first managed call returning,
measured in fresh processes. The per-call figures are the steady state, after a
warm-up (see callbench.py); the last column is the first 200,000 calls of each,
timed before it.
"""
import os
import statistics
import subprocess
import sys
import time

import orvane_bench_noop
from callbench import cold_ns, per_call_ns, warm_up
import orvane.folaro as f


def first_call_ms(runs=15):
    # The parent notes the wall clock just before it starts the child; the
    # child prints the wall clock when its first managed call has returned.
    # Process creation is counted, which makes the figure slightly pessimistic.
    child = (
        "import time\n"
        "import orvane.folaro as f\n"
        "f.LoadOptions()\n"
        "print(time.time())\n"
    )
    times = []
    for _ in range(runs):
        t0 = time.time()
        out = subprocess.run([sys.executable, "-c", child], capture_output=True, text=True,
                             env=dict(os.environ), check=True)
        times.append((float(out.stdout.strip()) - t0) * 1000)
    return statistics.median(times), min(times)


def main():
    pres = f.Presentation()
    noop = orvane_bench_noop.Noop()
    opts = f.LoadOptions()
    # The baseline returns 1, a cached small int; so does ours, so neither
    # side pays for allocating the int.
    opts.max_zip_entries = 1
    env = {"pres": pres, "noop": noop, "opts": opts, "protection": pres.protection_manager}

    rows = [
        # Members whose managed side does next to nothing, so that the figure
        # is the binding's own cost.
        ("int property get", "opts.max_zip_entries", "noop.int_value"),
        ("object property get", "pres.slides", "noop.obj_value"),
        ("method, one str argument", "protection.check_write_protection('x')", "noop.method('x')"),
    ]
    cold = [cold_ns(ours, env) for _, ours, _ in rows]
    warm_up([ours for _, ours, _ in rows] + [base for _, _, base in rows], env)
    print(f"{'call':28} {'orvane ns':>10} {'no-op ns':>10} {'ratio':>7} {'first calls ns':>15}")
    for (name, ours, base), first in zip(rows, cold):
        a, b = per_call_ns(ours, base, env)
        print(f"{name:28} {a:10.1f} {b:10.1f} {a / b:7.2f} {first:15.1f}")
    median, best = first_call_ms()
    print(f"interpreter start to first managed call: median {median:.1f} ms, best {best:.1f} ms")


if __name__ == "__main__":
    main()
