// SPDX-FileCopyrightText: Aerolith developers
// The fields of a line: numbers, places without a number, damaged numbers, words.
#pragma once

#include <QByteArrayView>

#include <vector>

namespace tables {

enum class LineKind : quint8 {
    blank,
    mark, ///< Separates elements, `999.0 999.0`; recognised by the rows around it, not by the line
          ///< alone.
    text, ///< Begins with a word or a comment sign.
    numbers, ///< Begins with numbers; what follows the first word is a remark.
    damaged, ///< A field before the first word is nearly a number: `O.123`, `1.234.5`, `nan`.
};

struct Fields {
    LineKind kind = LineKind::blank;
    /// The numbers before the first word; NaN for a place without a number: an empty field between
    /// separators, `......`, `******`.
    std::vector<double> numbers;
    bool remark = false;    ///< Something follows the numbers.
    int likenesses = 0;     ///< Numbers and damaged numbers before the first word.
    QByteArrayView damaged; ///< The first damaged field.
};

/// Reads @p line into @p fields, whose memory is reused. Fields are separated by blanks, tabs and
/// semicolons, and by commas unless @p decimal_commas. Brackets and quotes around a number and `%`
/// or `mm` after it are ignored. Exponents are `e` or `d`. Two numbers may touch where a sign
/// separates them: `1.00000-0.00123`.
void read_fields(QByteArrayView line, bool decimal_commas, Fields& fields);

/// Whether the commas in @p utf8 are decimal commas: more lines of numbers have those than have
/// decimal points.
bool has_decimal_commas(QByteArrayView utf8);

} // namespace tables
