// SPDX-FileCopyrightText: Aerolith developers
#include "sections/piece.h"

#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

// Integral of sqrt(s^2 + p^2).
double root_integral(double s, double p) {
    const double straight = s * std::hypot(s, p);
    return 0.5 * (p > 0.0 ? straight + p * p * std::asinh(s / p) : straight);
}

constexpr int deepest_halving = 24;

double halved_length(const Piece& piece, double from, double to, double whole, int depth) {
    const auto speed = [&piece](double u) { return norm(piece.derivative(u)); };
    const double middle = 0.5 * (from + to);
    const double first = gauss_legendre(speed, from, middle);
    const double second = gauss_legendre(speed, middle, to);
    const double sum = first + second;
    if (!(std::abs(sum - whole) > 1e-13 * sum) || depth == 0)
        return sum;
    return halved_length(piece, from, middle, first, depth - 1) +
           halved_length(piece, middle, to, second, depth - 1);
}

} // namespace

Piece Piece::line(QPointF a, QPointF b) {
    Piece piece;
    piece.c = {a, b - a, QPointF(), QPointF()};
    piece.n = 1;
    return piece;
}

Piece Piece::parabola(QPointF a, QPointF control, QPointF b) {
    Piece piece;
    piece.c = {a, 2.0 * (control - a), (a - control) + (b - control), QPointF()};
    piece.n = 2;
    return piece;
}

Piece Piece::cubic(QPointF a, QPointF da, QPointF b, QPointF db) {
    const QPointF d = b - a;
    Piece piece;
    piece.c = {a, da, 3.0 * d - 2.0 * da - db, da + db - 2.0 * d};
    piece.n = 3;
    return piece;
}

QPointF Piece::position(double u) const {
    return c[0] + u * (c[1] + u * (c[2] + u * c[3]));
}

QPointF Piece::derivative(double u) const {
    return c[1] + u * (2.0 * c[2] + u * (3.0 * c[3]));
}

QPointF Piece::second_derivative(double u) const {
    return 2.0 * c[2] + u * (6.0 * c[3]);
}

QPointF Piece::tangent(double u) const {
    const QPointF first = derivative(u);
    if (norm(first) > 0.0)
        return unit(first);
    const double side = u < 1.0 ? 1.0 : -1.0;
    const QPointF second = second_derivative(u);
    return norm(second) > 0.0 ? unit(side * second) : unit(c[3]);
}

double Piece::curvature(double u) const {
    const QPointF first = derivative(u);
    const double speed = norm(first);
    return speed > 0.0 ? cross(first, second_derivative(u)) / (speed * speed * speed) : 0.0;
}

double Piece::length(double from, double to) const {
    if (n == 1)
        return (to - from) * norm(c[1]);
    const QPointF bend = 2.0 * c[2];
    const double k = norm(bend);
    const QPointF start = derivative(from);
    const QPointF end = derivative(to);
    const auto speed = [this](double u) { return norm(derivative(u)); };
    // Where the speed hardly changes, the closed form would lose digits by cancellation, and the
    // quadrature below is exact to the last bits.
    if (n == 2 && k * (to - from) > 0.1 * std::min(norm(start), norm(end))) {
        const QPointF axis = unit(bend);
        const double p = std::abs(cross(start, axis));
        return (root_integral(dot(end, axis), p) - root_integral(dot(start, axis), p)) / k;
    }
    const double whole = gauss_legendre(speed, from, to);
    return n == 2 ? whole : halved_length(*this, from, to, whole, deepest_halving);
}

double Piece::parameter_at(double distance) const {
    const double whole = length();
    if (!(distance > 0.0))
        return 0.0;
    if (distance >= whole)
        return 1.0;
    double low = 0.0;
    double high = 1.0;
    double u = distance / whole;
    double before = 0.0; // length up to u_before
    double u_before = 0.0;
    for (int step = 0; step < 100; ++step) {
        before += u >= u_before ? length(u_before, u) : -length(u, u_before);
        u_before = u;
        const double off = before - distance;
        (off > 0.0 ? high : low) = u;
        const double speed = norm(derivative(u));
        double next = speed > 0.0 ? u - off / speed : low;
        if (!(next >= low && next <= high))
            next = 0.5 * (low + high);
        if (std::abs(next - u) <= 1e-15)
            return next;
        u = next;
    }
    return u;
}

Polynomial Piece::along(QPointF direction) const {
    Polynomial p = {};
    for (std::size_t i = 0; i < c.size(); ++i)
        p[i] = dot(c[i], direction);
    return p;
}

Polynomial Piece::approach(QPointF q) const {
    const std::array<QPointF, 4> d = {c[0] - q, c[1], c[2], c[3]};
    Polynomial p = {};
    for (std::size_t i = 0; i < d.size(); ++i) {
        for (std::size_t j = 1; j < d.size(); ++j) {
            if (i + j - 1 < p.size())
                p[i + j - 1] += double(j) * dot(d[i], d[j]);
        }
    }
    return p;
}

QRectF Piece::bounds() const {
    // The control polygon of the same cubic.
    const QPointF third = c[1] / 3.0;
    const QPointF p[] = {c[0], c[0] + third, c[0] + 2.0 * third + c[2] / 3.0, position(1.0)};
    const auto [left, right] = std::minmax({p[0].x(), p[1].x(), p[2].x(), p[3].x()});
    const auto [low, high] = std::minmax({p[0].y(), p[1].y(), p[2].y(), p[3].y()});
    return QRectF(QPointF(left, low), QPointF(right, high));
}

Piece Piece::part(double from, double to) const {
    const double h = to - from;
    Piece result;
    result.n = n;
    result.c = {position(from), h * derivative(from), (h * h * 0.5) * second_derivative(from),
                (h * h * h) * c[3]};
    return result;
}

Piece Piece::mapped(QPointF rotation, QPointF shift) const {
    Piece result = *this;
    for (QPointF& point : result.c)
        point = QPointF(point.x() * rotation.x() - point.y() * rotation.y(),
                        point.x() * rotation.y() + point.y() * rotation.x());
    result.c[0] += shift;
    return result;
}

} // namespace sections
