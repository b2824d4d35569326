// SPDX-FileCopyrightText: Aerolith developers
// Wing sections as outlines: reading coordinate tables, measuring, generating and
// listing them. An outline is a QPolygonF in chord units, from the trailing edge
// (1, 0) over the upper side to the nose and back along the lower side, y upwards.
#pragma once

#include "document/parastruct.h"

#include <QByteArray>
#include <QPointF>
#include <QPolygonF>
#include <QString>
#include <QVector3D>

class QTextEdit;

/// @name Reading
/// The file readers open regular files only, drop carriage returns, and accept UTF-8 (UTF-16 and
/// UTF-32 with a byte-order mark). A file that cannot be read gives an empty result without any
/// message, and so does one that exceeds the limit of read_file() or the available memory.
/// Coordinates have single precision; a field that is not a number, or exceeds single precision,
/// counts as 0.
/// @{

/// The outline of a coordinate table, normalised twice by Normalize_airfoil2.
/// @return empty when the file cannot be read, its layout is not recognised, or it has
///         more than 4 million points
QPolygonF airfoil_Read(QString fileName);

/// The result of airfoil_Read for a file of @p bytes, without its limit on the size.
/// @throws std::bad_alloc when there is not enough memory
QPolygonF airfoil_Read_Bytes(const QByteArray& bytes);

/// The outline of a coordinate table in file units. The layout is determined by the number of
/// decimal points in the third numeric line: 1 for a half contour below a header row, 2 for one
/// continuous outline, 3 for the columns x, upper y, lower y; a two-column table whose first values
/// are >= 1, <= 0 and > 0 is a half contour too.
/// @return empty when the file cannot be read or its layout is not recognised
QPolygonF airfoil_Read_All(QString fileName);

/// One point (x, y) for each numeric line, in file order.
QPolygonF Read_Normal(QString fileName);

/// Half contour: n numeric lines, of which line 0 is a header, give the 2n - 3
/// points from the last line up to line 1 and, mirrored, from line 2 to the last.
QPolygonF Read_Symetric(QString fileName);

/// Three columns: n numeric lines give 2n points, the lower side from the last line
/// to the first, then the upper side from the first to the last.
QPolygonF Read_Eppler(QString fileName);

/// @p s with tabs replaced by blanks and commas by points, without decorations (the characters ? !
/// ' ` _ @ # $ % ^ & * ( ) { } [ ] | ; : / > < ~ = + and both guillemets), and without white space
/// at its ends.
QString clean(QString s);

/// 1 if @p s holds a letter of any script, otherwise 0.
int isLatString(QString s);

/// @p s with "0" inserted before bare points: if its first character is "." every "." becomes "0.",
/// otherwise every "-." becomes "-0.".
QString Repair_NumString(QString s);

/// Splits @p line into fields of digits, "." and "-".
/// @param S receives the first three fields in S[0..2], empty where there are fewer;
///          further fields are dropped
void FindNumericSubStrings(QString line, QString* S);

/// The lines of a text file, each cleaned, repaired and terminated by a line feed.
QString FoilText_Read(QString fileName);

/// The outline of a two-column text in memory, in lines of at most 22 characters
/// (longer ones count as several), normalised once by Normalize_airfoil2. Each non-empty line gives
/// a point, and its last character is not read.
QPolygonF plainTextRead(QString mtext);
/// @}

/// @name Analysis
/// Functions that need a certain point accept an outline of any size. Where the point does not
/// exist, the result keeps its initial value.
/// @{

/// Scales @p poly to unit chord by the extent of x, shifts its first point to (1, 0)
/// and drops the points whose x is then outside 0..1 (a NaN x stays).
/// @param rot 1 keeps the sides, -1 mirrors top to bottom
/// @return empty for an empty outline; an extent of 0 divides by 0
QPolygonF Normalize_airfoil2(QPolygonF poly, int rot);

/// Texts with the overall height of an outline and the stations of its extremes, all in percent of
/// chord with two decimals.
/// @param foilpoly the outline, not null
/// @param St       receives " Thickness: H  at  M % " in St[0] (height and mean station) and the
///                 two stations in St[1]; two empty texts for an empty outline
void FindThickness(QPolygonF* foilpoly, QString* St);

/// Finds the nose (least x of points 450..549), the highest point before it and the lowest point
/// from it on, and pairs the points by Create_FoilPairList. An empty outline is reported in a
/// message box and sets NoseIndex to 500.
void FindNoseTopIndex(ParaStruct* p, QPolygonF polygon);

/// Index of the upper point just aft of point @p i, searched up to the document's nose; 0 for an
/// empty outline, which is reported in a message box.
int FindUPIndex(int i, QPolygonF polygon);

/// Index of the lower point just ahead of point @p i, searched from the document's nose on, 0 for
/// none; @p i for an empty outline, which is reported in a message box.
int FindDWIndex(int i, QPolygonF polygon);

/// Rebuilds the document's FoilPairList: (0, 1000, 0), each upper point with its lower partner, the
/// nose with itself, and the lower points, whose H is always 0. An empty outline clears the list
/// and is reported in one message box.
void Create_FoilPairList(QPolygonF polygon);

/// The segment of @p polygon under a screen abscissa, in the mapping abscissa =
/// 560 x + 40 and ordinate = -560 y pixels.
/// @param n_point point in pixels; a coordinate above 1000 counts as 0
/// @param c       'D' for the lower side (x grows along the polygon), else the upper
/// @return abscissa of @p n_point and ordinate of the segment's first point (0 when above 500) with
///         the index of that point; index -1 for no segment. The last segment of the polygon is not
///         searched.
PntStruct NearPoint(QPolygonF polygon, QPointF n_point, char c);

/// Bracket search in an ascending array.
/// @return the first i from 1 to n-2 with arr[i] <= x <= arr[i+1]; otherwise n-1 if
///         x > arr[n-2], else 0; 0 for n < 2
int f_ind(double x, double* arr, int n);
/// @}

/// @name Generation
/// @{

/// Leading coefficient of the parabola with the vertex (x0, y0) through (x1, y1):
/// (y1 - y0) / (x1 - x0)^2. x1 = x0 divides by 0.
double k_a(double x0, double y0, double x1, double y1);

/// Its linear coefficient: -2 a x0.
double k_b(double a, double x0);

/// Its constant: y0 - (a x0 + b) x0.
double k_c(double x0, double y0, double a, double b);

/// Value of a x^2 + b x + c.
double k_y(double a, double b, double c, double x);

/// Value of solu[1] t^2 + solu[2] t + solu[3]; solu[0] is not read.
double f_3P(double* solu, double t);

/// @p polygon with every y set to 0; empty in, empty out.
QPolygonF Zero_Airfoil(QPolygonF polygon);

/// @p poly with every y multiplied by @p scale; empty in, empty out.
QPolygonF SqueezeAirfoil(double scale, QPolygonF poly);

/// Unit normal of the triangle T1 T2 T3: the cross product of T2 - T1 and T3 - T1 in
/// single precision over its length in double; the zero vector when that length is 0.
QVector3D Normala(QVector3D T1, QVector3D T2, QVector3D T3);

/// @p poly resampled at equal steps along its length: its first point, N - 1 points
/// one step apart, of which the last is the last point of @p poly up to rounding, and
/// the first point again. A repeated point counts once. Time grows with the product of
/// @p N and the number of points.
/// @param N points before the closing one; below 2 the result is the first point twice
/// @return N + 1 points; empty for an empty outline; copies of a single point
QPolygonF Natur_Airfoil(int N, QPolygonF poly);

/// Fourier fit of a closed outline, with half as many terms as points: 1000 points, concentrated at
/// the nose by the spacing of f_theta. The first point replaces the last; with an odd number of
/// points the fit omits the last.
/// @param poly outline of any size
/// @return 1000 points, all (0, 0) for a single point; empty for an empty outline
QPolygonF FourierInterpolationAirfoil(QPolygonF poly);

/// Symmetric outline: x as FourierInterpolationAirfoil gives it, y minus the cosine part of the fit
/// of y. That part is evaluated at evenly spaced angles, the rest is not.
/// @param N    number of points wanted
/// @param poly outline of any size, even of more than @p N points
/// @return the first N points, at most 1000, none for N <= 0; empty for an empty outline
QPolygonF CreateSymetricAirfoil(int N, QPolygonF poly);
/// @}

/// @name Listing
/// @{

/// An outline as a coordinate table: the line @p title, the row (1, 0), the points
/// of x < 0.99999, the row (1, 0); each row ends with a blank, a tab and a line feed.
/// Point 0 is never listed. The points run in polygon order when the area sum of
/// the outline is positive, otherwise reversed.
/// @param step 1 lists every point; s > 1 lists the points 1, 1 + s, ... or, reversed,
///             size - 1, size - 1 - s, ...; below 1 counts as 1
QString airfoil_table(const QString& title, const QPolygonF& poly, int step);

/// Replaces the content of @p edit by one line for each point: x and y by R_out6, separated by two
/// blanks.
void FillPolygon(QPolygonF poly, QTextEdit* edit);
/// @}
