// SPDX-FileCopyrightText: Aerolith developers
// Rows among those of a section that are not points.
#include "tables/strays_p.h"

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

bool is_whole(double number) {
    return number == std::floor(number);
}

// Whether the row cannot be a point of the section whose rows span x and y: more than half a width
// to the left or right of them, or more than a width above or below.
bool is_far_outside(const Sheet& sheet, int row, Range x, Range y) {
    const double width = x.width();
    const double at = sheet.at(row, 0);
    if (!(width > 0.0))
        return false;
    if (at < x.least - 0.5 * width || at > x.greatest + 0.5 * width)
        return true;
    // A third column may be a slope, which is unbounded at the nose.
    if (sheet.columns() > 2)
        return false;
    const double height = sheet.at(row, 1);
    return height < y.least - width || height > y.greatest + width;
}

// Whether a row of zeros follows the trailing edge.
bool is_closing_zeros(const Sheet& sheet) {
    const int last = sheet.rows() - 1;
    for (int column = 0; column < sheet.columns(); ++column) {
        if (sheet.at(last, column) != 0.0)
            return false;
    }
    const Range x = range_of(sheet, 0, 0, last);
    return sheet.at(last - 1, 0) > x.least + 0.9 * x.width();
}

void remove_row(Sheet& sheet, int row) {
    sheet.remove_rows([row](int other) { return other == row; });
}

} // namespace

void take_counts(Sheet& sheet, Head& head) {
    constexpr double largest_count = 1e6;
    const int rest = sheet.rows() - 1;
    if (sheet.columns() != 2 || rest < 3)
        return;
    const double first = sheet.at(0, 0);
    const double second = sheet.at(0, 1);
    if (!(first >= 2.0 && second >= 2.0 && is_whole(first) && is_whole(second) &&
          first < largest_count && second < largest_count))
        return;
    // The rows begin at an end of the chord, and this row is far from it.
    const Range x = range_of(sheet, 0, 1, sheet.rows());
    const double next = sheet.at(1, 0);
    const bool is_apart = std::abs(first - next) > 0.1 * x.width() &&
                          (next == x.least || next == x.greatest) &&
                          (first < x.greatest || first > x.greatest + 0.1 * x.width());
    if (first + second != rest && !is_apart &&
        !is_far_outside(sheet, 0, x, range_of(sheet, 1, 1, sheet.rows())))
        return;
    head.lines.push_back(sheet.place(0));
    remove_row(sheet, 0);
}

void remove_strays(Sheet& sheet, QList<Finding>& findings) {
    constexpr int most_strays = 2;
    for (int i = 0; i < most_strays && sheet.rows() > least_points; ++i) {
        const int last = sheet.rows() - 1;
        const Range x = range_of(sheet, 0, 1, last);
        const Range y = range_of(sheet, 1, 1, last);
        const auto is_far = [&](int row, int other_end) {
            return is_far_outside(sheet, row, x.with(sheet.at(other_end, 0)),
                                  y.with(sheet.at(other_end, 1)));
        };
        const bool first_is_far = is_far(0, last);
        if (first_is_far || is_far(last, 0)) {
            const int row = first_is_far ? 0 : last;
            findings.append({sheet.line(row) == 1 ? Gravity::note : Gravity::doubt, sheet.line(row),
                             QStringLiteral("\"%1\" stands far outside the other rows; left out")
                                 .arg(shown_row(sheet, row))});
            remove_row(sheet, row);
        } else if (is_closing_zeros(sheet)) {
            findings.append(
                {Gravity::note, sheet.line(last), QStringLiteral("closing row of zeros left out")});
            remove_row(sheet, last);
        } else {
            return;
        }
    }
}

} // namespace tables
