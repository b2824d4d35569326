// SPDX-FileCopyrightText: Aerolith developers
// The search for the best spline with a given number of control points.
#pragma once

#include "fitting/problem.h"

namespace fitting {

/// The extent of a search. All counts are fixed; no clock is read.
struct Effort {
    int starts = 5;   ///< Number of starting_powers to use, in their order.
    int polished = 2; ///< Number of best starts that go to the highest p.
    /// Rounds that move control points to the largest distances. After four failures in a row, the
    /// control points are moved at random.
    int relocations = 2;
    int shakes = 400; ///< Random shares for tables without noise, see exact_noise.

    double least_leg = 0.0051; ///< Least distance of neighbouring control points, chord units.

    static Effort without_shakes() { return {5, 2, 2, 0}; }
    static Effort thorough() { return {7, 3, 12}; }
    static Effort long_search() { return {7, 4, 120, 400}; }
    static Effort best() { return {7, 4, 60, 400, 5e-4}; }
};

/// Below this noise (chord units) a table was computed from a smooth curve, neither measured nor
/// rounded. It may come from a spline of the same kind. The right shares of control points then
/// reproduce it exactly, so they are searched for with random numbers.
constexpr double exact_noise = 1e-8;

/// Below this noise a table may come from such a spline but have few points, which raises the
/// noise. Its pieces are searched for, see spread_by_pieces().
constexpr double smooth_noise = 1e-6;

/// The share 0..1 of control points before each target, if they are spread along the outline by
/// (curvature + floor)^exponent.
std::vector<double> spread_by_curvature(const Outline& outline, const std::vector<Target>& targets,
                                        double exponent);

/// The same if the pieces of @p state become shorter where targets are far, to even out the
/// distances. The share of each piece is proportional to its largest distance to the power
/// @p exponent.
std::vector<double> spread_by_distance(const Problem& problem, const State& state, double exponent);

/// The best spline found, settled, in the frame of the outline.
/// @param by_tolerance whether targets behind the first 20 % of the chord count half
State search(const Outline& outline, int count, Ends ends, bool by_tolerance, const Effort& effort);

} // namespace fitting
