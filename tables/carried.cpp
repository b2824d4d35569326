// SPDX-FileCopyrightText: Aerolith developers
#include "tables/carried_p.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <charconv>
#include <cmath>

namespace tables {

namespace {

// This program writes no longer ones.
constexpr qsizetype longest_line = 4096;

std::optional<Openings> openings_of(QByteArrayView numbers) {
    Openings openings;
    const char* next = numbers.data();
    const char* const end = next + numbers.size();
    for (double* const value : {&openings.start, &openings.end}) {
        while (next != end && *next == ' ')
            ++next;
        const std::from_chars_result result = std::from_chars(next, end, *value);
        if (result.ec != std::errc() || !std::isfinite(*value))
            return std::nullopt;
        next = result.ptr;
    }
    if (next != end)
        return std::nullopt;
    return openings;
}

// The member of an object that has a line of its own.
QJsonObject member_of(QByteArrayView line) {
    QByteArray text = line.toByteArray();
    if (text.startsWith('{'))
        text.remove(0, 1);
    if (text.endsWith(','))
        text.chop(1);
    return QJsonDocument::fromJson('{' + text + '}').object();
}

} // namespace

void take_carried(const Rows& rows, std::size_t first, Table& table) {
    const QByteArrayView comment = "# openings:";
    for (std::size_t i = 0; i < first; ++i) {
        const QByteArrayView line = rows.line_text(i).trimmed();
        if (line.size() > longest_line)
            continue;
        if (line.startsWith(comment)) {
            const auto openings = openings_of(line.sliced(comment.size()));
            if (openings)
                table.openings = openings;
            if (table.title.startsWith(QLatin1String("openings:")))
                table.title.clear();
        } else if (line.startsWith("{\"title\":")) {
            table.title = member_of(line)[QStringLiteral("title")].toString();
        } else if (line.startsWith("\"openings\":")) {
            const QJsonObject pair = member_of(line)[QStringLiteral("openings")].toObject();
            const QJsonValue start = pair[QStringLiteral("start")];
            const QJsonValue end = pair[QStringLiteral("end")];
            if (start.isDouble() && end.isDouble())
                table.openings = Openings{start.toDouble(), end.toDouble()};
        }
    }
}

} // namespace tables
