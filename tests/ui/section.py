# SPDX-FileCopyrightText: Aerolith developers
# The expected state and files after the same gestures, computed independently of the program.
import functools
import math
import struct
from decimal import ROUND_HALF_UP, Decimal

STEP = 1.0 / 1000.0
PI = 3.141592653
SYMMETRIC = [(1.0, 0.0), (0.7, 0.025), (0.3, 0.07), (0.05, 0.08), (0.0, 0.01),
             (0.0, -0.01), (0.05, -0.08), (0.3, -0.07), (0.7, -0.025), (1.0, 0.0)]


class Mapping:
    """Chord units and pixels of an editor of the given size."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.wr, self.H = width - 1, height - 1
        self.xc, self.yc = int(self.wr * 0.1), int(self.H * 0.5)
        self.L_T = self.wr - 2 * self.xc
        self.TE = (float(self.xc + self.L_T), float(self.yc))

    def pixels(self, point):
        return self.xc + point[0] * self.L_T, self.yc - point[1] * self.L_T

    def chord(self, point):
        return (point[0] - self.xc) / self.L_T, -(point[1] - self.yc) / self.L_T


def uniform_knots(count):
    last = count + 2
    return tuple(i / last for i in range(last + 1))


def _basis(i, degree, knots, t):
    if degree == 0:
        return 1.0 if knots[i] <= t < knots[i + 1] else 0.0
    value = 0.0
    for j, numerator in ((i, t - knots[i]), (i + 1, knots[i + degree + 1] - t)):
        width = knots[j + degree] - knots[j]
        if width != 0.0:
            value += _basis(j, degree - 1, knots, t) * numerator / width
    return value


@functools.lru_cache(maxsize=64)
def _weights(count, degree, knots):
    """For each sample, the points that affect it with their weights, and the sum of the weights."""
    rows = []
    u = STEP
    while u < 1.0:
        values = [(i, _basis(i, degree, knots, u)) for i in range(count)]
        rows.append(([(i, v) for i, v in values if v != 0.0], sum(v for _, v in values)))
        u += STEP
    return rows


def sample(points, degree, knots):
    curve = []
    for weights, total in _weights(len(points), degree, tuple(knots)):
        x = y = 0.0
        for i, value in weights:
            x += value * points[i][0]
            y += value * points[i][1]
        curve.append((x / total, y / total))
    return curve


def _number(value):
    rounded = Decimal(value or 0.0).quantize(Decimal("0.00001"), ROUND_HALF_UP)
    return f"{rounded:>7}"


def table(name, curve):
    """The bytes of a coordinate table of a curve in chord units."""
    area = sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(curve, curve[1:]))
    listed = range(1, len(curve), 9) if area > 0 else range(len(curve) - 1, 0, -9)
    rows = [(1.0, 0.0), *(curve[j] for j in listed if 0.99999 > curve[j][0]), (1.0, 0.0)]
    text = f"{name} \t\n" + "".join(f"{_number(x)}   {_number(y)} \t\n" for x, y in rows) + " "
    return text.encode()


def table_rows(data):
    return [tuple(map(float, line.split())) for line in data.decode().splitlines()[1:-1]]


class SplineFile:
    """The items of a spline file; size_error is the error of its length."""

    def __init__(self, data):
        (length,) = struct.unpack_from(">I", data)
        self.name = data[4 : 4 + length].decode("utf-16-be")
        at = 4 + length
        self.size_error = len(data) - (3404 + length)
        self.num_pnt, self.num_knt, self.degree, self.order = struct.unpack_from(">4i", data, at)
        self.knots = struct.unpack_from(">300d", data, at + 16)
        numbers = struct.unpack_from(">120d", data, at + 2416)
        pairs = list(zip(numbers[0::2], numbers[1::2]))
        self.CP, self.rd_CP = pairs[0::2], pairs[1::2]
        self.startVent, self.endVent, self.L_T_S = struct.unpack_from(">3d", data, at + 3376)

    def curve(self):
        return sample(self.CP[: self.num_pnt], self.degree, self.knots[: self.num_knt])


class Drawing:
    """The spline and the view as the gestures leave them. Positions are the editor's pixels."""

    def __init__(self, mapping):
        self.map = mapping
        self.CP = []
        self.knots = uniform_knots(0)
        self.selected = -1
        self.zoom, self.pan = 1.0, (0.0, 0.0)
        self.startVent = self.endVent = 0.0

    def curve(self):
        return sample(self.CP, 2, self.knots) if self.CP else []

    def seen(self, point):
        """Where a point of the drawing appears in the editor."""
        return self.zoom * point[0] + self.pan[0], self.zoom * point[1] + self.pan[1]

    def _normalise(self, curve):
        chord = max(x for x, _ in curve) - min(x for x, _ in curve)
        if chord >= 1e-6:
            L_T = self.map.L_T
            self.CP = [(L_T * x / chord, L_T * y / chord) for x, y in self.CP]

    def settle(self):
        """Paints until the picture settles: pinned to the trailing edge, one chord wide."""
        while self.CP:
            dx, dy = (t - c for t, c in zip(self.map.TE, self.CP[0]))
            pinned = abs(dx) + abs(dy) <= 1e-5
            if not pinned:
                curve = self.curve()
                self.CP = [(x + dx, y + dy) for x, y in self.CP]
                self._normalise(curve)
            self._normalise(self.curve())
            left = sum(abs(t - c) for t, c in zip(self.map.TE, self.CP[0]))
            if left <= 1e-5:
                return

    def _count_changed(self):
        self.knots = uniform_knots(len(self.CP))
        self.settle()

    def append(self, place):
        self.CP.append((float(place[0]), float(place[1])))
        self._count_changed()

    def insert(self, place):
        after = self.CP[self.selected + 1]
        middle = tuple(0.5 * (p + a) for p, a in zip(place, after))
        self.CP.insert(self.selected + 1, middle)
        self._count_changed()

    def remove(self):
        del self.CP[self.selected]
        self.selected = -1
        self._count_changed()

    def drag(self, place):
        self.CP[self.selected] = tuple((p - d) / self.zoom for p, d in zip(place, self.pan))
        self.settle()

    def nudge(self, dx, dy):
        x, y = self.CP[self.selected]
        self.CP[self.selected] = (x + dx, y + dy)
        self.settle()

    def sharpen(self):
        knots = list(self.knots)
        knots[self.selected + 2] = knots[self.selected + 1] + 0.0001
        self.knots = tuple(knots)
        self.settle()

    def symmetric(self):
        m = self.map
        self.CP = [(m.xc + x * m.L_T, m.yc + y * m.L_T) for x, y in SYMMETRIC]
        self.selected = -1
        self._count_changed()

    def thicken(self, k):
        yc = self.map.yc
        self.CP = [(x, yc - (1 + 0.02 * k) * (yc - y)) for x, y in self.CP]
        self.settle()

    def rotate(self, clicks):
        angle = clicks * 0.5 * PI / 360.0
        cos, sin = math.cos(angle), math.sin(angle)
        x0, y0 = self.map.TE
        moved = [(x - x0, y - y0) for x, y in self.CP]
        self.CP = [(cos * x - sin * y + x0, sin * x + cos * y + y0) for x, y in moved]
        self.settle()
