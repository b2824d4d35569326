// SPDX-FileCopyrightText: Aerolith developers
// Last step of the reading: points that look like an outline.
#pragma once

#include "tables/table.h"

#include <optional>

namespace tables {

constexpr int least_points = 6;

/// Points with their lines.
struct Outline {
    QPolygonF points;
    std::vector<int> lines;

    void reserve(qsizetype count) {
        points.reserve(count);
        lines.reserve(std::size_t(count));
    }
    void append(QPointF point, int line) {
        points.append(point);
        lines.push_back(line);
    }
};

/// Why an outline that begins at the trailing edge is not a section: too few points, ends away from
/// the trailing edge, more height than width, zigzags, or sides that swap, coincide, both rise or
/// are farthest apart at an end. A doubt where it may be a section after all, or one whose nose is
/// at the greatest x. None when nothing is wrong.
std::optional<Finding> fault_of(const Outline& outline);

/// Whether fault_of() gives an error.
bool is_refused(const Outline& outline);

/// The kind of an outline without fault.
Kind kind_of(const Outline& outline);

/// Whether both are the same section within the rounding of tables, possibly moved or scaled. One
/// that is both moved and scaled is another element.
bool same_section(const Outline& a, const Outline& b);

} // namespace tables
