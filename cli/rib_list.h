// SPDX-FileCopyrightText: Aerolith developers
// Lists of ribs: which sections go on one sheet.
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
    std::string file;            ///< Name of the section file, bytes, as it stands there.
    std::optional<double> chord; ///< mm; none: that of the command line.
    std::optional<QString> text; ///< None: that of the command line.
    int count = 1;               ///< 1..1000.
    std::optional<bool> mirror;  ///< None: as the command line says.
};

struct RibList {
    std::vector<RibRow> rows;
    QList<tables::Finding> findings; ///< Without an error the list is whole.
};

/// The most ribs of a list, all counts together.
inline constexpr int most_ribs = 2000;

/// The most lines, curves and marks of a sheet; some hundred megabytes.
inline constexpr std::size_t most_lines = 4000000;

/// Reads rows of "file,chord,text,count,mirror" parted by commas; a field may stand between
/// double quotes, which are doubled in it. Fields at the end may be missing or empty. Blank
/// lines, lines that begin with # and a first row that begins with "file" are passed over.
/// Numbers have a decimal point; mirror is yes or no.
RibList read_rib_list(const QByteArray& bytes);

} // namespace cli
