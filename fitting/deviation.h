// SPDX-FileCopyrightText: Aerolith developers
// How far a spline file lies from a table, in the window's frame. Knows nothing of the search.
#pragma once

#include <QPolygonF>

#include <optional>

class SplineFoil;

namespace fitting {

/// The tolerance over the first 20 % of the chord; behind it twice as much is allowed.
constexpr double usual_tolerance = 4e-4;
constexpr double nose_share = 0.2;

/// Distances of the points of a table to the curve of a spline, chord units.
struct Deviation {
    double largest = 0.0;
    QPointF largest_at; ///< The point of the table, window's frame.
    double root_mean_square = 0.0;
    double largest_upper = 0.0; ///< Per side; the side of greater mean height is the upper one.
    double largest_lower = 0.0;
    double largest_over_tolerance = 0.0; ///< Largest distance, behind the nose share halved.
    double largest_between = 0.0; ///< Of the curve through the points, at seven places an edge.
    int outside = 0;              ///< Points farther than the tolerance asked about.
    int points = 0;
};

/// Compares @p spline, as a file holds it in pixels of any widget, with @p table in any frame.
/// The spline is settled as the window does it, the table scaled by the width of its points;
/// both have their first point at (1, 0). Every distance is searched over the whole curve.
/// @param tolerance over the first 20 % of the chord, chord units
/// @return none for a spline that does not settle or has no curve, and for a table without
///         width or with points that are not finite
std::optional<Deviation> deviation(const QPolygonF& table, const SplineFoil& spline,
                                   double tolerance = usual_tolerance);

} // namespace fitting
