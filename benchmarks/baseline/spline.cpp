// SPDX-FileCopyrightText: Aerolith developers
// The spline evaluated by the plain recursion.
#include "baseline/spline.h"

namespace baseline {

namespace {

double quotient(double numerator, double denominator) {
    if (numerator == 0.0 && denominator == 0.0)
        return 0.0;
    return numerator / denominator;
}

} // namespace

double deBoor(int i, int deg, const double* knot, double t) {
    if (deg == 0)
        return t >= knot[i] && knot[i + 1] > t && knot[i + 1] > knot[i] ? 1.0 : 0.0;
    return quotient(deBoor(i, deg - 1, knot, t) * (t - knot[i]), knot[i + deg] - knot[i]) +
           quotient(deBoor(i + 1, deg - 1, knot, t) * (knot[i + deg + 1] - t),
                    knot[i + deg + 1] - knot[i + 1]);
}

QPointF B_spline_point(int num_pnt, int deg, const QPointF* Cp, const double* knot, double t) {
    QPointF C(0.0, 0.0);
    double R = 0.0;
    for (int i = 0; i < num_pnt; ++i) {
        const double eval = deBoor(i, deg, knot, t);
        C = C + eval * Cp[i];
        R = R + eval;
    }
    return QPointF(C.x() / R, C.y() / R);
}

QPolygonF sample(int num_pnt, int deg, const QPointF* Cp, const double* knot) {
    QPolygonF poly;
    const double du = 1.0 / 1000.0;
    double u = 0.001;
    while (1.0 > u) {
        poly << B_spline_point(num_pnt, deg, Cp, knot, u);
        u = u + du;
    }
    return poly;
}

QPolygonF make_SplinePoly(const SplineFoil& spline) {
    if (!spline.has_curve())
        return QPolygonF();
    return sample(spline.point_count(), spline.degree, spline.CP, spline.b_knots);
}

} // namespace baseline
