#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Draws the figures of docs/measures.md from what the program measures.
# Usage: draw_measures.py PROGRAM [--check]; with --check it fails where a figure is out of date.
import json
import math
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[1]
IMAGES = SOURCES / "docs/images"
PROGRAM = Path(sys.argv[1]).resolve()
WIDTH, MARGIN = 880, 60

CURVE = 'fill="none" stroke="#1f4e9c" stroke-width="2"'
THIN = 'fill="none" stroke="#555" stroke-width="1"'
MARK = 'fill="none" stroke="#c0392b" stroke-width="1.6"'
DASHED = THIN + ' stroke-dasharray="6 4"'


def run(*arguments):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, check=True).stdout


class Figure:
    """A drawing in fractions of the chord, y upwards."""

    def __init__(self, title, left, right, low, high):
        self.left, self.high = left, high
        self.scale = (WIDTH - 2 * MARGIN) / (right - left)
        self.height = round((high - low) * self.scale + 2 * MARGIN)
        self.title = title
        self.parts = []

    def at(self, point):
        return (MARGIN + (point[0] - self.left) * self.scale,
                MARGIN + (self.high - point[1]) * self.scale)

    def line(self, points, style):
        text = " ".join("%.1f,%.1f" % self.at(point) for point in points)
        self.parts.append(f'<polyline points="{text}" {style}/>')

    def curve(self, points):
        """Cubics through the points, along the lines between their neighbours."""
        last = len(points) - 1
        slopes = [[(b - a) / 6 for a, b in zip(points[max(i - 1, 0)], points[min(i + 1, last)])]
                  for i in range(last + 1)]
        path = "M%.1f,%.1f" % self.at(points[0])
        for i in range(last):
            controls = ([a + b for a, b in zip(points[i], slopes[i])],
                        [a - b for a, b in zip(points[i + 1], slopes[i + 1])], points[i + 1])
            path += " C" + " ".join("%.1f,%.1f" % self.at(point) for point in controls)
        self.parts.append(f'<path d="{path}" {CURVE}/>')

    def circle(self, centre, radius, style):
        x, y = self.at(centre)
        self.parts.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{radius * self.scale:.1f}" {style}/>')

    def dot(self, point):
        x, y = self.at(point)
        self.parts.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3.5" fill="#c0392b"/>')

    def text(self, point, text, dx=0, dy=0, anchor="middle"):
        x, y = self.at(point)
        self.parts.append(f'<text x="{x + dx:.1f}" y="{y + dy:.1f}" text-anchor="{anchor}">{text}</text>')

    def svg(self):
        body = "\n".join(self.parts)
        return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {self.height}" '
                f'font-family="sans-serif" font-size="15">\n<title>{self.title}</title>\n'
                f'<rect width="{WIDTH}" height="{self.height}" fill="white"/>\n{body}\n</svg>\n')


def along(start, end, share):
    return [a + share * (b - a) for a, b in zip(start, end)]


def across(m, share, height):
    """A point at a share of the chord line, a fraction of it beside the line."""
    le, te = m["leading_edge"], m["trailing_edge"]
    x, y = along(le, te, share)
    return x - height * (te[1] - le[1]), y + height * (te[0] - le[0])


def heights_at(points, m, share):
    """Where the chord line's perpendicular at a share of it meets the sides."""
    le, te = m["leading_edge"], m["trailing_edge"]
    axis = [b - a for a, b in zip(le, te)]
    squared = axis[0] ** 2 + axis[1] ** 2
    turned = [((x - le[0]) * axis[0] + (y - le[1]) * axis[1], (y - le[1]) * axis[0] - (x - le[0]) * axis[1])
              for x, y in points]
    found = []
    for (a, h), (b, k) in zip(turned, turned[1:]):
        if (a / squared - share) * (b / squared - share) <= 0 and a != b:
            found.append((h + (share * squared - a) / (b - a) * (k - h)) / squared)
    return min(found), max(found)


def section(points, m):
    figure = Figure("Chord line, thickness and camber", 0, 1, -0.12, 0.15)
    figure.curve(points)
    le, te = m["leading_edge"], m["trailing_edge"]
    figure.line([le, te], DASHED)
    figure.text(along(le, te, 0.8), "chord line", dy=16)
    for point, name, dx, anchor in ((le, "leading edge", -8, "end"), (te, "trailing edge", 0, "middle")):
        figure.dot(point)
        figure.text(point, name, dx if anchor == "middle" else 0, -14 if anchor == "middle" else 62,
                    "middle" if anchor == "middle" else "start")
    mean = [across(m, s / 50, sum(heights_at(points, m, s / 50)) / 2) for s in range(1, 50)]
    figure.line([le, *mean, te], THIN)
    figure.text(mean[32], "mean line", dy=-8)
    share = m["thickness"]["station"] / 100
    low, high = heights_at(points, m, share)
    figure.line([across(m, share, low), across(m, share, high)], MARK)
    figure.text(across(m, share, high), "thickness", dx=-6, dy=-26, anchor="end")
    share = m["camber"]["station"] / 100
    figure.line([across(m, share, 0), across(m, share, m["camber"]["size"])], MARK)
    figure.text(across(m, share, m["camber"]["size"] / 2), "camber", dx=10, dy=5, anchor="start")
    for name, dy in (("highest", -10), ("lowest", 22)):
        figure.dot(m[name])
        figure.text(m[name], f"{name} point", dx=30, dy=dy, anchor="start")
    return figure.svg()


def nose(points, m):
    figure = Figure("Nose radius", -0.012, 0.09, -0.04, 0.045)
    figure.curve([p for p in points if p[0] < 0.1])
    le, te, radius = m["leading_edge"], m["trailing_edge"], m["nose"]["radius"]
    length = math.dist(le, te)
    centre = along(le, te, radius / length)
    figure.circle(centre, radius, MARK)
    figure.line([le, along(le, te, 0.088)], DASHED)
    figure.dot(le)
    figure.text(le, "leading edge", dx=-4, dy=-190, anchor="start")
    figure.line([le, (le[0], le[1] + 0.024)], THIN)
    figure.dot(centre)
    figure.text(along(le, centre, 0.5), "nose radius", dx=20, dy=-8)
    figure.text(along(le, te, 0.075), "chord line", dy=-8)
    return figure.svg()


def tail(points, m):
    figure = Figure("Angle and gap of the trailing edge", 0.955, 1.002, -0.0125, 0.0105)
    figure.curve([p for p in points[:len(points) // 2] if p[0] > 0.95])
    figure.curve([p for p in points[len(points) // 2:] if p[0] > 0.95])
    low, high = heights_at(points, m, 0.98)
    for height, end in ((high, points[0]), (low, points[-1])):
        start = across(m, 0.98, height)
        figure.line([along(end, start, 1.6), end], MARK)
        figure.dot(start)
    figure.line([across(m, 0.98, low - 0.002), across(m, 0.98, high + 0.003)], DASHED)
    figure.text(across(m, 0.98, high + 0.003), "98 % of the chord line", dy=-6)
    figure.text(across(m, 0.9875, 0), "angle between the two", dy=5)
    figure.line([(1.0008, points[0][1]), (1.0008, points[-1][1])], THIN)
    figure.text((1.0008, (points[0][1] + points[-1][1]) / 2), "gap", dx=8, dy=5, anchor="start")
    return figure.svg()


def mouth(points, m):
    figure = Figure("Panels and the mouth of the intake", 0, 1, -0.12, 0.15)
    ends = m["mouth"]
    start, end = ends["start"], ends["end"]
    figure.curve(points)
    nearest = [min(range(len(points) // 2, len(points)), key=lambda i: math.dist(points[i], p))
               for p in (start, end)]
    figure.line([start, *points[nearest[0] + 1:nearest[1]], end], 'fill="none" stroke="white" stroke-width="4"')
    figure.line([start, end], MARK)
    for point, name, dy, dx in ((start, "O-1", 30, -12), (end, "O-2", 26, 10)):
        figure.dot(point)
        figure.text(point, name, dx, dy)
    figure.text(along(start, end, 0.5), "mouth", dx=4, dy=-12)
    figure.text((0.42, 0.105), "panel over the top: trailing edge to O-1", dy=-8)
    figure.text((0.55, -0.035), "panel behind the mouth: O-2 to trailing edge", dy=12)
    return figure.svg()


def measured(*arguments):
    """The points of a table in the window's frame, and its measures."""
    m = json.loads(run("measure", "--json", *arguments))[0]
    with tempfile.TemporaryDirectory() as folder:
        output = f"{folder}/points.json"
        run("convert", arguments[0], "-o", output, "--to", "json", "--decimals", "12")
        points = json.loads(Path(output).read_text())["points"]
    width = max(x for x, _ in points) - min(x for x, _ in points)
    x0, y0 = points[0]
    return [((x - x0) / width + 1, (y - y0) / width) for x, y in points], m


def main():
    with tempfile.TemporaryDirectory() as folder:
        rib = f"{folder}/rib.txt"
        sample = str(SOURCES / "samples/naca-4412-cambered.dat")
        run("convert", sample, "-o", rib, "--to", "lep", "--openings", "2", "8")
        cambered, with_mouth = measured(sample), measured(rib)
        points, _ = measured(str(SOURCES / "samples/naca-0012-outline.dat"))
        opened = [(x, y + math.copysign(0.002 * x, y if x < 1 else half - i))
                  for half in (len(points) // 2,) for i, (x, y) in enumerate(points)]
        Path(f"{folder}/blunt.dat").write_text(
            "Blunt\n" + "".join("%.8f %.8f\n" % point for point in opened))
        blunt = measured(f"{folder}/blunt.dat")
    figures = {"section": section(*cambered), "nose": nose(*cambered), "tail": tail(*blunt),
               "mouth": mouth(*with_mouth)}
    for name, svg in figures.items():
        path = IMAGES / f"measures-{name}.svg"
        if "--check" not in sys.argv:
            path.write_text(svg)
        elif not path.exists() or path.read_text() != svg:
            sys.exit(f"{path} is out of date: dev/draw_measures.py PROGRAM draws it")


main()
