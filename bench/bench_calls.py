"""Call-path micro-benchmark: the binding side by side with a no-op extension.

Run (after a build):
    PYTHONPATH=build/stage:build/bench python3.9 bench/bench_calls.py

Prints nanoseconds per call for an int property get, an object-returning
property get (wrapper creation included) and a method call with one str
argument, each next to the no-op C baseline doing the same Python-side work,
then the time from interpreter start to the first managed call returning,
measured in fresh processes.
"""
import os
import statistics
import subprocess
import sys
import time
import timeit

import orvane_bench_noop
import orvane.folaro as f

ROUNDS = 7
NUMBER = 200_000


def per_call_ns(stmt, env):
    timer = timeit.Timer(stmt, globals=env)
    loop = min(timeit.Timer("pass").repeat(ROUNDS, NUMBER)) / NUMBER
    best = min(timer.repeat(ROUNDS, NUMBER)) / NUMBER
    return (best - loop) * 1e9


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
    env = {"pres": pres, "noop": noop, "props": pres.document_properties}

    rows = [
        ("int property get", "pres.first_slide_number", "noop.int_value"),
        ("object property get", "pres.slides", "noop.obj_value"),
        ("method, one str argument", "props.contains_custom_property('x')", "noop.method('x')"),
    ]
    print(f"{'call':28} {'orvane ns':>10} {'no-op ns':>10} {'ratio':>7}")
    for name, ours, base in rows:
        a = per_call_ns(ours, env)
        b = per_call_ns(base, env)
        print(f"{name:28} {a:10.1f} {b:10.1f} {a / b:7.2f}")
    median, best = first_call_ms()
    print(f"interpreter start to first managed call: median {median:.1f} ms, best {best:.1f} ms")


if __name__ == "__main__":
    main()
