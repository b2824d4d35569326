#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Prints what a spline file holds. Usage: read_spline.py FILE
import struct
import sys

data = open(sys.argv[1], "rb").read()
(length,) = struct.unpack_from(">I", data)
length = 0 if length == 0xFFFFFFFF else length  # a null string has no characters
name = data[4 : 4 + length].decode("utf-16-be")
points, knots, degree, order = struct.unpack_from(">4i", data, 4 + length)
values = struct.unpack_from(">300d 120d 3d", data, 4 + length + 16)
print(f"name    {name!r}")
print(f"degree  {degree} (order {order})")
print("knots   " + " ".join(f"{knot:.6g}" for knot in values[: max(0, min(knots, 300))]))
for i in range(max(0, min(points, 30))):
    x, y = values[300 + 4 * i : 302 + 4 * i]
    print(f"point   {i:2} {x:10.3f} {y:10.3f}")
print("opening {:g} % to {:g} %".format(*values[420:422]))
