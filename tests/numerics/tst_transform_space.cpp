// SPDX-FileCopyrightText: Aerolith developers
// Space geometry and sums, in single precision, and integration.
#include "numerics/transform.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QRandomGenerator>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(QVector3D)

namespace {

const double nan_value = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();
const double root_of_two = 1.4142135623730951;

bool same_vector(QVector3D a, QVector3D b) {
    return same_bits(double(a.x()), double(b.x())) && same_bits(double(a.y()), double(b.y())) &&
           same_bits(double(a.z()), double(b.z()));
}

QString vector_text(QVector3D v) {
    return QStringLiteral("%1; %2; %3")
        .arg(exact_text(double(v.x())), exact_text(double(v.y())), exact_text(double(v.z())));
}

QVector3D random_vector(QRandomGenerator& random) {
    const auto component = [&random] { return float(random.bounded(200.0) - 100.0); };
    const float x = component();
    const float y = component();
    return {x, y, component()};
}

QPointF random_point(QRandomGenerator& random) {
    const double x = random.bounded(2000.0) - 1000.0;
    return {x, random.bounded(2000.0) - 1000.0};
}

const QPolygonF square{{1.0, 1.0}, {2.0, 1.0}, {2.0, 2.0}, {1.0, 2.0}, {1.0, 1.0}};

} // namespace

#define COMPARE_VECTOR(actual, expected)                                                           \
    do {                                                                                           \
        const QVector3D actual_value = (actual);                                                   \
        const QVector3D expected_value = (expected);                                               \
        QVERIFY2(same_vector(actual_value, expected_value),                                        \
                 qPrintable(vector_text(actual_value) + QStringLiteral(" is not ") +               \
                            vector_text(expected_value)));                                         \
    } while (false)

class tst_transform_space : public QObject {
    Q_OBJECT

private slots:
    void space_distance_data();
    void space_distance();
    void space_distance_squares_in_single_precision();
    void mirror();
    void simpson_data();
    void simpson();
    void trapezoid_data();
    void trapezoid();
    void integrals_in_order_of_the_formulas();
    void normal_to_line_data();
    void normal_to_line();
    void normal_to_line_in_double();
    void normal_to_a_point();
    void line_and_plane_data();
    void line_and_plane();
    void line_and_plane_in_double();
    void parallel_line();
    void polygon_area_data();
    void polygon_area();
    void polygon_area_in_single_precision();
};

void tst_transform_space::space_distance_data() {
    QTest::addColumn<QVector3D>("a");
    QTest::addColumn<QVector3D>("b");
    QTest::addColumn<double>("distance");

    QTest::newRow("whole-numbers") << QVector3D(1, 2, 3) << QVector3D(3, 5, 9) << 7.0;
    QTest::newRow("equal") << QVector3D(1, 2, 3) << QVector3D(1, 2, 3) << 0.0;
    QTest::newRow("root-in-double") << QVector3D(1, 0, 0) << QVector3D(0, 1, 0) << root_of_two;
    QTest::newRow("squares-overflow-single") << QVector3D(1e20f, 0, 0) << QVector3D() << infinity;
}

void tst_transform_space::space_distance() {
    QFETCH(QVector3D, a);
    QFETCH(QVector3D, b);
    QFETCH(double, distance);
    COMPARE_BITS(Dist3(a, b), distance);
    COMPARE_BITS(Dist3(b, a), distance);
}

void tst_transform_space::space_distance_squares_in_single_precision() {
    QRandomGenerator random(3);
    for (int round = 0; round < 1000; ++round) {
        const QVector3D a = random_vector(random);
        const QVector3D b = random_vector(random);
        const float x = a.x() - b.x();
        const float y = a.y() - b.y();
        const float z = a.z() - b.z();
        const float squares = x * x + y * y + z * z;
        COMPARE_BITS(Dist3(a, b), std::sqrt(double(squares)));
    }
}

void tst_transform_space::mirror() {
    COMPARE_VECTOR(p_SymY(QVector3D(1, 2, 3)), QVector3D(1, -2, 3));
    COMPARE_VECTOR(p_SymY(QVector3D(-1, 0, -3)), QVector3D(-1, -0.0f, -3));
    COMPARE_VECTOR(p_SymY(p_SymY(QVector3D(0.1f, 0.2f, 0.3f))), QVector3D(0.1f, 0.2f, 0.3f));
}

void tst_transform_space::simpson_data() {
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("h");
    QTest::addColumn<QList<double>>("f");
    QTest::addColumn<double>("integral");

    // Weights 3, 4, 2, 4, .. 1: the first sample counts three times.
    QTest::newRow("ones") << 2 << 1.0 << QList<double>{1, 1, 1} << 8.0 / 3.0;
    QTest::newRow("first-weight") << 2 << 3.0 << QList<double>{1, 0, 0} << 3.0;
    QTest::newRow("odd-weight") << 4 << 3.0 << QList<double>{0, 0, 0, 1, 0} << 4.0;
    QTest::newRow("even-weight") << 4 << 3.0 << QList<double>{0, 0, 1, 0, 0} << 2.0;
    QTest::newRow("last-weight") << 4 << 3.0 << QList<double>{0, 0, 0, 0, 1} << 1.0;
    QTest::newRow("beyond-n") << 2 << 3.0 << QList<double>{0, 0, 0, nan_value} << 0.0;
    QTest::newRow("step") << 2 << 0.5 << QList<double>{1, 1, 1} << 4.0 / 3.0;
    // With a first value of 0 it is the textbook rule, exact for cubic functions.
    QTest::newRow("cube") << 2 << 1.0 << QList<double>{0, 1, 8} << 4.0;
    QTest::newRow("no-steps") << 0 << 3.0 << QList<double>{5} << 10.0;
    QTest::newRow("odd-n") << 1 << 3.0 << QList<double>{1, 1} << 4.0;
    QTest::newRow("below-zero") << -1 << 3.0 << QList<double>{5} << 0.0;
}

void tst_transform_space::simpson() {
    QFETCH(int, n);
    QFETCH(double, h);
    QFETCH(QList<double>, f);
    QFETCH(double, integral);
    COMPARE_BITS(Simpson(n, h, f.data()), integral);
}

void tst_transform_space::trapezoid_data() {
    QTest::addColumn<int>("n");
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<QList<double>>("f");
    QTest::addColumn<double>("integral");

    QTest::newRow("no-steps") << 0 << 0.0 << 1.0 << QList<double>{7} << 0.0;
    QTest::newRow("below-zero") << -5 << 0.0 << 1.0 << QList<double>{7} << 0.0;
    QTest::newRow("line") << 2 << 0.0 << 1.0 << QList<double>{0, 1, 2} << 1.0;
    QTest::newRow("one-step") << 1 << 2.0 << 6.0 << QList<double>{3, 5} << 16.0;
    QTest::newRow("first-weight") << 4 << 0.0 << 4.0 << QList<double>{1, 0, 0, 0, 0} << 0.5;
    QTest::newRow("second-weight") << 4 << 0.0 << 4.0 << QList<double>{0, 1, 0, 0, 0} << 1.0;
    QTest::newRow("last-but-one") << 4 << 0.0 << 4.0 << QList<double>{0, 0, 0, 1, 0} << 1.0;
    QTest::newRow("last-weight") << 4 << 0.0 << 4.0 << QList<double>{0, 0, 0, 0, 1} << 0.5;
    QTest::newRow("backwards") << 2 << 1.0 << 0.0 << QList<double>{0, 1, 2} << -1.0;
    QTest::newRow("beyond-n") << 1 << 0.0 << 1.0 << QList<double>{1, 1, nan_value} << 1.0;
}

void tst_transform_space::trapezoid() {
    QFETCH(int, n);
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(QList<double>, f);
    QFETCH(double, integral);
    COMPARE_BITS(Trapez(n, a, b, f.data()), integral);
}

void tst_transform_space::integrals_in_order_of_the_formulas() {
    QRandomGenerator random(9);
    for (int round = 0; round < 500; ++round) {
        const int n = 2 * random.bounded(1, 20);
        QList<double> f;
        for (int i = 0; i <= n; ++i)
            f.append(random.bounded(2.0) - 1.0);
        const double a = random.bounded(1.0);
        const double b = a + random.bounded(3.0);

        double weighted = f[0];
        for (int i = 0; i < n; ++i)
            weighted += i % 2 ? f[i] * 4.0 : f[i] * 2.0;
        COMPARE_BITS(Simpson(n, a, f.data()), (f[n] + weighted) * a / 3.0);

        double sum = (f[n] + f[0]) * 0.5;
        for (int i = 1; i < n; ++i)
            sum += f[i];
        COMPARE_BITS(Trapez(n, a, b, f.data()), (b - a) * sum / n);
    }
}

void tst_transform_space::normal_to_line_data() {
    QTest::addColumn<QVector3D>("a");
    QTest::addColumn<QVector3D>("b");
    QTest::addColumn<QVector3D>("p");
    QTest::addColumn<QVector3D>("normal");

    const QVector3D origin;
    QTest::newRow("above-x-axis") << origin << QVector3D(2, 0, 0) << QVector3D(1, 3, 0)
                                  << QVector3D(0, 3, 0);
    QTest::newRow("a-vector-not-the-foot")
        << QVector3D(1, 1, 1) << QVector3D(3, 1, 1) << QVector3D(2, 1, 5) << QVector3D(0, 0, 4);
    QTest::newRow("beyond-the-end")
        << origin << QVector3D(2, 0, 0) << QVector3D(10, 0, -1) << QVector3D(0, 0, -1);
    QTest::newRow("on-the-line") << origin << QVector3D(2, 2, 2) << QVector3D(1, 1, 1) << origin;
    QTest::newRow("diagonal") << origin << QVector3D(1, 1, 0) << QVector3D(2, 0, 0)
                              << QVector3D(1, -1, 0);
}

void tst_transform_space::normal_to_line() {
    QFETCH(QVector3D, a);
    QFETCH(QVector3D, b);
    QFETCH(QVector3D, p);
    QFETCH(QVector3D, normal);
    COMPARE_VECTOR(NormalToLine(a, b, p), normal);
}

// The dot products are single precision, their quotient is double, and each component is rounded
// after the multiplication by it.
void tst_transform_space::normal_to_line_in_double() {
    QRandomGenerator random(6);
    for (int round = 0; round < 2000; ++round) {
        const QVector3D a = random_vector(random);
        const QVector3D b = random_vector(random);
        const QVector3D p = random_vector(random);
        const QVector3D along = b - a;
        const double t = double(QVector3D::dotProduct(along, p - a)) /
                         double(QVector3D::dotProduct(along, along));
        const QVector3D scaled(float(t * double(along.x())), float(t * double(along.y())),
                               float(t * double(along.z())));
        COMPARE_VECTOR(NormalToLine(a, b, p), (p - scaled) - a);
    }
}

void tst_transform_space::normal_to_a_point() {
    const QVector3D a(1, 2, 3);
    const QVector3D at_zero = NormalToLine(a, a, a);
    QVERIFY(std::isnan(at_zero.x()) && std::isnan(at_zero.y()) && std::isnan(at_zero.z()));
    QVERIFY(!std::isfinite(NormalToLine(a, a, QVector3D(4, 5, 6)).x()));
}

void tst_transform_space::line_and_plane_data() {
    QTest::addColumn<QVector3D>("q");
    QTest::addColumn<QVector3D>("p0");
    QTest::addColumn<QVector3D>("p1");
    QTest::addColumn<QVector3D>("n");
    QTest::addColumn<QVector3D>("meeting");

    QTest::newRow("upright") << QVector3D(0, 0, 4) << QVector3D(1, 2, 0) << QVector3D(1, 2, 1)
                             << QVector3D(0, 0, 1) << QVector3D(1, 2, 4);
    QTest::newRow("backwards") << QVector3D(0, 0, -4) << QVector3D(1, 2, 0) << QVector3D(1, 2, 1)
                               << QVector3D(0, 0, 1) << QVector3D(1, 2, -4);
    QTest::newRow("length-of-normal")
        << QVector3D(0, 0, 4) << QVector3D(1, 2, 0) << QVector3D(1, 2, 1) << QVector3D(0, 0, -8)
        << QVector3D(1, 2, 4);
    QTest::newRow("slanted") << QVector3D(2, 0, 0) << QVector3D() << QVector3D(1, 1, 1)
                             << QVector3D(1, 1, 0) << QVector3D(1, 1, 1);
    QTest::newRow("already-there") << QVector3D(1, 2, 3) << QVector3D(1, 2, 3) << QVector3D(5, 5, 5)
                                   << QVector3D(1, 1, 0) << QVector3D(1, 2, 3);
}

void tst_transform_space::line_and_plane() {
    QFETCH(QVector3D, q);
    QFETCH(QVector3D, p0);
    QFETCH(QVector3D, p1);
    QFETCH(QVector3D, n);
    QFETCH(QVector3D, meeting);
    COMPARE_VECTOR(SurfacePnt(q, p0, p1, n), meeting);
}

void tst_transform_space::line_and_plane_in_double() {
    QRandomGenerator random(7);
    for (int round = 0; round < 2000; ++round) {
        const QVector3D q = random_vector(random);
        const QVector3D p0 = random_vector(random);
        const QVector3D p1 = random_vector(random);
        const QVector3D n = random_vector(random);
        const QVector3D along = p1 - p0;
        const double t =
            double(QVector3D::dotProduct(q - p0, n)) / double(QVector3D::dotProduct(along, n));
        const QVector3D scaled(float(t * double(along.x())), float(t * double(along.y())),
                               float(t * double(along.z())));
        COMPARE_VECTOR(SurfacePnt(q, p0, p1, n), p0 + scaled);
    }
}

void tst_transform_space::parallel_line() {
    const QVector3D beside =
        SurfacePnt(QVector3D(0, 0, 4), QVector3D(), QVector3D(1, 1, 0), QVector3D(0, 0, 1));
    QCOMPARE(double(beside.x()), infinity);
    QCOMPARE(double(beside.y()), infinity);
    QVERIFY(std::isnan(beside.z()));
    const QVector3D within =
        SurfacePnt(QVector3D(), QVector3D(), QVector3D(1, 1, 0), QVector3D(0, 0, 1));
    QVERIFY(std::isnan(within.x()));
}

void tst_transform_space::polygon_area_data() {
    QTest::addColumn<QPolygonF>("polygon");
    QTest::addColumn<double>("sum");

    QPolygonF open = square;
    open.removeLast();
    const QPolygonF reversed(QList<QPointF>(square.rbegin(), square.rend()));
    QTest::newRow("closed-square") << square << 2.0;
    QTest::newRow("open-square") << open << 3.0;
    QTest::newRow("clockwise") << reversed << -2.0;
    QTest::newRow("empty") << QPolygonF() << 0.0;
    QTest::newRow("one-vertex") << QPolygonF{{3.0, 4.0}} << 0.0;
    QTest::newRow("two-vertices") << QPolygonF{{1.0, 0.0}, {0.0, 1.0}} << 1.0;
    QTest::newRow("through-origin") << QPolygonF{{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}} << 1.0;
}

void tst_transform_space::polygon_area() {
    QFETCH(QPolygonF, polygon);
    QFETCH(double, sum);
    COMPARE_BITS(PolygonSquare(polygon), sum);
}

void tst_transform_space::polygon_area_in_single_precision() {
    QRandomGenerator random(8);
    for (int round = 0; round < 200; ++round) {
        QPolygonF polygon;
        for (int i = 0; i < 50; ++i)
            polygon.append(random_point(random));
        float sum = 0.0f;
        for (int i = 0; i < 49; ++i) {
            const auto x0 = float(polygon[i].x());
            const auto y0 = float(polygon[i].y());
            const auto x1 = float(polygon[i + 1].x());
            const auto y1 = float(polygon[i + 1].y());
            sum += x0 * y1 - y0 * x1;
        }
        COMPARE_BITS(PolygonSquare(polygon), double(sum));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_transform_space)
#include "tst_transform_space.moc"
