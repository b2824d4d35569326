// SPDX-FileCopyrightText: Aerolith developers
// Evaluation of B-spline curves by the Cox-de Boor recursion (C. de Boor,
// "A Practical Guide to Splines", 1978, ch. IX and X) and of cubic Bezier functions.
#pragma once

#include "numerics/constants.h"

#include <QPointF>

/// The smaller of two values: @p a when @p b > @p a, otherwise @p b (so a NaN in
/// either gives @p b).
double dmin(double a, double b);

/// Bernstein basis value B(i, n; t), from the recursion
/// B(i, n) = (1 - t) B(i, n-1) + t B(i-1, n-1).
/// @param i index; below 0 or above @p n gives 0
/// @param n degree; below 0 gives 0. Time grows with i * n.
/// @param t parameter, usually in [0, 1]
double Bn(int i, int n, double t);

/// Derivative of Bn with respect to t: n (B(i-1, n-1; t) - B(i, n-1; t)); 0 where Bn is
/// constant.
double d_Bn(int i, int n, double t);

/// Value at @p t of the cubic Bezier function with the four coefficients P[0..3].
double spline_value(double* P, double t);

/// Derivative with respect to t of spline_value.
double spline_d_value(double* P, double t);

/// B-spline basis value N(i, deg; t) by the Cox-de Boor recursion. Spans are
/// half-open, [knot[i], knot[i+1]), and an empty span counts as 0, and so does a term 0/0, which
/// repeated knots give. Any other quotient is left as the division gives it.
/// @param i    basis index
/// @param deg  degree; below 0 gives 0. Time grows with its square.
/// @param knot knots, of which knot[i] .. knot[i+deg+1] are read
/// @param t    parameter
double deBoor(int i, int deg, double* knot, double t);

/// Point at @p t of the B-spline curve, normalised by the sum of the basis values of all control
/// points: sum(N_i Cp[i]) / sum(N_i). With uniform, unclamped knots the division pins the ends of
/// the curve to the first and last control points. Where all basis values are 0 the result is NaN.
/// @param num_pnt number of control points; 0 or less gives NaN
/// @param deg     degree
/// @param Cp      control points, Cp[0] .. Cp[num_pnt-1], in any unit of length
/// @param knot    knots, of which knot[0] .. knot[num_pnt+deg] are read
/// @param t       parameter
QPointF B_spline_point(int num_pnt, int deg, QPointF* Cp, double* knot, double t);
