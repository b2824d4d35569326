// SPDX-FileCopyrightText: Aerolith developers
// A table made ready for a fit.
#pragma once

#include "fitting/spline.h"

#include <QPolygonF>
#include <QString>

namespace fitting {

/// What the curve is drawn to.
struct Target {
    Point point;
    double arc = 0.0;     ///< Length of the polygon through the points up to it.
    double weight = 1.0;  ///< By which its distance counts.
    bool in_table = true; ///< Else it lies between two points, on the curve through them.
    int turn = 0;         ///< 1 where the outline turns to the left, -1 to the right, 0 unclear.
};

/// An outline in a frame of its own in which moved, scaled, mirrored and reversed copies of a
/// table are the same: first point at (1, 0), 1 wide, counter-clockwise, the mean height of the
/// points above the trailing edge. Coordinates are rounded to 2^-34, so that the copies agree
/// in their last bits too.
struct Outline {
    Points points;      ///< Of the table, repeated ones left out.
    double noise = 0.0; ///< Standard deviation of the points across the curve, see noise_level().
    int reversals = 0;  ///< How often the curvature changes its sign by more than the noise.
    std::vector<int> corners; ///< Points where the curve through the points has a corner.

    bool reversed = false; ///< Against the order of the table.
    bool mirrored = false; ///< Against the table.

    double length() const; ///< Of the polygon through the points.
    Point nose() const;    ///< The first of the points with the least x.

    /// The points of the table and, where they are few against @p count control points, points
    /// between them on the curve through them. @p count is 4..30.
    std::vector<Target> targets(int count) const;

    /// Control points of a fit in the frame of the window: first one at (1, 0) in the order of
    /// the table, y up, on the table's side.
    Points in_window_frame(const Points& control) const;

    std::vector<double> arcs;    ///< Of the points.
    std::vector<int> turns;      ///< Of the points, see Target::turn.
    std::vector<Points> between; ///< For each edge, seven points of the curve through the points.
};

/// An outline, or the reason why there is none.
struct Preparation {
    Outline outline;
    QString reason; ///< Empty when there is an outline.
};

/// Makes @p table ready. Refused are fewer than four different points, numbers that are not
/// finite or beyond 1e6, no width, and no thickness: an outline that encloses less than 1e-4 of
/// its squared width.
Preparation prepare(const QPolygonF& table);

/// The table in the window's frame: first point at (1, 0), 1 wide, y up. At least one point and
/// a width.
QPolygonF in_window_frame(const QPolygonF& table);

/// Standard deviation of the points of a table across the curve. Each point is compared with
/// the polynomial through the two, and the three, points on either side of it; the median of
/// these distances, each divided by the root of the squared sum of its coefficients, is that of
/// normally distributed noise times 0.6745. The lower one of both: what the table's own shape
/// adds falls with the degree. 0 for fewer than five points.
double noise_level(const Points& points);

/// The sense of turning at each point: that of the nearest symmetric pair of points whose chord
/// lies farther than @p threshold from it, 0 where there is none.
std::vector<int> turning_signs(const Points& points, double threshold);

/// How often the sign changes, zeros left out.
int count_reversals(const std::vector<int>& signs);

} // namespace fitting
