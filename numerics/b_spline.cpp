// SPDX-FileCopyrightText: Aerolith developers
// Evaluation of B-spline curves and cubic Bezier functions.
//
// The recursions are evaluated as triangular tables: every value is computed once, by the same
// operations as in the plain recursion, so it has the same bits.
#include "numerics/b_spline.h"

#include <QVarLengthArray>

namespace {

// Repeated knots make 0/0, which by convention counts as 0.
double quotient(double numerator, double denominator) {
    if (denominator == 0.0 && numerator == 0.0)
        return 0.0;
    return numerator / denominator;
}

} // namespace

double dmin(double a, double b) {
    return b > a ? a : b;
}

double Bn(int i, int n, double t) {
    if (i < 0 || n < 0 || i > n)
        return 0.0;
    QVarLengthArray<double, 16> row(qsizetype(i) + 1, 0.0);
    row[0] = 1.0;
    for (int k = 1; k <= n; ++k) {
        for (int j = i; j > 0; --j)
            row[j] = (1.0 - t) * row[j] + t * row[j - 1];
        row[0] = (1.0 - t) * row[0] + t * 0.0;
    }
    return row[i];
}

double d_Bn(int i, int n, double t) {
    if (i < 0 || n <= 0)
        return 0.0;
    return n * (Bn(i - 1, n - 1, t) - Bn(i, n - 1, t));
}

double spline_value(double* P, double t) {
    double sum = 0.0;
    for (int i = 0; i <= DEGREE3; ++i)
        sum += P[i] * Bn(i, DEGREE3, t);
    return sum;
}

double spline_d_value(double* P, double t) {
    double sum = 0.0;
    for (int i = 0; i <= DEGREE3; ++i)
        sum += P[i] * d_Bn(i, DEGREE3, t);
    return sum;
}

double deBoor(int i, int deg, double* knot, double t) {
    if (deg < 0)
        return 0.0;
    QVarLengthArray<double, 16> value(deg + 1);
    for (int j = 0; j <= deg; ++j) {
        const double* k = knot + i + j;
        value[j] = t >= k[0] && k[1] > t && k[1] > k[0] ? 1.0 : 0.0;
    }
    for (int d = 1; d <= deg; ++d) {
        for (int j = 0; j <= deg - d; ++j) {
            const double* k = knot + i + j;
            value[j] = quotient(value[j] * (t - k[0]), k[d] - k[0]) +
                       quotient(value[j + 1] * (k[d + 1] - t), k[d + 1] - k[1]);
        }
    }
    return value[0];
}

QPointF B_spline_point(int num_pnt, int deg, QPointF* Cp, double* knot, double t) {
    QPointF C(0.0, 0.0);
    double R = 0.0;
    for (int i = 0; i < num_pnt; ++i) {
        const double eval = deBoor(i, deg, knot, t);
        C = C + eval * Cp[i];
        R = R + eval;
    }
    // QPointF's own division asserts that the divisor is neither 0 nor NaN.
    return QPointF(C.x() / R, C.y() / R);
}
