// SPDX-FileCopyrightText: Aerolith developers
// Outlines as coordinate tables.
#include "airfoil/airfoil.h"

#include "numerics/transform.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

// Five decimals as the toolkit gives them, at least seven characters. It forms every digit of
// any number. This takes a fraction of the time: the product is rounded once, and never over
// one half, so it tells to which side to round unless it is one half itself.
void append_column(QString& table, double value) {
    constexpr double longest = 1e4;
    const double scaled = std::abs(value) * 1e5;
    const double whole = std::floor(scaled);
    const double rest = scaled - whole;
    if (!(std::abs(value) < longest) || rest == 0.5) {
        table += QString::number(value, 'f', 5).rightJustified(7, QLatin1Char(' '));
        return;
    }
    char digits[12];
    char* const end = std::end(digits);
    char* c = end;
    quint32 number = quint32(whole) + (rest > 0.5 ? 1 : 0);
    for (int i = 0; i <= 5 || number != 0; ++i) {
        if (i == 5)
            *--c = '.';
        *--c = char('0' + number % 10);
        number /= 10;
    }
    if (value < 0.0)
        *--c = '-';
    table += QLatin1String(c, end - c);
}

void append_row(QString& table, double x, double y) {
    append_column(table, x);
    table += QLatin1String("   ");
    append_column(table, y);
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
