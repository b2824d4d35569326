// SPDX-FileCopyrightText: Aerolith developers
// Plane geometry and clamping.
#include "numerics/constants.h"
#include "numerics/transform.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QRandomGenerator>

#include <cmath>
#include <limits>

namespace {

const double nan_value = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();
const double root_of_two = 1.4142135623730951;
const int least_int = std::numeric_limits<int>::min();
const int greatest_int = std::numeric_limits<int>::max();

QPointF random_point(QRandomGenerator& random) {
    const double x = random.bounded(2000.0) - 1000.0;
    return {x, random.bounded(2000.0) - 1000.0};
}

} // namespace

class tst_transform : public QObject {
    Q_OBJECT

private slots:
    void constants();
    void plane_length_data();
    void plane_length();
    void space_length_data();
    void space_length();
    void plane_distance();
    void sign_data();
    void sign();
    void clamp_data();
    void clamp();
    void whole_between_data();
    void whole_between();
    void number_between_data();
    void number_between();

    void mean_of_four();
    void mean_of_polygon_data();
    void mean_of_polygon();
    void scaled_polygon_data();
    void scaled_polygon();
    void scaled_polygon_rounds_the_differences();
    void least_of_four_distances_data();
    void least_of_four_distances();
    void triangle_area_data();
    void triangle_area();
    void inside_quadrilateral_data();
    void inside_quadrilateral();

    void rotation_data();
    void rotation();
    void rotation_in_order_of_the_formula();
    void rotation_properties();
    void centroid_data();
    void centroid();
    void centroid_of_small_triangle();
    void centroid_ends_data();
    void centroid_ends();
};

void tst_transform::constants() {
    QCOMPARE(W_res, 1024);
    QCOMPARE(H_res, 768);
    QCOMPARE(MAX_X, 1000);
    QCOMPARE(MAX_Y, 1000);
    QCOMPARE(N_airfoil, 1000);
    COMPARE_BITS(Pi, 3.141592653);
    COMPARE_BITS(TwoPi, 6.283185306);
    COMPARE_BITS(TwoPi, 2.0 * Pi);
    COMPARE_BITS(DELTA_X, 40.0);
    QCOMPARE(MAXNUMPOINTS, 30);
    QCOMPARE(MAXNUMKNOTS, 300);
    QCOMPARE(DEGREE3, 3);
    QCOMPARE(DEGREE2, 2);
    COMPARE_BITS(F_DIV, 1000.0);
    QCOMPARE(RGB_MASK, 0xFFFFFFu);
    QCOMPARE(airfoilDir, QStringLiteral("/Kavrund/Airfoils/"));
    COMPARE_BITS(QPointF(null), QPointF(0.0, 0.0));
}

void tst_transform::plane_length_data() {
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("length");

    QTest::newRow("triangle-3-4-5") << 3.0 << 4.0 << 5.0;
    QTest::newRow("below-zero") << -3.0 << -4.0 << 5.0;
    QTest::newRow("zero") << 0.0 << 0.0 << 0.0;
    QTest::newRow("diagonal") << 1.0 << 1.0 << root_of_two;
    QTest::newRow("squares-overflow") << 1e200 << 0.0 << infinity;
    QTest::newRow("squares-vanish") << 1e-200 << 1e-200 << 0.0;
    QTest::newRow("infinite") << -infinity << 1.0 << infinity;
}

void tst_transform::plane_length() {
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, length);
    COMPARE_BITS(norma2(x, y), length);
    COMPARE_BITS(norma3(x, y, 0.0), length);
    COMPARE_BITS(Dist2(QPointF(x, y), QPointF(0.0, 0.0)), length);
}

void tst_transform::space_length_data() {
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("z");
    QTest::addColumn<double>("length");

    QTest::newRow("whole-numbers") << 2.0 << 3.0 << 6.0 << 7.0;
    QTest::newRow("below-zero") << -2.0 << 3.0 << -6.0 << 7.0;
    QTest::newRow("z-alone") << 0.0 << 0.0 << -9.0 << 9.0;
    QTest::newRow("cube") << 1.0 << 1.0 << 1.0 << 1.7320508075688772;
}

void tst_transform::space_length() {
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, z);
    QFETCH(double, length);
    COMPARE_BITS(norma3(x, y, z), length);
}

void tst_transform::plane_distance() {
    COMPARE_BITS(Dist2(QPointF(1.0, -2.0), QPointF(4.0, 2.0)), 5.0);
    QVERIFY(std::isnan(Dist2(QPointF(nan_value, 0.0), QPointF(0.0, 0.0))));
    QRandomGenerator random(2);
    for (int round = 0; round < 1000; ++round) {
        const QPointF a = random_point(random);
        const QPointF b = random_point(random);
        COMPARE_BITS(Dist2(a, b), Dist2(b, a));
        COMPARE_ULP(Dist2(a, b), std::hypot(a.x() - b.x(), a.y() - b.y()), 1);
    }
}

void tst_transform::sign_data() {
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("sign");

    QTest::newRow("zero") << 0.0 << 1;
    QTest::newRow("minus-zero") << -0.0 << 1;
    QTest::newRow("above") << 5.5 << 1;
    QTest::newRow("below") << -5.5 << -1;
    QTest::newRow("just-below") << -std::numeric_limits<double>::denorm_min() << -1;
    QTest::newRow("infinite") << infinity << 1;
    QTest::newRow("minus-infinite") << -infinity << -1;
    QTest::newRow("nan") << nan_value << -1;
}

void tst_transform::sign() {
    QFETCH(double, x);
    QFETCH(int, sign);
    QCOMPARE(Sign(x), sign);
}

void tst_transform::clamp_data() {
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("clamped");

    QTest::newRow("below-bounds-swapped") << 5 << 1 << 0 << 1;
    QTest::newRow("above") << 1 << 5 << 9 << 5;
    QTest::newRow("inside") << 1 << 5 << 3 << 3;
    QTest::newRow("inside-bounds-swapped") << 5 << 1 << 3 << 3;
    QTest::newRow("at-least") << 1 << 5 << 1 << 1;
    QTest::newRow("at-greatest") << 1 << 5 << 5 << 5;
    QTest::newRow("bounds-equal") << 4 << 4 << 9 << 4;
    QTest::newRow("below-zero") << -5 << -1 << 0 << -1;
    QTest::newRow("whole-range-least") << least_int << greatest_int << least_int << least_int;
    QTest::newRow("whole-range-greatest")
        << greatest_int << least_int << greatest_int << greatest_int;
}

void tst_transform::clamp() {
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(int, x);
    QFETCH(int, clamped);
    QCOMPARE(::between(a, b, x), clamped);
}

void tst_transform::whole_between_data() {
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("x");
    QTest::addColumn<bool>("inside");

    QTest::newRow("greatest") << 1 << 5 << 5 << true;
    QTest::newRow("least-bounds-swapped") << 5 << 1 << 1 << true;
    QTest::newRow("above") << 1 << 5 << 6 << false;
    QTest::newRow("below") << 1 << 5 << 0 << false;
    QTest::newRow("middle-bounds-swapped") << 5 << 1 << 3 << true;
    QTest::newRow("above-bounds-swapped") << 5 << 1 << 6 << false;
    QTest::newRow("below-bounds-swapped") << 5 << 1 << 0 << false;
    QTest::newRow("one-number") << 2 << 2 << 2 << true;
    QTest::newRow("whole-range") << greatest_int << least_int << 0 << true;
}

void tst_transform::whole_between() {
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(int, x);
    QFETCH(bool, inside);
    QCOMPARE(is_between(a, b, x), inside);
}

void tst_transform::number_between_data() {
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("inside");

    QTest::newRow("greatest") << 1.0 << 5.0 << 5.0 << true;
    QTest::newRow("least-bounds-swapped") << 5.0 << 1.0 << 1.0 << true;
    QTest::newRow("just-above") << 1.0 << 5.0 << std::nextafter(5.0, 6.0) << false;
    QTest::newRow("just-below") << 1.0 << 5.0 << std::nextafter(1.0, 0.0) << false;
    QTest::newRow("above-bounds-swapped") << 5.0 << 1.0 << 5.5 << false;
    QTest::newRow("below-bounds-swapped") << 5.0 << 1.0 << 0.5 << false;
    QTest::newRow("zeros") << 0.0 << 0.0 << -0.0 << true;
    QTest::newRow("nan") << 1.0 << 5.0 << nan_value << true;
    QTest::newRow("infinite") << 1.0 << 5.0 << infinity << false;
    QTest::newRow("infinite-bounds") << -infinity << infinity << infinity << true;
}

void tst_transform::number_between() {
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(double, x);
    QFETCH(bool, inside);
    QCOMPARE(is_dbetween(a, b, x), inside);
}

void tst_transform::mean_of_four() {
    COMPARE_BITS(Center4pnt({0.0, 0.0}, {4.0, 0.0}, {4.0, 2.0}, {0.0, 10.0}), QPointF(2.0, 3.0));
    // Added from left to right: 1e17 absorbs the 1 before -1e17 cancels it.
    COMPARE_BITS(Center4pnt({1.0, 0.0}, {1e17, 0.0}, {-1e17, 0.0}, {4.0, 0.0}), QPointF(1.0, 0.0));
}

void tst_transform::mean_of_polygon_data() {
    QTest::addColumn<QPolygonF>("polygon");
    QTest::addColumn<QPointF>("mean");

    QTest::newRow("one-vertex") << QPolygonF{{3.0, -4.0}} << QPointF(3.0, -4.0);
    QTest::newRow("two-vertices") << QPolygonF{{0.0, 0.0}, {4.0, 2.0}} << QPointF(2.0, 1.0);
    QTest::newRow("square") << QPolygonF{{0.0, 0.0}, {4.0, 0.0}, {4.0, 4.0}, {0.0, 4.0}}
                            << QPointF(2.0, 2.0);
    // The mean of the vertices, not the centroid: the repeated one counts twice.
    QTest::newRow("closed-square")
        << QPolygonF{{0.0, 0.0}, {5.0, 0.0}, {5.0, 5.0}, {0.0, 5.0}, {0.0, 0.0}}
        << QPointF(2.0, 2.0);
    // Multiplied by the rounded 1/n: 1/49 * 49 is just below 1.
    QTest::newRow("product-with-the-inverse")
        << QPolygonF(QList<QPointF>(49, QPointF(1.0, 0.0))) << QPointF(49 * (1.0 / 49), 0.0);
}

void tst_transform::mean_of_polygon() {
    QFETCH(QPolygonF, polygon);
    QFETCH(QPointF, mean);
    COMPARE_BITS(CenterPoly(polygon), mean);
}

void tst_transform::scaled_polygon_data() {
    QTest::addColumn<QPolygonF>("polygon");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QPolygonF>("scaled");

    const QPolygonF tilted{{0.0, 0.0}, {4.0, 0.0}, {4.0, 4.0}, {0.0, 4.0}};
    QTest::newRow("empty") << QPolygonF() << 2.0 << QPolygonF();
    QTest::newRow("one-vertex") << QPolygonF{{3.0, 4.0}} << 2.0 << QPolygonF{{3.0, 4.0}};
    QTest::newRow("unchanged") << tilted << 1.0 << tilted;
    QTest::newRow("doubled") << tilted << 2.0
                             << QPolygonF{{-2.0, -2.0}, {6.0, -2.0}, {6.0, 6.0}, {-2.0, 6.0}};
    QTest::newRow("halved") << tilted << 0.5
                            << QPolygonF{{1.0, 1.0}, {3.0, 1.0}, {3.0, 3.0}, {1.0, 3.0}};
    QTest::newRow("turned-over") << tilted << -1.0
                                 << QPolygonF{{4.0, 4.0}, {0.0, 4.0}, {0.0, 0.0}, {4.0, 0.0}};
    QTest::newRow("collapsed") << tilted << 0.0 << QPolygonF(QList<QPointF>(4, {2.0, 2.0}));
}

void tst_transform::scaled_polygon() {
    QFETCH(QPolygonF, polygon);
    QFETCH(double, factor);
    QFETCH(QPolygonF, scaled);
    COMPARE_POLYGON_BITS(factorPoly(polygon, factor), scaled);
}

// At some point, rounding reveals any other order of the operations.
void tst_transform::scaled_polygon_rounds_the_differences() {
    QPolygonF polygon;
    for (int i = 1; i <= 50; ++i)
        polygon << QPointF(1.0 / i, 1.0 / (i + 7));
    const QPointF c = CenterPoly(polygon);
    QPolygonF scaled;
    for (const QPointF& v : std::as_const(polygon))
        scaled << QPointF(c.x() + 0.3 * (v.x() - c.x()), c.y() + 0.3 * (v.y() - c.y()));
    COMPARE_POLYGON_BITS(factorPoly(polygon, 0.3), scaled);
}

void tst_transform::least_of_four_distances_data() {
    QTest::addColumn<int>("nearest");
    for (int i = 0; i < 4; ++i)
        QTest::addRow("nearest-%d", i) << i;
}

void tst_transform::least_of_four_distances() {
    QFETCH(int, nearest);
    QPointF points[4] = {{10.0, 0.0}, {0.0, 11.0}, {-12.0, 0.0}, {0.0, -13.0}};
    points[nearest] = QPointF(3.0, 4.0);
    for (const double unused : {0.0, -1.0, nan_value})
        COMPARE_BITS(Rmin4({0.0, 0.0}, points[0], points[1], points[2], points[3], unused), 5.0);
}

void tst_transform::triangle_area_data() {
    QTest::addColumn<QPointF>("a");
    QTest::addColumn<QPointF>("b");
    QTest::addColumn<QPointF>("c");
    QTest::addColumn<double>("twice_area");

    QTest::newRow("unit") << QPointF(0, 0) << QPointF(1, 0) << QPointF(0, 1) << 1.0;
    QTest::newRow("clockwise") << QPointF(0, 0) << QPointF(0, 1) << QPointF(1, 0) << -1.0;
    QTest::newRow("on-a-line") << QPointF(0, 0) << QPointF(1, 1) << QPointF(2, 2) << 0.0;
    QTest::newRow("away-from-origin") << QPointF(5, 7) << QPointF(8, 7) << QPointF(6, 11) << 12.0;
    QTest::newRow("a-repeated") << QPointF(5, 7) << QPointF(5, 7) << QPointF(6, 11) << 0.0;
}

void tst_transform::triangle_area() {
    QFETCH(QPointF, a);
    QFETCH(QPointF, b);
    QFETCH(QPointF, c);
    QFETCH(double, twice_area);
    QCOMPARE(ulp_distance(Otriangle(a, b, c), twice_area), quint64(0));
    QCOMPARE(ulp_distance(Otriangle(b, c, a), twice_area), quint64(0));
    QCOMPARE(ulp_distance(Otriangle(b, a, c), -twice_area), quint64(0));
}

void tst_transform::inside_quadrilateral_data() {
    QTest::addColumn<QPolygonF>("corners");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("inside");

    const QPolygonF box{{0.0, 0.0}, {4.0, 0.0}, {4.0, 2.0}, {0.0, 2.0}};
    const QPolygonF bow{{0.0, 0.0}, {4.0, 4.0}, {4.0, 0.0}, {0.0, 4.0}};
    const QPolygonF dart{{0.0, 0.0}, {4.0, 4.0}, {8.0, 0.0}, {4.0, 8.0}};
    QTest::newRow("middle") << box << QPointF(2.0, 1.0) << true;
    QTest::newRow("left-of-it") << box << QPointF(-0.1, 1.0) << false;
    QTest::newRow("right-of-it") << box << QPointF(4.1, 1.0) << false;
    QTest::newRow("above-it") << box << QPointF(2.0, 2.1) << false;
    QTest::newRow("below-it") << box << QPointF(2.0, -0.1) << false;
    QTest::newRow("on-least-x") << box << QPointF(0.0, 1.0) << true;
    QTest::newRow("on-least-y") << box << QPointF(2.0, 0.0) << true;
    QTest::newRow("on-greatest-x") << box << QPointF(4.0, 1.0) << false;
    QTest::newRow("on-greatest-y") << box << QPointF(2.0, 2.0) << false;
    QTest::newRow("near-last-edge") << box << QPointF(0.001, 1.999) << true;
    QTest::newRow("bow-left-wing") << bow << QPointF(1.0, 2.0) << true;
    QTest::newRow("bow-right-wing") << bow << QPointF(3.5, 2.0) << true;
    QTest::newRow("bow-below") << bow << QPointF(2.0, 1.0) << false;
    QTest::newRow("bow-above") << bow << QPointF(2.0, 3.0) << false;
    QTest::newRow("dart-inside") << dart << QPointF(4.0, 6.0) << true;
    QTest::newRow("dart-notch") << dart << QPointF(4.0, 2.0) << false;
}

void tst_transform::inside_quadrilateral() {
    QFETCH(QPolygonF, corners);
    QFETCH(QPointF, point);
    QFETCH(bool, inside);
    QCOMPARE(in_polygon(corners[0], corners[1], corners[2], corners[3], point), inside);
}

void tst_transform::rotation_data() {
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPointF>("rotated");

    const double quarter = std::acos(-1.0) / 2;
    QTest::newRow("none") << 0.0 << QPointF(3, 4) << QPointF(7, -1) << QPointF(7, -1);
    QTest::newRow("counter-clockwise")
        << quarter << QPointF(0, 0) << QPointF(1, 0) << QPointF(0, 1);
    QTest::newRow("clockwise") << -quarter << QPointF(0, 0) << QPointF(1, 0) << QPointF(0, -1);
    QTest::newRow("about-a-point") << quarter << QPointF(2, 1) << QPointF(3, 1) << QPointF(2, 2);
    QTest::newRow("half-turn") << 2 * quarter << QPointF(2, 1) << QPointF(3, 3) << QPointF(1, -1);
    QTest::newRow("centre-itself") << 1.0 << QPointF(2, 1) << QPointF(2, 1) << QPointF(2, 1);
    QTest::newRow("sixth-turn") << 2 * quarter / 3 << QPointF(0, 0) << QPointF(2, 0)
                                << QPointF(1, 1.7320508075688772);
}

void tst_transform::rotation() {
    QFETCH(double, angle);
    QFETCH(QPointF, centre);
    QFETCH(QPointF, point);
    QFETCH(QPointF, rotated);
    const QPointF actual = RotFixP(angle, centre, point);
    COMPARE_NEAR(actual.x(), rotated.x(), 1e-15);
    COMPARE_NEAR(actual.y(), rotated.y(), 1e-15);
    COMPARE_BITS(RotFix(angle, centre.x(), centre.y(), point), actual);
}

void tst_transform::rotation_in_order_of_the_formula() {
    QRandomGenerator random(4);
    for (int round = 0; round < 2000; ++round) {
        const double a = random.bounded(20.0) - 10.0;
        const QPointF centre = random_point(random);
        const QPointF point = random_point(random);
        const double dx = point.x() - centre.x();
        const double dy = point.y() - centre.y();
        const QPointF expected(std::cos(a) * dx - std::sin(a) * dy + centre.x(),
                               std::sin(a) * dx + std::cos(a) * dy + centre.y());
        COMPARE_BITS(RotFixP(a, centre, point), expected);
        COMPARE_BITS(RotFix(a, centre.x(), centre.y(), point), expected);
    }
}

void tst_transform::rotation_properties() {
    QRandomGenerator random(5);
    for (int round = 0; round < 1000; ++round) {
        const double a = random.bounded(8.0) - 4.0;
        const QPointF centre = random_point(random);
        const QPointF point = random_point(random);
        const QPointF there = RotFixP(a, centre, point);
        const QPointF back = RotFixP(-a, centre, there);
        COMPARE_NEAR(Dist2(centre, there), Dist2(centre, point), 1e-11);
        COMPARE_NEAR(Dist2(back, point), 0.0, 1e-11);
    }
}

void tst_transform::centroid_data() {
    QTest::addColumn<QPointF>("a");
    QTest::addColumn<QPointF>("b");
    QTest::addColumn<QPointF>("c");

    QTest::newRow("right-angled") << QPointF(0, 0) << QPointF(3, 0) << QPointF(0, 3);
    QTest::newRow("slender") << QPointF(-1000, 2) << QPointF(1000, 2.5) << QPointF(0, 1);
    QTest::newRow("on-a-line") << QPointF(0, 0) << QPointF(1, 1) << QPointF(5, 5);
    QTest::newRow("huge") << QPointF(0, 0) << QPointF(1e10, 0) << QPointF(0, 1e10);
}

void tst_transform::centroid() {
    QFETCH(QPointF, a);
    QFETCH(QPointF, b);
    QFETCH(QPointF, c);
    const QPointF actual = Sqeeze(a, b, c);
    COMPARE_NEAR(actual.x(), (a.x() + b.x() + c.x()) / 3, 0.001);
    COMPARE_NEAR(actual.y(), (a.y() + b.y() + c.y()) / 3, 0.001);
}

// The first vertex, unchanged; at the limit there is one step.
void tst_transform::centroid_of_small_triangle() {
    const QPointF a(0.1, 0.2);
    COMPARE_BITS(Sqeeze(a, a, a), a);
    COMPARE_BITS(Sqeeze(a, a + QPointF(0.0003, 0.0), a + QPointF(0.0, 0.0002)), a);
    const QPointF origin(0.0, 0.0);
    const QPointF below(std::nextafter(0.0005, 0.0), 0.0);
    COMPARE_BITS(Sqeeze(origin, below, below), origin);
    const QPointF at(0.0005, 0.0);
    COMPARE_BITS(Sqeeze(origin, at, at), QPointF(0.00025, 0.0));
    // The first vertex of the medial triangle lies between the first two.
    COMPARE_BITS(Sqeeze(origin, QPointF(0.0004, 0.0), QPointF(0.0, 0.0004)), QPointF(0.0002, 0.0));
}

void tst_transform::centroid_ends_data() {
    QTest::addColumn<QPointF>("bad");
    QTest::newRow("nan") << QPointF(nan_value, 0.0);
    QTest::newRow("infinite") << QPointF(0.0, infinity);
    QTest::newRow("greatest") << QPointF(std::numeric_limits<double>::max(), 0.0);
}

void tst_transform::centroid_ends() {
    QFETCH(QPointF, bad);
    const QPointF near(1.0, 2.0);
    Sqeeze(bad, near, near);
    Sqeeze(near, bad, near);
    Sqeeze(near, near, bad);
    Sqeeze(bad, bad, bad);
    // The steps are enough for the largest triangle, whose halves are exact here.
    const double far = std::ldexp(1.0, 1020);
    const QPointF left(-far, 0.0);
    const QPointF right(far, 0.0);
    const QPointF middle(0.0, 0.0);
    COMPARE_NEAR(Sqeeze(left, right, middle).x(), 0.0, 0.001);
    COMPARE_NEAR(Sqeeze(right, middle, left).x(), 0.0, 0.001);
    COMPARE_NEAR(Sqeeze(middle, left, right).x(), 0.0, 0.001);
    // Rounding turns these three in a circle of six steps: 2000 of them end where two do.
    const double x = std::ldexp(1.0, 53);
    COMPARE_BITS(Sqeeze(QPointF(x, 0.0), QPointF(x + 2.0, 0.0), QPointF(x + 4.0, 0.0)),
                 QPointF(x + 2.0, 0.0));
}

AEROLITH_GUILESS_TEST_MAIN(tst_transform)
#include "tst_transform.moc"
