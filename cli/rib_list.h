// SPDX-FileCopyrightText: Aerolith developers
// Lists of the ribs on one sheet.
#pragma once

#include "tables/table.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// One row of a list.
struct RibRow {
    int line = 0;                ///< Of the list, counted from 1.
    std::string file;            ///< Name of the section file as the list gives it, bytes.
    std::optional<double> chord; ///< mm; none: that of the command line.
    std::optional<QString> text; ///< None: that of the command line.
    int count = 1;               ///< 1..1000.
    std::optional<bool> mirror;  ///< None: that of the command line.
};

struct RibList {
    std::vector<RibRow> rows;
    QList<tables::Finding> findings; ///< The list is complete if none is an error.
};

/// The most ribs that the counts of a list may add up to.
inline constexpr int most_ribs = 2000;

/// The most lines, curves and marks on a sheet. They take some hundred megabytes.
inline constexpr std::size_t most_lines = 4000000;

/// Reads rows of "file,chord,text,count,mirror". A field can be enclosed in double quotes; a double
/// quote inside it is doubled. Trailing fields can be missing or empty. Blank lines, lines that
/// begin with # and a header row that begins with "file" are skipped. Numbers have a decimal point;
/// mirror is yes or no.
RibList read_rib_list(const QByteArray& bytes);

} // namespace cli
