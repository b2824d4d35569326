// SPDX-FileCopyrightText: Aerolith developers
// The search for the best spline with a given number of control points.
#pragma once

#include "fitting/problem.h"

namespace fitting {

/// How much is searched. All counts are fixed: no clock is read.
struct Effort {
    int starts = 5;   ///< Of starting_powers, in their order.
    int polished = 2; ///< Best starts that are taken to the highest p.
    /// Rounds in which control points move to where the distances are; when four in a row have
    /// failed, by chance.
    int relocations = 2;
    int shakes = 400; ///< For tables without noise, see exact_noise.

    double least_leg = 0.0051; ///< Kept between neighbouring control points, chord.

    static Effort without_shakes() { return {5, 2, 2, 0}; }
    static Effort thorough() { return {7, 3, 12}; }
    static Effort long_search() { return {7, 4, 120, 400}; }
    static Effort best() { return {7, 4, 60, 400, 5e-4}; }
};

/// Below this noise (chord) a table was made from a smooth curve, neither measured nor rounded. It
/// may come from a spline of the same kind, which is met exactly if its control points are shared
/// out right: so they are shaken until they are.
constexpr double exact_noise = 1e-8;

/// Below this one it may have been made so with few points, whose distances count as noise: then
/// its pieces are looked for, see spread_by_pieces().
constexpr double smooth_noise = 1e-6;

/// For each target the share 0..1 of control points before it, when they are spread by
/// (curvature + floor)^exponent along the outline.
std::vector<double> spread_by_curvature(const Outline& outline, const std::vector<Target>& targets,
                                        double exponent);

/// The same, when the pieces of @p state are made shorter where targets are far, such that all
/// pieces have the same distance: the share of each piece follows its largest distance to the
/// power @p exponent.
std::vector<double> spread_by_distance(const Problem& problem, const State& state, double exponent);

/// The best spline that was found, settled, in the frame of the outline.
/// @param by_tolerance weigh targets behind the first 20 % of the chord half
State search(const Outline& outline, int count, Ends ends, bool by_tolerance, const Effort& effort);

} // namespace fitting
