// SPDX-FileCopyrightText: Aerolith developers
// Sampling of the spline, bit by bit.
#include "baseline/spline.h"
#include "document/parastruct.h"
#include "filledrecords.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace {

const double nan_value = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();
const int least_int = std::numeric_limits<int>::min();
const int greatest_int = std::numeric_limits<int>::max();

// Where two curves first differ; all NaN are equal.
QString first_unlike(const QPolygonF& actual, const QPolygonF& expected) {
    if (actual.size() != expected.size())
        return first_difference(actual, expected);
    const auto alike = [](double a, double b) {
        return same_bits(a, b) || (std::isnan(a) && std::isnan(b));
    };
    for (qsizetype i = 0; i < actual.size(); ++i)
        if (!alike(actual[i].x(), expected[i].x()) || !alike(actual[i].y(), expected[i].y()))
            return QStringLiteral("point %1: %2 is not %3")
                .arg(QString::number(i), exact_text(actual[i]), exact_text(expected[i]));
    return {};
}

QPolygonF plain_curve(const SplineFoil& spline) {
    return baseline::sample(spline.num_pnt, spline.degree, spline.CP, spline.b_knots);
}

} // namespace

class tst_splinesampling : public QObject {
    Q_OBJECT

private slots:
    void curve_or_none_data();
    void curve_or_none();
    void sample_count_data();
    void sample_count();
    void parameter_is_accumulated();
    void one_point_everywhere();
    void pinned_ends();
    void sampling_leaves_the_spline();
    void same_bits_as_recursion_data();
    void same_bits_as_recursion();
    void each_change_is_seen();
    void splines_in_turn();
};

void tst_splinesampling::curve_or_none_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("degree");
    QTest::addColumn<int>("clamped");

    QTest::newRow("quadratic") << 5 << 2 << 5;
    QTest::newRow("one-point") << 1 << 2 << 1;
    QTest::newRow("all-points") << 30 << 2 << 30;
    QTest::newRow("degree-zero") << 5 << 0 << 5;
    QTest::newRow("degree-five") << 5 << 5 << 5;
    QTest::newRow("degree-five-all-points") << 30 << 5 << 30;
    QTest::newRow("points-beyond") << 31 << 2 << 30;
    QTest::newRow("points-greatest") << greatest_int << 2 << 30;
    QTest::newRow("no-points") << 0 << 2 << 0;
    QTest::newRow("points-below-zero") << -1 << 2 << 0;
    QTest::newRow("points-least") << least_int << 2 << 0;
    QTest::newRow("degree-six") << 5 << 6 << 0;
    QTest::newRow("degree-below-zero") << 5 << -1 << 0;
    QTest::newRow("degree-least") << 5 << least_int << 0;
    QTest::newRow("degree-greatest") << 5 << greatest_int << 0;
    QTest::newRow("all-greatest") << greatest_int << greatest_int << 0;
}

void tst_splinesampling::curve_or_none() {
    QFETCH(int, count);
    QFETCH(int, degree);
    QFETCH(int, clamped);
    SplineFoil spline = zigzag(30);
    for (int i = 0; i < 40; ++i)
        spline.b_knots[i] = i / 40.0;
    spline.num_pnt = count;
    spline.num_knt = count;
    spline.degree = degree;
    spline.order = least_int;
    QCOMPARE(spline.has_curve(), clamped > 0);
    const QPolygonF expected =
        clamped > 0 ? baseline::sample(clamped, degree, spline.CP, spline.b_knots) : QPolygonF();
    QCOMPARE(first_unlike(spline.make_SplinePoly(), expected), QString());
    QCOMPARE(spline.num_pnt, count);
    QCOMPARE(spline.degree, degree);
}

void tst_splinesampling::sample_count_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("samples");

    QTest::newRow("points-below-zero") << -1 << 0;
    QTest::newRow("points-0") << 0 << 0;
    for (int count = 1; count <= MAXNUMPOINTS; ++count)
        QTest::addRow("points-%d", count) << count << 999;
}

void tst_splinesampling::sample_count() {
    QFETCH(int, count);
    QFETCH(int, samples);
    QCOMPARE(int(zigzag(count).make_SplinePoly().size()), samples);
}

// On a hat function the x of a sample reveals its parameter: a sum of steps, not a multiple.
void tst_splinesampling::parameter_is_accumulated() {
    SplineFoil line;
    line.num_pnt = 2;
    line.degree = 1;
    line.num_knt = 4;
    const double knots[] = {-1.0, 0.0, 1.0, 2.0};
    std::copy(std::begin(knots), std::end(knots), line.b_knots);
    line.CP[1] = QPointF(1.0, 0.0);
    const QPolygonF curve = line.make_SplinePoly();
    QCOMPARE(int(curve.size()), 999);
    double u = 0.001;
    for (int i = 0; i < 999; ++i) {
        const double weight = (1.0 - u) + u;
        COMPARE_BITS(curve[i].x(), u / weight);
        u += 1.0 / 1000.0;
    }
}

void tst_splinesampling::one_point_everywhere() {
    for (int count = 1; count <= MAXNUMPOINTS; ++count) {
        SplineFoil spline = zigzag(count);
        std::fill_n(spline.CP, count, QPointF(613.7, -0.1));
        const QPolygonF curve = spline.make_SplinePoly();
        QCOMPARE(int(curve.size()), 999);
        for (const QPointF point : curve) {
            COMPARE_ULP(point.x(), 613.7, 4);
            COMPARE_ULP(point.y(), -0.1, 4);
        }
    }
}

void tst_splinesampling::pinned_ends() {
    const SplineFoil spline = zigzag(4);
    const QPolygonF curve = spline.make_SplinePoly();
    for (int i = 0; i < 166; ++i) {
        COMPARE_ULP(curve[i].x(), spline.CP[0].x(), 1);
        COMPARE_ULP(curve[i].y(), spline.CP[0].y(), 1);
    }
    QVERIFY(curve[167] != spline.CP[0]);
    QVERIFY(curve[831] != spline.CP[3]);
    for (int i = 833; i < 999; ++i) {
        COMPARE_ULP(curve[i].x(), spline.CP[3].x(), 1);
        COMPARE_ULP(curve[i].y(), spline.CP[3].y(), 1);
    }
}

void tst_splinesampling::sampling_leaves_the_spline() {
    const SplineFoil spline = zigzag(9);
    const SplineFoil before = spline;
    COMPARE_POLYGON_BITS(spline.make_SplinePoly(), spline.make_SplinePoly());
    QCOMPARE(different_member(spline, before), QString());
}

void tst_splinesampling::same_bits_as_recursion_data() {
    QTest::addColumn<int>("seed");
    QTest::addColumn<QString>("knots");
    QTest::addColumn<QString>("points");

    const char* const points[] = {"plain", "signed-zeros", "huge-and-tiny", "not-finite"};
    int seed = 0;
    for (const char* knots : {"uniform", "sharpened-once", "sharpened-runs", "free", "repeated",
                              "falling", "not-finite"})
        for (const char* kind : points)
            QTest::addRow("%s-%s", knots, kind)
                << ++seed << QString::fromLatin1(knots) << QString::fromLatin1(kind);
}

namespace {

double random_coordinate(QRandomGenerator& random, const QString& kind) {
    const double plain = random.bounded(3000.0) - 1000.0;
    const int dice = random.bounded(8);
    if (kind == QLatin1String("signed-zeros"))
        return dice < 4 ? (dice % 2 ? 0.0 : -0.0) : plain;
    if (kind == QLatin1String("huge-and-tiny"))
        return std::ldexp(plain, dice < 4 ? 1000 : -1060);
    if (kind == QLatin1String("not-finite") && dice == 0)
        return random.bounded(2) ? nan_value : (random.bounded(2) ? infinity : -infinity);
    return plain;
}

void change_knots(SplineFoil& spline, QRandomGenerator& random, const QString& kind) {
    const int count = spline.num_knt;
    double* knots = spline.b_knots;
    const auto sharpen = [&](int selected) { knots[selected + 2] = knots[selected + 1] + 0.0001; };
    if (kind == QLatin1String("sharpened-once") && spline.num_pnt > 2)
        sharpen(random.bounded(2, spline.num_pnt));
    if (kind == QLatin1String("sharpened-runs") && spline.num_pnt > 2)
        for (int i = random.bounded(12); i >= 0; --i)
            sharpen(random.bounded(2, spline.num_pnt));
    if (kind == QLatin1String("free")) {
        for (int i = 0; i < count; ++i)
            knots[i] = random.bounded(1.2) - 0.1;
        std::sort(knots, knots + count);
    }
    if (kind == QLatin1String("repeated"))
        for (int i = 1; i < count; ++i)
            if (random.bounded(3) == 0)
                knots[i] = knots[i - 1];
    if (kind == QLatin1String("falling"))
        for (int i = 0; i < count; ++i)
            knots[i] = random.bounded(2) ? random.bounded(1.0) : knots[i];
    if (kind == QLatin1String("not-finite"))
        knots[random.bounded(count)] = random.bounded(2) ? nan_value : infinity;
}

} // namespace

void tst_splinesampling::same_bits_as_recursion() {
    QFETCH(int, seed);
    QFETCH(QString, knots);
    QFETCH(QString, points);
    QRandomGenerator random(static_cast<quint32>(seed));
    for (int round = 0; round < 12; ++round) {
        SplineFoil spline;
        spline.num_pnt = round == 0 ? 30 : random.bounded(1, 31);
        spline.init_knots();
        for (int i = 0; i < spline.num_pnt; ++i) {
            const double x = random_coordinate(random, points);
            spline.CP[i] = QPointF(x, random_coordinate(random, points));
        }
        change_knots(spline, random, knots);
        if (round >= 10)
            spline.degree = random.bounded(6);
        spline.order = spline.degree + 1;
        QCOMPARE(first_unlike(spline.make_SplinePoly(), plain_curve(spline)), QString());
    }
}

// Values cached between calls must not outlive their inputs.
void tst_splinesampling::each_change_is_seen() {
    SplineFoil spline = zigzag(8);
    const auto check = [&spline] {
        return first_unlike(spline.make_SplinePoly(), plain_curve(spline));
    };
    QCOMPARE(check(), QString());
    for (int i = 0; i < 8; ++i) {
        spline.CP[i].ry() += 0.5;
        QCOMPARE(check(), QString());
    }
    for (int i = 0; i < spline.num_knt; ++i) {
        spline.b_knots[i] -= 0.01;
        QCOMPARE(check(), QString());
    }
    spline.num_pnt = 7;
    QCOMPARE(check(), QString());
    spline.degree = 3;
    QCOMPARE(check(), QString());
    spline.degree = 1;
    QCOMPARE(check(), QString());
    spline.num_pnt = 8;
    spline.init_knots();
    QCOMPARE(check(), QString());
}

void tst_splinesampling::splines_in_turn() {
    const SplineFoil first = zigzag(8);
    SplineFoil second = zigzag(8);
    second.b_knots[5] = second.b_knots[4] + 0.0001;
    for (int round = 0; round < 3; ++round) {
        COMPARE_POLYGON_BITS(first.make_SplinePoly(), plain_curve(first));
        COMPARE_POLYGON_BITS(second.make_SplinePoly(), plain_curve(second));
    }
    second = first;
    COMPARE_POLYGON_BITS(second.make_SplinePoly(), plain_curve(first));
}

AEROLITH_GUILESS_TEST_MAIN(tst_splinesampling)
#include "tst_splinesampling.moc"
