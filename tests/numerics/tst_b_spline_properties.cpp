// SPDX-FileCopyrightText: Aerolith developers
// Properties of every B-spline curve, whatever its points.
#include "curves.h"
#include "numerics/b_spline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const double infinity = std::numeric_limits<double>::infinity();
const double above_one = 1.0 + std::numeric_limits<double>::epsilon();

void add_count_rows() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("degree");
    for (int degree = 1; degree <= 3; ++degree)
        for (const int count : {1, 2, 3, 4, 5, 11, 29, 30})
            QTest::addRow("degree-%d-points-%d", degree, count) << count << degree;
}

} // namespace

class tst_b_spline_properties : public QObject {
    Q_OBJECT

private slots:
    void partition_by_the_sum_data();
    void partition_by_the_sum();
    void constant_input_data();
    void constant_input();
    void pinned_ends_data();
    void pinned_ends();
    void second_span_is_straight_data();
    void second_span_is_straight();
    void affine_invariance_data();
    void affine_invariance();
    void convex_hull_data();
    void convex_hull();
    void reversal_symmetry_data();
    void reversal_symmetry();
    void linear_precision_data();
    void linear_precision();
    void local_control();
};

void tst_b_spline_properties::partition_by_the_sum_data() {
    add_count_rows();
}

// The sum of all functions that are not 0 at a parameter is 1; towards the ends it is less, but
// never 0.
void tst_b_spline_properties::partition_by_the_sum() {
    QFETCH(int, count);
    QFETCH(int, degree);
    QList<double> knots = uniform_knots(count, degree);
    for (const double t : dense_parameters()) {
        double sum = 0.0;
        for (int i = 0; i < count; ++i) {
            const double value = deBoor(i, degree, knots.data(), t);
            QVERIFY2(value >= 0.0 && value <= above_one, qPrintable(exact_text(value)));
            sum += value;
        }
        if (degree < count && t >= knots[degree] && t < knots[count])
            COMPARE_NEAR(sum, 1.0, 4e-14);
        else
            QVERIFY2(sum > 0.0 && sum <= 1.0 + 4e-14, qPrintable(exact_text(sum)));
    }
}

void tst_b_spline_properties::constant_input_data() {
    add_count_rows();
}

void tst_b_spline_properties::constant_input() {
    QFETCH(int, count);
    QFETCH(int, degree);
    const QPointF constant(613.7, -0.1);
    const QList<double> knots = uniform_knots(count, degree);
    for (const double t : dense_parameters()) {
        const QPointF point = curve_point(QList<QPointF>(count, constant), degree, knots, t);
        COMPARE_ULP(point.x(), constant.x(), 4);
        COMPARE_ULP(point.y(), constant.y(), 4);
    }
}

void tst_b_spline_properties::pinned_ends_data() {
    add_count_rows();
}

void tst_b_spline_properties::pinned_ends() {
    QFETCH(int, count);
    QFETCH(int, degree);
    const QList<QPointF> points = zigzag(count);
    const QList<double> knots = uniform_knots(count, degree);
    for (const double t : dense_parameters()) {
        if (t < knots[1]) {
            const QPointF first = curve_point(points, degree, knots, t);
            COMPARE_ULP(first.x(), points.first().x(), 1);
            COMPARE_ULP(first.y(), points.first().y(), 1);
        }
        if (t >= knots[count + degree - 1]) {
            const QPointF last = curve_point(points, degree, knots, t);
            COMPARE_ULP(last.x(), points.last().x(), 1);
            COMPARE_ULP(last.y(), points.last().y(), 1);
        }
    }
}

void tst_b_spline_properties::second_span_is_straight_data() {
    QTest::addColumn<int>("count");
    for (const int count : {2, 3, 4, 7, 30})
        QTest::addRow("points-%d", count) << count;
}

void tst_b_spline_properties::second_span_is_straight() {
    QFETCH(int, count);
    const QList<QPointF> points = zigzag(count);
    const QList<double> knots = uniform_knots(count, 2);
    const auto distance_from = [&points](int a, QPointF point) {
        const QPointF along = points[a + 1] - points[a];
        const QPointF there = point - points[a];
        return qAbs(along.x() * there.y() - along.y() * there.x()) /
               std::hypot(along.x(), along.y());
    };
    int seen = 0;
    for (const double t : dense_parameters()) {
        if (t >= knots[1] && t < knots[2]) {
            COMPARE_NEAR(distance_from(0, curve_point(points, 2, knots, t)), 0.0, 1e-10);
            ++seen;
        }
        if (t >= knots[count] && t < knots[count + 1]) {
            COMPARE_NEAR(distance_from(count - 2, curve_point(points, 2, knots, t)), 0.0, 1e-10);
            ++seen;
        }
    }
    QVERIFY(seen > 10);
}

void tst_b_spline_properties::affine_invariance_data() {
    add_count_rows();
}

void tst_b_spline_properties::affine_invariance() {
    QFETCH(int, count);
    QFETCH(int, degree);
    const QList<QPointF> points = zigzag(count);
    const QList<double> knots = uniform_knots(count, degree);
    const auto map = [](QPointF p) {
        return QPointF(1.5 * p.x() - 0.25 * p.y() + 40.0, 0.125 * p.x() + 0.75 * p.y() - 9.0);
    };
    QList<QPointF> mapped;
    for (const QPointF point : points)
        mapped.append(map(point));
    for (const double t : dense_parameters()) {
        const QPointF of_curve = map(curve_point(points, degree, knots, t));
        const QPointF of_points = curve_point(mapped, degree, knots, t);
        COMPARE_NEAR(of_points.x(), of_curve.x(), 2e-11);
        COMPARE_NEAR(of_points.y(), of_curve.y(), 2e-11);
    }
}

void tst_b_spline_properties::convex_hull_data() {
    add_count_rows();
}

// Each point lies in the convex hull of the degree + 1 control points that affect it: in no
// direction farther out than the farthest of them.
void tst_b_spline_properties::convex_hull() {
    QFETCH(int, count);
    QFETCH(int, degree);
    const QList<QPointF> points = zigzag(count);
    const QList<double> knots = uniform_knots(count, degree);
    for (const double t : dense_parameters()) {
        const QPointF point = curve_point(points, degree, knots, t);
        const int span = int(std::upper_bound(knots.begin(), knots.end(), t) - knots.begin()) - 1;
        for (int direction = 0; direction < 24; ++direction) {
            const QPointF d(std::cos(direction * 0.2617993877991494),
                            std::sin(direction * 0.2617993877991494));
            double farthest = -infinity;
            for (int i = qMax(0, span - degree); i <= qMin(count - 1, span); ++i)
                farthest = qMax(farthest, QPointF::dotProduct(d, points[i]));
            QVERIFY(QPointF::dotProduct(d, point) <= farthest + 1e-10);
        }
    }
}

void tst_b_spline_properties::reversal_symmetry_data() {
    add_count_rows();
}

void tst_b_spline_properties::reversal_symmetry() {
    QFETCH(int, count);
    QFETCH(int, degree);
    const QList<QPointF> points = zigzag(count);
    const QList<QPointF> reversed(points.rbegin(), points.rend());
    const QList<double> knots = uniform_knots(count, degree);
    for (int i = 1; i < 4096; ++i) {
        // Multiples of 1/4096: exact, and so is their distance from 1.
        const double t = i / 4096.0;
        const QPointF there = curve_point(points, degree, knots, t);
        const QPointF back = curve_point(reversed, degree, knots, 1.0 - t);
        // From degree 1 on the curve is continuous, so a knot that rounding has moved to the other
        // side of t does no harm.
        COMPARE_NEAR(back.x(), there.x(), 1e-9);
        COMPARE_NEAR(back.y(), there.y(), 1e-9);
    }
}

void tst_b_spline_properties::linear_precision_data() {
    add_count_rows();
}

// With the control points at the means of the inner knots of their functions, the curve is the
// identity where the sum is 1.
void tst_b_spline_properties::linear_precision() {
    QFETCH(int, count);
    QFETCH(int, degree);
    const QList<double> knots = uniform_knots(count, degree);
    QList<QPointF> points;
    for (int i = 0; i < count; ++i) {
        double mean = 0.0;
        for (int k = 1; k <= degree; ++k)
            mean += knots[i + k] / degree;
        points.append({100.0 + 500.0 * mean, 300.0 - 80.0 * mean});
    }
    for (const double t : dense_parameters()) {
        if (degree < count && t >= knots[degree] && t < knots[count]) {
            const QPointF point = curve_point(points, degree, knots, t);
            COMPARE_NEAR(point.x(), 100.0 + 500.0 * t, 2e-11);
            COMPARE_NEAR(point.y(), 300.0 - 80.0 * t, 2e-11);
        }
    }
}

void tst_b_spline_properties::local_control() {
    const int count = 12;
    const int moved = 5;
    const QList<QPointF> points = zigzag(count);
    QList<QPointF> other = points;
    other[moved] += QPointF(10.0, -20.0);
    const QList<double> knots = uniform_knots(count, 2);
    for (const double t : dense_parameters()) {
        const bool same =
            same_bits(curve_point(points, 2, knots, t), curve_point(other, 2, knots, t));
        if (t <= knots[moved] || t >= knots[moved + 3])
            QVERIFY2(same, qPrintable(exact_text(t)));
        else if (t > knots[moved] + 0.001 && t < knots[moved + 3] - 0.001)
            QVERIFY2(!same, qPrintable(exact_text(t)));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_b_spline_properties)
#include "tst_b_spline_properties.moc"
