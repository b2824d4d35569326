// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/cut_p.h"

#include "sections/plane.h"

#include <clipper.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace drawings {

namespace {

using sections::cross;
using sections::dot;
using sections::norm;
using sections::turned_left;
using sections::unit;

// Clipper works on integers; below a hundred metres its products stay exact.
constexpr double grid = 1e5;

// A smaller area, in squares of the grid, comes from rounding; holes have a negative one.
constexpr double least_area = 1e-3 * grid * grid;

// Points closer together than this count as one, mm.
constexpr double same_point = 1e-6;

// A rib may extend behind its trailing edge by this fraction of its width.
constexpr double overhang = 1e-3;

struct Edge {
    QPointF start;
    QPointF end;
    QPointF normal; // outwards
    bool in_mouth = false;
};

ClipperLib::IntPoint on_grid(QPointF p) {
    return {std::llround(p.x() * grid), std::llround(p.y() * grid)};
}

std::vector<Edge> edges_of(const Outline& outline) {
    std::vector<Edge> edges;
    QPointF start = outline.points.first();
    for (qsizetype i = 1; i < outline.points.size(); ++i) {
        const QPointF end = outline.points[i];
        if (norm(end - start) < same_point)
            continue;
        const bool in_mouth = i > outline.mouth_first && i <= outline.mouth_last;
        edges.push_back({start, end, -turned_left(unit(end - start)), in_mouth});
        start = end;
    }
    return edges;
}

// The square end behind the trailing edge, in coordinates along and across a direction.
struct SquareEnd {
    QPointF along;
    double back = 0.0; // the rearmost point of the outline
    double low = 0.0;  // the extent of the outline across
    double high = 0.0;

    double station(QPointF p) const { return dot(p, along); }
    double height(QPointF p) const { return cross(along, p); }
    QPointF moved_to(QPointF p, double s) const { return p + (s - station(p)) * along; }
};

std::optional<SquareEnd> square_end(const Outline& outline, const std::vector<Edge>& edges) {
    SquareEnd end;
    // The sum of two unit vectors is shorter than 1 where they are more than 120 degrees apart.
    const QPointF back = outline.last_tangent - outline.first_tangent;
    end.along = norm(back) > 1.0 ? unit(back) : QPointF(1.0, 0.0);
    const QPointF upper = edges.front().start;
    const QPointF lower = edges.back().end;
    end.back = std::max(end.station(upper), end.station(lower));
    double hindmost = end.back;
    double foremost = end.back;
    end.low = end.high = end.height(upper);
    for (const Edge& edge : edges) {
        end.low = std::min(end.low, end.height(edge.end));
        end.high = std::max(end.high, end.height(edge.end));
        hindmost = std::max(hindmost, end.station(edge.start));
        foremost = std::min(foremost, end.station(edge.start));
    }
    if (hindmost - end.back > overhang * (hindmost - foremost))
        return std::nullopt;
    end.back = hindmost;
    return end;
}

// Goes round the outline at the distance of the allowance. The path winds round each place once for
// every edge and corner whose allowance covers it. At a concave corner it returns to the corner
// itself, so that the stretches on both sides are complete.
class Walk {
public:
    Walk(const Allowances& given, double arc_tolerance)
        : allowances(given), tolerance(arc_tolerance) {}

    double width(const Edge& edge) const {
        return edge.in_mouth ? allowances.mouth : allowances.general;
    }

    void edge(const Edge& edge) {
        put(edge.start + width(edge) * edge.normal);
        put(edge.end + width(edge) * edge.normal);
    }

    // The corner where @p before ends.
    void corner(const Edge& before, const Edge& after) {
        const QPointF at = before.end;
        const double turn =
            std::atan2(cross(before.normal, after.normal), dot(before.normal, after.normal));
        const bool reverses = std::abs(turn) > 3.141592;
        if (turn < 0.0 && !reverses) {
            put(at);
            return;
        }
        const double radius =
            before.in_mouth == after.in_mouth ? width(before) : allowances.general;
        if (!(radius > tolerance))
            return;
        const double step = 2.0 * std::acos(1.0 - tolerance / radius);
        const int count = std::max(1, int(std::ceil(std::abs(turn) / step)));
        for (int i = 0; i <= count; ++i) {
            const double angle = std::abs(turn) * i / count;
            const QPointF direction =
                std::cos(angle) * before.normal + std::sin(angle) * turned_left(before.normal);
            put(at + radius * direction);
        }
    }

    void put(QPointF p) { points << on_grid(p); }

    ClipperLib::Path points;

private:
    const Allowances& allowances;
    const double tolerance;
};

// The area behind @p station, as far as an allowance of @p reach can extend.
ClipperLib::Path behind(const SquareEnd& end, double station, double reach) {
    const QPointF up = turned_left(end.along);
    ClipperLib::Path box;
    for (const auto& [back, height] : {std::pair(0.0, end.low - reach),
                                       {reach, end.low - reach},
                                       {reach, end.high + reach},
                                       {0.0, end.high + reach}})
        box << on_grid((station + back) * end.along + height * up);
    return box;
}

// The path, starting at its rearmost upper point.
QPolygonF from_rear(const ClipperLib::Path& path, QPointF along) {
    QPolygonF points;
    for (const ClipperLib::IntPoint& p : path)
        points << QPointF(double(p.X) / grid, double(p.Y) / grid);
    const QPointF rear = along + turned_left(along);
    const auto first = std::max_element(points.begin(), points.end(), [&](QPointF a, QPointF b) {
        return dot(a, rear) < dot(b, rear);
    });
    std::rotate(points.begin(), first, points.end());
    return points;
}

// Whether there are reversed loops of more than a millionth of the squared width.
bool crosses_itself(const std::vector<Edge>& edges) {
    ClipperLib::Path path;
    double left = edges.front().start.x();
    double right = left;
    for (const Edge& edge : edges) {
        path << on_grid(edge.start);
        left = std::min(left, edge.start.x());
        right = std::max(right, edge.start.x());
    }
    path << on_grid(edges.back().end);
    ClipperLib::Clipper clipper;
    clipper.AddPath(path, ClipperLib::ptSubject, true);
    ClipperLib::Paths loops;
    clipper.Execute(ClipperLib::ctUnion, loops, ClipperLib::pftNegative);
    double area = 0.0;
    for (const ClipperLib::Path& loop : loops)
        area += std::abs(ClipperLib::Area(loop));
    return area > 1e-6 * (right - left) * (right - left) * grid * grid;
}

} // namespace

CutEdge cut_edge(const Outline& outline, const Allowances& allowances, double tolerance) {
    CutEdge result;
    const std::vector<Edge> edges = edges_of(outline);
    if (edges.size() < 2) {
        result.reason = QStringLiteral("an outline of no extent");
        return result;
    }
    if (crosses_itself(edges)) {
        result.reason = QStringLiteral("an outline that crosses itself");
        return result;
    }
    const std::optional<SquareEnd> square = square_end(outline, edges);

    Walk walk(allowances, tolerance);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (i > 0)
            walk.corner(edges[i - 1], edges[i]);
        walk.edge(edges[i]);
    }
    const Edge& first = edges.front();
    const Edge& last = edges.back();
    const QPointF upper = first.start - walk.width(first) * turned_left(outline.first_tangent);
    const QPointF lower = last.end - walk.width(last) * turned_left(outline.last_tangent);
    ClipperLib::Clipper clipper;
    if (square) {
        const double end = square->back + allowances.trailing_edge;
        const double corners = std::max({end, square->station(upper), square->station(lower)});
        walk.put(lower);
        walk.put(square->moved_to(lower, corners));
        walk.put(square->moved_to(upper, corners));
        walk.put(upper);
        const double reach =
            2.0 * std::max({allowances.general, allowances.mouth, allowances.trailing_edge}) + 1.0;
        clipper.AddPath(behind(*square, end, reach), ClipperLib::ptClip, true);
    } else {
        result.note = QStringLiteral("reaches behind its trailing edge, where the allowance is "
                                     "round and as wide as elsewhere");
        const QPointF gap = first.start - last.end;
        const bool open = norm(gap) > same_point;
        const Edge closing = {last.end, first.start, open ? -turned_left(unit(gap)) : last.normal,
                              false};
        walk.corner(last, closing);
        walk.edge(closing);
        walk.corner(closing, first);
    }

    clipper.AddPath(walk.points, ClipperLib::ptSubject, true);
    ClipperLib::Paths edge;
    clipper.Execute(ClipperLib::ctDifference, edge, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    edge.erase(std::remove_if(edge.begin(), edge.end(),
                              [](const ClipperLib::Path& path) {
                                  return !(ClipperLib::Area(path) > least_area);
                              }),
               edge.end());
    if (edge.size() != 1) {
        result.reason = QStringLiteral("an outline that crosses itself");
        return result;
    }
    ClipperLib::CleanPolygon(edge.front());
    result.points = from_rear(edge.front(), square ? square->along : QPointF(1.0, 0.0));
    return result;
}

} // namespace drawings
