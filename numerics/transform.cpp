// SPDX-FileCopyrightText: Aerolith developers
// Plane and space geometry, integration and clamping.
#include "numerics/transform.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Quotient of two dot products. Both are single precision, the quotient is double.
double dot_quotient(QVector3D a, QVector3D b, QVector3D c, QVector3D d) {
    return double(QVector3D::dotProduct(a, b)) / double(QVector3D::dotProduct(c, d));
}

// QVector3D multiplies by a single-precision factor.
QVector3D scaled(QVector3D v, double factor) {
    return QVector3D(float(v.x() * factor), float(v.y() * factor), float(v.z() * factor));
}

} // namespace

double norma2(double x, double y) {
    return std::pow(x * x + y * y, 0.5);
}

double norma3(double x, double y, double z) {
    return std::pow(x * x + y * y + z * z, 0.5);
}

double Dist2(QPointF a, QPointF b) {
    return norma2(a.x() - b.x(), a.y() - b.y());
}

double Dist3(QVector3D a, QVector3D b) {
    const QVector3D d = a - b;
    return std::sqrt(double(d.x() * d.x() + d.y() * d.y() + d.z() * d.z()));
}

double Rmin4(QPointF p, QPointF a, QPointF b, QPointF c, QPointF d, double) {
    return std::min({Dist2(a, p), Dist2(b, p), Dist2(c, p), Dist2(d, p)});
}

int Sign(double x) {
    return x >= 0.0 ? 1 : -1;
}

int between(int a, int b, int x) {
    return std::clamp(x, std::min(a, b), std::max(a, b));
}

bool is_between(int a, int b, int x) {
    return std::min(a, b) <= x && x <= std::max(a, b);
}

bool is_dbetween(double a, double b, double x) {
    return !(x < std::min(a, b) || x > std::max(a, b));
}

QVector3D p_SymY(QVector3D v) {
    return QVector3D(v.x(), -v.y(), v.z());
}

QPointF Center4pnt(QPointF a, QPointF b, QPointF c, QPointF d) {
    return 0.25 * (a + b + c + d);
}

QPointF CenterPoly(QPolygonF poly) {
    if (poly.isEmpty())
        return QPointF();
    QPointF sum = poly[0];
    for (qsizetype i = 1; i < poly.size(); ++i)
        sum += poly[i];
    return sum * (1.0 / double(poly.size()));
}

QPolygonF factorPoly(QPolygonF poly, double f) {
    const QPointF c = CenterPoly(poly);
    QPolygonF scaled_poly;
    scaled_poly.reserve(poly.size());
    for (const QPointF& v : std::as_const(poly))
        scaled_poly << c + f * (v - c);
    return scaled_poly;
}

double Otriangle(QPointF a, QPointF b, QPointF c) {
    return (c.y() - a.y()) * (b.x() - a.x()) - (b.y() - a.y()) * (c.x() - a.x());
}

bool in_polygon(QPointF a, QPointF b, QPointF c, QPointF d, QPointF p) {
    return QPolygonF({a, b, c, d, a}).containsPoint(p, Qt::OddEvenFill);
}

QPointF RotFix(double a, double x0, double y0, QPointF P) {
    const double dx = P.x() - x0;
    const double dy = P.y() - y0;
    const double x = std::cos(a) * dx - std::sin(a) * dy;
    const double y = std::sin(a) * dx + std::cos(a) * dy;
    return QPointF(x + x0, y + y0);
}

QPointF RotFixP(double a, QPointF C, QPointF P) {
    return RotFix(a, C.x(), C.y(), P);
}

QPointF Sqeeze(QPointF A, QPointF B, QPointF C) {
    // From about 1e12 on, rounding can keep the perimeter above the limit for ever.
    for (int step = 0; step < 2000; ++step) {
        const double perimeter = Dist2(A, B) + Dist2(B, C) + Dist2(C, A);
        if (perimeter < 0.001)
            break;
        const QPointF ab = 0.5 * (A + B);
        const QPointF bc = 0.5 * (B + C);
        const QPointF ca = 0.5 * (C + A);
        A = ab;
        B = bc;
        C = ca;
    }
    return A;
}

QVector3D NormalToLine(QVector3D A, QVector3D B, QVector3D P) {
    const QVector3D line = B - A;
    const double t = dot_quotient(line, P - A, line, line);
    return (P - scaled(line, t)) - A;
}

QVector3D SurfacePnt(QVector3D Q, QVector3D P0, QVector3D P1, QVector3D N) {
    const double t = dot_quotient(Q - P0, N, P1 - P0, N);
    return P0 + scaled(P1 - P0, t);
}

double PolygonSquare(QPolygonF poly) {
    QVector3D sum;
    for (qsizetype i = 0; i + 1 < poly.size(); ++i) {
        sum += QVector3D::crossProduct(
            QVector3D(float(poly[i].x()), float(poly[i].y()), 0.0F),
            QVector3D(float(poly[i + 1].x()), float(poly[i + 1].y()), 0.0F));
    }
    return double(sum.z());
}

double Simpson(int n, double h, double* f) {
    if (n < 0)
        return 0.0;
    double s = f[0];
    // Starting at 0 gives f[0] the weight 3, by design.
    for (int i = 0; i < n; ++i)
        s += f[i] * (i % 2 != 0 ? 4.0 : 2.0);
    return (f[n] + s) * h / 3.0;
}

double Trapez(int n, double a, double b, double* f) {
    if (n < 1)
        return 0.0;
    double s = (f[n] + f[0]) * 0.5;
    for (int i = 1; i < n; ++i)
        s += f[i];
    return (b - a) * s / n;
}
