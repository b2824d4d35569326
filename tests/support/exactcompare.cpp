// SPDX-FileCopyrightText: Aerolith developers
// Comparison of floating-point values to the last bit.
#include "support/exactcompare.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace {

quint64 bits_of(double value) {
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// Maps doubles to integers so that neighbours differ by 1 and both zeros coincide.
qint64 ordered(double value) {
    const auto bits = qint64(bits_of(value));
    return bits < 0 ? std::numeric_limits<qint64>::min() - bits : bits;
}

} // namespace

quint64 ulp_distance(double a, double b) {
    if (std::isnan(a) || std::isnan(b))
        return std::numeric_limits<quint64>::max();
    const qint64 x = ordered(a);
    const qint64 y = ordered(b);
    return x > y ? quint64(x) - quint64(y) : quint64(y) - quint64(x);
}

bool same_bits(double a, double b) {
    return bits_of(a) == bits_of(b);
}

bool same_bits(QPointF a, QPointF b) {
    return same_bits(a.x(), b.x()) && same_bits(a.y(), b.y());
}

bool same_bits(const QPolygonF& a, const QPolygonF& b) {
    return first_difference(a, b).isEmpty();
}

double max_or_nan(double a, double b) {
    return std::isnan(a) || a > b ? a : b;
}

QString exact_text(double value) {
    // Qt's own formatting has no hexadecimal floating point.
    char hexadecimal[32];
    std::snprintf(hexadecimal, sizeof hexadecimal, "%a", value);
    return QStringLiteral("%1 (%2)").arg(QString::number(value, 'g', 17),
                                         QString::fromLatin1(hexadecimal));
}

QString exact_text(QPointF value) {
    return QStringLiteral("(%1; %2)").arg(exact_text(value.x()), exact_text(value.y()));
}

QString first_difference(const QPolygonF& actual, const QPolygonF& expected) {
    if (actual.size() != expected.size())
        return QStringLiteral("%1 points, not %2").arg(actual.size()).arg(expected.size());
    for (qsizetype i = 0; i < actual.size(); ++i) {
        if (!same_bits(actual[i], expected[i]))
            return QStringLiteral("point %1: %2 is not %3")
                .arg(QString::number(i), exact_text(actual[i]), exact_text(expected[i]));
    }
    return {};
}
