// SPDX-FileCopyrightText: Aerolith developers
// Truncated trigonometric series through the samples of a closed contour, one
// coordinate at a time, and their values at 1000 angles.
//
// A fit of order N takes 2N samples at the angles k Pi / N and has the cosine terms
// An[0..N] and the sine terms Bn[1..N-1]. Angles are in radians and use Pi of numerics/constants.h.
// It falls short of pi by 5.9e-10, so a constant input leaves coefficients of about 1e-9 of its
// value besides An[0].
//
// Unless stated otherwise: an order of 0 or less makes every sum, every value and every output 0;
// the caller provides arrays of the stated sizes; time grows with the product of order and samples.
// For orders up to 500 and angles within one turn, results differ from the exact sums by at most
// 1e-12 of the largest sample (1.3e-12 for samples chosen to add up every rounding). Input that is
// not finite gives results that are not finite.
#pragma once

#include <QPolygonF>

/// @name Fit
/// @{

/// Starts a fit: clears An[0..N-1] and Bn[0..N-1], sets Tp[0..2N-1] to the angles k Pi / N and
/// copies func[0..2N-1] into @p fYn. An[N] is left as it is. An order of 0 or less writes nothing.
void Init_fu_fields(int N, double* An, double* Bn, double* Tp, double* fYn, double* func);

/// Sum of fYn[k] cos(m Tp[k]) over k = 0 .. 2N-1.
double fSum_yn_cos(int N, double* Tp, double* fYn, int m);

/// Sum of fYn[k] sin(m Tp[k]) over k = 0 .. 2N-1.
double fSum_yn_sin(int N, double* Tp, double* fYn, int m);

/// Coefficients of the samples @p fYn at the angles @p Tp: An[m] = fSum_yn_cos / N for
/// m = 0 .. N and Bn[m] = fSum_yn_sin / N for m = 1 .. N-1. Bn[0] is left as it is.
/// @param An N + 1 places. Order 0 sets An[0] to 0, an order below 0 writes nothing.
/// @param Bn N places
void Proc_A_bn(int N, double* An, double* Bn, double* Tp, double* fYn);

/// Coefficients of the 2N samples @p y: Init_fu_fields and Proc_A_bn on internal arrays, so Bn[0]
/// is 0.
/// @param An N + 1 places. Order 0 sets An[0] to 0, an order below 0 writes nothing.
/// @param Bn N places
void F_coef(int N, double* y, double* An, double* Bn);
/// @}

/// @name Values of a series
/// @{

/// Sum of An[m] cos(m t) + Bn[m] sin(m t) over m = 1 .. N-2, plus
/// (An[0] + An[N-1] cos(2N Pi / 1000)) / 2. The sum ends one term before that of an
/// interpolant, and the angle of the closing term is fixed.
/// @param An,Bn N places
/// @param t     angle
double f_theta_value(int N, double* An, double* Bn, double t);

/// f_theta_value at the angle 2k Pi / 1000, for any @p k.
double f_k_value(int N, double* An, double* Bn, int k);

/// Derivative series at t = 2k Pi / 1000, for any @p k: the sum of
/// -m An[m] sin(m t) + m Bn[m] cos(m t) over m = 1 .. N-2, divided by N.
double f_Dvalue(int N, double* An, double* Bn, int k);

/// An[0] / 2 plus the sum of An[m] cos(m k h) + Bn[m] sin(m k h) over m = 1 .. M-1:
/// sample @p k of @p n evenly spaced ones over one turn, both ends included.
/// @param n     samples; their step h is 2 Pi / (n - 1), and 0 for n = 1
/// @param M     order
/// @param An,Bn M places
double f_value(int n, int M, double* An, double* Bn, int k);

/// Angle of sample @p i of @p n, from 0 through Pi at n / 2 to 2 Pi: wide steps at the ends and
/// narrow ones around Pi, the nose of a contour that starts at the trailing edge. Pi sqrt(sin(i Pi
/// / n)) up to n / 2, from there on Pi (2 - sqrt(sin((n - i) Pi / n))).
/// @return NaN where the sine is negative (such as for @p i in -@p n .. -1) and for n = 0
double f_theta(int i, int n);
/// @}

/// @name Whole contours
/// @{

/// Fits 2N samples @p y and writes to out[0..999] the series at the angles f_theta(i, 1000), bit
/// for bit as f_theta_value gives it.
void Fourier_Proc(int N, double* y, double* out);

/// Fits 2N samples @p y and writes to out[0..999] the series without its sine terms
/// at the angles 2k Pi / 1000.
void Fourier_Cos_Proc(int N, double* y, double* out);

/// Fits 2M samples @p y and writes to out[0..n-1] the values f_value of the series
/// without its sine terms. A count @p n of 0 or less writes nothing.
void Fourier_Skeleton(int n, int M, double* y, double* out);

/// Slope dy/dx of a contour of @p n points, from the derivative series of order n / 2
/// of both coordinates.
/// @param x,y n samples each; with odd @p n the last is not read
/// @param out n + 1 values, out[k] at the angle 2k Pi / 1000: dy / dx where |dx| is at
///            least 1, otherwise 0 (also where dx is NaN). A count below 0 writes
///            nothing.
void Fourier_Derivate(int n, double* x, double* y, double* out);

/// Second derivative of y along a contour: the absolute values of the derivative
/// series of the derivative series, both of half as many terms as @p poly has points.
/// The values are also logged at debug level in the category
/// "aerolith.numerics.fourier", which is off unless switched on.
/// @param poly contour of any size; with more than 1001 points the second fit needs more than the
///             1000 values of the first and takes 0 for the rest
/// @param out  1000 values, out[k] at the angle 2k Pi / 1000
void Fourier_Polygon_D2(QPolygonF poly, double* out);
/// @}
