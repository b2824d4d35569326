// SPDX-FileCopyrightText: Aerolith developers
// The findings on a fit.
#pragma once

#include "fitting/fit.h"

namespace fitting {

/// How often the curvature of the spline reverses. A piece bends to the side to which its control
/// point turns, so the reversals are counted on the control points. Heights below 1e-6 chord count
/// as straight.
int count_reversals(const Points& control);

/// The least distance of neighbouring control points, chord units: the window selects them within
/// eight pixels.
constexpr double pick_distance = 0.005;

/// From this noise on, a table is reported as noisy. Chord units; rounding to four decimals gives
/// 2.9e-5.
constexpr double spoken_noise = 5e-5;

/// How many times as far the spline may be from the interpolating curve between the points as it is
/// from the points. Larger distances are reported if they exceed half the tolerance.
constexpr double bearable_swing = 5.0;

/// The findings on @p fit: a missed tolerance, corners rounded by more than the tolerance, swings
/// between the points, a noisy table, too many control points for the table, reversals that the
/// table does not have, and control points too close to select.
/// @param control control points of the fit, in the frame of the outline
QList<tables::Finding> findings(const Outline& outline, const Points& control, const Fit& fit,
                                double tolerance);

} // namespace fitting
