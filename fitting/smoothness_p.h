// SPDX-FileCopyrightText: Aerolith developers
// What is to be said of a fit besides its distances.
#pragma once

#include "fitting/fit.h"

namespace fitting {

/// How often the curvature of the spline changes its sign. A piece bends to the side to which
/// its control point turns, so they are counted on the control points; heights below 1e-6 chord
/// count as straight.
int count_reversals(const Points& control);

/// The distance that neighbouring control points keep, chord units: the window picks them within
/// eight pixels.
constexpr double pick_distance = 0.005;

/// Noise of a table from which on it is spoken of, chord units: that of four decimals is 2.9e-5.
constexpr double spoken_noise = 5e-5;

/// Between the points of a table the curve may be this many times as far from the curve through
/// them as it is from the points; beyond, and from half the tolerance on, it is spoken of.
constexpr double bearable_swing = 5.0;

/// What a user should know of @p fit: a missed tolerance, corners that the curve rounds by more
/// than it, swings between the points, a noisy table, more control points than it bears, reversals
/// that it does not call for, control points too close to pick.
/// @param control of the fit, in the frame of the outline
QList<tables::Finding> findings(const Outline& outline, const Points& control, const Fit& fit,
                                double tolerance);

} // namespace fitting
