// SPDX-FileCopyrightText: Aerolith developers
// Complete fits: distances, numbers of points, copies of a table, swings.
#include "document/frames.h"
#include "document/splinebytes.h"
#include "fitting/fit.h"
#include "fitting/smoothness_p.h"
#include "fittingtables.h"
#include "support/testmain.h"

#include <QTest>

#include <cmath>

using namespace fitting;

namespace {

Request with_points(int count) {
    Request request;
    request.points = count;
    return request;
}

bool says(const Fit& fit, const char* words) {
    for (const tables::Finding& finding : fit.findings) {
        if (finding.text.contains(QLatin1String(words)))
            return true;
    }
    return false;
}

QByteArray bytes_of(const Fit& fit) {
    ParaStruct record;
    record.spline = fit.spline;
    return spline_bytes(record);
}

// The largest distance of the table from 200,000 places of the curve, computed without any code of
// the fit.
double largest_by_sampling(const QPolygonF& table, const SplineFoil& spline) {
    const SplineFoil settled = *in_chord_units(spline);
    QPolygonF curve;
    for (int i = 1; i + 1 < settled.num_pnt; ++i) {
        const QPointF from = 0.5 * (settled.CP[i - 1] + settled.CP[i]);
        const QPointF to = 0.5 * (settled.CP[i] + settled.CP[i + 1]);
        for (int k = 0; k <= 4000; ++k) {
            const double v = k / 4000.0;
            curve << (1 - v) * (1 - v) * from + 2 * v * (1 - v) * settled.CP[i] + v * v * to;
        }
    }
    for (int k = 0; k <= 4000; ++k) {
        const int last = settled.num_pnt - 1;
        curve << settled.CP[0] + k / 8000.0 * (settled.CP[1] - settled.CP[0])
              << settled.CP[last] + k / 8000.0 * (settled.CP[last - 1] - settled.CP[last]);
    }
    const QPolygonF points = in_window_frame(table);
    double largest = 0.0;
    for (const QPointF& point : points) {
        double least = 1.0;
        for (const QPointF& place : curve)
            least = std::min(least, std::hypot(place.x() - point.x(), place.y() - point.y()));
        largest = std::max(largest, least);
    }
    return largest;
}

} // namespace

class tst_fit : public QObject {
    Q_OBJECT

private slots:
    void sections_data();
    void sections();
    void printed_deviation_is_that_of_the_file();
    void splines_come_back();
    void copies_agree();
    void a_wider_tolerance_never_asks_for_more();
    void symmetric_is_mirrored_exactly();
    void closed_ends_where_it_begins();
    void openings_are_stored();
    void no_loops_and_no_close_points();
    void corners_are_reported();
    void noise_is_reported();
    void swings_are_reported();
    void one_request_gives_one_file();
};

void tst_fit::sections_data() {
    QTest::addColumn<QPolygonF>("table");
    QTest::addColumn<int>("points");
    QTest::addColumn<double>("limit");
    QTest::newRow("symmetric-30") << four_digit(0.12, 0.0, 101) << 30 << 2e-5;
    QTest::newRow("cambered-30") << four_digit(0.15, 0.04, 121) << 30 << 3e-5;
    QTest::newRow("cambered-20") << four_digit(0.15, 0.04, 121) << 20 << 6e-5;
    QTest::newRow("thick-12") << four_digit(0.21, 0.02, 81) << 12 << 4e-4;
    QTest::newRow("thin-20") << four_digit(0.05, 0.03, 81) << 20 << 8e-5;
    QTest::newRow("few-rows") << four_digit(0.12, 0.02, 21) << 20 << 1e-4;
    QTest::newRow("many-rows") << four_digit(0.12, 0.02, 2001) << 16 << 2e-4;
    QPolygonF blunt = four_digit(0.12, 0.02, 101);
    for (QPointF& point : blunt)
        point.ry() *= 1.0 + 0.3 * point.x();
    blunt.first() = QPointF(1.0, 0.006);
    blunt.last() = QPointF(1.0, -0.006);
    QTest::newRow("blunt") << blunt << 20 << 3e-4;
}

void tst_fit::sections() {
    QFETCH(QPolygonF, table);
    QFETCH(int, points);
    QFETCH(double, limit);
    const Fit result = fit(table, with_points(points));
    QVERIFY2(result.reason.isEmpty(), qPrintable(result.reason));
    QCOMPARE(result.spline.num_pnt, points);
    QVERIFY2(result.deviation.largest < limit,
             qPrintable(QString::number(result.deviation.largest)));
    QVERIFY(result.holds);
    QVERIFY(result.least_leg >= pick_distance);
    QVERIFY2(result.reversals <= result.table_reversals,
             qPrintable(QString::number(result.reversals)));
}

void tst_fit::printed_deviation_is_that_of_the_file() {
    const QPolygonF table = with_noise(four_digit(0.14, 0.03, 61), 2e-4, 9);
    const Fit result = fit(copy_of(table, 4 | 8), with_points(14));
    const double sampled = largest_by_sampling(table, result.spline);
    QVERIFY2(std::abs(sampled - result.deviation.largest) < 1e-8,
             qPrintable(QString::number(sampled - result.deviation.largest)));
    QVERIFY(result.deviation.root_mean_square < result.deviation.largest);
    QCOMPARE(std::max(result.deviation.largest_upper, result.deviation.largest_lower),
             result.deviation.largest);
    // The deviation is the same in the pixels of any other widget.
    SplineFoil larger = result.spline;
    for (QPointF& point : larger.CP)
        point = 2.5 * point + QPointF(31.0, -400.0);
    QVERIFY(std::abs(deviation(table, larger)->largest - result.deviation.largest) < 1e-10);
}

void tst_fit::splines_come_back() {
    constexpr int splines = 60;
    int back = 0;
    for (int seed = 0; seed < splines; ++seed) {
        const SplineAndTable truth = random_spline(unsigned(seed));
        const Fit result = fit(truth.table, with_points(truth.spline.num_pnt));
        back += result.deviation.largest < 1e-7;
    }
    QVERIFY2(back >= splines - 1, qPrintable(QString::number(back)));
}

void tst_fit::copies_agree() {
    const QPolygonF table = with_noise(four_digit(0.13, 0.02, 71), 1e-4, 4);
    const double plain = fit(table, with_points(16)).deviation.largest;
    for (const int kind : {1, 2, 3, 4, 8, 15}) {
        const double copy = fit(copy_of(table, kind), with_points(16)).deviation.largest;
        QVERIFY2(std::abs(copy - plain) < 0.01 * plain, qPrintable(QString::number(kind)));
    }
}

void tst_fit::a_wider_tolerance_never_asks_for_more() {
    const QPolygonF table = with_noise(four_digit(0.13, 0.03, 81), 5e-5, 8);
    int before = most_points;
    for (const double tolerance : {1e-4, 2e-4, 4e-4, 8e-4, 2e-3, 1e-2, 1e-1}) {
        Request request;
        request.tolerance = tolerance;
        const Fit result = fit(table, request);
        QVERIFY(result.holds);
        QVERIFY(result.deviation.largest_over_tolerance <= tolerance);
        QVERIFY(result.spline.num_pnt <= before);
        before = result.spline.num_pnt;
    }
    QCOMPARE(before, least_points);
    Request request;
    request.tolerance = 1e-9;
    const Fit missed = fit(table, request);
    QVERIFY(!missed.holds && says(missed, "lie outside"));
}

void tst_fit::symmetric_is_mirrored_exactly() {
    for (const int count : {11, 20}) {
        Request request = with_points(count);
        request.ends = Ends::symmetric;
        const Fit result = fit(with_noise(four_digit(0.12, 0.0, 81), 1e-4, 2), request);
        const SplineFoil& spline = result.spline;
        const double twice_axis = spline.CP[0].y() + spline.CP[count - 1].y();
        for (int i = 0; i < count; ++i) {
            QCOMPARE(spline.CP[i].x(), spline.CP[count - 1 - i].x());
            QVERIFY(spline.CP[i].y() + spline.CP[count - 1 - i].y() == twice_axis);
        }
        QVERIFY(result.deviation.largest < 1e-3);
    }
}

void tst_fit::closed_ends_where_it_begins() {
    QPolygonF table = four_digit(0.12, 0.02, 61);
    table.first() = QPointF(1.0, 0.002);
    table.last() = QPointF(1.0, -0.002);
    Request request = with_points(16);
    request.ends = Ends::closed;
    const SplineFoil spline = fit(table, request).spline;
    QVERIFY(spline.CP[0] == spline.CP[15]);
}

void tst_fit::openings_are_stored() {
    Request request = with_points(10);
    request.openings = {2.125, 7.0 / 3.0};
    const Fit result = fit(four_digit(0.16, 0.02, 61), request);
    QCOMPARE(result.spline.startVent, 2.125);
    QCOMPARE(result.spline.endVent, 7.0 / 3.0);
}

void tst_fit::no_loops_and_no_close_points() {
    const QPolygonF table = coarse_flat_bottom();
    Points points;
    for (const QPointF& point : in_window_frame(table))
        points.emplace_back(point.x(), point.y());
    for (int count = least_points; count <= most_points; count += 2) {
        const Fit result = fit(table, with_points(count));
        QVERIFY2(result.least_leg >= pick_distance, qPrintable(QString::number(count)));
        const SplineFoil& spline = result.spline;
        Points control;
        for (int i = 0; i < count; ++i)
            control.emplace_back(spline.CP[i].x(), spline.CP[i].y());
        QVERIFY2(total_turning(control) < total_turning(points) + 3.0,
                 qPrintable(QString::number(count)));
    }
}

void tst_fit::corners_are_reported() {
    // Two wedges, back to back.
    QPolygonF table;
    for (int i = 0; i < 80; ++i) {
        const double x = std::abs(1.0 - i / 40.0);
        const double y = 0.4 * std::min(x, 1.0 - x);
        table << QPointF(x, i <= 40 ? y : -y);
    }
    table << QPointF(1.0, 0.0);
    const Fit result = fit(table, with_points(5));
    QVERIFY(says(result, "the corner at x = 0.500 is rounded"));
    QVERIFY(!result.holds);
}

void tst_fit::noise_is_reported() {
    const QPolygonF table = four_digit(0.13, 0.03, 121);
    QVERIFY(!says(fit(table, with_points(20)), "noisy"));
    const QPolygonF noisy = with_noise(table, 3e-4, 6);
    const Fit rough = fit(noisy, with_points(28));
    QVERIFY(says(rough, "the table is noisy"));
    QVERIFY(says(rough, "follows the noise"));
    QVERIFY(!says(fit(noisy, with_points(12)), "follows the noise"));
}

void tst_fit::swings_are_reported() {
    const char words[] = "between the points of the table the spline is";
    // At a coarse nose, thirty control points can move freely between the points.
    const Fit free = fit(coarse_flat_bottom(), with_points(30));
    QVERIFY2(says(free, words), qPrintable(QString::number(free.deviation.largest_between)));
    QVERIFY(!says(fit(four_digit(0.21, 0.03, 121), with_points(30)), words));
    QVERIFY(!says(fit(coarse_flat_bottom(), with_points(8)), words));
    // The limits: five times the distance at the points, and half the tolerance.
    const Outline outline = prepare(four_digit(0.12, 0.0, 61)).outline;
    struct Row {
        double largest;
        double between;
        bool is_spoken_of;
    };
    for (const Row& row : {Row{1e-4, 5.1e-4, true}, Row{1e-4, 4.9e-4, false},
                           Row{1e-6, 2.1e-4, true}, Row{1e-6, 1.9e-4, false}}) {
        Fit told;
        told.holds = true;
        told.least_leg = 1.0;
        told.deviation.largest = row.largest;
        told.deviation.largest_between = row.between;
        told.findings = findings(outline, outline.points, told, usual_tolerance);
        QCOMPARE(says(told, words), row.is_spoken_of);
    }
}

void tst_fit::one_request_gives_one_file() {
    const QPolygonF table = with_noise(four_digit(0.13, 0.02, 71), 1e-4, 4);
    QCOMPARE(bytes_of(fit(table, with_points(14))), bytes_of(fit(table, with_points(14))));
}

AEROLITH_GUILESS_TEST_MAIN(tst_fit)
#include "tst_fit.moc"
