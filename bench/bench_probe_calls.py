"""The binding's own cost for a method with one str argument, on a member with no work.

The probe module (a test-only module generated like orvane.folaro) has
`Calls.string_length(str) -> int`; its managed side only reads the length, so
the figure is argument conversion, crossing and result, after a warm-up (see
callbench.py). Run (after a build):

    PYTHONPATH=build/probe:build/bench \\
    NETCORE_WRAPPER_ASSEMBLY_DIR_orvane=build/probe/assemblies \\
    NETCORE_WRAPPER_NETCORE_DIR_orvane=build/stage/orvane/runtime \\
    python3.9 bench/bench_probe_calls.py
"""
import orvane_bench_noop
import orvane_probe
from callbench import per_call_ns, warm_up


def main():
    env = {"calls": orvane_probe.Calls, "noop": orvane_bench_noop.Noop()}
    statements = ("calls.string_length('x')", "calls.string_length('x' * 40)")
    warm_up(statements + ("noop.method('x')",), env)
    print(f"{'call':34} {'orvane ns':>10} {'no-op ns':>10} {'ratio':>7}")
    for ours in statements:
        a, b = per_call_ns(ours, "noop.method('x')", env)
        print(f"{ours:34} {a:10.1f} {b:10.1f} {a / b:7.2f}")


if __name__ == "__main__":
    main()
