// SPDX-FileCopyrightText: Aerolith developers
// One polynomial piece of a plane curve.
#pragma once

#include "sections/polynomial.h"

#include <QPointF>
#include <QRectF>

#include <array>

namespace sections {

/// A straight line, a parabola or a cubic with the parameter u from 0 to 1. Coordinates and lengths
/// are in the unit of its points.
class Piece {
public:
    /// The straight line from @p a to @p b.
    static Piece line(QPointF a, QPointF b);

    /// The parabola from @p a to @p b whose end tangents meet in @p control.
    static Piece parabola(QPointF a, QPointF control, QPointF b);

    /// The cubic from @p a to @p b with the derivatives @p da and @p db with respect to u at its
    /// ends.
    static Piece cubic(QPointF a, QPointF da, QPointF b, QPointF db);

    int degree() const { return n; } ///< 1, 2 or 3.

    QPointF position(double u) const;
    QPointF derivative(double u) const;        ///< By u.
    QPointF second_derivative(double u) const; ///< By u.

    /// Unit vector along the piece. Where the derivative is 0, the direction in which the piece
    /// leaves (u below 1) or arrives (u = 1); (0, 0) for a piece that is a single point.
    QPointF tangent(double u) const;

    /// Signed curvature, positive for a turn to the left (y upwards): cross(P', P'') over the cube
    /// of |P'|; 0 where P' is 0.
    double curvature(double u) const;

    /// Length from u = @p from to u = @p to, from <= to. Exact for lines; for parabolas by the
    /// closed-form integral of sqrt(s^2 + p^2); for cubics by Gauss-Legendre quadrature over
    /// intervals that are halved until both halves agree with the whole to 1e-13 of it.
    double length(double from = 0.0, double to = 1.0) const;

    /// The u at @p distance along the piece from its start, clamped to 0..1.
    double parameter_at(double distance) const;

    /// Coordinate along @p direction as a polynomial in u.
    Polynomial along(QPointF direction) const;

    /// Half the derivative with respect to u of the squared distance from @p q. Its roots are the
    /// feet of perpendiculars.
    Polynomial approach(QPointF q) const;

    /// A box that contains the piece, not always the smallest one.
    QRectF bounds() const;

    /// The piece between u = @p from and u = @p to; @p from above @p to reverses it.
    Piece part(double from, double to) const;

    /// The piece scaled and rotated, (x, y) -> (x c - y s, x s + y c), then moved by @p shift.
    /// @param rotation (c, s) times the scale
    Piece mapped(QPointF rotation, QPointF shift) const;

private:
    std::array<QPointF, 4> c; // power basis
    int n = 1;
};

/// Integral of @p f over [from, to] by the Gauss-Legendre rule with 16 nodes: exact for
/// polynomials up to degree 31.
template<typename Function>
double gauss_legendre(const Function& f, double from, double to) {
    struct Node {
        double at;
        double weight;
    };
    constexpr Node nodes[] = {
        {0.095012509837637454, 0.18945061045506859}, {0.28160355077925892, 0.18260341504492361},
        {0.45801677765722737, 0.16915651939500262},  {0.61787624440264377, 0.14959598881657676},
        {0.755404408355003, 0.12462897125553403},    {0.86563120238783176, 0.095158511682492591},
        {0.9445750230732326, 0.062253523938647706},  {0.98940093499164994, 0.027152459411754037},
    };
    const double middle = 0.5 * (from + to);
    const double half = 0.5 * (to - from);
    double sum = 0.0;
    for (const Node& node : nodes)
        sum += node.weight * (f(middle - half * node.at) + f(middle + half * node.at));
    return half * sum;
}

} // namespace sections
