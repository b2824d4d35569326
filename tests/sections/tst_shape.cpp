// SPDX-FileCopyrightText: Aerolith developers
// Findings about the shape of an outline.
#include "sections/shape.h"
#include "support/testmain.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>

using tables::Finding;
using tables::Gravity;
using tables::Kind;
using tables::Table;

namespace {

constexpr int half = 30;

double thickness(double x) {
    return 0.6 * (0.2969 * std::sqrt(x) - 0.1260 * x - 0.3516 * x * x + 0.2843 * x * x * x -
                  0.1036 * x * x * x * x);
}

double camber(double x) {
    return 0.1 * x * (1.0 - x);
}

// A cambered section of 12 % thickness, of 2 count + 1 rows concentrated at both ends.
QPolygonF section(int count = half) {
    QPolygonF points;
    for (int i = -count; i <= count; ++i) {
        const double x = 0.5 - 0.5 * std::cos(3.141592653589793 * i / count);
        points << QPointF(x, camber(x) + (i < 0 ? thickness(x) : -thickness(x)));
    }
    return points;
}

QPolygonF rounded(QPolygonF points, double unit) {
    for (QPointF& point : points)
        point = QPointF(std::round(point.x() / unit) * unit, std::round(point.y() / unit) * unit);
    return points;
}

Table table_of(const QPolygonF& points, Kind kind = Kind::section) {
    Table table;
    table.points = points;
    table.kind = kind;
    for (int i = 0; i < points.size(); ++i)
        table.lines.push_back(i + 1);
    return table;
}

QStringList texts(const QList<Finding>& findings) {
    static const char* const names[] = {"note", "doubt", "error"};
    QStringList list;
    for (const Finding& finding : findings) {
        list << QStringLiteral("%1 %2: %3")
                    .arg(QLatin1String(names[int(finding.gravity)]))
                    .arg(finding.line)
                    .arg(finding.text);
    }
    return list;
}

QPolygonF with(QPolygonF points, int row, QPointF point) {
    points[row] = point;
    return points;
}

QPolygonF with_inserted(QPolygonF points, int row, QPointF point) {
    points.insert(row, point);
    return points;
}

} // namespace

class tst_shape : public QObject {
    Q_OBJECT
private slots:
    void sound_data();
    void sound();
    void found_data();
    void found();
    void missed_digits();
    void awkward_data();
    void awkward();
    void many();
};

void tst_shape::sound_data() {
    QTest::addColumn<Table>("table");

    QTest::newRow("section") << table_of(section());
    QTest::newRow("lower side first") << [] {
        QPolygonF points = section();
        std::reverse(points.begin(), points.end());
        return table_of(points);
    }();
    QTest::newRow("millimetres, elsewhere") << [] {
        QPolygonF points = section();
        for (QPointF& point : points)
            point = point * 350.0 + QPointF(100.0, -20.0);
        return table_of(points);
    }();
    QTest::newRow("three decimals") << table_of(rounded(section(20), 1e-3));
    QTest::newRow("four decimals") << table_of(rounded(section(80), 1e-4));
    QTest::newRow("17 stations") << table_of(rounded(section(17), 1e-4));
    // Rows at wide gaps deviate from what closely spaced rows around them suggest.
    QTest::newRow("close rows and wide gaps") << [] {
        QPolygonF points;
        for (const double x : {1.0, 0.997, 0.987, 0.938, 0.891, 0.668, 0.622, 0.384, 0.293, 0.139,
                               0.057, 0.038, 0.011, 0.003, 0.0})
            points << QPointF(x, 4.0 * camber(x) + 0.4 * thickness(x));
        for (const double x : {0.002, 0.011, 0.334, 0.39, 0.448, 0.786, 0.986, 0.996, 1.0})
            points << QPointF(x, 4.0 * camber(x) - 0.4 * thickness(x));
        return table_of(points);
    }();
    QTest::newRow("a diamond") << table_of(
        {{1.0, 0.0}, {0.5, 0.05}, {0.0, 0.0}, {0.25, -0.025}, {0.5, -0.05}, {1.0, 0.0}});
    QTest::newRow("flap") << [] {
        QPolygonF points = section();
        for (QPointF& point : points) {
            if (point.x() > 0.7)
                point -= QPointF(0.0, 0.2 * (point.x() - 0.7));
        }
        return table_of(points);
    }();
    QTest::newRow("thick root section") << [] {
        QPolygonF points = section();
        for (QPointF& point : points)
            point.setY(5.0 * point.y());
        points.first() += QPointF(0.0, 0.05);
        points.last() -= QPointF(0.0, 0.05);
        return table_of(points);
    }();
    QTest::newRow("sides that touch") << [] {
        QPolygonF points = section();
        points[4].setY(points[56].y() - 0.9e-5);
        points[3].setY(points[57].y() - 0.9e-5);
        return table_of(points);
    }();
    QTest::newRow("flat rib") << [] {
        QPolygonF points = section();
        for (QPointF& point : points)
            point.setY(0.0);
        return table_of(points, Kind::flat);
    }();
    QTest::newRow("single skin that crosses") << [] {
        QPolygonF points = section();
        for (int i = 45; i < 58; ++i)
            points[i].setY(points[60 - i].y() + 1e-4);
        return table_of(points, Kind::single_skin);
    }();
}

void tst_shape::sound() {
    QFETCH(Table, table);

    QCOMPARE(texts(sections::shape_findings(table)).join(QLatin1Char('\n')), QString());
}

void tst_shape::found_data() {
    QTest::addColumn<Table>("table");
    QTest::addColumn<QStringList>("expected");

    const auto row = [](const char* name, const QPolygonF& points, const QStringList& expected) {
        QTest::newRow(name) << table_of(points) << expected;
    };
    // Rounded, so that the texts hold the numbers of a file.
    const QPolygonF plain = rounded(section(), 1e-4);
    row("repeated", with_inserted(plain, 10, plain[10]),
        {QStringLiteral("note 12: repeats line 11")});
    row("repeated, and again", with_inserted(with_inserted(plain, 10, plain[10]), 10, plain[10]),
        {QStringLiteral("note 12: repeats line 11"), QStringLiteral("note 13: repeats line 12")});
    row("digit of y", with(plain, 12, {plain[12].x(), plain[12].y() + 0.01}),
        {QStringLiteral(
            "doubt 13: 0.6545 0.0733 lies 0.0099 off the line through its neighbours")});
    row("digit of y, lower side", with(plain, 45, {plain[45].x(), plain[45].y() - 0.1}),
        {QStringLiteral("doubt 46: 0.5 -0.1279 lies 0.1 off the line through its neighbours")});
    row("sign of y", with(plain, 20, {plain[20].x(), -plain[20].y()}),
        {QStringLiteral("doubt 21: 0.25 -0.0782 lies 0.16 off the line through its neighbours")});
    row("height missing near the nose", with(plain, 27, {plain[27].x(), 0.0}),
        {QStringLiteral("doubt 28: y = 0 between 0.0375 and 0.0189")});
    row("digit of x", with(plain, 45, {plain[45].x() + 0.1, plain[45].y()}),
        {QStringLiteral("doubt 46: x = 0.6 is not between those of its neighbours, 0.4477 and "
                        "0.5523")});
    row("digit of x, behind the row before", with(plain, 46, {0.46, plain[46].y()}),
        {QStringLiteral("doubt 47: x = 0.46 is not between those of its neighbours, 0.5 and "
                        "0.604")});
    row("rows exchanged", with(with(plain, 45, plain[46]), 46, plain[45]),
        {QStringLiteral("doubt 47: x = 0.5 is not between those of its neighbours, 0.5523 and "
                        "0.604")});
    row("row behind the outline", with_inserted(plain, 61, {0.0, 0.0}),
        {QStringLiteral("doubt 62: 0 0 lies behind the end of the outline")});
    row("last row in percent", with(plain, 60, {100.0, 0.0}),
        {QStringLiteral("error 61: 100 0 is in another unit than the other rows, which end at "
                        "x = 0.9973")});
    row("first row in percent", with(plain, 0, {100.0, 0.0}),
        {QStringLiteral("error 1: 100 0 is in another unit than the other rows, which end at "
                        "x = 0.9973")});
    row("ends apart", with(plain, 60, {1.0, -0.04}),
        {QStringLiteral("doubt 61: the ends are 0.04 apart")});
    row("upper end missing", plain.mid(4),
        {QStringLiteral("doubt 57: the ends are 0.0443878 apart")});
    row("upper end missing, thick section",
        [&] {
            QPolygonF thick = plain.mid(4);
            for (QPointF& point : thick)
                point.ry() *= 2.0;
            return thick;
        }(),
        {QStringLiteral("doubt 57: the ends are 0.0477745 apart")});
    row("second run", plain + plain,
        {QStringLiteral("note 62: repeats line 61"),
         QStringLiteral("error 65: x turns again at 0.9755; expected one nose")});
    row("two noses", plain.mid(0, 45) + plain.mid(20, 41),
        {QStringLiteral("error 46: x turns again at 0.25; expected one nose")});
    row("few points at the nose", rounded(section(7), 1e-4),
        {QStringLiteral("note 8: few points at the nose: it turns by 109 degrees in one row, which "
                        "leaves 0.016 of its shape open")});

    QPolygonF crossed = plain;
    for (int i = 0; i <= 4; ++i)
        std::swap(crossed[i].ry(), crossed[60 - i].ry());
    row("crossing at the trailing edge", crossed,
        {QStringLiteral("doubt 5: the sides cross at the trailing edge, by 0.0122 at x = 0.9568")});
    for (int i = 5; i <= 12; ++i)
        std::swap(crossed[i].ry(), crossed[60 - i].ry());
    row("crossing ahead of it", crossed,
        {QStringLiteral("error 13: the sides cross: the lower one lies 0.0814 above the upper one "
                        "at x = 0.6545")});
}

void tst_shape::found() {
    QFETCH(Table, table);
    QFETCH(QStringList, expected);

    QCOMPARE(texts(sections::shape_findings(table)).join(QLatin1Char('\n')),
             expected.join(QLatin1Char('\n')));
}

// A wrong third decimal in a row of realistic tables: each finding names the row. Most are found;
// where rows are sparse, the neighbours do not reveal it.
void tst_shape::missed_digits() {
    std::mt19937 chance(3);
    int named = 0;
    int elsewhere = 0;
    constexpr int runs = 400;
    for (int run = 0; run < runs; ++run) {
        const int count = 20 + int(chance() % 60);
        QPolygonF points = rounded(section(count), 1e-5);
        const int row = 3 + int(chance() % unsigned(2 * count - 5));
        points[row].ry() += (chance() % 2 == 0 ? 0.001 : -0.001) * double(2 + chance() % 7);
        const QList<Finding> findings = sections::shape_findings(table_of(points));
        for (const Finding& finding : findings)
            ++(finding.line == row + 1 ? named : elsewhere);
    }
    QVERIFY2(named > runs * 8 / 10, qPrintable(QString::number(named)));
    QVERIFY2(elsewhere < runs / 50, qPrintable(QString::number(elsewhere)));
}

void tst_shape::awkward_data() {
    QTest::addColumn<Table>("table");

    QTest::newRow("none") << table_of({});
    QTest::newRow("one place") << table_of(QPolygonF(8, QPointF(0.5, 0.5)));
    QTest::newRow("no width") << table_of({{0.0, 0.0},
                                           {0.0, 0.1},
                                           {0.0, 0.2},
                                           {0.0, 0.3},
                                           {0.0, 0.4},
                                           {0.0, 0.5},
                                           {0.0, 0.6},
                                           {0.0, 0.7},
                                           {0.0, 0.8}});
    QTest::newRow("one way") << table_of({{1.0, 0.0},
                                          {0.9, 0.0},
                                          {0.8, 0.0},
                                          {0.7, 0.0},
                                          {0.6, 0.0},
                                          {0.5, 0.0},
                                          {0.4, 0.0},
                                          {0.3, 0.0},
                                          {0.0, 0.0}});
    QTest::newRow("five places, out of order") << table_of(
        {{1.0, 0.0}, {0.0, 0.0}, {0.5, 0.0}, {0.5, 0.0}, {0.3, 0.0}, {0.8, 0.0}, {0.8, 0.0}});
    QPolygonF turning;
    for (int i = 0; i < 1000; ++i)
        turning << QPointF(i % 2, i % 3);
    QTest::newRow("to and fro") << table_of(turning);
    QTest::newRow("beyond all measure") << table_of(
        {{1e300, 0.0}, {1.0, 1e300}, {0.0, 0.0}, {-1e300, 0.0}, {3.0, 1.0}, {4.0, 1.0}});
    Table no_lines = table_of(section());
    no_lines.lines.clear();
    QTest::newRow("no lines") << no_lines;
}

// Any input gives a result.
void tst_shape::awkward() {
    QFETCH(Table, table);

    for (const Kind kind : {Kind::section, Kind::single_skin, Kind::flat}) {
        table.kind = kind;
        const QList<Finding> findings = sections::shape_findings(table);
        QVERIFY(findings.size() <= table.points.size());
    }
}

// Each check passes once over a long table, and gives few enough findings to read.
void tst_shape::many() {
    constexpr int count = 150000;
    QPolygonF repeated;
    for (const QPointF& point : section(count / 2))
        repeated << point << point;
    QPolygonF swapped = section(count / 2);
    for (int i = 6; i + 8 < count; i += 8)
        swapped[i].rx() += (i < count / 2 ? -6.0 : 6.0) * 1e-4;
    for (const QPolygonF& points : {repeated, swapped}) {
        const QList<Finding> findings = sections::shape_findings(table_of(points));
        QVERIFY(findings.size() >= 11);
        QVERIFY(findings.size() < 60);
        QVERIFY2(findings.first().text.contains(QLatin1String(" more rows like that of line ")),
                 qPrintable(findings.first().text));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_shape)
#include "tst_shape.moc"
