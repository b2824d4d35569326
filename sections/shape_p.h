// SPDX-FileCopyrightText: Aerolith developers
// The checks of shape.h one by one. Used by the sources of this folder only.
#pragma once

#include "tables/table.h"

#include <QPointF>

#include <cstddef>
#include <optional>
#include <vector>

namespace sections {

/// A row of the outline in fractions of the width.
struct OutlineRow {
    QPointF point;  ///< In the unit of the width of the outline.
    int source = 0; ///< Which point of the table it is.
};
using OutlineRows = std::vector<OutlineRow>;

/// Index of the row of least x, the first of several.
std::size_t nose_of(const OutlineRows& rows);

/// A row off the line that its neighbours suggest.
struct Spike {
    std::size_t row = 0;
    double distance = 0.0; ///< From the smooth line through the neighbours.
};

/// How far a row lies off the smooth line through the four rows nearest to it, two on each side
/// where there are, of which the row @p without is none. At least 6 rows.
double distance_from_neighbours(const OutlineRows& rows, std::size_t row, std::size_t without);

/// The rows without which the rows around them are far smoother.
std::vector<Spike> spikes(const OutlineRows& rows);

/// The rows of height 0 between two rows that both lie more than 0.005 above it, or both below.
std::vector<std::size_t> rows_without_height(const OutlineRows& rows);

/// The rows whose x lies not between those of their neighbours, which go on. Of two neighbours of
/// which either one may be wrong, the one without which the other one fits better.
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

/// How far the curve may leave the straight lines at the nose, and the row with the sharpest turn.
struct NoseGap {
    double height = 0.0; ///< Of the circular arc over the longest edge at the nose.
    double turn = 0.0;   ///< Degrees.
    std::size_t row = 0;
};
NoseGap nose_gap(const OutlineRows& rows);

} // namespace sections
