// SPDX-FileCopyrightText: Aerolith developers
// Damped Gauss-Newton on the distances.
#include "fitting/normal_p.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

constexpr double width_weight = 30.0;
constexpr double greatest_step = 0.05; // chord units

} // namespace

void Problem::add_distances(Normal& normal, const State& state, double p) const {
    const double share = 1.0 / double(all_targets.size());
    constexpr double least_curvature = 1e-4;
    for (std::size_t j = 0; j < all_targets.size(); ++j) {
        const Foot& foot = state.feet[j];
        const Point away = all_targets[j].point - position(state.control, foot);
        const Point along = derivative(state.control, foot);
        const double distance = away.norm();
        const double speed = along.norm();
        const bool beyond = (foot.piece == 0 && foot.v <= 0.0) ||
                            (foot.piece == control_count - 1 && foot.v >= 1.0);
        Point normal_vector;
        if (beyond && distance > nothing)
            normal_vector = away / distance;
        else if (speed > nothing)
            normal_vector = Point(-along.y(), along.x()) / speed;
        else
            continue;
        const double weight = all_targets[j].weight;
        const Weights w = weights(control_count, foot);
        Row row;
        row.value = weight * away.dot(normal_vector);
        for (int k = 0; k < 3; ++k) {
            row.add(w.first + k, 0, -weight * w.of[k] * normal_vector.x());
            row.add(w.first + k, 1, -weight * w.of[k] * normal_vector.y());
        }
        // Half the gradient of the squared norm, and half its Hessian without the negative part.
        double slope = share;
        if (p > 2.0) {
            const double relative = std::abs(row.value) / state.norm;
            slope = relative > 1e-18 ? power(relative, p) / (relative * relative) : 0.0;
        }
        normal.add(row, std::max((p - 1.0) * slope, least_curvature * share), slope, share);
    }
}

// The state is 1 wide, so the residual is 0. Its slopes keep each step from changing the width.
void Problem::add_width(Normal& normal, const State& state) const {
    const WidthSamples::Extremes extremes = samples.extremes(state.control);
    Row row;
    for (int k = 0; k < 3; ++k) {
        row.add(extremes.greatest.first + k, 0, extremes.greatest.of[k]);
        row.add(extremes.least.first + k, 0, -extremes.least.of[k]);
    }
    normal.add(row, width_weight, 0.0, 0.0);
}

int Problem::minimise(State& state, const Stage& stage) const {
    constexpr int most_trials = 8;
    constexpr double solved = 1e-26;
    Normal normal(freedom);
    Eigen::MatrixXd damped;
    const std::vector<int> senses = turns(state);
    evaluate(state, stage, senses);
    const bool may_fold = folds(state.control);
    double lambda = 1e-3;
    int idle = 0;
    int taken = 0;
    State trial;
    while (taken < stage.most_steps && state.merit > solved) {
        normal.clear();
        add_distances(normal, state, stage.p);
        add_legs(normal, state);
        add_folds(normal, state);
        add_turns(normal, state, stage.turn_weight, senses);
        if (stage.uneven_weight > 0.0)
            add_uneven_legs(normal, state, stage.uneven_weight);
        add_width(normal, state);
        normal.damping.array() += 1e-9;
        const double before = state.merit;
        bool falls = false;
        for (int i = 0; i < most_trials && !falls; ++i) {
            damped = normal.matrix;
            damped.diagonal() += lambda * normal.damping;
            const Eigen::LLT<Eigen::Ref<Eigen::MatrixXd>, Eigen::Lower> factors(damped);
            Eigen::VectorXd step;
            if (factors.info() == Eigen::Success)
                step = -factors.solve(normal.gradient);
            if (step.size() == 0 || !step.allFinite()) {
                lambda *= 10.0;
                continue;
            }
            const double longest = step.size() > 0 ? step.cwiseAbs().maxCoeff() : 0.0;
            if (longest > greatest_step)
                step *= greatest_step / longest;
            trial.control = state.control;
            trial.feet = state.feet;
            for (int c = 0; c < 2 * control_count; ++c) {
                if (freedom.variable[c] >= 0)
                    trial.control[c / 2][c % 2] += freedom.sign[c] * step[freedom.variable[c]];
            }
            settle(trial.control);
            evaluate(trial, stage, senses);
            falls = trial.merit < before && (may_fold || !folds(trial.control));
            lambda = falls ? std::max(0.2 * lambda, 1e-9) : std::min(8.0 * lambda, 1e6);
        }
        if (!falls)
            break;
        std::swap(state, trial);
        ++taken;
        idle = state.merit > before * (1.0 - stage.least_gain) ? idle + 1 : 0;
        if (idle >= 2)
            break;
    }
    return taken;
}

} // namespace fitting
