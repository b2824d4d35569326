// SPDX-FileCopyrightText: Aerolith developers
// New points on a curve.
#pragma once

#include "sections/curve.h"

#include <QPolygonF>
#include <QString>

namespace sections {

/// How points are spaced over each stretch between corners, ends and nose.
enum class Spacing {
    curvature, ///< Their distance decreases with the root of the curvature, so that the straight
               ///< lines between them are about equally far off the curve.
    cosine,    ///< Dense at both ends of the stretch, by the cosine of equal angles.
    uniform,   ///< Equal lengths along the curve.
};

/// New points, or the reason for having none.
struct Resampled {
    QPolygonF points;
    double off =
        0.0; ///< The greatest distance of the curve from the straight lines between the points.
    QString reason; ///< Empty when there are points.
};

/// Spreads @p count points over @p curve, in any unit. Its ends, its corners and its point of least
/// x are always among them, so that the points are as wide as the curve.
/// @param count at most 1000000; refused below the number of those fixed points plus 3
Resampled resample(const Curve& curve, int count, Spacing spacing);

/// The greatest distance of @p curve from the straight lines between the places at the lengths @p
/// stops (ascending) along it.
double distance_of_chords(const Curve& curve, const std::vector<double>& stops);

} // namespace sections
