// SPDX-FileCopyrightText: Aerolith developers
// Finds the pieces of a spline in a table that was made from it.
#pragma once

#include "fitting/outline.h"

namespace fitting {

/// The points @p first to @p last of a table, if they lie on one conic.
struct Run {
    int first = 0;
    int last = 0;
    /// For a parabola, the direction across its axis. The parameter of a piece is linear in it.
    Point even = Point::Zero();

    int size() const { return last - first + 1; }
};

/// The longest runs of points that lie on one conic, within @p tolerance (chord units), in the
/// order of the points. Any five points lie on a conic, so a run has at least seven. The points of
/// a line and any two more points also lie on one, so the run of a line may be two points too long.
/// If two runs share more than two points, the shorter one is left out.
std::vector<Run> conic_runs(const Points& points, double tolerance);

/// The parameter 0..1 of each target on a spline of @p count control points, assuming that the
/// outline was made from it. Each run of conic_runs() is a piece. Pieces without a run share the
/// gaps evenly.
/// @return empty if there are more runs than pieces, or fewer than half as many
std::vector<double> spread_by_pieces(const Outline& outline, const std::vector<Target>& targets,
                                     int count, double tolerance);

} // namespace fitting
