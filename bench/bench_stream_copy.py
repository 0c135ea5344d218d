"""Copy speed of a managed stream read from Python.

Run (after a build, from the repository root):
    python3.9 bench/bench_stream_copy.py [--mib N] [--build DIR]

A managed MemoryStream of N MiB (50 by default, from the probe's
memory_stream_of) is copied into a Python file with shutil.copyfileobj, and
the same bytes are copied with shutil.copyfileobj from one Python file to
another. Both destinations are files in the same temporary folder; the source
file is read once beforehand so that it comes from the page cache. Best of
several rounds each. Prints both speeds and their ratio; the target is a
ratio of at least 1/3 (exit status 1 below it).
"""
import argparse
import os
import shutil
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
ROUNDS = 7
TARGET_RATIO = 1 / 3


def setup_environment(build_dir):
    probe_dir = os.path.join(build_dir, "probe")
    os.environ.setdefault("NETCORE_WRAPPER_ASSEMBLY_DIR_orvane", os.path.join(probe_dir, "assemblies"))
    os.environ.setdefault("NETCORE_WRAPPER_NETCORE_DIR_orvane", os.path.join(build_dir, "stage", "orvane", "runtime"))
    sys.path.insert(0, probe_dir)


def best_seconds(copy_once):
    times = []
    for _ in range(ROUNDS):
        t0 = time.perf_counter()
        copy_once()
        times.append(time.perf_counter() - t0)
    return min(times)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--mib", type=int, default=50, help="size of the copied data in MiB")
    parser.add_argument("--build", default=os.path.join(HERE, "..", "build"), help="the build directory")
    args = parser.parse_args()

    setup_environment(os.path.abspath(args.build))
    import orvane_probe as probe

    size = args.mib << 20
    data = os.urandom(size)
    managed = probe.Collections.memory_stream_of(data)
    work = tempfile.mkdtemp(prefix="orvane-bench-")
    try:
        source_path = os.path.join(work, "source.bin")
        target_path = os.path.join(work, "target.bin")
        with open(source_path, "wb") as f:
            f.write(data)
        with open(source_path, "rb") as f:
            while f.read(1 << 20):
                pass

        def managed_to_file():
            managed.seek(0)
            with open(target_path, "wb") as dst:
                shutil.copyfileobj(managed, dst)

        def file_to_file():
            with open(source_path, "rb") as src, open(target_path, "wb") as dst:
                shutil.copyfileobj(src, dst)

        ours = best_seconds(managed_to_file)
        with open(target_path, "rb") as f:
            if f.read() != data:
                raise SystemExit("the managed stream's copy differs from the data")
        python = best_seconds(file_to_file)
    finally:
        shutil.rmtree(work, ignore_errors=True)

    mib = size / 2 ** 20
    ratio = python / ours
    print("managed stream -> Python file: %8.1f MiB/s (%.1f ms)" % (mib / ours, ours * 1e3))
    print("Python file    -> Python file: %8.1f MiB/s (%.1f ms)" % (mib / python, python * 1e3))
    print("ratio (managed / Python): %.2f (target >= %.2f)" % (ratio, TARGET_RATIO))
    return 0 if ratio >= TARGET_RATIO else 1


if __name__ == "__main__":
    sys.exit(main())
