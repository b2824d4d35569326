#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Writes tests/numerics/data/fourier.txt: samples and, from sums of 50 digits, what the
# functions of numerics/fourier.h answer for them. Needs mpmath.
#
#   dev/fourier_reference.py > tests/numerics/data/fourier.txt

import random

from mpmath import mp, mpf, mpc

mp.dps = 50
PI = mpf(3.141592653)  # the double that the program uses
POINTS = 1000


def turn(angle):
    return mpc(mp.cos(angle), mp.sin(angle))


def fit(order, samples):
    """Coefficients a[0..order] and b[0..order-1]."""
    a = [mpf(0)] * (order + 1)
    b = [mpf(0)] * (order + 1)
    for k in range(2 * order):
        z = turn(k * PI / order)
        w = mpc(samples[k])
        for m in range(order + 1):
            a[m] += w.real
            b[m] += w.imag
            w *= z
    b = [mpf(0)] + b[1:order]
    return [v / order for v in a], [v / order for v in b]


def harmonics(last, a, b, angle):
    """Sum of a[m] cos(m angle) + b[m] sin(m angle), m = 1 .. last."""
    z = turn(angle)
    w = z
    total = mpf(0)
    for m in range(1, last + 1):
        total += a[m] * w.real + b[m] * w.imag
        w *= z
    return total


def theta(i, n):
    if i > n // 2:
        return PI * (2 - mp.sqrt(mp.sin((n - i) * PI / n)))
    return PI * mp.sqrt(mp.sin(i * PI / n))


def series(order, a, b, angle):
    closing = a[order - 1] * mp.cos(2 * order * PI / POINTS)
    return harmonics(order - 2, a, b, angle) + (a[0] + closing) / 2


def derivative(order, a, b, k):
    da = [m * v for m, v in enumerate(b)]
    db = [-m * v for m, v in enumerate(a)]
    return harmonics(order - 2, da, db, 2 * k * PI / POINTS) / order


def stations(count, stride):
    return sorted(set(list(range(0, count, stride)) + [count // 2, count - 1]))


def put(name, index, value):
    print(name, index, repr(float(value)))


def contour_case(name, order, samples, stride):
    """Every entry that works on one coordinate."""
    print("case", name)
    print("order", order)
    for k, y in enumerate(samples):
        put("y", k, y)
    a, b = fit(order, samples)
    no_b = [mpf(0)] * len(b)
    for m in stations(order + 1, stride):
        put("A", m, a[m])
    for m in stations(order, stride):
        put("B", m, b[m])
    for k in stations(POINTS, stride):
        put("proc", k, series(order, a, b, theta(k, POINTS)))
        put("value", k, series(order, a, b, 2 * k * PI / POINTS))
        put("cosproc", k, series(order, a, no_b, 2 * k * PI / POINTS))
        put("derivative", k, derivative(order, a, b, k))
    step = 2 * PI / (len(samples) - 1)
    for k in stations(len(samples), stride):
        put("skeleton", k, a[0] / 2 + harmonics(order - 1, a, no_b, k * step))
        put("evenvalue", k, a[0] / 2 + harmonics(order - 1, a, b, k * step))


def slope_case(name, xs, ys, stride):
    print("case", name)
    n = len(xs)
    order = n // 2
    print("order", order)
    for k in range(n):
        put("x", k, xs[k])
        put("y", k, ys[k])
    ax, bx = fit(order, xs)
    ay, by = fit(order, ys)
    for k in stations(n + 1, stride):
        dx = derivative(order, ax, bx, k)
        assert abs(abs(dx) - 1) > 1e-6, "too near to the threshold"
        put("slope", k, derivative(order, ay, by, k) / dx if abs(dx) >= 1 else 0)


def second_derivative_case(name, ys, stride):
    print("case", name)
    order = len(ys) // 2
    print("order", order)
    for k, y in enumerate(ys):
        put("y", k, y)
    a, b = fit(order, ys)
    first = [derivative(order, a, b, k) for k in range(POINTS)]
    first += [mpf(0)] * max(0, 2 * order - POINTS)
    a, b = fit(order, first)
    for k in stations(POINTS, stride):
        put("second", k, abs(derivative(order, a, b, k)))


def noise(count, seed):
    source = random.Random(seed)
    return [round(source.uniform(-1.0, 1.0), 6) for _ in range(count)]


def harmonic(order, m):
    """Phase of 45 degrees, so that sine and cosine coefficient are alike."""
    return [float(mp.cos(m * k * PI / order - PI / 4)) for k in range(2 * order)]


def section(count):
    """Ordinates of a four-digit section of 12 % thickness and 2 % camber at 40 %."""
    ys = []
    for k in range(count):
        phi = 2 * mp.pi * k / count
        x = (1 + mp.cos(phi)) / 2
        half = mpf("0.6") * (mpf("0.2969") * mp.sqrt(x) - mpf("0.126") * x
                             - mpf("0.3516") * x**2 + mpf("0.2843") * x**3
                             - mpf("0.1036") * x**4)
        p, h = mpf("0.4"), mpf("0.02")
        if x < p:
            camber = h / p**2 * (2 * p * x - x**2)
        else:
            camber = h / (1 - p)**2 * (1 - 2 * p + 2 * p * x - x**2)
        ys.append(round(float(camber + half if phi < mp.pi else camber - half), 7))
    return ys


def main():
    print("# Made by dev/fourier_reference.py: name, index, value; derived values are sums of")
    print("# 50 digits, rounded to doubles.")
    for order in (1, 2, 3, 7):
        contour_case("noise-%d" % order, order, noise(2 * order, order), 37)
    contour_case("noise-50", 50, noise(100, 50), 17)
    contour_case("noise-500", 500, noise(1000, 500), 9)
    contour_case("section-500", 500, section(1000), 37)
    contour_case("highest-harmonic-500", 500, harmonic(500, 498), 17)
    contour_case("constant-500", 500, [1.0] * 1000, 37)

    circle = [2 * mp.pi * k / 1000 for k in range(1000)]
    slope_case("ellipse-1000", [round(float(4000 * mp.cos(t)), 6) for t in circle],
               [round(float(700 * mp.sin(t)), 6) for t in circle], 13)
    slope_case("noise-101", [400 * v for v in noise(101, 1)], noise(101, 2), 3)
    second_derivative_case("noise-1000", noise(1000, 3), 17)
    second_derivative_case("noise-1001", noise(1001, 4), 17)
    second_derivative_case("noise-1201", noise(1201, 5), 17)


if __name__ == "__main__":
    main()
