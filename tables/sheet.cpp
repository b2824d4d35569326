// SPDX-FileCopyrightText: Aerolith developers
// The rows that may be one section: which lines they are, which columns count, in what unit.
#include "tables/sheet_p.h"

#include "tables/text_p.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace tables {

Sheet::Sheet(const Rows& table, std::size_t first, std::size_t last, int columns)
    : source(&table), chosen(std::size_t(columns)) {
    std::iota(chosen.begin(), chosen.end(), 0);
    const auto belongs = [&](std::size_t line) {
        return table.is_numbers(line) && int(table.lines[line].count) == columns;
    };
    std::size_t count = 0;
    for (std::size_t line = first; line < last; ++line)
        count += belongs(line) ? 1 : 0;
    members.reserve(count);
    for (std::size_t line = first; line < last; ++line) {
        if (belongs(line))
            members.push_back(quint32(line));
    }
}

bool Sheet::breaks(int row) const {
    if (row == 0)
        return false;
    for (std::size_t line = place(row - 1) + 1; line <= place(row); ++line) {
        if (source->lines[line].after_gap || !source->is_numbers(line))
            return true;
    }
    return false;
}

Sheet Sheet::part(int first, int last) const {
    Sheet part = *this;
    part.members.assign(members.begin() + first, members.begin() + last);
    return part;
}

void Sheet::remove_column(int column) {
    chosen.erase(chosen.begin() + column);
}

Range range_of(const Sheet& sheet, int column, int first, int last) {
    Range range = {std::numeric_limits<double>::infinity(),
                   -std::numeric_limits<double>::infinity()};
    for (int row = first; row < last; ++row)
        range = range.with(sheet.at(row, column));
    return range;
}

QString shown_row(const Sheet& sheet, int row) {
    return shown(sheet.table().line_text(sheet.place(row)));
}

void remove_incomplete_rows(Sheet& sheet, int column, QList<Finding>& findings) {
    constexpr int most_told = 8;
    int removed = 0;
    const auto is_incomplete = [&](int row) { return std::isnan(sheet.at(row, column)); };
    for (int row = 0; row < sheet.rows(); ++row) {
        if (is_incomplete(row) && ++removed <= most_told)
            findings.append(
                {Gravity::note, sheet.line(row),
                 QStringLiteral("\"%1\" lacks a number; row left out").arg(shown_row(sheet, row))});
    }
    if (removed > 0)
        sheet.remove_rows(is_incomplete);
}

} // namespace tables
