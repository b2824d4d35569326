// SPDX-FileCopyrightText: Aerolith developers
// The spline evaluated by the plain recursion.
#pragma once

#include "document/parastruct.h"

#include <QPointF>
#include <QPolygonF>

namespace baseline {

/// The basis value N(i, deg; t): two calls for the next lower degree each.
double deBoor(int i, int deg, const double* knot, double t);

/// The weighted mean of the control points with the basis values at @p t as weights.
QPointF B_spline_point(int num_pnt, int deg, const QPointF* Cp, const double* knot, double t);

/// The curve at 0.001, 0.002, ... below 1.
QPolygonF sample(int num_pnt, int deg, const QPointF* Cp, const double* knot);

/// Every sample of the curve by B_spline_point(); nothing is kept between calls.
QPolygonF make_SplinePoly(const SplineFoil& spline);

} // namespace baseline
