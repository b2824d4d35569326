// SPDX-FileCopyrightText: Aerolith developers
// The penalties that keep a spline smooth, and their residuals in a step.
#include "fitting/normal_p.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

constexpr double leg_ratio = 4.0;
// A smaller turn to the wrong side is not visible in any plot.
constexpr double turn_margin = 1e-7;

// The direction in which leg i, from control point i - 1 to i, should run. Zero if its neighbours
// coincide.
Point way_of_leg(const Points& control, int i) {
    const int last = int(control.size()) - 1;
    const Point across = control[std::min(i + 1, last)] - control[std::max(i - 2, 0)];
    const double length = across.norm();
    return length > nothing ? Point(across / length) : Point(0.0, 0.0);
}

} // namespace

double Problem::penalty(const Points& control, const Stage& stage,
                        const std::vector<int>& turns) const {
    double sum = 0.0;
    for (int i = 1; i < control_count; ++i) {
        const double lacking = leg_weight * (least_leg - (control[i] - control[i - 1]).norm());
        if (lacking > 0.0)
            sum += lacking * lacking;
        const double progress =
            fold_weight * (control[i] - control[i - 1]).dot(way_of_leg(control, i));
        if (progress < 0.0)
            sum += progress * progress;
    }
    for (int i = 1; i + 1 < control_count; ++i) {
        const double height =
            stage.turn_weight * (turns[i] * turn_height(control, i) - turn_margin);
        if (turns[i] != 0 && height < 0.0)
            sum += height * height;
    }
    for (int i = 1; i + 1 < control_count && stage.uneven_weight > 0.0; ++i) {
        const double before = (control[i] - control[i - 1]).norm();
        const double behind = (control[i + 1] - control[i]).norm();
        const double excess = std::max(before, behind) - leg_ratio * std::min(before, behind);
        if (excess > 0.0)
            sum += stage.uneven_weight * stage.uneven_weight * excess * excess;
    }
    return sum;
}

void Problem::add_legs(Normal& normal, const State& state) const {
    for (int i = 1; i < control_count; ++i) {
        const Point leg = state.control[i] - state.control[i - 1];
        const double length = leg.norm();
        if (!(length < least_leg && length > nothing))
            continue;
        Row row;
        row.value = leg_weight * (least_leg - length);
        for (int axis = 0; axis < 2; ++axis) {
            const double slope = leg_weight * leg[axis] / length;
            row.add(i, axis, -slope);
            row.add(i - 1, axis, slope);
        }
        normal.add(row, 1.0, 1.0, 0.0);
    }
}

void Problem::add_folds(Normal& normal, const State& state) const {
    for (int i = 1; i < control_count; ++i) {
        const Point way = fold_weight * way_of_leg(state.control, i);
        Row row;
        row.value = (state.control[i] - state.control[i - 1]).dot(way);
        if (!(row.value < 0.0))
            continue;
        for (int axis = 0; axis < 2; ++axis) {
            row.add(i - 1, axis, -way[axis]);
            row.add(i, axis, way[axis]);
        }
        normal.add(row, 1.0, 1.0, 0.0);
    }
}

void Problem::add_turns(Normal& normal, const State& state, double turn_weight,
                        const std::vector<int>& turns) const {
    const Points& control = state.control;
    for (int i = 1; i + 1 < control_count; ++i) {
        const double height = turns[i] * turn_height(control, i) - turn_margin;
        if (turns[i] == 0 || !(height < 0.0))
            continue;
        // Each neighbour moves the line by its share.
        const Point across = control[i + 1] - control[i - 1];
        const double length = across.norm();
        if (!(length > nothing))
            continue;
        const Point side = Point(across.y(), -across.x()) / length;
        const double share =
            std::clamp((control[i] - control[i - 1]).dot(across) / (length * length), 0.0, 1.0);
        const double weight = turn_weight * turns[i];
        Row row;
        row.value = turn_weight * height;
        for (int axis = 0; axis < 2; ++axis) {
            row.add(i - 1, axis, -weight * (1.0 - share) * side[axis]);
            row.add(i, axis, weight * side[axis]);
            row.add(i + 1, axis, -weight * share * side[axis]);
        }
        normal.add(row, 1.0, 1.0, 0.0);
    }
}

void Problem::add_uneven_legs(Normal& normal, const State& state, double weight) const {
    for (int i = 1; i + 1 < control_count; ++i) {
        const Point before = state.control[i] - state.control[i - 1];
        const Point behind = state.control[i + 1] - state.control[i];
        const double lengths[] = {before.norm(), behind.norm()};
        const bool shrinks = lengths[0] > lengths[1];
        const double factors[] = {shrinks ? weight : -leg_ratio * weight,
                                  shrinks ? -leg_ratio * weight : weight};
        Row row;
        row.value = factors[0] * lengths[0] + factors[1] * lengths[1];
        if (!(row.value > 0.0) || !(std::min(lengths[0], lengths[1]) > nothing))
            continue;
        for (int axis = 0; axis < 2; ++axis) {
            const double slopes[] = {factors[0] * before[axis] / lengths[0],
                                     factors[1] * behind[axis] / lengths[1]};
            row.add(i - 1, axis, -slopes[0]);
            row.add(i, axis, slopes[0] - slopes[1]);
            row.add(i + 1, axis, slopes[1]);
        }
        normal.add(row, 1.0, 1.0, 0.0);
    }
}

} // namespace fitting
