// SPDX-FileCopyrightText: Aerolith developers
// The sections of a file, and the one that counts.
#pragma once

#include "tables/attempt.h"
#include "tables/groups.h"

namespace tables {

/// A section that was found.
struct Found {
    Success success;
    QByteArray words; ///< Above it, in lower case.
};

struct Search {
    std::vector<Found> found;
    QList<Finding> errors;           ///< Of what was no section.
    QStringList candidates;          ///< Of the first ambiguous group.
    std::vector<std::size_t> unread; ///< Groups without a section.
};

/// The sections in all @p groups: a group is one section, or its stretches are elements.
Search search(const Rows& rows, const std::vector<Group>& groups, const QString& layout);

/// Leaves what counts where a file holds several tables: not a mean line, the combined table,
/// one of several that are the same section.
void choose_table(std::vector<Found>& found, QList<Finding>& findings);

/// Whether the words above rows call them a mean line.
bool is_mean_line(const QByteArray& words);

/// A name of a column right above the rows that is no coordinate, as `Cp`, where no column is
/// named y; empty for none.
QByteArray other_quantity(const QByteArray& words);

/// Whether the sections are a few rows within a file of other numbers.
bool is_accident(const Rows& rows, const std::vector<Found>& found);

} // namespace tables
