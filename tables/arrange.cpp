// SPDX-FileCopyrightText: Aerolith developers
#include "tables/arrange.h"

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

// Twice the area enclosed by the outline with its ends joined, positive when counter-clockwise.
double doubled_area(const QPolygonF& outline) {
    double sum = 0.0;
    QPointF last = outline.last();
    for (const QPointF& point : outline) {
        sum += last.x() * point.y() - point.x() * last.y();
        last = point;
    }
    return sum;
}

double squared_length(QPointF a) {
    return a.x() * a.x() + a.y() * a.y();
}

QPointF middle_of_ends(const QPolygonF& outline) {
    return QPointF(0.5 * (outline.first().x() + outline.last().x()),
                   0.5 * (outline.first().y() + outline.last().y()));
}

void add_note(Table& table, const QString& text) {
    table.findings.append({Gravity::note, 0, text});
}

QString number(double value) {
    return QString::number(value, 'g', 8);
}

// Keeps the places of the mouth's ends on the rows, to compute the stations after the rows have
// moved.
class Mouth {
public:
    explicit Mouth(const Table& table) : is_turned(!is_upper_first(table.points)) {
        if (!table.openings)
            return;
        const QPolygonF outline = with_upper_first(table.points);
        const Extent extent(outline);
        const double stations[2] = {table.openings->start, table.openings->end};
        for (std::size_t i = 0; i < 2; ++i) {
            // 0 means that the mouth begins or ends at the nose, wherever that is.
            if (stations[i] != 0.0)
                ends[i] = cut_second_side(outline, extent.x_at(stations[i]), 0.0);
        }
    }

    void move(Table& table) const {
        if (!table.openings)
            return;
        QPolygonF outline = table.points;
        if (is_turned)
            std::reverse(outline.begin(), outline.end());
        const Openings before = *table.openings;
        const Extent extent(outline);
        if (ends[0])
            table.openings->start = extent.percent_at(ends[0]->on(outline).x());
        if (ends[1])
            table.openings->end = extent.percent_at(ends[1]->on(outline).x());
        // Below this the stations differ by rounding only.
        constexpr double least_change = 1e-9;
        if (std::abs(table.openings->start - before.start) < least_change &&
            std::abs(table.openings->end - before.end) < least_change)
            table.openings = before;
        else
            add_note(table, QStringLiteral("openings %1 %2 become %3 %4, at the same points")
                                .arg(number(before.start), number(before.end),
                                     number(table.openings->start), number(table.openings->end)));
    }

private:
    bool is_turned;
    std::optional<Place> ends[2];
};

} // namespace

qsizetype nose_row(const QPolygonF& outline) {
    const auto nose =
        std::min_element(outline.begin(), outline.end(),
                         [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
    return nose == outline.end() ? -1 : nose - outline.begin();
}

bool has_equal_sides(const QPolygonF& outline) {
    constexpr double least_area = 1e-9;
    if (outline.isEmpty())
        return true;
    const double width = Extent(outline).width();
    return std::abs(doubled_area(outline)) <= least_area * width * width;
}

bool is_upper_first(const QPolygonF& outline) {
    return has_equal_sides(outline) || doubled_area(outline) > 0.0;
}

QPolygonF with_upper_first(const QPolygonF& outline) {
    QPolygonF turned = outline;
    if (!is_upper_first(outline))
        std::reverse(turned.begin(), turned.end());
    return turned;
}

Extent::Extent(const QPolygonF& outline) {
    if (outline.isEmpty())
        return;
    least = outline.first().x();
    greatest = least;
    for (const QPointF& point : outline) {
        least = std::min(least, point.x());
        greatest = std::max(greatest, point.x());
    }
}

QPointF Place::on(const QPolygonF& outline) const {
    const QPointF a = outline[row];
    if (fraction == 0.0)
        return a;
    const QPointF b = outline[row + 1];
    return QPointF(a.x() + fraction * (b.x() - a.x()), a.y() + fraction * (b.y() - a.y()));
}

std::optional<Place> cut_second_side(const QPolygonF& upper_first, double x, double tolerance) {
    for (qsizetype i = std::max<qsizetype>(nose_row(upper_first), 0); i < upper_first.size(); ++i) {
        const double here = upper_first[i].x();
        if (std::abs(here - x) <= tolerance)
            return Place{i, 0.0};
        if (i + 1 == upper_first.size())
            break;
        const double next = upper_first[i + 1].x();
        if (std::abs(next - x) > tolerance && (here < x) == (x < next) && here != next)
            return Place{i, (x - here) / (next - here)};
    }
    return std::nullopt;
}

Table reversed(Table table) {
    std::reverse(table.points.begin(), table.points.end());
    std::reverse(table.lines.begin(), table.lines.end());
    return table;
}

Table with_closed_gap(Table table) {
    if (table.points.isEmpty() || table.points.first() == table.points.last())
        return table;
    const Mouth mouth(table);
    QPolygonF& points = table.points;
    const qsizetype nose = nose_row(points);
    const double nose_x = points[nose].x();
    const QPointF middle = middle_of_ends(points);
    const QPointF shifts[2] = {middle - points.first(), middle - points.last()};
    const double reaches[2] = {points.first().x() - nose_x, points.last().x() - nose_x};
    const double gap = std::sqrt(squared_length(points.last() - points.first()));
    for (qsizetype i = 0; i < points.size(); ++i) {
        const int side = i < nose ? 0 : 1;
        if (i != nose && reaches[side] > 0.0)
            points[i] += shifts[side] * ((points[i].x() - nose_x) / reaches[side]);
    }
    points.first() = middle;
    points.last() = middle;
    add_note(table,
             QStringLiteral("the gap of %1 at the trailing edge was closed").arg(number(gap)));
    mouth.move(table);
    return table;
}

Table normalized(Table table) {
    if (table.points.isEmpty())
        return table;
    const QPointF end = middle_of_ends(table.points);
    const auto nearer = [end](const QPointF& a, const QPointF& b) {
        return squared_length(a - end) < squared_length(b - end);
    };
    const QPointF nose = *std::max_element(table.points.begin(), table.points.end(), nearer);
    const QPointF chord = end - nose;
    const double squared_chord = squared_length(chord);
    if (!(squared_chord > 0.0) || (nose == QPointF() && chord == QPointF(1.0, 0.0)))
        return table;
    const Mouth mouth(table);
    for (QPointF& point : table.points) {
        const QPointF a = point - nose;
        // Complex division by the chord rotates and scales at once.
        const double x = a.x() * chord.x() + a.y() * chord.y();
        const double y = a.y() * chord.x() - a.x() * chord.y();
        point = QPointF(x / squared_chord, y / squared_chord);
    }
    constexpr double degrees_per_radian = 57.29577951308232;
    add_note(table, QStringLiteral("turned by %1 degrees about the leading edge and scaled by %2")
                        .arg(number(-std::atan2(chord.y(), chord.x()) * degrees_per_radian),
                             number(1.0 / std::sqrt(squared_chord))));
    mouth.move(table);
    return table;
}

} // namespace tables
