// SPDX-FileCopyrightText: Aerolith developers
// Spline files as tables, and with changed openings.
#pragma once

#include "sections/curve.h"
#include "tables/table.h"

#include <QByteArray>
#include <QString>

namespace cli {

/// Points on the curve of a spline.
struct SplineTable {
    tables::Table table; ///< In the window's frame, with the openings of the spline.
    sections::Curve curve;
    double off_curve = 0.0; ///< Greatest distance of the curve from the straight lines between
                            ///< the points, fractions of the chord.
    QString reason;         ///< Why there are no points; empty if there are.
};

/// 201 points on the curve of a spline file, closer together where it bends. They include its
/// corners, its ends and its point of least x.
SplineTable table_of_spline(const QByteArray& bytes);

/// The complete @p bytes of a spline file, with its openings replaced by @p openings.
QByteArray with_openings(QByteArray bytes, tables::Openings openings);

} // namespace cli
