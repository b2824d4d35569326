// SPDX-FileCopyrightText: Aerolith developers
// One group of rows, tried with every layout.
#pragma once

#include "tables/layouts_p.h"

namespace tables {

/// A reading with the findings of the steps before it.
struct Success {
    QString layout;
    Reading reading;
    int line;          ///< The first line that was read.
    std::size_t first; ///< Places in Rows::lines: the first and the last row, counts included.
    std::size_t last;
    std::vector<std::size_t>
        heads; ///< Rows directly before the section; the reading explains Reading::heads of them.
};

/// The result for a group of rows. Without a success there is an error.
struct Attempt {
    std::optional<Success> success;
    QList<Finding> errors;
    QStringList candidates; ///< Two layouts that fit equally well, otherwise empty.
};

/// Tries all layouts on @p rows, or only @p layout unless that is empty. The unit is found in @p
/// scope, the rows of all elements, or without it in the rows themselves, which then have to cover
/// a chord. With two columns, only @p whole groups may be half contours.
Attempt attempt(const Sheet& rows, const Sheet* scope, const Head& head, const QString& layout,
                bool whole);

} // namespace tables
