// SPDX-FileCopyrightText: Aerolith developers
// The Fourier fit and its evaluation by direct sums.
#include "baseline/fourier.h"

#include "numerics/constants.h"

#include <cmath>
#include <vector>

namespace baseline {

namespace {

struct Coefficients {
    std::vector<double> An;
    std::vector<double> Bn;
};

double fSum_yn_cos(int N, const double* Tp, const double* fYn, int m) {
    double sum = 0.0;
    for (int k = 0; k <= 2 * N - 1; ++k)
        sum += fYn[k] * std::cos(m * Tp[k]);
    return sum;
}

double fSum_yn_sin(int N, const double* Tp, const double* fYn, int m) {
    double sum = 0.0;
    for (int k = 0; k <= 2 * N - 1; ++k)
        sum += fYn[k] * std::sin(m * Tp[k]);
    return sum;
}

Coefficients F_coef(int N, const double* y) {
    Coefficients c{std::vector<double>(std::size_t(N) + 1), std::vector<double>(std::size_t(N))};
    std::vector<double> Tp(2 * std::size_t(N));
    for (int k = 0; k <= 2 * N - 1; ++k)
        Tp[std::size_t(k)] = k * Pi / N;
    for (int m = 0; m <= N; ++m)
        c.An[std::size_t(m)] = fSum_yn_cos(N, Tp.data(), y, m) / N;
    for (int m = 1; m <= N - 1; ++m)
        c.Bn[std::size_t(m)] = fSum_yn_sin(N, Tp.data(), y, m) / N;
    return c;
}

double f_theta_value(int N, const double* An, const double* Bn, double t) {
    double S = 0.0;
    for (int m = 1; m <= N - 2; ++m)
        S += An[m] * std::cos(m * t) + Bn[m] * std::sin(m * t);
    return S + 0.5 * (An[0] + An[N - 1] * std::cos((2 * N) * Pi / 1000));
}

double f_theta(int i, int n) {
    if (i > int(n * 0.5))
        return Pi * (2 - std::pow(std::sin((n - i) * Pi / n), 0.5));
    return Pi * std::pow(std::sin(i * Pi / n), 0.5);
}

} // namespace

void Fourier_Proc(int N, const double* y, double* out) {
    const Coefficients c = F_coef(N, y);
    for (int i = 0; i <= 999; ++i)
        out[i] = f_theta_value(N, c.An.data(), c.Bn.data(), f_theta(i, 1000));
}

} // namespace baseline
