"""Leak check: a million mixed calls into the probe module, watching memory.

Run (after a build, from the repository root):
    python3.9 bench/leak_check.py [--calls N] [--build DIR]

The probe module's environment is set up here when it is not set already.
Every call kind that allocates on either side is in the mix: strings of the
three widths, bytes, decimals, dates, GUIDs, by-ref lists, object variants,
managed collections and streams returned to Python, Python lists, generators
and files passed to managed code, and failures on both sides (managed
exceptions, conversion errors, errors inside callbacks), each caught.

Printed before, at every tenth of the run and after: the process's resident
set (VmRSS), the managed heap after a full collection, and the number of
probe disposables still alive. A handle leaked by the binding keeps its
managed object alive, so it shows in the heap and in the live count; a leaked
Python reference shows in the resident set.

The baseline is taken after a warm-up (JIT, type caches, allocator arenas).
The check fails (exit status 1) when, from the baseline to the end,
  - the resident set grew by more than 16 MiB (allocator and JIT noise stays
    well below; a leak of one 100-byte object per call would be ~95 MiB),
  - the managed heap grew by more than 4 MiB (one leaked handle per call would
    keep at least 24 MB alive), or
  - more than 100 probe disposables are still alive (each loop creates one).
"""
import argparse
import datetime as dt
import decimal
import io
import os
import sys
import time
import uuid

HERE = os.path.dirname(os.path.abspath(__file__))

RSS_LIMIT = 16 << 20
HEAP_LIMIT = 4 << 20
LIVE_LIMIT = 100


def setup_environment(build_dir):
    probe_dir = os.path.join(build_dir, "probe")
    os.environ.setdefault("NETCORE_WRAPPER_ASSEMBLY_DIR_orvane", os.path.join(probe_dir, "assemblies"))
    os.environ.setdefault("NETCORE_WRAPPER_NETCORE_DIR_orvane", os.path.join(build_dir, "stage", "orvane", "runtime"))
    sys.path.insert(0, probe_dir)


def rss_bytes():
    with open("/proc/self/status") as f:
        for line in f:
            if line.startswith("VmRSS:"):
                return int(line.split()[1]) * 1024
    raise RuntimeError("VmRSS not found in /proc/self/status")


def build_mix(probe):
    M, C = probe.Marshal, probe.Collections
    latin, ucs2, ucs4 = "h\xe9llo " * 8, "\u20ac\u4e2d" * 20, "\U0001F600x" * 20
    blob = os.urandom(1024)
    dec = decimal.Decimal("-12345.6789")
    now = dt.datetime(2024, 5, 6, 7, 8, 9, 123456)
    aware = now.replace(tzinfo=dt.timezone(dt.timedelta(hours=3)))
    span = dt.timedelta(days=3, seconds=7, microseconds=11)
    guid = uuid.UUID("00112233-4455-6677-8899-aabbccddeeff")

    def strings():
        M.echo_string(latin)
        M.echo_string(ucs2)
        M.echo_string(ucs4)
        return 3

    def scalars():
        M.echo_int64(-2 ** 40)
        M.echo_double(2 ** 63)
        M.echo_char("\u20ac")
        M.echo_nullable_int32(None)
        M.echo_nullable_double(1.5)
        return 5

    def buffers():
        M.echo_bytes(blob)
        M.echo_bytes(memoryview(blob)[10:20])
        return 2

    def values():
        M.echo_decimal(dec)
        M.decimal_bits(0.1)
        M.echo_date_time(now)
        M.echo_date_time_offset(aware)
        M.echo_time_span(span)
        M.echo_guid(guid)
        M.date_time_raw(dt.date(2000, 1, 1))
        return 7

    def variants():
        M.echo_object(latin)
        M.echo_object(dec)
        M.echo_object(aware)
        M.describe_object([1, "a", 2.5])
        M.describe_object((guid, span))
        return 5

    def by_ref():
        box = ["a"]
        M.ref_string(box)
        M.out_int32([])
        M.ref_int32([1])
        return 3

    def failures():
        for call in ((M.throw, "System.InvalidOperationException", "leak check"),
                     (M.echo_int32, True),
                     (M.echo_sbyte, 1000),
                     (M.echo_string, "\ud800"),
                     (M.describe_object, 2 ** 64),
                     (M.echo_decimal, decimal.Decimal("1E40"))):
            try:
                call[0](*call[1:])
            except (RuntimeError, TypeError, OverflowError, LookupError, UnicodeDecodeError):
                pass
            else:
                raise AssertionError("expected a failure from %r" % (call,))
        return 6

    def managed_collections():
        lst = C.list_of_ints(4)
        lst[0] = 9
        lst.append(4)
        _ = lst[1:3]
        arr = C.int_array(3)
        _ = list(arr)
        alist = C.array_list_of(2)
        alist.extend(["x", None])
        _ = list(C.range(3))
        _ = list(C.range_enumerator(3))
        _ = C.miscounted(2, 2) + []
        with C.new_disposable() as d:
            C.dispose_count(d)
        return 13

    def python_collections():
        C.count_of([1, 2, 3])
        C.join_list((1, "b"))
        C.join_enumerable(x for x in range(3))
        C.join_enumerator(iter([1, 2]))
        target = []
        C.append_to_list(target, "x")
        C.sum_typed([1, 2, 3])
        C.sum_array((1, 2))
        C.join_typed(["a", "b"])
        try:
            C.join_enumerable(_raising())
        except RuntimeError:
            pass
        return 9

    def streams():
        s = C.memory_stream_of(blob)
        s.read(100)
        s.readline()
        s.seek(0)
        s.readinto(bytearray(64))
        s.close()
        C.read_all(io.BytesIO(blob))
        C.write_chunks(io.BytesIO(), 3000, 1000)
        return 8

    return [strings, scalars, buffers, values, variants, by_ref, failures,
            managed_collections, python_collections, streams]


def _raising():
    yield 1
    raise ValueError("leak check")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--calls", type=int, default=1_000_000, help="probe calls to make after the warm-up")
    parser.add_argument("--build", default=os.path.join(HERE, "..", "build"), help="the build directory")
    parser.add_argument("--inject-leak", action="store_true",
                        help="keep every probe disposable alive, to show that the check catches it")
    args = parser.parse_args()

    setup_environment(os.path.abspath(args.build))
    import orvane_probe as probe

    diag = probe.Diagnostics
    mix = build_mix(probe)
    if args.inject_leak:
        kept = []
        mix.append(lambda: kept.append(probe.Collections.new_disposable()) or 1)

    def run(calls):
        done = 0
        while done < calls:
            for step in mix:
                done += step()
        return done

    def sample(label, done):
        heap, live, rss = diag.managed_heap_bytes(), diag.live_disposables(), rss_bytes()
        print("%-10s calls %9d  rss %8.1f MiB  managed heap %8.1f MiB  live disposables %d"
              % (label, done, rss / 2 ** 20, heap / 2 ** 20, live), flush=True)
        return rss, heap, live

    sample("start", 0)
    warm = run(max(args.calls // 10, 1000))
    rss0, heap0, _ = sample("baseline", warm)
    t0 = time.perf_counter()
    done = 0
    step = max(args.calls // 10, 1)
    while done < args.calls:
        done += run(min(step, args.calls - done))
        sample("", done)
    elapsed = time.perf_counter() - t0
    rss1, heap1, live1 = sample("end", done)

    print("%d calls in %.1f s (%.2f us per call)" % (done, elapsed, elapsed / done * 1e6))
    print("growth from baseline: rss %+.2f MiB (limit %d), managed heap %+.2f MiB (limit %d), live disposables %d (limit %d)"
          % ((rss1 - rss0) / 2 ** 20, RSS_LIMIT >> 20, (heap1 - heap0) / 2 ** 20, HEAP_LIMIT >> 20, live1, LIVE_LIMIT))
    failed = rss1 - rss0 > RSS_LIMIT or heap1 - heap0 > HEAP_LIMIT or live1 > LIVE_LIMIT
    print("LEAK CHECK FAILED" if failed else "leak check passed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
