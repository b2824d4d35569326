// SPDX-FileCopyrightText: Aerolith developers
// Which lines belong together: the tables of a file, what stands above them, and damage.
#include "tables/groups.h"

#include "tables/text.h"

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

constexpr int least_rows = 3;
constexpr int most_columns = 32;
constexpr std::size_t most_heads = 8;

bool is_element_mark(const Rows& rows, std::size_t line) {
    if (rows.lines[line].count != 2)
        return false;
    const double mark = rows.value(line, 0);
    return mark == rows.value(line, 1) && (mark == 999.0 || mark == 9999.0 || mark == 99999.0);
}

bool is_row(const Rows& rows, std::size_t line) {
    return rows.is_numbers(line) && rows.lines[line].count >= 2 &&
           rows.lines[line].count <= most_columns;
}

// Whether only words, marks and counts stand between two stretches of a table.
bool belongs_to(const Rows& rows, const Group& group, std::size_t next) {
    if (int(rows.lines[next].count) != group.columns)
        return false;
    for (std::size_t line = group.last; line < next; ++line) {
        if (rows.is_numbers(line) && int(rows.lines[line].count) != group.columns &&
            !are_whole(rows, line))
            return false;
    }
    return true;
}

bool is_comment(QByteArrayView text) {
    const QByteArrayView trimmed = text.trimmed();
    return !trimmed.isEmpty() && QByteArrayView("#!%;*/'").contains(trimmed.front());
}

// Whether a line of words was to be a row: as many fields, each with a digit, one a decimal
// number.
bool is_spoilt_row(const Rows& rows, std::size_t line, int columns) {
    const QByteArrayView text = rows.line_text(line);
    if (is_comment(text) || text.size() > 200)
        return false;
    int fields = 0;
    bool decimal = false;
    Fields read;
    for (const QByteArray& field : text.toByteArray().simplified().split(' ')) {
        if (std::none_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; }))
            return false;
        read_fields(field, rows.decimal_commas, read);
        decimal = decimal || (read.kind == LineKind::numbers && !read.remark &&
                              (field.contains('.') || rows.decimal_commas));
        ++fields;
    }
    return decimal && fields == columns;
}

QString numbers_text(int count) {
    return count == 1 ? QStringLiteral("1 number") : QStringLiteral("%1 numbers").arg(count);
}

} // namespace

bool are_whole(const Rows& rows, std::size_t line) {
    for (int column = 0; column < rows.lines[line].count; ++column) {
        const double number = rows.value(line, column);
        if (number != std::floor(number))
            return false;
    }
    return true;
}

std::vector<Group> groups_of(Rows& rows) {
    for (std::size_t line = 0; line < rows.lines.size(); ++line) {
        if (rows.is_numbers(line) && is_element_mark(rows, line))
            rows.lines[line].kind = LineKind::mark;
    }
    std::vector<Group> groups;
    std::size_t line = 0;
    while (line < rows.lines.size()) {
        if (!is_row(rows, line)) {
            ++line;
            continue;
        }
        std::size_t end = line + 1;
        while (end < rows.lines.size() && is_row(rows, end) &&
               rows.lines[end].count == rows.lines[line].count)
            ++end;
        if (end - line >= least_rows) {
            if (!groups.empty() && belongs_to(rows, groups.back(), line)) {
                groups.back().last = end;
                ++groups.back().parts;
            } else {
                groups.push_back({line, end, int(rows.lines[line].count), 1});
            }
        }
        line = end;
    }
    return groups;
}

Head head_of(const Rows& rows, const std::vector<Group>& groups, std::size_t group) {
    Head head;
    const std::size_t begin = group > 0 ? groups[group - 1].last : 0;
    for (std::size_t line = groups[group].first; line > begin && head.lines.size() < most_heads;) {
        if (rows.is_numbers(--line))
            head.lines.push_back(line);
    }
    std::reverse(head.lines.begin(), head.lines.end());
    return head;
}

QByteArray words_above(const Rows& rows, std::size_t line) {
    constexpr int most_words = 1000;
    QByteArray words;
    bool in_words = false;
    while (line > 0 && words.size() < most_words) {
        --line;
        const bool is_words = rows.lines[line].kind == LineKind::text;
        // Counts may stand between the words and the rows.
        if (!is_words && (in_words || rows.lines[line].count > 2))
            break;
        in_words = in_words || is_words;
        const QByteArrayView text = rows.line_text(line);
        words.prepend(text.first(std::min<qsizetype>(text.size(), most_words)).toByteArray() +
                      '\n');
    }
    return words.right(most_words).toLower();
}

std::optional<Finding> damage_in(const Rows& rows, std::size_t first, std::size_t last) {
    const std::size_t size = rows.lines.size();
    const auto touches = [&](std::size_t line, std::size_t after) {
        return after < size && !rows.lines[after].after_gap && after == line + 1;
    };
    for (std::size_t line = first; line < std::min(last, size); ++line) {
        const Line& here = rows.lines[line];
        const bool row_before = line > 0 && touches(line - 1, line) && is_row(rows, line - 1);
        const bool row_behind = touches(line, line + 1) && is_row(rows, line + 1);
        if (!row_before && !row_behind)
            continue;
        const int columns = rows.lines[row_before ? line - 1 : line + 1].count;
        const QString text = shown(rows.line_text(line));
        if (here.kind == LineKind::damaged && (here.count >= 2 || (row_before && row_behind)))
            return Finding{Gravity::error, here.number,
                           QStringLiteral("\"%1\"; expected %2").arg(text, numbers_text(columns))};
        if (!row_before || !row_behind || rows.lines[line + 1].count != columns)
            continue;
        if (here.kind == LineKind::numbers && here.count != columns && !are_whole(rows, line))
            return Finding{Gravity::error, here.number,
                           QStringLiteral("\"%1\" is %2; expected %3 as in the rows around")
                               .arg(text, numbers_text(here.count))
                               .arg(columns)};
        if (here.kind == LineKind::text && is_spoilt_row(rows, line, columns))
            return Finding{Gravity::error, here.number,
                           QStringLiteral("\"%1\"; expected %2").arg(text, numbers_text(columns))};
    }
    return std::nullopt;
}

QString title_of(const Rows& rows, std::size_t first_row, bool second_line) {
    std::size_t seen = 0;
    for (std::size_t line = 0; line < std::min(first_row, rows.lines.size()); ++line) {
        QString text = shown(rows.line_text(line));
        const bool is_number = rows.is_numbers(line);
        if (is_number && (!rows.lines[line].remark || text.contains(QLatin1Char('!'))))
            break;
        while (!text.isEmpty() && QStringLiteral("#!%;*/'\"").contains(text.front()))
            text = text.mid(1).trimmed();
        // A line that names columns is no title.
        const QString first = text.section(QLatin1Char(' '), 0, 0).toLower();
        const bool names_columns =
            first == QLatin1String("x") || first.startsWith(QLatin1String("x/c")) ||
            first.startsWith(QLatin1String("x,")) || first.startsWith(QLatin1String("x;")) ||
            first.startsWith(QLatin1String("x\t"));
        if (text.isEmpty() || names_columns || (second_line && seen++ == 0))
            continue;
        return text;
    }
    return QString();
}

} // namespace tables
