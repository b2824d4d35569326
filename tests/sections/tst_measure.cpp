// SPDX-FileCopyrightText: Aerolith developers
// Measures against closed forms, and under changes that must not affect them.
#include "outlines.h"
#include "sections/measure.h"
#include "sections/plane.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <algorithm>
#include <cmath>

using namespace sections;
using tables::Openings;

namespace {

Section section_of(const QPolygonF& points, std::optional<Openings> openings = std::nullopt) {
    tables::Table table = table_of(points);
    table.openings = openings;
    return *section_of_table(table).section;
}

// Thickness of a four-digit section of thickness 1.
double naca_thickness(double x) {
    return 10.0 * (0.2969 * std::sqrt(x) - 0.126 * x - 0.3516 * x * x + 0.2843 * x * x * x -
                   0.1015 * x * x * x * x);
}

} // namespace

class tst_measure : public QObject {
    Q_OBJECT

private slots:
    void circle();
    void ellipses_data();
    void ellipses();
    void symmetric_sections_data();
    void symmetric_sections();
    void cambered_section();
    void convergence_data();
    void convergence();
    void spline_nose();
    void invariance_data();
    void invariance();
    void heights();
    void stations();
    void station_beside_the_section();
    void mouth();
    void mouth_from_the_nose();
    void refused_mouths_data();
    void refused_mouths();
    void special_kinds();
    void equal_sides();
    void nose_corner();
    void refused_sections();
};

void tst_measure::circle() {
    const Measures m = measure(section_of(ellipse(400, 1.0)));
    COMPARE_NEAR(m.chord, 1.0, 1e-7);
    COMPARE_NEAR(m.thickness->size, 1.0, 1e-6);
    COMPARE_NEAR(m.thickness->station, 0.5, 1e-3);
    COMPARE_NEAR(m.camber->size, 0.0, 1e-6);
    COMPARE_NEAR(m.nose->radius, 0.5, 1e-4);
    COMPARE_NEAR(*m.area, pi / 4.0, 1e-6);
    COMPARE_NEAR(norm(*m.centroid - QPointF(0.5, 0.0)), 0.0, 1e-6);
    COMPARE_NEAR(m.length, pi, 1e-6);
    COMPARE_NEAR(m.upper_length, pi / 2.0, 1e-6);
    COMPARE_NEAR(m.height, 1.0, 1e-15);
}

void tst_measure::ellipses_data() {
    QTest::addColumn<double>("b");

    for (const double b : {0.06, 0.12, 0.3})
        QTest::addRow("axis-%g", b) << b;
}

void tst_measure::ellipses() {
    QFETCH(double, b);
    const Measures m = measure(section_of(ellipse(600, b)));
    COMPARE_NEAR(m.thickness->size, b, 1e-8);
    COMPARE_NEAR(m.nose->radius / (0.5 * b * b), 1.0, 0.012);
    COMPARE_NEAR(*m.nose->over_thickness_squared, 0.5, 0.006);
    COMPARE_NEAR(*m.area, 0.25 * pi * b, 1e-8);
}

void tst_measure::symmetric_sections_data() {
    QTest::addColumn<double>("t");

    for (const double t : {0.06, 0.12, 0.21})
        QTest::addRow("thickness-%g", t) << t;
}

void tst_measure::symmetric_sections() {
    QFETCH(double, t);
    double thickest = 0.0;
    double station = 0.0;
    for (int i = 0; i <= 100000; ++i) {
        if (naca_thickness(i / 1e5) > thickest) {
            thickest = naca_thickness(i / 1e5);
            station = i / 1e5;
        }
    }
    const Measures m = measure(section_of(naca(0.0, 0.4, t, 200)), {0.095, 0.3, 0.55});
    COMPARE_NEAR(m.thickness->size, t * thickest, 1e-8);
    COMPARE_NEAR(m.thickness->station, station, 1e-4);
    COMPARE_NEAR(m.camber->size, 0.0, 0.0);
    COMPARE_NEAR(m.nose->radius / (1.1019 * t * t), 1.0, 0.012);
    COMPARE_NEAR(m.trailing_edge_gap, t * naca_thickness(1.0), 1e-12);
    const double tail = 0.5 * t * (naca_thickness(0.98) - naca_thickness(1.0));
    COMPARE_NEAR(*m.trailing_edge_angle, 2.0 * std::atan(tail / 0.02) * 180.0 / pi, 1e-4);
    for (const Station& each : m.stations)
        COMPARE_NEAR(each.thickness, t * naca_thickness(each.x), 1e-8);
}

// The figures by XFOIL's definitions for this section.
void tst_measure::cambered_section() {
    const Measures m = measure(section_of(naca(0.04, 0.4, 0.12, 200)));
    COMPARE_NEAR(m.camber->size, 0.0382, 0.00005);
    COMPARE_NEAR(m.camber->station, 0.416, 0.0005);
    COMPARE_NEAR(m.thickness->size, 0.1202, 0.00005);
    COMPARE_NEAR(m.camber_upright->size, 0.04, 0.0001);
    COMPARE_NEAR(m.camber_upright->station, 0.40, 0.005);
    const Measures down = measure(section_of(naca(-0.04, 0.4, 0.12, 200)));
    COMPARE_NEAR(down.camber->size, -m.camber->size, 1e-12);
    COMPARE_NEAR(down.camber_upright->size, -m.camber_upright->size, 1e-12);
}

void tst_measure::convergence_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("length_error");
    QTest::addColumn<double>("radius_error");

    QTest::newRow("51-points") << 25 << 1e-4 << 5e-2;
    QTest::newRow("101-points") << 50 << 1e-5 << 3e-2;
    QTest::newRow("201-points") << 100 << 5e-8 << 6e-3;
    QTest::newRow("801-points") << 400 << 2e-9 << 5e-4;
}

// Relative to the chord line, because the width depends on the spacing of the points.
void tst_measure::convergence() {
    QFETCH(int, count);
    QFETCH(double, length_error);
    QFETCH(double, radius_error);
    const Measures fine = measure(section_of(naca(0.04, 0.4, 0.12, 1600)));
    const Measures m = measure(section_of(naca(0.04, 0.4, 0.12, count)));
    COMPARE_NEAR(m.length / m.chord, fine.length / fine.chord, length_error);
    const double radius = fine.nose->radius / fine.chord;
    COMPARE_NEAR(m.nose->radius / m.chord / radius, 1.0, radius_error);
}

// A nose of one parabola: the mean curvature of an arc is its turning angle over its length.
void tst_measure::spline_nose() {
    QPolygonF points = {{1.0, 0.0},   {0.5, 0.08},  {0.0, 0.06},
                        {0.0, -0.06}, {0.5, -0.08}, {1.0, 0.0}};
    const Measures m = measure(*section_of_spline(spline_of(points)).section);
    QVERIFY(m.nose.has_value());
    // x = c y^2 of the two inner parabolas that meet at the knot on the axis is straight
    // there: they touch the control leg from 0.06 to -0.06 at its midpoint.
    COMPARE_NEAR(m.nose->upper, m.nose->lower, 1e-12);
    COMPARE_NEAR(m.nose->radius, m.nose->upper, 1e-12);
    // P(u) from the midpoint of the leg at the nose to the midpoint of the next leg.
    const QPointF start(0.0, 0.0), control(0.0, -0.06), end(0.25, -0.07);
    const Piece lower = Piece::parabola(start, control, end);
    const double u = lower.parameter_at(nose_stretch * m.chord);
    const double turn = turning(lower.tangent(0.0), lower.tangent(u));
    COMPARE_NEAR(m.nose->radius, nose_stretch * m.chord / turn, 2e-6);
}

void tst_measure::invariance_data() {
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("scale");
    QTest::addColumn<bool>("other_order");

    QTest::newRow("turned") << 7.0 << 1.0 << false;
    QTest::newRow("turned-down") << -31.0 << 1.0 << false;
    QTest::newRow("upside-down") << 180.0 << 1.0 << false;
    QTest::newRow("small") << 0.0 << 1e-3 << false;
    QTest::newRow("large") << 0.0 << 1000.0 << false;
    QTest::newRow("reversed") << 0.0 << 1.0 << true;
    QTest::newRow("all-at-once") << 20.0 << 5.0 << true;
}

void tst_measure::invariance() {
    QFETCH(double, angle);
    QFETCH(double, scale);
    QFETCH(bool, other_order);
    const QPolygonF points = naca(0.06, 0.3, 0.15, 60);
    QPolygonF moved = turned(points, angle, scale);
    if (other_order)
        moved = reversed(moved);
    const Measures m = measure(section_of(points));
    const Measures n = measure(section_of(moved));
    COMPARE_NEAR(n.thickness->size, m.thickness->size, 1e-11);
    COMPARE_NEAR(n.camber->size, m.camber->size, 1e-11);
    COMPARE_NEAR(n.camber->station, m.camber->station, 1e-5);
    COMPARE_NEAR(n.nose->radius / n.chord, m.nose->radius / m.chord, 1e-9);
    COMPARE_NEAR(n.length / n.chord, m.length / m.chord, 1e-10);
    COMPARE_NEAR(n.upper_length / n.chord, m.upper_length / m.chord, 1e-8);
    COMPARE_NEAR(*n.area / n.chord / n.chord, *m.area / m.chord / m.chord, 1e-11);
    COMPARE_NEAR(*n.trailing_edge_angle, *m.trailing_edge_angle, 1e-8);
    COMPARE_NEAR(n.trailing_edge_gap / n.chord, m.trailing_edge_gap / m.chord, 1e-12);
    if (angle == 0.0) {
        COMPARE_NEAR(n.camber_upright->station, m.camber_upright->station, 1e-5);
        COMPARE_NEAR(norm(n.highest - m.highest), 0.0, 1e-10);
    }
}

void tst_measure::heights() {
    const QPolygonF points = naca(0.04, 0.4, 0.12, 100);
    const Measures m = measure(section_of(points));
    double highest = -1.0, lowest = 1.0, left = 1.0;
    for (const QPointF& point : points) {
        highest = std::max(highest, point.y());
        lowest = std::min(lowest, point.y());
        left = std::min(left, point.x());
    }
    const double width = points.first().x() > points.last().x() ? points.first().x() - left
                                                                : points.last().x() - left;
    COMPARE_NEAR(m.height, (highest - lowest) / width, 1e-14);
    COMPARE_NEAR(m.highest.y() - m.lowest.y(), m.height, 1e-4);
    QVERIFY(m.highest.y() - m.lowest.y() >= m.height);
    COMPARE_NEAR(m.highest.x(), 0.355, 0.005);
}

void tst_measure::stations() {
    const Measures m = measure(section_of(ellipse(600, 1.0)), {0.5, 0.0, 0.25, 1.0});
    QCOMPARE(m.stations.size(), std::size_t(4));
    const Station& middle = m.stations[0];
    COMPARE_NEAR(middle.upper, 0.5, 1e-7);
    COMPARE_NEAR(middle.lower, -0.5, 1e-7);
    COMPARE_NEAR(middle.upper_from_trailing_edge, pi / 4.0, 1e-6);
    COMPARE_NEAR(middle.upper_from_nose, pi / 4.0, 1e-6);
    COMPARE_NEAR(middle.lower_from_trailing_edge, pi / 4.0, 1e-6);
    COMPARE_NEAR(middle.lower_from_nose, pi / 4.0, 1e-6);
    COMPARE_NEAR(m.stations[1].thickness, 0.0, 1e-3);
    COMPARE_NEAR(m.stations[1].upper_from_nose, 0.0, 1e-3);
    COMPARE_NEAR(m.stations[2].thickness, std::sqrt(0.75), 1e-7);
    COMPARE_NEAR(m.stations[2].upper_from_nose, pi / 6.0, 1e-6);
    COMPARE_NEAR(m.stations[3].upper_from_trailing_edge, 0.0, 1e-3);
}

void tst_measure::station_beside_the_section() {
    const Measures m = measure(section_of(ellipse(60, 0.1)), {0.5, 1.5});
    QCOMPARE(m.stations.size(), std::size_t(1));
    QCOMPARE(m.notes, QStringList{QStringLiteral(
                          "no station 150: a vertical cut does not meet both sides")});
}

void tst_measure::mouth() {
    const QPolygonF points = naca(0.02, 0.4, 0.15, 100);
    const Measures m = measure(section_of(points, Openings{2.0, 8.0}));
    QVERIFY(m.mouth.has_value());
    COMPARE_NEAR(m.mouth->start.x(), 0.02, 1e-12);
    COMPARE_NEAR(m.mouth->end.x(), 0.08, 1e-12);
    QVERIFY(m.mouth->start.y() < 0.0 && m.mouth->end.y() < m.mouth->start.y());
    QVERIFY(m.mouth->along > m.mouth->straight && m.mouth->along < 1.1 * m.mouth->straight);
    QVERIFY(m.mouth->angle < -5.0 && m.mouth->angle > -60.0);
    COMPARE_NEAR(m.mouth->panel_over_top + m.mouth->along + m.mouth->panel_behind, m.length, 1e-12);
    QVERIFY(m.mouth->panel_over_top > m.upper_length);
    const Measures other = measure(section_of(reversed(points), Openings{2.0, 8.0}));
    COMPARE_NEAR(other.mouth->panel_over_top, m.mouth->panel_over_top, 1e-11);
    COMPARE_NEAR(other.mouth->angle, m.mouth->angle, 1e-9);
    // 0 and 0 is a closed rib.
    const Measures closed = measure(section_of(points, Openings{0.0, 0.0}));
    QVERIFY(!closed.mouth.has_value() && closed.notes.isEmpty());
}

void tst_measure::mouth_from_the_nose() {
    const Measures m = measure(section_of(ellipse(600, 1.0), Openings{0.0, 50.0}));
    COMPARE_NEAR(norm(m.mouth->start), 0.0, 1e-6);
    COMPARE_NEAR(m.mouth->along, pi / 4.0, 1e-6);
    COMPARE_NEAR(m.mouth->straight, std::sqrt(0.5), 1e-6);
    COMPARE_NEAR(m.mouth->angle, -45.0, 1e-3);
    COMPARE_NEAR(m.mouth->panel_over_top, pi / 2.0, 1e-6);
}

void tst_measure::refused_mouths_data() {
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("end");

    QTest::newRow("wrong-way") << 9.0 << 3.0;
    QTest::newRow("below-zero") << -1.0 << 3.0;
    QTest::newRow("beyond") << 50.0 << 101.0;
    QTest::newRow("equal") << 5.0 << 5.0;
    QTest::newRow("nan") << std::nan("") << 5.0;
}

void tst_measure::refused_mouths() {
    QFETCH(double, start);
    QFETCH(double, end);
    const Measures m = measure(section_of(naca(0.0, 0.4, 0.12, 40), Openings{start, end}));
    QVERIFY(!m.mouth.has_value());
    QCOMPARE(m.notes.size(), qsizetype(1));
    QVERIFY(m.notes.first().startsWith(QStringLiteral("no mouth: openings ")));
}

void tst_measure::special_kinds() {
    tables::Table table = table_of(naca(0.0, 0.4, 0.12, 40));
    table.kind = tables::Kind::single_skin;
    const Measures rib = measure(*section_of_table(table).section);
    QVERIFY(!rib.thickness && !rib.camber && !rib.thickness_upright && !rib.camber_upright);
    QVERIFY(rib.nose && !rib.nose->over_thickness_squared && rib.area);
    QCOMPARE(rib.notes.size(), qsizetype(1));

    QPolygonF fold;
    for (int i = -40; i <= 40; ++i)
        fold << QPointF(std::abs(i) / 40.0, 0.0);
    table = table_of(fold);
    table.kind = tables::Kind::flat;
    const Measures flat = measure(*section_of_table(table).section);
    QVERIFY(!flat.thickness && !flat.nose && !flat.area && !flat.trailing_edge_angle);
    COMPARE_NEAR(flat.length, 2.0, 1e-13);
    COMPARE_NEAR(flat.upper_length, 1.0, 1e-13);
}

void tst_measure::equal_sides() {
    // A point-symmetric figure of eight encloses as much above as below.
    QPolygonF points;
    for (int i = 0; i <= 80; ++i) {
        const double a = 2.0 * pi * i / 80;
        points << QPointF(0.5 + 0.5 * std::cos(a), 0.1 * std::sin(2.0 * a));
    }
    const Section section = section_of(points);
    QVERIFY(section.equal_sides && !section.was_reversed);
    QVERIFY(measure(section).notes.first().contains(QStringLiteral("same mean height")));
    const Section other = section_of(reversed(points));
    QVERIFY(other.equal_sides && !other.was_reversed);
}

void tst_measure::nose_corner() {
    const QPolygonF diamond = {{1.0, 0.0},    {0.75, 0.05}, {0.5, 0.1},    {0.25, 0.05}, {0.0, 0.0},
                               {0.25, -0.05}, {0.5, -0.1},  {0.75, -0.05}, {1.0, 0.0}};
    const Section section = section_of(diamond);
    const Measures m = measure(section);
    QVERIFY(!m.nose.has_value());
    QVERIFY(m.notes.first().contains(QStringLiteral("corner")));
    COMPARE_NEAR(m.thickness->size, 0.2, 0.01);
}

void tst_measure::refused_sections() {
    QCOMPARE(section_of_table(table_of({})).reason,
             QStringLiteral("0 different points, expected at least 3"));
    QCOMPARE(section_of_table(table_of({{0.5, 0.0}, {0.5, 0.5}, {0.5, 1.0}})).reason,
             QStringLiteral("an outline of no width"));
    QCOMPARE(section_of_spline(SplineFoil()).reason,
             QStringLiteral("0 control points, expected at least 2"));
}

AEROLITH_GUILESS_TEST_MAIN(tst_measure)
#include "tst_measure.moc"
