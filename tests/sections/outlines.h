// SPDX-FileCopyrightText: Aerolith developers
// Outlines with known measures.
#pragma once

#include "document/parastruct.h"
#include "tables/table.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>

const double pi = std::acos(-1.0);

/// A four-digit section as in NACA report 460: thickness @p t, camber @p m at @p p, all fractions
/// of the chord. The thickness is perpendicular to the mean line; the trailing edge is open. From
/// the trailing edge along the upper side and back, cosine-spaced.
/// @param count points of each side, including the nose, which both share
inline QPolygonF naca(double m, double p, double t, int count) {
    const auto point = [=](double x, double side) {
        const double half = 5.0 * t *
                            (0.2969 * std::sqrt(x) - 0.126 * x - 0.3516 * x * x +
                             0.2843 * x * x * x - 0.1015 * x * x * x * x);
        const bool front = x < p;
        const double q = front ? p : 1.0 - p;
        const double height =
            m == 0.0 ? 0.0 : m / (q * q) * ((front ? 0.0 : 1.0 - 2.0 * p) + 2.0 * p * x - x * x);
        const double slope = m == 0.0 ? 0.0 : std::atan(2.0 * m / (q * q) * (p - x));
        return QPointF(x - side * half * std::sin(slope), height + side * half * std::cos(slope));
    };
    QPolygonF outline;
    for (int i = -count; i <= count; ++i)
        outline << point(0.5 * (1.0 - std::cos(pi * i / count)), i < 0 ? 1.0 : -1.0);
    return outline;
}

/// An ellipse with the axes 1 and @p b, from the trailing edge along the upper side and back.
inline QPolygonF ellipse(int count, double b) {
    QPolygonF points;
    for (int i = 0; i <= count; ++i) {
        const double a = 2.0 * pi * i / count;
        points << QPointF(0.5 + 0.5 * std::cos(a), 0.5 * b * std::sin(a));
    }
    return points;
}

/// A readable table of @p points.
inline tables::Table table_of(const QPolygonF& points) {
    tables::Table table;
    table.points = points;
    return table;
}

/// @p points in the other order.
inline QPolygonF reversed(QPolygonF points) {
    std::reverse(points.begin(), points.end());
    return points;
}

/// @p points scaled and rotated to the left about the origin.
inline QPolygonF turned(const QPolygonF& points, double degrees, double scale = 1.0) {
    const double a = degrees * pi / 180.0;
    QPolygonF result;
    for (const QPointF& p : points)
        result << QPointF(scale * (p.x() * std::cos(a) - p.y() * std::sin(a)),
                          scale * (p.x() * std::sin(a) + p.y() * std::cos(a)));
    return result;
}

/// The spline with the control points @p points and uniform knots.
inline SplineFoil spline_of(const QPolygonF& points) {
    SplineFoil spline;
    spline.num_pnt = int(points.size());
    std::copy(points.begin(), points.end(), spline.CP);
    spline.init_knots();
    return spline;
}

/// Control points of a section.
const QPolygonF hull = {{1.0, 0.0},   {0.7, 0.09},   {0.3, 0.14},  {0.0, 0.09},
                        {0.0, -0.06}, {0.25, -0.08}, {0.6, -0.04}, {1.0, -0.002}};
