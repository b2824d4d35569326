// SPDX-FileCopyrightText: Aerolith developers
// Sides, stations and frames of an outline given by its rows, and operations that move the rows.
#pragma once

#include "tables/table.h"

#include <QPolygonF>

#include <optional>

namespace tables {

/// The row of least x, the first of several; -1 without rows.
qsizetype nose_row(const QPolygonF& outline);

/// Whether the side before the nose is the upper side, the one of greater mean height. Where both
/// heights are equal (within 1e-9 of the squared width) the first side counts as upper.
bool is_upper_first(const QPolygonF& outline);

/// Whether neither side is higher than the other, so that is_upper_first() goes by the order alone.
bool has_equal_sides(const QPolygonF& outline);

/// The outline with its upper side first: itself, or its rows in reverse order.
QPolygonF with_upper_first(const QPolygonF& outline);

/// Least and greatest x of the rows. Stations in percent run from the one to the other.
struct Extent {
    double least = 0.0;
    double greatest = 0.0;

    explicit Extent(const QPolygonF& outline); ///< Both 0 without rows.
    double width() const { return greatest - least; }
    double x_at(double percent) const { return least + percent / 100.0 * width(); }
    double percent_at(double x) const { return 100.0 * (x - least) / width(); }
};

/// A place on an outline: a fraction (0 to 1) of the way from a row to the next.
struct Place {
    qsizetype row = 0;
    double fraction = 0.0;

    QPointF on(const QPolygonF& outline) const; ///< On the straight line between the rows.
};

/// Where the vertical cut at @p x first meets the second side of @p upper_first, from the nose on.
/// A row within @p tolerance of the cut is taken as the place.
/// @return none where the side does not reach the cut
std::optional<Place> cut_second_side(const QPolygonF& upper_first, double x, double tolerance);

/// @name Moving the rows
/// The mouth of the intake stays at the same place of the surface: its ends move with the rows, and
/// the stations are recomputed. A note reports each change that shows in the numbers.
/// @{

/// The rows from the last one to the first.
Table reversed(Table table);

/// Both ends moved to the midpoint between them. The other rows of each side move in proportion to
/// the distance of their x from the nose, which stays.
Table with_closed_gap(Table table);

/// Rotated, shifted and scaled so that the true leading edge is (0, 0) and the midpoint of the two
/// ends (1, 0). The true leading edge is the row farthest from that midpoint. An outline without
/// extent stays as it is.
Table normalized(Table table);
/// @}

} // namespace tables
