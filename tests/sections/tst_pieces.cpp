// SPDX-FileCopyrightText: Aerolith developers
// Lines, parabolas and cubics against closed forms.
#include "sections/piece.h"
#include "sections/plane.h"
#include "sections/polynomial.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <cmath>

using namespace sections;

namespace {

// y = x^2 / (2 r) from x0 to x1.
Piece vertex_parabola(double r, double x0, double x1) {
    const QPointF control(0.5 * (x0 + x1), x0 * x1 / (2.0 * r));
    return Piece::parabola({x0, x0 * x0 / (2.0 * r)}, control, {x1, x1 * x1 / (2.0 * r)});
}

double parabola_length(double r, double x) {
    return 0.5 * (x * std::sqrt(1.0 + x * x / (r * r)) + r * std::asinh(x / r));
}

} // namespace

class tst_pieces : public QObject {
    Q_OBJECT

private slots:
    void roots_data();
    void roots();
    void touching_roots();
    void parabola_data();
    void parabola();
    void nearly_straight_parabola();
    void cubic_of_a_parabola();
    void cubic_with_a_cusp();
    void degenerate_tangents();
    void parts_and_maps();
    void foot();
};

void tst_pieces::roots_data() {
    QTest::addColumn<QList<double>>("roots");

    QTest::newRow("one") << QList<double>{0.3};
    QTest::newRow("two") << QList<double>{0.1, 0.9};
    QTest::newRow("neighbours") << QList<double>{0.5, 0.5001};
    QTest::newRow("five") << QList<double>{0.05, 0.2, 0.4, 0.7, 0.99};
    QTest::newRow("outside") << QList<double>{-0.5, 0.25, 1.5};
    QTest::newRow("near-zero") << QList<double>{1e-12, 0.6};
    QTest::newRow("at-ends") << QList<double>{0.0, 1.0};
}

void tst_pieces::roots() {
    QFETCH(QList<double>, roots);
    Polynomial c = {1.0};
    for (const double root : roots) {
        for (std::size_t i = c.size() - 1; i > 0; --i)
            c[i] = c[i - 1] - root * c[i];
        c[0] *= -root;
    }
    const std::vector<double> found = roots_in_unit_interval(c);
    roots.removeIf([](double root) { return root < 0.0 || root > 1.0; });
    QCOMPARE(qsizetype(found.size()), roots.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        COMPARE_NEAR(found[i], roots[qsizetype(i)], 1e-11);
}

void tst_pieces::touching_roots() {
    const Polynomial touches = {0.25 + 1e-14, -1.0, 1.0};
    QVERIFY(roots_in_unit_interval(touches).empty());
    QCOMPARE(roots_in_unit_interval(touches, 1e-12).size(), std::size_t(1));
    QVERIFY(roots_in_unit_interval({0.0}).empty());
    QVERIFY(roots_in_unit_interval({std::nan(""), 1.0}).empty());
}

void tst_pieces::parabola_data() {
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");

    QTest::newRow("unit") << 0.5 << 0.0 << 1.0;
    QTest::newRow("through-the-vertex") << 0.5 << -0.7 << 1.0;
    QTest::newRow("sharp") << 1e-5 << -0.01 << 0.02;
    QTest::newRow("flat") << 50.0 << 0.0 << 1.0;
    QTest::newRow("one-leg") << 0.01 << 0.5 << 1.0;
    QTest::newRow("short") << 0.5 << 0.2 << 0.2001;
    QTest::newRow("small") << 0.005 << 0.0 << 0.05;
}

void tst_pieces::parabola() {
    QFETCH(double, radius);
    QFETCH(double, from);
    QFETCH(double, to);
    const Piece piece = vertex_parabola(radius, from, to);
    const double length = parabola_length(radius, to) - parabola_length(radius, from);
    COMPARE_NEAR(piece.length(), length, 1e-13);
    COMPARE_NEAR(piece.length(0.0, 0.3) + piece.length(0.3, 1.0), length, 1e-13);
    for (const double u : {0.0, 0.2, 0.5, 1.0}) {
        const double x = piece.position(u).x();
        const double slope = x / radius;
        const double root = std::sqrt(1.0 + slope * slope);
        COMPARE_NEAR(piece.curvature(u) * radius, 1.0 / (root * root * root), 1e-9);
        COMPARE_NEAR(piece.length(0.0, piece.parameter_at(u * length)), u * length, 1e-13);
    }
}

// The length does not jump where the closed form replaces the quadrature.
void tst_pieces::nearly_straight_parabola() {
    for (double bend = 1e-16; bend < 1.0; bend *= 1.5) {
        const Piece piece = Piece::parabola({0.0, 0.0}, {0.5, bend}, {1.0, 0.0});
        const double k = 2.0 * bend;
        const double length =
            k < 1e-3 ? 1.0 + k * k / 6.0 : 0.5 * (std::sqrt(1.0 + k * k) + std::asinh(k) / k);
        COMPARE_NEAR(piece.length(), length, 1e-13);
    }
}

void tst_pieces::cubic_of_a_parabola() {
    const Piece piece = vertex_parabola(0.02, -0.3, 0.5);
    const Piece cubic = Piece::cubic(piece.position(0.0), piece.derivative(0.0),
                                     piece.position(1.0), piece.derivative(1.0));
    QCOMPARE(cubic.degree(), 3);
    COMPARE_NEAR(cubic.length(), piece.length(), 1e-12);
    COMPARE_NEAR(cubic.curvature(0.4), piece.curvature(0.4), 1e-10);
    COMPARE_NEAR(cubic.length(0.0, cubic.parameter_at(0.25)), 0.25, 1e-13);
}

// (u^2, u^3) has the length ((4 + 9 u^2)^(3/2) - 8) / 27.
void tst_pieces::cubic_with_a_cusp() {
    const Piece cubic = Piece::cubic({0.0, 0.0}, {0.0, 0.0}, {1.0, 1.0}, {2.0, 3.0});
    COMPARE_NEAR(cubic.length(), (13.0 * std::sqrt(13.0) - 8.0) / 27.0, 1e-13);
    COMPARE_NEAR(norm(cubic.tangent(0.0) - QPointF(1.0, 0.0)), 0.0, 1e-15);
}

void tst_pieces::degenerate_tangents() {
    const Piece leaving = Piece::parabola({0.0, 0.0}, {0.0, 0.0}, {0.0, 2.0});
    COMPARE_NEAR(norm(leaving.tangent(0.0) - QPointF(0.0, 1.0)), 0.0, 0.0);
    const Piece arriving = Piece::parabola({0.0, 0.0}, {0.0, 2.0}, {0.0, 2.0});
    COMPARE_NEAR(norm(arriving.tangent(1.0) - QPointF(0.0, 1.0)), 0.0, 0.0);
    const Piece point = Piece::line({1.0, 1.0}, {1.0, 1.0});
    COMPARE_NEAR(norm(point.tangent(0.5)), 0.0, 0.0);
    COMPARE_NEAR(point.curvature(0.5), 0.0, 0.0);
    COMPARE_NEAR(point.parameter_at(1.0), 0.0, 1.0);
}

void tst_pieces::parts_and_maps() {
    const Piece piece = Piece::cubic({0.1, 0.2}, {1.0, -0.3}, {0.7, 0.1}, {0.2, 0.9});
    const Piece part = piece.part(0.8, 0.3);
    COMPARE_NEAR(norm(part.position(0.0) - piece.position(0.8)), 0.0, 1e-15);
    COMPARE_NEAR(norm(part.position(0.6) - piece.position(0.5)), 0.0, 1e-15);
    COMPARE_NEAR(part.curvature(0.6), -piece.curvature(0.5), 1e-11);
    const Piece mapped = piece.mapped({0.0, 2.0}, {1.0, 1.0});
    COMPARE_NEAR(mapped.length(), 2.0 * piece.length(), 1e-13);
    const QPointF at = piece.position(0.4);
    COMPARE_NEAR(norm(mapped.position(0.4) - QPointF(1.0 - 2.0 * at.y(), 1.0 + 2.0 * at.x())), 0.0,
                 1e-15);
    for (const double u : {0.0, 0.25, 0.5, 0.75, 1.0})
        QVERIFY(piece.bounds().adjusted(-1e-15, -1e-15, 1e-15, 1e-15).contains(piece.position(u)));
}

void tst_pieces::foot() {
    const Piece piece = Piece::cubic({0.1, 0.2}, {1.0, -0.3}, {0.7, 0.1}, {0.2, 0.9});
    const QPointF q(0.4, 0.4);
    for (const double u : roots_in_unit_interval(piece.approach(q)))
        COMPARE_NEAR(dot(piece.position(u) - q, piece.derivative(u)), 0.0, 1e-14);
    COMPARE_NEAR(value_at(piece.along({0.6, 0.8}), 0.3), dot(piece.position(0.3), {0.6, 0.8}),
                 1e-15);
}

AEROLITH_GUILESS_TEST_MAIN(tst_pieces)
#include "tst_pieces.moc"
