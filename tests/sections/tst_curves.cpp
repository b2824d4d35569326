// SPDX-FileCopyrightText: Aerolith developers
// Splines and tables as exact curves.
#include "numerics/b_spline.h"
#include "outlines.h"
#include "sections/curve.h"
#include "sections/plane.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace sections;

namespace {

// A rib without a lower skin: a nose, then straight edges between corners.
const QPolygonF rib = {
    {1.0, 0.0},     {0.9, 0.03},      {0.7, 0.07},    {0.5, 0.1},    {0.3, 0.11},    {0.15, 0.1},
    {0.05, 0.06},   {0.015, 0.03},    {0.0, 0.0},     {0.01, -0.02}, {0.03, -0.034}, {0.05, -0.04},
    {0.07, -0.043}, {0.085, -0.0443}, {0.1, -0.0445}, {0.2, 0.09},   {0.4, -0.06},   {0.65, 0.05},
    {0.78, -0.08},  {0.86, -0.04},    {0.93, -0.015}, {1.0, 0.0}};

} // namespace

class tst_curves : public QObject {
    Q_OBJECT

private slots:
    void spline_has_the_samples_of_the_window_data();
    void spline_has_the_samples_of_the_window();
    void spline_pieces();
    void sharpened_point();
    void coinciding_points_are_a_corner();
    void refused_splines_data();
    void refused_splines();
    void circle();
    void ellipse_converges();
    void corners_are_kept();
    void nose_of_a_thin_table_is_no_corner();
    void long_edge_stays_straight();
    void repeated_points();
    void refused_tables_data();
    void refused_tables();
    void places();
    void nearest_is_the_nearest();
    void extremes_and_crossings();
    void parts();
    void flat_lines();
};

void tst_curves::spline_has_the_samples_of_the_window_data() {
    QTest::addColumn<QList<QPointF>>("points");
    QTest::addColumn<int>("sharp_knot");

    QTest::newRow("two-points") << hull.mid(0, 2) << 0;
    QTest::newRow("three-points") << hull.mid(0, 3) << 0;
    QTest::newRow("four-points") << hull.mid(0, 4) << 0;
    QTest::newRow("eight-points") << QList<QPointF>(hull) << 0;
    QTest::newRow("sharpened") << QList<QPointF>(hull) << 4;
    QTest::newRow("sharpened-at-the-first-parabola") << QList<QPointF>(hull) << 2;
    QTest::newRow("sharpened-in-the-last-line") << QList<QPointF>(hull) << 8;
}

void tst_curves::spline_has_the_samples_of_the_window() {
    QFETCH(QList<QPointF>, points);
    QFETCH(int, sharp_knot);
    SplineFoil spline = spline_of(points);
    if (sharp_knot > 0)
        spline.b_knots[sharp_knot + 1] = spline.b_knots[sharp_knot] + 0.0001;
    const CurveResult result = spline_curve(spline);
    QCOMPARE(result.reason, QString());
    for (const QPointF& sample : spline.make_SplinePoly())
        COMPARE_NEAR(result.curve.nearest(sample).distance, 0.0, 1e-13);
    // Conversely, the ends of each piece are values at a knot.
    const std::vector<Piece>& pieces = result.curve.pieces();
    COMPARE_NEAR(norm(pieces.front().position(0.0) - points.first()), 0.0, 0.0);
    COMPARE_NEAR(norm(pieces.back().position(1.0) - points.last()), 0.0, 1e-15);
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i) {
        const QPointF at_knot = B_spline_point(spline.num_pnt, DEGREE2, spline.CP, spline.b_knots,
                                               spline.b_knots[i + 2]);
        COMPARE_NEAR(norm(pieces[i].position(1.0) - at_knot), 0.0, 1e-13);
    }
}

void tst_curves::spline_pieces() {
    const Curve curve = spline_curve(spline_of(hull)).curve;
    QCOMPARE(curve.pieces().size(), std::size_t(8));
    for (std::size_t i = 0; i < 8; ++i)
        QCOMPARE(curve.pieces()[i].degree(), i == 0 || i == 7 ? 1 : 2);
    // The end tangents of an inner parabola meet in a control point; its ends are midpoints.
    COMPARE_NEAR(norm(curve.pieces()[2].position(0.0) - 0.5 * (hull[1] + hull[2])), 0.0, 1e-15);
    for (int i = 0; i < 7; ++i)
        QVERIFY(!curve.has_corner_after(i));
}

void tst_curves::sharpened_point() {
    SplineFoil spline = spline_of(hull);
    spline.b_knots[5] = spline.b_knots[4] + 0.0001;
    const CurveResult result = spline_curve(spline);
    QCOMPARE(result.corners, 1);
    QVERIFY(result.curve.has_corner_after(2) && result.curve.has_corner_after(3));
    QVERIFY(!result.curve.has_corner_after(1) && !result.curve.has_corner_after(4));
    QVERIFY(result.curve.nearest(hull[3]).distance < 1e-3);
    // An exact double knot passes through the point.
    spline.b_knots[5] = spline.b_knots[4];
    const CurveResult exact = spline_curve(spline);
    QCOMPARE(exact.corners, 1);
    QVERIFY(exact.curve.has_corner_after(2) && !exact.curve.has_corner_after(3));
    COMPARE_NEAR(exact.curve.nearest(hull[3]).distance, 0.0, 1e-15);
}

void tst_curves::coinciding_points_are_a_corner() {
    QPolygonF points = hull;
    points.insert(3, hull[3]);
    const CurveResult result = spline_curve(spline_of(points));
    QCOMPARE(result.corners, 1);
    COMPARE_NEAR(result.curve.nearest(hull[3]).distance, 0.0, 1e-15);
}

void tst_curves::refused_splines_data() {
    QTest::addColumn<int>("what");
    QTest::addColumn<QString>("reason");

    QTest::newRow("degree") << 0 << "degree 3, expected 2";
    QTest::newRow("one-point") << 1 << "1 control points, expected at least 2";
    QTest::newRow("decreasing") << 2 << "decreasing knots";
    QTest::newRow("nan-knot") << 3 << "a knot that is not finite";
    QTest::newRow("infinite-point") << 4 << "a control point that is not finite";
    QTest::newRow("torn") << 5 << "knot 6 tears the curve";
    QTest::newRow("outside") << 6 << "knots outside of 0..1";
    QTest::newRow("one-place") << 7 << "all control points are one";
    QTest::newRow("all-knots-one") << 8 << "all control points are one";
}

void tst_curves::refused_splines() {
    QFETCH(int, what);
    QFETCH(QString, reason);
    SplineFoil spline = spline_of(hull);
    double* t = spline.b_knots;
    switch (what) {
    case 0:
        spline.degree = 3;
        break;
    case 1:
        spline.num_pnt = 1;
        break;
    case 2:
        t[5] = t[3];
        t[4] = t[6];
        break;
    case 3:
        t[10] = std::numeric_limits<double>::quiet_NaN();
        break;
    case 4:
        spline.CP[7].setY(std::numeric_limits<double>::infinity());
        break;
    case 5:
        t[4] = t[5] = t[6];
        break;
    case 6:
        t[9] = t[10] = 2.0;
        break;
    case 7:
        std::fill(spline.CP, spline.CP + 8, QPointF(1.0, 2.0));
        break;
    default:
        std::fill(t, t + 11, 0.5);
        break;
    }
    const CurveResult result = spline_curve(spline);
    QCOMPARE(result.reason, reason);
    QVERIFY(result.curve.is_empty());
}

void tst_curves::circle() {
    // Radius 0.5, 400 points: the error is of the order of the fourth power of the step.
    const Curve curve = table_curve(ellipse(400, 1.0)).curve;
    COMPARE_NEAR(curve.length(), pi, 1e-6);
    COMPARE_NEAR(curve.signed_area(), 0.25 * pi, 1e-6);
    COMPARE_NEAR(norm(curve.centroid() - QPointF(0.5, 0.0)), 0.0, 1e-6);
    COMPARE_NEAR(curve.curvature(curve.place_at(0.5 * pi)), 2.0, 1e-3);
}

// The error between the points decreases with the fourth power of their distance.
void tst_curves::ellipse_converges() {
    const double b = 0.12;
    double before = 0.0;
    for (const int count : {50, 100, 200, 400}) {
        double off = 0.0;
        const Curve curve = table_curve(ellipse(count, b)).curve;
        for (std::size_t i = curve.pieces().size() / 4; i < curve.pieces().size() * 3 / 4; ++i) {
            const QPointF point = curve.pieces()[i].position(0.5);
            const double x = 2.0 * point.x() - 1.0;
            const double y = 2.0 * point.y() / b;
            off = std::max(off, std::abs(0.5 * b * (std::hypot(x, y) - 1.0)));
        }
        if (before > 0.0)
            QVERIFY2(off < before / 14.0, qPrintable(QString::number(off)));
        before = off;
    }
    QVERIFY2(before < 4e-9, qPrintable(QString::number(before)));
}

void tst_curves::corners_are_kept() {
    const CurveResult result = table_curve(rib);
    QCOMPARE(result.corners, 5);
    QCOMPARE(result.straight_edges, 4);
    for (qsizetype i = 14; i < 18; ++i)
        COMPARE_NEAR(result.curve.nearest(0.5 * (rib[i] + rib[i + 1])).distance, 0.0, 1e-15);
    for (const QPointF& point : rib)
        COMPARE_NEAR(result.curve.nearest(point).distance, 0.0, 1e-15);
}

void tst_curves::nose_of_a_thin_table_is_no_corner() {
    for (const double b : {0.5, 0.12, 0.06, 0.03}) {
        QPolygonF points;
        for (const double x : {1.0, 0.7, 0.4, 0.2, 0.1, 0.05, 0.025, 0.0125})
            points << QPointF(x, b * std::sqrt(x * (1.0 - x)));
        points << QPointF(0.0, 0.0);
        for (qsizetype i = points.size() - 2; i >= 0; --i)
            points << QPointF(points[i].x(), -points[i].y());
        for (const double shift : {0.0, -100.0}) {
            const CurveResult result = table_curve(points.translated(shift, shift));
            QCOMPARE(result.corners, 0);
            QCOMPARE(result.straight_edges, 0);
        }
    }
}

void tst_curves::long_edge_stays_straight() {
    // A round nose of radius 0.05 between two tangent edges.
    QPolygonF points = {{1.0, 0.05}};
    for (int i = 0; i <= 20; ++i) {
        const double a = pi * (0.5 + i / 20.0);
        points << QPointF(0.05 + 0.05 * std::cos(a), 0.05 * std::sin(a));
    }
    points << QPointF(1.0, -0.05);
    const CurveResult result = table_curve(points);
    QCOMPARE(result.straight_edges, 2);
    QCOMPARE(result.corners, 0);
    COMPARE_NEAR(result.curve.length(), 1.9 + 0.05 * pi, 2e-6);
    // It joins the edges without a kink.
    const std::vector<Piece>& pieces = result.curve.pieces();
    COMPARE_NEAR(turning(pieces[0].tangent(1.0), pieces[1].tangent(0.0)), 0.0, 1e-12);
}

void tst_curves::repeated_points() {
    QPolygonF points = ellipse(60, 0.12);
    points.insert(20, points[20]);
    points.insert(40, points[40] + QPointF(1e-12, 0.0));
    COMPARE_NEAR(table_curve(points).curve.length(), table_curve(ellipse(60, 0.12)).curve.length(),
                 1e-9);
}

void tst_curves::refused_tables_data() {
    QTest::addColumn<QList<QPointF>>("points");
    QTest::addColumn<QString>("reason");

    QTest::newRow("none") << QList<QPointF>() << "0 different points, expected at least 3";
    QTest::newRow("repeated") << QList<QPointF>({{1, 0}, {1, 0}, {0, 0}, {0, 0}})
                              << "2 different points, expected at least 3";
    QTest::newRow("nan") << QList<QPointF>({{1, 0}, {0.5, std::nan("")}, {0, 0}})
                         << "a point that is not finite or beyond 1e6";
    QTest::newRow("far") << QList<QPointF>({{1, 0}, {0.5, 2e6}, {0, 0}})
                         << "a point that is not finite or beyond 1e6";
}

void tst_curves::refused_tables() {
    QFETCH(QList<QPointF>, points);
    QFETCH(QString, reason);
    QCOMPARE(table_curve(points).reason, reason);
}

void tst_curves::places() {
    const Curve curve = table_curve(rib).curve;
    for (int i = 0; i <= 50; ++i) {
        const double distance = curve.length() * i / 50.0;
        COMPARE_NEAR(curve.length_to(curve.place_at(distance)), distance, 1e-13);
    }
    COMPARE_NEAR(norm(curve.position(curve.place_at(-1.0)) - rib.first()), 0.0, 0.0);
    COMPARE_NEAR(norm(curve.position(curve.place_at(9.0)) - rib.last()), 0.0, 1e-15);
}

void tst_curves::nearest_is_the_nearest() {
    const Curve curve = spline_curve(spline_of(hull)).curve;
    const Curve table = table_curve(rib).curve;
    for (const Curve* each : {&curve, &table}) {
        for (int i = 0; i < 60; ++i) {
            const QPointF q(-0.2 + 0.023 * i, 0.2 * std::sin(1.7 * i));
            double searched = 1e9;
            for (int k = 0; k <= 2000; ++k)
                searched =
                    std::min(searched,
                             norm(each->position(each->place_at(each->length() * k / 2000.0)) - q));
            const Foot foot = each->nearest(q);
            QVERIFY(foot.distance <= searched + 1e-14);
            QVERIFY(foot.distance > searched - 1e-3);
            COMPARE_NEAR(norm(each->position(foot.place) - q), foot.distance, 0.0);
        }
    }
}

void tst_curves::extremes_and_crossings() {
    const Curve curve = spline_curve(spline_of(hull)).curve;
    double highest = -1.0;
    for (int k = 0; k <= 100000; ++k)
        highest = std::max(highest, curve.position(curve.place_at(curve.length() * k / 1e5)).y());
    COMPARE_NEAR(curve.position(curve.extreme({0.0, 1.0})).y(), highest, 1e-9);
    const QPointF nose = curve.position(curve.extreme({-1.0, 0.0}));
    COMPARE_NEAR(norm(curve.position(curve.farthest({2.0, nose.y()})) - nose), 0.0, 1e-8);

    const std::vector<Place> cut = curve.crossings({1.0, 0.0}, 0.25);
    QCOMPARE(cut.size(), std::size_t(2));
    for (const Place& place : cut)
        COMPARE_NEAR(curve.position(place).x(), 0.25, 1e-15);
    // A knot belongs to two pieces, the tangent at the nose touches.
    QCOMPARE(curve.crossings({1.0, 0.0}, 0.5).size(), std::size_t(2));
    QCOMPARE(curve.crossings({1.0, 0.0}, nose.x()).size(), std::size_t(1));
    QVERIFY(curve.crossings({1.0, 0.0}, nose.x() - 0.001).empty());
}

void tst_curves::parts() {
    const Curve curve = table_curve(rib).curve;
    const Place from = curve.place_at(0.2);
    const Place to = curve.place_at(1.9);
    const Curve part = curve.part(from, to);
    COMPARE_NEAR(part.length(), 1.7, 1e-12);
    COMPARE_NEAR(norm(part.position(part.begin()) - curve.position(from)), 0.0, 1e-15);
    COMPARE_NEAR(norm(part.position(part.end()) - curve.position(to)), 0.0, 1e-15);
    const auto corners = [](const Curve& each) {
        int count = 0;
        for (int i = 0; i < int(each.pieces().size()); ++i)
            count += each.has_corner_after(i);
        return count;
    };
    QVERIFY(corners(part) > 1);
    QCOMPARE(corners(curve.reversed()), 5);
    COMPARE_NEAR(curve.reversed().length(), curve.length(), 1e-13);
    COMPARE_NEAR(curve.reversed().signed_area(), -curve.signed_area(), 1e-15);
    // The end of one piece is the start of the next.
    QCOMPARE(curve.part({0, 1.0}, {2, 0.0}).pieces().size(), std::size_t(1));
    QVERIFY(curve.part({0, 1.0}, {1, 0.0}).is_empty());
}

void tst_curves::flat_lines() {
    const Curve curve = spline_curve(spline_of(hull)).curve;
    for (const double flatness : {1e-3, 1e-6}) {
        const QPolygonF line = curve.polyline(flatness);
        for (qsizetype i = 0; i + 1 < line.size(); ++i)
            QVERIFY(curve.nearest(0.5 * (line[i] + line[i + 1])).distance <= flatness);
    }
    QVERIFY(curve.polyline(1e-3).size() < 60);
}

AEROLITH_GUILESS_TEST_MAIN(tst_curves)
#include "tst_curves.moc"
