// SPDX-FileCopyrightText: Aerolith developers
// Spline files as tables, and with other openings.
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
    QString reason;         ///< Why there are none; empty when there are.
};

/// 201 points on the curve of a spline file, close where it bends; its corners, its ends and its
/// point of least x are among them.
SplineTable table_of_spline(const QByteArray& bytes);

/// @p bytes of a spline file, which are whole, with the openings @p openings and no other change.
QByteArray with_openings(QByteArray bytes, tables::Openings openings);

} // namespace cli
