// SPDX-FileCopyrightText: Aerolith developers
// Sampling the curve of 30 control points.
#include "baseline/spline.h"
#include "harness.h"

#include <QPolygonF>

namespace {

SplineFoil thirty_points() {
    SplineFoil spline;
    spline.num_pnt = MAXNUMPOINTS;
    for (int i = 0; i < MAXNUMPOINTS; ++i)
        spline.CP[i] = QPointF(960.0 - 26.0 * i, 500.0 + (i % 7) * 31.0);
    spline.init_knots();
    return spline;
}

QPolygonF divided(const QPolygonF& polygon, double divisor) {
    QPolygonF quotients(polygon.size());
    QPointF* quotient = quotients.data();
    for (const QPointF& point : polygon)
        *quotient++ = point / divisor;
    return quotients;
}

} // namespace

void bench_sampling() {
    SplineFoil spline = thirty_points();
    const Work plain = {[&] { keep(baseline::make_SplinePoly(spline)[500].x()); }, 4};
    const Work ours = {[&] { keep(spline.make_SplinePoly()[500].x()); }, 800};

    const Comparison kept = compare(31, plain, ours);
    print_row(QStringLiteral("1"), QStringLiteral("curve, 30 points, same knots, plain : ours"),
              times_text(kept.first, kept.second), {Goal::at_least, 200.0}, kept.ratio);

    const QPolygonF curve = spline.make_SplinePoly();
    double divisor = 1.0;
    const Work divisions = {[&] {
                                divisor += 1e-9;
                                keep(divided(curve, divisor)[500].x());
                            },
                            800};
    const Comparison bound = compare(31, ours, divisions);
    print_row(QStringLiteral("1"), QStringLiteral("the same, ours : 999 divisions of a point"),
              times_text(bound.first, bound.second), {Goal::at_most, 1.8}, bound.ratio);

    // Every call gets knots that no earlier call had.
    const auto new_knots = [&] { spline.b_knots[7] += 1e-9; };
    const Work plain_anew = {[&] {
                                 new_knots();
                                 plain.run();
                             },
                             4};
    const Work ours_anew = {[&] {
                                new_knots();
                                ours.run();
                            },
                            400};
    const Comparison anew = compare(31, plain_anew, ours_anew);
    print_row(QStringLiteral("2"), QStringLiteral("the same, new knots each time, plain : ours"),
              times_text(anew.first, anew.second), {Goal::at_least, 90.0}, anew.ratio);
    print_note(QStringLiteral("3"), QStringLiteral("every sample, to the bit"),
               QStringLiteral("tst_identical_samples"));
}
