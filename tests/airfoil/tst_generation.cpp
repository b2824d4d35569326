// SPDX-FileCopyrightText: Aerolith developers
// Outlines generated from other outlines, and parabolas.
#include "airfoil/airfoil.h"
#include "numerics/constants.h"
#include "numerics/fourier.h"
#include "numerics/transform.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

const double nan_value = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();
const int least_int = std::numeric_limits<int>::min();
const int greatest_int = std::numeric_limits<int>::max();

const QPolygonF one_point = {QPointF(3, 4)};

QPolygonF copies(int count) {
    return QPolygonF(QList<QPointF>(count, one_point.first()));
}

QPolygonF random_outline(int points, quint32 seed) {
    QRandomGenerator random(seed);
    QPolygonF poly;
    for (int i = 0; i < points; ++i) {
        const double x = random.bounded(1.0);
        poly.append(QPointF(x, random.bounded(0.4) - 0.2));
    }
    return poly;
}

// A section of 12 % thickness and 2 % camber with a closed trailing edge.
QPolygonF section(int points) {
    QPolygonF poly;
    for (int i = 0; i < points; ++i) {
        const double turn = i * 6.283185307179586 / (points - 1);
        const double camber = 0.02 * std::sin(turn / 2.0);
        poly.append(QPointF((1.0 + std::cos(turn)) / 2.0, 0.06 * std::sin(turn) + camber));
    }
    return poly;
}

double length_of(const QPolygonF& poly) {
    double sum = 0.0;
    for (qsizetype i = 1; i < poly.size(); ++i)
        sum += Dist2(poly[i - 1], poly[i]);
    return sum;
}

std::vector<double> abscissas(const QPolygonF& poly) {
    std::vector<double> values;
    for (const QPointF& point : poly)
        values.push_back(point.x());
    return values;
}

std::vector<double> ordinates(const QPolygonF& poly) {
    std::vector<double> values;
    for (const QPointF& point : poly)
        values.push_back(point.y());
    return values;
}

std::vector<double> fitted(std::vector<double> samples) {
    std::vector<double> out(1000);
    Fourier_Proc(int(samples.size() / 2), samples.data(), out.data());
    return out;
}

void compare_vector(QVector3D actual, QVector3D expected) {
    COMPARE_BITS(double(actual.x()), double(expected.x()));
    COMPARE_BITS(double(actual.y()), double(expected.y()));
    COMPARE_BITS(double(actual.z()), double(expected.z()));
}

} // namespace

class tst_generation : public QObject {
    Q_OBJECT

private slots:
    void parabola_worked_example();
    void parabola_has_its_vertex_and_passes_through_the_point();
    void parabola_of_a_point_above_its_vertex_divides_by_zero();
    void f_3P_does_not_read_the_first_coefficient();
    void Zero_Airfoil_keeps_every_x();
    void SqueezeAirfoil_scales_every_y();
    void Normala_data();
    void Normala();
    void Normala_turns_with_the_order_of_the_corners();
    void Normala_of_a_degenerate_triangle_is_zero();

    void Natur_Airfoil_worked_example();
    void Natur_Airfoil_adds_its_steps_up();
    void Natur_Airfoil_steps_are_equal_along_the_outline();
    void Natur_Airfoil_ends_at_the_last_point_for_every_N();
    void Natur_Airfoil_takes_a_repeated_point_at_fraction_0();
    void Natur_Airfoil_of_less_than_2_points_wanted_gives_the_first_twice();
    void Natur_Airfoil_of_one_point_gives_copies();
    void Natur_Airfoil_of_points_that_coincide();
    void Natur_Airfoil_of_two_points();

    void FourierInterpolationAirfoil_is_the_fit_of_the_closed_samples();
    void FourierInterpolationAirfoil_takes_the_first_point_for_the_last();
    void FourierInterpolationAirfoil_leaves_the_closing_sample_of_an_odd_count_out();
    void FourierInterpolationAirfoil_has_no_limit_of_1001_points_data();
    void FourierInterpolationAirfoil_has_no_limit_of_1001_points();
    void FourierInterpolationAirfoil_of_one_point_gives_zeros();
    void FourierInterpolationAirfoil_follows_a_section();

    void CreateSymetricAirfoil_subtracts_the_cosine_part_at_even_angles();
    void CreateSymetricAirfoil_returns_N_points_up_to_1000_data();
    void CreateSymetricAirfoil_returns_N_points_up_to_1000();
    void CreateSymetricAirfoil_of_one_point_gives_zeros();

    void empty_in_empty_out();
    void outlines_that_are_not_finite();
};

void tst_generation::parabola_worked_example() {
    COMPARE_BITS(k_a(0.0, 0.0, 1.0, 1.0), 1.0);
    COMPARE_NEAR(k_b(1.0, 0.0), 0.0, 0.0);
    COMPARE_BITS(k_c(0.0, 0.0, 1.0, 0.0), 0.0);
    COMPARE_BITS(k_y(1.0, 0.0, 0.0, 2.0), 4.0);
    COMPARE_BITS(k_a(1.0, 2.0, 3.0, 10.0), 2.0);
    COMPARE_BITS(k_b(2.0, 1.0), -4.0);
    COMPARE_BITS(k_c(1.0, 2.0, 2.0, -4.0), 4.0);
    COMPARE_BITS(k_y(2.0, -4.0, 4.0, 3.0), 10.0);
}

void tst_generation::parabola_has_its_vertex_and_passes_through_the_point() {
    QRandomGenerator random(1);
    for (int i = 0; i < 1000; ++i) {
        const double x0 = random.bounded(4.0) - 2.0;
        const double y0 = random.bounded(4.0) - 2.0;
        const double x1 = x0 + 0.5 + random.bounded(2.0);
        const double y1 = random.bounded(4.0) - 2.0;
        const double a = k_a(x0, y0, x1, y1);
        const double b = k_b(a, x0);
        const double c = k_c(x0, y0, a, b);
        COMPARE_NEAR(k_y(a, b, c, x0), y0, 1e-12);
        COMPARE_NEAR(k_y(a, b, c, x1), y1, 1e-12);
        COMPARE_NEAR(k_y(a, b, c, x0 + 0.25), k_y(a, b, c, x0 - 0.25), 1e-12);
    }
}

void tst_generation::parabola_of_a_point_above_its_vertex_divides_by_zero() {
    COMPARE_BITS(k_a(1.0, 0.0, 1.0, 2.0), infinity);
    QVERIFY(std::isnan(k_a(1.0, 2.0, 1.0, 2.0)));
}

void tst_generation::f_3P_does_not_read_the_first_coefficient() {
    double solu[] = {nan_value, 2.0, -3.0, 5.0};
    COMPARE_BITS(f_3P(solu, 4.0), 25.0);
    COMPARE_BITS(f_3P(solu, 0.0), 5.0);
}

void tst_generation::Zero_Airfoil_keeps_every_x() {
    const QPolygonF poly = random_outline(50, 2);
    const QPolygonF flat = Zero_Airfoil(poly);
    QCOMPARE(flat.size(), poly.size());
    for (qsizetype i = 0; i < poly.size(); ++i)
        COMPARE_BITS(flat[i], QPointF(poly[i].x(), 0.0));
}

void tst_generation::SqueezeAirfoil_scales_every_y() {
    const QPolygonF poly = random_outline(50, 3);
    for (const double scale : {0.5, 1.0, -1.0, 0.0}) {
        const QPolygonF squeezed = SqueezeAirfoil(scale, poly);
        QCOMPARE(squeezed.size(), poly.size());
        for (qsizetype i = 0; i < poly.size(); ++i)
            COMPARE_BITS(squeezed[i], QPointF(poly[i].x(), poly[i].y() * scale));
    }
}

void tst_generation::Normala_data() {
    QTest::addColumn<QVector3D>("T2");
    QTest::addColumn<QVector3D>("T3");
    QTest::addColumn<QVector3D>("normal");

    // clang-format off
    QTest::newRow("unit")       << QVector3D(1, 0, 0) << QVector3D(0, 1, 0) << QVector3D(0, 0, 1);
    QTest::newRow("oblong")     << QVector3D(0, 3, 0) << QVector3D(0, 0, 4) << QVector3D(1, 0, 0);
    QTest::newRow("slanted")    << QVector3D(4, 0, -3) << QVector3D(0, 1, 0) << QVector3D(0.6F, -0.0F, 0.8F);
    // Too short for Qt to normalise.
    QTest::newRow("tiny")       << QVector3D(1e-4F, 0, 0) << QVector3D(0, 1e-4F, 0) << QVector3D(0, 0, 1);
    QTest::newRow("denormal")   << QVector3D(1e-20F, 0, 0) << QVector3D(0, 1e-20F, 0) << QVector3D(0, 0, 1);
    QTest::newRow("huge")       << QVector3D(1e18F, 0, 0) << QVector3D(0, 1e18F, 0) << QVector3D(0, 0, 1);
    // clang-format on
}

void tst_generation::Normala() {
    QFETCH(QVector3D, T2);
    QFETCH(QVector3D, T3);
    QFETCH(QVector3D, normal);
    compare_vector(::Normala(QVector3D(0, 0, 0), T2, T3), normal);
}

void tst_generation::Normala_turns_with_the_order_of_the_corners() {
    const QVector3D a(1, 2, 3);
    const QVector3D b(4, 2, 8);
    const QVector3D c(-1, 0, 5);
    const QVector3D n = ::Normala(a, b, c);
    compare_vector(::Normala(a, c, b), -n);
    COMPARE_NEAR(double(QVector3D::dotProduct(n, b - a)), 0.0, 1e-6);
    COMPARE_NEAR(double(QVector3D::dotProduct(n, c - a)), 0.0, 1e-6);
    COMPARE_NEAR(double(n.length()), 1.0, 1e-6);
}

void tst_generation::Normala_of_a_degenerate_triangle_is_zero() {
    const QVector3D a(1, 2, 3);
    compare_vector(::Normala(a, a, a), QVector3D(0, 0, 0));
    compare_vector(::Normala(a, a, QVector3D(5, 6, 7)), QVector3D(0, 0, 0));
    compare_vector(::Normala(QVector3D(0, 0, 0), QVector3D(1, 1, 0), QVector3D(2, 2, 0)),
                   QVector3D(0, 0, 0));
}

void tst_generation::Natur_Airfoil_worked_example() {
    const QPolygonF path = {{0, 0}, {1, 0}, {1, 1}};
    COMPARE_POLYGON_BITS(Natur_Airfoil(3, path), QPolygonF({{0, 0}, {1, 0}, {1, 1}, {0, 0}}));
    COMPARE_POLYGON_BITS(Natur_Airfoil(5, path),
                         QPolygonF({{0, 0}, {0.5, 0}, {1, 0}, {1, 0.5}, {1, 1}, {0, 0}}));
}

// Each length is the previous one plus a step, as rounding shows: 0.1 added eight times is not 0.8.
void tst_generation::Natur_Airfoil_adds_its_steps_up() {
    const QPolygonF even = Natur_Airfoil(11, {{0, 0}, {1, 0}});
    double t = 0.0;
    for (int k = 1; k <= 8; ++k)
        t += 0.1;
    COMPARE_BITS(even[8], QPointF(t, 0));
}

void tst_generation::Natur_Airfoil_steps_are_equal_along_the_outline() {
    const QPolygonF path = {{0, 0}, {4, 0}, {4, 3}, {0, 3}, {0, 1}};
    const QPolygonF even = Natur_Airfoil(27, path);
    QCOMPARE(even.size(), 28);
    for (int i = 0; i < 27; ++i) {
        const double s = i * 0.5;
        const QPointF expected = s <= 4    ? QPointF(s, 0)
                                 : s <= 7  ? QPointF(4, s - 4)
                                 : s <= 11 ? QPointF(11 - s, 3)
                                           : QPointF(0, 14 - s);
        COMPARE_NEAR(Dist2(even[i], expected), 0.0, 1e-14);
    }
    COMPARE_BITS(even[27], path[0]);
}

// For about half of all N the summed steps exceed the total length, where f_ind returns the last
// point, which begins no bracket.
void tst_generation::Natur_Airfoil_ends_at_the_last_point_for_every_N() {
    const QPolygonF poly = section(61);
    const double total = length_of(poly);
    int beyond = 0;
    for (int N = 2; N < 600; ++N) {
        const QPolygonF even = Natur_Airfoil(N, poly);
        QCOMPARE(even.size(), N + 1);
        COMPARE_BITS(even.first(), poly.first());
        COMPARE_BITS(even.last(), poly.first());
        COMPARE_NEAR(Dist2(even[N - 1], poly.last()), 0.0, 1e-12);
        double t = 0.0;
        for (int k = 0; k < N - 1; ++k)
            t += total / (N - 1.0);
        beyond += t > total ? 1 : 0;
    }
    QVERIFY2(beyond > 200 && beyond < 400, qPrintable(QString::number(beyond)));
}

void tst_generation::Natur_Airfoil_takes_a_repeated_point_at_fraction_0() {
    const QPolygonF twice = {{0, 0}, {1, 0}, {1, 0}, {1, 1}};
    COMPARE_POLYGON_BITS(Natur_Airfoil(3, twice), QPolygonF({{0, 0}, {1, 0}, {1, 1}, {0, 0}}));
    const QPolygonF at_the_start = {{0, 0}, {0, 0}, {2, 0}};
    COMPARE_POLYGON_BITS(Natur_Airfoil(3, at_the_start),
                         QPolygonF({{0, 0}, {1, 0}, {2, 0}, {0, 0}}));

    QPolygonF at_the_end = section(31);
    at_the_end.append(at_the_end.last());
    for (int N = 2; N < 300; ++N) {
        const QPolygonF even = Natur_Airfoil(N, at_the_end);
        COMPARE_NEAR(Dist2(even[N - 1], at_the_end.last()), 0.0, 1e-12);
    }
}

void tst_generation::Natur_Airfoil_of_less_than_2_points_wanted_gives_the_first_twice() {
    const QPolygonF path = {{3, 4}, {1, 0}, {1, 1}};
    for (const int N : {1, 0, -1, -1000, least_int})
        COMPARE_POLYGON_BITS(Natur_Airfoil(N, path), copies(2));
}

void tst_generation::Natur_Airfoil_of_one_point_gives_copies() {
    for (const int N : {1, 2, 3, 40})
        COMPARE_POLYGON_BITS(Natur_Airfoil(N, one_point), copies(N + 1));
    COMPARE_POLYGON_BITS(Natur_Airfoil(0, one_point), copies(2));
}

void tst_generation::Natur_Airfoil_of_points_that_coincide() {
    COMPARE_POLYGON_BITS(Natur_Airfoil(4, copies(7)), copies(5));
}

void tst_generation::Natur_Airfoil_of_two_points() {
    COMPARE_POLYGON_BITS(Natur_Airfoil(5, QPolygonF() << QPointF(0, 0) << QPointF(4, 8)),
                         QPolygonF({{0, 0}, {1, 2}, {2, 4}, {3, 6}, {4, 8}, {0, 0}}));
}

void tst_generation::FourierInterpolationAirfoil_is_the_fit_of_the_closed_samples() {
    const QPolygonF poly = random_outline(120, 4);
    QPolygonF closed = poly;
    closed.last() = closed.first();
    const QPolygonF out = FourierInterpolationAirfoil(poly);
    const std::vector<double> X = fitted(abscissas(closed));
    const std::vector<double> Y = fitted(ordinates(closed));
    QCOMPARE(out.size(), 1000);
    for (int k = 0; k < 1000; ++k)
        COMPARE_BITS(out[k], QPointF(X[std::size_t(k)], Y[std::size_t(k)]));
}

void tst_generation::FourierInterpolationAirfoil_takes_the_first_point_for_the_last() {
    QPolygonF poly = random_outline(60, 5);
    const QPolygonF out = FourierInterpolationAirfoil(poly);
    poly.last() = QPointF(nan_value, 7.0);
    COMPARE_POLYGON_BITS(FourierInterpolationAirfoil(poly), out);
}

void tst_generation::FourierInterpolationAirfoil_leaves_the_closing_sample_of_an_odd_count_out() {
    const QPolygonF poly = random_outline(61, 6);
    std::vector<double> X = abscissas(poly);
    X.pop_back();
    const std::vector<double> without = fitted(X);
    const QPolygonF out = FourierInterpolationAirfoil(poly);
    for (int k = 0; k < 1000; ++k)
        COMPARE_BITS(out[k].x(), without[std::size_t(k)]);
}

void tst_generation::FourierInterpolationAirfoil_has_no_limit_of_1001_points_data() {
    QTest::addColumn<int>("points");
    for (const int points : {1000, 1001, 1002, 1500, 3001})
        QTest::addRow("%d-points", points) << points;
}

void tst_generation::FourierInterpolationAirfoil_has_no_limit_of_1001_points() {
    QFETCH(int, points);
    const QPolygonF out = FourierInterpolationAirfoil(section(points));
    QCOMPARE(out.size(), 1000);
    COMPARE_NEAR(Dist2(out[500], QPointF(0.0, 0.02)), 0.0, 1e-3);
    COMPARE_NEAR(out[0].x(), 1.0, 1e-4);
}

void tst_generation::FourierInterpolationAirfoil_of_one_point_gives_zeros() {
    COMPARE_POLYGON_BITS(FourierInterpolationAirfoil(one_point),
                         QPolygonF(QList<QPointF>(1000, QPointF(0, 0))));
}

void tst_generation::FourierInterpolationAirfoil_follows_a_section() {
    const QPolygonF out = FourierInterpolationAirfoil(section(1001));
    for (int k = 0; k < 1000; ++k) {
        const double turn = f_theta(k, 1000);
        COMPARE_NEAR(out[k].x(), (1.0 + std::cos(turn)) / 2.0, 1e-3);
        COMPARE_NEAR(out[k].y(), 0.06 * std::sin(turn) + 0.02 * std::sin(turn / 2.0), 1e-3);
    }
    // The points are concentrated at the nose.
    QVERIFY(Dist2(out[499], out[500]) < 1e-5);
    QVERIFY(Dist2(out[0], out[1]) > 1e-3);
}

void tst_generation::CreateSymetricAirfoil_subtracts_the_cosine_part_at_even_angles() {
    const QPolygonF poly = section(301);
    QPolygonF closed = poly;
    closed.last() = closed.first();
    std::vector<double> y = ordinates(closed);
    std::vector<double> Yc(1000);
    Fourier_Cos_Proc(150, y.data(), Yc.data());
    const QPolygonF smooth = FourierInterpolationAirfoil(poly);
    const QPolygonF out = CreateSymetricAirfoil(1000, poly);
    QCOMPARE(out.size(), 1000);
    for (int i = 0; i < 1000; ++i)
        COMPARE_BITS(out[i], QPointF(smooth[i].x(), smooth[i].y() - Yc[std::size_t(i)]));
    // The camber, an even function of the angle, vanishes at the nose, where the angles agree.
    COMPARE_NEAR(smooth[500].y(), 0.02, 1e-3);
    COMPARE_NEAR(out[500].y(), 0.0, 1e-6);
}

void tst_generation::CreateSymetricAirfoil_returns_N_points_up_to_1000_data() {
    QTest::addColumn<int>("N");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("count");

    QTest::newRow("usual") << 1000 << 301 << 1000;
    QTest::newRow("just-below") << 999 << 301 << 999;
    QTest::newRow("below") << 998 << 301 << 998;
    QTest::newRow("one") << 1 << 301 << 1;
    QTest::newRow("above") << 1001 << 301 << 1000;
    QTest::newRow("greatest-int") << greatest_int << 301 << 1000;
    QTest::newRow("zero") << 0 << 301 << 0;
    QTest::newRow("negative") << -5 << 301 << 0;
    QTest::newRow("least-int") << least_int << 301 << 0;
    QTest::newRow("as-many-points-as-places") << 1000 << 1001 << 1000;
    QTest::newRow("more-points-than-places") << 1000 << 1002 << 1000;
    QTest::newRow("many-points-few-wanted") << 10 << 1301 << 10;
}

void tst_generation::CreateSymetricAirfoil_returns_N_points_up_to_1000() {
    QFETCH(int, N);
    QFETCH(int, points);
    QFETCH(int, count);
    const QPolygonF out = CreateSymetricAirfoil(N, section(points));
    QCOMPARE(out.size(), count);
    COMPARE_POLYGON_BITS(out,
                         QPolygonF(CreateSymetricAirfoil(1000, section(points)).mid(0, count)));
}

void tst_generation::CreateSymetricAirfoil_of_one_point_gives_zeros() {
    COMPARE_POLYGON_BITS(CreateSymetricAirfoil(3, one_point),
                         QPolygonF(QList<QPointF>(3, QPointF(0, 0))));
}

void tst_generation::empty_in_empty_out() {
    QVERIFY(Zero_Airfoil({}).isEmpty());
    QVERIFY(SqueezeAirfoil(0.5, {}).isEmpty());
    QVERIFY(FourierInterpolationAirfoil({}).isEmpty());
    for (const int N : {least_int, -1, 0, 1, 1000, greatest_int}) {
        QVERIFY(Natur_Airfoil(N, {}).isEmpty());
        QVERIFY(CreateSymetricAirfoil(N, {}).isEmpty());
    }
}

void tst_generation::outlines_that_are_not_finite() {
    for (const double odd : {nan_value, infinity, -infinity}) {
        for (const int place : {0, 1, 7, 39}) {
            QPolygonF poly = random_outline(40, 7);
            poly[place].setX(odd);
            QCOMPARE(Natur_Airfoil(50, poly).size(), 51);
            QCOMPARE(FourierInterpolationAirfoil(poly).size(), 1000);
            QCOMPARE(CreateSymetricAirfoil(700, poly).size(), 700);
        }
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_generation)
#include "tst_generation.moc"
