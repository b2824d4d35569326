// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/problem.h"

#include "fitting/deviation.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

constexpr double rear_weight = 0.5;
constexpr double least_width = 1e-6;
// A spline with a fold or a loop turns at least this much (radians) more than its table.
constexpr double folded = 3.0;

// The foot of a parameter 0..1. Each line has half the share of a parabola.
Foot foot_of(double parameter, int count) {
    const double x = parameter * (count - 1);
    if (!(x > 0.5))
        return {0, std::max(0.0, 2.0 * x)};
    if (x >= count - 1.5)
        return {count - 1, std::min(1.0, 2.0 * (x - (count - 1.5)))};
    const int piece = int(std::floor(x + 0.5));
    return {piece, x + 0.5 - piece};
}

} // namespace

double power(double x, double p) {
    double result = std::abs(x);
    for (double q = 1.0; q < p; q *= 2.0)
        result *= result;
    return result;
}

Freedom Freedom::of(int count, Ends ends) {
    Freedom freedom;
    const std::size_t coordinates = 2 * std::size_t(count);
    freedom.variable.assign(coordinates, -1);
    freedom.sign.assign(coordinates, 1.0);
    const int half = ends == Ends::symmetric ? (count - 1) / 2 : count - 2;
    for (int i = 1; i <= half; ++i) {
        for (int axis = 0; axis < 2; ++axis)
            freedom.variable[2 * i + axis] = freedom.variables++;
    }
    if (ends != Ends::symmetric)
        return freedom;
    for (int i = 1; i <= half; ++i) {
        const int other = count - 1 - i;
        if (other == i) {
            // The middle point stays on the axis: only x can move.
            freedom.variable[2 * i + 1] = -1;
            --freedom.variables;
            continue;
        }
        for (int axis = 0; axis < 2; ++axis)
            freedom.variable[2 * other + axis] = freedom.variable[2 * i + axis];
        freedom.sign[2 * other + 1] = -1.0;
    }
    return freedom;
}

Problem::Problem(const Outline& outline, int count, Ends how)
    : control_count(count), ends(how), first(outline.points.front()),
      last(how == Ends::closed ? outline.points.front() : outline.points.back()),
      freedom(Freedom::of(count, how)), samples(count),
      greatest_turning(total_turning(outline.points) + folded),
      all_targets(outline.targets(count)) {
    if (how == Ends::symmetric)
        last.x() = first.x();
}

void Problem::weigh_by_tolerance() {
    double nose = first.x();
    for (const Target& target : all_targets) {
        if (target.in_table)
            nose = std::min(nose, target.point.x());
    }
    for (Target& target : all_targets) {
        if (target.point.x() - nose > nose_share)
            target.weight *= rear_weight;
    }
}

void Problem::settle(Points& control) const {
    const double width = samples.extremes(control).width;
    if (width > least_width) {
        for (Point& point : control)
            point = first + (point - first) / width;
    }
    control.back() = last;
}

void Problem::symmetrise(Points& control) const {
    if (ends != Ends::symmetric)
        return;
    const double twice_axis = first.y() + last.y();
    for (int i = 0, j = control_count - 1; i <= j; ++i, --j) {
        const double x = 0.5 * (control[i].x() + control[j].x());
        const double y = 0.5 * (control[i].y() + twice_axis - control[j].y());
        control[i] = Point(x, i == j ? 0.5 * twice_axis : y);
        control[j] = Point(x, twice_axis - control[i].y());
    }
}

bool Problem::folds(const Points& control) const {
    return total_turning(control) > greatest_turning;
}

// Control points on the outline, evenly spaced in the parameters of the targets.
Points Problem::along(const std::vector<double>& parameters) const {
    Points result;
    std::size_t j = 0;
    for (int i = 0; i < control_count; ++i) {
        const double parameter = i / double(control_count - 1);
        while (j + 2 < parameters.size() && parameters[j + 1] < parameter)
            ++j;
        const double step = parameters[j + 1] - parameters[j];
        const double share =
            step > 0.0 ? std::clamp((parameter - parameters[j]) / step, 0.0, 1.0) : 0.0;
        const Point& from = all_targets[j].point;
        result.push_back(from + share * (all_targets[j + 1].point - from));
    }
    return result;
}

Points Problem::least_squares(const std::vector<Foot>& feet, const Points& pull,
                              double weight) const {
    const int inner = control_count - 2;
    Eigen::MatrixXd matrix = weight * Eigen::MatrixXd::Identity(inner, inner);
    Eigen::MatrixXd right(inner, 2);
    for (int i = 0; i < inner; ++i)
        right.row(i) = weight * pull[i + 1].transpose();
    for (std::size_t j = 0; j < all_targets.size(); ++j) {
        const Weights w = weights(control_count, feet[j]);
        Point rest = all_targets[j].point;
        for (int k = 0; k < 3; ++k) {
            if (w.first + k == 0)
                rest -= w.of[k] * first;
            else if (w.first + k == control_count - 1)
                rest -= w.of[k] * last;
        }
        for (int a = 0; a < 3; ++a) {
            const int i = w.first + a - 1;
            if (i < 0 || i >= inner)
                continue;
            right.row(i) += w.of[a] * rest.transpose();
            for (int b = 0; b < 3; ++b) {
                const int k = w.first + b - 1;
                if (k >= 0 && k < inner)
                    matrix(i, k) += w.of[a] * w.of[b];
            }
        }
    }
    const Eigen::MatrixXd solution = matrix.llt().solve(right);
    Points control = {first};
    for (int i = 0; i < inner; ++i)
        control.emplace_back(solution.row(i).transpose());
    control.push_back(last);
    symmetrise(control);
    settle(control);
    return control;
}

// Spreads the parameters so that control points along the outline are not too close.
std::vector<double> Problem::spaced(std::vector<double> parameters) const {
    constexpr int rounds = 4;
    constexpr double margin = 1.1;
    const double most = 1.0 / (margin * least_leg * (control_count - 1));
    for (int round = 0; round < rounds; ++round) {
        double before = parameters.front();
        double sum = 0.0;
        for (std::size_t j = 1; j < parameters.size(); ++j) {
            const double step = parameters[j] - before;
            before = parameters[j];
            sum += std::min(step, most * (all_targets[j].arc - all_targets[j - 1].arc));
            parameters[j] = sum;
        }
        for (double& parameter : parameters)
            parameter /= sum;
    }
    return parameters;
}

State Problem::at_parameters(const std::vector<double>& wanted) const {
    const std::vector<double> parameters = spaced(wanted);
    State state;
    for (const double parameter : parameters)
        state.feet.push_back(foot_of(parameter, control_count));
    const Points pull = along(parameters);
    for (const double weight : {1e-2, 1e-1, 1.0, 10.0}) {
        state.control = least_squares(state.feet, pull, weight);
        if (!folds(state.control))
            break;
    }
    for (std::size_t j = 0; j < all_targets.size(); ++j) {
        // Newton steps cannot start at the end of a piece; project() then searches the neighbours.
        state.feet[j].v = std::clamp(state.feet[j].v, 0.0, 1.0);
        project(state.control, all_targets[j].point, state.feet[j]);
    }
    return state;
}

std::vector<int> Problem::turns(const State& state) const {
    constexpr int mixed = 2;
    std::vector<int> of_piece(std::size_t(control_count), 0);
    for (std::size_t j = 0; j < all_targets.size(); ++j) {
        const int turn = all_targets[j].turn;
        int& known = of_piece[state.feet[j].piece];
        if (turn != 0)
            known = known == 0 || known == turn ? turn : mixed;
    }
    // Undecided pieces take the turn of the nearest decided piece.
    std::vector<int> result = of_piece;
    for (int i = 0; i < control_count; ++i) {
        for (int k = 1; result[i] == 0 && k < control_count; ++k) {
            const int before = i - k >= 0 ? of_piece[i - k] % mixed : 0;
            const int behind = i + k < control_count ? of_piece[i + k] % mixed : 0;
            result[i] = before != 0 ? before : behind;
        }
    }
    for (int& turn : result) {
        if (turn == mixed)
            turn = 0;
    }
    return result;
}

void Problem::evaluate(State& state, const Stage& stage, const std::vector<int>& turns) const {
    const std::size_t size = all_targets.size();
    state.distances.resize(size);
    state.largest = 0.0;
    for (std::size_t j = 0; j < size; ++j) {
        state.distances[j] =
            all_targets[j].weight * project(state.control, all_targets[j].point, state.feet[j]);
        state.largest = std::max(state.largest, state.distances[j]);
    }
    state.norm = 0.0;
    if (state.largest > 0.0) {
        double sum = 0.0;
        for (const double distance : state.distances)
            sum += power(distance / state.largest, stage.p);
        if (stage.p <= 2.0)
            sum /= double(size);
        state.norm = state.largest * std::pow(sum, 1.0 / stage.p);
    }
    state.merit = state.norm * state.norm + penalty(state.control, stage, turns);
}

} // namespace fitting
