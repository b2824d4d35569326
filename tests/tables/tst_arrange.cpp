// SPDX-FileCopyrightText: Aerolith developers
// Sides, stations and frames of an outline.
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "tables/arrange.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using tables::Openings;
using tables::Table;

namespace {

const QPolygonF section = {{1.0, 0.0},   {0.5, 0.1},    {0.1, 0.05}, {0.0, 0.0},
                           {0.2, -0.03}, {0.5, -0.045}, {1.0, 0.0}};

QPolygonF backwards(QPolygonF points) {
    std::reverse(points.begin(), points.end());
    return points;
}

QPolygonF shifted(QPolygonF points, QPointF by) {
    points.translate(by);
    return points;
}

Table table_of(const QPolygonF& points) {
    Table table;
    table.points = points;
    for (int i = 0; i < points.size(); ++i)
        table.lines.push_back(i + 1);
    return table;
}

// The outline rotated by an angle about the origin, scaled and shifted.
QPolygonF placed(const QPolygonF& points, double angle, double scale, QPointF shift) {
    QPolygonF turned;
    for (const QPointF& point : points) {
        turned << QPointF(point.x() * std::cos(angle) - point.y() * std::sin(angle),
                          point.x() * std::sin(angle) + point.y() * std::cos(angle)) *
                          scale +
                      shift;
    }
    return turned;
}

} // namespace

class tst_arrange : public QObject {
    Q_OBJECT
private slots:
    void sides_data();
    void sides();
    void cut_data();
    void cut();
    void gap();
    void normalizing_data();
    void normalizing();
    void mouth_stays_on_the_cloth();
    void nothing_to_move();
};

void tst_arrange::sides_data() {
    QTest::addColumn<QPolygonF>("outline");
    QTest::addColumn<bool>("upper_first");
    QTest::addColumn<bool>("equal");
    QTest::addColumn<int>("nose");

    const QPolygonF flat = {{1.0, 0.0}, {0.5, 0.0}, {0.0, 0.0}, {0.3, 0.0}, {0.5, 0.0}, {1.0, 0.0}};
    const QPolygonF single_skin = {{1.0, 0.0}, {0.5, 0.2},  {0.0, 0.0},
                                   {0.3, 0.1}, {0.6, 0.15}, {1.0, 0.0}};
    QTest::newRow("upper first") << section << true << false << 3;
    QTest::newRow("lower first") << backwards(section) << false << false << 3;
    QTest::newRow("far above the chord") << shifted(section, {4.0, 9.0}) << true << false << 3;
    QTest::newRow("far below the chord")
        << shifted(backwards(section), {-4.0, -9.0}) << false << false << 3;
    QTest::newRow("flat") << flat << true << true << 2;
    QTest::newRow("flat, backwards") << backwards(flat) << true << true << 3;
    QTest::newRow("single skin") << single_skin << true << false << 2;
    for (const double scale : {0.001, 1.0, 1000.0}) {
        const QPolygonF thin = {{scale, 0.0}, {0.0, 0.9e-9 * scale}, {0.0, 0.0}, {scale, 0.0}};
        const QPolygonF thicker = {{scale, 0.0}, {0.0, 1.1e-9 * scale}, {0.0, 0.0}, {scale, 0.0}};
        QTest::addRow("thin at %g", scale) << thin << true << true << 1;
        QTest::addRow("thicker at %g", scale) << thicker << true << false << 1;
    }
    QTest::newRow("none") << QPolygonF() << true << true << -1;
    // More rows below, but those above are higher on average.
    QTest::newRow("unequal spacing")
        << QPolygonF({{1.0, 0.0}, {0.01, 0.1}, {0.0, 0.0}, {0.1, 0.04}, {0.2, 0.05}, {0.9, 0.006}})
        << true << false << 2;
}

void tst_arrange::sides() {
    QFETCH(QPolygonF, outline);
    QFETCH(bool, upper_first);
    QFETCH(bool, equal);
    QFETCH(int, nose);

    QCOMPARE(tables::is_upper_first(outline), upper_first);
    QCOMPARE(tables::has_equal_sides(outline), equal);
    QCOMPARE(int(tables::nose_row(outline)), nose);
    COMPARE_POLYGON_BITS(tables::with_upper_first(outline),
                         upper_first ? outline : backwards(outline));
}

void tst_arrange::cut_data() {
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<int>("row"); // -1: none
    QTest::addColumn<double>("fraction");

    QTest::newRow("nose") << 0.0 << 0.0 << 3 << 0.0;
    QTest::newRow("between rows") << 0.05 << 0.0 << 3 << 0.25;
    QTest::newRow("on a row") << 0.2 << 0.0 << 4 << 0.0;
    QTest::newRow("near a row") << 0.2001 << 0.001 << 4 << 0.0;
    QTest::newRow("near the next row") << 0.1999 << 0.001 << 4 << 0.0;
    QTest::newRow("too far from a row") << 0.203 << 0.001 << 4 << 0.01;
    QTest::newRow("trailing edge") << 1.0 << 0.0 << 6 << 0.0;
    QTest::newRow("behind") << 1.1 << 0.0 << -1 << 0.0;
    QTest::newRow("ahead") << -0.1 << 0.0 << -1 << 0.0;
}

void tst_arrange::cut() {
    QFETCH(double, x);
    QFETCH(double, tolerance);
    QFETCH(int, row);
    QFETCH(double, fraction);

    const auto place = tables::cut_second_side(section, x, tolerance);
    QCOMPARE(place.has_value(), row >= 0);
    if (!place)
        return;
    QCOMPARE(int(place->row), row);
    COMPARE_NEAR(place->fraction, fraction, 1e-12);
    COMPARE_NEAR(place->on(section).x(), x, tolerance + 1e-15);
}

void tst_arrange::gap() {
    QPolygonF open = section;
    open.first() = QPointF(1.0, 0.02);
    open.last() = QPointF(0.98, -0.01);
    Table table = table_of(open);
    table.openings = Openings{20.0, 50.0}; // on rows of the lower side
    const Table closed = tables::with_closed_gap(table);
    COMPARE_BITS(closed.points.first(), QPointF(0.99, 0.005));
    COMPARE_BITS(closed.points.last(), QPointF(0.99, 0.005));
    COMPARE_BITS(closed.points[3], QPointF(0.0, 0.0));
    COMPARE_NEAR(closed.points[1].x(), 0.5 - 0.01 * 0.5, 1e-15);
    COMPARE_NEAR(closed.points[1].y(), 0.1 - 0.015 * 0.5, 1e-15);
    COMPARE_NEAR(closed.points[5].y(), -0.045 + 0.015 * 0.5 / 0.98, 1e-15);
    COMPARE_NEAR(closed.openings->end, 100.0 * closed.points[5].x() / 0.99, 1e-12);
    QCOMPARE(closed.findings.size(), 2);
}

void tst_arrange::normalizing_data() {
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QPointF>("shift");

    QTest::newRow("shifted") << 0.0 << 1.0 << QPointF(3.0, -2.0);
    QTest::newRow("scaled") << 0.0 << 250.0 << QPointF();
    QTest::newRow("turned") << 0.1 << 1.0 << QPointF();
    QTest::newRow("turned the other way, scaled, shifted") << -0.2 << 0.3 << QPointF(0.4, 0.7);
}

void tst_arrange::normalizing() {
    QFETCH(double, angle);
    QFETCH(double, scale);
    QFETCH(QPointF, shift);

    for (const QPolygonF& outline : {section, backwards(section)}) {
        const Table made = tables::normalized(table_of(placed(outline, angle, scale, shift)));
        QCOMPARE(made.findings.size(), 1);
        for (qsizetype i = 0; i < outline.size(); ++i) {
            COMPARE_NEAR(made.points[i].x(), outline[i].x(), 1e-14);
            COMPARE_NEAR(made.points[i].y(), outline[i].y(), 1e-14);
        }
        COMPARE_BITS(made.points[3], QPointF(0.0, 0.0));
    }
}

// The two ends of the mouth are at the same places of the surface before and after, whichever side
// the table begins with.
void tst_arrange::mouth_stays_on_the_cloth() {
    for (const QPolygonF& outline : {section, backwards(section)}) {
        Table table = table_of(placed(outline, 0.1, 2.0, {0.3, 0.1}));
        // Both stations lie on rows of the lower side.
        const tables::Extent extent(table.points);
        const int rows[2] = {outline[4].y() < 0.0 ? 4 : 2, outline[5].y() < 0.0 ? 5 : 1};
        table.openings = Openings{extent.percent_at(table.points[rows[0]].x()),
                                  extent.percent_at(table.points[rows[1]].x())};
        const Table made = tables::normalized(table);
        COMPARE_NEAR(made.openings->start, 20.0, 1e-12);
        COMPARE_NEAR(made.openings->end, 50.0, 1e-12);
        QCOMPARE(made.findings.size(), 2);
        QVERIFY2(made.findings[1].text.endsWith(QLatin1String("become 20 50, at the same points")),
                 qPrintable(made.findings[1].text));

        const Table reversed = tables::reversed(made);
        COMPARE_BITS(reversed.openings->start, made.openings->start);
        COMPARE_POLYGON_BITS(backwards(reversed.points), made.points);
        QCOMPARE(reversed.lines, std::vector<int>({7, 6, 5, 4, 3, 2, 1}));

        // A mouth that begins at the nose begins at the nose.
        table.openings->start = 0.0;
        COMPARE_BITS(tables::normalized(table).openings->start, 0.0);
        // Even if another row was foremost before.
        QPolygonF blunt = outline;
        blunt.insert(outline[2].y() > 0.0 ? 3 : 4, QPointF(0.002, 0.02));
        Table steep = table_of(placed(blunt, 0.3, 1.0, {}));
        QVERIFY(steep.points[tables::nose_row(steep.points)].x() < 0.0);
        steep.openings = Openings{0.0, 20.0};
        COMPARE_BITS(tables::normalized(steep).openings->start, 0.0);
        // A closed rib stays closed, without a note.
        table.openings = Openings{};
        const Table rib = tables::normalized(table);
        COMPARE_BITS(rib.openings->end, 0.0);
        QCOMPARE(rib.findings.size(), 1);
    }
}

void tst_arrange::nothing_to_move() {
    const QPolygonF one_point(6, QPointF(2.0, 3.0));
    for (const QPolygonF& outline : {QPolygonF(), one_point, section}) {
        for (const auto change : {&tables::normalized, &tables::with_closed_gap}) {
            const Table made = change(table_of(outline));
            COMPARE_POLYGON_BITS(made.points, outline);
            QVERIFY(made.findings.isEmpty());
        }
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_arrange)
#include "tst_arrange.moc"
