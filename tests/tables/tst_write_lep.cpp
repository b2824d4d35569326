// SPDX-FileCopyrightText: Aerolith developers
// Writing the paragliding profile: counts, rows at the openings, its frame.
#include "support/testmain.h"
#include "tables/write.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using tables::Openings;
using tables::Table;
using tables::WriteOptions;
using tables::Written;

namespace {

// The lower side is straight from the nose to x = 0.7.
const QPolygonF section = {{1.0, 0.0},   {0.5, 0.1},   {0.1, 0.05},  {0.0, 0.0}, {0.1, -0.01},
                           {0.3, -0.03}, {0.5, -0.05}, {0.7, -0.07}, {1.0, 0.0}};

// An odd number of points round an ellipse.
QPolygonF ellipse(int count) {
    QPolygonF points;
    for (int i = 0; i < count; ++i) {
        const double t = 2.0 * i / (count - 1) - 1.0;
        points << QPointF(t * t, -0.1 * t * (1.0 - t * t));
    }
    return points;
}

QPolygonF moved(QPolygonF points, double scale, QPointF shift) {
    for (QPointF& point : points)
        point = point * scale + shift;
    return points;
}

Table table_of(const QPolygonF& points, std::optional<Openings> openings) {
    Table table;
    table.title = QStringLiteral("Rib 1 of\t2");
    table.points = points;
    table.openings = openings;
    return table;
}

Written write(const Table& table, int decimals = 3) {
    WriteOptions options;
    options.decimals = decimals;
    return tables::write(table, tables::Format::lep, options);
}

} // namespace

class tst_write_lep : public QObject {
    Q_OBJECT
private slots:
    void rows_data();
    void rows();
    void refused_data();
    void refused();
    void turned_into_the_frame();
    void openings_lie_on_the_curve();
    void most_rows();
};

void tst_write_lep::rows_data() {
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("end");
    QTest::addColumn<QByteArray>("counts");
    QTest::addColumn<QByteArray>("lower"); // rows after the nose

    const QByteArray row_10 = " 0.100 -0.010\n";
    const QByteArray row_30 = " 0.300 -0.030\n";
    const QByteArray end = " 0.500 -0.050\n 0.700 -0.070\n 1.000  0.000\n";
    const auto row = [](const char* name, double start, double stop, const char* counts,
                        const QByteArray& lower) {
        QTest::newRow(name) << start << stop << QByteArray(counts) << lower;
    };
    row("at rows", 10.0, 50.0, "9\n5\n3\n3\n", row_10 + row_30 + end);
    row("between rows", 15.0, 40.0, "11\n6\n3\n4\n",
        row_10 + " 0.150 -0.015\n" + row_30 + " 0.400 -0.040\n" + end);
    row("one at a row", 15.0, 30.0, "10\n6\n2\n4\n", row_10 + " 0.150 -0.015\n" + row_30 + end);
    row("within half a digit of a row", 29.96, 50.04, "9\n6\n2\n3\n", row_10 + row_30 + end);
    row("from the nose", 0.0, 30.0, "9\n4\n3\n4\n", row_10 + row_30 + end);
    row("closed", 0.0, 0.0, "9\n4\n1\n6\n", row_10 + row_30 + end);
    row("of no width", 30.0, 30.0, "9\n6\n1\n4\n", row_10 + row_30 + end);
    row("to the trailing edge", 70.0, 100.0, "9\n8\n2\n1\n", row_10 + row_30 + end);
}

void tst_write_lep::rows() {
    QFETCH(double, start);
    QFETCH(double, end);
    QFETCH(QByteArray, counts);
    QFETCH(QByteArray, lower);

    const QByteArray expected = "Rib_1_of_2\n" + counts +
                                " 1.000  0.000\n 0.500  0.100\n 0.100  0.050\n 0.000  0.000\n" +
                                lower;
    QPolygonF other_order = section;
    std::reverse(other_order.begin(), other_order.end());
    for (const QPolygonF& order : {section, other_order}) {
        const Written written = write(table_of(order, Openings{start, end}));
        QVERIFY(written.ok());
        QVERIFY(written.findings.isEmpty());
        QCOMPARE(written.bytes, expected);
    }
    const QList<QByteArray> numbers = counts.split('\n');
    QCOMPARE(numbers[1].toInt() + numbers[2].toInt() + numbers[3].toInt(), numbers[0].toInt() + 2);
}

void tst_write_lep::refused_data() {
    QTest::addColumn<Table>("table");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no openings") << table_of(section, std::nullopt)
                                 << QStringLiteral("no openings; expected --openings O-1 O-2");
    const auto row = [](double start, double end, const QString& beginning) {
        QTest::addRow("%g %g", start, end)
            << table_of(section, Openings{start, end})
            << beginning + QStringLiteral("; expected O-1 not below 0, O-2 not below O-1 and not "
                                          "above 100");
    };
    row(-1.0, 5.0, QStringLiteral("openings -1 5"));
    row(5.0, 4.0, QStringLiteral("openings 5 4"));
    row(5.0, 101.0, QStringLiteral("openings 5 101"));
    row(qQNaN(), 5.0, QStringLiteral("openings nan 5"));
    row(5.0, qInf(), QStringLiteral("openings 5 inf"));
}

void tst_write_lep::refused() {
    QFETCH(Table, table);
    QFETCH(QString, reason);

    const Written written = write(table);
    QVERIFY(!written.ok());
    QVERIFY(written.bytes.isEmpty());
    QCOMPARE(written.findings.last().text, reason);
}

// The frame is that of the profile; the mouth stays at the same points.
void tst_write_lep::turned_into_the_frame() {
    const QByteArray expected = write(table_of(section, Openings{30.0, 50.0})).bytes;
    const Written written = write(table_of(moved(section, 3.0, {1.0, 2.0}), Openings{30.0, 50.0}));
    QCOMPARE(written.bytes, expected);
    QCOMPARE(written.findings.size(), 1);
    QVERIFY(written.findings[0].text.startsWith(QLatin1String("turned by 0 degrees")));

    QPolygonF open = section;
    open.first().setY(0.004);
    open.last().setY(-0.002);
    QVERIFY(write(table_of(open, Openings{30.0, 50.0})).findings.isEmpty());
    open.last().setY(0.002);
    QCOMPARE(write(table_of(open, Openings{30.0, 50.0})).findings.size(), 2);
}

// The inserted row lies on the section from which the rows were taken. Straight lines would be 5e-5
// off.
void tst_write_lep::openings_lie_on_the_curve() {
    const QPolygonF points = ellipse(121);
    for (const double station : {0.5, 1.0, 2.5, 20.0, 60.0}) {
        const QByteArrayList lines =
            write(table_of(points, Openings{station, station}), 9).bytes.split('\n');
        const int row = lines[2].toInt();
        const QByteArrayList numbers = lines[4 + row].simplified().split(' ');
        QCOMPARE(numbers[0].toDouble(), station / 100.0);
        const double t = std::sqrt(station / 100.0);
        const double y = 0.1 * t * (1.0 - t * t);
        QVERIFY2(std::abs(numbers[1].toDouble() + y) < 5e-6, numbers[1].constData());
    }
}

void tst_write_lep::most_rows() {
    QVERIFY(write(table_of(ellipse(499), Openings{0.0, 0.0})).ok());
    const Written written = write(table_of(ellipse(499), Openings{1.23456, 4.56789}), 8);
    QVERIFY(!written.ok());
    QCOMPARE(written.findings.last().text,
             QStringLiteral("501 rows; a profile has at most 500, expected --lep-points U,I,L"));
}

AEROLITH_GUILESS_TEST_MAIN(tst_write_lep)
#include "tst_write_lep.moc"
