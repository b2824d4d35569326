// SPDX-FileCopyrightText: Aerolith developers
// What a fit minimises, and its steps.
#pragma once

#include "fitting/outline.h"

#include <Eigen/Cholesky>

#include <vector>

namespace fitting {

/// The conditions at the ends of a spline.
enum class Ends {
    table,     ///< The ends are at the first and the last point of the table.
    closed,    ///< Both ends are at the first point.
    symmetric, ///< As table, and the second half of the control points mirrors the first half.
};

/// The coordinates of control points that can move. A variable moves one coordinate, or two that
/// mirror each other.
struct Freedom {
    int variables = 0;
    std::vector<int> variable; ///< Of the coordinates 2 i (x) and 2 i + 1 (y); -1 if fixed.
    std::vector<double> sign;  ///< Sign with which a coordinate follows its variable.

    static Freedom of(int count, Ends ends);
};

/// A state of the search: a spline, the feet of the targets, and their distances.
struct State {
    Points control;
    std::vector<Foot> feet;
    std::vector<double> distances; ///< Weighted.
    double norm = 0.0;    ///< p-norm of the distances; for p = 2 the root of the mean square.
    double merit = 0.0;   ///< Squared norm and penalties.
    double largest = 0.0; ///< Largest weighted distance.
};

/// The settings of a sequence of steps.
struct Stage {
    double p = 2.0;             ///< 2 or a greater power of 2.
    double turn_weight = 1.0;   ///< Penalty of turns to the wrong side.
    double uneven_weight = 0.0; ///< Penalty of legs much longer than their neighbours.
    int most_steps = 20;
    double least_gain = 1e-3; ///< Stops if the merit falls by less than this share twice in a row.
};

/// The fit of one outline with one number of control points, in the frame of the outline. Every
/// state is settled: its first control point is at (1, 0) and its samples are 1 wide.
///
/// The merit is the squared p-norm of the weighted distances of the targets, plus the squares of
/// these penalties in the same unit, chord:
/// - the amount by which neighbouring control points are closer than least_leg;
/// - the length by which a leg of the control polygon runs backwards, against the line from the
///   control point before it to the one behind it: the curve would fold there;
/// - the height by which a control point turns to the side to which the outline does not turn;
/// - the amount by which a leg is longer than four times the next one. At the end of a parabola the
///   curvature falls with the third power of the leg. So a short leg next to a long one makes a
///   kink that may lie between the points of the table.
class Problem {
public:
    Problem(const Outline& outline, int count, Ends ends);

    int count() const { return control_count; }
    const std::vector<Target>& targets() const { return all_targets; }

    double least_leg = 0.0051; ///< Chord units; 0 for no limit.
    double leg_weight = 5.0;
    double fold_weight = 1.0;

    /// Halves the weight of the targets behind the first 20 % of the chord, to match the tolerance.
    void weigh_by_tolerance();

    /// Scales the spline about its first control point until its samples are 1 wide, and moves the
    /// last control point back to its place. Splines without width are not scaled.
    void settle(Points& control) const;

    /// Makes the control points symmetric, if Ends::symmetric is set.
    void symmetrise(Points& control) const;

    /// Control points by linear least squares with a fixed parameter for each target. A pull to the
    /// outline, as weak as possible, keeps them from folding.
    /// @param wanted parameters of the targets, 0..1, not decreasing; 0 and 1 are the ends. They
    ///               are spread where control points would be closer than least_leg
    State at_parameters(const std::vector<double>& wanted) const;

    /// Whether the control points turn so much more than the table that the curve has a fold or a
    /// loop.
    bool folds(const Points& control) const;

    /// The sense in which each control point has to turn: 1, -1, or 0 if undecided. The targets
    /// whose feet lie on its piece decide.
    std::vector<int> turns(const State& state) const;

    /// Projects the targets anew and computes the merit.
    void evaluate(State& state, const Stage& stage, const std::vector<int>& turns) const;

    /// Minimises the merit by damped Gauss-Newton steps on the tangent distances, weighted for the
    /// p-norm. A further residual keeps the width. A step is taken if the merit of the settled
    /// spline falls and the spline does not begin to fold. If not, the damping grows.
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

/// |x|^p by squaring; p is 1 or a power of 2.
double power(double x, double p);

} // namespace fitting
