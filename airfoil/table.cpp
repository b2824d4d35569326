// SPDX-FileCopyrightText: Aerolith developers
// Outlines as coordinate tables.
#include "airfoil/airfoil.h"

#include "numerics/transform.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

// Five decimals as the toolkit gives them, at least seven characters. It goes to the last digit
// of any number; where the decimals behind the fifth are not about one half, this finds the
// same text in a fraction of the time.
void append_column(QString& table, double value) {
    constexpr double longest = 1e4;
    constexpr double about = 1e-6;
    const double scaled = std::abs(value) * 1e5;
    const bool is_plain =
        std::abs(value) < longest && std::abs(scaled - std::floor(scaled) - 0.5) > about;
    if (!is_plain) {
        table += QString::number(value, 'f', 5).rightJustified(7, QLatin1Char(' '));
        return;
    }
    char digits[12];
    char* const end = std::end(digits);
    char* c = end;
    auto rest = quint32(scaled + 0.5);
    for (int i = 0; i <= 5 || rest != 0; ++i) {
        if (i == 5)
            *--c = '.';
        *--c = char('0' + rest % 10);
        rest /= 10;
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
