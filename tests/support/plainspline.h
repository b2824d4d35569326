// SPDX-FileCopyrightText: Aerolith developers
// The Cox-de Boor recursion written as the formulas stand, the measure for every
// faster way. The order of the operations decides the last bits.
#pragma once

#include <QPointF>
#include <QPolygonF>

/// A quotient where 0/0 counts as 0.
inline double plain_quotient(double numerator, double denominator) {
    if (numerator == 0.0 && denominator == 0.0)
        return 0.0;
    return numerator / denominator;
}

/// Basis value N(i, deg; t).
inline double plain_basis(int i, int deg, const double* knot, double t) {
    if (deg == 0)
        return t >= knot[i] && knot[i + 1] > t && knot[i + 1] > knot[i] ? 1.0 : 0.0;
    const double rising =
        plain_quotient(plain_basis(i, deg - 1, knot, t) * (t - knot[i]), knot[i + deg] - knot[i]);
    const double falling =
        plain_quotient(plain_basis(i + 1, deg - 1, knot, t) * (knot[i + deg + 1] - t),
                       knot[i + deg + 1] - knot[i + 1]);
    return rising + falling;
}

/// Point of the curve at @p t, divided by the sum of the basis values.
inline QPointF plain_point(int count, int deg, const QPointF* points, const double* knot,
                           double t) {
    double x = 0.0;
    double y = 0.0;
    double sum = 0.0;
    for (int i = 0; i < count; ++i) {
        const double value = plain_basis(i, deg, knot, t);
        x = x + value * points[i].x();
        y = y + value * points[i].y();
        sum = sum + value;
    }
    return QPointF(x / sum, y / sum);
}

/// The curve at 0.001, 0.002, ... below 1.
inline QPolygonF plain_curve(int count, int deg, const QPointF* points, const double* knot) {
    QPolygonF curve;
    const double step = 1.0 / 1000.0;
    for (double u = 0.001; 1.0 > u; u = u + step)
        curve.append(plain_point(count, deg, points, knot, u));
    return curve;
}
