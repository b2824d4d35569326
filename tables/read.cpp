// SPDX-FileCopyrightText: Aerolith developers
// The whole reading: bytes, text, rows, groups of rows, layouts, and the choice of one section.
#include "tables/carried_p.h"
#include "tables/search_p.h"
#include "tables/text_p.h"

#include <algorithm>

namespace tables {

namespace {

QString lines_text(const std::vector<Found>& found) {
    constexpr std::size_t most_told = 6;
    QStringList lines;
    for (std::size_t i = 0; i < std::min(found.size(), most_told); ++i)
        lines.append(QString::number(found[i].success.line));
    if (found.size() > most_told)
        lines.append(QStringLiteral("..."));
    return lines.join(QStringLiteral(", "));
}

QString rows_text(int count) {
    return count == 1 ? QStringLiteral("a row of numbers")
                      : QStringLiteral("%1 rows of numbers").arg(count);
}

// Reports the rows directly before the section that the layout does not explain: counts and
// parameters as a note, a row that looks like a point as a doubt.
void report_heads(const Rows& rows, const Success& section, QList<Finding>& findings) {
    const int columns = rows.lines[section.first].count;
    const std::size_t unknown = section.heads.size() - std::size_t(section.reading.heads);
    for (std::size_t i = 0; i < unknown; ++i) {
        const std::size_t line = section.heads[i];
        const bool touches = line + 1 == section.first && !rows.lines[section.first].after_gap;
        const bool is_like_count = are_whole(rows, line) && rows.lines[line].count < columns;
        const bool is_like_point = touches && line > 0 && !rows.lines[line].remark &&
                                   rows.lines[line].count <= columns && !is_like_count;
        findings.append({is_like_point ? Gravity::doubt : Gravity::note, rows.lines[line].number,
                         QStringLiteral("\"%1\" stands before the rows; left out")
                             .arg(shown(rows.line_text(line)))});
    }
}

// Reports the rows in the lines [begin, end) that no layout has read: as a doubt if they could
// belong to the section. With several tables they are the ones not chosen.
void report_rest(const Rows& rows, const Success& section, std::size_t begin, std::size_t end,
                 const QString& place, bool several, QList<Finding>& findings) {
    const int columns = rows.lines[section.last].count;
    int left_out = 0;
    int first = 0;
    Gravity gravity = Gravity::note;
    for (std::size_t line = begin; line < end; ++line) {
        const Line& rest = rows.lines[line];
        if (rest.kind != LineKind::numbers)
            continue;
        first = left_out == 0 ? rest.number : first;
        ++left_out;
        const bool touches = line == section.last + 1 && !rest.after_gap;
        if (!several && !rest.remark && (touches || rest.count == columns))
            gravity = Gravity::doubt;
    }
    if (left_out > 0)
        findings.append(
            {gravity, first,
             QStringLiteral("%1 %2 the section left out").arg(rows_text(left_out), place)});
}

void refuse(Table& table, int line, const QString& text) {
    table.findings.append({Gravity::error, line, text});
}

void take(const Rows& rows, Success section, bool several, Table& table) {
    if (const auto damage = damage_in(rows, section.first, section.last)) {
        table.findings.append(*damage);
        return;
    }
    if (const auto lost = lost_row(rows, section.first, section.last, section.reading.heads)) {
        table.findings.append(*lost);
        if (lost->gravity == Gravity::error)
            return;
    }
    report_rest(rows, section, 0, section.heads.empty() ? section.first : section.heads.front(),
                QStringLiteral("before"), several, table.findings);
    report_heads(rows, section, table.findings);
    table.findings += section.reading.findings;
    report_rest(rows, section, section.last + 1, rows.lines.size(), QStringLiteral("behind"),
                several, table.findings);
    table.kind = kind_of(section.reading.outline);
    table.layout = section.layout;
    table.title = title_of(rows, section.first, table.layout == QLatin1String("vsp"));
    table.openings = section.reading.openings;
    take_carried(rows, section.first, table);
    table.points = std::move(section.reading.outline.points);
    table.lines = std::move(section.reading.outline.lines);
}

// Takes the requested section, or reports why there is none.
void take_one(const Rows& rows, const std::vector<Group>& groups, Search result, int element,
              Table& table) {
    std::vector<Found>& found = result.found;
    if (element > 0) {
        if (std::size_t(element) > found.size())
            refuse(table, 0,
                   QStringLiteral("element %1 of %2; expected an existing one")
                       .arg(element)
                       .arg(found.size()));
        else
            take(rows, std::move(found[std::size_t(element) - 1].success), true, table);
        return;
    }
    const bool several = found.size() > 1;
    choose_table(found, table.findings);
    const Found& one = found.front();
    const bool is_half = one.success.layout == QLatin1String("half");
    if (found.size() > 1)
        refuse(table, found[1].success.line,
               QStringLiteral("%1 sections or elements, at lines %2; expected one, picked by "
                              "--element")
                   .arg(found.size())
                   .arg(lines_text(found)));
    else if (is_half && is_mean_line(one.words))
        refuse(table, one.success.line, QStringLiteral("a mean line; expected an outline"));
    else if (is_half && !result.unread.empty())
        refuse(table, rows.lines[groups[result.unread.front()].first].number,
               QStringLiteral("a table that cannot be read beside one side of a section; expected "
                              "both sides"));
    else if (const QByteArray name = other_quantity(one.words); !name.isEmpty())
        refuse(table, one.success.line,
               QStringLiteral("a column is named \"%1\" and none y; expected coordinates")
                   .arg(QString::fromUtf8(name)));
    else if (is_accident(rows, found))
        refuse(table, one.success.line,
               QStringLiteral("a few rows like a section among many others; expected a table of "
                              "coordinates"));
    else
        take(rows, std::move(found.front().success), several, table);
}

} // namespace

bool Table::readable() const {
    return std::none_of(findings.begin(), findings.end(),
                        [](const Finding& finding) { return finding.gravity == Gravity::error; });
}

Table read(const QByteArray& bytes, const ReadOptions& options) {
    Table table;
    Text text = decoded(bytes);
    table.findings = std::move(text.findings);
    if (!table.readable())
        return table;
    Rows rows = rows_of(text.utf8);
    text.utf8.clear();
    const std::vector<Group> groups = groups_of(rows);
    Search result = search(rows, groups, options.layout);
    if (!result.found.empty()) {
        take_one(rows, groups, std::move(result), options.element, table);
    } else if (const auto damage = damage_in(rows, 0, rows.lines.size())) {
        table.findings.append(*damage);
    } else if (!result.errors.isEmpty()) {
        table.findings.append(result.errors.first());
        table.candidates = result.candidates;
    } else {
        refuse(table, rows.lines.empty() ? 0 : rows.lines.front().number,
               QStringLiteral("no rows of numbers; expected x and y in each"));
    }
    return table;
}

QStringList layout_names() {
    QStringList names;
    for (const Layout& layout : layouts())
        names.append(QString::fromLatin1(layout.name));
    return names;
}

} // namespace tables
