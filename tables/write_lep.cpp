// SPDX-FileCopyrightText: Aerolith developers
// The paragliding profile, with the rows of its intake counted.
#include "tables/arrange.h"
#include "tables/write_p.h"

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

// Whether the nose is (0, 0) and the point (1, 0) lies on or between the ends.
bool has_profile_frame(const QPolygonF& points) {
    constexpr double close = 1e-6;
    const QPointF nose = points[nose_row(points)];
    const QPointF a = points.first();
    const QPointF b = points.last();
    return std::abs(nose.x()) <= close && std::abs(nose.y()) <= close &&
           std::abs(a.x() - 1.0) <= close && std::abs(b.x() - 1.0) <= close &&
           std::min(a.y(), b.y()) <= close && std::max(a.y(), b.y()) >= -close;
}

// The row of the lower side at a station, put in where there is none; -1 where the side does not
// reach so far.
qsizetype row_at(QPolygonF& points, double percent, int decimals) {
    if (percent == 0.0)
        return nose_row(points);
    const auto place = cut_second_side(points, Extent(points).x_at(percent), half_unit(decimals));
    if (!place)
        return -1;
    if (place->fraction == 0.0)
        return place->row;
    points.insert(place->row + 1, place->on(points));
    return place->row + 1;
}

} // namespace

Written write_lep(const Table& given, int decimals) {
    constexpr qsizetype most_rows = 500;
    if (!given.openings)
        return {{}, {refusal(QStringLiteral("no openings; expected --openings O-1 O-2"))}};
    Table table = given;
    table.findings.clear();
    table.points = with_upper_first(given.points);
    if (!has_profile_frame(table.points))
        table = normalized(std::move(table));

    const Openings openings = *table.openings;
    if (!(openings.start >= 0.0) || !(openings.end >= openings.start) || !(openings.end <= 100.0)) {
        return {{},
                {refusal(QStringLiteral("openings %1 %2; expected O-1 not below 0, O-2 not "
                                        "below O-1 and not above 100")
                             .arg(openings.start)
                             .arg(openings.end))}};
    }
    const qsizetype begin = row_at(table.points, openings.start, decimals);
    const qsizetype end = row_at(table.points, openings.end, decimals);
    if (begin < 0 || end < begin) {
        return {{},
                {refusal(QStringLiteral("the lower side has no point at the openings %1 %2")
                             .arg(openings.start)
                             .arg(openings.end))}};
    }
    const qsizetype count = table.points.size();
    if (count > most_rows) {
        return {{},
                {refusal(QStringLiteral("%1 rows; a profile has at most %2, expected --points")
                             .arg(count)
                             .arg(most_rows))}};
    }

    Written written;
    written.findings = table.findings + notes_on_sides(table.points);
    QByteArray& bytes = written.bytes;
    bytes = plain_title(table.title, QLatin1String("section"))
                .replace(QLatin1Char(' '), QLatin1Char('_'))
                .toUtf8() +
            '\n';
    for (const qsizetype rows : {count, begin + 1, end - begin + 1, count - end})
        bytes += QByteArray::number(rows) + '\n';
    for (const QPointF& point : std::as_const(table.points))
        append_row(bytes, point, decimals);
    return written;
}

} // namespace tables
