// SPDX-FileCopyrightText: Aerolith developers
// A table prepared for a fit.
#pragma once

#include "fitting/spline.h"

#include <QPolygonF>
#include <QString>

namespace fitting {

/// A point that the spline should pass.
struct Target {
    Point point;
    double arc = 0.0;     ///< Length of the polygon of the table up to the point.
    double weight = 1.0;  ///< Factor of its distance.
    bool in_table = true; ///< If not, it lies on the interpolating curve between two points.
    int turn = 0;         ///< 1 where the outline turns to the left, -1 to the right, 0 unclear.
};

/// An outline in its own frame: first point at (1, 0), 1 wide, counter-clockwise, the mean height
/// of the points above the trailing edge. There, moved, scaled, mirrored and reversed copies of a
/// table are equal. Coordinates are rounded to 2^-34, so that even the last bits of the copies
/// agree.
struct Outline {
    Points points;            ///< Points of the table without repetitions.
    double noise = 0.0;       ///< See noise_level().
    int reversals = 0;        ///< How often the curvature reverses by more than the noise.
    std::vector<int> corners; ///< Points at which the interpolating curve has a corner.

    bool reversed = false; ///< Whether the points are in reverse order.
    bool mirrored = false; ///< Whether the outline is mirrored against the table.

    double length() const; ///< Length of the polygon of the points.
    Point nose() const;    ///< The first point with the least x.

    /// The points of the table. If they are few for @p count control points, 4..30, also points of
    /// the interpolating curve between them.
    std::vector<Target> targets(int count) const;

    /// Control points of a fit in the window's frame: the first one at (1, 0), in the order of the
    /// table, y up, not mirrored.
    Points in_window_frame(const Points& control) const;

    std::vector<double> arcs;    ///< Of each point, see Target::arc.
    std::vector<int> turns;      ///< Of each point, see Target::turn.
    std::vector<Points> between; ///< For each edge, seven points of the interpolating curve.
};

/// An outline, or why there is none.
struct Preparation {
    Outline outline;
    QString reason; ///< Empty if there is an outline.
};

/// Prepares @p table. Refuses fewer than four different points, coordinates that are not finite or
/// exceed 1e6, and outlines without width or thickness. An outline has no thickness if its area is
/// less than 1e-4 of its squared width.
Preparation prepare(const QPolygonF& table);

/// The table in the window's frame: first point at (1, 0), 1 wide, y up. The table needs at least
/// one point and a width.
QPolygonF in_window_frame(const QPolygonF& table);

/// Estimates the standard deviation of the points of a table across its curve. Each point is
/// compared with the polynomial through the two points on either side, and through the three. Each
/// distance is divided by the root of the sum of the squared coefficients. For normally distributed
/// noise their median is 0.6745 standard deviations. The lower of the two estimates counts: the
/// shape of the section adds less at the higher degree. 0 for fewer than five points.
double noise_level(const Points& points);

/// The sense of turning at each point. It is taken from the nearest symmetric pair of points whose
/// chord is farther than @p threshold from the point; 0 if there is none.
std::vector<int> turning_signs(const Points& points, double threshold);

/// How often the sign changes, without the zeros.
int count_reversals(const std::vector<int>& signs);

} // namespace fitting
