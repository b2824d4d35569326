#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Writes the initial inputs of the fuzz targets into the folders of corpus.
import math
import pathlib
import struct

CORPUS = pathlib.Path(__file__).parent / "corpus"
POINTS, KNOTS = 30, 300
FLAT_SECTION = [
    (180, 50), (140, 52), (80, 56), (30, 57), (20, 51),
    (20, 49), (30, 44), (80, 44), (140, 48), (180, 50),
]


def spline(points, name="/a.spl", count=None, knot_count=None, degree=2, knots=None, openings=(0, 0)):
    count = len(points) if count is None else count
    knot_count = count + 3 if knot_count is None else knot_count
    if knots is None:
        last = max(len(points) + 2, 1)
        knots = [i / last for i in range(last + 1)]
    knots = (knots + [0.0] * KNOTS)[:KNOTS]
    points = (points + [(0.0, 0.0)] * POINTS)[:POINTS]
    text = name.encode("utf-16-be")
    data = struct.pack(">I", len(text)) + text
    data += struct.pack(">iiii", count, knot_count, degree, degree + 1 if degree < 2**31 - 1 else 0)
    data += struct.pack(f">{KNOTS}d", *knots)
    for x, y in points:
        data += struct.pack(">4d", x, y, 0.0, 0.0)
    return data + struct.pack(">3d", *openings, 0.0)


def splines():
    full = [(100 + 80 * math.cos(i / 29 * 2 * math.pi), 50 + 9 * math.sin(i / 29 * 2 * math.pi))
            for i in range(POINTS)]
    whole = spline(FLAT_SECTION, openings=(12.5, 75.0))
    yield "symmetric", whole
    yield "full", spline(full)
    yield "repeated-knots", spline(FLAT_SECTION, knots=[0.5] * 20)
    yield "decreasing-knots", spline(FLAT_SECTION, knots=[1 - i / 12 for i in range(13)])
    yield "not-finite", spline([(math.nan, math.inf), (-math.inf, 1e308), (1e308, -1e308), (0, 0)],
                               knots=[math.nan, -math.inf, 0.2, 0.4, 0.6, 1e308, math.inf],
                               openings=(math.nan, 1e308))
    yield "huge-counts", spline(full, count=2**31 - 1, knot_count=2**31 - 1, degree=2**31 - 1)
    yield "negative-counts", spline(full, count=-1, knot_count=-2**31, degree=-2**31)
    yield "degree-five", spline(full, degree=5, knot_count=36, knots=[i / 35 for i in range(36)])
    yield "one-place", spline([(30.0, 40.0)] * 5)
    yield "foreign", b"\x00\x00\x00\x03" + whole[4:900]
    yield "long-name", spline(FLAT_SECTION, name="<b>%1</b>/" * 60)


def tables():
    upper = [(1 - i / 8, round(0.3 * (1 - i / 8) ** 0.5 * i / 8, 5)) for i in range(9)]
    outline = upper + [(x, -y) for x, y in reversed(upper[:-1])]
    rows = [f"{x:.5f}  {y:.5f}" for x, y in outline]
    yield "outline", "NACA section\n" + "\n".join(rows) + "\n"
    yield "no-final-line-feed", "\r\n".join(rows)
    half = [f"{x:.5f}  {y:.5f}" for x, y in reversed(upper)]
    yield "half-contour", "title\n\n\n61. 61.\n" + "\n".join(half) + "\n"
    yield "three-columns", "\n".join(f"{x:.4f} {y:.4f} -{y:.4f}" for x, y in reversed(upper)) + "\n"
    yield "commas-and-marks", "1,000;\t0,001\n0,5 ;\t,06\n0,0|-,01\n\"0.5\" 0.5\n.5 1.5 -.5 9\n"
    yield "wide-text", "\n".join(rows).encode("utf-16")
    yield "carriage-returns", "\r".join(rows)
    yield "damaged-text", b"1.0 0.0\xc3\n0.5\x000.1\n\xef\xbb\xbf0.0 0.0\n\xff\xfe0.5 -0.1\n1.0 0.0\xe2\x82"
    yield "long-numbers", f"{'9' * 60} 0.0\n0.{'3' * 40} -{'1' * 20}.5\n1e308 0.0\n--5 1.2.3\n1. .5\n5- -\n"
    yield "one-place", "0.5 0.5\n0.5 0.5\n0.5 0.5\n"
    halves = ["  ".join((f"{x:.5f}", f"{y:.5f}")) for side in (upper, [(x, -y) for x, y in upper])
              for x, y in reversed(side)]
    yield "halves", "Section\n9. 9.\n\n" + "\n".join(halves[:9] + [""] + halves[9:]) + "\n"
    yield "flag-and-counts", "F\nN\n0 Sym Flag\n9 Upper\n9 Lower\n" + "\n".join(halves) + "\n"
    yield "profile", "p\n17\n10\n3\n6\n" + "\n".join(rows) + "\n 1 1A 1 47.0\n"
    yield "point-numbers", "\n".join(f"{i} {row} 0.0" for i, row in enumerate(rows, 1)) + "\n"
    yield "pairs", "x,y,x,y\n" + "\n".join(f"{x},{y},{x},-{y}" for x, y in upper) + "\n"
    yield "in-turn", "\n".join(f"{x} -{y}\n{x} {y}" for x, y in reversed(upper)) + "\n"
    yield "elements", "\n".join(rows) + "\n999.0 999.0\n" + "\n".join(rows) + "\n"
    yield "percent", ";x\n" + "\n".join(f"{100 * x:.2f};{100 * y:.3f}" for x, y in outline) + "\n"


def command_lines():
    """Bytes that choose words, a null character, and standard input."""
    inputs = dict(tables()) | dict(splines())
    for index, name in enumerate(("halves", "profile", "symmetric", "percent", "elements")):
        data = inputs[name]
        for verb in range(1, 7):
            choices = bytes((17 * verb + 29 * index * step + step) % 255 + 1 for step in range(3 * verb))
            yield (f"{name}-{verb}",
                   bytes([verb]) + choices + b"\0" + (data.encode() if isinstance(data, str) else data))


def ribs():
    """Bytes that choose options, a null character, and a list of ribs."""
    lists = {
        "row": "@,2850\n",
        "wing": 'file,chord,text,count,mirror\n@,900,"R {n}, left",2,no\n@,1200.5,,1,yes\n',
        "no-chord": "@\n",
        "comments": "# a wing\n\n@,500,R7\n",
        "faults": '@,nan\n@,5,,0\n@,5,"a\n@,5,,1,maybe\n,,,,,\nnone.dat,5\n',
        "bounds": "@,0.001\n@,100000\n",
    }
    for index, (name, text) in enumerate(lists.items()):
        for step in range(4):
            choices = bytes((29 * index + 17 * i * step + step) % 255 + 1 for i in range(4 * step + 1))
            yield f"{name}-{step}", choices + b"\0" + text.encode()


for folder, inputs in (("spline", splines()), ("tables", tables()), ("cli", command_lines()),
                       ("ribs", ribs())):
    (CORPUS / folder).mkdir(parents=True, exist_ok=True)
    for name, data in inputs:
        (CORPUS / folder / name).write_bytes(data.encode() if isinstance(data, str) else data)
