#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# A second, independent reader of coordinate tables. It prints its results for comparison with the
# program's reader.
"""
usage: second_reader.py FOLDER

Every file below FOLDER, in the order of its path, gives the lines

    file <path below FOLDER, per cent encoded>
    raw <points of the outline in file units>
    points <points of the normalised outline>
    size <thickness text>
    crests <text of the stations of the crests>
    p <x> <y>            (each point: the 16 hexadecimal digits of both doubles)
    row <text>           (each row of the outline's table, a tab written as \\t)

All numbers that are not a number are written as "nan".
"""

import pathlib
import re
import struct
import sys
import unicodedata
import urllib.parse
from decimal import ROUND_HALF_UP, Context, Decimal

SINGLE_MAX = 3.4028234663852886e38
REMOVED = "?!'`_@#$%^&*(){}[]|;:/><~=+\u00ab\u00bb"
NUMBER = re.compile(r"-?([0-9]+\.?[0-9]*|\.[0-9]+)")


# Texts and fields


def text_lines(data):
    """The lines of a file: decoded by its byte-order mark, without carriage returns."""
    marks = [
        (b"\xff\xfe\x00\x00", "utf-32-le"),
        (b"\x00\x00\xfe\xff", "utf-32-be"),
        (b"\xff\xfe", "utf-16-le"),
        (b"\xfe\xff", "utf-16-be"),
        (b"\xef\xbb\xbf", "utf-8"),
    ]
    codec = "utf-8"
    for mark, name in marks:
        if data.startswith(mark):
            data, codec = data[len(mark):], name
            break
    lines = data.decode(codec, errors="replace").replace("\r", "").split("\n")
    return lines[:-1] if lines[-1] == "" else lines


def is_space(character):
    return character in "\t\n\v\f\r\x85" or unicodedata.category(character) in ("Zs", "Zl", "Zp")


def trimmed(text):
    start, end = 0, len(text)
    while start < end and is_space(text[start]):
        start += 1
    while end > start and is_space(text[end - 1]):
        end -= 1
    return text[start:end]


def cleaned(line):
    line = line.replace("\t", " ").replace(",", ".")
    return trimmed("".join(c for c in line if c not in REMOVED))


def has_letter(line):
    """Characters beyond 16 bits are stored as two halves, which are not letters."""
    return any(ord(c) < 0x10000 and unicodedata.category(c).startswith("L") for c in line)


def is_digit(character):
    return ord(character) < 0x10000 and unicodedata.category(character) == "Nd"


def fields(line):
    found, index, apart = ["", "", ""], 0, False
    for c in line:
        if is_digit(c) or c in ".-":
            if index < 3:
                found[index] += c
            apart = False
        elif not apart:
            index += 1
            apart = True
    return found


def repaired(field):
    if field[:1] == ".":
        return field.replace(".", "0.")
    return field.replace("-.", "-0.")


def to_double(field):
    if not NUMBER.fullmatch(field):
        return 0.0
    value = float(field)
    if value in (float("inf"), float("-inf")):
        return 0.0
    if value == 0.0 and re.search("[1-9]", field):
        return 0.0
    return value


def single(value):
    try:
        return struct.unpack("<f", struct.pack("<f", value))[0]
    except OverflowError:
        return float("inf") if value > 0 else float("-inf")


def coordinate(field):
    value = to_double(repaired(field))
    return single(value) if abs(value) <= SINGLE_MAX else 0.0


# Layouts


def numeric_lines(lines):
    for number, line in enumerate(lines):
        line = cleaned(line)
        if line and not has_letter(line):
            yield number, line


def layout_of(lines):
    probed = []
    for number, line in numeric_lines(lines):
        probed.append((number, line))
        if len(probed) == 3:
            break
    if len(probed) < 3 and (not probed or probed[-1][0] != len(lines) - 1):
        return 0
    separators = probed[-1][1][:-1].count(".")
    if separators != 2 or len(probed) < 3:
        return separators
    shift, firsts = 0.0, []
    for number, line in probed:
        first = fields(line)[0]
        if to_double(first) <= 0.0 and number <= 3:
            shift = -1.0
        firsts.append(coordinate(first) + shift)
    return 1 if firsts[0] >= 1.0 and firsts[1] <= 0.0 and firsts[2] > 0.0 else 2


def raw_outline(lines):
    layout = layout_of(lines)
    rows = [[coordinate(f) for f in fields(line)] for _, line in numeric_lines(lines)]
    if layout == 1:
        given = [(x, y) for x, y, _ in rows[1:]]
        return given[::-1] + [(x, -y) for x, y in given[1:]]
    if layout == 2:
        return [(x, y) for x, y, _ in rows]
    if layout == 3:
        return [(x, low) for x, _, low in rows[::-1]] + [(x, up) for x, up, _ in rows]
    return []


# Outlines


def quotient(a, b):
    if b != 0.0:
        return a / b
    if a == 0.0 or a != a:
        return float("nan")
    return float("inf") if (a > 0.0) == (str(b)[0] != "-") else float("-inf")


def normalised(points):
    if not points:
        return []
    least, greatest = 10000.0, -10000.0
    for x, _ in points:
        least = x if x < least else least
        greatest = x if x > greatest else greatest
    extent = greatest - least
    scaled = [(quotient(x, extent), quotient(y, extent)) for x, y in points]
    first_x, first_y = scaled[0]
    moved = [(x - first_x + 1.0, y - first_y) for x, y in scaled]
    return [(x, y) for x, y in moved if not (x < 0.0 or x > 1.0)]


def fixed(value, decimals):
    """Fixed notation; ties are rounded away from zero."""
    if value != value:
        return "nan"
    if value in (float("inf"), float("-inf")):
        return "inf" if value > 0 else "-inf"
    if value == 0.0:
        value = 0.0
    step = Decimal(1).scaleb(-decimals)
    return f"{Decimal(value).quantize(step, ROUND_HALF_UP, Context(prec=400)):f}"


def thickness_texts(points):
    if not points:
        return "", ""
    lowest, highest, low, high = 10000.0, -10000.0, 0, 0
    for i, (_, y) in enumerate(points):
        if y < lowest:
            lowest, low = y, i
        if y > highest:
            highest, high = y, i
    height = highest - lowest
    station = (points[high][0] + points[low][0]) * 100 * 0.5
    top, bottom = 100 * points[high][0], 100 * points[low][0]
    return (
        f" Thickness: {fixed(height * 100, 2)}  at  {fixed(station, 2)} %",
        f" Top: at {fixed(top, 2)}   Bottom: at: {fixed(bottom, 2)} ",
    )


def area_sum(points):
    total = 0.0
    for (x1, y1), (x2, y2) in zip(points, points[1:]):
        a, b, c, d = single(x1), single(y1), single(x2), single(y2)
        total = single(total + single(single(a * d) - single(b * c)))
    return total


def table_rows(points):
    if area_sum(points) > 0.0:
        order = points[1:]
    else:
        order = points[:0:-1]
    listed = [(1.0, 0.0)] + [p for p in order if 0.99999 > p[0]] + [(1.0, 0.0)]
    return [f"{fixed(x, 5):>7}   {fixed(y, 5):>7} \t" for x, y in listed]


# Output


def bits(value):
    return "nan" if value != value else struct.pack(">d", value).hex()


def describe(path, data):
    lines = text_lines(data)
    raw = raw_outline(lines)
    points = normalised(normalised(raw))
    height, crests = thickness_texts(points)
    print("file", urllib.parse.quote(path, safe="/"))
    print("raw", len(raw))
    print("points", len(points))
    print("size", height)
    print("crests", crests)
    for x, y in points:
        print("p", bits(x), bits(y))
    for row in table_rows(points):
        print("row", row.replace("\t", "\\t"))


def main(arguments):
    if len(arguments) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[0])
    sys.stdout.reconfigure(encoding="utf-8", newline="\n")
    names = [p.relative_to(folder).as_posix() for p in folder.rglob("*") if p.is_file()]
    for name in sorted(names):
        describe(name, (folder / name).read_bytes())
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
