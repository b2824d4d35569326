// SPDX-FileCopyrightText: Aerolith developers
// Tables that the tests of the fit share.
#pragma once

#include "document/parastruct.h"

#include <QPolygonF>

/// A four-digit section with a closed trailing edge, from there over the upper side and back;
/// cosine spacing.
/// @param thickness, camber fractions of the chord
/// @param points            odd, at least 5
QPolygonF four_digit(double thickness, double camber, int points);

/// @p table with normally distributed noise across x, the same for the same @p seed.
QPolygonF with_noise(QPolygonF table, double deviation, unsigned seed);

/// Four decimals of percent and a flat bottom: a table with few points over which a fit once
/// made a loop.
QPolygonF coarse_flat_bottom();

/// A spline like a section, and 400 points of its curve among which are its ends and the sample
/// with the least x, so that both are equally wide.
struct SplineAndTable {
    SplineFoil spline; // chord units
    QPolygonF table;
};
SplineAndTable random_spline(unsigned seed);

/// Every step of it mirrored (y), turned round, scaled and moved, as bits of @p kind say.
QPolygonF copy_of(const QPolygonF& table, int kind);
