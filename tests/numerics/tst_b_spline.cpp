// SPDX-FileCopyrightText: Aerolith developers
// Basis functions and curve points.
#include "baseline/spline.h"
#include "curves.h"
#include "numerics/b_spline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QList>
#include <QRandomGenerator>

#include <cmath>
#include <limits>

namespace {

const double nan_value = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();
const double above_one = 1.0 + std::numeric_limits<double>::epsilon();
const double below_one = std::nextafter(1.0, 0.0);

double recursive_bernstein(int i, int n, double t) {
    if (i < 0 || i > n)
        return 0.0;
    if (n == 0)
        return 1.0;
    return (1.0 - t) * recursive_bernstein(i, n - 1, t) + t * recursive_bernstein(i - 1, n - 1, t);
}

} // namespace

class tst_b_spline : public QObject {
    Q_OBJECT

private slots:
    void dmin_data();
    void dmin();
    void bernstein_data();
    void bernstein();
    void bernstein_sums_to_one();
    void bernstein_has_the_bits_of_its_recursion();
    void bernstein_derivative_data();
    void bernstein_derivative();
    void cubic_value_data();
    void cubic_value();
    void cubic_reads_four_coefficients();

    void span_data();
    void span();
    void basis_on_whole_knots_data();
    void basis_on_whole_knots();
    void basis_of_four_points_data();
    void basis_of_four_points();
    void basis_on_repeated_knots_data();
    void basis_on_repeated_knots();
    void basis_of_clamped_knots_is_bernstein();
    void basis_reads_its_own_knots_only();
    void basis_agrees_with_recursion();
    void basis_below_degree_zero();

    void point_of_four_points_data();
    void point_of_four_points();
    void point_without_weight_data();
    void point_without_weight();
    void point_reads_its_own_input_only();
    void not_finite_points_data();
    void not_finite_points();
    void point_agrees_with_recursion();
};

void tst_b_spline::dmin_data() {
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("smaller");

    QTest::newRow("first-smaller") << 1.0 << 2.0 << 1.0;
    QTest::newRow("second-smaller") << 2.0 << 1.0 << 1.0;
    QTest::newRow("equal") << 3.0 << 3.0 << 3.0;
    QTest::newRow("below-zero") << -1.0 << -2.0 << -2.0;
    QTest::newRow("neighbours") << above_one << 1.0 << 1.0;
    QTest::newRow("zeros-give-second") << 0.0 << -0.0 << -0.0;
    QTest::newRow("infinite") << infinity << -infinity << -infinity;
    QTest::newRow("nan-first") << nan_value << 1.0 << 1.0;
    QTest::newRow("nan-second") << 1.0 << nan_value << nan_value;
}

void tst_b_spline::dmin() {
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(double, smaller);
    COMPARE_BITS(::dmin(a, b), smaller);
}

void tst_b_spline::bernstein_data() {
    QTest::addColumn<int>("i");
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("value");

    QTest::newRow("zero-of-zero") << 0 << 0 << 0.3 << 1.0;
    QTest::newRow("zero-of-zero-at-nan") << 0 << 0 << nan_value << 1.0;
    QTest::newRow("index-below-zero") << -1 << 3 << 0.3 << 0.0;
    QTest::newRow("index-above-degree") << 4 << 3 << 0.3 << 0.0;
    QTest::newRow("index-far-above-degree") << std::numeric_limits<int>::max() << 3 << 0.3 << 0.0;
    QTest::newRow("degree-below-zero") << 0 << -1 << 0.3 << 0.0;
    QTest::newRow("one-of-zero") << 1 << 0 << 0.3 << 0.0;
    QTest::newRow("middle") << 1 << 3 << 0.5 << 0.375;
    QTest::newRow("line-first") << 0 << 1 << 0.25 << 0.75;
    QTest::newRow("line-second") << 1 << 1 << 0.25 << 0.25;
    QTest::newRow("quarter-0-of-3") << 0 << 3 << 0.25 << 27.0 / 64.0;
    QTest::newRow("quarter-1-of-3") << 1 << 3 << 0.25 << 27.0 / 64.0;
    QTest::newRow("quarter-2-of-3") << 2 << 3 << 0.25 << 9.0 / 64.0;
    QTest::newRow("quarter-3-of-3") << 3 << 3 << 0.25 << 1.0 / 64.0;
    QTest::newRow("start-first") << 0 << 3 << 0.0 << 1.0;
    QTest::newRow("start-last") << 3 << 3 << 0.0 << 0.0;
    QTest::newRow("end-first") << 0 << 3 << 1.0 << 0.0;
    QTest::newRow("end-last") << 3 << 3 << 1.0 << 1.0;
    QTest::newRow("outside") << 1 << 2 << 2.0 << -4.0;
    QTest::newRow("degree-six") << 3 << 6 << 0.5 << 20.0 / 64.0;
}

void tst_b_spline::bernstein() {
    QFETCH(int, i);
    QFETCH(int, n);
    QFETCH(double, t);
    QFETCH(double, value);
    QCOMPARE(ulp_distance(::Bn(i, n, t), value), quint64(0));
}

void tst_b_spline::bernstein_sums_to_one() {
    for (const double t : dense_parameters()) {
        for (int n = 0; n <= 6; ++n) {
            double sum = 0.0;
            for (int i = 0; i <= n; ++i)
                sum += ::Bn(i, n, t);
            COMPARE_ULP(sum, 1.0, 8);
        }
    }
}

void tst_b_spline::bernstein_has_the_bits_of_its_recursion() {
    for (int n = 0; n <= 8; ++n) {
        for (int i = 0; i <= n; ++i) {
            for (double t = -0.25; t < 1.25; t += 0.0137)
                COMPARE_BITS(::Bn(i, n, t), recursive_bernstein(i, n, t));
        }
    }
}

void tst_b_spline::bernstein_derivative_data() {
    QTest::addColumn<int>("i");
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("value");

    // d/dt of (1-t)^3, 3t(1-t)^2, 3t^2(1-t), t^3.
    QTest::newRow("0-of-3") << 0 << 3 << 0.25 << -27.0 / 16.0;
    QTest::newRow("1-of-3") << 1 << 3 << 0.25 << 9.0 / 16.0;
    QTest::newRow("2-of-3") << 2 << 3 << 0.25 << 15.0 / 16.0;
    QTest::newRow("3-of-3") << 3 << 3 << 0.25 << 3.0 / 16.0;
    QTest::newRow("start-0-of-3") << 0 << 3 << 0.0 << -3.0;
    QTest::newRow("start-1-of-3") << 1 << 3 << 0.0 << 3.0;
    QTest::newRow("end-3-of-3") << 3 << 3 << 1.0 << 3.0;
    QTest::newRow("line-0") << 0 << 1 << 0.7 << -1.0;
    QTest::newRow("line-1") << 1 << 1 << 0.7 << 1.0;
    QTest::newRow("degree-zero") << 0 << 0 << 0.7 << 0.0;
    QTest::newRow("index-below-zero") << -1 << 3 << 0.7 << 0.0;
    QTest::newRow("index-far-above-degree") << 5 << 3 << 0.7 << 0.0;
    QTest::newRow("least-index") << std::numeric_limits<int>::min() << 3 << 0.7 << 0.0;
    QTest::newRow("least-degree") << 0 << std::numeric_limits<int>::min() << 0.7 << 0.0;
}

void tst_b_spline::bernstein_derivative() {
    QFETCH(int, i);
    QFETCH(int, n);
    QFETCH(double, t);
    QFETCH(double, value);
    QCOMPARE(ulp_distance(::d_Bn(i, n, t), value), quint64(0));
}

void tst_b_spline::cubic_value_data() {
    QTest::addColumn<QList<double>>("coefficients");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("slope");

    const QList<double> line{0.0, 1.0 / 3.0, 2.0 / 3.0, 1.0};
    for (const double t : {0.0, 0.001, 0.125, 0.3, 0.5, 0.77, 0.999, 1.0})
        QTest::addRow("linear-precision-at-%g", t) << line << t << t << 1.0;
    QTest::newRow("constant") << QList<double>{-7.5, -7.5, -7.5, -7.5} << 0.3 << -7.5 << 0.0;
    QTest::newRow("cube") << QList<double>{0.0, 0.0, 0.0, 1.0} << 0.5 << 0.125 << 0.75;
    QTest::newRow("first-alone") << QList<double>{1.0, 0.0, 0.0, 0.0} << 0.5 << 0.125 << -0.75;
    QTest::newRow("second-alone") << QList<double>{0.0, 8.0, 0.0, 0.0} << 0.25 << 27.0 / 8.0 << 4.5;
    QTest::newRow("third-alone") << QList<double>{0.0, 0.0, 8.0, 0.0} << 0.25 << 9.0 / 8.0 << 7.5;
}

void tst_b_spline::cubic_value() {
    QFETCH(QList<double>, coefficients);
    QFETCH(double, t);
    QFETCH(double, value);
    QFETCH(double, slope);
    COMPARE_NEAR(spline_value(coefficients.data(), t), value, 4e-15);
    COMPARE_NEAR(spline_d_value(coefficients.data(), t), slope, 4e-15);
}

void tst_b_spline::cubic_reads_four_coefficients() {
    double five[5] = {1.0, 1.0, 1.0, 1.0, nan_value};
    COMPARE_NEAR(spline_value(five, 0.3), 1.0, 4e-16);
    COMPARE_NEAR(spline_d_value(five, 0.3), 0.0, 4e-16);
    double last[4] = {0.0, 0.0, 0.0, nan_value};
    QVERIFY(std::isnan(spline_value(last, 0.3)));
    QVERIFY(std::isnan(spline_d_value(last, 0.3)));
}

void tst_b_spline::span_data() {
    QTest::addColumn<int>("i");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("value");

    // Knots 0, 0.25, 0.25, 0.5, 0.4, 1.
    QTest::newRow("left-end") << 0 << 0.0 << 1.0;
    QTest::newRow("below-left-end") << 0 << -1e-300 << 0.0;
    QTest::newRow("inside") << 0 << 0.1 << 1.0;
    QTest::newRow("just-before-right-end") << 0 << std::nextafter(0.25, 0.0) << 1.0;
    QTest::newRow("right-end") << 0 << 0.25 << 0.0;
    QTest::newRow("empty-span") << 1 << 0.25 << 0.0;
    QTest::newRow("next-left-end") << 2 << 0.25 << 1.0;
    QTest::newRow("next-right-end") << 2 << 0.5 << 0.0;
    QTest::newRow("backward-span-inside") << 3 << 0.45 << 0.0;
    QTest::newRow("backward-span-left") << 3 << 0.5 << 0.0;
    QTest::newRow("last-left-end") << 4 << 0.4 << 1.0;
    QTest::newRow("last-right-end") << 4 << 1.0 << 0.0;
    QTest::newRow("nan") << 0 << nan_value << 0.0;
    QTest::newRow("infinite") << 4 << infinity << 0.0;
}

void tst_b_spline::span() {
    QFETCH(int, i);
    QFETCH(double, t);
    QFETCH(double, value);
    double knots[] = {0.0, 0.25, 0.25, 0.5, 0.4, 1.0};
    COMPARE_BITS(deBoor(i, 0, knots, t), value);
}

void tst_b_spline::basis_on_whole_knots_data() {
    QTest::addColumn<int>("degree");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("value");

    QTest::newRow("hat-start") << 1 << 2.0 << 0.0;
    QTest::newRow("hat-rising") << 1 << 2.25 << 0.25;
    QTest::newRow("hat-top") << 1 << 3.0 << 1.0;
    QTest::newRow("hat-falling") << 1 << 3.25 << 0.75;
    QTest::newRow("hat-end") << 1 << 4.0 << 0.0;
    QTest::newRow("quadratic-before") << 2 << 1.75 << 0.0;
    QTest::newRow("quadratic-first-half") << 2 << 2.5 << 0.125;
    QTest::newRow("quadratic-first-knot") << 2 << 3.0 << 0.5;
    QTest::newRow("quadratic-top") << 2 << 3.5 << 0.75;
    QTest::newRow("quadratic-second-knot") << 2 << 4.0 << 0.5;
    QTest::newRow("quadratic-last-half") << 2 << 4.5 << 0.125;
    QTest::newRow("quadratic-end") << 2 << 5.0 << 0.0;
    QTest::newRow("cubic-first-knot") << 3 << 3.0 << 1.0 / 6.0;
    QTest::newRow("cubic-top") << 3 << 4.0 << 2.0 / 3.0;
    QTest::newRow("cubic-last-knot") << 3 << 5.0 << 1.0 / 6.0;
    QTest::newRow("cubic-half") << 3 << 3.5 << 23.0 / 48.0;
}

void tst_b_spline::basis_on_whole_knots() {
    QFETCH(int, degree);
    QFETCH(double, t);
    QFETCH(double, value);
    double knots[] = {0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0};
    COMPARE_ULP(deBoor(2, degree, knots, t), value, 1);
}

void tst_b_spline::basis_of_four_points_data() {
    QTest::addColumn<double>("t");
    QTest::addColumn<QList<double>>("values");

    QTest::newRow("middle") << 0.5 << QList<double>{0.0, 0.5, 0.5, 0.0};
    QTest::newRow("first-sample") << 0.001 << QList<double>{0.000018, 0.0, 0.0, 0.0};
    QTest::newRow("last-span") << 0.9 << QList<double>{0.0, 0.0, 0.0, 0.18};
    QTest::newRow("start") << 0.0 << QList<double>{0.0, 0.0, 0.0, 0.0};
    QTest::newRow("end") << 1.0 << QList<double>{0.0, 0.0, 0.0, 0.0};
    QTest::newRow("second-span") << 0.25 << QList<double>{0.75, 0.125, 0.0, 0.0};
}

void tst_b_spline::basis_of_four_points() {
    QFETCH(double, t);
    QFETCH(QList<double>, values);
    QList<double> knots = uniform_knots(4, 2);
    for (int i = 0; i < 4; ++i)
        COMPARE_NEAR(deBoor(i, 2, knots.data(), t), values[i], 2.3e-16);
}

void tst_b_spline::basis_on_repeated_knots_data() {
    QTest::addColumn<QList<double>>("knots");
    QTest::addColumn<int>("degree");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("value");

    QTest::newRow("double-first") << QList<double>{0.0, 0.0, 1.0} << 1 << 0.25 << 0.75;
    QTest::newRow("double-first-at-knot") << QList<double>{0.0, 0.0, 1.0} << 1 << 0.0 << 1.0;
    QTest::newRow("double-last") << QList<double>{0.0, 1.0, 1.0} << 1 << 0.25 << 0.25;
    QTest::newRow("all-equal") << QList<double>{1.0, 1.0, 1.0, 1.0} << 2 << 1.0 << 0.0;
    QTest::newRow("all-zero") << QList<double>{0.0, 0.0, 0.0, 0.0} << 2 << 0.5 << 0.0;
    QTest::newRow("triple-first") << QList<double>{0.0, 0.0, 0.0, 1.0} << 2 << 0.5 << 0.25;
    QTest::newRow("triple-last") << QList<double>{0.0, 1.0, 1.0, 1.0} << 2 << 0.5 << 0.25;
    QTest::newRow("double-in-the-middle") << QList<double>{0.0, 0.5, 0.5, 1.0} << 2 << 0.5 << 1.0;
    // Only 0/0 counts as 0: the basis of degree 1 is 0.5 here, and its span has no length.
    QTest::newRow("falling-back") << QList<double>{0.0, 0.5, 0.0, 1.0} << 2 << 0.25 << infinity;
    QTest::newRow("double-before-it") << QList<double>{0.0, 0.5, 0.5, 1.0} << 2 << 0.25 << 0.25;
}

void tst_b_spline::basis_on_repeated_knots() {
    QFETCH(QList<double>, knots);
    QFETCH(int, degree);
    QFETCH(double, t);
    QFETCH(double, value);
    COMPARE_BITS(deBoor(0, degree, knots.data(), t), value);
}

void tst_b_spline::basis_of_clamped_knots_is_bernstein() {
    for (int degree = 1; degree <= 5; ++degree) {
        QList<double> knots(degree + 1, 0.0);
        knots += QList<double>(degree + 1, 1.0);
        for (int step = 0; step < 200; ++step) {
            const double t = step / 200.0;
            for (int i = 0; i <= degree; ++i)
                COMPARE_NEAR(deBoor(i, degree, knots.data(), t), ::Bn(i, degree, t), 1e-15);
        }
    }
}

void tst_b_spline::basis_reads_its_own_knots_only() {
    for (int degree = 0; degree <= 5; ++degree) {
        QList<double> knots(20, nan_value);
        for (int i = 0; i <= degree + 1; ++i)
            knots[7 + i] = i;
        const double value = deBoor(7, degree, knots.data(), (degree + 1) / 2.0);
        QVERIFY2(value > 0.0 && value <= 1.0, qPrintable(exact_text(value)));
    }
}

void tst_b_spline::basis_agrees_with_recursion() {
    QRandomGenerator random(1);
    for (int round = 0; round < 2000; ++round) {
        const int degree = random.bounded(6);
        QList<double> knots;
        double knot = random.bounded(0.2);
        for (int i = 0; i < degree + 4; ++i) {
            knots.append(knot);
            if (random.bounded(3) > 0)
                knot += random.bounded(0.2);
        }
        const double t = random.bounded(1.0);
        for (int i = 0; i < 3; ++i)
            COMPARE_BITS(deBoor(i, degree, knots.data(), t),
                         baseline::deBoor(i, degree, knots.data(), t));
        COMPARE_BITS(deBoor(1, degree, knots.data(), knots[2]),
                     baseline::deBoor(1, degree, knots.data(), knots[2]));
    }
}

void tst_b_spline::basis_below_degree_zero() {
    double knots[] = {0.0, 1.0};
    COMPARE_BITS(deBoor(0, -1, knots, 0.5), 0.0);
    COMPARE_BITS(deBoor(0, std::numeric_limits<int>::min(), knots, 0.5), 0.0);
}

void tst_b_spline::point_of_four_points_data() {
    QTest::addColumn<double>("t");
    QTest::addColumn<QPointF>("expected");

    const QList<QPointF> points = zigzag(4);
    QTest::newRow("middle") << 0.5
                            << QPointF((points[1].x() + points[2].x()) / 2,
                                       (points[1].y() + points[2].y()) / 2);
    QTest::newRow("first-sample") << 0.001 << points[0];
    QTest::newRow("before-second-span") << std::nextafter(1.0 / 6.0, 0.0) << points[0];
    QTest::newRow("last-span") << 0.9 << points[3];
    QTest::newRow("last-sample") << 0.999 << points[3];
    QTest::newRow("just-below-one") << below_one << points[3];
    // In the second span the weights are 0.75 and 0.125.
    QTest::newRow("second-span") << 0.25
                                 << QPointF((6 * points[0].x() + points[1].x()) / 7,
                                            (6 * points[0].y() + points[1].y()) / 7);
}

void tst_b_spline::point_of_four_points() {
    QFETCH(double, t);
    QFETCH(QPointF, expected);
    const QPointF point = curve_point(zigzag(4), 2, uniform_knots(4, 2), t);
    COMPARE_ULP(point.x(), expected.x(), 2);
    COMPARE_ULP(point.y(), expected.y(), 2);
}

void tst_b_spline::point_without_weight_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("t");

    QTest::newRow("at-zero") << 4 << 0.0;
    QTest::newRow("at-one") << 4 << 1.0;
    QTest::newRow("below") << 4 << -0.5;
    QTest::newRow("above") << 4 << 1.5;
    QTest::newRow("nan") << 4 << nan_value;
    QTest::newRow("infinite") << 4 << infinity;
    QTest::newRow("no-points") << 0 << 0.5;
    QTest::newRow("points-below-zero") << -3 << 0.5;
}

void tst_b_spline::point_without_weight() {
    QFETCH(int, count);
    QFETCH(double, t);
    QList<QPointF> points = zigzag(4);
    QList<double> knots = uniform_knots(4, 2);
    const QPointF point = B_spline_point(count, 2, points.data(), knots.data(), t);
    QVERIFY(std::isnan(point.x()));
    QVERIFY(std::isnan(point.y()));
}

void tst_b_spline::point_reads_its_own_input_only() {
    for (int degree = 0; degree <= 3; ++degree) {
        for (const int count : {1, 2, 5, 30}) {
            QList<QPointF> points = zigzag(count);
            points.append(QPointF(nan_value, nan_value));
            QList<double> knots = uniform_knots(count, degree);
            knots.append(nan_value);
            for (const double t : {0.001, 0.4, 0.999}) {
                const QPointF point = B_spline_point(count, degree, points.data(), knots.data(), t);
                QVERIFY(std::isfinite(point.x()) && std::isfinite(point.y()));
            }
        }
    }
}

void tst_b_spline::not_finite_points_data() {
    QTest::addColumn<QPointF>("bad");
    QTest::newRow("nan-x") << QPointF(nan_value, 1.0);
    QTest::newRow("nan-y") << QPointF(1.0, nan_value);
    QTest::newRow("infinite-x") << QPointF(infinity, 1.0);
    QTest::newRow("infinite-y") << QPointF(1.0, -infinity);
}

// A weight of 0 times infinity is NaN, so the whole curve is NaN, but only in that coordinate.
void tst_b_spline::not_finite_points() {
    QFETCH(QPointF, bad);
    QList<QPointF> points = zigzag(8);
    points[3] = bad;
    const QList<double> knots = uniform_knots(8, 2);
    for (const double t : {0.001, 0.3, 0.5, 0.999}) {
        const QPointF point = curve_point(points, 2, knots, t);
        QCOMPARE(std::isfinite(point.x()), std::isfinite(bad.x()));
        QCOMPARE(std::isfinite(point.y()), std::isfinite(bad.y()));
    }
}

void tst_b_spline::point_agrees_with_recursion() {
    for (const int count : {1, 2, 3, 4, 9, 30}) {
        for (int degree = 0; degree <= 4; ++degree) {
            const QList<QPointF> points = zigzag(count);
            const QList<double> knots = uniform_knots(count, degree);
            for (const double t : dense_parameters())
                COMPARE_BITS(
                    curve_point(points, degree, knots, t),
                    baseline::B_spline_point(count, degree, points.data(), knots.data(), t));
        }
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_b_spline)
#include "tst_b_spline.moc"
