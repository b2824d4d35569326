// SPDX-FileCopyrightText: Aerolith developers
// Both sides at once: in adjacent columns, or in alternating rows.
#include "tables/layouts_p.h"

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

// Whether two sides come close to each other at the nose and at the trailing edge, like those of a
// section. Slopes, radii and coefficients do not.
bool meet(const Outline& to_nose, const Outline& from_nose) {
    const QPolygonF& a = to_nose.points;
    const QPolygonF& b = from_nose.points;
    if (a.isEmpty() || b.isEmpty())
        return false;
    const double height = a.boundingRect().united(b.boundingRect()).height();
    const double at_nose = std::abs(a.last().y() - b.first().y());
    const double at_end = std::abs(a.first().y() - b.last().y());
    return at_nose < 0.1 && at_nose <= 0.6 * height && at_end < 0.2;
}

} // namespace

std::optional<Reading> read_columns(const Question& question) {
    const Sheet& sheet = question.sheet;
    if (sheet.columns() != 3 || question.course.runs.size() != 1 || !begins_at_nose(sheet))
        return std::nullopt;
    const int to_nose = question.course.runs[0].rising ? -1 : 1;
    Outline first = side_of(sheet, 0, sheet.rows() - 1, to_nose, 1);
    const Outline second = side_of(sheet, 0, sheet.rows() - 1, -to_nose, 2);
    if (!meet(first, second))
        return std::nullopt;
    Reading reading;
    reading.outline = joined(std::move(first), second);
    return reading;
}

std::optional<Reading> read_pairs(const Question& question) {
    if (question.sheet.columns() != 4)
        return std::nullopt;
    // Either side may have fewer rows than the other.
    Reading reading;
    Sheet first = question.sheet;
    Sheet second = question.sheet;
    second.remove_column(0);
    second.remove_column(0);
    for (Sheet* side : {&first, &second}) {
        remove_incomplete_rows(*side, 0, reading.findings);
        remove_incomplete_rows(*side, 1, reading.findings);
        if (side->rows() < 3)
            return std::nullopt;
    }
    const Course a = course_of(first);
    const Course b = course_of(second);
    if (a.runs.size() != 1 || b.runs.size() != 1)
        return std::nullopt;
    const Range x = range_of(first, 0);
    const Range other = range_of(second, 0);
    const double tolerance = 0.1 * x.width();
    if (std::abs(x.least - other.least) > tolerance ||
        std::abs(x.greatest - other.greatest) > tolerance)
        return std::nullopt;
    Outline to_nose = side_of(first, 0, first.rows() - 1, a.runs[0].rising ? -1 : 1);
    const Outline from_nose = side_of(second, 0, second.rows() - 1, b.runs[0].rising ? 1 : -1);
    if (!meet(to_nose, from_nose))
        return std::nullopt;
    reading.outline = joined(std::move(to_nose), from_nose);
    return reading;
}

std::optional<Reading> read_turns(const Question& question) {
    const Sheet& sheet = question.sheet;
    const int rows = sheet.rows();
    if (sheet.columns() != 2 || question.course.runs.size() != 1 || rows < 2 * least_points)
        return std::nullopt;
    const auto y_step = [&](int row, int stride) {
        return std::abs(sheet.at(row, 1) - sheet.at(row - stride, 1));
    };
    double in_turn = 0.0;
    double along_sides = 0.0;
    for (int row = 2; row < rows; ++row) {
        in_turn += y_step(row, 1);
        along_sides += y_step(row, 2);
    }
    if (!(in_turn > 2.0 * along_sides))
        return std::nullopt;

    // The row at the leading or trailing edge without a partner belongs to both sides.
    const auto x_step = [&](int row) { return std::abs(sheet.at(row, 0) - sheet.at(row - 1, 0)); };
    const bool lone_first = x_step(1) > x_step(2);
    const bool lone_last = x_step(rows - 1) > x_step(rows - 2);
    Outline sides[2];
    for (int row = 0; row < rows; ++row) {
        const QPointF point = sheet.point(row, 0, 1);
        const bool lone = (row == 0 && lone_first) || (row == rows - 1 && lone_last);
        for (int side = 0; side < 2; ++side) {
            if (lone || row % 2 == side)
                sides[side].append(point, sheet.line(row));
        }
    }
    // The row after the lone one begins the first side.
    const int begins = lone_first ? 1 : 0;
    Outline& first = sides[begins];
    Outline& second = sides[1 - begins];
    Outline& turned = question.course.runs[0].rising ? first : second;
    std::reverse(turned.points.begin(), turned.points.end());
    std::reverse(turned.lines.begin(), turned.lines.end());
    Reading reading;
    reading.outline = joined(std::move(first), second);
    return reading;
}

} // namespace tables
