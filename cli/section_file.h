// SPDX-FileCopyrightText: Aerolith developers
// A file of a section, whether a table or a spline: what it holds and what the window makes of it.
#pragma once

#include "tables/table.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <string>

namespace cli {

/// ok: the window shows what the file means. convert: it does so after convert. ask: two layouts
/// fit, an option decides. bad: no section.
enum class Verdict { ok, convert, ask, bad };

std::string name_of(Verdict verdict);

/// What check says of a file.
struct SectionFile {
    Verdict verdict = Verdict::bad;
    QString layout; ///< A name of tables::layout_names(), "spl" for a spline; empty for neither.
    QString kind;   ///< "section", "single-skin" or "flat"; empty for a bad file.
    int points = 0; ///< Of the outline, or control points.
    QString reason; ///< Of the verdict, some words.
    std::optional<tables::Openings> openings;
    QStringList candidates; ///< Of an ambiguous table.
    QList<tables::Finding> findings;
};

/// Reads and judges the bytes of a file.
SectionFile read_section_file(const QByteArray& bytes, const tables::ReadOptions& options);

} // namespace cli
