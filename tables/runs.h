// SPDX-FileCopyrightText: Aerolith developers
// How x runs through the rows: up, down, back to the start.
#pragma once

#include "tables/sheet.h"

#include <vector>

namespace tables {

/// Rows over which x keeps its direction. The row where x turns belongs to both runs.
struct Run {
    int first;
    int last;
    bool rising;
    bool after_jump; ///< x leaps over most of the chord from the run before, no row in common.
    int rows() const { return last - first + 1; }
};

struct Course {
    std::vector<Run> runs;
    std::vector<int> slips; ///< Single rows whose x is far off while their neighbours go on.
};

/// The course of x in @p column. Reversals of less than 2 % of the width, as at blunt noses
/// and trailing edges, and slips are no turns.
Course course_of(const Sheet& sheet, int column = 0);

/// For people: "down, up, down".
QString described(const Course& course);

} // namespace tables
