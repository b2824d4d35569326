// SPDX-FileCopyrightText: Aerolith developers
// Plane and space geometry, integration, clamping and number texts. No function keeps state or
// reports an error: a division by zero gives what floating-point arithmetic gives.
//
// Functions that take or return QVector3D carry single precision, as its
// components do; saved numbers depend on it.
#pragma once

#include "numerics/constants.h"

#include <QPointF>
#include <QPolygonF>
#include <QString>
#include <QVector3D>

/// @name Lengths and distances
/// Arguments and results in one unit of length.
/// @{

/// Length of the plane vector (x, y).
double norma2(double x, double y);

/// Length of the space vector (x, y, z).
double norma3(double x, double y, double z);

/// Distance between two points of the plane.
double Dist2(QPointF a, QPointF b);

/// Distance between two points in space: components and their squares in single precision, the root
/// of their sum in double.
double Dist3(QVector3D a, QVector3D b);

/// The least distance from @p p to @p a, @p b, @p c or @p d. The last argument is
/// not used.
double Rmin4(QPointF p, QPointF a, QPointF b, QPointF c, QPointF d, double);
/// @}

/// @name Signs and ranges
/// @{

/// 1 if @p x >= 0 (also for both zeros), otherwise -1 (also for NaN).
int Sign(double x);

/// @p x clamped to [min(a, b), max(a, b)].
int between(int a, int b, int x);

/// Whether min(a, b) <= x <= max(a, b).
bool is_between(int a, int b, int x);

/// Whether min(a, b) <= x <= max(a, b). A NaN @p x counts as between.
bool is_dbetween(double a, double b, double x);
/// @}

/// @name Points and polygons
/// @{

/// Mirror image of @p v across the x axis: y negated.
QVector3D p_SymY(QVector3D v);

/// Mean of four points.
QPointF Center4pnt(QPointF a, QPointF b, QPointF c, QPointF d);

/// Mean of all vertices; an empty polygon gives (0, 0).
QPointF CenterPoly(QPolygonF poly);

/// @p poly scaled by @p f about the mean of its vertices; empty in, empty out.
QPolygonF factorPoly(QPolygonF poly, double f);

/// Twice the signed area of the triangle a b c: positive when a, b, c turn
/// counter-clockwise with y upwards.
double Otriangle(QPointF a, QPointF b, QPointF c);

/// Whether @p p lies inside the quadrilateral a b c d, by the odd-even rule: the
/// edges of least x and y belong to it, those of greatest x and y do not.
bool in_polygon(QPointF a, QPointF b, QPointF c, QPointF d, QPointF p);

/// @p P rotated by @p a radians about (x0, y0): counter-clockwise with y upwards,
/// clockwise on a screen.
QPointF RotFix(double a, double x0, double y0, QPointF P);

/// RotFix with the centre given as the point @p C.
QPointF RotFixP(double a, QPointF C, QPointF P);

/// Centroid of the triangle A B C to within 0.001: takes the medial triangle, which halves the
/// perimeter, until the perimeter is below 0.001, and returns its first vertex. Ends after 2000
/// steps for a triangle that is not finite.
QPointF Sqeeze(QPointF A, QPointF B, QPointF C);

/// Vector from the foot of the perpendicular on the line A B to @p P (not the foot
/// itself). A = B divides by zero.
QVector3D NormalToLine(QVector3D A, QVector3D B, QVector3D P);

/// Where the line through @p P0 and @p P1 meets the plane through @p Q with the
/// normal @p N. A parallel line divides by zero.
QVector3D SurfacePnt(QVector3D Q, QVector3D P0, QVector3D P1, QVector3D N);

/// Shoelace sum of the polygon without the factor 1/2 and without the edge that
/// closes it: twice the signed area (y upwards) of a polygon whose last vertex
/// repeats the first. Summed in single precision. Fewer than 2 vertices give 0.
double PolygonSquare(QPolygonF poly);
/// @}

/// @name Integration
/// @{

/// Simpson's rule over f[0] .. f[n], spaced @p h apart; @p n even. f[0] has the weight 3 instead of
/// the usual 1. @p n below 0 gives 0.
double Simpson(int n, double h, double* f);

/// Trapezoid rule over f[0] .. f[n] on [a, b]. @p n below 1 gives 0.
double Trapez(int n, double a, double b, double* f);
/// @}

/// @name Number texts
/// @{

/// @p x cut (not rounded) to two decimals, in the current locale. Values that exceed 64 bits after
/// the multiplication by 100 are not cut; the infinities and NaN give "INF", "-INF" and "NAN".
QString R_round2(double x);

/// @p n as a whole number with the current locale's digit grouping.
QString I_out(long n);

/// @p x with six significant digits, brought to the width of a table column: zeros replace the
/// characters of the text from the seventh on, so 0.123456 gives "0.123400", and a text without a
/// point gets ".000000".
QString R_out6(double x);
/// @}
