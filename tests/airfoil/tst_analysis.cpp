// SPDX-FileCopyrightText: Aerolith developers
// Measuring outlines: normalising, thickness, brackets, segments under an abscissa.
#include "airfoil/airfoil.h"
#include "baseline/reader.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QRandomGenerator>
#include <QTest>
#include <QTextEdit>

#include <cmath>
#include <limits>

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
const double no_number = std::nan("");

bool same_or_both_nan(double a, double b) {
    return same_bits(a, b) || (std::isnan(a) && std::isnan(b));
}

// Like first_difference(), but all NaN are equal.
QString difference_of(const QPolygonF& actual, const QPolygonF& expected) {
    if (actual.size() != expected.size())
        return QStringLiteral("%1 points, not %2").arg(actual.size()).arg(expected.size());
    for (qsizetype i = 0; i < actual.size(); ++i) {
        if (!same_or_both_nan(actual[i].x(), expected[i].x()) ||
            !same_or_both_nan(actual[i].y(), expected[i].y()))
            return QStringLiteral("point %1: %2 is not %3")
                .arg(QString::number(i), exact_text(actual[i]), exact_text(expected[i]));
    }
    return {};
}

double any_double(QRandomGenerator& random) {
    static const double special[] = {0.0,       -0.0,     1.0,      -1.0,      0.5,
                                     10000.0,   -10000.0, 1.0e30,   -1.0e-300, infinite,
                                     -infinite, 1e300,    no_number};
    if (random.bounded(6) == 0)
        return special[random.bounded(int(std::size(special)))];
    return random.generateDouble() * 2.0 - 0.5;
}

} // namespace

class tst_analysis : public QObject {
    Q_OBJECT
private slots:
    void Normalize_airfoil2_data();
    void Normalize_airfoil2();
    void normalised_order_of_operations();
    void normalised_nose_lost_by_rounding();
    void normalised_random();
    void FindThickness_data();
    void FindThickness();
    void FindThickness_leaves_the_outline();
    void NearPoint_data();
    void NearPoint();
    void f_ind_data();
    void f_ind();
    void FillPolygon_data();
    void FillPolygon();
};

void tst_analysis::Normalize_airfoil2_data() {
    QTest::addColumn<QPolygonF>("poly");
    QTest::addColumn<int>("rot");
    QTest::addColumn<QPolygonF>("expected");

    QTest::newRow("shifted-section") << QPolygonF{{2.0, 0.0}, {1.0, 0.1}, {2.0, 0.0}} << 1
                                     << QPolygonF{{1.0, 0.0}, {0.0, 0.1}, {1.0, 0.0}};
    QTest::newRow("mirrored") << QPolygonF{{2.0, 0.0}, {1.0, 0.1}, {1.5, -0.25}} << -1
                              << QPolygonF{{1.0, 0.0}, {0.0, -0.1}, {0.5, 0.25}};
    QTest::newRow("scaled-to-unit-chord") << QPolygonF{{100.0, 0.0}, {0.0, 50.0}, {100.0, -25.0}}
                                          << 1 << QPolygonF{{1.0, 0.0}, {0.0, 0.5}, {1.0, -0.25}};
    QTest::newRow("first-point-to-the-chord-end")
        << QPolygonF{{1.0, 0.5}, {0.0, 0.5}, {1.0, 0.25}} << 1
        << QPolygonF{{1.0, 0.0}, {0.0, 0.0}, {1.0, -0.25}};
    QTest::newRow("points-behind-the-first-are-dropped")
        << QPolygonF{{1.0, 0.0}, {1.25, 0.1}, {0.0, 0.5}, {2.0, 0.0}} << 1
        << QPolygonF{{1.0, 0.0}, {0.5, 0.25}};
    QTest::newRow("nose-first") << QPolygonF{{0.0, 0.0}, {0.5, 0.1}, {1.0, 0.0}} << 1
                                << QPolygonF{{1.0, 0.0}};
    QTest::newRow("empty") << QPolygonF() << 1 << QPolygonF();
    QTest::newRow("empty-mirrored") << QPolygonF() << -1 << QPolygonF();
    QTest::newRow("one-point") << QPolygonF{{0.5, 0.25}} << 1 << QPolygonF{{no_number, no_number}};
    QTest::newRow("zero-width") << QPolygonF{{0.5, 0.0}, {0.5, 0.25}} << 1
                                << QPolygonF{{no_number, no_number}, {no_number, no_number}};
    QTest::newRow("nan-abscissa-stays") << QPolygonF{{1.0, 0.0}, {no_number, 0.5}, {0.0, 0.25}} << 1
                                        << QPolygonF{{1.0, 0.0}, {no_number, 0.5}, {0.0, 0.25}};
    QTest::newRow("nan-first") << QPolygonF{{no_number, 0.0}, {1.0, 0.5}, {0.0, 0.25}} << 1
                               << QPolygonF{{no_number, 0.0}, {no_number, 0.5}, {no_number, 0.25}};
    QTest::newRow("infinite-abscissa") << QPolygonF{{1.0, 0.0}, {infinite, 0.5}, {0.0, 0.25}} << 1
                                       << QPolygonF{{1.0, 0.0}, {no_number, 0.0}, {1.0, 0.0}};
    // The search for the extent starts at 10000 and -10000.
    QTest::newRow("beyond-ten-thousand")
        << QPolygonF{{20000.0, 0.0}, {15000.0, 5000.0}, {12500.0, 0.0}} << 1
        << QPolygonF{{1.0, 0.0}, {0.5, 0.5}, {0.25, 0.0}};
    QTest::newRow("beyond-minus-ten-thousand") << QPolygonF{{-20000.0, 0.0}, {-30000.0, 10000.0}}
                                               << 1 << QPolygonF{{1.0, 0.0}, {0.5, 0.5}};
    QTest::newRow("factor-of-zero")
        << QPolygonF{{1.0, 0.5}, {0.0, 0.25}} << 0 << QPolygonF{{1.0, 0.0}, {0.0, 0.0}};
}

void tst_analysis::Normalize_airfoil2() {
    QFETCH(QPolygonF, poly);
    QFETCH(int, rot);
    QFETCH(QPolygonF, expected);
    QCOMPARE(difference_of(::Normalize_airfoil2(poly, rot), expected), QString());
}

// Other orders end with ...c6 or ...c7.
void tst_analysis::normalised_order_of_operations() {
    const QPolygonF outline = ::Normalize_airfoil2({{0.47, 0.0}, {-0.25, 0.0}, {0.1, 0.0}}, 1);
    QCOMPARE(outline.size(), 3);
    COMPARE_BITS(outline[2].x(), 0x1.f1c71c71c71c8p-2);
}

// The nose is at -2^-52 after scaling and is dropped.
void tst_analysis::normalised_nose_lost_by_rounding() {
    const QPolygonF outline = ::Normalize_airfoil2({{1.0, 0.0}, {-4e-6, 0.1}, {0.5, 0.0}}, 1);
    QCOMPARE(outline.size(), 2);
    COMPARE_BITS(outline.first(), QPointF(1.0, 0.0));
}

void tst_analysis::normalised_random() {
    QRandomGenerator random(42);
    for (int i = 0; i < 5000; ++i) {
        QPolygonF poly;
        for (int k = int(random.bounded(8)); k > 0; --k)
            poly.append(QPointF(any_double(random), any_double(random)));
        const int rot = random.bounded(2) == 0 ? 1 : -1;
        const QString difference =
            difference_of(::Normalize_airfoil2(poly, rot), baseline::Normalize_airfoil2(poly, rot));
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
}

void tst_analysis::FindThickness_data() {
    QTest::addColumn<QPolygonF>("poly");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QString>("crests");

    QTest::newRow("symmetric")
        << QPolygonF{{1.0, 0.0}, {0.3, 0.06}, {0.0, 0.0}, {0.3, -0.06}, {1.0, 0.0}}
        << QStringLiteral(" Thickness: 12.00  at  30.00 %")
        << QStringLiteral(" Top: at 30.00   Bottom: at: 30.00 ");
    QTest::newRow("crests-apart") << QPolygonF{{1.0, 0.0}, {0.4, 0.1}, {0.0, 0.0}, {0.2, -0.05}}
                                  << QStringLiteral(" Thickness: 15.00  at  30.00 %")
                                  << QStringLiteral(" Top: at 40.00   Bottom: at: 20.00 ");
    // Not the distance between the sides: here it is 0.
    QTest::newRow("overall-height") << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.5}}
                                    << QStringLiteral(" Thickness: 50.00  at  50.00 %")
                                    << QStringLiteral(" Top: at 0.00   Bottom: at: 100.00 ");
    QTest::newRow("first-of-equal-extremes")
        << QPolygonF{{1.0, 0.0}, {0.75, 0.1}, {0.5, 0.1}, {0.25, -0.1}, {0.125, -0.1}}
        << QStringLiteral(" Thickness: 20.00  at  50.00 %")
        << QStringLiteral(" Top: at 75.00   Bottom: at: 25.00 ");
    QTest::newRow("empty") << QPolygonF() << QString() << QString();
    QTest::newRow("one-point") << QPolygonF{{0.25, 0.5}}
                               << QStringLiteral(" Thickness: 0.00  at  25.00 %")
                               << QStringLiteral(" Top: at 25.00   Bottom: at: 25.00 ");
    QTest::newRow("negative-stations")
        << QPolygonF{{-0.5, 0.1}, {-0.25, 0.0}} << QStringLiteral(" Thickness: 10.00  at  -37.50 %")
        << QStringLiteral(" Top: at -50.00   Bottom: at: -25.00 ");
    QTest::newRow("negative-zero")
        << QPolygonF{{-0.0, 0.0}} << QStringLiteral(" Thickness: 0.00  at  0.00 %")
        << QStringLiteral(" Top: at 0.00   Bottom: at: 0.00 ");
    QTest::newRow("tie-away-from-zero") << QPolygonF{{0.00125, 0.0}, {0.00125, 0.00125}}
                                        << QStringLiteral(" Thickness: 0.13  at  0.13 %")
                                        << QStringLiteral(" Top: at 0.13   Bottom: at: 0.13 ");
    QTest::newRow("nan-everywhere") << QPolygonF{{no_number, no_number}, {0.5, no_number}}
                                    << QStringLiteral(" Thickness: -2000000.00  at  nan %")
                                    << QStringLiteral(" Top: at nan   Bottom: at: nan ");
    QTest::newRow("nan-among-numbers")
        << QPolygonF{{1.0, no_number}, {0.5, 0.125}, {0.25, -0.125}, {0.0, no_number}}
        << QStringLiteral(" Thickness: 25.00  at  37.50 %")
        << QStringLiteral(" Top: at 50.00   Bottom: at: 25.00 ");
    QTest::newRow("infinite") << QPolygonF{{infinite, infinite}, {0.5, 0.0}}
                              << QStringLiteral(" Thickness: inf  at  inf %")
                              << QStringLiteral(" Top: at inf   Bottom: at: 50.00 ");
    // The search for the extremes starts at 10000 and -10000 on point 0.
    QTest::newRow("above-ten-thousand") << QPolygonF{{0.25, 20000.0}, {0.5, 30000.0}}
                                        << QStringLiteral(" Thickness: 2000000.00  at  37.50 %")
                                        << QStringLiteral(" Top: at 50.00   Bottom: at: 25.00 ");
}

void tst_analysis::FindThickness() {
    QFETCH(QPolygonF, poly);
    QFETCH(QString, height);
    QFETCH(QString, crests);
    QString texts[2] = {QStringLiteral("old"), QStringLiteral("old")};
    ::FindThickness(&poly, texts);
    QCOMPARE(texts[0], height);
    QCOMPARE(texts[1], crests);
}

void tst_analysis::FindThickness_leaves_the_outline() {
    const QPolygonF before = {{1.0, 0.0}, {0.3, 0.06}, {0.0, 0.0}};
    QPolygonF outline = before;
    QString texts[2];
    ::FindThickness(&outline, texts);
    QCOMPARE(first_difference(outline, before), QString());
}

void tst_analysis::NearPoint_data() {
    QTest::addColumn<QPolygonF>("poly");
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<char>("side");
    QTest::addColumn<int>("index");
    QTest::addColumn<QPointF>("found");

    // Abscissas 600, 320, 40, 320 and 600 pixels.
    const QPolygonF section = {{1.0, 0.125}, {0.5, 0.25}, {0.0, 0.0}, {0.5, -0.5}, {1.0, 0.0}};
    const QPointF none;
    QTest::newRow("upper") << section << QPointF(100.0, 7.0) << 'U' << 1 << QPointF(100.0, -140.0);
    QTest::newRow("upper-aft") << section << QPointF(400.0, 0.0) << 'U' << 0
                               << QPointF(400.0, -70.0);
    QTest::newRow("lower") << section << QPointF(100.0, 7.0) << 'D' << 2 << QPointF(100.0, 0.0);
    QTest::newRow("small-letter-is-upper")
        << section << QPointF(100.0, 0.0) << 'd' << 1 << QPointF(100.0, -140.0);
    QTest::newRow("last-segment-is-not-searched")
        << section << QPointF(400.0, 0.0) << 'D' << -1 << none;
    QTest::newRow("first-of-two-at-a-point")
        << section << QPointF(320.0, 0.0) << 'U' << 0 << QPointF(320.0, -70.0);
    QTest::newRow("left-end") << section << QPointF(40.0, 0.0) << 'U' << 1 << QPointF(40.0, -140.0);
    QTest::newRow("right-end") << section << QPointF(600.0, 0.0) << 'U' << 0
                               << QPointF(600.0, -70.0);
    QTest::newRow("right-of-all") << section << QPointF(601.0, 0.0) << 'U' << -1 << none;
    QTest::newRow("left-of-all") << section << QPointF(39.0, 0.0) << 'U' << -1 << none;
    QTest::newRow("nan") << section << QPointF(no_number, 0.0) << 'U' << -1 << none;
    QTest::newRow("empty") << QPolygonF() << QPointF(100.0, 0.0) << 'U' << -1 << none;
    QTest::newRow("one-point") << QPolygonF{{1.0, 0.0}} << QPointF(600.0, 0.0) << 'U' << -1 << none;
    QTest::newRow("two-points") << QPolygonF{{1.0, 0.0}, {0.0, 0.0}} << QPointF(100.0, 0.0) << 'U'
                                << -1 << none;
    QTest::newRow("three-points") << QPolygonF{{1.0, 0.25}, {0.0, 0.0}, {1.0, 0.0}}
                                  << QPointF(100.0, 0.0) << 'U' << 0 << QPointF(100.0, -140.0);
    // Abscissas 600, -520 and 600: 0 lies between.
    const QPolygonF wide = {{1.0, 0.25}, {-1.0, 0.0}, {1.0, 0.0}};
    QTest::newRow("abscissa-beyond-1000-is-0")
        << wide << QPointF(1000.5, 0.0) << 'U' << 0 << QPointF(0.0, -140.0);
    QTest::newRow("abscissa-below-minus-1000-is-0")
        << wide << QPointF(-1000.5, 0.0) << 'U' << 0 << QPointF(0.0, -140.0);
    QTest::newRow("abscissa-of-1000-stays") << wide << QPointF(1000.0, 0.0) << 'U' << -1 << none;
    QTest::newRow("ordinate-of-the-point-is-not-used")
        << wide << QPointF(10.0, 5000.0) << 'U' << 0 << QPointF(10.0, -140.0);
    QTest::newRow("ordinate-beyond-500-is-0")
        << QPolygonF{{1.0, 0.9}, {0.0, 0.0}, {1.0, 0.0}} << QPointF(100.0, 0.0) << 'U' << 0
        << QPointF(100.0, 0.0);
    QTest::newRow("ordinate-below-minus-500-is-0")
        << QPolygonF{{1.0, -0.9}, {0.0, 0.0}, {1.0, 0.0}} << QPointF(100.0, 0.0) << 'U' << 0
        << QPointF(100.0, 0.0);
    QTest::newRow("ordinate-within-500-stays")
        << QPolygonF{{1.0, -0.875}, {0.0, 0.0}, {1.0, 0.0}} << QPointF(100.0, 0.0) << 'U' << 0
        << QPointF(100.0, 490.0);
}

void tst_analysis::NearPoint() {
    QFETCH(QPolygonF, poly);
    QFETCH(QPointF, at);
    QFETCH(char, side);
    QFETCH(int, index);
    QFETCH(QPointF, found);
    const PntStruct result = ::NearPoint(poly, at, side);
    QCOMPARE(result.pnt_index, index);
    if (index < 0)
        return;
    COMPARE_BITS(result.pnt.x(), found.x());
    COMPARE_BITS(result.pnt.y() + 0.0, found.y());
}

void tst_analysis::f_ind_data() {
    QTest::addColumn<QList<double>>("array");
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("expected");

    const QList<double> tenths = {0.0, 0.1, 0.2, 0.3};
    QTest::newRow("first-bracket-is-not-searched") << tenths << 0.05 << 0;
    QTest::newRow("second-bracket") << tenths << 0.15 << 1;
    QTest::newRow("third-bracket") << tenths << 0.25 << 2;
    QTest::newRow("right-of-all") << tenths << 0.5 << 3;
    QTest::newRow("left-of-all") << tenths << -1.0 << 0;
    QTest::newRow("at-a-shared-end") << tenths << 0.2 << 1;
    QTest::newRow("at-the-second") << tenths << 0.1 << 1;
    QTest::newRow("at-the-last") << tenths << 0.3 << 2;
    QTest::newRow("nan") << tenths << no_number << 0;
    QTest::newRow("infinite") << tenths << infinite << 3;
    QTest::newRow("empty") << QList<double>() << 0.5 << 0;
    QTest::newRow("one-value") << QList<double>{0.0} << 0.5 << 0;
    QTest::newRow("two-values-right-of-the-first") << QList<double>{0.0, 1.0} << 0.5 << 1;
    QTest::newRow("two-values-at-the-first") << QList<double>{0.0, 1.0} << 0.0 << 0;
    QTest::newRow("three-values") << QList<double>{0.0, 1.0, 2.0} << 1.5 << 1;
    QTest::newRow("three-values-in-the-first") << QList<double>{0.0, 1.0, 2.0} << 0.5 << 0;
    QTest::newRow("equal-values") << QList<double>{1.0, 1.0, 1.0, 1.0} << 1.0 << 1;
}

void tst_analysis::f_ind() {
    QFETCH(QList<double>, array);
    QFETCH(double, x);
    QFETCH(int, expected);
    QCOMPARE(::f_ind(x, array.data(), int(array.size())), expected);
}

void tst_analysis::FillPolygon_data() {
    QTest::addColumn<QPolygonF>("poly");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QPolygonF() << QString();
    QTest::newRow("points") << QPolygonF{{1.0, 0.0}, {0.5, -0.25}, {0.123456, 12.3456}}
                            << QStringLiteral("1.000000  0.000000\n0.500000  -0.250000\n"
                                              "0.123400  12.345000");
    QTest::newRow("odd-writings") << QPolygonF{{1e-5, 12345.678}, {no_number, -infinite}}
                                  << QStringLiteral("1e-05.000000  12345..00000\n"
                                                    "nan.000000  -inf.000000");
}

void tst_analysis::FillPolygon() {
    QFETCH(QPolygonF, poly);
    QFETCH(QString, text);
    QTextEdit edit;
    edit.setPlainText(QStringLiteral("old\ntext"));
    ::FillPolygon(poly, &edit);
    QCOMPARE(edit.toPlainText(), text);
}

AEROLITH_TEST_MAIN(tst_analysis)
#include "tst_analysis.moc"
