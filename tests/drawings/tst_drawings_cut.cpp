// SPDX-FileCopyrightText: Aerolith developers
// The outer edge: closed forms, and the allowance everywhere around random sections.
#include "drawings/outline_p.h"
#include "ribs.h"
#include "sections/plane.h"
#include "support/testmain.h"

#include <QRandomGenerator>

#include <cmath>

using namespace drawings;
using sections::cross;
using sections::dot;
using sections::norm;
using sections::turned_left;
using sections::unit;

namespace {

const double flatness = 0.01;

double area_of(const QPolygonF& points) {
    double twice = 0.0;
    for (qsizetype i = 0; i < points.size(); ++i)
        twice += cross(points[i], points[(i + 1) % points.size()]);
    return 0.5 * twice;
}

bool cross_each_other(QPointF a, QPointF b, QPointF c, QPointF d) {
    const auto side = [](QPointF p, QPointF q, QPointF r) { return cross(q - p, r - p); };
    return side(a, b, c) * side(a, b, d) < 0.0 && side(c, d, a) * side(c, d, b) < 0.0;
}

int crossings(const QPolygonF& points) {
    int count = 0;
    const qsizetype n = points.size();
    for (qsizetype i = 0; i < n; ++i) {
        for (qsizetype k = i + 2; k < n; ++k)
            count +=
                cross_each_other(points[i], points[(i + 1) % n], points[k], points[(k + 1) % n]);
    }
    return count;
}

// The expected allowance at a place of the edge, from the nearest place of the curve.
class Expectation {
public:
    Expectation(const sections::Section& section, const RibOptions& given)
        : options(given), full(section, given.chord) {
        const sections::Curve& curve = full.curve();
        if (full.mouth() && options.intake == Intake::straight) {
            const QPointF a = full.at(full.mouth()->from).point;
            const QPointF b = full.at(full.mouth()->to).point;
            mouth = sections::Curve({sections::Piece::line(a, b)});
        } else if (full.mouth()) {
            mouth =
                curve.part(curve.place_at(full.mouth()->from), curve.place_at(full.mouth()->to));
        }
        if (full.mouth()) {
            parts = {curve.part(curve.begin(), curve.place_at(full.mouth()->from)),
                     curve.part(curve.place_at(full.mouth()->to), curve.end())};
        } else {
            parts = {curve};
        }
        const QPointF first = curve.tangent(curve.begin());
        const QPointF last = curve.tangent(curve.end());
        back = norm(last - first) > 1.0 ? unit(last - first) : QPointF(1.0, 0.0);
        for (const auto& [place, normal] :
             {std::pair(curve.begin(), -turned_left(first)), {curve.end(), -turned_left(last)}}) {
            const QPointF end = curve.position(place);
            tail = std::max(tail, dot(end, back));
            heights.push_back(cross(back, end + options.allowance * normal));
        }
    }

    // How far @p p is from the expected edge.
    double fault(QPointF p) const {
        const double te = options.allowance_trailing_edge.value_or(options.allowance);
        const double in_mouth = options.allowance_mouth.value_or(options.allowance);
        double rest = 1e9;
        for (const sections::Curve& part : parts)
            rest = std::min(rest, part.nearest(p).distance);
        double best = std::abs(rest - options.allowance);
        if (!mouth.is_empty()) {
            const sections::Foot foot = mouth.nearest(p);
            best = rest < foot.distance - 1e-6 ? best : std::abs(foot.distance - in_mouth);
            // At the ends of the mouth the edge runs straight from one allowance to the other.
            const double end = std::min(norm(p - mouth.position(mouth.begin())),
                                        norm(p - mouth.position(mouth.end())));
            const auto [low, high] = std::minmax(options.allowance, in_mouth);
            if (std::abs(end - std::min(rest, foot.distance)) < flatness)
                best = std::max({low - end, end - high, 0.0});
        }
        if (dot(p, back) > tail - 2.0 * options.allowance) {
            const double behind = dot(p, back) - tail;
            double square = std::abs(behind - te);
            for (const double height : heights)
                square = std::min(square, behind < te + 0.01 && behind > -0.01
                                              ? std::abs(cross(back, p) - height)
                                              : 1e9);
            best = std::min(best, square);
        }
        return best;
    }

private:
    const RibOptions& options;
    FullSize full;
    sections::Curve mouth;
    std::vector<sections::Curve> parts;
    QPointF back;
    double tail = -1e9;
    std::vector<double> heights;
};

double random_between(QRandomGenerator& random, double low, double high) {
    return low + random.generateDouble() * (high - low);
}

} // namespace

class tst_drawings_cut : public QObject {
    Q_OBJECT
private slots:
    void wedge_data();
    void wedge();
    void circle();
    void no_allowance();
    void random_sections_data();
    void random_sections();
    void flat_rib();
    void hollow_corner();
    void rolled_tail();
    void crossing_itself();
};

void tst_drawings_cut::wedge_data() {
    QTest::addColumn<double>("allowance");
    QTest::addColumn<double>("tail");
    QTest::newRow("equal") << 10.0 << 10.0;
    QTest::newRow("long tail") << 10.0 << 40.0;
    QTest::newRow("no tail") << 10.0 << 0.0;
    QTest::newRow("wide") << 100.0 << 60.0;
}

// A triangle with its point at the trailing edge. Its area with the allowance is known: the
// triangle, the strips along three edges, sectors at the two front corners, and behind the trailing
// edge a rectangle plus two triangles, the remainder of the sides.
void tst_drawings_cut::wedge() {
    QFETCH(double, allowance);
    QFETCH(double, tail);
    const double chord = 1000.0;
    const double half = 100.0;
    RibOptions options;
    options.chord = chord;
    options.allowance = allowance;
    options.allowance_trailing_edge = tail;
    const RibResult result =
        rib(polygon_section({{1.0, 0.0}, {0.0, 0.1}, {0.0, -0.1}, {1.0, 0.0}}), options);
    QVERIFY(result.scene);
    const QPolygonF cut = points_of(*result.scene, Layer::cut);

    const double side = std::hypot(chord, half);
    const double slope = std::atan2(half, chord);
    // A strip ends perpendicular to its side, so it extends behind the trailing edge by this.
    const double over = allowance * std::sin(slope);
    const double height = allowance * std::cos(slope);
    const double front = half * chord + 2.0 * half * allowance + 2.0 * side * allowance +
                         (pi / 2.0 + slope) * allowance * allowance;
    // From the trailing edge to the end of the strips, they cover a triangle above and below, but
    // not the wedge between.
    double expected = front;
    if (tail >= over)
        expected += 2.0 * height * tail - over * height;
    else
        expected -= (over - tail) * (over - tail) / std::tan(slope) - tail * tail / std::tan(slope);
    QVERIFY2(std::abs(area_of(cut) - expected) < 2.0 * side * flatness,
             qPrintable(QStringLiteral("%1 %2").arg(area_of(cut)).arg(expected)));

    double right = 0.0;
    for (const QPointF& p : cut)
        right = std::max(right, p.x());
    QVERIFY(std::abs(right - chord - tail) < 1e-4);
    QCOMPARE(crossings(cut), 0);
}

void tst_drawings_cut::circle() {
    RibOptions options;
    options.chord = 1000.0;
    options.allowance = 25.0;
    const RibResult result = rib(table_section(ellipse(400, 1.0)), options);
    QVERIFY(result.scene);
    const QPolygonF cut = points_of(*result.scene, Layer::cut);
    QVERIFY(cut.size() > 300);
    for (const QPointF& p : cut) {
        const double radius = norm(p - QPointF(500.0, 0.0));
        QVERIFY2(std::abs(radius - 525.0) < flatness, qPrintable(QString::number(radius)));
    }
    QVERIFY(std::abs(area_of(cut) - pi * 525.0 * 525.0) < 2.0 * pi * 525.0 * flatness);
}

void tst_drawings_cut::no_allowance() {
    RibOptions options;
    options.chord = 2850.0;
    const RibResult result = rib(spline_section(hull), options);
    const Path cut = paths_of(*result.scene, Layer::cut).front();
    const Path stitch = paths_of(*result.scene, Layer::stitch).front();
    QVERIFY(cut.closed);
    QCOMPARE(flattened(cut, 0.01), flattened(stitch, 0.01));
}

void tst_drawings_cut::random_sections_data() {
    QTest::addColumn<int>("seed");
    for (int seed = 0; seed < 80; ++seed)
        QTest::addRow("%d", seed) << seed;
}

void tst_drawings_cut::random_sections() {
    QFETCH(int, seed);
    QRandomGenerator random(quint32(7700 + seed));
    const double camber = random.bounded(4) == 0 ? 0.0 : random_between(random, 0.0, 0.07);
    const QPolygonF outline = naca(camber, random_between(random, 0.2, 0.6),
                                   random_between(random, 0.06, 0.24), 20 + random.bounded(60));
    const double first = random_between(random, 0.0, 5.0);
    const double second = random.bounded(3) == 0 ? 0.0 : first + random_between(random, 0.5, 6.0);
    const sections::Section section = table_section(outline, first, second);

    RibOptions options;
    options.chord = random_between(random, 300.0, 3500.0);
    options.allowance = random_between(random, 1.0, 20.0);
    if (random.bounded(2) == 0)
        options.allowance_trailing_edge = random_between(random, 0.0, 40.0);
    if (second > 0.0 && random.bounded(3) > 0)
        options.allowance_mouth = random_between(random, 0.0, 30.0);
    if (second > 0.0 && random.bounded(2) == 0)
        options.intake = Intake::straight;
    const RibResult result = rib(section, options);
    QVERIFY2(result.scene, qPrintable(result.reason));
    QCOMPARE(result.notes, QStringList());

    const QPolygonF cut = points_of(*result.scene, Layer::cut);
    const QPolygonF stitch = points_of(*result.scene, Layer::stitch);
    QVERIFY(cut.size() > 50);
    QVERIFY(area_of(cut) > area_of(stitch));
    QCOMPARE(crossings(cut), 0);

    // No part of the seam lies outside, and every place of the edge has its allowance.
    const Expectation expectation(section, options);
    double worst = 0.0;
    QPointF where;
    for (qsizetype i = 0; i < cut.size(); ++i) {
        const QPointF a = cut[i];
        const QPointF b = cut[(i + 1) % cut.size()];
        for (const double u : {0.0, 0.3, 0.5}) {
            const QPointF p = a + u * (b - a);
            const double fault = expectation.fault(p);
            if (fault > worst) {
                worst = fault;
                where = p;
            }
        }
    }
    QVERIFY2(worst < flatness,
             qPrintable(QStringLiteral("%1 at %2 %3").arg(worst).arg(where.x()).arg(where.y())));
    for (const QPointF& p : stitch) {
        if (cut.containsPoint(p, Qt::OddEvenFill))
            continue;
        double nearest = 1e9;
        for (qsizetype i = 0; i < cut.size(); ++i) {
            const sections::Piece edge = sections::Piece::line(cut[i], cut[(i + 1) % cut.size()]);
            nearest = std::min(nearest, sections::Curve({edge}).nearest(p).distance);
        }
        QVERIFY2(nearest < flatness, qPrintable(QString::number(nearest)));
    }
}

void tst_drawings_cut::flat_rib() {
    RibOptions options;
    options.chord = 500.0;
    options.allowance = 10.0;
    const RibResult result =
        rib(polygon_section({{1.0, 0.0}, {0.5, 0.0}, {0.0, 0.0}, {0.4, 0.0}, {1.0, 0.0}}), options);
    QVERIFY2(result.scene, qPrintable(result.reason));
    const QPolygonF cut = points_of(*result.scene, Layer::cut);
    // A strip with a round front and a square back.
    const double expected = 20.0 * 510.0 + 0.5 * pi * 100.0;
    QVERIFY2(std::abs(area_of(cut) - expected) < 1.0, qPrintable(QString::number(area_of(cut))));
}

// A lower side with a concave corner.
void tst_drawings_cut::hollow_corner() {
    RibOptions options;
    options.chord = 1000.0;
    options.allowance = 20.0;
    const RibResult result = rib(
        polygon_section({{1.0, 0.0}, {0.5, 0.2}, {0.0, 0.0}, {0.5, 0.05}, {1.0, 0.0}}), options);
    QVERIFY2(result.scene, qPrintable(result.reason));
    const QPolygonF cut = points_of(*result.scene, Layer::cut);
    // Both strips meet at one point below the corner.
    const double slope = std::atan2(50.0, 500.0);
    const QPointF meeting(500.0, 50.0 - 20.0 / std::cos(slope));
    const bool met =
        std::any_of(cut.begin(), cut.end(), [&](QPointF p) { return norm(p - meeting) < 1e-3; });
    QVERIFY(met);
    QCOMPARE(crossings(cut), 0);
}

void tst_drawings_cut::rolled_tail() {
    RibOptions options;
    options.chord = 1000.0;
    options.allowance = 10.0;
    const RibResult result = rib(
        polygon_section({{0.9, 0.0}, {1.0, 0.1}, {0.5, 0.2}, {0.0, 0.0}, {0.5, -0.1}, {0.9, 0.0}}),
        options);
    QVERIFY2(result.scene, qPrintable(result.reason));
    QCOMPARE(result.notes.size(), 1);
    QVERIFY(result.notes.first().contains(QLatin1String("behind its trailing edge")));
    const QPolygonF cut = points_of(*result.scene, Layer::cut);
    QCOMPARE(crossings(cut), 0);
}

// A reversed loop has no outside; one caused by rounding is ignored.
void tst_drawings_cut::crossing_itself() {
    RibOptions options;
    options.chord = 1000.0;
    options.allowance = 5.0;
    const auto section = [](double gap) {
        return polygon_section({{1.0, gap}, {0.6, 0.1}, {0.0, 0.0}, {0.6, -0.1}, {1.0, -gap}});
    };
    QVERIFY(rib(section(1e-3), options).scene);
    const RibResult rounded = rib(section(-1e-5), options);
    QVERIFY2(rounded.scene, qPrintable(rounded.reason));
    QCOMPARE(crossings(points_of(*rounded.scene, Layer::cut)), 0);
    // Even where the allowance covers the loop.
    for (const double allowance : {5.0, 100.0}) {
        options.allowance = allowance;
        const RibResult crossed = rib(section(-0.05), options);
        QVERIFY(!crossed.scene);
        QCOMPARE(crossed.reason, QStringLiteral("an outline that crosses itself"));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_drawings_cut)
#include "tst_drawings_cut.moc"
