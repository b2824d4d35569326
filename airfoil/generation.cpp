// SPDX-FileCopyrightText: Aerolith developers
// Outlines generated from other outlines, and parabolas.
#include "airfoil/airfoil.h"

#include "numerics/constants.h"
#include "numerics/fourier.h"
#include "numerics/transform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace {

using Contour = std::array<double, N_airfoil>;

// The coordinates of an outline as two arrays, each closed by its first value in the last place.
struct ClosedSamples {
    std::vector<double> x;
    std::vector<double> y;
    int half; // order of a Fourier fit; with an odd count it omits the closing sample

    explicit ClosedSamples(const QPolygonF& poly) : half(int(double(poly.size()) * 0.5)) {
        x.reserve(std::size_t(poly.size()));
        y.reserve(std::size_t(poly.size()));
        for (const QPointF& point : poly) {
            x.push_back(point.x());
            y.push_back(point.y());
        }
        x.back() = x.front();
        y.back() = y.front();
    }
};

// Point at the length t of an outline whose points lie at the lengths s.
QPointF point_at_length(const QPolygonF& poly, std::vector<double>& s, double t) {
    const int last_bracket = int(poly.size()) - 2;
    // Rounding may take t past the total length, where f_ind returns no valid bracket.
    const int j = std::min(f_ind(t, s.data(), int(poly.size())), last_bracket);
    const double step = s[std::size_t(j) + 1] - s[std::size_t(j)];
    const double fraction = step == 0.0 ? 0.0 : (t - s[std::size_t(j)]) / step;
    const QPointF a = poly[j];
    const QPointF b = poly[j + 1];
    return QPointF(a.x() + fraction * (b.x() - a.x()), a.y() + fraction * (b.y() - a.y()));
}

} // namespace

double k_a(double x0, double y0, double x1, double y1) {
    return (y1 - y0) / ((x1 - x0) * (x1 - x0));
}

double k_b(double a, double x0) {
    return -2.0 * a * x0;
}

double k_c(double x0, double y0, double a, double b) {
    return y0 - (a * x0 + b) * x0;
}

double k_y(double a, double b, double c, double x) {
    return (x * a + b) * x + c;
}

double f_3P(double* solu, double t) {
    return (solu[1] * t + solu[2]) * t + solu[3];
}

QPolygonF Zero_Airfoil(QPolygonF polygon) {
    for (QPointF& point : polygon)
        point.setY(0.0);
    return polygon;
}

QPolygonF SqueezeAirfoil(double scale, QPolygonF poly) {
    for (QPointF& point : poly)
        point.setY(point.y() * scale);
    return poly;
}

QVector3D Normala(QVector3D T1, QVector3D T2, QVector3D T3) {
    const QVector3D n = QVector3D::crossProduct(T2 - T1, T3 - T1);
    // Qt's own normalisation treats short normals as zero.
    const double length = norma3(double(n.x()), double(n.y()), double(n.z()));
    if (length == 0.0)
        return QVector3D();
    return QVector3D(float(n.x() / length), float(n.y() / length), float(n.z() / length));
}

QPolygonF Natur_Airfoil(int N, QPolygonF poly) {
    if (poly.isEmpty())
        return {};
    const qsizetype len = poly.size();
    std::vector<double> s(std::size_t(len), 0.0);
    for (qsizetype i = 1; i < len; ++i)
        s[std::size_t(i)] = s[std::size_t(i) - 1] + Dist2(poly[i - 1], poly[i]);

    QPolygonF even;
    even.append(poly.first());
    const double step = s.back() / (double(N) - 1.0);
    double t = 0.0;
    for (qsizetype k = 0; k < qsizetype(N) - 1; ++k) {
        t += step;
        even.append(len == 1 ? poly.first() : point_at_length(poly, s, t));
    }
    even.append(poly.first());
    return even;
}

QPolygonF FourierInterpolationAirfoil(QPolygonF poly) {
    if (poly.isEmpty())
        return {};
    ClosedSamples samples(poly);
    Contour X;
    Contour Y;
    Fourier_Proc(samples.half, samples.x.data(), X.data());
    Fourier_Proc(samples.half, samples.y.data(), Y.data());
    QPolygonF fitted;
    fitted.reserve(N_airfoil);
    for (std::size_t k = 0; k < X.size(); ++k)
        fitted.append(QPointF(X[k], Y[k]));
    return fitted;
}

QPolygonF CreateSymetricAirfoil(int N, QPolygonF poly) {
    if (poly.isEmpty())
        return poly;
    ClosedSamples samples(poly);
    Contour X;
    Contour Y;
    Contour Yc;
    Fourier_Proc(samples.half, samples.x.data(), X.data());
    Fourier_Cos_Proc(samples.half, samples.y.data(), Yc.data());
    Fourier_Proc(samples.half, samples.y.data(), Y.data());
    const auto count = std::size_t(std::clamp(N, 0, N_airfoil));
    QPolygonF symmetric;
    symmetric.reserve(qsizetype(count));
    for (std::size_t i = 0; i < count; ++i)
        symmetric.append(QPointF(X[i], Y[i] - Yc[i]));
    return symmetric;
}
