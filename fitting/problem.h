// SPDX-FileCopyrightText: Aerolith developers
// What a fit minimises, and one step of it.
#pragma once

#include "fitting/outline.h"

#include <Eigen/Cholesky>

#include <vector>

namespace fitting {

/// What holds the ends of a spline.
enum class Ends {
    table,     ///< At the first and the last point of the table.
    closed,    ///< Both at the first point.
    symmetric, ///< As table, and the second half of the control points mirrors the first one.
};

/// Which coordinates of the control points may move. A variable moves one coordinate, or two
/// that mirror each other.
struct Freedom {
    int variables = 0;
    std::vector<int> variable; ///< Of coordinate 2 i (x) and 2 i + 1 (y); -1: does not move.
    std::vector<double> sign;  ///< With which it follows the variable.

    static Freedom of(int count, Ends ends);
};

/// A spline on its way, with the feet of the targets and what they say.
struct State {
    Points control;
    std::vector<Foot> feet;
    std::vector<double> distances; ///< Weighted.
    double norm = 0.0;    ///< p-norm of the distances; for p = 2 the root of the mean square.
    double merit = 0.0;   ///< Squared norm and penalties.
    double largest = 0.0; ///< Distance.
};

/// How a stretch of steps is made.
struct Stage {
    double p = 2.0;             ///< 2 or a greater power of 2.
    double turn_weight = 1.0;   ///< Of turns to the wrong side.
    double uneven_weight = 0.0; ///< Of legs much longer than their neighbours.
    int most_steps = 20;
    double least_gain = 1e-3; ///< Ends when the merit falls by less than this share twice running.
};

/// One outline and one number of control points. The frame is that of the outline, and every
/// state is settled: first control point at (1, 0), its samples 1 wide.
///
/// The merit is the squared p-norm of the targets' distances, each times its weight, plus the
/// squares of penalties in the same unit, chord:
/// - by how much neighbouring control points are nearer to each other than least_leg;
/// - by how far a leg of the control polygon runs back, against the line from the control point
///   before it to the one behind it: there the curve would fold;
/// - by how much a control point turns to the side on which the outline does not;
/// - by how much a leg is longer than four times the next one. At the end of a parabola the
///   curvature falls with the third power of its leg, so next to a long leg a short one makes a
///   kink that no point of the table sees.
class Problem {
public:
    Problem(const Outline& outline, int count, Ends ends);

    int count() const { return control_count; }
    const std::vector<Target>& targets() const { return all_targets; }

    double least_leg = 0.0051; ///< Chord units; 0 takes any.
    double leg_weight = 5.0;
    double fold_weight = 1.0;

    /// Gives every target beyond the first 20 % of the chord half of its weight, as the
    /// tolerance does.
    void weigh_by_tolerance();

    /// Scales the spline about its first control point until its samples are 1 wide, and puts
    /// its last one back to its place. A spline of no width is left alone.
    void settle(Points& control) const;

    /// Mirrors the first half of the control points onto the second one, if that is asked for.
    void symmetrise(Points& control) const;

    /// Control points by linear least squares with each target at a parameter of its own, drawn
    /// to the outline as weakly as they do not fold.
    /// @param wanted parameters of the targets, 0..1, not decreasing; 0 and 1 are the ends, and the
    ///               parabolas share the rest evenly. Where they would bring control points
    ///               closer than least_leg they are spread
    State at_parameters(const std::vector<double>& wanted) const;

    /// Whether control points turn so much more than the table that their curve folds or makes
    /// a loop.
    bool folds(const Points& control) const;

    /// The sense in which each control point has to turn, as the targets say whose feet lie on
    /// its piece: 1, -1, or 0 where they are not of one mind.
    std::vector<int> turns(const State& state) const;

    /// Projects the targets anew and sums up.
    void evaluate(State& state, const Stage& stage, const std::vector<int>& turns) const;

    /// Steps of damped Gauss-Newton: tangent distances, weighted for the p-norm, with the width
    /// held as a further residual. A step is taken if the merit of the settled spline falls and
    /// it does not begin to fold, else the damping grows.
    /// @return number of steps taken
    int minimise(State& state, const Stage& stage) const;

private:
    struct Normal;
    struct Row;
    std::vector<double> spaced(std::vector<double> parameters) const;
    Points along(const std::vector<double>& parameters) const;
    Points least_squares(const std::vector<Foot>& feet, const Points& pull, double weight) const;
    void add_distances(Normal& normal, const State& state, double p) const;
    void add_legs(Normal& normal, const State& state) const;
    void add_folds(Normal& normal, const State& state) const;
    void add_turns(Normal& normal, const State& state, double weight,
                   const std::vector<int>& turns) const;
    void add_width(Normal& normal, const State& state) const;
    void add_uneven_legs(Normal& normal, const State& state, double weight) const;
    double penalty(const Points& control, const Stage& stage, const std::vector<int>& turns) const;

    int control_count;
    Ends ends;
    Point first;
    Point last;
    Freedom freedom;
    WidthSamples samples;
    double greatest_turning;
    std::vector<Target> all_targets;
};

/// |x|^p for p = 1 or a power of 2, by squaring.
double power(double x, double p);

} // namespace fitting
