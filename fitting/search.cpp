// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/search_p.h"

#include "fitting/pieces_p.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <random>

namespace fitting {

namespace {

constexpr double starting_powers[] = {0.5, 1.0 / 3.0, 2.0 / 3.0, 0.42, 0.58, 0.25, 0.75};
constexpr double curvature_floor = 0.3; // 1 / chord
constexpr double exact = 1e-10;         // chord; the rounding error of an outline
constexpr double nearly_exact = 1e-5;

// The tolerance within which an outline lies on the spline that it was made from. It is ten times
// the noise, but at least the rounding to nine decimals, and so small that no other curve fits.
double rounding_of(const Outline& outline) {
    return std::clamp(10.0 * outline.noise, 3e-10, 1e-8);
}

// At first turns to the wrong side cost little, so that control points can pass through them.
constexpr double lenient = 1.0;
constexpr double strict = 20.0;
constexpr double even = 1e-3;

constexpr Stage spreading = {2.0, lenient, even, 8, 1e-3};
constexpr Stage first_stages[] = {{2.0, lenient, even, 20, 1e-3}, {4.0, lenient, even, 20, 1e-3}};
constexpr Stage exact_stage = {2.0, 0.0, 0.0, 60, 1e-3};
constexpr Stage last_stages[] = {
    {8.0, strict, even, 20, 1e-3}, {16.0, strict, even, 20, 1e-3}, {32.0, strict, even, 60, 3e-4}};

// Control points may be closer than the penalty demands, by this factor.
constexpr double close = 0.983;
constexpr Stage calming = {32.0, 1000.0, even, 40, 1e-3};

// The mean of each value and its neighbours within `reach`.
std::vector<double> smoothed(const std::vector<double>& values, int reach) {
    const int size = int(values.size());
    std::vector<double> sums(values.size() + 1, 0.0);
    for (int i = 0; i < size; ++i)
        sums[i + 1] = sums[i] + values[i];
    std::vector<double> result(values.size());
    for (int i = 0; i < size; ++i) {
        const int from = std::max(0, i - reach);
        const int to = std::min(size, i + reach + 1);
        result[i] = (sums[to] - sums[from]) / (to - from);
    }
    return result;
}

// The turning angle over the length, at each point.
std::vector<double> curvatures(const Points& points) {
    std::vector<double> result(points.size(), 0.0);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const Point before = points[i] - points[i - 1];
        const Point behind = points[i + 1] - points[i];
        const double turn = std::atan2(cross(before, behind), before.dot(behind));
        result[i] = std::abs(turn) / (0.5 * (before.norm() + behind.norm()));
    }
    result.front() = result[1];
    result.back() = result[result.size() - 2];
    return result;
}

void settle_in(const Problem& problem, State& state) {
    for (const Stage& stage : first_stages) {
        problem.minimise(state, stage);
        // If the outline is a spline of this kind, p = 2 reproduces it exactly, because only its
        // steps are full.
        if (stage.p <= 2.0 && state.largest < nearly_exact)
            problem.minimise(state, exact_stage);
        if (state.largest <= exact)
            return;
    }
}

void polish(const Problem& problem, State& state) {
    for (const Stage& stage : last_stages) {
        if (state.largest > exact)
            problem.minimise(state, stage);
    }
}

// The share of control points before each foot if each piece gets the share given for it.
std::vector<double> spread(const std::vector<Foot>& feet, const std::vector<double>& shares) {
    const std::size_t count = shares.size();
    std::vector<double> before(count + 1, 0.0);
    for (std::size_t i = 0; i < count; ++i) {
        // Each line at the ends counts as half a piece.
        const double size = i == 0 || i + 1 == count ? 0.5 : 1.0;
        before[i + 1] = before[i] + size * shares[i];
    }
    std::vector<double> result;
    for (const Foot& foot : feet) {
        const double from = before[foot.piece];
        result.push_back((from + (before[foot.piece + 1] - from) * foot.v) / before[count]);
    }
    return result;
}

// Shares of control points from a fixed sequence of random numbers.
class Shares {
public:
    std::vector<double> next(int count) {
        const double noise = 0.5 / (1 + round % 4);
        std::vector<double> shares;
        shares.reserve(std::size_t(count));
        for (int k = 0; k < count; ++k)
            shares.push_back(std::exp(noise * between_plus_minus_one()));
        ++round;
        return shares;
    }

private:
    double between_plus_minus_one() {
        return 2.0 * double(engine()) / double(std::minstd_rand::max()) - 1.0;
    }

    std::minstd_rand engine{1};
    int round = 0;
};

// Fits a spline to the pieces found in an outline. Its control points may be close or folded.
std::optional<State> read_off(const Outline& outline, const Problem& problem) {
    const std::vector<double> pieces =
        spread_by_pieces(outline, problem.targets(), problem.count(), rounding_of(outline));
    if (pieces.empty())
        return std::nullopt;
    Problem free = problem;
    free.least_leg = 0.0;
    free.fold_weight = 0.0;
    State state = free.at_parameters(pieces);
    free.minimise(state, exact_stage);
    return state;
}

State shaken(const Problem& problem, State best, int shakes, double enough) {
    Shares shares;
    problem.minimise(best, exact_stage);
    for (int i = 0; i < shakes && best.largest > enough; ++i) {
        State state = problem.at_parameters(spread(best.feet, shares.next(problem.count())));
        problem.minimise(state, exact_stage);
        if (state.norm < best.norm)
            best = state;
    }
    return best;
}

} // namespace

std::vector<double> spread_by_curvature(const Outline& outline, const std::vector<Target>& targets,
                                        double exponent) {
    constexpr int cells = 1000;
    constexpr int smoothing = 8;
    const std::vector<double> at_points = curvatures(outline.points);
    std::vector<double> curvature(cells + 1);
    const double length = outline.length();
    std::size_t i = 0;
    for (int cell = 0; cell <= cells; ++cell) {
        const double arc = length * cell / cells;
        while (i + 2 < outline.points.size() && outline.arcs[i + 1] < arc)
            ++i;
        const double edge = outline.arcs[i + 1] - outline.arcs[i];
        const double share = std::clamp((arc - outline.arcs[i]) / edge, 0.0, 1.0);
        curvature[cell] = at_points[i] + share * (at_points[i + 1] - at_points[i]);
    }
    for (int pass = 0; pass < 3; ++pass)
        curvature = smoothed(curvature, smoothing);
    std::vector<double> before(cells + 1, 0.0);
    const auto density = [&](int cell) {
        return std::pow(curvature[cell] + curvature_floor, exponent);
    };
    for (int cell = 1; cell <= cells; ++cell)
        before[cell] = before[cell - 1] + density(cell - 1) + density(cell);
    std::vector<double> result;
    for (const Target& target : targets) {
        const double x = cells * target.arc / length;
        const int cell = std::clamp(int(x), 0, cells - 1);
        const double share = before[cell] + (before[cell + 1] - before[cell]) * (x - cell);
        result.push_back(std::clamp(share / before[cells], 0.0, 1.0));
    }
    return result;
}

std::vector<double> spread_by_distance(const Problem& problem, const State& state,
                                       double exponent) {
    constexpr double neighbour_share = 0.5;
    constexpr double least_share = 0.05;
    const int count = problem.count();
    std::vector<double> largest(std::size_t(count), 0.0);
    for (std::size_t j = 0; j < state.feet.size(); ++j) {
        double& of_piece = largest[state.feet[j].piece];
        of_piece = std::max(of_piece, state.distances[j]);
    }
    const double floor =
        std::max(least_share * *std::max_element(largest.begin(), largest.end()), 1e-300);
    std::vector<double> shares;
    for (int i = 0; i < count; ++i) {
        double distance = std::max(largest[i], floor);
        if (i > 0)
            distance = std::max(distance, neighbour_share * largest[i - 1]);
        if (i + 1 < count)
            distance = std::max(distance, neighbour_share * largest[i + 1]);
        shares.push_back(std::pow(distance, exponent));
    }
    return spread(state.feet, shares);
}

State search(const Outline& outline, int count, Ends ends, bool by_tolerance,
             const Effort& effort) {
    Problem problem(outline, count, ends);
    if (by_tolerance)
        problem.weigh_by_tolerance();
    problem.least_leg = effort.least_leg;
    const auto laid_out = [&problem](const std::vector<double>& parameters) {
        State state = problem.at_parameters(parameters);
        problem.minimise(state, spreading);
        return state;
    };
    const auto is_bad = [&problem](const Points& control) {
        return problem.folds(control) || least_leg(control) < close * problem.least_leg;
    };
    const auto is_better = [&is_bad](const State& a, const State& b) {
        const bool a_is_bad = is_bad(a.control);
        const bool b_is_bad = is_bad(b.control);
        return a_is_bad != b_is_bad ? b_is_bad : a.largest < b.largest;
    };

    // If the outline is such a spline, the only distance left is the rounding.
    const double met = rounding_of(outline);
    std::optional<State> shown;
    if (outline.noise < smooth_noise)
        shown = read_off(outline, problem);
    if (shown && shown->largest < met)
        return *shown;

    std::vector<State> starts;
    for (int i = 0; i < effort.starts; ++i) {
        State state = laid_out(spread_by_curvature(outline, problem.targets(), starting_powers[i]));
        for (int round = 0; round < 2; ++round)
            state = laid_out(spread_by_distance(problem, state, 0.25));
        settle_in(problem, state);
        starts.push_back(state);
        if (state.largest <= exact)
            return state;
    }
    std::stable_sort(starts.begin(), starts.end(), is_better);
    if (outline.noise < exact_noise && effort.shakes > 0) {
        const bool is_shown = shown && shown->norm < starts.front().norm;
        State state = shaken(problem, is_shown ? *shown : starts.front(), effort.shakes, met);
        if (state.largest < nearly_exact)
            return state;
    }
    starts.resize(std::size_t(std::min(effort.polished, int(starts.size()))));
    for (State& state : starts)
        polish(problem, state);
    State best = *std::min_element(starts.begin(), starts.end(), is_better);

    constexpr double exponents[] = {0.33, 0.2, 0.5, 0.1};
    constexpr int exponent_count = 4;
    Shares shares;
    int failures = 0;
    for (int i = 0; i < effort.relocations && best.largest > exact; ++i) {
        State state = laid_out(failures < exponent_count
                                   ? spread_by_distance(problem, best, exponents[failures])
                                   : spread(best.feet, shares.next(count)));
        settle_in(problem, state);
        polish(problem, state);
        failures = is_better(state, best) ? 0 : failures + 1;
        if (failures == 0)
            best = state;
    }
    // Finally removes turns to the wrong side, if the distance grows only a little.
    constexpr double dear = 1.25;
    State calm = best;
    problem.minimise(calm, calming);
    return calm.largest < dear * best.largest && !is_bad(calm.control) ? calm : best;
}

} // namespace fitting
