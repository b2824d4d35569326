// SPDX-FileCopyrightText: Aerolith developers
// Outlines listed as coordinate tables.
#include "airfoil/airfoil.h"
#include "support/testmain.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
const QString end_row = QStringLiteral("1.00000   0.00000 \t\n");

QString row(double x, double y) {
    return QStringLiteral("%1   %2 \t\n")
        .arg(x, 7, 'f', 5, QLatin1Char(' '))
        .arg(y, 7, 'f', 5, QLatin1Char(' '));
}

// The rows between the two of the trailing edge.
QString inner_rows(const QPolygonF& poly, int step = 1) {
    const QString title = QStringLiteral("t \t\n");
    const QString table = airfoil_table(QStringLiteral("t"), poly, step);
    if (!table.startsWith(title + end_row) || !table.endsWith(end_row) ||
        table.size() < title.size() + 2 * end_row.size())
        return QStringLiteral("no table: ") + table;
    return table.mid(title.size() + end_row.size(),
                     table.size() - title.size() - 2 * end_row.size());
}

// All points of a curve of 999, with a positive or a negative area.
QPolygonF curve(bool positive) {
    QPolygonF poly;
    for (int i = 0; i < 999; ++i) {
        const double t = 2.0 * M_PI * i / 998.0;
        poly.append(QPointF(0.49 + 0.49 * std::cos(t), (positive ? 0.1 : -0.1) * std::sin(t)));
    }
    return poly;
}

} // namespace

class tst_table : public QObject {
    Q_OBJECT
private slots:
    void rows_data();
    void rows();
    void title_data();
    void title();
    void every_ninth_data();
    void every_ninth();
    void number_texts_data();
    void number_texts();
    void random_numbers();
};

void tst_table::rows_data() {
    QTest::addColumn<QPolygonF>("poly");
    QTest::addColumn<QString>("expected");

    QTest::newRow("positive-area") << QPolygonF{{1.0, 0.0}, {0.0, 0.1}, {0.5, -0.1}}
                                   << QStringLiteral("0.00000   0.10000 \t\n"
                                                     "0.50000   -0.10000 \t\n");
    QTest::newRow("negative-area") << QPolygonF{{1.0, 0.0}, {0.0, -0.1}, {0.5, 0.1}}
                                   << QStringLiteral("0.50000   0.10000 \t\n"
                                                     "0.00000   -0.10000 \t\n");
    QTest::newRow("no-area-is-reversed") << QPolygonF{{1.0, 0.0}, {0.5, 0.0}, {0.25, 0.0}}
                                         << QStringLiteral("0.25000   0.00000 \t\n"
                                                           "0.50000   0.00000 \t\n");
    // 1e-50 is 0 in the single precision of the area.
    QTest::newRow("area-beyond-single-precision")
        << QPolygonF{{1.0, 0.0}, {0.25, 1e-50}, {0.5, 0.0}}
        << QStringLiteral("0.50000   0.00000 \t\n0.25000   0.00000 \t\n");
    QTest::newRow("area-of-nan-is-reversed")
        << QPolygonF{{1.0, 0.0}, {0.25, std::nan("")}, {0.5, 0.5}}
        << QStringLiteral("0.50000   0.50000 \t\n0.25000       nan \t\n");
    // The edge that would close the outline does not contribute to the area.
    QTest::newRow("area-of-an-open-outline")
        << QPolygonF{{1.0, 0.5}, {0.5, 0.5}, {0.0, 0.5}, {0.0, 0.0}, {0.5, -0.25}}
        << QStringLiteral("0.50000   0.50000 \t\n0.00000   0.50000 \t\n"
                          "0.00000   0.00000 \t\n0.50000   -0.25000 \t\n");
    QTest::newRow("empty") << QPolygonF() << QString();
    QTest::newRow("one-point") << QPolygonF{{0.5, 0.25}} << QString();
    QTest::newRow("two-points") << QPolygonF{{0.5, 0.25}, {0.25, 0.5}}
                                << QStringLiteral("0.25000   0.50000 \t\n");
    QTest::newRow("first-point-is-never-listed")
        << QPolygonF{{0.5, 0.0}, {0.0, 0.1}, {0.25, -0.1}}
        << QStringLiteral("0.00000   0.10000 \t\n0.25000   -0.10000 \t\n");
    QTest::newRow("limit-is-not-listed")
        << QPolygonF{{1.0, 0.0}, {0.99999, 0.1}, {0.99998, 0.2}, {0.0, 0.3}}
        << QStringLiteral("0.99998   0.20000 \t\n0.00000   0.30000 \t\n");
    QTest::newRow("just-below-the-limit")
        << QPolygonF{{1.0, 0.0}, {std::nextafter(0.99999, 0.0), 0.1}, {0.0, 0.3}}
        << QStringLiteral("0.99999   0.10000 \t\n0.00000   0.30000 \t\n");
    QTest::newRow("right-of-the-chord-is-not-listed")
        << QPolygonF{{1.0, 0.0}, {1.5, 0.1}, {infinite, 0.1}, {0.25, 0.0}}
        << QStringLiteral("0.25000   0.00000 \t\n");
    QTest::newRow("nan-abscissa-is-not-listed")
        << QPolygonF{{1.0, 0.0}, {std::nan(""), 0.1}, {0.25, 0.0}}
        << QStringLiteral("0.25000   0.00000 \t\n");
}

void tst_table::rows() {
    QFETCH(QPolygonF, poly);
    QFETCH(QString, expected);
    QCOMPARE(inner_rows(poly), expected);
}

void tst_table::title_data() {
    QTest::addColumn<QString>("title");

    QTest::newRow("pane") << QStringLiteral(" airfoil table \t\n");
    QTest::newRow("file-name") << QStringLiteral("/tmp/a.dat");
    QTest::newRow("empty") << QString();
    QTest::newRow("place-markers") << QStringLiteral("%1 %2 %L1 %99");
    QTest::newRow("other-scripts") << QStringLiteral("\u7FFC \u00FC");
}

void tst_table::title() {
    QFETCH(QString, title);
    const QPolygonF poly = {{1.0, 0.0}, {0.0, 0.1}, {0.5, -0.1}};
    QCOMPARE(airfoil_table(title, poly, 1),
             title + QStringLiteral(" \t\n") + end_row +
                 QStringLiteral("0.00000   0.10000 \t\n0.50000   -0.10000 \t\n") + end_row);
}

void tst_table::every_ninth_data() {
    QTest::addColumn<bool>("positive");

    QTest::newRow("in-order") << true;
    QTest::newRow("reversed") << false;
}

void tst_table::every_ninth() {
    QFETCH(bool, positive);
    const QPolygonF poly = curve(positive);
    QString expected;
    if (positive) {
        for (int j = 1; j <= 991; j += 9)
            expected += row(poly[j].x(), poly[j].y());
    } else {
        for (int j = 998; j >= 8; j -= 9)
            expected += row(poly[j].x(), poly[j].y());
    }
    QCOMPARE(inner_rows(poly, 9), expected);
}

void tst_table::number_texts_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("negative-zero") << -0.0 << QStringLiteral("0.00000");
    QTest::newRow("negative-rounded-to-zero") << -1e-7 << QStringLiteral("-0.00000");
    QTest::newRow("tie-away-from-zero") << 0.015625 << QStringLiteral("0.01563");
    QTest::newRow("negative-tie") << -0.015625 << QStringLiteral("-0.01563");
    QTest::newRow("carry") << 0.999995000001 << QStringLiteral("1.00000");
    QTest::newRow("wider-than-the-field") << -12345.5 << QStringLiteral("-12345.50000");
    QTest::newRow("nan") << std::nan("") << QStringLiteral("    nan");
    QTest::newRow("negative-nan") << std::copysign(std::nan(""), -1.0) << QStringLiteral("    nan");
    QTest::newRow("infinite") << infinite << QStringLiteral("    inf");
    QTest::newRow("negative-infinite") << -infinite << QStringLiteral("   -inf");
    QTest::newRow("least-double") << 4.9e-324 << QStringLiteral("0.00000");
    QTest::newRow("power-of-two-beyond-64-bits")
        << 36893488147419103232.0 << QStringLiteral("36893488147419103232.00000");
}

void tst_table::number_texts() {
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(inner_rows({{1.0, 0.0}, {0.5, value}}),
             QStringLiteral("0.50000   ") + text + QStringLiteral(" \t\n"));
}

// Doubles of any bits, and coordinates within the range of sections.
void tst_table::random_numbers() {
    QRandomGenerator random(5);
    QList<double> values = {0.0,
                            -0.0,
                            1e300,
                            -1e300,
                            1.7976931348623157e308,
                            2.5,
                            0.5,
                            -0.5,
                            5e-6,
                            4.9999999999999996e-6,
                            9999.999995,
                            9999.99999500001,
                            10000.0};
    for (int i = 0; i < 6000; ++i) {
        const quint64 bits = random.generate64();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        values += value;
        values += (random.generateDouble() - 0.5) * 4.0;
        // Exact and near ties in the last decimal.
        values += (double(random.bounded(200000)) + 0.5) * 1e-5;
        values += double(random.bounded(65536)) / 65536.0;
        values += (random.generateDouble() - 0.5) * 3e4;
        const double half = (double(random.bounded(1'000'000'000)) + 0.5) * 1e-5;
        values += {std::nextafter(half, 0.0), half, std::nextafter(half, 1e9), -half};
    }
    for (const double value : std::as_const(values)) {
        QCOMPARE(inner_rows({{1.0, 0.0}, {0.25, value}}), row(0.25, value));
        if (value < 0.99999)
            QCOMPARE(inner_rows({{1.0, 0.0}, {value, 0.25}}), row(value, 0.25));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_table)
#include "tst_table.moc"
