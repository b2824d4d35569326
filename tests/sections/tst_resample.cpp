// SPDX-FileCopyrightText: Aerolith developers
// New points: where they lie, and the deviation of the straight lines between them.
#include "outlines.h"
#include "sections/plane.h"
#include "sections/resample.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

using namespace sections;

Q_DECLARE_METATYPE(Spacing)

class tst_resample : public QObject {
    Q_OBJECT

private slots:
    void points_on_the_curve_data();
    void points_on_the_curve();
    void uniform_steps();
    void cosine_steps();
    void curvature_steps();
    void corners_stay();
    void distance_from_the_lines();
    void refused_data();
    void refused();
};

void tst_resample::points_on_the_curve_data() {
    QTest::addColumn<Spacing>("spacing");
    QTest::addColumn<int>("count");

    for (const int count : {7, 50, 51, 400}) {
        QTest::addRow("curvature-%d", count) << Spacing::curvature << count;
        QTest::addRow("cosine-%d", count) << Spacing::cosine << count;
        QTest::addRow("uniform-%d", count) << Spacing::uniform << count;
    }
}

void tst_resample::points_on_the_curve() {
    QFETCH(Spacing, spacing);
    QFETCH(int, count);
    for (const Curve& curve :
         {spline_curve(spline_of(hull)).curve, table_curve(naca(0.04, 0.4, 0.12, 40)).curve}) {
        const Resampled result = resample(curve, count, spacing);
        QCOMPARE(result.reason, QString());
        QCOMPARE(result.points.size(), qsizetype(count));
        double left = 1.0;
        for (const QPointF& point : result.points) {
            COMPARE_NEAR(curve.nearest(point).distance, 0.0, 1e-13);
            left = std::min(left, point.x());
        }
        COMPARE_NEAR(left, curve.position(curve.extreme({-1.0, 0.0})).x(), 1e-13);
        COMPARE_NEAR(norm(result.points.first() - curve.position(curve.begin())), 0.0, 0.0);
        COMPARE_NEAR(norm(result.points.last() - curve.position(curve.end())), 0.0, 1e-15);
    }
}

// On a semicircle up to the nose, the angles are equal.
void tst_resample::uniform_steps() {
    const Resampled result = resample(table_curve(ellipse(400, 1.0)).curve, 41, Spacing::uniform);
    for (int i = 0; i <= 40; ++i) {
        const double a = 2.0 * pi * i / 40;
        const QPointF expected(0.5 + 0.5 * std::cos(a), 0.5 * std::sin(a));
        COMPARE_NEAR(norm(result.points[i] - expected), 0.0, 1e-6);
    }
    COMPARE_NEAR(result.off, 0.5 * (1.0 - std::cos(pi / 40.0)), 1e-7);
}

void tst_resample::cosine_steps() {
    const Resampled result = resample(table_curve(ellipse(400, 1.0)).curve, 41, Spacing::cosine);
    for (int i = 0; i <= 20; ++i) {
        const double a = pi * 0.5 * (1.0 - std::cos(pi * i / 20));
        const QPointF expected(0.5 + 0.5 * std::cos(a), 0.5 * std::sin(a));
        COMPARE_NEAR(norm(result.points[i] - expected), 0.0, 1e-6);
    }
}

// The most accurate of the three spacings for the same number of points.
void tst_resample::curvature_steps() {
    const Curve curve = table_curve(naca(0.02, 0.4, 0.12, 200)).curve;
    for (const int count : {40, 80, 160}) {
        const double curved = resample(curve, count, Spacing::curvature).off;
        QVERIFY(curved < 0.5 * resample(curve, count, Spacing::uniform).off);
        QVERIFY(curved < 0.9 * resample(curve, count, Spacing::cosine).off);
    }
    // The deviation decreases with the square of the number.
    const double ratio =
        resample(curve, 40, Spacing::curvature).off / resample(curve, 160, Spacing::curvature).off;
    QVERIFY2(ratio > 12.0 && ratio < 22.0, qPrintable(QString::number(ratio)));
}

void tst_resample::corners_stay() {
    SplineFoil spline = spline_of(hull);
    spline.b_knots[5] = spline.b_knots[4] + 0.0001;
    const Curve curve = spline_curve(spline).curve;
    for (const Spacing spacing : {Spacing::curvature, Spacing::cosine, Spacing::uniform}) {
        const Resampled result = resample(curve, 30, spacing);
        int close = 0;
        for (const QPointF& point : result.points)
            close += norm(point - hull[3]) < 1e-3;
        QCOMPARE(close, 1);
    }
}

void tst_resample::distance_from_the_lines() {
    const Curve curve = spline_curve(spline_of(hull)).curve;
    const Resampled result = resample(curve, 25, Spacing::cosine);
    double farthest = 0.0;
    for (int k = 0; k <= 20000; ++k) {
        const QPointF at = curve.position(curve.place_at(curve.length() * k / 20000.0));
        double nearest = 1.0;
        for (qsizetype i = 0; i + 1 < result.points.size(); ++i) {
            const QPointF line = result.points[i + 1] - result.points[i];
            const double share =
                std::clamp(dot(at - result.points[i], line) / dot(line, line), 0.0, 1.0);
            nearest = std::min(nearest, norm(at - result.points[i] - share * line));
        }
        farthest = std::max(farthest, nearest);
    }
    COMPARE_NEAR(result.off, farthest, 1e-7);
}

void tst_resample::refused_data() {
    QTest::addColumn<int>("count");

    QTest::newRow("negative") << -3;
    QTest::newRow("too-few") << 5;
    QTest::newRow("too-many") << 1000001;
}

void tst_resample::refused() {
    QFETCH(int, count);
    const Resampled result = resample(spline_curve(spline_of(hull)).curve, count, Spacing::uniform);
    QCOMPARE(result.reason, QStringLiteral("%1 points, expected 6 to 1000000").arg(count));
    QVERIFY(result.points.isEmpty());
    QCOMPARE(resample(Curve(), 50, Spacing::uniform).reason, QStringLiteral("no curve"));
}

AEROLITH_GUILESS_TEST_MAIN(tst_resample)
#include "tst_resample.moc"
