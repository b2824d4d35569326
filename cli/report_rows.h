// SPDX-FileCopyrightText: Aerolith developers
// The reports of the verbs.
#pragma once

#include "cli/lengths.h"
#include "cli/report_row.h"
#include "cli/section_file.h"
#include "fitting/fit.h"
#include "sections/compare.h"

#include <QByteArray>
#include <QPolygonF>

namespace cli {

ReportStyle check_style();

/// @param bytes of the file; empty if it was not read
ReportRow check_row(const SectionFile& file, const QByteArray& bytes);

/// @param tolerance over the first 20 % of the chord, fractions of the chord
ReportStyle fit_style(double tolerance);

/// @param fit   a fit with a spline
/// @param table the table that was fitted
ReportRow fit_row(const fitting::Fit& fit, const QPolygonF& table, double tolerance);

/// @param tolerance Options::tolerance, in the unit of @p lengths; 0 for none
ReportStyle compare_style(const Lengths& lengths, double tolerance);

/// @param comparison of @p other with @p reference, aligned or not
ReportRow compare_row(const sections::Comparison& comparison, const sections::Section& reference,
                      const sections::Section& other, const Lengths& lengths, double tolerance);

} // namespace cli
