// SPDX-FileCopyrightText: Aerolith developers
// The curve through the points of a table.
#include "sections/curve.h"

#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

constexpr double sharp_turn = 30.0 * 3.14159265358979323846 / 180.0;
constexpr double corner_ratio = 10.0;
// Coarse tables of thin sections turn this much more at the nose than next to it.
constexpr double nose_ratio = 20.0;
constexpr double long_edge = 0.05;
constexpr double long_ratio = 6.0;
constexpr double repeated = 1e-9;
constexpr double greatest_coordinate = 1e6;

// The distinct points, with the corners and straight edges that the curve keeps.
class Corners {
public:
    explicit Corners(const QPolygonF& table);

    std::vector<QPointF> points;
    std::vector<bool> corner;   // of each point
    std::vector<bool> straight; // of each edge, which begins at the point of its index
    double extent = 0.0;

private:
    double turn(std::size_t i) const;
    void find_corners();
    void find_straight_edges();
};

Corners::Corners(const QPolygonF& table) {
    for (const QPointF& point : table)
        extent = std::max(extent, norm(point - table.first()));
    for (const QPointF& point : table) {
        if (points.empty() || norm(point - points.back()) > repeated * extent)
            points.push_back(flushed(point, nothing * extent));
    }
    if (points.size() < 3)
        return;
    find_corners();
    find_straight_edges();
}

double Corners::turn(std::size_t i) const {
    if (i == 0 || i + 1 >= points.size())
        return 0.0;
    return turning(points[i] - points[i - 1], points[i + 1] - points[i]);
}

void Corners::find_corners() {
    const QPointF middle = 0.5 * (points.front() + points.back());
    const auto nearer = [middle](QPointF a, QPointF b) {
        return norm(a - middle) < norm(b - middle);
    };
    const std::size_t nose =
        std::size_t(std::max_element(points.begin(), points.end(), nearer) - points.begin());
    corner.assign(points.size(), false);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const double own = turn(i);
        const double side = own < 0.0 ? -1.0 : 1.0;
        const double shared = std::max({side * turn(i - 1), side * turn(i + 1), 0.0});
        const bool at_nose = i + 1 >= nose && i <= nose + 1;
        const double ratio = at_nose ? nose_ratio : corner_ratio;
        corner[i] = std::abs(own) > sharp_turn && std::abs(own) > ratio * shared;
    }
}

void Corners::find_straight_edges() {
    const std::size_t edges = points.size() - 1;
    const auto length = [this](std::size_t k) { return norm(points[k + 1] - points[k]); };
    straight.assign(edges, false);
    for (std::size_t k = 0; k < edges; ++k) {
        if (length(k) <= long_edge * extent)
            continue;
        const bool before = k == 0 || corner[k] || length(k) > long_ratio * length(k - 1);
        const bool after =
            k + 1 == edges || corner[k + 1] || length(k) > long_ratio * length(k + 1);
        straight[k] = before && after;
    }
}

// Derivatives with respect to the chord length, at the points first .. last, of the cubics with
// continuous second derivatives. A given direction is kept; a free end is a parabola.
std::vector<QPointF> slopes(const std::vector<QPointF>& points, std::size_t first, std::size_t last,
                            const QPointF* start, const QPointF* end) {
    const std::size_t count = last - first + 1;
    std::vector<double> h(count - 1);
    std::vector<QPointF> d(count - 1);
    for (std::size_t i = 0; i + 1 < count; ++i) {
        const QPointF edge = points[first + i + 1] - points[first + i];
        h[i] = norm(edge);
        d[i] = edge / h[i];
    }
    // Forward elimination: m[i] + upper[i] m[i + 1] = right[i].
    std::vector<double> upper(count, 0.0);
    std::vector<QPointF> m(count);
    upper[0] = start ? 0.0 : 1.0;
    m[0] = start ? *start : 2.0 * d[0];
    for (std::size_t i = 1; i < count; ++i) {
        double lower = 1.0;
        double diagonal = 1.0;
        QPointF right;
        if (i + 1 < count) {
            lower = 1.0 / h[i - 1];
            upper[i] = 1.0 / h[i];
            diagonal = 2.0 * (lower + upper[i]);
            right = 3.0 * (d[i - 1] * lower + d[i] * upper[i]);
        } else {
            lower = end ? 0.0 : 1.0;
            right = end ? *end : 2.0 * d[i - 1];
        }
        const double pivot = diagonal - lower * upper[i - 1];
        upper[i] /= pivot;
        m[i] = (right - lower * m[i - 1]) / pivot;
    }
    for (std::size_t i = count - 1; i-- > 0;)
        m[i] -= upper[i] * m[i + 1];
    return m;
}

bool is_usable(QPointF point) {
    return std::abs(point.x()) <= greatest_coordinate && std::abs(point.y()) <= greatest_coordinate;
}

} // namespace

CurveResult table_curve(const QPolygonF& table) {
    CurveResult result;
    if (!std::all_of(table.begin(), table.end(), is_usable)) {
        result.reason = QStringLiteral("a point that is not finite or beyond 1e6");
        return result;
    }
    const Corners kept(table);
    const std::vector<QPointF>& points = kept.points;
    if (points.size() < 3) {
        result.reason =
            QStringLiteral("%1 different points, expected at least 3").arg(points.size());
        return result;
    }
    const std::size_t last = points.size() - 1;
    const auto direction = [&points](std::size_t k) { return unit(points[k + 1] - points[k]); };

    std::vector<Piece> pieces;
    std::vector<bool> corners;
    for (std::size_t i = 0; i < last;) {
        std::size_t end = i + 1;
        if (!kept.straight[i]) {
            while (end < last && !kept.corner[end] && !kept.straight[end])
                ++end;
        }
        const bool lean_start = i > 0 && !kept.corner[i] && kept.straight[i - 1];
        const bool lean_end = end < last && !kept.corner[end] && kept.straight[end];
        if (kept.straight[i] || (end == i + 1 && !(lean_start || lean_end))) {
            pieces.push_back(Piece::line(points[i], points[end]));
            result.straight_edges += kept.straight[i];
        } else {
            const QPointF start_slope = lean_start ? direction(i - 1) : QPointF();
            const QPointF end_slope = lean_end ? direction(end) : QPointF();
            const std::vector<QPointF> m =
                slopes(points, i, end, lean_start ? &start_slope : nullptr,
                       lean_end ? &end_slope : nullptr);
            for (std::size_t k = i; k < end; ++k) {
                const double h = norm(points[k + 1] - points[k]);
                pieces.push_back(
                    Piece::cubic(points[k], h * m[k - i], points[k + 1], h * m[k + 1 - i]));
            }
        }
        i = end;
    }
    for (std::size_t i = 1; i < last; ++i) {
        corners.push_back(kept.corner[i]);
        result.corners += kept.corner[i];
    }
    result.curve = Curve(std::move(pieces), std::move(corners));
    return result;
}

} // namespace sections
