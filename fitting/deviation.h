// SPDX-FileCopyrightText: Aerolith developers
// The distance of a spline file from a table, in the window's frame. Independent of the search.
#pragma once

#include <QPolygonF>

#include <optional>

class SplineFoil;

namespace fitting {

/// The tolerance over the first 20 % of the chord; twice as much is allowed behind.
constexpr double usual_tolerance = 4e-4;
constexpr double nose_share = 0.2;

/// Distances of the points of a table from the curve of a spline, chord units.
struct Deviation {
    double largest = 0.0;
    QPointF largest_at; ///< The point of the table, in the window's frame.
    double root_mean_square = 0.0;
    double largest_upper = 0.0; ///< The upper side is that of greater mean height.
    double largest_lower = 0.0;
    double largest_over_tolerance = 0.0; ///< Largest distance; counts half behind the nose share.
    double largest_between = 0.0; ///< From the interpolating curve, at seven places per edge.
    int outside = 0;              ///< Number of points outside the tolerance.
    int points = 0;
};

/// Compares @p spline with @p table. The spline is in pixels of any widget, as in a file; the table
/// is in any frame. The spline is settled as in the window, the table is scaled by the width of its
/// points, and both have their first point at (1, 0). Each distance is searched over the whole
/// curve.
/// @param tolerance over the first 20 % of the chord, chord units
/// @return nothing for a spline that does not settle or has no curve, and for a table that
///         prepare() refuses
std::optional<Deviation> deviation(const QPolygonF& table, const SplineFoil& spline,
                                   double tolerance = usual_tolerance);

} // namespace fitting
