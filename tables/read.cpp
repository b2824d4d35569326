// SPDX-FileCopyrightText: Aerolith developers
// From bytes to an outline.
#include "tables/table.h"

#include <algorithm>
#include <charconv>

namespace tables {

namespace {

bool read_number(const char*& next, const char* end, double& number) {
    while (next != end && (*next == ' ' || *next == '\t' || *next == ','))
        ++next;
    const std::from_chars_result result = std::from_chars(next, end, number);
    if (result.ec != std::errc())
        return false;
    next = result.ptr;
    return true;
}

} // namespace

bool Table::readable() const {
    return std::none_of(findings.begin(), findings.end(),
                        [](const Finding& finding) { return finding.gravity == Gravity::error; });
}

Table read(const QByteArray& bytes, const ReadOptions&) {
    Table table;
    table.layout = QStringLiteral("selig");
    int line = 0;
    for (const QByteArray& text : bytes.split('\n')) {
        ++line;
        const char* next = text.constData();
        const char* const end = next + text.size();
        double x = 0.0;
        double y = 0.0;
        if (read_number(next, end, x) && read_number(next, end, y)) {
            table.points.append({x, y});
            table.lines.push_back(line);
        } else if (line == 1) {
            table.title = QString::fromUtf8(text).trimmed();
        }
    }
    if (table.points.size() < 6)
        table.findings.append(
            {Gravity::error, 0, QStringLiteral("fewer than 6 points; expected an outline")});
    return table;
}

QStringList layout_names() {
    return {QStringLiteral("selig")};
}

} // namespace tables
