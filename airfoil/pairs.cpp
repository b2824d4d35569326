// SPDX-FileCopyrightText: Aerolith developers
// Nose, crests and the pairs of upper and lower points of an outline.
#include "airfoil/airfoil.h"

#include <QList>
#include <QMessageBox>

#include <algorithm>
#include <cmath>

namespace {

// The range in which the nose is searched for in an outline of N_airfoil points.
constexpr qsizetype nose_begin = 450;
constexpr qsizetype nose_end = 550;

bool has_point(const QPolygonF& polygon, qsizetype i) {
    return i >= 0 && i < polygon.size();
}

// The end of an index range of the analysis, limited to the size of the outline.
qsizetype bounded_end(const QPolygonF& polygon, int end) {
    return std::min<qsizetype>(end, polygon.size());
}

double height_between(const QPolygonF& polygon, int i, int j) {
    if (!has_point(polygon, i) || !has_point(polygon, j))
        return 0.0;
    return std::abs(polygon.at(i).y() - polygon.at(j).y());
}

void warn_no_airfoil() {
    QMessageBox box;
    box.setText(QStringLiteral("Airfoil not present yet - IMPORT first"));
    box.exec();
}

} // namespace

void FindNoseTopIndex(ParaStruct* p, QPolygonF polygon) {
    if (polygon.isEmpty()) {
        warn_no_airfoil();
        p->NoseIndex = 500;
        return;
    }
    double least_x = 1e6;
    for (qsizetype i = nose_begin; i < std::min(nose_end, polygon.size()); ++i) {
        if (polygon.at(i).x() < least_x) {
            least_x = polygon.at(i).x();
            p->NoseIndex = int(i);
        }
    }
    double greatest_y = -100.0;
    for (qsizetype i = 0; i < bounded_end(polygon, p->NoseIndex); ++i) {
        if (polygon.at(i).y() > greatest_y) {
            greatest_y = polygon.at(i).y();
            p->TopIndexUp = int(i);
        }
    }
    double least_y = 100.0;
    for (qsizetype i = std::max(p->NoseIndex, 0); i < bounded_end(polygon, N_airfoil); ++i) {
        if (polygon.at(i).y() < least_y) {
            least_y = polygon.at(i).y();
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
    const double x0 = polygon.at(i).x();
    const qsizetype end = bounded_end(polygon, GetDataStruct()->NoseIndex);
    int index = 0;
    for (qsizetype k = 0; k < end && polygon.at(k).x() > x0; ++k)
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
    const double x0 = polygon.at(i).x();
    const qsizetype end = bounded_end(polygon, N_airfoil);
    int index = 0;
    for (qsizetype k = std::max(GetDataStruct()->NoseIndex, 0); k < end && x0 > polygon.at(k).x();
         ++k)
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
        // On this side the height is measured from the point to itself, so it is 0.
        pairs.append({FindUPIndex(i, polygon), i, height_between(polygon, i, i)});
}
