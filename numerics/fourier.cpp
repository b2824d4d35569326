// SPDX-FileCopyrightText: Aerolith developers
// Trigonometric series of closed contours.
#include "numerics/fourier.h"

#include "numerics/constants.h"

#include <QLoggingCategory>
#include <QPointF>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

Q_LOGGING_CATEGORY(fourier_log, "aerolith.numerics.fourier", QtWarningMsg)

using Contour = std::array<double, N_airfoil>;

// Independent chains of multiplications. Loops over them fill the vector registers and hide the
// latency of each multiplication.
constexpr int lanes = 20;

// Angle k of the evenly spaced ones. In double, since 2k may overflow an int.
double even_angle(int k) {
    return 2.0 * k * Pi / 1000.0;
}

// Sums of An[m] cos(m t) + Bn[m] sin(m t) over m = 1 .. terms at a few angles: the real
// part of a polynomial in e^(it) with the coefficients An - i Bn, by Horner's rule.
template<int Count>
void harmonic_sums(int terms, const double* An, const double* Bn, const double* t, double* sums) {
    double c[Count];
    double s[Count];
    double re[Count];
    double im[Count];
    for (int l = 0; l < Count; ++l) {
        c[l] = std::cos(t[l]);
        s[l] = std::sin(t[l]);
        re[l] = 0.0;
        im[l] = 0.0;
    }
    for (int m = terms; m >= 1; --m) {
        for (int l = 0; l < Count; ++l) {
            const double u = re[l] + An[m];
            const double v = im[l] - Bn[m];
            re[l] = u * c[l] - v * s[l];
            im[l] = u * s[l] + v * c[l];
        }
    }
    std::copy(re, re + Count, sums);
}

double harmonic_sum(int terms, const double* An, const double* Bn, double t) {
    double sum = 0.0;
    harmonic_sums<1>(terms, An, Bn, &t, &sum);
    return sum;
}

double closing_terms(int N, const double* An) {
    return 0.5 * (An[0] + An[N - 1] * std::cos(2.0 * N * Pi / 1000.0));
}

// In four partial sums, which a compiler may keep in vector registers.
double sum_of_lanes(const double* v) {
    static_assert(lanes % 4 == 0);
    double sums[4] = {};
    for (int l = 0; l < lanes; l += 4) {
        for (int i = 0; i < 4; ++i)
            sums[i] += v[l + i];
    }
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

// Adds the terms of the next samples to An and Bn, of as many as there are lanes or of the rest.
// Each sample is rotated by its angle once per term.
void add_samples(qsizetype N, double* An, double* Bn, const double* Tp, const double* fYn,
                 int count) {
    double c[lanes] = {};
    double s[lanes] = {};
    double re[lanes] = {};
    double im[lanes] = {};
    for (int l = 0; l < count; ++l) {
        c[l] = std::cos(Tp[l]);
        s[l] = std::sin(Tp[l]);
        re[l] = fYn[l];
    }
    An[0] += sum_of_lanes(re);
    for (qsizetype m = 1; m <= N; ++m) {
        for (int l = 0; l < lanes; ++l) {
            const double u = re[l];
            const double v = im[l];
            re[l] = u * c[l] - v * s[l];
            im[l] = u * s[l] + v * c[l];
        }
        An[m] += sum_of_lanes(re);
        if (m < N)
            Bn[m] += sum_of_lanes(im);
    }
}

// Fitted coefficients; an order below 0 counts as 0.
struct Series {
    int N;
    std::vector<double> An;
    std::vector<double> Bn;

    Series(int order, double* y)
        : N(std::max(order, 0)), An(std::size_t(N) + 1), Bn(std::size_t(N)) {
        F_coef(N, y, An.data(), Bn.data());
    }

    void drop_sines() { std::fill(Bn.begin(), Bn.end(), 0.0); }

    // f_theta_value at 1000 angles.
    void contour_values(const Contour& t, double* out) const {
        static_assert(N_airfoil % lanes == 0);
        const double closing = N == 0 ? 0.0 : closing_terms(N, An.data());
        for (int i = 0; i < N_airfoil; i += lanes) {
            harmonic_sums<lanes>(N - 2, An.data(), Bn.data(), t.data() + i, out + i);
            for (int l = 0; l < lanes; ++l)
                out[i + l] += closing;
        }
    }
};

} // namespace

void Init_fu_fields(int N, double* An, double* Bn, double* Tp, double* fYn, double* func) {
    if (N <= 0)
        return;
    std::fill(An, An + N, 0.0);
    std::fill(Bn, Bn + N, 0.0);
    const qsizetype samples = 2 * qsizetype(N);
    for (qsizetype k = 0; k < samples; ++k)
        Tp[k] = double(k) * Pi / N;
    std::copy(func, func + samples, fYn);
}

double fSum_yn_cos(int N, double* Tp, double* fYn, int m) {
    double sum = 0.0;
    for (qsizetype k = 0; k < 2 * qsizetype(N); ++k)
        sum += fYn[k] * std::cos(m * Tp[k]);
    return sum;
}

double fSum_yn_sin(int N, double* Tp, double* fYn, int m) {
    double sum = 0.0;
    for (qsizetype k = 0; k < 2 * qsizetype(N); ++k)
        sum += fYn[k] * std::sin(m * Tp[k]);
    return sum;
}

void Proc_A_bn(int N, double* An, double* Bn, double* Tp, double* fYn) {
    if (N < 0)
        return;
    An[0] = 0.0;
    if (N == 0)
        return;
    std::fill(An + 1, An + N + 1, 0.0);
    std::fill(Bn + 1, Bn + N, 0.0);
    const qsizetype samples = 2 * qsizetype(N);
    for (qsizetype k = 0; k < samples; k += lanes)
        add_samples(N, An, Bn, Tp + k, fYn + k, int(std::min<qsizetype>(samples - k, lanes)));
    for (qsizetype m = 0; m <= N; ++m)
        An[m] /= N;
    for (qsizetype m = 1; m < N; ++m)
        Bn[m] /= N;
}

void F_coef(int N, double* y, double* An, double* Bn) {
    const std::size_t samples = 2 * std::size_t(std::max(N, 0));
    std::vector<double> Tp(samples);
    std::vector<double> fYn(samples);
    Init_fu_fields(N, An, Bn, Tp.data(), fYn.data(), y);
    Proc_A_bn(N, An, Bn, Tp.data(), fYn.data());
}

double f_theta_value(int N, double* An, double* Bn, double t) {
    return N <= 0 ? 0.0 : harmonic_sum(N - 2, An, Bn, t) + closing_terms(N, An);
}

double f_k_value(int N, double* An, double* Bn, int k) {
    return f_theta_value(N, An, Bn, even_angle(k));
}

double f_Dvalue(int N, double* An, double* Bn, int k) {
    if (N <= 0)
        return 0.0;
    const double t = even_angle(k);
    double sum = 0.0;
    for (int m = 1; m <= N - 2; ++m)
        sum += -An[m] * m * std::sin(m * t) + Bn[m] * m * std::cos(m * t);
    return sum / N;
}

double f_value(int n, int M, double* An, double* Bn, int k) {
    if (M <= 0)
        return 0.0;
    const double h = n == 1 ? 0.0 : (Pi + Pi) / (n - 1.0);
    return 0.5 * An[0] + harmonic_sum(M - 1, An, Bn, k * h);
}

double f_theta(int i, int n) {
    if (i > int(n * 0.5))
        return Pi * (2.0 - std::pow(std::sin((double(n) - i) * Pi / n), 0.5));
    return Pi * std::pow(std::sin(i * Pi / n), 0.5);
}

void Fourier_Proc(int N, double* y, double* out) {
    Contour t;
    for (int i = 0; i < N_airfoil; ++i)
        t[std::size_t(i)] = f_theta(i, N_airfoil);
    Series(N, y).contour_values(t, out);
}

void Fourier_Cos_Proc(int N, double* y, double* out) {
    Contour t;
    for (int k = 0; k < N_airfoil; ++k)
        t[std::size_t(k)] = even_angle(k);
    Series series(N, y);
    series.drop_sines();
    series.contour_values(t, out);
}

void Fourier_Skeleton(int n, int M, double* y, double* out) {
    Series series(M, y);
    series.drop_sines();
    for (int k = 0; k < n; ++k)
        out[k] = f_value(n, M, series.An.data(), series.Bn.data(), k);
}

void Fourier_Derivate(int n, double* x, double* y, double* out) {
    const int M = n / 2;
    Series fx(M, x);
    Series fy(M, y);
    for (qsizetype k = 0; k <= n; ++k) {
        const double dy = f_Dvalue(M, fy.An.data(), fy.Bn.data(), int(k));
        const double dx = f_Dvalue(M, fx.An.data(), fx.Bn.data(), int(k));
        out[k] = std::abs(dx) >= 1.0 ? dy / dx : 0.0;
    }
}

void Fourier_Polygon_D2(QPolygonF poly, double* out) {
    const int M = int(double(poly.size()) * 0.5);
    std::vector<double> samples;
    samples.reserve(std::size_t(poly.size()));
    for (const QPointF& point : std::as_const(poly))
        samples.push_back(point.y());
    Series series(M, samples.data());

    std::vector<double> D1(std::max<std::size_t>(N_airfoil, 2 * std::size_t(M)));
    for (int k = 0; k < N_airfoil; ++k)
        D1[std::size_t(k)] = f_Dvalue(M, series.An.data(), series.Bn.data(), k);
    F_coef(M, D1.data(), series.An.data(), series.Bn.data());
    for (int k = 0; k < N_airfoil; ++k) {
        out[k] = std::abs(f_Dvalue(M, series.An.data(), series.Bn.data(), k));
        qCDebug(fourier_log, "%s",
                qPrintable(QStringLiteral("%1    d2: %2")
                               .arg(k, 0, 10)
                               .arg(out[k] * 1e7, 0, 'f', 5, QLatin1Char(' '))));
    }
}
