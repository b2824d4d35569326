// SPDX-FileCopyrightText: Aerolith developers
// Tables for the tests of the fit.
#pragma once

#include "document/parastruct.h"

#include <QPolygonF>

/// A four-digit section with a closed trailing edge, from the trailing edge over the upper side and
/// back, with cosine spacing.
/// @param thickness, camber fractions of the chord
/// @param points            odd, at least 5
QPolygonF four_digit(double thickness, double camber, int points);

/// @p table with normally distributed noise in y. The same @p seed gives the same noise.
QPolygonF with_noise(QPolygonF table, double deviation, unsigned seed);

/// A table with few points, a flat lower side and four decimals of percent. A fit once made a loop
/// between its points.
QPolygonF coarse_flat_bottom();

/// A spline like a section, and 400 points of its curve. They include its ends and the sample with
/// the least x, so that table and spline have the same width.
struct SplineAndTable {
    SplineFoil spline; // chord units
    QPolygonF table;
};
SplineAndTable random_spline(unsigned seed);

/// @p table mirrored in y, reversed, scaled and moved, as the bits of @p kind say.
QPolygonF copy_of(const QPolygonF& table, int kind);
