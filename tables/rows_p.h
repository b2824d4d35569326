// SPDX-FileCopyrightText: Aerolith developers
// Second step of the reading: text to rows of numbers with their line numbers.
#pragma once

#include "tables/fields_p.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <vector>

namespace tables {

/// A line of the file that is not blank.
struct Line {
    int number = 0;    ///< Counted from 1.
    quint32 text = 0;  ///< Its offset in Rows::text.
    quint32 first = 0; ///< Index of its first number in Rows::numbers.
    quint16 count = 0; ///< Number of numbers.
    LineKind kind = LineKind::text;
    bool after_gap : 1; ///< Blank lines precede it.
    bool remark : 1;    ///< Words follow the numbers.
};
static_assert(sizeof(Line) == 16, "files have many lines");

/// The lines of a file.
struct Rows {
    QByteArray text;
    std::vector<Line> lines;
    std::vector<double> numbers;
    bool decimal_commas = false;

    bool is_numbers(std::size_t line) const { return lines[line].kind == LineKind::numbers; }
    double value(std::size_t line, int column) const {
        return numbers[lines[line].first + std::size_t(column)];
    }
    /// The text of a line.
    QByteArrayView line_text(std::size_t line) const;
    /// A copy of the numbers of a line; for lines of few numbers.
    std::vector<double> values(std::size_t line) const;
};

/// The lines of @p utf8.
Rows rows_of(const QByteArray& utf8);

} // namespace tables
