// SPDX-FileCopyrightText: Aerolith developers
// Comparison of floating-point values bit for bit. The comparison of Qt Test treats neighbouring
// doubles, points and polygons as equal.
#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QString>
#include <QTest>

/// Distance of two doubles in units in the last place; a NaN is infinitely far from
/// everything, and the two zeros are equal.
quint64 ulp_distance(double a, double b);

/// Whether two doubles have the same bits (so -0 and 0 differ, a NaN equals itself).
bool same_bits(double a, double b);
bool same_bits(QPointF a, QPointF b);
bool same_bits(const QPolygonF& a, const QPolygonF& b);

/// Decimal and hexadecimal notation of a value, for messages.
QString exact_text(double value);
QString exact_text(QPointF value);

/// The greater value, or NaN if either is one: std::max() would drop it.
double max_or_nan(double a, double b);

/// Where two polygons first differ; empty if they are equal.
QString first_difference(const QPolygonF& actual, const QPolygonF& expected);

/// Fails the test unless the two doubles or points have the same bits.
#define COMPARE_BITS(actual, expected)                                                             \
    do {                                                                                           \
        const auto actual_value = (actual);                                                        \
        const decltype(actual_value) expected_value = (expected);                                  \
        QVERIFY2(same_bits(actual_value, expected_value),                                          \
                 qPrintable(exact_text(actual_value) + QStringLiteral(" is not ") +                \
                            exact_text(expected_value)));                                          \
    } while (false)

/// Fails the test unless the two doubles are at most @p ulps apart.
#define COMPARE_ULP(actual, expected, ulps)                                                        \
    do {                                                                                           \
        const double actual_value = (actual);                                                      \
        const double expected_value = (expected);                                                  \
        QVERIFY2(ulp_distance(actual_value, expected_value) <= quint64(ulps),                      \
                 qPrintable(exact_text(actual_value) + QStringLiteral(" is not ") +                \
                            exact_text(expected_value)));                                          \
    } while (false)

/// Fails the test unless the two doubles differ by at most @p tolerance.
#define COMPARE_NEAR(actual, expected, tolerance)                                                  \
    do {                                                                                           \
        const double actual_value = (actual);                                                      \
        const double expected_value = (expected);                                                  \
        QVERIFY2(qAbs(actual_value - expected_value) <= (tolerance),                               \
                 qPrintable(exact_text(actual_value) + QStringLiteral(" is not ") +                \
                            exact_text(expected_value)));                                          \
    } while (false)

/// Fails the test unless two polygons have the same bits.
#define COMPARE_POLYGON_BITS(actual, expected)                                                     \
    do {                                                                                           \
        const QString difference = first_difference((actual), (expected));                         \
        QVERIFY2(difference.isEmpty(), qPrintable(difference));                                    \
    } while (false)
