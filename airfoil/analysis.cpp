// SPDX-FileCopyrightText: Aerolith developers
// Measuring and normalising outlines.
#include "airfoil/airfoil.h"

#include "airfoil/airfoil_p.h"
#include "numerics/transform.h"

#include <algorithm>
#include <cmath>

namespace {

// Where in an outline of N_airfoil points the nose is looked for.
constexpr qsizetype nose_begin = 450;
constexpr qsizetype nose_end = 550;

bool has_point(const QPolygonF& polygon, qsizetype i) {
    return i >= 0 && i < polygon.size();
}

// The end of an index range of the analysis, within the points there are.
qsizetype bounded_end(const QPolygonF& polygon, int end) {
    return std::min<qsizetype>(end, polygon.size());
}

double height_between(const QPolygonF& polygon, int i, int j) {
    if (!has_point(polygon, i) || !has_point(polygon, j))
        return 0.0;
    return std::abs(polygon[i].y() - polygon[j].y());
}

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
    const double x0 = poly[0].x() / delta;
    const double y0 = poly[0].y() * rot / delta;
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

void FindNoseTopIndex(ParaStruct* p, QPolygonF polygon) {
    if (polygon.isEmpty()) {
        warn_no_airfoil();
        p->NoseIndex = 500;
        return;
    }
    double least_x = 1e6;
    for (qsizetype i = nose_begin; i < std::min(nose_end, polygon.size()); ++i) {
        if (polygon[i].x() < least_x) {
            least_x = polygon[i].x();
            p->NoseIndex = int(i);
        }
    }
    double greatest_y = -100.0;
    for (qsizetype i = 0; i < bounded_end(polygon, p->NoseIndex); ++i) {
        if (polygon[i].y() > greatest_y) {
            greatest_y = polygon[i].y();
            p->TopIndexUp = int(i);
        }
    }
    double least_y = 100.0;
    for (qsizetype i = std::max(p->NoseIndex, 0); i < bounded_end(polygon, N_airfoil); ++i) {
        if (polygon[i].y() < least_y) {
            least_y = polygon[i].y();
            p->TopIndexDw = int(i);
        }
    }
    Create_FoilPairList(polygon);
}

int FindUPIndex(int i, QPolygonF polygon) {
    if (polygon.isEmpty()) {
        warn_no_airfoil();
        return 0;
    }
    if (!has_point(polygon, i))
        return 0;
    const double x0 = polygon[i].x();
    const qsizetype end = bounded_end(polygon, GetDataStruct()->NoseIndex);
    int index = 0;
    for (qsizetype k = 0; k < end && polygon[k].x() > x0; ++k)
        index = int(k);
    return index;
}

int FindDWIndex(int i, QPolygonF polygon) {
    if (polygon.isEmpty()) {
        warn_no_airfoil();
        return i;
    }
    if (!has_point(polygon, i))
        return 0;
    const double x0 = polygon[i].x();
    const qsizetype end = bounded_end(polygon, N_airfoil);
    int index = 0;
    for (qsizetype k = std::max(GetDataStruct()->NoseIndex, 0); k < end && x0 > polygon[k].x(); ++k)
        index = int(k);
    return index;
}

void Create_FoilPairList(QPolygonF polygon) {
    QList<Foil_Pair>& pairs = GetDataStruct()->FoilPairList;
    pairs.clear();
    if (polygon.isEmpty()) {
        warn_no_airfoil();
        return;
    }
    const int nose = GetDataStruct()->NoseIndex;
    // The partner of the first point is one past the last: stored, never followed.
    pairs.append({0, N_airfoil, 0.0});
    for (int i = 1; i < bounded_end(polygon, nose); ++i) {
        const int lower = FindDWIndex(i, polygon);
        pairs.append({i, lower, height_between(polygon, i, lower)});
    }
    pairs.append({nose, nose, 0.0});
    for (int i = std::clamp(nose, 0, N_airfoil) + 1; i < bounded_end(polygon, N_airfoil); ++i)
        // The height is measured from the point to itself, so it is 0 on this side.
        pairs.append({FindUPIndex(i, polygon), i, height_between(polygon, i, i)});
}

PntStruct NearPoint(QPolygonF polygon, QPointF n_point, char c) {
    constexpr double factor = 600 - DELTA_X;
    const auto abscissa = [](QPointF point) { return point.x() * factor + DELTA_X; };

    const double x0 = std::abs(n_point.x()) > 1000.0 ? 0.0 : n_point.x();
    for (qsizetype i = 0; i < polygon.size() - 2; ++i) {
        const double x1 = abscissa(polygon[i]);
        const double x2 = abscissa(polygon[i + 1]);
        if (c == 'D' ? x1 <= x0 && x0 <= x2 : x2 <= x0 && x0 <= x1) {
            const double ordinate = -polygon[i].y() * factor;
            return {QPointF(x0, std::abs(ordinate) > 500.0 ? 0.0 : ordinate), int(i)};
        }
    }
    return {QPointF(), -1};
}

int f_ind(double x, double* arr, int n) {
    if (n < 2)
        return 0;
    // Starting at 1 leaves the first bracket out; resampled outlines depend on it.
    for (int i = 1; i < n - 1; ++i) {
        if (arr[i] <= x && x <= arr[i + 1])
            return i;
    }
    return x > arr[n - 2] ? n - 1 : 0;
}
