"""Build-and-save benchmark: a 100-slide deck made from Python, in process.

Run (after a build):
    PYTHONPATH=build/stage python3.9 bench/bench_build_deck.py [out.pptx]

Each slide has a title, five bullet paragraphs, a 4x4 table with text in
every cell and one picture (the same PNG on every slide, so the deck holds
one image part). The deck is built and saved to memory once to warm up, then
five more times; the best and median wall-clock times are printed, split into
building and saving. With an argument, the last deck is also written there.
"""
import io
import statistics
import struct
import sys
import time
import zlib

import orvane.folaro as f

SLIDES = 100
RUNS = 5


def png_bytes(width=64, height=48):
    """A small RGB gradient as a PNG, made with the standard library."""
    rows = b"".join(
        b"\x00" + bytes(c for x in range(width) for c in (x * 4 % 256, y * 5 % 256, 128))
        for y in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


def build(picture):
    pres = f.Presentation()
    layout = pres.layout_slides.get_by_type(f.SlideLayoutType.TITLE_AND_OBJECT)
    slides = pres.slides
    image = pres.images.add_image(picture)
    for n in range(1, SLIDES + 1):
        slide = slides.add_empty_slide(layout)
        shapes = slide.shapes
        shapes[0].text_frame.text = f"Slide {n}"
        body = shapes[1]
        body.width = 420
        body.text_frame.text = "\n".join(f"Point {k} of slide {n}" for k in range(1, 6))
        table = shapes.add_table(480, 140, [100.0] * 4, [30.0] * 4)
        for r, row in enumerate(table.rows):
            for c, cell in enumerate(row):
                cell.text_frame.text = f"r{r + 1}c{c + 1}"
        shapes.add_picture_frame(f.ShapeType.RECT, 560, 320, 160, 120, image)
    return pres


def timed_run(picture):
    t0 = time.perf_counter()
    pres = build(picture)
    t1 = time.perf_counter()
    out = io.BytesIO()
    pres.save(out, f.SaveFormat.PPTX)
    t2 = time.perf_counter()
    return (t1 - t0) * 1000, (t2 - t1) * 1000, out


def main():
    picture = png_bytes()
    timed_run(picture)  # warm-up: first calls bind entries and compile code
    runs = [timed_run(picture) for _ in range(RUNS)]
    totals = [b + s for b, s, _ in runs]
    best = min(range(RUNS), key=lambda i: totals[i])
    b, s, out = runs[best]
    print(f"{SLIDES} slides, {len(out.getvalue()) / 1024:.0f} KiB")
    print(f"best of {RUNS}: {totals[best]:.1f} ms (build {b:.1f} ms, save {s:.1f} ms); "
          f"median {statistics.median(totals):.1f} ms")
    if len(sys.argv) > 1:
        with open(sys.argv[1], "wb") as target:
            target.write(out.getvalue())


if __name__ == "__main__":
    main()
