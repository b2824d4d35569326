// SPDX-FileCopyrightText: Aerolith developers
// Which lines belong together: the tables of a file, what stands above them, and damage.
#include "tables/groups_p.h"

#include "tables/text_p.h"

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

// Whether only words, marks and counts, or one damaged row, lie between two stretches of a table.
bool belongs_to(const Rows& rows, const Group& group, std::size_t next) {
    if (int(rows.lines[next].count) != group.columns)
        return false;
    if (next == group.last + 1)
        return true;
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

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Whether a line of words between rows was meant to be a row: it begins like a number, or it has as
// many fields as a row, each with a digit and one of them a decimal number.
bool is_spoilt_row(const Rows& rows, std::size_t line, int columns) {
    const QByteArrayView text = rows.line_text(line).trimmed();
    if (is_comment(text) || text.size() > 200)
        return false;
    if (is_digit(text.front()) || QByteArrayView("+-.,").contains(text.front()))
        return true;
    int fields = 0;
    bool decimal = false;
    Fields read;
    for (const QByteArray& field : text.toByteArray().simplified().split(' ')) {
        if (std::none_of(field.begin(), field.end(), is_digit))
            return false;
        read_fields(field, rows.decimal_commas, read);
        decimal = decimal || (read.kind == LineKind::numbers && !read.remark &&
                              (field.contains('.') || rows.decimal_commas));
        ++fields;
    }
    return decimal && fields == columns;
}

// `12.11.2004`
bool is_date(QByteArrayView text) {
    const QByteArrayList parts = text.trimmed().toByteArray().split('.');
    const auto is_part = [](const QByteArray& part, qsizetype least, qsizetype most) {
        return part.size() >= least && part.size() <= most &&
               std::all_of(part.begin(), part.end(), is_digit);
    };
    return parts.size() == 3 && is_part(parts[0], 1, 2) && is_part(parts[1], 1, 2) &&
           is_part(parts[2], 2, 4);
}

// Whether a line of whole numbers between two rows is a count: x starts again after it, and it is
// not the x of a trailing edge itself.
bool is_count_between(const Rows& rows, std::size_t line) {
    const double before = rows.value(line - 1, 0);
    const double behind = rows.value(line + 1, 0);
    const double edge = std::max(std::abs(before), std::abs(behind));
    const double count = rows.value(line, 0);
    return are_whole(rows, line) && count >= 2.0 && std::abs(before - behind) > 0.7 * edge &&
           std::abs(count - edge) > 0.1 * edge;
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
    // A damaged row near an end cuts off one or two intact ones.
    constexpr std::size_t farthest = 3;
    const std::size_t size = rows.lines.size();
    if (size == 0)
        return std::nullopt;
    last = std::min(last, size - 1);
    const int wanted = rows.lines[last].count;
    const auto is_cut_off = [&](std::size_t line) {
        return is_row(rows, line) && rows.lines[line].count == wanted;
    };
    for (std::size_t line = first;
         line > 0 && first - line < farthest && !rows.lines[line].after_gap;) {
        if (is_cut_off(--line))
            first = line;
    }
    for (std::size_t line = last + 1;
         line < size && line - last <= farthest && !rows.lines[line].after_gap; ++line) {
        if (is_cut_off(line))
            last = line;
    }
    const auto is_beside = [&](std::size_t line) { return line < size && is_row(rows, line); };
    for (std::size_t line = first > 0 ? first - 1 : 0; line < std::min(last + 2, size); ++line) {
        const Line& here = rows.lines[line];
        const bool before = line > 0 && is_beside(line - 1);
        const bool behind = is_beside(line + 1);
        if (!before && !behind)
            continue;
        const bool inside = line >= first && line <= last;
        const bool touches =
            (before && !here.after_gap) || (behind && !rows.lines[line + 1].after_gap);
        const int columns = rows.lines[before ? line - 1 : line + 1].count;
        const auto damage = [&](const QString& what) {
            return Finding{Gravity::error, here.number,
                           QStringLiteral("\"%1\"%2; expected %3")
                               .arg(shown(rows.line_text(line)), what, numbers_text(columns))};
        };
        if (here.kind == LineKind::damaged) {
            // A title, a date or a remark next to the rows may look like numbers.
            const bool is_title = line == 0 && here.count < 2;
            const bool is_remark =
                is_date(rows.line_text(line)) || (!touches && here.count != columns);
            if (inside || !(is_title || is_remark))
                return damage(QString());
        }
        if (!inside || !before || !behind || rows.lines[line + 1].count != columns)
            continue;
        if (here.kind == LineKind::numbers && here.count != columns &&
            !is_count_between(rows, line))
            return damage(QStringLiteral(" is ") + numbers_text(here.count));
        if (here.kind == LineKind::text && touches && is_spoilt_row(rows, line, columns))
            return damage(QString());
    }
    return std::nullopt;
}

std::optional<Finding> lost_row(const Rows& rows, std::size_t first, std::size_t last, int known) {
    const int columns = rows.lines[last].count;
    const auto finding = [&](std::size_t line) -> std::optional<Finding> {
        const Line& here = rows.lines[line];
        // Four or five numbers above the rows are the extents of a grid.
        if (here.kind != LineKind::numbers || here.remark || here.count == columns ||
            (columns < 4 && here.count > 3 && line < first))
            return std::nullopt;
        const double x = rows.value(line, 0);
        const Range range = range_of(Sheet(rows, first, last + 1, columns), 0);
        const double margin = (line < first ? 0.1 : 0.5) * range.width();
        if (!(x >= range.least - margin && x <= range.greatest + margin))
            return std::nullopt;
        const double all = double(last - first + 1);
        const bool is_count = line < first && x >= 2.0 && are_whole(rows, line) &&
                              (std::abs(x - all) <= 2.0 || std::abs(2.0 * x - all) <= 2.0);
        return Finding{is_count ? Gravity::doubt : Gravity::error, here.number,
                       QStringLiteral("\"%1\" is %2; expected %3 as in the rows beside it")
                           .arg(shown(rows.line_text(line)), numbers_text(here.count))
                           .arg(columns)};
    };
    std::optional<Finding> lost;
    const bool touches = first > 0 && (!rows.lines[first].after_gap ||
                                       (columns > 2 && rows.lines[first - 1].count > 1));
    if (known == 0 && touches)
        lost = finding(first - 1);
    if (!lost && last + 1 < rows.lines.size() && !rows.lines[last + 1].after_gap)
        lost = finding(last + 1);
    return lost;
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
        // A line of column names is not a title.
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
