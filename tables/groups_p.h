// SPDX-FileCopyrightText: Aerolith developers
// Which lines belong together: the tables of a file, what stands above them, and damage.
#pragma once

#include "tables/layouts_p.h"

namespace tables {

/// The lines [first, last) hold rows of the same number of columns, perhaps with words between
/// them.
struct Group {
    std::size_t first;
    std::size_t last;
    int columns;
    int parts; ///< Stretches separated by words or element marks.
};

/// The tables of the file: at least three rows of 2 to 32 columns. A row `999.0 999.0` separates
/// elements, as words do.
std::vector<Group> groups_of(Rows& rows);

/// The rows of numbers before a table that belong to no table, at most eight.
Head head_of(const Rows& rows, const std::vector<Group>& groups, std::size_t group);

/// The words above a table, in lower case, at most 1,000 characters.
QByteArray words_above(const Rows& rows, std::size_t line);

/// The first line from @p first to @p last, or directly before or after them, that was meant to be
/// a row of a table and cannot be read: it has a damaged number, or more or fewer numbers than its
/// neighbours.
std::optional<Finding> damage_in(const Rows& rows, std::size_t first, std::size_t last);

/// A row directly before or after the rows [@p first, @p last] of a table that has more or fewer
/// numbers than they have and whose first number could be an x of theirs: an error, or a doubt
/// where it may be a count. The last @p known lines before the rows are already explained.
std::optional<Finding> lost_row(const Rows& rows, std::size_t first, std::size_t last, int known);

/// Whether all numbers of a line are whole numbers.
bool are_whole(const Rows& rows, std::size_t line);

/// The title line; empty for none.
QString title_of(const Rows& rows, std::size_t first_row, bool second_line);

} // namespace tables
