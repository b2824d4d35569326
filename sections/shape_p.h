// SPDX-FileCopyrightText: Aerolith developers
// The individual checks of shape.h.
#pragma once

#include "tables/table.h"

#include <QPointF>

#include <cstddef>
#include <optional>
#include <vector>

namespace sections {

/// A row of the outline.
struct OutlineRow {
    QPointF point;  ///< In fractions of the width of the outline.
    int source = 0; ///< Index of the point in the table.
};
using OutlineRows = std::vector<OutlineRow>;

/// Index of the row of least x, the first of several.
std::size_t nose_of(const OutlineRows& rows);

/// A row off the line that its neighbours suggest.
struct Spike {
    std::size_t row = 0;
    double distance = 0.0; ///< From the smooth line through the neighbours.
};

/// The distance of a row from the cubic through the four rows nearest to it, two on each side if
/// possible, not counting the row @p without. Needs at least 6 rows.
double distance_from_neighbours(const OutlineRows& rows, std::size_t row, std::size_t without);

/// The rows without which the rows around them are far smoother.
std::vector<Spike> spikes(const OutlineRows& rows);

/// The rows of height 0 between two rows that are both more than 0.005 above it, or both below.
std::vector<std::size_t> rows_without_height(const OutlineRows& rows);

/// The rows whose x is not between those of their neighbours, which continue the run. Of two
/// neighbours either of which may be wrong, the one without which the other fits better.
std::vector<std::size_t> rows_running_back(const OutlineRows& rows);

/// The row at which x turns a second time by more than 2 % of the width, after the nose.
std::optional<std::size_t> second_turn(const OutlineRows& rows);

/// Where the sides overlap most.
struct Overlap {
    double depth = 0.0; ///< Height of the lower side above the upper one.
    std::size_t row = 0;
};

/// The greatest overlap of the sides within the stations @p from to @p to.
Overlap greatest_overlap(const OutlineRows& rows, double from, double to);

/// How far the curve may be off the straight lines at the nose, and the row with the sharpest turn.
struct NoseGap {
    double height = 0.0; ///< Height of the circular arc over the longest edge at the nose.
    double turn = 0.0;   ///< Degrees.
    std::size_t row = 0;
};
NoseGap nose_gap(const OutlineRows& rows);

} // namespace sections
