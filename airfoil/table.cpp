// SPDX-FileCopyrightText: Aerolith developers
// Outlines as coordinate tables.
#include "airfoil/airfoil.h"

#include "numerics/transform.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

// Five decimals, at least seven characters. Exact ties are rounded away from zero, as Qt does; the
// standard library rounds them to even.
void append_column(QString& table, double value) {
    constexpr double longest = 1e4;
    const double scaled = std::abs(value) * 1e5;
    if (!(std::abs(value) < longest) || scaled - std::floor(scaled) == 0.5) {
        table += QString::number(value, 'f', 5).rightJustified(7, QLatin1Char(' '));
        return;
    }
    // Drops the sign of a negative zero.
    const double printed = value == 0.0 ? 0.0 : value;
    char text[16];
    const auto end = std::to_chars(text, std::end(text), printed, std::chars_format::fixed, 5).ptr;
    table += QLatin1String(text, end - text);
}

void append_row(QString& table, double x, double y) {
    append_column(table, x);
    table += QLatin1String("   ");
    append_column(table, y);
    table += QLatin1String(" \t\n");
}

} // namespace

QString airfoil_table(const QString& title, const QPolygonF& poly, int step) {
    // Points this close to the trailing edge are replaced by the exact trailing edge.
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
