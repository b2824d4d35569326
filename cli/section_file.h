// SPDX-FileCopyrightText: Aerolith developers
// A file of a section, whether a table or a spline: what it holds and what the window makes of it.
#pragma once

#include "sections/verdict.h"
#include "tables/table.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace cli {

/// What check says of a file.
struct SectionFile {
    sections::Judgement judgement; ///< The verdict with its reason, and all that was found.
    QString layout; ///< A name of tables::layout_names(), "spl" for a spline; empty for neither.
    QString kind;   ///< "section", "single-skin" or "flat"; empty for a bad file.
    int points = 0; ///< Of the outline, or control points.
    std::optional<tables::Openings> openings;
    QPolygonF outline;      ///< Of a table that was read.
    QStringList candidates; ///< Of an ambiguous table.
};

/// Reads and judges the bytes of a file.
SectionFile read_section_file(const QByteArray& bytes, const tables::ReadOptions& options);

} // namespace cli
