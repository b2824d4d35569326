// SPDX-FileCopyrightText: Aerolith developers
// Profiles with given counts.
#include "sections/lep_points.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "tables/arrange.h"
#include "tables/write.h"

#include <QTest>

#include <cmath>

using sections::LepPoints;
using tables::Openings;
using tables::Table;

namespace {

constexpr int half = 40;

double height(double x) {
    return 0.08 * (1.5 * std::sqrt(x) - x - 0.5 * x * x);
}

// A cambered section; sqrt(x) grows by even steps.
Table section(std::optional<Openings> openings) {
    Table table;
    table.title = QStringLiteral("Rib");
    table.openings = openings;
    for (int i = -half; i <= half; ++i) {
        const double x = double(i * i) / (half * half);
        table.points << QPointF(x, 0.1 * x * (1.0 - x) + (i < 0 ? height(x) : -height(x)));
        table.lines.push_back(i);
    }
    return table;
}

} // namespace

class tst_lep_points : public QObject {
    Q_OBJECT
private slots:
    void counts_data();
    void counts();
    void same_counts_same_rows();
    void refused_data();
    void refused();
};

void tst_lep_points::counts_data() {
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("end");
    QTest::addColumn<int>("upper");
    QTest::addColumn<int>("intake");
    QTest::addColumn<int>("lower");

    QTest::newRow("usual") << 2.5 << 7.5 << 58 << 18 << 79;
    QTest::newRow("at rows") << 6.25 << 25.0 << 50 << 10 << 30;
    QTest::newRow("from the nose") << 0.0 << 5.0 << 40 << 10 << 30;
    QTest::newRow("closed") << 0.0 << 0.0 << 60 << 1 << 60;
    QTest::newRow("to the trailing edge") << 90.0 << 100.0 << 60 << 9 << 1;
    QTest::newRow("few") << 2.5 << 7.5 << 4 << 2 << 2;
    QTest::newRow("most") << 2.5 << 7.5 << 300 << 102 << 100;
}

void tst_lep_points::counts() {
    QFETCH(double, start);
    QFETCH(double, end);
    QFETCH(int, upper);
    QFETCH(int, intake);
    QFETCH(int, lower);

    const Table given = section(Openings{start, end});
    for (const Table& table : {given, tables::reversed(given)}) {
        const Table made = sections::with_lep_points(table, {upper, intake, lower}, 8);
        QVERIFY(made.readable());
        const tables::Written written = tables::write(made, tables::Format::lep);
        QVERIFY(written.ok());
        const QByteArrayList lines = written.bytes.split('\n');
        const QList<int> counts = {upper + intake + lower - 2, upper, intake, lower};
        for (int i = 0; i < counts.size(); ++i)
            QCOMPARE(lines[1 + i].toInt(), counts[i]);
        QCOMPARE(lines.size(), counts[0] + 6);
        QCOMPARE(made.lines.size(), std::size_t(made.points.size()));

        // The ends of the pieces are unchanged rows.
        COMPARE_BITS(made.points.first(), QPointF(1.0, 0.0));
        COMPARE_BITS(made.points[tables::nose_row(made.points)], QPointF(0.0, 0.0));
        COMPARE_BITS(made.points.last(), QPointF(1.0, 0.0));
        COMPARE_NEAR(made.points[upper - 1].x(), start / 100.0, 1e-15);
        COMPARE_NEAR(made.points[upper + intake - 2].x(), end / 100.0, 1e-15);
        // The rows between them lie on the section from which the points were taken.
        const qsizetype nose = tables::nose_row(made.points);
        for (qsizetype i = 0; i < made.points.size(); ++i) {
            const double x = made.points[i].x();
            const double y = 0.1 * x * (1.0 - x) + (i < nose ? height(x) : -height(x));
            COMPARE_NEAR(made.points[i].y(), y, 3e-5);
        }
    }
}

void tst_lep_points::same_counts_same_rows() {
    const Table table = section(Openings{6.25, 25.0});
    const Table made = sections::with_lep_points(table, {half + 1 + 10, 11, 21}, 8);
    QVERIFY(made.readable());
    COMPARE_POLYGON_BITS(made.points, table.points);
    QCOMPARE(made.lines, table.lines);
}

void tst_lep_points::refused_data() {
    QTest::addColumn<Table>("table");
    QTest::addColumn<int>("upper");
    QTest::addColumn<int>("intake");
    QTest::addColumn<int>("lower");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const Table& table, int upper, int intake, int lower,
                        const char* reason) {
        QTest::newRow(name) << table << upper << intake << lower << QString::fromLatin1(reason);
    };
    const Table table = section(Openings{2.5, 7.5});
    const char* const too_few = "expected enough for the upper side, the nose, the intake and the "
                                "lower side";
    row("no openings", section(std::nullopt), 50, 10, 50,
        "no openings; expected --openings O-1 O-2");
    row("upside down", section(Openings{7.5, 2.5}), 50, 10, 50,
        "openings 7.5 2.5; expected O-1 not below 0, O-2 not below O-1 and not above 100");
    row("no upper rows", table, 0, 10, 50, "0,10,50 rows; expected 1 to 500");
    row("too many", table, 300, 100, 103, "300,100,103 rows; a profile has at most 500");
    row("beyond counting", table, 2147483647, 2147483647, 2147483647,
        "2147483647,2147483647,2147483647 rows; expected 1 to 500");
    row("no row for the nose", table, 2, 10, 50,
        qPrintable(QStringLiteral("2,10,50 rows; ") + QLatin1String(too_few)));
    row("no row for the intake", table, 50, 1, 50,
        qPrintable(QStringLiteral("50,1,50 rows; ") + QLatin1String(too_few)));
    row("rows for no intake", section(Openings{0.0, 0.0}), 50, 2, 50,
        qPrintable(QStringLiteral("50,2,50 rows; ") + QLatin1String(too_few)));
    row("no lower rows", table, 50, 10, 1,
        qPrintable(QStringLiteral("50,10,1 rows; ") + QLatin1String(too_few)));
    Table infinite = table;
    infinite.points[3].setY(1e300);
    row("no curve", infinite, 50, 10, 50, "no curve through the points: ");
}

void tst_lep_points::refused() {
    QFETCH(Table, table);
    QFETCH(int, upper);
    QFETCH(int, intake);
    QFETCH(int, lower);
    QFETCH(QString, reason);

    const Table made = sections::with_lep_points(table, {upper, intake, lower}, 8);
    QVERIFY(!made.readable());
    QVERIFY2(made.findings.last().text.startsWith(reason), qPrintable(made.findings.last().text));
}

AEROLITH_GUILESS_TEST_MAIN(tst_lep_points)
#include "tst_lep_points.moc"
