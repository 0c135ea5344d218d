"""Timing of single calls for the call benchmarks: statements next to a baseline,
the empty loop subtracted, after the runtime has settled.

The library's assemblies are precompiled; the runtime replaces the code of a
member that keeps being called with optimised code, in the background, some
time after the first call (a tenth of a second to a second on this machine,
depending on how busy it is). Until then a call runs the precompiled code.
`warm_up` calls the statements until that has happened, so that the figures
are the steady state; `cold_ns` times the first calls, before any warm-up.
"""
import time
import timeit

ROUNDS = 7
NUMBER = 200_000
WARM_UP_SECONDS = 2.0


def cold_ns(statement, env, number=NUMBER):
    """Nanoseconds per call of the first `number` calls of `statement`, loop subtracted."""
    first = timeit.Timer(statement, globals=env).timeit(number)
    empty = timeit.Timer("pass").timeit(number)
    return (first - empty) / number * 1e9


def warm_up(statements, env, seconds=WARM_UP_SECONDS):
    """Calls the statements in turn for `seconds`, pausing between rounds so that
    the runtime's background compiler gets a core even on a busy machine."""
    timers = [timeit.Timer(s, globals=env) for s in statements]
    deadline = time.perf_counter() + seconds
    while time.perf_counter() < deadline:
        for timer in timers:
            timer.timeit(NUMBER // 4)
        time.sleep(0.05)


def per_call_ns(ours, base, env):
    """Best-of-ROUNDS nanoseconds per call of both statements, measured
    alternately so that a busy machine slows both alike; the empty loop is
    subtracted."""
    timers = [timeit.Timer(s, globals=env) for s in ("pass", ours, base)]
    best = [float("inf")] * 3
    for _ in range(ROUNDS):
        for i, timer in enumerate(timers):
            best[i] = min(best[i], timer.timeit(NUMBER) / NUMBER)
    return (best[1] - best[0]) * 1e9, (best[2] - best[0]) * 1e9
