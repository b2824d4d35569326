// SPDX-FileCopyrightText: Aerolith developers
// The curve that a fit moves: quadratic, uniform knots that are not clamped, normalised basis.
//
// Between two inner knots it is a parabola that begins and ends half-way between control
// points. In the spans at its ends, where the normalised sum leaves two functions and then
// one, it is a straight line from the first control point to half-way to the second one, and
// likewise at the end. So a spline of n control points has n pieces: line, n - 2 parabolas, line.
#pragma once

#include <Eigen/Core>

#include <vector>

namespace fitting {

using Point = Eigen::Vector2d;     ///< Chord units, y up.
using Points = std::vector<Point>; ///< Control points or points of an outline.

/// Twice the area of the triangle that @p a and @p b span, positive for a turn to the left.
inline double cross(const Point& a, const Point& b) {
    return a.x() * b.y() - a.y() * b.x();
}

/// A place on a spline.
struct Foot {
    int piece = 0;  ///< 0 .. number of control points - 1.
    double v = 0.0; ///< Place on the piece, 0..1.
};

/// The three control points that act at a place, and by how much; the sum is 1.
struct Weights {
    int first = 0;
    double of[3] = {};
};

/// @param count number of control points, at least 3
Weights weights(int count, const Foot& foot);

/// The point of the spline at @p foot. At least 3 control points.
Point position(const Points& control, const Foot& foot);

/// The derivative by v; zero only where control points coincide.
Point derivative(const Points& control, const Foot& foot);

/// Moves @p foot downhill to where the spline is nearest to @p target, from where it is, over
/// neighbouring pieces too. What it finds is a local minimum.
/// @return the distance there
double project(const Points& control, const Point& target, Foot& foot);

/// The least distance of @p target from the whole spline.
double distance_to(const Points& control, const Point& target);

/// How far the control point @p i lies from the line through its neighbours: positive where
/// the curve turns to the left. 0 where the neighbours coincide.
double turn_height(const Points& control, int i);

/// Least distance between neighbouring control points, in their unit.
double least_leg(const Points& control);

/// Sum of the angles, taken positive, by which a polygon turns at its inner points; that of a
/// control polygon is also that of its curve. A polygon through points of a curve turns less
/// than the curve, so what a spline turns more than its table are folds, loops and waves.
double total_turning(const Points& polygon);

/// The 999 samples by which the window measures how wide a spline is.
class WidthSamples {
public:
    /// @param count number of control points, 4..30
    explicit WidthSamples(int count);

    /// The samples with the least and the greatest x.
    struct Extremes {
        Weights least;
        Weights greatest;
        double width = 0.0;
    };
    Extremes extremes(const Points& control) const;

private:
    std::vector<Weights> samples;
};

} // namespace fitting
