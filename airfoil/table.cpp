// SPDX-FileCopyrightText: Aerolith developers
// Outlines as coordinate tables.
#include "airfoil/airfoil.h"

#include "numerics/transform.h"

#include <algorithm>

namespace {

QString column(double value) {
    return QString::number(value, 'f', 5).rightJustified(7, QLatin1Char(' '));
}

void append_row(QString& table, double x, double y) {
    table += column(x);
    table += QLatin1String("   ");
    table += column(y);
    table += QLatin1String(" \t\n");
}

} // namespace

QString airfoil_table(const QString& title, const QPolygonF& poly, int step) {
    // What lies this close to the trailing edge is replaced by its exact point.
    constexpr double xmax = 0.99999;

    const int stride = std::max(step, 1);
    constexpr qsizetype usual_row = 20;

    QString table;
    table.reserve(title.size() + usual_row * (poly.size() / stride + 3));
    table += title + QLatin1String(" \t\n");
    const auto append_point = [&](qsizetype j) {
        if (xmax > poly[j].x())
            append_row(table, poly[j].x(), poly[j].y());
    };
    append_row(table, 1.0, 0.0);
    if (PolygonSquare(poly) > 0.0) {
        for (qsizetype j = 1; j < poly.size(); j += stride)
            append_point(j);
    } else {
        for (qsizetype j = poly.size() - 1; j > 0; j -= stride)
            append_point(j);
    }
    append_row(table, 1.0, 0.0);
    return table;
}
