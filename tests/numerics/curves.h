// SPDX-FileCopyrightText: Aerolith developers
// Curves to evaluate.
#pragma once

#include "numerics/b_spline.h"

#include <QList>
#include <QPointF>

#include <cmath>

/// Parameters in every span of every knot vector here, including both sides of the knots.
inline QList<double> dense_parameters() {
    QList<double> parameters;
    for (int i = 1; i < 250; ++i)
        parameters.append(i / 250.0);
    for (const int n : {2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 30, 31, 32, 33})
        for (int i = 1; i < n; ++i) {
            const double knot = double(i) / n;
            parameters << std::nextafter(knot, 0.0) << knot << std::nextafter(knot, 1.0);
        }
    return parameters;
}

/// The knots 0, 1/n, ..., 1 of a curve of @p count points.
inline QList<double> uniform_knots(int count, int degree) {
    QList<double> knots;
    const int last = count + degree;
    for (int i = 0; i <= last; ++i)
        knots.append(double(i) / last);
    return knots;
}

/// Control points without symmetry.
inline QList<QPointF> zigzag(int count) {
    QList<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.append({17.0 + 31.0 * i - 0.7 * i * i, i % 2 ? 240.25 : -60.5 + 3.0 * i});
    return points;
}

inline QPointF curve_point(QList<QPointF> points, int degree, QList<double> knots, double t) {
    return B_spline_point(int(points.size()), degree, points.data(), knots.data(), t);
}
