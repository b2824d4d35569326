// SPDX-FileCopyrightText: Aerolith developers
// The document: the wing section being edited, with its template, its spline and the results of the
// shape analysis.
#pragma once

#include "numerics/constants.h"

#include <QList>
#include <QPointF>
#include <QPolygonF>
#include <QString>

class QDataStream;

/// One entry of the thickness list of an outline.
struct Foil_Pair {
    int i1 = 0;     ///< Index of a point of the upper side.
    int i2 = 0;     ///< Index of its partner on the lower side.
    double H = 0.0; ///< Local thickness: absolute difference of the two y, chord units.
};

/// A point together with its place in the polygon it was taken from.
struct PntStruct {
    QPointF pnt;       ///< The point.
    int pnt_index = 0; ///< Its index, -1 for none.
};

/// The edited quadratic B-spline.
///
/// A spline read from a file keeps its counts, degree and knots as they were stored, however wrong.
/// So no loop may run to num_pnt or num_knt: use the bounded accessors.
class SplineFoil {
public:
    SplineFoil();
    SplineFoil(const SplineFoil& other) = default;
    SplineFoil& operator=(const SplineFoil& other) = default;

    QString airfoilName; ///< Path of the file the spline was last saved to.
    int num_pnt = 0;     ///< Number of control points in use.
    int num_knt = 0;     ///< Number of knots in use: num_pnt + order after init_knots().
    int degree = DEGREE2;
    int order = DEGREE2 + 1;            ///< degree + 1.
    double b_knots[MAXNUMKNOTS] = {};   ///< Knots, of which num_knt are in use.
    int b_multi_knot[MAXNUMKNOTS] = {}; ///< Multiplicity of each knot; not stored in files.
    QPointF CP[MAXNUMPOINTS];           ///< Control points, pixels of the editor.
    QPointF rd_CP[MAXNUMPOINTS];        ///< Second point of each; only carried and stored.
    double startVent = 0.0; ///< O-1: start of the opening, percent of chord from the LE.
    double endVent = 0.0;   ///< O-2: end of the opening, percent of chord from the LE.
    double L_T_S = 0.0;     ///< Only carried and stored.

    /// Number of control points that may be used: num_pnt, kept within 0..30.
    int point_count() const;

    /// Number of knots that may be used: num_knt, kept within 0..300.
    int knot_count() const;

    /// Whether the counts and the degree describe a curve: at least one control
    /// point, a degree within 0..5, and enough knots for both within the arrays.
    bool has_curve() const;

    /// Makes degree 2, order 3 and a uniform, unclamped knot vector over [0, 1] for
    /// the current number of control points: knot i is i / (num_knt - 1), of
    /// multiplicity 1. This undoes every sharpening.
    void init_knots();

    /// The curve at the parameters 0.001, 0.002, ... below 1 (accumulated by
    /// addition): 999 points in the unit of CP, none without a curve. Samples may not be finite
    /// where control points or knots are not.
    QPolygonF make_SplinePoly() const;
};

/// The document record. GetDataStruct() gives the only one that the program uses.
class ParaStruct {
public:
    ParaStruct();
    ParaStruct(const ParaStruct& other) = default;
    ParaStruct& operator=(const ParaStruct& other) = default;

    QString AirFoilName;           ///< Only carried.
    QList<Foil_Pair> FoilPairList; ///< Thickness pairs, made by Create_FoilPairList().
    int LineInd[8] = {};           ///< Only carried.
    double thickness = 0.0;        ///< Only carried.
    int NoseIndex = N_airfoil / 2; ///< Index of the nose of a 1000-point outline.
    int TopIndexDw = 0;            ///< Index of its lowest point.
    int TopIndexUp = 0;            ///< Index of its highest point.
    SplineFoil spline;             ///< The edited spline.
    QString pureFileName;          ///< Only carried.
    QString fileName;              ///< Only carried.
    QString baseAirfoilName;       ///< Path of the file that the template was read from.
    QPolygonF baseAirfoil;         ///< The template, chord units.
    QPolygonF workAirfoil;         ///< The curve in chord units, as of the last paint.

    /// Does nothing: the member initialisers already set the values.
    void SetInitialValues();
};

/// The document once GetDataStruct() has been called, before that a null pointer.
extern ParaStruct* dataStruct;

/// The document; created by the first call, never destroyed. GUI thread only.
ParaStruct* GetDataStruct();

/// Writes the spline of @p para as a spline file stores it: 3404 bytes plus two for each character
/// of its airfoilName. The caller sets the version of the stream (Qt_4_6).
QDataStream& operator<<(QDataStream& stream, const ParaStruct& para);

/// Reads what operator<< writes into the spline of @p para. Nothing is checked: missing items
/// become 0, and all others are kept as they are.
QDataStream& operator>>(QDataStream& stream, ParaStruct& para);
