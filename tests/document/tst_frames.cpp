// SPDX-FileCopyrightText: Aerolith developers
// The coordinate frames, and the conversion of a spline between them.
#include "document/frames.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

// The symmetric ten-point section in chord units.
SplineFoil section() {
    constexpr QPointF points[] = {{1.0, 0.0},   {0.7, -0.025}, {0.3, -0.07}, {0.05, -0.08},
                                  {0.0, -0.01}, {0.0, 0.01},   {0.05, 0.08}, {0.3, 0.07},
                                  {0.7, 0.025}, {1.0, 0.0}};
    SplineFoil spline;
    for (const QPointF& point : points)
        spline.CP[spline.num_pnt++] = point;
    spline.init_knots();
    spline.startVent = 1.1;
    spline.endVent = 4.25;
    return spline;
}

double width_of(const QPolygonF& curve) {
    double least = curve.first().x();
    double greatest = least;
    for (const QPointF& point : curve) {
        least = std::min(least, point.x());
        greatest = std::max(greatest, point.x());
    }
    return greatest - least;
}

double largest_difference(const SplineFoil& a, const SplineFoil& b) {
    double difference = 0.0;
    for (int i = 0; i < a.point_count(); ++i)
        difference = std::max(difference, (a.CP[i] - b.CP[i]).manhattanLength());
    return difference;
}

} // namespace

class tst_frames : public QObject {
    Q_OBJECT

private slots:
    void mapping_of_a_size_data();
    void mapping_of_a_size();
    void points_there_and_back();
    void view_there_and_back();
    void chord_units_of_any_drawing_data();
    void chord_units_of_any_drawing();
    void chord_units_of_a_small_drawing_far_away();
    void splines_without_a_place_data();
    void splines_without_a_place();
    void scaling_to_the_chord_data();
    void scaling_to_the_chord();
    void pinning_data();
    void pinning();
};

void tst_frames::mapping_of_a_size_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("xc");
    QTest::addColumn<int>("yc");
    QTest::addColumn<int>("chord");
    QTest::newRow("usual") << QSize(1024, 768) << 102 << 383 << 819;
    QTest::newRow("least") << QSize(555, 400) << 55 << 199 << 444;
    QTest::newRow("odd") << QSize(636, 564) << 63 << 281 << 509;
    QTest::newRow("none") << QSize(0, 0) << 0 << 0 << -1;
}

void tst_frames::mapping_of_a_size() {
    QFETCH(QSize, size);
    const ChordMapping mapping = ChordMapping::of_size(size);
    QCOMPARE(mapping.width, size.width() - 1);
    QCOMPARE(mapping.height, size.height() - 1);
    QTEST(mapping.xc, "xc");
    QTEST(mapping.yc, "yc");
    QTEST(mapping.chord, "chord");
    QCOMPARE(mapping.trailing_edge(), mapping.leading_edge() + QPointF(mapping.chord, 0.0));
}

void tst_frames::points_there_and_back() {
    const ChordMapping mapping = ChordMapping::of_size(QSize(1024, 768));
    QCOMPARE(mapping.to_pixels(QPointF(0.05, -0.08)), QPointF(142.95, 448.52));
    QCOMPARE(mapping.to_chord(QPointF(142.95, 448.52)), QPointF(0.05, -0.08));
    QCOMPARE(mapping.to_chord(mapping.trailing_edge()), QPointF(1.0, 0.0));
    QVERIFY(!std::isfinite(ChordMapping().to_chord(QPointF(1.0, 1.0)).x()));
}

void tst_frames::view_there_and_back() {
    const View view = {2.0, QPointF(10.0, -5.0)};
    COMPARE_BITS(view.to_widget(QPointF(3.0, 4.0)), QPointF(16.0, 3.0));
    COMPARE_BITS(view.to_logical(QPointF(16.0, 3.0)), QPointF(3.0, 4.0));
}

void tst_frames::chord_units_of_any_drawing_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPointF>("shift");
    QTest::newRow("companion") << QSize(1024, 768) << QPointF();
    QTest::newRow("small") << QSize(555, 400) << QPointF();
    QTest::newRow("large") << QSize(3840, 2160) << QPointF();
    QTest::newRow("shifted") << QSize(1024, 768) << QPointF(-3000.0, 777.0);
    QTest::newRow("beyond-the-search") << QSize(1024, 768) << QPointF(50000.0, -90000.0);
}

void tst_frames::chord_units_of_any_drawing() {
    QFETCH(QSize, size);
    QFETCH(QPointF, shift);
    const std::optional<SplineFoil> reference =
        in_chord_units(in_pixels(section(), ChordMapping::of_size(QSize(800, 600))));
    SplineFoil drawn = in_pixels(section(), ChordMapping::of_size(size));
    for (int i = 0; i < drawn.point_count(); ++i)
        drawn.CP[i] += shift;
    const std::optional<SplineFoil> spline = in_chord_units(drawn);
    QVERIFY(reference && spline);
    QVERIFY(largest_difference(*spline, *reference) < 1e-11);
    QVERIFY((spline->CP[0] - QPointF(1.0, 0.0)).manhattanLength() <= 1e-12);
    QVERIFY(std::abs(width_of(spline->make_SplinePoly()) - 1.0) < 1e-12);
    // The section begins along its lower side: below the chord, with y upwards.
    QVERIFY(spline->CP[3].y() < -0.07);
    QCOMPARE(spline->startVent, 1.1);
    QCOMPARE(spline->endVent, 4.25);
    QCOMPARE(spline->CP[spline->point_count()], QPointF());
}

// Scaled by the width of an empty range, it would be too small to be scaled again.
void tst_frames::chord_units_of_a_small_drawing_far_away() {
    SplineFoil drawn = section();
    for (int i = 0; i < drawn.point_count(); ++i)
        drawn.CP[i] = 0.01 * drawn.CP[i] + QPointF(50000.0, 0.0);
    const std::optional<SplineFoil> spline = in_chord_units(drawn);
    QVERIFY(spline);
    QVERIFY(std::abs(width_of(spline->make_SplinePoly()) - 1.0) < 1e-12);
}

void tst_frames::splines_without_a_place_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<QPointF>("points");
    QTest::newRow("no-points") << 0 << QPointF();
    QTest::newRow("no-width") << 5 << QPointF(3.0, 4.0);
    QTest::newRow("not-finite") << 5 << QPointF(std::numeric_limits<double>::quiet_NaN(), 0.0);
    QTest::newRow("infinite") << 5 << QPointF(std::numeric_limits<double>::infinity(), 0.0);
}

void tst_frames::splines_without_a_place() {
    QFETCH(int, count);
    QFETCH(QPointF, points);
    SplineFoil spline;
    spline.num_pnt = count;
    std::fill(spline.CP, spline.CP + MAXNUMPOINTS, points);
    spline.init_knots();
    QVERIFY(!in_chord_units(spline));
}

void tst_frames::scaling_to_the_chord_data() {
    QTest::addColumn<QPolygonF>("curve");
    QTest::addColumn<double>("factor");
    const auto curve = [](const QList<QPointF>& points) { return QPolygonF(points); };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("half as wide") << curve({{0.5, 0.0}, {2.5, 9.0}}) << 0.5;
    QTest::newRow("empty") << QPolygonF() << -1.0 / 20000.0;
    QTest::newRow("no width") << curve({{3.0, 0.0}, {3.0, 4.0}}) << 1.0;
    QTest::newRow("rounding noise") << curve({{3.0, 0.0}, {3.0 + 0.9e-6, 0.0}}) << 1.0;
    QTest::newRow("just wide enough") << curve({{0.0, 0.0}, {1.1e-6, 0.0}}) << 1.0 / 1.1e-6;
    QTest::newRow("no number") << curve({{nan, 0.0}, {nan, 1.0}}) << 1.0;
    QTest::newRow("one no number") << curve({{0.0, 0.0}, {nan, 1.0}, {4.0, 0.0}}) << 0.25;
    QTest::newRow("infinite") << curve({{0.0, 0.0}, {infinity, 1.0}}) << 1.0;
}

void tst_frames::scaling_to_the_chord() {
    QFETCH(QPolygonF, curve);
    QFETCH(double, factor);
    SplineFoil spline = section();
    scale_to_chord(spline, curve, 1.0);
    for (int i = 0; i < spline.point_count(); ++i)
        QVERIFY((spline.CP[i] - factor * section().CP[i]).manhattanLength() <=
                1e-15 * std::abs(factor));
    QCOMPARE(curve, spline.make_SplinePoly());
}

void tst_frames::pinning_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<QPointF>("edge");
    QTest::addColumn<bool>("moves");
    QTest::newRow("there") << 10 << QPointF(1.0, 0.0) << false;
    QTest::newRow("within the tolerance") << 10 << QPointF(1.0, 0.9e-5) << false;
    QTest::newRow("at the tolerance") << 10 << QPointF(1.0, 1e-5) << false;
    QTest::newRow("beyond the tolerance") << 10 << QPointF(1.0, 1.1e-5) << true;
    QTest::newRow("elsewhere") << 10 << QPointF(7.0, -3.0) << true;
    QTest::newRow("no points") << 0 << QPointF(7.0, -3.0) << false;
    QTest::newRow("no number") << 10 << QPointF(std::numeric_limits<double>::quiet_NaN(), 0.0)
                               << false;
}

// The curve passed in is empty, so that scaling has a visible effect.
void tst_frames::pinning() {
    QFETCH(int, count);
    QFETCH(QPointF, edge);
    QFETCH(bool, moves);
    SplineFoil spline = section();
    spline.num_pnt = count;
    QPolygonF curve;
    QCOMPARE(pin_to_trailing_edge(spline, curve, edge, 1.0), moves);
    QCOMPARE(curve.isEmpty(), !moves);
    for (int i = 0; i < spline.point_count(); ++i) {
        const QPointF point = section().CP[i];
        const QPointF wanted = moves ? (point + (edge - section().CP[0])) / -20000.0 : point;
        QVERIFY((spline.CP[i] - wanted).manhattanLength() <= 1e-15);
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_frames)
#include "tst_frames.moc"
