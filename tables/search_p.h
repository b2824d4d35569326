// SPDX-FileCopyrightText: Aerolith developers
// The sections of a file, and the choice of one.
#pragma once

#include "tables/attempt_p.h"
#include "tables/groups_p.h"

namespace tables {

/// A section that was found.
struct Found {
    Success success;
    QByteArray words; ///< The words above it, in lower case.
};

struct Search {
    std::vector<Found> found;
    QList<Finding> errors;           ///< Of groups that are not sections.
    QStringList candidates;          ///< Of the first ambiguous group.
    std::vector<std::size_t> unread; ///< Groups without a section.
};

/// The sections in all @p groups: a group is one section, or its stretches are elements.
Search search(const Rows& rows, const std::vector<Group>& groups, const QString& layout);

/// Chooses among several tables of a file: drops mean lines, prefers the combined table, and keeps
/// one of several that are the same section.
void choose_table(std::vector<Found>& found, QList<Finding>& findings);

/// Whether the words above the rows name a mean line.
bool is_mean_line(const QByteArray& words);

/// A column name directly above the rows that is not a coordinate, such as `Cp`, if no column is
/// named y; otherwise empty.
QByteArray other_quantity(const QByteArray& words);

/// Whether the sections are only a few rows in a file of other numbers.
bool is_accident(const Rows& rows, const std::vector<Found>& found);

} // namespace tables
