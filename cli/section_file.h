// SPDX-FileCopyrightText: Aerolith developers
// What a table or spline file holds and how the window shows it.
#pragma once

#include "sections/verdict.h"
#include "tables/table.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace cli {

/// The result of check for a file.
struct SectionFile {
    sections::Judgement judgement; ///< The verdict with its reason, and the findings.
    QString layout; ///< A name of tables::layout_names(), "spl" for a spline; empty for neither.
    QString kind;   ///< "section", "single-skin" or "flat"; empty for a bad file.
    int points = 0; ///< Points of the outline, or control points.
    std::optional<tables::Openings> openings;
    QPolygonF outline;      ///< Of a readable table.
    QStringList candidates; ///< The layouts of an ambiguous table.
};

/// Reads and judges the bytes of a file.
SectionFile read_section_file(const QByteArray& bytes, const tables::ReadOptions& options);

} // namespace cli
