// SPDX-FileCopyrightText: Aerolith developers
// The course of x through the rows: up, down, back to the start.
#pragma once

#include "tables/sheet_p.h"

#include <vector>

namespace tables {

/// Rows over which x keeps its direction. The row where x turns belongs to both runs.
struct Run {
    int first;
    int last;
    bool rising;
    bool after_jump; ///< x jumps across most of the chord from the run before, with no row in
                     ///< common.
    int rows() const { return last - first + 1; }
};

struct Course {
    std::vector<Run> runs;
    std::vector<int> slips; ///< Single rows whose x is far off the course of their neighbours.
};

/// The course of x in @p column. Reversals of less than 2 % of the width, as at blunt noses and
/// trailing edges, and slips do not count as turns.
Course course_of(const Sheet& sheet, int column = 0);

/// As a text for messages: "down, up, down".
QString described(const Course& course);

} // namespace tables
