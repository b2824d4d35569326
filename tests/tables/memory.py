#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Runs the command line program on tables of every layout that fill tens of megabytes, with the
# shortest rows that make a section, and compares its peak memory with the documented limit.
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM = None
SIZE = 30_000_000
LARGEST = 64 << 20
STATIONS = range(101)  # percent


def height(x):
    return round(math.sqrt(x) * (100 - x) / 40)


def rows(stations, *columns):
    return [b" ".join(b"%d" % column(x) for column in columns) + b"\n" for x in stations]


def station(x):
    return x


def depth(x):
    return -height(x)


UPPER = rows(STATIONS, station, height)
LOWER = rows(STATIONS, station, depth)
# The rows of each layout; every one is repeated until the file is large enough.
LAYOUTS = {
    "selig": UPPER[::-1] + LOWER,
    "loop": UPPER + LOWER[::-1],
    "lednicer": UPPER + LOWER,
    "half": UPPER,
    "columns": rows(STATIONS, station, height, depth),
    "pairs": rows(STATIONS, station, height, station, depth),
}
REFUSED = {
    "scattered": [b"3 1\n", b"1 4\n", b"5 9\n"],
    "zeros": [b"0 0\n"],
    "counts": [b"1\n"],
    "words": [b"a\n"],
    "empty places": [b"1,,,,,,,,,\n"],
    "damaged": [b"O.1 1\n"],
    "separators": [b","],
    "blank": [b"\n"],
}


class Memory(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="aerolith-memory-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.file = self.folder / "table"

    def write(self, given, size):
        """In small parts, to keep this process small: a child starts as a copy of it."""
        times = max(1, size // sum(map(len, given)))
        at_once = 1000
        with open(self.file, "wb") as file:
            for row in given:
                for _ in range(times // at_once):
                    file.write(row * at_once)
                file.write(row * (times % at_once))
        return self.file.stat().st_size

    def run_check(self):
        """The peak memory of a run, in bytes, and the beginning of its output."""
        with open(self.folder / "output", "w+b") as output:
            process = subprocess.Popen([PROGRAM, "check", self.file], stdout=output,
                                       stderr=subprocess.DEVNULL)
            _, status, used = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            self.assertIn(process.returncode, (0, 1))
            output.seek(0)
            return used.ru_maxrss * 1024, output.read(1000).decode()

    def check_bound(self, given, expected):
        self.write(LAYOUTS["selig"], 1)
        base, _ = self.run_check()
        size = self.write(given, SIZE)
        used, output = self.run_check()
        self.assertIn(expected, output.split()[:2], output)
        self.assertLessEqual(used - base, (16 << 20) + 20 * size, f"{(used - base) / size:.1f}")

    def test_sections(self):
        for layout, given in LAYOUTS.items():
            with self.subTest(layout):
                self.check_bound(given, layout)

    def test_refused(self):
        for name, given in REFUSED.items():
            with self.subTest(name):
                self.check_bound(given, "bad")

    def test_largest(self):
        with open(self.file, "wb") as file:
            file.write(b"".join(LAYOUTS["selig"]))
            file.truncate(LARGEST + 1)
        used, output = self.run_check()
        self.assertIn("larger than 64 MiB", output)
        self.assertLess(used, LARGEST)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
