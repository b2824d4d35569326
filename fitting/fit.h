// SPDX-FileCopyrightText: Aerolith developers
// The best spline over a table, as a file of the editor holds it.
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

/// What is asked for.
struct Request {
    int points = 0; ///< Control points, 4..30; 0: as few as the tolerance allows.
    /// Over the first 20 % of the chord, behind it twice as much; chord units, positive.
    double tolerance = usual_tolerance;
    bool best = false; ///< Search longer, and let control points come closer to each other.
    Ends ends = Ends::table;
    tables::Openings openings; ///< Stored in the spline.
};

/// What came of it.
struct Fit {
    QString reason;          ///< Why there is no spline; empty when there is one.
    SplineFoil spline;       ///< In the pixels of a 1024 x 768 editor, settled.
    Deviation deviation;     ///< Of that spline.
    bool holds = false;      ///< Whether no point is farther than the tolerance.
    double noise = 0.0;      ///< Of the table, see Outline::noise.
    int reversals = 0;       ///< Of the curvature of the spline.
    int table_reversals = 0; ///< What the table calls for.
    double least_leg = 0.0;  ///< Least distance between neighbouring control points, chord units.
    QList<tables::Finding> findings;
};

/// Lays a spline over @p table, which may be in any frame and either order. The same table and
/// request give the same bits.
Fit fit(const QPolygonF& table, const Request& request = {});

} // namespace fitting
