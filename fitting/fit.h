// SPDX-FileCopyrightText: Aerolith developers
// The best spline for a table, in the form of a spline file.
#pragma once

#include "document/parastruct.h"
#include "fitting/deviation.h"
#include "fitting/problem.h"
#include "tables/table.h"

#include <QPolygonF>

#include <optional>

namespace fitting {

constexpr int least_points = 4;
constexpr int most_points = MAXNUMPOINTS;

/// What a fit has to meet.
struct Request {
    int points = 0; ///< Control points, 4..30; 0: as few as hold the tolerance.
    /// Over the first 20 % of the chord; twice as much is allowed behind. Chord units, positive.
    double tolerance = usual_tolerance;
    bool best = false; ///< Search longer, and allow control points closer to each other.
    Ends ends = Ends::table;
    tables::Openings openings; ///< Stored in the spline.
};

/// The result of a fit.
struct Fit {
    QString reason;          ///< Why there is no spline; empty if there is one.
    SplineFoil spline;       ///< Settled, in the pixels of a 1024 x 768 editor.
    Deviation deviation;     ///< Of that spline.
    bool holds = false;      ///< Whether every point lies within the tolerance.
    double noise = 0.0;      ///< Of the table, see Outline::noise.
    int reversals = 0;       ///< Reversals of the curvature of the spline.
    int table_reversals = 0; ///< Reversals that the table needs.
    double least_leg = 0.0;  ///< Least distance between neighbouring control points, chord units.
    QList<tables::Finding> findings;
};

/// Fits a spline to @p table, which can be in any frame and in either order. The same table and
/// request give the same bits.
Fit fit(const QPolygonF& table, const Request& request = {});

} // namespace fitting
