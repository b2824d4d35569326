// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/spline.h"

#include "numerics/constants.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fitting {

namespace {

// A piece as a + b v + c v v, relative to a target. Half the derivative of the squared distance is
// a cubic.
struct Approach {
    Point a, b, c;
    double g0, g1, g2, g3;

    Approach(const Points& control, int piece, const Point& target) {
        const int last = int(control.size()) - 1;
        if (piece == 0) {
            a = control[0];
            b = 0.5 * (control[1] - control[0]);
            c = Point::Zero();
        } else if (piece == last) {
            a = 0.5 * (control[last - 1] + control[last]);
            b = control[last] - a;
            c = Point::Zero();
        } else {
            const Point& p = control[piece];
            a = 0.5 * (control[piece - 1] + p);
            b = p - control[piece - 1];
            c = 0.5 * (control[piece + 1] - 2.0 * p + control[piece - 1]);
        }
        a -= target;
        g0 = a.dot(b);
        g1 = b.dot(b) + 2.0 * a.dot(c);
        g2 = 3.0 * b.dot(c);
        g3 = 2.0 * c.dot(c);
    }

    double slope(double v) const { return g0 + v * (g1 + v * (g2 + v * g3)); }
    double bend(double v) const { return g1 + v * (2.0 * g2 + v * 3.0 * g3); }
    double squared(double v) const { return (a + v * (b + v * c)).squaredNorm(); }
};

// Finds the minimum between a place where the distance falls and one where it rises. Newton steps
// that leave the bracket are replaced by bisection.
double minimum_between(const Approach& piece, double low, double high, double v) {
    constexpr int most_steps = 60;
    constexpr double resolution = 1e-14;
    for (int i = 0; i < most_steps; ++i) {
        const double slope = piece.slope(v);
        (slope > 0.0 ? high : low) = v;
        const double bend = piece.bend(v);
        double next = bend > 0.0 ? v - slope / bend : low - 1.0;
        if (!(next >= low && next <= high))
            next = 0.5 * (low + high);
        const double step = std::abs(next - v);
        v = next;
        if (step < resolution)
            break;
    }
    return v;
}

// Finds the nearest of five places, then the minimum near it.
double foot_on_piece(const Points& control, int index, const Point& target, double& v) {
    const Approach piece(control, index, target);
    constexpr double step = 0.25;
    double best = 0.0;
    double least = piece.squared(0.0);
    for (const double place : {0.25, 0.5, 0.75, 1.0}) {
        const double squared = piece.squared(place);
        if (squared < least) {
            least = squared;
            best = place;
        }
    }
    v = minimum_between(piece, std::max(0.0, best - step), std::min(1.0, best + step), best);
    const double squared = piece.squared(v);
    if (squared <= least)
        return squared;
    v = best;
    return least;
}

// Newton steps from the old foot. Returns false if they leave the piece or do not converge.
bool follow_foot(const Points& control, const Point& target, Foot& foot, double& squared) {
    constexpr int most_steps = 12;
    constexpr double resolution = 1e-13;
    const Approach piece(control, foot.piece, target);
    double v = foot.v;
    for (int i = 0; i < most_steps; ++i) {
        const double bend = piece.bend(v);
        if (!(bend > 0.0))
            return false;
        const double step = piece.slope(v) / bend;
        v -= step;
        if (!(v > 0.0 && v < 1.0))
            return false;
        if (std::abs(step) < resolution) {
            foot.v = v;
            squared = piece.squared(v);
            return true;
        }
    }
    return false;
}

} // namespace

Weights weights(int count, const Foot& foot) {
    const double v = foot.v;
    if (foot.piece == 0)
        return {0, {1.0 - 0.5 * v, 0.5 * v, 0.0}};
    if (foot.piece == count - 1)
        return {count - 3, {0.0, 0.5 * (1.0 - v), 0.5 * (1.0 + v)}};
    return {foot.piece - 1, {0.5 * (1.0 - v) * (1.0 - v), 0.5 + v * (1.0 - v), 0.5 * v * v}};
}

Point position(const Points& control, const Foot& foot) {
    const Weights w = weights(int(control.size()), foot);
    return w.of[0] * control[w.first] + w.of[1] * control[w.first + 1] +
           w.of[2] * control[w.first + 2];
}

Point derivative(const Points& control, const Foot& foot) {
    const int last = int(control.size()) - 1;
    const int i = foot.piece;
    if (i == 0)
        return 0.5 * (control[1] - control[0]);
    if (i == last)
        return 0.5 * (control[last] - control[last - 1]);
    return (1.0 - foot.v) * (control[i] - control[i - 1]) + foot.v * (control[i + 1] - control[i]);
}

double project(const Points& control, const Point& target, Foot& foot) {
    double least = 0.0;
    if (follow_foot(control, target, foot, least))
        return std::sqrt(least);
    const int count = int(control.size());
    Foot best = {std::clamp(foot.piece, 0, count - 1), 0.0};
    least = foot_on_piece(control, best.piece, target, best.v);
    const int start = best.piece;
    for (const int direction : {-1, 1}) {
        for (int i = start + direction; i >= 0 && i < count; i += direction) {
            double v = 0.0;
            const double squared = foot_on_piece(control, i, target, v);
            if (!(squared < least))
                break;
            least = squared;
            best = {i, v};
        }
    }
    foot = best;
    return std::sqrt(least);
}

double distance_to(const Points& control, const Point& target) {
    double least = std::numeric_limits<double>::infinity();
    double v = 0.0;
    for (int i = 0; i < int(control.size()); ++i)
        least = std::min(least, foot_on_piece(control, i, target, v));
    return std::sqrt(least);
}

double turn_height(const Points& control, int i) {
    const Point across = control[i + 1] - control[i - 1];
    const double length = across.norm();
    if (!(length > 0.0))
        return 0.0;
    return cross(control[i] - control[i - 1], control[i + 1] - control[i]) / length;
}

double least_leg(const Points& control) {
    double least = (control[1] - control[0]).norm();
    for (std::size_t i = 2; i < control.size(); ++i)
        least = std::min(least, (control[i] - control[i - 1]).norm());
    return least;
}

double total_turning(const Points& polygon) {
    double sum = 0.0;
    for (std::size_t i = 1; i + 1 < polygon.size(); ++i) {
        const Point before = polygon[i] - polygon[i - 1];
        const Point behind = polygon[i + 1] - polygon[i];
        sum += std::abs(std::atan2(cross(before, behind), before.dot(behind)));
    }
    return sum;
}

WidthSamples::WidthSamples(int count) {
    // Normalised weight of the second control point in the first span with two functions.
    const auto share = [](double v) { return v * v / (1.0 + 2.0 * v - v * v); };
    for (double t = 1.0 / F_DIV; t < 1.0; t += 1.0 / F_DIV) {
        const double knots = t * (count + 2);
        const int span = int(knots);
        const double v = knots - span;
        if (span <= 0)
            samples.push_back({0, {1.0, 0.0, 0.0}});
        else if (span == 1)
            samples.push_back({0, {1.0 - share(v), share(v), 0.0}});
        else if (span < count)
            samples.push_back(weights(count, {span - 1, v}));
        else if (span == count)
            samples.push_back({count - 3, {0.0, share(1.0 - v), 1.0 - share(1.0 - v)}});
        else
            samples.push_back({count - 3, {0.0, 0.0, 1.0}});
    }
}

WidthSamples::Extremes WidthSamples::extremes(const Points& control) const {
    Extremes result;
    double least = std::numeric_limits<double>::infinity();
    double greatest = -least;
    for (const Weights& w : samples) {
        const double x = w.of[0] * control[w.first].x() + w.of[1] * control[w.first + 1].x() +
                         w.of[2] * control[w.first + 2].x();
        if (x < least) {
            least = x;
            result.least = w;
        }
        if (x > greatest) {
            greatest = x;
            result.greatest = w;
        }
    }
    result.width = greatest - least;
    return result;
}

} // namespace fitting
