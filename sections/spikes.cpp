// SPDX-FileCopyrightText: Aerolith developers
// Rows that stand out from the smooth line through their neighbours.
#include "sections/shape_p.h"
#include "tables/cubic.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sections {

namespace {

double length(QPointF a) {
    return std::hypot(a.x(), a.y());
}

// The point of a cubic nearest to q between two parameters.
QPointF nearest_point(const tables::Cubic& cubic, QPointF q, double begin, double end) {
    constexpr int steps = 16;
    QPointF best = cubic.at(begin);
    // Each round searches between the neighbours of the best sample so far.
    for (int round = 0; round < 4; ++round) {
        const double step = (end - begin) / steps;
        int nearest = 0;
        for (int i = 0; i <= steps; ++i) {
            const QPointF sample = cubic.at(begin + i * step);
            if (length(sample - q) < length(best - q)) {
                best = sample;
                nearest = i;
            }
        }
        const double middle = begin + nearest * step;
        begin = std::max(begin, middle - step);
        end = std::min(end, middle + step);
    }
    return best;
}

// The point that the four nearest rows suggest for a row, not counting the row itself and one
// other: two on each side, or more on one side at an end of the outline.
QPointF suggested(const OutlineRows& rows, std::size_t row, std::size_t without) {
    std::array<QPointF, 4> around;
    std::size_t before = 0;
    std::size_t i = row;
    std::array<std::size_t, 4> chosen = {};
    std::size_t count = 0;
    while (count < 2 && i-- > 0) {
        if (i != without)
            chosen[count++] = i;
    }
    before = count;
    for (i = row + 1; count < chosen.size() && i < rows.size(); ++i) {
        if (i != without)
            chosen[count++] = i;
    }
    for (i = *std::min_element(chosen.begin(), chosen.begin() + before); count < chosen.size();) {
        --i;
        if (i != without) {
            chosen[count++] = i;
            ++before;
        }
    }
    std::sort(chosen.begin(), chosen.end());
    for (std::size_t k = 0; k < chosen.size(); ++k)
        around[k] = rows[chosen[k]].point;
    const tables::Cubic cubic(around);
    return nearest_point(cubic, rows[row].point, cubic.knot(before - 1), cubic.knot(before));
}

} // namespace

double distance_from_neighbours(const OutlineRows& rows, std::size_t row, std::size_t without) {
    return length(rows[row].point - suggested(rows, row, without));
}

std::vector<Spike> spikes(const OutlineRows& rows) {
    constexpr std::size_t least_rows = 9;
    constexpr double least_distance = 5e-4;
    constexpr double least_ratio = 6.0;
    // Across wide gaps the line through the neighbours means little.
    constexpr double least_share = 0.03;
    std::vector<Spike> found;
    if (rows.size() < least_rows)
        return found;
    const std::size_t last = rows.size() - 1;
    for (std::size_t row = 1; row < last; ++row) {
        // The line passes through both neighbours.
        if (length(rows[row].point - rows[row - 1].point) < least_distance ||
            length(rows[row].point - rows[row + 1].point) < least_distance)
            continue;
        const double distance = distance_from_neighbours(rows, row, row);
        const double gap = length(rows[row + 1].point - rows[row - 1].point);
        if (distance < std::max(least_distance, least_share * gap))
            continue;
        // How well the surrounding rows predict each other without this one.
        double roughness = 0.0;
        for (std::size_t other = row > 2 ? row - 2 : 1; other <= std::min(row + 2, last - 1);
             ++other) {
            if (other != row)
                roughness = std::max(roughness, distance_from_neighbours(rows, other, row));
        }
        if (distance > least_ratio * roughness)
            found.push_back({row, distance});
    }
    return found;
}

} // namespace sections
