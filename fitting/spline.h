// SPDX-FileCopyrightText: Aerolith developers
// The curve of a fit: quadratic, with uniform knots that are not clamped and a normalised basis.
//
// Between two inner knots it is a parabola that begins and ends half-way between control points. In
// the spans at its ends, only two or one of the normalised functions are nonzero. There it is a
// straight line from the first control point to half-way to the second, and likewise at the end. So
// a spline of n control points has n pieces: a line, n - 2 parabolas, a line.
#pragma once

#include <Eigen/Core>

#include <vector>

namespace fitting {

using Point = Eigen::Vector2d;     ///< Chord units, y up.
using Points = std::vector<Point>; ///< Control points or points of an outline.

/// Twice the area of the triangle between @p a and @p b, positive for a turn to the left.
inline double cross(const Point& a, const Point& b) {
    return a.x() * b.y() - a.y() * b.x();
}

/// A place on a spline.
struct Foot {
    int piece = 0;  ///< 0 .. number of control points - 1.
    double v = 0.0; ///< Place on the piece, 0..1.
};

/// The weights of the three control points that act at a place. Their sum is 1.
struct Weights {
    int first = 0;
    double of[3] = {};
};

/// @param count number of control points, at least 3
Weights weights(int count, const Foot& foot);

/// The point of the spline at @p foot. At least 3 control points.
Point position(const Points& control, const Foot& foot);

/// The derivative by v. It is zero only where control points coincide.
Point derivative(const Points& control, const Foot& foot);

/// Moves @p foot to a local minimum of the distance from @p target. It starts at the old foot and
/// can move to neighbouring pieces.
/// @return the distance at the new foot
double project(const Points& control, const Point& target, Foot& foot);

/// The least distance of @p target from the whole spline.
double distance_to(const Points& control, const Point& target);

/// The distance of the control point @p i from the line through its neighbours, positive if the
/// curve turns to the left. 0 if the neighbours coincide.
double turn_height(const Points& control, int i);

/// The least distance between neighbouring control points, in their unit.
double least_leg(const Points& control);

/// The sum of the absolute angles by which a polygon turns at its inner points. A curve turns as
/// much as its control polygon. A polygon through points of a curve turns less than the curve. So a
/// spline that turns more than its table has folds, loops or waves.
double total_turning(const Points& polygon);

/// The 999 samples by which the window measures the width of a spline.
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
