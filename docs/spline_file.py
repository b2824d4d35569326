#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
"""Reads and writes spline files (.spl). A single module for Python 3.7 or later, no dependencies.

    import spline_file
    spline = spline_file.load("wing.spl")
    spline.points[3] = (410.5, 300.25)
    spline_file.save("moved.spl", spline)

As a program it prints the content of a file: spline_file.py FILE
"""
import struct
import sys
from dataclasses import dataclass, field
from typing import List, Optional, Tuple

POINTS, KNOTS = 30, 300  # the capacity of every file
NULL = 0xFFFFFFFF  # length of a missing name; an empty name has the length 0
VALUES = struct.Struct(f">4i {KNOTS + 4 * POINTS + 3}d")

# aerolith-cli draws its splines in an editor of 1024 x 768 pixels.
LEADING_EDGE, CHORD_LINE, CHORD = 102, 383, 819


@dataclass
class Spline:
    """A quadratic B-spline. Points are in pixels of the editor that drew it, y downwards."""

    points: List[Tuple[float, float]]
    knots: List[float]
    openings: Tuple[float, float] = (0.0, 0.0)  # O-1 and O-2, percent of the chord
    name: Optional[str] = ""
    degree: int = 2
    order: int = 3
    # Unused values that are kept: behind the points and knots in use, and beside the points.
    other_points: List[Tuple[float, float]] = field(default_factory=list)
    second_points: List[Tuple[float, float]] = field(default_factory=list)
    other_knots: List[float] = field(default_factory=list)
    number: float = 0.0


def uniform_knots(count):
    """The uniform knots of the editor for a number of control points."""
    return [i / (count + 2) for i in range(count + 3)]


def from_chord(points, openings=(0.0, 0.0), name=""):
    """A spline with control points in chord units: nose (0, 0), trailing edge (1, 0), y upwards."""
    pixels = [(LEADING_EDGE + CHORD * x, CHORD_LINE - CHORD * y) for x, y in points]
    return Spline(pixels, uniform_knots(len(pixels)), tuple(openings), name)


def decode(data):
    """The spline in the bytes of a file. Raises ValueError if they are invalid."""
    if len(data) < 4:
        raise ValueError(f"{len(data)} bytes are not a spline file")
    (length,) = struct.unpack_from(">I", data)
    used = 0 if length == NULL else length
    if len(data) != 4 + used + VALUES.size or used % 2 != 0:
        raise ValueError(f"{len(data)} bytes with a name of {used} are not a spline file")
    name = None if length == NULL else data[4 : 4 + used].decode("utf-16-be", "surrogatepass")
    points, knots, degree, order, *numbers = VALUES.unpack_from(data, 4 + used)
    if not 0 <= points <= POINTS or not 0 <= knots <= KNOTS:
        raise ValueError(f"{points} control points and {knots} knots")
    places = numbers[KNOTS : KNOTS + 4 * POINTS]
    first = list(zip(places[0::4], places[1::4]))
    second = list(zip(places[2::4], places[3::4]))
    start, end, number = numbers[KNOTS + 4 * POINTS :]
    return Spline(first[:points], numbers[:knots], (start, end), name, degree, order,
                  first[points:], second, numbers[knots:KNOTS], number)


def filled(values, spare, room, nothing):
    """The values, followed by the spare ones, cut or padded to the length `room`."""
    if len(values) > room:
        raise ValueError(f"{len(values)} values, at most {room}")
    return (list(values) + list(spare) + [nothing] * room)[:room]


def encode(spline):
    """The bytes of a file. Raises ValueError if there are too many values."""
    first = filled(spline.points, spline.other_points, POINTS, (0.0, 0.0))
    second = filled(spline.second_points, [], POINTS, (0.0, 0.0))
    numbers = filled(spline.knots, spline.other_knots, KNOTS, 0.0)
    for place, beside in zip(first, second):
        numbers += [*place, *beside]
    text = b"" if spline.name is None else spline.name.encode("utf-16-be", "surrogatepass")
    head = struct.pack(">I", NULL if spline.name is None else len(text)) + text
    return head + VALUES.pack(len(spline.points), len(spline.knots), spline.degree, spline.order,
                              *numbers, *spline.openings, spline.number)


def load(path):
    with open(path, "rb") as file:
        return decode(file.read())


def save(path, spline):
    data = encode(spline)
    with open(path, "wb") as file:
        file.write(data)


def main():
    if len(sys.argv) != 2:
        sys.exit("Usage: spline_file.py FILE")
    spline = load(sys.argv[1])
    print(f"name    {spline.name!r}")
    print(f"degree  {spline.degree} (order {spline.order})")
    print("knots   " + " ".join(f"{knot:.6g}" for knot in spline.knots))
    for i, (x, y) in enumerate(spline.points):
        print(f"point   {i:2} {x:10.3f} {y:10.3f}")
    print("opening {:g} % to {:g} %".format(*spline.openings))


if __name__ == "__main__":
    main()
