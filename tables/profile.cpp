// SPDX-FileCopyrightText: Aerolith developers
#include "tables/profile.h"

#include "tables/arrange.h"
#include "tables/cubic.h"
#include "tables/write_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tables {

namespace {

bool has_profile_frame(const QPolygonF& points) {
    constexpr double close = 1e-6;
    const QPointF nose = points[nose_row(points)];
    const QPointF a = points.first();
    const QPointF b = points.last();
    return std::abs(nose.x()) <= close && std::abs(nose.y()) <= close &&
           std::abs(a.x() - 1.0) <= close && std::abs(b.x() - 1.0) <= close &&
           std::min(a.y(), b.y()) <= close && std::max(a.y(), b.y()) >= -close;
}

// The point at x between a row and the next, on the cubic through these two and one more on either
// side, or on the straight line where the cubic leaves the range of the two.
QPointF point_between(const QPolygonF& points, const Place& place, double x) {
    const qsizetype row = place.row;
    const QPointF straight = place.on(points);
    if (row == 0 || row + 2 >= points.size())
        return straight;
    const std::array<QPointF, 4> around = {points[row - 1], points[row], points[row + 1],
                                           points[row + 2]};
    if (around[0] == around[1] || around[1] == around[2] || around[2] == around[3])
        return straight;
    const Cubic cubic(around);
    const bool is_rising = around[1].x() < around[2].x();
    double before = cubic.knot(1);
    double behind = cubic.knot(2);
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (before + behind);
        ((cubic.at(middle).x() < x) == is_rising ? before : behind) = middle;
    }
    const double y = cubic.at(before).y();
    // A corner next to the two rows makes the cubic oscillate.
    const double reach = std::abs(around[2].x() - around[1].x());
    return std::abs(y - straight.y()) < 0.5 * reach + std::abs(around[2].y() - around[1].y())
               ? QPointF(x, y)
               : straight;
}

// The row of the lower side at a station, inserted where there is none; -1 where the side does not
// reach that far.
qsizetype row_at(Table& table, double percent, int decimals) {
    QPolygonF& points = table.points;
    if (percent == 0.0)
        return nose_row(points);
    const double x = Extent(points).x_at(percent);
    const auto place = cut_second_side(points, x, half_unit(decimals));
    if (!place)
        return -1;
    if (place->fraction == 0.0)
        return place->row;
    points.insert(place->row + 1, point_between(points, *place, x));
    const auto line = table.lines.begin() + place->row;
    table.lines.insert(line + 1, *line);
    return place->row + 1;
}

Profile refused(const QString& text) {
    Profile profile;
    profile.findings = {refusal(text)};
    return profile;
}

} // namespace

bool Profile::ok() const {
    return !has_error(findings);
}

Profile profile_of(const Table& table, int decimals) {
    if (!table.openings)
        return refused(QStringLiteral("no openings; expected --openings O-1 O-2"));
    Profile profile;
    Table& made = profile.table;
    made = is_upper_first(table.points) ? table : reversed(table);
    made.findings.clear();
    made.lines.resize(std::size_t(made.points.size()));
    if (!has_profile_frame(made.points))
        made = normalized(std::move(made));

    const Openings openings = *made.openings;
    if (!(openings.start >= 0.0) || !(openings.end >= openings.start) || !(openings.end <= 100.0)) {
        return refused(QStringLiteral("openings %1 %2; expected O-1 not below 0, O-2 not below "
                                      "O-1 and not above 100")
                           .arg(openings.start)
                           .arg(openings.end));
    }
    profile.nose = nose_row(made.points);
    profile.begin = row_at(made, openings.start, decimals);
    profile.end = row_at(made, openings.end, decimals);
    if (profile.begin < 0 || profile.end < profile.begin) {
        return refused(QStringLiteral("the lower side has no point at the openings %1 %2")
                           .arg(openings.start)
                           .arg(openings.end));
    }
    profile.findings = made.findings + notes_on_sides(made.points);
    return profile;
}

} // namespace tables
