"""The binding's own cost for a method with one str argument, on a member with no work.

The probe module (a test-only module generated like orvane.folaro) has
`Calls.string_length(str) -> int`; its managed side only reads the length, so
the figure is argument conversion, crossing and result. Run (after a build):

    PYTHONPATH=build/probe:build/bench \\
    NETCORE_WRAPPER_ASSEMBLY_DIR_orvane=build/probe/assemblies \\
    NETCORE_WRAPPER_NETCORE_DIR_orvane=build/stage/orvane/runtime \\
    python3.9 bench/bench_probe_calls.py
"""
import timeit

import orvane_bench_noop
import orvane_probe

ROUNDS = 7
NUMBER = 200_000


def per_call_ns(ours, base, env):
    """Best-of-ROUNDS nanoseconds per call, both statements measured alternately, loop subtracted."""
    timers = [timeit.Timer(s, globals=env) for s in ("pass", ours, base)]
    best = [float("inf")] * 3
    for _ in range(ROUNDS):
        for i, timer in enumerate(timers):
            best[i] = min(best[i], timer.timeit(NUMBER) / NUMBER)
    return (best[1] - best[0]) * 1e9, (best[2] - best[0]) * 1e9


def main():
    env = {"calls": orvane_probe.Calls, "noop": orvane_bench_noop.Noop()}
    print(f"{'call':34} {'orvane ns':>10} {'no-op ns':>10} {'ratio':>7}")
    for ours in ("calls.string_length('x')", "calls.string_length('x' * 40)"):
        a, b = per_call_ns(ours, "noop.method('x')", env)
        print(f"{ours:34} {a:10.1f} {b:10.1f} {a / b:7.2f}")


if __name__ == "__main__":
    main()
