"""Shared helpers of the Python end-to-end suites."""
import os
import shutil
import subprocess
import sys
import tempfile

SOURCE_DIR = os.environ.get("ORVANE_SOURCE_DIR", os.path.abspath(os.path.join(os.path.dirname(__file__), "..", "..")))
BUILD_DIR = os.environ.get("ORVANE_BUILD_DIR", os.path.join(SOURCE_DIR, "build"))
STAGE_DIR = os.path.join(BUILD_DIR, "stage")


def _find_corpus():
    # The decks live beside the project (../shared/corpus); a clone elsewhere
    # finds them by walking up, or through ORVANE_CORPUS_DIR.
    given = os.environ.get("ORVANE_CORPUS_DIR")
    if given:
        return given
    here = os.path.abspath(SOURCE_DIR)
    while True:
        for candidate in (os.path.join(here, "shared", "corpus"), os.path.join(here, "..", "shared", "corpus")):
            if os.path.isdir(candidate):
                return os.path.abspath(candidate)
        parent = os.path.dirname(here)
        if parent == here:
            return "/work/shared/corpus"
        here = parent


CORPUS_DIR = _find_corpus()


def clean_env(**extra):
    """The environment of a fresh process that finds the staged package and nothing else."""
    env = {k: v for k, v in os.environ.items()
           if not k.startswith("NETCORE_WRAPPER_") and k != "COREHOST_TRACE"}
    env["PYTHONPATH"] = STAGE_DIR
    env.update(extra)
    return env


def run_python(code, env=None, cwd=None, timeout=120):
    """Runs code in a fresh interpreter; returns the CompletedProcess (bytes output)."""
    return subprocess.run([sys.executable, "-c", code], env=env or clean_env(), cwd=cwd,
                          capture_output=True, timeout=timeout)


def _link_or_copy(src, dst):
    try:
        os.link(src, dst)
    except OSError:
        shutil.copy2(src, dst)


class StageCopy:
    """A throw-away copy of the staged package (links, not copies, of the big files),
    for tests that break one piece of it."""

    def __init__(self):
        self.root = tempfile.mkdtemp(prefix="orvane-stage-")
        self.pkg = os.path.join(self.root, "orvane")
        shutil.copytree(os.path.join(STAGE_DIR, "orvane"), self.pkg, symlinks=True,
                        copy_function=_link_or_copy)

    def remove(self, relative):
        path = os.path.join(self.pkg, relative)
        if os.path.isdir(path):
            shutil.rmtree(path)
        else:
            os.remove(path)

    def env(self, **extra):
        env = clean_env(**extra)
        env["PYTHONPATH"] = self.root
        return env

    def close(self):
        shutil.rmtree(self.root, ignore_errors=True)


def png_bytes(width=8, height=6, seed=0):
    """A small RGB PNG made with the standard library; seed changes the pixels."""
    import struct
    import zlib
    rows = b"".join(
        b"\x00" + bytes(c for x in range(width) for c in ((x * 31 + seed) % 256, (y * 47) % 256, 128))
        for y in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows))
            + chunk(b"IEND", b""))
