// SPDX-FileCopyrightText: Aerolith developers
// The pieces of a spline, read off a table that was made from it.
#pragma once

#include "fitting/outline.h"

namespace fitting {

/// Points @p first to @p last of a table, which lie on one conic.
struct Run {
    int first = 0;
    int last = 0;
    /// Across the axis if the conic is a parabola: along it the parameter of a piece runs evenly.
    Point even = Point::Zero();

    int size() const { return last - first + 1; }
};

/// The longest runs of points that lie on one conic each, within @p tolerance (chord units), in the
/// order of the points. Five points always do, so a run has at least seven. All points of a line
/// and any two more do too, so a line shows up to two points too long. Where two runs share more
/// than two points the shorter one is left out.
std::vector<Run> conic_runs(const Points& points, double tolerance);

/// For each target the parameter 0..1 that it has on a spline of @p count control points of which
/// the outline was made, if that is so: each run of conic_runs() is a piece, and pieces too short
/// to show share the gaps evenly.
/// @return empty where the runs are more than there are pieces, or fewer than half of them
std::vector<double> spread_by_pieces(const Outline& outline, const std::vector<Target>& targets,
                                     int count, double tolerance);

} // namespace fitting
