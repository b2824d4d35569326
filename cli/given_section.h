// SPDX-FileCopyrightText: Aerolith developers
// A file as a section to measure, whether it is a table or a spline.
#pragma once

#include "sections/section.h"
#include "tables/table.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace cli {

/// What a file gives. Without a section one of the findings is an error that says why.
struct GivenSection {
    std::optional<sections::Section> section;
    QString layout; ///< A name of tables::layout_names(), "spl" for a spline; empty for neither.
    int points = 0; ///< Of the outline, or control points.
    QList<tables::Finding> findings;
};

/// Reads the bytes of a file as a section.
GivenSection given_section(const QByteArray& bytes, const tables::ReadOptions& options);

} // namespace cli
