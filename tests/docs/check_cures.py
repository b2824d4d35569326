#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# The cures by hand in the guide: what the window shows of a table before and after.
# Usage: check_cures.py AEROLITH-CLI
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]
PROGRAM = Path(sys.argv.pop()).resolve()
OLD = SOURCES / "docs/old"

TITLE, *ROWS = (OLD / "outline.dat").read_text().splitlines()
X, Y = zip(*(row.split() for row in ROWS))
NOSE = ROWS.index("0.000000 0.000000")
SIDE = [f"{x} {abs(float(y)):.6f}" for x, y in zip(X[NOSE:], Y[NOSE:])]
COUNTED = f"{len(SIDE)}. {len(SIDE)}."


def of_rows(form):
    return [TITLE, *(form.format(x=x, y=y, n=i, mm=round(1800 * float(x)), h=round(1800 * float(y)))
                     for i, (x, y) in enumerate(zip(X, Y), 1))]


def of_file(name):
    return (OLD / name).read_text().splitlines()


def columns(blank):
    return [TITLE, *(f"{x}{blank}{y}{blank}-{y}" for x, y in (row.split() for row in SIDE))]


OUTLINE = [TITLE, *ROWS]
# The rows of the guide's table: what is seen, the lines before and after the cure, and a name.
CURES = [
    ("", OUTLINE, OUTLINE, "table.tab"),
    ("nothing", of_file("exponents.dat"), OUTLINE),
    ("nothing", of_rows("{mm} {h}"), of_rows("{mm}.0 {h}.0")),
    ("nothing", of_file("profile.txt"), [line for line in of_file("profile.txt")
                                         if not line.isdigit()]),
    ("nothing", columns(","), columns(" ")),
    ("nothing", of_file("four-columns.dat"), OUTLINE),
    ("nan", of_rows("{x},{y}"), of_rows("{x} {y}")),
    ("nan", of_rows("{x};{y}"), of_rows("{x}; {y}")),
    ("nan", of_rows("{n} {x} {y}"), OUTLINE),
    ("nan", [TITLE, *SIDE], [TITLE, COUNTED, "", "", *SIDE]),
    ("nan", SIDE, ["", COUNTED, "", "", *SIDE]),
    ("diagonal", of_file("from-the-nose.dat"), OUTLINE),
    ("diagonal", of_file("lednicer.dat"), OUTLINE),
    ("diagonal", of_file("in-turn.dat"), OUTLINE),
    ("diagonal", [TITLE, COUNTED, *ROWS], OUTLINE),
    ("diagonal", ["2318", *ROWS], ROWS),
    ("another shape", of_rows("{x} {y} 0.000000"), OUTLINE),
    ("another shape", [*OUTLINE, "", *OUTLINE], OUTLINE),
    ("loses 1 point", [TITLE, ROWS[0], "1.000010 0.000100", *ROWS[2:]],
     [TITLE, ROWS[0], "1.000000 0.000100", *ROWS[2:]]),
]


class Cures(unittest.TestCase):
    def reason(self, lines, name="table.dat"):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, name)
            path.write_text("\n".join(lines) + "\n")
            run = subprocess.run([PROGRAM, "check", "--json", path], capture_output=True, text=True)
            return json.loads(run.stdout)[0]["reason"]

    def test_cures(self):
        for seen, before, after, *name in CURES:
            with self.subTest(seen=seen, line=before[2]):
                self.assertIn(seen, self.reason(before, *name))
                self.assertEqual(self.reason(after), "")


if __name__ == "__main__":
    unittest.main()
