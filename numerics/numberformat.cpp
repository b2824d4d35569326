// SPDX-FileCopyrightText: Aerolith developers
// Number texts.
#include "numerics/transform.h"

#include <algorithm>
#include <cmath>

QString R_round2(double x) {
    constexpr double beyond_64_bits = 9223372036854775808.0;
    const double hundredfold = x * 100.0;
    const bool fits = std::abs(hundredfold) < beyond_64_bits;
    const double cut = fits ? double(qint64(hundredfold)) : hundredfold;
    return QStringLiteral("%L6").arg(cut * 0.01, 0, 'G', 6, QLatin1Char(' '));
}

QString I_out(long n) {
    return QStringLiteral("%L4").arg(double(n), 0, 'f', 0, QLatin1Char(' '));
}

QString R_out6(double x) {
    const QString s = QString::number(x, 'g', 6);
    const qsizetype dot = s.indexOf(QLatin1Char('.'));
    if (dot < 0)
        return s + QStringLiteral(".000000");
    QString fraction = QStringLiteral("0.00000");
    // The bound is a position in the text, not a number of decimals.
    const qsizetype end = std::min<qsizetype>(s.size(), 6);
    for (qsizetype i = dot; i < end; ++i)
        fraction[i - dot] = s[i];
    return s.left(dot) + fraction;
}
