// SPDX-FileCopyrightText: Aerolith developers
// Sampling of a whole B-spline curve with the basis values kept between calls.
#pragma once

#include "numerics/constants.h"

#include <QPointF>
#include <QPolygonF>

/// Samples a B-spline curve at the parameters 0.001, 0.002, ... below 1, accumulated by
/// addition. Every sample has the same bits as B_spline_point() at its parameter.
///
/// The basis values depend on the knots alone, so they are kept between calls and recomputed only
/// when the count, the degree or a knot changes.
class SplineBasis {
public:
    static constexpr int sample_count = 999;

    /// Takes the knots of the curve.
    /// @param point_count number of control points, 1..30
    /// @param degree      degree, 0..5
    /// @param knots       point_count + degree + 1 knots, of any values
    void set_knots(int point_count, int degree, const double* knots);

    /// The samples of the curve; not finite where the points or knots are not.
    /// @param points control points, as many as set_knots() was given, in any unit of length
    QPolygonF sample(const QPointF* points) const;

private:
    // The samples of one knot span: the control points first_point .. first_point + 2 act
    // on the samples begin .. end - 1.
    struct Span {
        int first_point;
        int begin;
        int end;
    };

    bool can_be_tabulated() const;
    void tabulate();
    void tabulate_span(int span, int begin, int end);
    QPolygonF sample_generally(const QPointF* points) const;

    int count = 0;
    int curve_degree = -1;
    double knot[MAXNUMKNOTS] = {};

    // Whether the tables below hold the basis values of these knots.
    bool tabulated = false;
    int span_count = 0;
    Span spans[MAXNUMPOINTS + 4] = {};
    double basis[3][sample_count] = {};
    double basis_sum[sample_count] = {};
};
