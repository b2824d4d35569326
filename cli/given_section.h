// SPDX-FileCopyrightText: Aerolith developers
// The section in a file, for both tables and splines.
#pragma once

#include "sections/section.h"
#include "tables/table.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace cli {

/// The section in a file. If there is none, an error among the findings says why.
struct GivenSection {
    std::optional<sections::Section> section;
    QString layout; ///< A name of tables::layout_names(), "spl" for a spline; empty for neither.
    int points = 0; ///< Points of the outline, or control points.
    QList<tables::Finding> findings;
};

/// Reads the bytes of a file as a section.
GivenSection given_section(const QByteArray& bytes, const tables::ReadOptions& options);

} // namespace cli
