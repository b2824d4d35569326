// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/outline.h"

#include "sections/curve.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

constexpr double greatest_coordinate = 1e6;
constexpr double repeated = 1e-9;        // of the width
constexpr double least_thickness = 1e-4; // enclosed area over squared width
constexpr double least_camber = 1e-9;
constexpr double grid = 17179869184.0; // 2^34
constexpr int points_between = 7;

// A sign of turning counts above this many standard deviations of the noise plus this height
// (chord units), which is too small to be seen.
constexpr double noise_factor = 4.0;
constexpr double least_height = 1e-5;

// Between the points the spline may be five times as far off. More is allowed on edges over which
// the interpolating curve rises high: there the section is unknown.
constexpr double weight_between = 0.2;
constexpr double certain_rise = 1e-3; // chord units
constexpr int targets_per_control_point = 5;

struct Box {
    double least = 0.0;
    double greatest = 0.0;
    double width() const { return greatest - least; }
};

Box box_of(const QPolygonF& points) {
    Box box = {points.first().x(), points.first().x()};
    for (const QPointF& point : points) {
        box.least = std::min(box.least, point.x());
        box.greatest = std::max(box.greatest, point.x());
    }
    return box;
}

double enclosed_area(const Points& points) {
    double twice = 0.0;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        twice += cross(points[i] - points[0], points[i + 1] - points[0]);
    return 0.5 * twice;
}

double mean_height(const Points& points) {
    const double middle = 0.5 * (points.front().y() + points.back().y());
    double sum = 0.0;
    for (const Point& point : points)
        sum += point.y() - middle;
    return sum / double(points.size());
}

void move_to_trailing_edge(Points& points) {
    const Point shift = Point(1.0, 0.0) - points.front();
    for (Point& point : points) {
        const Point moved = point + shift;
        point = Point(std::round(moved.x() * grid) / grid, std::round(moved.y() * grid) / grid);
    }
}

// Compares each point with the polynomial through `reach` points on either side.
double noise_against(const Points& points, int reach) {
    constexpr double median_of_normal = 0.67448975019608171;
    std::vector<double> levels;
    std::vector<Point> local;
    for (int j = reach; j + reach < int(points.size()); ++j) {
        const Point along = (points[j + 1] - points[j - 1]).normalized();
        local.clear();
        for (int k = j - reach; k <= j + reach; ++k) {
            const Point away = points[k] - points[j];
            if (k != j)
                local.emplace_back(away.dot(along), cross(along, away));
        }
        double at_zero = 0.0;
        double squared_sum = 1.0;
        for (const Point& own : local) {
            double lagrange = 1.0;
            for (const Point& other : local) {
                if (&other != &own)
                    lagrange *= other.x() / (other.x() - own.x());
            }
            at_zero += lagrange * own.y();
            squared_sum += lagrange * lagrange;
        }
        const double level = std::abs(at_zero) / std::sqrt(squared_sum);
        if (std::isfinite(level))
            levels.push_back(level);
    }
    if (levels.empty())
        return 0.0;
    const auto middle = levels.begin() + std::ptrdiff_t(levels.size() / 2);
    std::nth_element(levels.begin(), middle, levels.end());
    return *middle / median_of_normal;
}

QPolygonF as_polygon(const Points& points) {
    QPolygonF polygon;
    polygon.reserve(int(points.size()));
    for (const Point& point : points)
        polygon << QPointF(point.x(), point.y());
    return polygon;
}

bool is_usable(QPointF point) {
    return std::abs(point.x()) <= greatest_coordinate && std::abs(point.y()) <= greatest_coordinate;
}

void describe(Outline& outline) {
    const Points& points = outline.points;
    outline.arcs.assign(points.size(), 0.0);
    for (std::size_t i = 1; i < points.size(); ++i)
        outline.arcs[i] = outline.arcs[i - 1] + (points[i] - points[i - 1]).norm();
    outline.noise = noise_level(points);
    outline.turns = turning_signs(points, noise_factor * outline.noise + least_height);
    outline.reversals = count_reversals(outline.turns);

    const Box box = box_of(as_polygon(points));
    const sections::Curve curve = sections::table_curve(as_polygon(points)).curve;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        Points between;
        for (int k = 1; k <= points_between; ++k) {
            const double u = k / double(points_between + 1);
            Point point = points[i] + u * (points[i + 1] - points[i]);
            if (i < curve.pieces().size()) {
                const QPointF on_curve = curve.pieces()[i].position(u);
                point = Point(std::clamp(on_curve.x(), box.least, box.greatest), on_curve.y());
            }
            between.push_back(point);
        }
        outline.between.push_back(between);
        if (curve.has_corner_after(int(i)))
            outline.corners.push_back(int(i) + 1);
    }
}

} // namespace

double Outline::length() const {
    return arcs.back();
}

Point Outline::nose() const {
    const auto ahead = [](const Point& a, const Point& b) { return a.x() < b.x(); };
    return *std::min_element(points.begin(), points.end(), ahead);
}

std::vector<Target> Outline::targets(int count) const {
    std::vector<Target> result;
    const int edges = int(points.size()) - 1;
    const int wanted = targets_per_control_point * count;
    const auto weight_on_edge = [this](int i) {
        const Point rise = between[i][points_between / 2] - 0.5 * (points[i] + points[i + 1]);
        return weight_between / (1.0 + rise.norm() / certain_rise);
    };
    const int per_edge = std::min(points_between, (wanted - edges + edges - 1) / edges);
    for (int i = 0; i <= edges; ++i) {
        result.push_back({points[i], arcs[i], 1.0, true, turns[i]});
        if (i == edges)
            break;
        for (int k = 1; k <= per_edge; ++k) {
            // The nearest stored point.
            const int place = (k * (points_between + 1) + (per_edge + 1) / 2) / (per_edge + 1);
            const double u = place / double(points_between + 1);
            const int turn = turns[i] == turns[i + 1] ? turns[i] : 0;
            result.push_back({between[i][place - 1], arcs[i] + u * (arcs[i + 1] - arcs[i]),
                              weight_on_edge(i), false, turn});
        }
    }
    return result;
}

Points Outline::in_window_frame(const Points& control) const {
    Points result = control;
    if (reversed)
        std::reverse(result.begin(), result.end());
    for (Point& point : result) {
        if (mirrored)
            point.y() = -point.y();
    }
    const Point shift = Point(1.0, 0.0) - result.front();
    for (Point& point : result)
        point += shift;
    return result;
}

Preparation prepare(const QPolygonF& table) {
    Preparation result;
    if (!std::all_of(table.begin(), table.end(), is_usable)) {
        result.reason = QStringLiteral("a coordinate is not finite or exceeds 1e6");
        return result;
    }
    if (table.isEmpty()) {
        result.reason = QStringLiteral("no points");
        return result;
    }
    const double width = box_of(table).width();
    if (!(width > 0.0)) {
        result.reason = QStringLiteral("the outline has no width");
        return result;
    }
    Outline& outline = result.outline;
    Points& points = outline.points;
    for (const QPointF& corner : in_window_frame(table)) {
        const Point point(corner.x(), corner.y());
        if (points.empty() || (point - points.back()).norm() > repeated)
            points.push_back(point);
    }
    if (points.size() < 4) {
        result.reason =
            QStringLiteral("%1 different points, expected at least 4").arg(points.size());
        return result;
    }
    if (!(std::abs(enclosed_area(points)) >= least_thickness)) {
        result.reason = QStringLiteral("the outline has no thickness");
        return result;
    }
    outline.mirrored = mean_height(points) < -least_camber;
    if (outline.mirrored) {
        for (Point& point : points)
            point.y() = -point.y();
    }
    outline.reversed = enclosed_area(points) < 0.0;
    if (outline.reversed)
        std::reverse(points.begin(), points.end());
    move_to_trailing_edge(points);
    describe(outline);
    return result;
}

QPolygonF in_window_frame(const QPolygonF& table) {
    const double width = box_of(table).width();
    QPolygonF result;
    result.reserve(table.size());
    for (const QPointF& point : table) {
        const QPointF from_first = point - table.first();
        result << QPointF(1.0 + from_first.x() / width, from_first.y() / width);
    }
    return result;
}

double noise_level(const Points& points) {
    return std::min(noise_against(points, 2), noise_against(points, 3));
}

std::vector<int> turning_signs(const Points& points, double threshold) {
    const int count = int(points.size());
    std::vector<int> signs(points.size(), 0);
    for (int j = 1; j + 1 < count; ++j) {
        // Every distance at first, then fewer and fewer.
        for (int k = 1; j - k >= 0 && j + k < count; k += 1 + k / 4) {
            const Point across = points[j + k] - points[j - k];
            const double length = across.norm();
            if (!(length > repeated))
                continue;
            const double height =
                cross(points[j] - points[j - k], points[j + k] - points[j]) / length;
            if (std::abs(height) > threshold) {
                signs[j] = height > 0.0 ? 1 : -1;
                break;
            }
        }
    }
    return signs;
}

int count_reversals(const std::vector<int>& signs) {
    int reversals = 0;
    int last = 0;
    for (const int sign : signs) {
        if (sign == 0)
            continue;
        reversals += last != 0 && sign != last;
        last = sign;
    }
    return reversals;
}

} // namespace fitting
