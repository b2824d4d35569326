// SPDX-FileCopyrightText: Aerolith developers
// Writes a row for each station of either side: x, upper y, lower y.
#include "tables/arrange.h"
#include "tables/write_p.h"

#include <algorithm>
#include <vector>

namespace tables {

namespace {

using Side = std::vector<QPointF>;

// The height of a side at x, which may be slightly beyond its end.
double height_at(const Side& side, double x, bool* is_between) {
    const auto behind = std::lower_bound(
        side.begin(), side.end(), x, [](const QPointF& a, double value) { return a.x() < value; });
    if (behind == side.end()) {
        *is_between = true;
        return side.back().y();
    }
    if (behind->x() == x || behind == side.begin())
        return behind->y();
    *is_between = true;
    const QPointF a = *(behind - 1);
    return a.y() + (x - a.x()) / (behind->x() - a.x()) * (behind->y() - a.y());
}

// The row at which x decreases or stays the same.
Side::const_iterator step_back(const Side& side) {
    return std::adjacent_find(side.begin(), side.end(),
                              [](const QPointF& a, const QPointF& b) { return b.x() <= a.x(); });
}

} // namespace

Written write_columns(const Table& table, int decimals) {
    const QPolygonF points = with_upper_first(table.points);
    const qsizetype nose = nose_row(points);
    Side upper(points.begin(), points.begin() + nose + 1);
    std::reverse(upper.begin(), upper.end());
    Side lower(points.begin() + nose, points.end());
    // Two rows with the same x are the ends of a blunt nose.
    if (lower.size() > 1 && lower[1].x() == lower[0].x())
        lower.erase(lower.begin());

    for (const Side* side : {&upper, &lower}) {
        const auto back = step_back(*side);
        if (back != side->end()) {
            return {
                {},
                {refusal(QStringLiteral("the %1 side has no single height at x = %2; expected "
                                        "an x that grows from the nose to the trailing edge")
                             .arg(side == &upper ? QLatin1String("upper") : QLatin1String("lower"),
                                  QString::number((back + 1)->x(), 'g', 8)))}};
        }
    }

    std::vector<double> stations;
    for (const Side* side : {&upper, &lower}) {
        for (const QPointF& point : *side)
            stations.push_back(point.x());
    }
    std::sort(stations.begin(), stations.end());
    stations.erase(std::unique(stations.begin(), stations.end()), stations.end());

    Written written;
    written.findings = notes_on_sides(points);
    written.bytes = safe_title_line(table.title);
    int between = 0;
    for (const double x : stations) {
        bool is_between = false;
        append_aligned(written.bytes, x, decimals);
        for (const Side* side : {&upper, &lower}) {
            written.bytes += ' ';
            append_aligned(written.bytes, height_at(*side, x, &is_between), decimals);
        }
        written.bytes += '\n';
        between += is_between ? 1 : 0;
    }
    if (between > 0) {
        written.findings.append(
            {Gravity::note, 0,
             QStringLiteral("%1 of %2 stations have a row on one side only; the other height lies "
                            "on the straight line between its rows")
                 .arg(between)
                 .arg(stations.size())});
    }
    return written;
}

} // namespace tables
