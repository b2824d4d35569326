// SPDX-FileCopyrightText: Aerolith developers
// Order, sides and nose of the rows of an outline.
#include "sections/shape_p.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

bool is_between(double x, double a, double b) {
    return std::min(a, b) <= x && x <= std::max(a, b);
}

// The height of the side [begin, end) at x; none where it does not reach x.
std::optional<double> height_at(const OutlineRows& rows, std::size_t begin, std::size_t end,
                                double x) {
    const auto first = rows.begin() + std::ptrdiff_t(begin);
    const auto last = rows.begin() + std::ptrdiff_t(end);
    const bool rising = first->point.x() < (last - 1)->point.x();
    const auto behind = std::partition_point(first, last, [=](const OutlineRow& row) {
        return rising ? row.point.x() < x : row.point.x() > x;
    });
    if (behind == last)
        return std::nullopt;
    const QPointF b = behind->point;
    if (b.x() == x)
        return b.y();
    if (behind == first)
        return std::nullopt;
    const QPointF a = (behind - 1)->point;
    return a.y() + (x - a.x()) / (b.x() - a.x()) * (b.y() - a.y());
}

double turn_at(QPointF a, QPointF b, QPointF c) {
    const QPointF u = b - a;
    const QPointF v = c - b;
    return std::abs(std::atan2(u.x() * v.y() - u.y() * v.x(), u.x() * v.x() + u.y() * v.y()));
}

} // namespace

std::size_t nose_of(const OutlineRows& rows) {
    const auto nose =
        std::min_element(rows.begin(), rows.end(), [](const OutlineRow& a, const OutlineRow& b) {
            return a.point.x() < b.point.x();
        });
    return std::size_t(nose - rows.begin());
}

std::vector<std::size_t> rows_without_height(const OutlineRows& rows) {
    constexpr double least_height = 0.005;
    std::vector<std::size_t> found;
    const std::size_t nose = nose_of(rows);
    for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
        const double before = rows[i - 1].point.y();
        const double behind = rows[i + 1].point.y();
        if (i != nose && rows[i].point.y() == 0.0 &&
            std::min(std::abs(before), std::abs(behind)) > least_height &&
            (before > 0.0) == (behind > 0.0))
            found.push_back(i);
    }
    return found;
}

std::vector<std::size_t> rows_running_back(const OutlineRows& rows) {
    constexpr std::size_t least_rows = 6;
    constexpr double least_step = 1e-5;
    std::vector<std::size_t> found;
    if (rows.size() < least_rows)
        return found;
    const std::size_t nose = nose_of(rows);
    const auto is_out_of_order = [&](std::size_t i) {
        const double x = rows[i].point.x();
        const double before = rows[i - 1].point.x();
        const double behind = rows[i + 1].point.x();
        const bool goes_on = i < nose ? before > behind : before < behind;
        const double beyond = std::max(std::min(before, behind) - x, x - std::max(before, behind));
        return i != nose && goes_on && beyond > least_step;
    };
    for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
        if (!is_out_of_order(i))
            continue;
        // Where two neighbours are out of order, dropping either one restores it.
        const bool is_pair = i + 2 < rows.size() && is_out_of_order(i + 1);
        const bool is_second = is_pair && distance_from_neighbours(rows, i, i + 1) <
                                              distance_from_neighbours(rows, i + 1, i);
        found.push_back(is_second ? i + 1 : i);
        i += is_pair ? 1 : 0;
    }
    return found;
}

std::optional<std::size_t> second_turn(const OutlineRows& rows) {
    constexpr double turn_back = 0.02;
    const std::size_t nose = nose_of(rows);
    // On the way to the nose x must not increase again, on the way back it must not decrease.
    double least = rows.front().point.x();
    for (std::size_t i = 0; i <= nose; ++i) {
        least = std::min(least, rows[i].point.x());
        if (rows[i].point.x() > least + turn_back)
            return i;
    }
    double greatest = rows[nose].point.x();
    for (std::size_t i = nose; i < rows.size(); ++i) {
        greatest = std::max(greatest, rows[i].point.x());
        if (rows[i].point.x() < greatest - turn_back)
            return i;
    }
    return std::nullopt;
}

Overlap greatest_overlap(const OutlineRows& rows, double from, double to) {
    const std::size_t nose = nose_of(rows);
    const std::size_t end = rows.size();
    // The side that is higher on average is the upper one, as the sign of the area shows.
    double area = 0.0;
    for (std::size_t i = 0; i < end; ++i) {
        const QPointF a = rows[i].point;
        const QPointF b = rows[(i + 1) % end].point;
        area += a.x() * b.y() - b.x() * a.y();
    }
    const double sense = area >= 0.0 ? 1.0 : -1.0;
    Overlap overlap;
    for (std::size_t i = 0; i < end; ++i) {
        const QPointF point = rows[i].point;
        if (!is_between(point.x(), from, to) || i == nose)
            continue;
        const std::optional<double> other = i < nose ? height_at(rows, nose, end, point.x())
                                                     : height_at(rows, 0, nose + 1, point.x());
        if (!other)
            continue;
        const double above = (i < nose ? sense : -sense) * (point.y() - *other);
        if (-above > overlap.depth)
            overlap = {-above, i};
    }
    return overlap;
}

NoseGap nose_gap(const OutlineRows& rows) {
    constexpr double reach = 0.05;
    constexpr double degrees_per_radian = 57.29577951308232;
    NoseGap gap;
    std::vector<double> turns(rows.size(), 0.0);
    for (std::size_t i = 1; i + 1 < rows.size(); ++i)
        turns[i] = turn_at(rows[i - 1].point, rows[i].point, rows[i + 1].point);
    const double least = rows[nose_of(rows)].point.x();
    for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
        // One sharp turn among straight neighbours is a corner.
        constexpr double sharper = 6.0;
        if (rows[i].point.x() > least + reach ||
            turns[i] > sharper * std::max(turns[i - 1], turns[i + 1]))
            continue;
        double edge = 0.0;
        for (const std::size_t other : {i - 1, i + 1}) {
            const QPointF along = rows[i].point - rows[other].point;
            if (rows[other].point.x() <= least + reach)
                edge = std::max(edge, std::hypot(along.x(), along.y()));
        }
        // The height of a circular arc over the edge that turns by the same angle.
        const double height = 0.5 * edge * std::tan(0.25 * turns[i]);
        if (height > gap.height)
            gap = {height, turns[i] * degrees_per_radian, i};
    }
    return gap;
}

} // namespace sections
