// SPDX-FileCopyrightText: Aerolith developers
// Last step of the reading: points that look like an outline.
#include "tables/outline_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tables {

namespace {

constexpr double largest_height = 1.1; // of the width: slightly more than a circle
constexpr double farthest_end = 0.1;
constexpr double most_zigzag = 8.0; // total way up and down, in heights
constexpr double no_height = 1e-3;
constexpr double no_thickness = 1e-5;
constexpr double largest_at_end = 0.9; // of the thickness
constexpr double most_swapped = 0.2;   // of the area
constexpr int stations = 60;

using Heights = std::array<double, stations>;

struct Bounds {
    double left, right, bottom, top;
    int nose; // the first row of least x
    double width() const { return right - left; }
    double height() const { return top - bottom; }
};

Bounds bounds_of(const QPolygonF& points) {
    const QPointF* const rows = points.constData();
    Bounds bounds = {rows->x(), rows->x(), rows->y(), rows->y(), 0};
    for (int i = 1; i < points.size(); ++i) {
        const double x = rows[i].x();
        const double y = rows[i].y();
        if (x < bounds.left) {
            bounds.left = x;
            bounds.nose = i;
        }
        bounds.right = std::max(bounds.right, x);
        bounds.bottom = std::min(bounds.bottom, y);
        bounds.top = std::max(bounds.top, y);
    }
    return bounds;
}

// Walks one side from the nose to an end, in the direction of the step 1 or -1, and gives its
// heights at stations that must be requested from left to right.
class Side {
public:
    Side(const QPolygonF& points_, int nose_, int step_)
        : points(points_), step(step_), nose(nose_), next(nose_) {}

    double height_at(double x) {
        const int end = step > 0 ? int(points.size()) - 1 : 0;
        while (next != end && points[next].x() < x)
            next += step;
        const QPointF to = points[next];
        const QPointF from = next == nose ? to : points[next - step];
        const double run = to.x() - from.x();
        const double part = run > 0.0 ? std::clamp((x - from.x()) / run, 0.0, 1.0) : 1.0;
        return from.y() + part * (to.y() - from.y());
    }

private:
    const QPolygonF& points;
    int step;
    int nose;
    int next;
};

struct Sides {
    Heights first, second;
};

Sides sides_of(const QPolygonF& points, const Bounds& bounds) {
    Sides sides;
    Side first(points, bounds.nose, -1);
    Side second(points, bounds.nose, 1);
    for (int k = 0; k < stations; ++k) {
        const double x = bounds.left + bounds.width() * (k + 0.5) / stations;
        sides.first[std::size_t(k)] = first.height_at(x);
        sides.second[std::size_t(k)] = second.height_at(x);
    }
    return sides;
}

enum class Rise { none, sharp, blunt };

// Aft of a blunt nose one side rises and the other falls, at least at first. Both rise where the
// signs of one have been lost, and on a curved plate with a sharp edge.
Rise rise_of_sides(const QPolygonF& points, const Bounds& bounds) {
    constexpr double near = 0.0125;
    constexpr double steep = 0.6;
    const double nose = points[bounds.nose].y();
    double rises[2][3] = {};
    for (const int side : {0, 1}) {
        Side walk(points, bounds.nose, side == 0 ? -1 : 1);
        int station = 0;
        for (const double x : {0.25 * near, near, 8.0 * near})
            rises[side][station++] =
                (walk.height_at(bounds.left + x * bounds.width()) - nose) / bounds.width();
    }
    const bool first_is_low = rises[0][1] < rises[1][1];
    const double* const low = rises[first_is_low ? 0 : 1];
    const double* const high = rises[first_is_low ? 1 : 0];
    const bool is_steep = low[1] > steep * near;
    const bool is_round = low[1] > 0.003 && low[0] > 0.4 * low[1];
    if (low[1] > 0.4 * high[1] && (is_steep || is_round))
        return Rise::blunt;
    const bool both = low[0] > 0.0 && low[1] > 0.0 && low[2] > 0.0;
    return both && low[2] > 0.25 * high[2] && low[2] > 0.01 ? Rise::sharp : Rise::none;
}

// Whether the supposed trailing edge is round and closed, and the nose is not.
bool is_backwards(const QPolygonF& points, const Bounds& bounds, double thickest) {
    constexpr double near = 0.0125;
    Side first(points, bounds.nose, -1);
    Side second(points, bounds.nose, 1);
    const auto thickness_at = [&](double part) {
        const double x = bounds.left + part * bounds.width();
        return std::abs(first.height_at(x) - second.height_at(x));
    };
    const double at_nose = thickness_at(near);
    const double at_end = thickness_at(1.0 - near);
    const double gap = std::abs(points.first().y() - points.last().y());
    return at_nose < 0.1 * thickest && at_end > 0.2 * thickest && gap < 0.5 * at_end;
}

// Whether a lower edge arches above the chord line, comes down again, and rises once more. The
// chord line runs from the nose to the midpoint of the ends.
bool has_arches(const QPolygonF& points, int step, const Bounds& bounds) {
    constexpr double least_arch = 0.02;
    const double width = bounds.width();
    const QPointF nose = points[bounds.nose];
    const double rise = 0.5 * (points.first().y() + points.last().y()) - nose.y();
    double top = 0.0;
    double bottom = 0.0;
    bool was_up = false;
    bool is_down = false;
    const int end = step > 0 ? int(points.size()) : -1;
    for (int i = bounds.nose; i != end; i += step) {
        const double part = (points[i].x() - nose.x()) / width;
        const double y = (points[i].y() - nose.y() - part * rise) / width;
        if (is_down) {
            bottom = std::min(bottom, y);
            if (y > bottom + least_arch)
                return true;
        } else {
            top = std::max(top, y);
            was_up = was_up || y > least_arch;
            is_down = was_up && y < top - least_arch;
            bottom = y;
        }
    }
    return false;
}

Finding error(int line, const QString& text) {
    return {Gravity::error, line, text};
}

std::optional<Finding> fault_of_sides(const Outline& outline, const Bounds& bounds) {
    const Sides sides = sides_of(outline.points, bounds);
    double above = 0.0;
    double below = 0.0;
    double thickest = 0.0;
    for (int k = 0; k < stations; ++k) {
        const double thickness = sides.first[std::size_t(k)] - sides.second[std::size_t(k)];
        above += std::max(thickness, 0.0);
        below += std::max(-thickness, 0.0);
        thickest = std::max(thickest, std::abs(thickness));
    }
    if (thickest <= no_thickness * bounds.width() && bounds.height() > no_height * bounds.width())
        return error(outline.lines.front(),
                     QStringLiteral("both sides are the same; expected an upper and a lower side"));
    if (thickest > no_height * bounds.width() &&
        std::min(above, below) > most_swapped * std::max(above, below))
        return error(outline.lines.front(),
                     QStringLiteral("the sides change places; expected one above the other"));
    // Tables of coefficients over angles of attack look like this.
    const double at_end = std::abs(sides.first.back() - sides.second.back());
    if (thickest > no_height * bounds.width() && at_end > largest_at_end * thickest)
        return error(outline.lines.front(),
                     QStringLiteral("thickest at the trailing edge; expected a section"));
    const int line = outline.lines[std::size_t(bounds.nose)];
    switch (rise_of_sides(outline.points, bounds)) {
    case Rise::sharp:
        return Finding{Gravity::doubt, line,
                       QStringLiteral("both sides rise from the nose: a curved plate, or a lower "
                                      "side without minus signs")};
    case Rise::blunt:
        return error(line, QStringLiteral("both sides rise from the nose; expected one of them "
                                          "below, with minus signs"));
    case Rise::none:
        break;
    }
    if (thickest > no_height * bounds.width() && is_backwards(outline.points, bounds, thickest))
        return Finding{Gravity::doubt, line,
                       QStringLiteral("sharp at the least x and round at the greatest: x may run "
                                      "from the trailing edge")};
    return std::nullopt;
}

} // namespace

std::optional<Finding> fault_of(const Outline& outline) {
    const QPolygonF& points = outline.points;
    if (points.size() < least_points)
        return error(
            outline.lines.empty() ? 0 : outline.lines.front(),
            QStringLiteral("%1 points; expected at least %2").arg(points.size()).arg(least_points));
    const Bounds bounds = bounds_of(points);
    if (!(bounds.width() > 0.0))
        return error(outline.lines.front(),
                     QStringLiteral("all x are %1; expected a chord").arg(bounds.left));
    for (const bool at_end : {false, true}) {
        const double x = at_end ? points.last().x() : points.first().x();
        if (bounds.right - x > farthest_end * bounds.width())
            return error(at_end ? outline.lines.back() : outline.lines.front(),
                         QStringLiteral("a side ends at x = %1; expected the trailing edge at %2")
                             .arg(x)
                             .arg(bounds.right));
    }
    if (bounds.height() > largest_height * bounds.width())
        return error(outline.lines.front(),
                     QStringLiteral("y runs from %1 to %2 over a chord of %3; expected a section")
                         .arg(bounds.bottom)
                         .arg(bounds.top)
                         .arg(bounds.width()));
    double way = 0.0;
    for (int i = 1; i < points.size(); ++i)
        way += std::abs(points[i].y() - points[i - 1].y());
    if (bounds.height() > no_height * bounds.width() && way > most_zigzag * bounds.height())
        return error(outline.lines.front(),
                     QStringLiteral("y jumps up and down from row to row; expected a smooth line"));
    return fault_of_sides(outline, bounds);
}

bool is_refused(const Outline& outline) {
    const std::optional<Finding> fault = fault_of(outline);
    return fault && fault->gravity == Gravity::error;
}

Kind kind_of(const Outline& outline) {
    const QPolygonF& points = outline.points;
    const Bounds bounds = bounds_of(points);
    const Sides sides = sides_of(points, bounds);
    double thickest = 0.0;
    double first = 0.0;
    double second = 0.0;
    for (std::size_t k = 0; k < stations; ++k) {
        thickest = std::max(thickest, std::abs(sides.first[k] - sides.second[k]));
        first += sides.first[k];
        second += sides.second[k];
    }
    if (thickest <= no_thickness * bounds.width())
        return Kind::flat;
    return has_arches(points, first < second ? -1 : 1, bounds) ? Kind::single_skin : Kind::section;
}

bool same_section(const Outline& a, const Outline& b) {
    constexpr double tolerance = 2e-3;
    constexpr double same_place = 0.05;
    struct Normalised {
        double width;
        Sides sides;
        double left;
        double nose;
    };
    const auto normalised = [](const Outline& outline) {
        const Bounds bounds = bounds_of(outline.points);
        return Normalised{bounds.width(), sides_of(outline.points, bounds), bounds.left,
                          outline.points[bounds.nose].y()};
    };
    const auto heights = [](const Normalised& one, std::size_t k) {
        return std::minmax({(one.sides.first[k] - one.nose) / one.width,
                            (one.sides.second[k] - one.nose) / one.width});
    };
    const Normalised first = normalised(a);
    const Normalised second = normalised(b);
    // A flap may have the section of the main element.
    const bool is_moved =
        std::abs(first.left / first.width - second.left / second.width) > same_place;
    const bool is_scaled = std::abs(first.width - second.width) > same_place * first.width;
    if (is_moved && is_scaled)
        return false;
    for (std::size_t k = 0; k < stations; ++k) {
        const auto [low, high] = heights(first, k);
        const auto [other_low, other_high] = heights(second, k);
        if (std::abs(low - other_low) > tolerance || std::abs(high - other_high) > tolerance)
            return false;
    }
    return true;
}

} // namespace tables
