// SPDX-FileCopyrightText: Aerolith developers
// Products and lengths of plane vectors.
#pragma once

#include <QPointF>

#include <cmath>

namespace sections {

/// Scalar product.
inline double dot(QPointF a, QPointF b) {
    return a.x() * b.x() + a.y() * b.y();
}

/// a.x b.y - a.y b.x: positive when @p b lies to the left of @p a with y upwards.
inline double cross(QPointF a, QPointF b) {
    return a.x() * b.y() - a.y() * b.x();
}

/// Length of @p a.
inline double norm(QPointF a) {
    return std::hypot(a.x(), a.y());
}

/// @p a rotated by 90 degrees to the left (y upwards).
inline QPointF turned_left(QPointF a) {
    return QPointF(-a.y(), a.x());
}

/// @p a scaled to the length 1; (0, 0) for a vector of no length or not finite.
inline QPointF unit(QPointF a) {
    const double length = norm(a);
    return length > 0.0 && std::isfinite(length) ? QPointF(a.x() / length, a.y() / length)
                                                 : QPointF(0.0, 0.0);
}

/// @p a with 0 for each coordinate whose absolute value is below @p least. Squares and quotients of
/// the remaining ones neither vanish nor overflow.
inline QPointF flushed(QPointF a, double least) {
    return QPointF(std::abs(a.x()) < least ? 0.0 : a.x(), std::abs(a.y()) < least ? 0.0 : a.y());
}

/// Coordinates below this fraction of an outline's extent count as 0.
constexpr double nothing = 1e-60;

/// Angle from the direction of @p a to that of @p b, radians within -pi..pi, positive to the left;
/// 0 where either has no length.
inline double turning(QPointF a, QPointF b) {
    return std::atan2(cross(a, b), dot(a, b));
}

} // namespace sections
