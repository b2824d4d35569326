#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# What docs/spline_file.py writes has the bytes that the programs write.
# Usage: check_spline_file.py AEROLITH-CLI REWRITE-SPLINE
import random
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCES / "docs"))
import spline_file  # noqa: E402

REWRITE = Path(sys.argv.pop()).resolve()
PROGRAM = Path(sys.argv.pop()).resolve()
SAMPLES = sorted((SOURCES / "samples").glob("*.spl"))
TABLES = sorted((SOURCES / "samples").glob("naca-*"))


def run(program, *arguments):
    return subprocess.run([program, *map(str, arguments)], capture_output=True, text=True,
                          check=True).stdout


class SplineFile(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def rewritten(self, path, index=-1, x=0.0, y=0.0):
        """The bytes that the program makes of a file."""
        run(REWRITE, path, self.folder / "rewritten.spl", index, repr(x), repr(y))
        return (self.folder / "rewritten.spl").read_bytes()

    def fits(self):
        run(PROGRAM, "fit", *TABLES, "-d", self.folder, "--points", 12,
            "--openings", 1.1, 4.25)
        fits = sorted(self.folder.glob("naca-*.spl"))
        self.assertEqual(len(fits), len(TABLES))
        return fits

    def test_read_and_written(self):
        self.assertGreaterEqual(len(SAMPLES), 2)
        for path in SAMPLES + self.fits():
            with self.subTest(path.name):
                spline_file.save(self.folder / "copy.spl", spline_file.load(path))
                self.assertEqual((self.folder / "copy.spl").read_bytes(), path.read_bytes())

    def test_point_moved(self):
        for path in SAMPLES + self.fits():
            with self.subTest(path.name):
                spline = spline_file.load(path)
                x, y = spline.points[3]
                spline.points[3] = (x + 0.1, y - 1 / 3)
                self.assertEqual(spline_file.encode(spline),
                                 self.rewritten(path, 3, *spline.points[3]))
                self.assertNotEqual(spline_file.encode(spline), path.read_bytes())

    def test_openings_changed(self):
        for path in SAMPLES:
            with self.subTest(path.name):
                spline = spline_file.load(path)
                spline.openings = (2.5, 7.1)
                run(PROGRAM, "convert", path, "-o", self.folder / "o.spl", "-f", "--openings",
                    2.5, 7.1)
                self.assertEqual(spline_file.encode(spline),
                                 (self.folder / "o.spl").read_bytes())

    def test_made_anew(self):
        """The points of a fit give the file of the fit."""
        for path in self.fits():
            with self.subTest(path.name):
                fit = spline_file.load(path)
                made = spline_file.Spline(fit.points, spline_file.uniform_knots(12), (1.1, 4.25),
                                          path.stem)
                self.assertEqual(spline_file.encode(made), path.read_bytes())

    def test_chord_units(self):
        points = [(1, 0), (0.4, 0.1), (0, 0.05), (0, -0.05), (0.4, -0.05), (1, 0)]
        spline_file.save(self.folder / "a.spl", spline_file.from_chord(points, (2, 5), "a"))
        shown = run(PROGRAM, "check", self.folder / "a.spl").splitlines()
        self.assertEqual(shown[0].split()[:3], ["ok", "spl", "6"])
        self.assertEqual(self.rewritten(self.folder / "a.spl"),
                         (self.folder / "a.spl").read_bytes())

    def test_any_bytes(self):
        """Whatever the numbers are, both write what they have read."""
        numbers = random.Random(1)
        for name in (None, "", "a", "Flügel \U0001f3d4", "\udc00"):
            with self.subTest(name=name):
                text = b"" if name is None else name.encode("utf-16-be", "surrogatepass")
                data = struct.pack(">I", 0xFFFFFFFF if name is None else len(text)) + text
                data += struct.pack(">4i", numbers.randint(0, 30), numbers.randint(0, 300), 5, -1)
                data += numbers.randbytes(8 * (300 + 120 + 3))
                (self.folder / "any.spl").write_bytes(data)
                self.assertEqual(spline_file.encode(spline_file.decode(data)), data)
                self.assertEqual(self.rewritten(self.folder / "any.spl"), data)

    def test_refused(self):
        data = SAMPLES[0].read_bytes()
        counts = 4 + struct.unpack_from(">I", data)[0]
        for broken in (b"", data[:3], data[:-1], data + b"\0", b"\0\0\0\3" + bytes(3 + 3400 - 4),
                       data[:counts] + b"\0\0\0\x1f" + data[counts + 4 :],
                       data[:counts] + b"\xff" + data[counts + 1 :]):
            with self.assertRaises(ValueError):
                spline_file.decode(broken)
        spline = spline_file.decode(data)
        spline.points = spline.points * 4
        with self.assertRaises(ValueError):
            spline_file.encode(spline)


unittest.main()
