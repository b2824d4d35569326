#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Measures every readable table independently, by SciPy's splines, adaptive quadrature and
# minimisation, from the points that convert writes, and compares the results. Usage:
# second_measures.py PROGRAM FILE-OR-FOLDER...
import json
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy as np
from scipy.integrate import quad
from scipy.interpolate import make_interp_spline
from scipy.optimize import brentq, minimize_scalar

SHARP, CORNER_RATIO, NOSE_RATIO = np.radians(30), 10, 20
LONG, LONG_RATIO = 0.05, 6
SCANNED = 240
OPENINGS = (0.03, 0.095, 0.3, 0.55, 0.9)

# The largest differences allowed, fractions of the chord (angles in degrees, others relative).
ALLOWED = {
    "chord": 1e-9, "thickness": 1e-7, "camber": 1e-7, "thickness_upright": 1e-7,
    "camber_upright": 1e-7, "highest": 1e-9, "lowest": 1e-9, "nose": 1e-5, "gap": 1e-12,
    "trailing_edge_angle": 1e-5, "area": 1e-9, "centroid": 1e-8, "length": 1e-9,
    "upper_length": 1e-7, "lower_length": 1e-7, "mouth_along": 1e-8, "panel_over_top": 1e-8,
    "station_height": 1e-8, "station_length": 1e-8,
}


class Piece:
    """A spline over its chord lengths between two corners or straight edges."""

    def __init__(self, points, start=None, end=None):
        self.t = np.concatenate([[0], np.cumsum(np.hypot(*np.diff(points, axis=0).T))])
        if len(points) == 2 and start is None and end is None:
            self.curve = make_interp_spline(self.t, points, k=1)
        else:
            ends = [[(3, np.zeros(2)) if slope is None else (1, slope)] for slope in (start, end)]
            self.curve = make_interp_spline(self.t, points, k=3, bc_type=tuple(ends))
        self.slope = self.curve.derivative()

    def speed(self, t):
        return np.hypot(*self.slope(t).T)


def turn(a, b):
    return np.arctan2(a[0] * b[1] - a[1] * b[0], a @ b)


class Outline:
    """The interpolating curve of a table in the window's frame, upper side first."""

    def __init__(self, points):
        extent = np.hypot(*(points - points[0]).T).max()
        kept = [points[0]]
        for point in points[1:]:
            if np.hypot(*(point - kept[-1])) > 1e-9 * extent:
                kept.append(point)
        p = np.array(kept)
        self.scanned = None
        self.pieces = self.fit(p, extent)
        te = (p[0] + p[-1]) / 2
        le = self.at(self.best(lambda q: np.hypot(*(q - te).T)))
        self.equal_sides = abs(self.area()) < 1e-6 * ((te - le) @ (te - le))
        if self.area() < 0 and not self.equal_sides:
            p = p[::-1]
        scale = 1 / np.ptp(points[:, 0])
        self.zero = -scale * p[0][1]
        self.scale = scale
        self.p = (p - p[0]) * scale + (1, 0)
        self.pieces = self.fit(self.p, extent * scale)
        self.scanned = None

    @staticmethod
    def fit(p, extent):
        edges = np.diff(p, axis=0)
        lengths = np.hypot(*edges.T)
        turns = np.zeros(len(p))
        turns[1:-1] = [turn(edges[i], edges[i + 1]) for i in range(len(edges) - 1)]
        nose = int(np.argmax(np.hypot(*(p - (p[0] + p[-1]) / 2).T)))
        corner = np.zeros(len(p), bool)
        for i in range(1, len(p) - 1):
            side = -1 if turns[i] < 0 else 1
            shared = max(side * turns[i - 1], side * turns[i + 1], 0)
            ratio = NOSE_RATIO if abs(i - nose) <= 1 else CORNER_RATIO
            corner[i] = abs(turns[i]) > SHARP and abs(turns[i]) > ratio * shared
        straight = []
        for k, length in enumerate(lengths):
            before = k == 0 or corner[k] or length > LONG_RATIO * lengths[k - 1]
            after = (k + 1 == len(lengths) or corner[k + 1]
                     or length > LONG_RATIO * lengths[k + 1])
            straight.append(bool(length > LONG * extent and before and after))
        breaks = [0] + [i for i in range(1, len(p) - 1)
                        if corner[i] or straight[i - 1] or straight[i]] + [len(p) - 1]
        pieces = []
        for a, b in zip(breaks, breaks[1:]):
            start = end = None
            if not straight[a]:
                if a > 0 and not corner[a] and straight[a - 1]:
                    start = edges[a - 1] / lengths[a - 1]
                if b < len(p) - 1 and not corner[b] and straight[b]:
                    end = edges[b] / lengths[b]
            pieces.append(Piece(p[a:b + 1], start, end))
        return pieces

    # A place is the index of a piece and its parameter.
    def at(self, place):
        return self.pieces[place[0]].curve(place[1])

    def scan(self, per_span=12):
        """For each piece its index, parameters within every span, and the places there."""
        if self.scanned is None:
            self.scanned = []
            for i, piece in enumerate(self.pieces):
                shares = np.arange(per_span) / per_span
                t = (piece.t[:-1, None] + np.diff(piece.t)[:, None] * shares).ravel()
                t = np.append(t, piece.t[-1])
                self.scanned.append((i, t, piece.curve(t)))
        return self.scanned

    def best(self, f):
        """The place of the greatest f."""
        found, where = -np.inf, None
        for i, t, places in self.scan():
            values = f(places)
            k = int(np.argmax(values))
            if values[k] > found:
                found, where = values[k], (i, t[max(k - 1, 0)], t[k], t[min(k + 1, len(t) - 1)])
        i, low, middle, high = where
        piece = self.pieces[i]
        result = minimize_scalar(lambda t: -f(piece.curve(np.array([t])))[0], bounds=(low, high),
                                 method="bounded", options={"xatol": 1e-13})
        return (i, result.x) if -result.fun >= found else (i, middle)

    def crossings(self, f):
        """All places where f changes sign or is 0."""
        found = []
        for i, t, places in self.scan():
            values = f(places)
            found += [(i, t[k]) for k in np.flatnonzero(np.abs(values) < 1e-12)]
            g = lambda u: f(self.pieces[i].curve(np.array([u])))[0]
            found += [(i, brentq(g, t[k], t[k + 1], xtol=1e-15))
                      for k in np.flatnonzero(values[:-1] * values[1:] < 0)]
        return found

    def length_between(self, start, end):
        total = 0
        for i in range(start[0], end[0] + 1):
            piece = self.pieces[i]
            low = start[1] if i == start[0] else piece.t[0]
            high = end[1] if i == end[0] else piece.t[-1]
            knots = [low] + [t for t in piece.t if low < t < high] + [high]
            total += sum(quad(piece.speed, a, b, epsabs=1e-13, epsrel=1e-13)[0]
                         for a, b in zip(knots, knots[1:]))
        return total

    def integral(self, f):
        """Integral of f(position, slope) over the parameter, exact for products of cubics."""
        x, w = np.polynomial.legendre.leggauss(12)
        total = 0
        for piece in self.pieces:
            for a, b in zip(piece.t, piece.t[1:]):
                t = (a + b) / 2 + (b - a) / 2 * x
                total += (b - a) / 2 * w @ f(piece.curve(t), piece.slope(t))
        return total

    def area(self):
        origin = self.pieces[0].curve(0)
        return self.integral(lambda q, d: np.cross(q - origin, d)) / 2

    def begin(self):
        return 0, self.pieces[0].t[0]

    def end(self):
        return len(self.pieces) - 1, self.pieces[-1].t[-1]


def cut(outline, nose, f, height, side):
    """The outermost place of one side (1: upper) where f is 0."""
    places = [q for q in outline.crossings(f) if (q <= nose if side > 0 else q >= nose)]
    return max(places, key=lambda q: side * height(outline.at(q)), default=None)


def peaks(outline, nose, origin, axis, zero=0.0):
    """Greatest thickness and camber across the axis, per its length; the camber above zero."""
    length = np.hypot(*axis)
    along = lambda q: (q - origin) @ axis / length ** 2
    normal = np.array([-axis[1], axis[0]])
    height = lambda q: (q - origin) @ normal / length ** 2

    def heights(x):
        found = [cut(outline, nose, lambda q: along(q) - x, height, side) for side in (1, -1)]
        return [height(outline.at(q)) for q in found] if None not in found else [zero, zero]

    xs = (1 - np.cos(np.pi * np.arange(SCANNED + 1) / SCANNED)) / 2
    scanned = np.array([heights(x) for x in xs])
    result = {}
    for name, combine in (("thickness", lambda u, l: u - l), ("camber", lambda u, l: (u + l) / 2 - zero)):
        values = combine(scanned[:, 0], scanned[:, 1])
        candidates = []
        for sign in (1, -1) if name == "camber" else (1,):
            for k in np.argsort(-sign * values)[:3]:
                low, high = xs[max(k - 1, 0)], xs[min(k + 1, len(xs) - 1)]
                best = minimize_scalar(lambda x: -sign * combine(*heights(x)), bounds=(low, high),
                                       method="bounded", options={"xatol": 1e-9})
                candidates.append(sign * max(-best.fun, sign * values[k]))
        result[name] = max(candidates, key=abs)
    return result


def second(points, openings, kind):
    """The measures, as far as this file has them."""
    o = Outline(points)
    begin, end = o.begin(), o.end()
    te = (o.p[0] + o.p[-1]) / 2
    nose = o.best(lambda q: np.hypot(*(q - te).T))
    le = o.at(nose)
    chord = np.hypot(*(te - le))
    left = o.best(lambda q: -q[:, 0])
    m = {"chord": chord, "gap": np.hypot(*(o.p[0] - o.p[-1])),
         "highest": o.at(o.best(lambda q: q[:, 1]))[1],
         "lowest": o.at(o.best(lambda q: -q[:, 1]))[1],
         "length": o.length_between(begin, end),
         "upper_length": o.length_between(begin, nose),
         "lower_length": o.length_between(nose, end)}
    if kind == "section":
        across = peaks(o, nose, le, te - le)
        upright = peaks(o, left, np.zeros(2), np.array([1.0, 0.0]), o.zero)
        m.update(across, thickness_upright=upright["thickness"],
                 camber_upright=upright["camber"])
    if kind != "flat":
        piece = o.pieces[nose[0]]
        first, bend = piece.slope(nose[1]), piece.curve.derivative(2)(nose[1])
        curvature = np.cross(first, bend) / np.hypot(*first) ** 3
        m["nose"] = 1 / curvature if curvature > 0 else None
        axis = (te - le) / chord
        tail = lambda q: (q - le) @ axis - 0.98 * chord
        height = lambda q: (q - le) @ np.array([-axis[1], axis[0]])
        ends = [cut(o, nose, tail, height, side) for side in (1, -1)]
        if None not in ends:
            m["trailing_edge_angle"] = np.degrees(
                turn(o.p[0] - o.at(ends[0]), o.p[-1] - o.at(ends[1])))
        if not o.equal_sides:
            m["area"] = o.area()
            origin = o.p[0]
            m["centroid"] = origin[0] + o.integral(
                lambda q, d: (q - origin)[:, 0] * np.cross(q - origin, d)) / 3 / m["area"]
    vertical = lambda x, side: cut(o, left, lambda q: q[:, 0] - x if q.ndim > 1 else q[0] - x,
                                   lambda q: q[1], side)
    if openings and 0 <= openings[0] < openings[1] <= 1:
        first = vertical(openings[0], -1) if openings[0] > 0 else left
        last = vertical(openings[1], -1)
        m["mouth_along"] = o.length_between(first, last)
        m["panel_over_top"] = o.length_between(begin, first)
    m["stations"] = []
    for x in OPENINGS:
        upper, lower = vertical(x, 1), vertical(x, -1)
        if upper is None or lower is None:
            continue
        m["stations"].append((o.at(upper)[1], o.at(lower)[1], o.length_between(begin, upper),
                              o.length_between(lower, end)))
    return m


def differences(ours, theirs):
    """Pairs of a name of ALLOWED and the difference."""
    same = {"chord": "chord", "gap": "trailing_edge_gap", "length": "length",
            "upper_length": "upper_length", "lower_length": "lower_length", "area": "area",
            "trailing_edge_angle": "trailing_edge_angle"}
    for name, key in same.items():
        if name in ours:
            yield name, ours[name] - theirs[key]
    for name in ("thickness", "camber", "thickness_upright", "camber_upright"):
        if name in ours:
            yield name, ours[name] - theirs[name]["size"]
    yield "highest", ours["highest"] - theirs["highest"][1]
    yield "lowest", ours["lowest"] - theirs["lowest"][1]
    if ours.get("nose") and "nose" in theirs:
        yield "nose", ours["nose"] / theirs["nose"]["radius"] - 1
    if "centroid" in ours:
        yield "centroid", ours["centroid"] - theirs["centroid"][0]
    if "mouth_along" in ours:
        yield "mouth_along", ours["mouth_along"] - theirs["mouth"]["along"]
        yield "panel_over_top", ours["panel_over_top"] - theirs["mouth"]["panel_over_top"]
    for mine, other in zip(ours["stations"], theirs["stations"], strict=True):
        yield "station_height", max(abs(mine[0] - other["upper"]), abs(mine[1] - other["lower"]))
        yield "station_length", max(abs(mine[2] - other["upper_from_trailing_edge"]),
                                    abs(mine[3] - other["lower_from_trailing_edge"]))


def main():
    program, *names = sys.argv[1:]
    stations = ",".join(str(100 * x) for x in OPENINGS)
    run = subprocess.run([program, "measure", "--json", "--at", stations, *names],
                         capture_output=True, text=True)
    worst = {}
    compared = 0
    for measured in json.loads(run.stdout):
        if "length" not in measured or measured["layout"] == "spl":
            continue
        with tempfile.TemporaryDirectory() as folder:
            output = Path(folder) / "points.json"
            subprocess.run([program, "convert", measured["path"], "-o", output, "--to", "json",
                            "--decimals", "15"], capture_output=True)
            if not output.exists():
                print(f"{measured['path']}: not converted")
                continue
            table = json.loads(output.read_text())
        openings = table.get("openings")
        openings = openings and (openings["start"] / 100, openings["end"] / 100)
        ours = second(np.array(table["points"]), openings, measured["kind"])
        compared += 1
        for name, difference in differences(ours, measured):
            if name not in worst or not abs(difference) <= abs(worst[name][0]):
                worst[name] = (difference, measured["path"])
    print(f"{compared} tables; the largest differences:")
    failed = worst.keys() != ALLOWED.keys()
    if failed:
        print("not compared:", *sorted(ALLOWED.keys() - worst.keys()))
    for name, (difference, path) in worst.items():
        missed = not abs(difference) <= ALLOWED[name]
        failed |= missed
        print(f"  {name:20} {difference:10.1e}  {'TOO LARGE ' if missed else ''}{path}")
    sys.exit(1 if failed else 0)


main()
