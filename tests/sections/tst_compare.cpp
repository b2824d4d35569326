// SPDX-FileCopyrightText: Aerolith developers
// Distances of known curves, and of splines from tables of them.
#include "outlines.h"
#include "sections/compare.h"
#include "sections/plane.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

using namespace sections;

namespace {

Section section_of(const QPolygonF& points) {
    return *section_of_table(table_of(points)).section;
}

} // namespace

class tst_compare : public QObject {
    Q_OBJECT

private slots:
    void a_section_with_itself();
    void ellipses();
    void sides_apart();
    void ranges();
    void both_orders();
    void alignment();
    void thin_trailing_edge();
    void spline_with_its_samples();
    void against_many_samples();
};

void tst_compare::a_section_with_itself() {
    const Section section = section_of(naca(0.04, 0.4, 0.12, 60));
    const Comparison c = compare(section, section);
    COMPARE_NEAR(c.greatest(), 0.0, 1e-14);
    COMPARE_NEAR(c.length, 0.0, 0.0);
    COMPARE_NEAR(c.to_reference.upper.whole.length,
                 section.curve.length_to(leading_edge_of(section.curve)), 1e-12);
}

// Two ellipses with the same long axis are farthest apart at the short axes.
void tst_compare::ellipses() {
    const Section thin = section_of(ellipse(400, 0.1));
    const Section thick = section_of(ellipse(400, 0.104));
    const Comparison c = compare(thin, thick);
    for (const OneWay& way : {c.to_reference, c.from_reference}) {
        for (const SideDeviation& side : {way.upper, way.lower}) {
            COMPARE_NEAR(side.whole.greatest, 0.002, 1e-8);
            COMPARE_NEAR(side.whole.station, 0.5, 0.01);
            QVERIFY(side.whole.root_mean_square() < 0.002);
            QVERIFY(side.whole.root_mean_square() > 0.001);
        }
    }
    QVERIFY(c.length > 0.0);
    COMPARE_NEAR(c.length, thick.curve.length() - thin.curve.length(), 1e-15);
    COMPARE_NEAR(c.upper_length + c.lower_length, c.length, 1e-12);
    const Comparison back = compare(thick, thin);
    COMPARE_NEAR(back.to_reference.upper.whole.greatest, -c.from_reference.upper.whole.greatest,
                 1e-12);
}

void tst_compare::sides_apart() {
    QPolygonF points = ellipse(400, 0.1);
    const Section reference = section_of(points);
    for (QPointF& point : points)
        point.setY(point.y() < 0.0 ? 0.9 * point.y() : point.y());
    const Comparison c = compare(reference, section_of(points));
    COMPARE_NEAR(c.to_reference.upper.whole.greatest, 0.0, 1e-5);
    COMPARE_NEAR(c.to_reference.lower.whole.greatest, -0.005, 1e-7);
    COMPARE_NEAR(c.to_reference.greatest().greatest, -0.005, 1e-7);
}

// A bump that begins after 0.2 and ends before 0.6.
void tst_compare::ranges() {
    QPolygonF points = naca(0.0, 0.4, 0.12, 200);
    const Section reference = section_of(points);
    for (qsizetype i = 0; i < points.size() / 2; ++i) {
        const double x = (points[i].x() - 0.3) / 0.2;
        if (x > 0.0 && x < 1.0)
            points[i].ry() += 0.003 * 16.0 * x * x * (1.0 - x) * (1.0 - x);
    }
    const Comparison c = compare(reference, section_of(points));
    const auto& found = c.to_reference.upper.ranges;
    QVERIFY(std::abs(found[0].greatest) < 1e-7 && std::abs(found[1].greatest) < 1e-5);
    COMPARE_NEAR(found[2].greatest, 0.003, 2e-5);
    COMPARE_NEAR(found[2].station, 0.4, 0.01);
    QVERIFY(std::abs(found[3].greatest) < 1e-5);
    double length = 0.0;
    for (const Deviation& range : found)
        length += range.length;
    COMPARE_NEAR(length, c.to_reference.upper.whole.length, 1e-12);
}

void tst_compare::both_orders() {
    const QPolygonF a = naca(0.02, 0.4, 0.12, 60);
    const QPolygonF b = naca(0.025, 0.4, 0.12, 60);
    const Comparison c = compare(section_of(a), section_of(b));
    const Comparison d = compare(section_of(reversed(a)), section_of(b));
    QVERIFY(c.greatest() > 1e-3);
    COMPARE_NEAR(d.greatest(), c.greatest(), 1e-10);
    COMPARE_NEAR(d.from_reference.upper.whole.root_mean_square(),
                 c.from_reference.upper.whole.root_mean_square(), 1e-10);
}

void tst_compare::alignment() {
    const QPolygonF points = naca(0.04, 0.4, 0.12, 80);
    const Section straight = section_of(points);
    const Section tilted = section_of(turned(points, 3.0));
    QVERIFY(compare(straight, tilted).greatest() > 0.02);
    const Comparison c = compare(straight, tilted, true);
    COMPARE_NEAR(c.greatest(), 0.0, 1e-9);
    COMPARE_NEAR(c.angle, -3.0, 1e-6);
    // The window scales the tilted section to the same width.
    COMPARE_NEAR(c.scale, 0.9989, 0.0005);
    COMPARE_NEAR(c.length, 0.0, 1e-9);
}

// Where the section is thinner than the deviation, feet stay on their side.
void tst_compare::thin_trailing_edge() {
    QPolygonF points = ellipse(400, 0.02);
    const Section reference = section_of(points);
    for (QPointF& point : points)
        point.ry() += 0.08 * point.x() * (1.0 - point.x());
    const Section lifted = section_of(points);
    const Comparison c = compare(reference, lifted);
    QVERIFY(c.to_reference.lower.whole.greatest < -0.019);
}

void tst_compare::spline_with_its_samples() {
    const SplineFoil spline = spline_of(hull);
    const Section drawn = *section_of_spline(spline).section;
    const Section listed = section_of(spline.make_SplinePoly());
    const Comparison c = compare(drawn, listed);
    QVERIFY2(c.greatest() < 1e-6, qPrintable(QString::number(c.greatest())));
    COMPARE_NEAR(c.length, 0.0, 1e-7);
}

void tst_compare::against_many_samples() {
    const Section a = section_of(naca(0.02, 0.4, 0.12, 30));
    const Section b = *section_of_spline(spline_of(hull)).section;
    const Comparison c = compare(a, b);
    double farthest = 0.0;
    double squares = 0.0;
    const int count = 4000;
    const double length = b.curve.length_to(leading_edge_of(b.curve));
    for (int i = 0; i < count; ++i) {
        const double off =
            a.curve.nearest(b.curve.position(b.curve.place_at(length * (i + 0.5) / count)))
                .distance;
        farthest = std::max(farthest, off);
        squares += off * off / count;
    }
    const Deviation& whole = c.to_reference.upper.whole;
    COMPARE_NEAR(std::abs(whole.greatest), farthest, 1e-6);
    COMPARE_NEAR(whole.root_mean_square(), std::sqrt(squares), 1e-5);
    COMPARE_NEAR(whole.length, length, 1e-10);
}

AEROLITH_GUILESS_TEST_MAIN(tst_compare)
#include "tst_compare.moc"
