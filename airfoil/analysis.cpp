// SPDX-FileCopyrightText: Aerolith developers
// Measuring and normalising outlines.
#include "airfoil/airfoil.h"

#include "numerics/transform.h"

#include <cmath>
#include <utility>

namespace {

QString two_decimals(double value) {
    return QString::number(value, 'f', 2);
}

} // namespace

QPolygonF Normalize_airfoil2(QPolygonF poly, int rot) {
    if (poly.isEmpty())
        return QPolygonF();
    double xmin = 10000.0;
    double xmax = -10000.0;
    for (const QPointF& point : std::as_const(poly)) {
        if (point.x() < xmin)
            xmin = point.x();
        if (point.x() > xmax)
            xmax = point.x();
    }
    const double delta = xmax - xmin;
    const double x0 = poly.at(0).x() / delta;
    const double y0 = poly.at(0).y() * rot / delta;
    QPolygonF normalized;
    normalized.reserve(poly.size());
    for (const QPointF& point : std::as_const(poly)) {
        const double x = point.x() / delta - x0 + 1.0;
        const double y = point.y() * rot / delta - y0;
        if (is_dbetween(0.0, 1.0, x))
            normalized << QPointF(x, y);
    }
    return normalized;
}

void FindThickness(QPolygonF* foilpoly, QString* St) {
    St[0] = QString::fromLatin1("");
    St[1] = QString::fromLatin1("");
    const QPolygonF& outline = *foilpoly;
    if (outline.isEmpty())
        return;
    double fmin = 10000.0;
    double fmax = -10000.0;
    qsizetype imin = 0;
    qsizetype imax = 0;
    for (qsizetype i = 0; i < outline.size(); ++i) {
        const double y = outline[i].y();
        if (y < fmin) {
            fmin = y;
            imin = i;
        }
        if (y > fmax) {
            fmax = y;
            imax = i;
        }
    }
    const double deltay = fmax - fmin;
    const double proc = (outline[imax].x() + outline[imin].x()) * 100 * 0.5;
    St[0] = QStringLiteral(" Thickness: %1  at  %2 %")
                .arg(two_decimals(deltay * 100), two_decimals(proc));
    St[1] = QStringLiteral(" Top: at %1   Bottom: at: %2 ")
                .arg(two_decimals(100 * outline[imax].x()), two_decimals(100 * outline[imin].x()));
}

PntStruct NearPoint(QPolygonF polygon, QPointF n_point, char c) {
    constexpr double factor = 600 - DELTA_X;
    const auto abscissa = [](QPointF point) { return point.x() * factor + DELTA_X; };

    const double x0 = std::abs(n_point.x()) > 1000.0 ? 0.0 : n_point.x();
    for (qsizetype i = 0; i < polygon.size() - 2; ++i) {
        const double x1 = abscissa(polygon.at(i));
        const double x2 = abscissa(polygon.at(i + 1));
        if (c == 'D' ? x1 <= x0 && x0 <= x2 : x2 <= x0 && x0 <= x1) {
            const double ordinate = -polygon.at(i).y() * factor;
            return {QPointF(x0, std::abs(ordinate) > 500.0 ? 0.0 : ordinate), int(i)};
        }
    }
    return {QPointF(), -1};
}

int f_ind(double x, double* arr, int n) {
    if (n < 2)
        return 0;
    // Starting at 1 skips the first bracket; resampled outlines depend on it.
    for (int i = 1; i < n - 1; ++i) {
        if (arr[i] <= x && x <= arr[i + 1])
            return i;
    }
    return x > arr[n - 2] ? n - 1 : 0;
}
