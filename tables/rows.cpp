// SPDX-FileCopyrightText: Aerolith developers
// Second step of the reading: text to rows of numbers with their line numbers.
#include "tables/rows_p.h"

#include "tables/text_p.h"

#include <algorithm>
#include <limits>

namespace tables {

QByteArrayView Rows::line_text(std::size_t line) const {
    QByteArrayView rest = QByteArrayView(text).sliced(lines[line].text);
    return take_line(rest);
}

std::vector<double> Rows::values(std::size_t line) const {
    const auto first = numbers.begin() + lines[line].first;
    return std::vector<double>(first, first + lines[line].count);
}

Rows rows_of(const QByteArray& utf8) {
    constexpr std::size_t most_columns = std::numeric_limits<quint16>::max();
    Rows rows;
    rows.text = utf8;
    rows.decimal_commas = has_decimal_commas(utf8);
    // A growing vector would briefly take twice the memory, while reserved pages that stay unused
    // take none. Only rows of empty places hold more numbers than this.
    const std::size_t most = std::size_t(utf8.size()) / 2 + 1;
    rows.lines.reserve(most);
    rows.numbers.reserve(most);
    QByteArrayView rest = rows.text;
    Fields fields;
    int number = 0;
    bool after_gap = false;
    while (!rest.isEmpty()) {
        const auto begin = quint32(rest.data() - rows.text.constData());
        const QByteArrayView text = take_line(rest);
        ++number;
        read_fields(text, rows.decimal_commas, fields);
        if (fields.kind == LineKind::blank) {
            after_gap = true;
            continue;
        }
        Line line = {};
        line.number = number;
        line.text = begin;
        line.first = quint32(rows.numbers.size());
        line.kind = fields.kind;
        line.after_gap = after_gap;
        line.remark = fields.remark;
        if (line.kind == LineKind::numbers) {
            fields.numbers.resize(std::min(fields.numbers.size(), most_columns));
            rows.numbers.insert(rows.numbers.end(), fields.numbers.begin(), fields.numbers.end());
        }
        line.count = quint16(line.kind == LineKind::numbers
                                 ? fields.numbers.size()
                                 : std::min(std::size_t(fields.likenesses), most_columns));
        rows.lines.push_back(line);
        after_gap = false;
    }
    return rows;
}

} // namespace tables
