// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/problem.h"

#include "fitting/deviation.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

constexpr double rear_weight = 0.5;
constexpr double width_weight = 30.0;
constexpr double least_width = 1e-6;
constexpr double greatest_step = 0.05; // chord units
// A spline that folds or makes a loop turns at least this much (radians) more than its table.
constexpr double folded = 3.0;
constexpr double nothing = 1e-12;
// Below this a turn to the wrong side is not seen in any plot.
constexpr double leg_ratio = 4.0;
constexpr double turn_margin = 1e-7;

// The way along which leg i, from control point i - 1 to i, should run; zero where its
// neighbours coincide.
Point way_of_leg(const Points& control, int i) {
    const int last = int(control.size()) - 1;
    const Point across = control[std::min(i + 1, last)] - control[std::max(i - 2, 0)];
    const double length = across.norm();
    return length > nothing ? Point(across / length) : Point(0.0, 0.0);
}

// The place of a parameter 0..1: half a share for each line, a whole one for each parabola.
Foot foot_of(double parameter, int count) {
    const double x = parameter * (count - 1);
    if (!(x > 0.5))
        return {0, std::max(0.0, 2.0 * x)};
    if (x >= count - 1.5)
        return {count - 1, std::min(1.0, 2.0 * (x - (count - 1.5)))};
    const int piece = int(x + 0.5);
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
    freedom.variable.assign(std::size_t(2 * count), -1);
    freedom.sign.assign(std::size_t(2 * count), 1.0);
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
            // In the middle, on the axis: only x moves.
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

// A linearised residual: value and slopes by up to eight coordinates of control points.
struct Problem::Row {
    int size = 0;
    int coordinate[8] = {};
    double slope[8] = {};
    double value = 0.0;

    void add(int point, int axis, double s) {
        coordinate[size] = 2 * point + axis;
        slope[size] = s;
        ++size;
    }
};

// The normal equations, of which only the lower triangle is kept.
struct Problem::Normal {
    const Freedom& freedom;
    Eigen::MatrixXd matrix;
    Eigen::VectorXd gradient;
    Eigen::VectorXd damping;

    explicit Normal(const Freedom& f)
        : freedom(f), matrix(f.variables, f.variables), gradient(f.variables),
          damping(f.variables) {}

    void clear() {
        matrix.setZero();
        gradient.setZero();
        damping.setZero();
    }

    void add(const Row& row, double curvature, double slope, double scale) {
        for (int a = 0; a < row.size; ++a) {
            const int i = freedom.variable[row.coordinate[a]];
            if (i < 0)
                continue;
            const double s = row.slope[a] * freedom.sign[row.coordinate[a]];
            gradient[i] += slope * row.value * s;
            damping[i] += scale * s * s;
            for (int b = 0; b < row.size; ++b) {
                const int j = freedom.variable[row.coordinate[b]];
                if (j >= 0 && j <= i)
                    matrix(i, j) += curvature * s * row.slope[b] * freedom.sign[row.coordinate[b]];
            }
        }
    }
};

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

// Control points on the outline, at even steps of the parameters of the targets.
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

// Control points no closer along the outline than they may be.
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
        // A foot at the end of a piece cannot be followed: it is looked for on the neighbours.
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
    // Pieces without a say go with their neighbours, the nearer one where these differ.
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

double Problem::penalty(const Points& control, const Stage& stage,
                        const std::vector<int>& turns) const {
    double sum = 0.0;
    for (int i = 1; i < control_count; ++i) {
        const double lacking = leg_weight * (least_leg - (control[i] - control[i - 1]).norm());
        if (lacking > 0.0)
            sum += lacking * lacking;
        const double progress = (control[i] - control[i - 1]).dot(way_of_leg(control, i));
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
        // Half the gradient of the squared norm, and the same without its negative part.
        double slope = share;
        if (p > 2.0) {
            const double relative = std::abs(row.value) / state.norm;
            slope = relative > 1e-18 ? power(relative, p) / (relative * relative) : 0.0;
        }
        normal.add(row, std::max((p - 1.0) * slope, least_curvature * share), slope, share);
    }
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
        const Point way = way_of_leg(state.control, i);
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
        // The line through the neighbours is held while the distance to it is linearised.
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

// The state is 1 wide, so the residual is 0 and only its slopes count: no step shall change
// the width.
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
