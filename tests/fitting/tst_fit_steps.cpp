// SPDX-FileCopyrightText: Aerolith developers
// The parts of a fit: the curve, the outline, a step of the search.
#include "fitting/pieces_p.h"
#include "fitting/problem.h"
#include "fitting/search_p.h"
#include "fitting/smoothness_p.h"
#include "fittingtables.h"
#include "support/testmain.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace fitting;

namespace {

const Points arch = {{1.0, 0.0}, {0.6, 0.1}, {0.1, 0.08}, {-0.02, 0.0}, {0.2, -0.05}, {1.0, 0.0}};

SplineFoil as_spline(const Points& control) {
    SplineFoil spline;
    spline.num_pnt = int(control.size());
    for (int i = 0; i < spline.num_pnt; ++i)
        spline.CP[i] = QPointF(control[std::size_t(i)].x(), control[std::size_t(i)].y());
    spline.init_knots();
    return spline;
}

// The simplest way: many places on every piece.
double nearest_of_many(const Points& control, const Point& target) {
    constexpr int places = 20000;
    double least = std::numeric_limits<double>::infinity();
    for (int piece = 0; piece < int(control.size()); ++piece) {
        for (int i = 0; i <= places; ++i)
            least =
                std::min(least, (position(control, {piece, i / double(places)}) - target).norm());
    }
    return least;
}

Outline outline_of(const QPolygonF& table) {
    return prepare(table).outline;
}

} // namespace

class tst_fit_steps : public QObject {
    Q_OBJECT

private slots:
    void weights_add_up();
    void samples_of_the_window_lie_on_it();
    void width_is_the_windows();
    void feet();
    void feet_stay_in_their_hollow();
    void turns_by_hand();
    void frame_of_the_window();
    void refusals_data();
    void refusals();
    void copies_have_the_same_bits();
    void noise_is_told();
    void reversals();
    void a_mirrored_spline_has_half_the_variables();
    void merit_by_hand_data();
    void merit_by_hand();
    void steps_find_the_spline_again();
    void steps_take_all_from_a_full_penalty();
    void shares();
    void runs_end_where_pieces_do();
    void parameters_are_read_off();
    void other_tables_show_no_pieces();
};

void tst_fit_steps::weights_add_up() {
    for (int piece = 0; piece < 6; ++piece) {
        for (const double v : {0.0, 0.3, 1.0}) {
            const Weights w = weights(6, {piece, v});
            QVERIFY(w.first >= 0 && w.first + 2 < 6);
            QVERIFY(std::abs(w.of[0] + w.of[1] + w.of[2] - 1.0) < 1e-15);
        }
    }
}

void tst_fit_steps::samples_of_the_window_lie_on_it() {
    for (const QPointF& sample : as_spline(arch).make_SplinePoly())
        QVERIFY(distance_to(arch, Point(sample.x(), sample.y())) < 1e-14);
}

void tst_fit_steps::width_is_the_windows() {
    double least = 1.0;
    double greatest = 0.0;
    for (const QPointF& sample : as_spline(arch).make_SplinePoly()) {
        least = std::min(least, sample.x());
        greatest = std::max(greatest, sample.x());
    }
    QVERIFY(std::abs(WidthSamples(6).extremes(arch).width - (greatest - least)) < 1e-14);
}

void tst_fit_steps::feet() {
    for (int i = 0; i < 40; ++i) {
        const Point target(1.2 * std::cos(0.4 * i), 0.15 * std::sin(1.7 * i));
        const double nearest = nearest_of_many(arch, target);
        QVERIFY(std::abs(distance_to(arch, target) - nearest) < 1e-8);
        // Starts from a foot near the minimum.
        Foot foot;
        for (int piece = 0; piece < 6; ++piece) {
            Foot other = {piece, 0.5};
            if (project(arch, target, other) < (position(arch, foot) - target).norm())
                foot = other;
        }
        QVERIFY(std::abs(project(arch, target, foot) - nearest) < 1e-8);
        QCOMPARE((position(arch, foot) - target).norm(), project(arch, target, foot));
    }
}

// A steep parabola passes this target twice, on the left and on the right.
void tst_fit_steps::feet_stay_in_their_hollow() {
    const Points hairpin = {{-2.0, 0.0}, {0.0, 8.0}, {2.0, 0.0}};
    const Point target(0.01, 4.0);
    Foot left = {1, 0.05};
    Foot right = {1, 0.95};
    const double farther = project(hairpin, target, left);
    const double nearer = project(hairpin, target, right);
    QVERIFY(left.piece == 1 && left.v < 0.1 && right.piece == 1 && right.v > 0.9);
    QVERIFY(farther > nearer + 0.01);
}

void tst_fit_steps::turns_by_hand() {
    const Points hat = {{0.0, 0.0}, {1.0, 1.0}, {2.0, 0.0}};
    QCOMPARE(turn_height(hat, 1), -1.0);
    QVERIFY(std::abs(total_turning(hat) - 1.5707963267948966) < 1e-15);
    QCOMPARE(turn_height({{0.0, 0.0}, {1.0, 1.0}, {0.0, 0.0}}, 1), 0.0);
}

void tst_fit_steps::frame_of_the_window() {
    const QPolygonF framed = in_window_frame({{20.0, 5.0}, {10.0, 7.0}, {0.0, 3.0}, {20.0, 4.0}});
    QCOMPARE(framed, QPolygonF({{1.0, 0.0}, {0.5, 0.1}, {0.0, -0.1}, {1.0, -0.05}}));
}

void tst_fit_steps::refusals_data() {
    QTest::addColumn<QPolygonF>("table");
    QTest::addColumn<QString>("reason");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("none") << QPolygonF() << QStringLiteral("no points");
    QTest::newRow("nan") << QPolygonF{{1, 0}, {0, nan}, {1, 0}}
                         << QStringLiteral("a coordinate is not finite or exceeds 1e6");
    QTest::newRow("huge") << QPolygonF{{1, 0}, {0, 1e7}, {1, 0}}
                          << QStringLiteral("a coordinate is not finite or exceeds 1e6");
    QTest::newRow("upright") << QPolygonF{{1, 0}, {1, 1}, {1, 2}}
                             << QStringLiteral("the outline has no width");
    QTest::newRow("few") << QPolygonF{{1, 0}, {0, 0}, {0, 0}, {1, 0}}
                         << QStringLiteral("3 different points, expected at least 4");
    QTest::newRow("flat") << QPolygonF{{1, 0}, {0.5, 1e-6}, {0, 0}, {0.5, -1e-6}, {1, 0}}
                          << QStringLiteral("the outline has no thickness");
}

void tst_fit_steps::refusals() {
    QFETCH(QPolygonF, table);
    QFETCH(QString, reason);
    QCOMPARE(prepare(table).reason, reason);
}

void tst_fit_steps::copies_have_the_same_bits() {
    const QPolygonF table = four_digit(0.14, 0.03, 61);
    const Points points = outline_of(table).points;
    for (int kind = 1; kind < 16; ++kind) {
        const Outline copy = outline_of(copy_of(table, kind));
        QCOMPARE(copy.points.size(), points.size());
        for (std::size_t i = 0; i < points.size(); ++i)
            QVERIFY2(copy.points[i] == points[i], qPrintable(QString::number(kind)));
        QCOMPARE(copy.mirrored, bool(kind & 1));
        QCOMPARE(copy.reversed, bool(kind & 2));
    }
}

void tst_fit_steps::noise_is_told() {
    const QPolygonF smooth = four_digit(0.12, 0.02, 201);
    QVERIFY(outline_of(smooth).noise < 1e-7);
    for (const double noise : {1e-5, 1e-4, 1e-3}) {
        const double found = outline_of(with_noise(smooth, noise, 3)).noise;
        QVERIFY2(found > 0.7 * noise && found < 1.4 * noise, qPrintable(QString::number(found)));
    }
}

void tst_fit_steps::reversals() {
    QCOMPARE(outline_of(four_digit(0.12, 0.0, 101)).reversals, 0);
    QCOMPARE(count_reversals({1, 0, 1, -1, 0, -1, 1}), 2);
    QCOMPARE(count_reversals(Points{{0, 0}, {1, 1}, {2, 0}, {3, -1}, {4, 0}, {5, -1e-7}, {6, 0}}),
             2);
    const Points hat = {{0.0, 0.0}, {1.0, 1.0}, {2.0, 0.0}};
    QCOMPARE(turning_signs(hat, 0.75), std::vector<int>({0, -1, 0}));
    QCOMPARE(turning_signs(hat, 1.0), std::vector<int>({0, 0, 0}));
    // A concave lower side.
    QPolygonF hollow = four_digit(0.12, 0.0, 101);
    for (QPointF& point : hollow) {
        const double x = point.x() - 0.5;
        if (point.y() < 0.0)
            point.ry() += 0.03 * std::exp(-80.0 * x * x);
    }
    QCOMPARE(outline_of(hollow).reversals, 2);
    QCOMPARE(outline_of(with_noise(hollow, 1e-5, 5)).reversals, 2);
}

void tst_fit_steps::a_mirrored_spline_has_half_the_variables() {
    QCOMPARE(Freedom::of(10, Ends::table).variables, 16);
    QCOMPARE(Freedom::of(10, Ends::symmetric).variables, 8);
    QCOMPARE(Freedom::of(11, Ends::symmetric).variables, 9);
    const Freedom freedom = Freedom::of(11, Ends::symmetric);
    QCOMPARE(freedom.variable[2 * 2 + 1], freedom.variable[2 * 8 + 1]);
    QCOMPARE(freedom.sign[2 * 8 + 1], -1.0);
    QCOMPARE(freedom.variable[2 * 5 + 1], -1);
}

void tst_fit_steps::merit_by_hand_data() {
    QTest::addColumn<int>("point"); // of the arch, moved to a place
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<int>("turn");      // asked for at the third and the fifth point
    QTest::addColumn<double>("uneven"); // weight of uneven legs
    QTest::addColumn<double>("penalty");

    const QPointF first(1.0, 0.0);
    const double third = 0.0376 / std::hypot(0.62, 0.1) + 1e-7;
    const double fifth = 0.051 / std::hypot(1.02, 0.0) + 1e-7;
    const double back = 0.09 / std::hypot(0.9, 0.08);
    const double leg = std::hypot(0.02, 0.01);
    const double before = std::hypot(0.12, 0.08) - 4.0 * leg;
    const double behind = std::hypot(1.0, 0.01) - 4.0 * leg;
    QTest::newRow("none") << 0 << first << 1 << 2.0 << 0.0;
    QTest::newRow("close") << 3 << QPointF(0.098, 0.08) << 0 << 0.0 << 0.0155 * 0.0155;
    QTest::newRow("back") << 2 << QPointF(0.65, 0.1) << 0 << 0.0 << 0.05 * 0.05;
    QTest::newRow("first-back") << 1 << QPointF(1.1, 0.0) << 0 << 0.0 << back * back;
    QTest::newRow("wrong-turn") << 0 << first << -1 << 0.0 << 9.0 * (third * third + fifth * fifth);
    QTest::newRow("uneven") << 4 << QPointF(0.0, -0.01) << 0 << 2.0
                            << 4.0 * (before * before + behind * behind);
}

void tst_fit_steps::merit_by_hand() {
    QFETCH(int, point);
    QFETCH(QPointF, place);
    QFETCH(int, turn);
    QFETCH(double, uneven);
    QFETCH(double, penalty);
    const Problem problem(outline_of(four_digit(0.12, 0.0, 61)), int(arch.size()), Ends::table);
    State state;
    state.control = arch;
    state.control[std::size_t(point)] = Point(place.x(), place.y());
    state.feet.resize(problem.targets().size());
    for (const double p : {2.0, 8.0}) {
        problem.evaluate(state, {p, 3.0, uneven, 1, 0.0}, {0, 0, turn, 0, turn, 0});
        double sum = 0.0;
        for (const double distance : state.distances)
            sum += std::pow(distance, p);
        if (p <= 2.0)
            sum /= double(state.distances.size());
        QVERIFY(std::abs(state.norm - std::pow(sum, 1.0 / p)) < 1e-14);
        const double found = state.merit - state.norm * state.norm;
        QVERIFY2(std::abs(found - penalty) < 1e-12, qPrintable(QString::number(found)));
    }
}

// Gauss-Newton converges quadratically to residuals of 0 only if the slopes are right.
void tst_fit_steps::steps_find_the_spline_again() {
    const SplineAndTable truth = random_spline(11);
    const Outline outline = outline_of(truth.table);
    const int count = truth.spline.num_pnt;
    const Problem problem(outline, count, Ends::table);
    State state;
    for (int i = 0; i < count; ++i) {
        const bool moves = i > 0 && i + 1 < count;
        const double shift = moves ? 1e-3 * std::sin(2.0 * i) : 0.0;
        state.control.emplace_back(truth.spline.CP[i].x() + shift, truth.spline.CP[i].y() - shift);
    }
    problem.settle(state.control);
    for (const Target& target : problem.targets()) {
        Foot best;
        for (int piece = 0; piece < count; ++piece) {
            Foot foot = {piece, 0.5};
            const double before = (position(state.control, best) - target.point).norm();
            if (project(state.control, target.point, foot) < before)
                best = foot;
        }
        state.feet.push_back(best);
    }
    const int steps = problem.minimise(state, {2.0, 0.0, 0.0, 60, 1e-3});
    QVERIFY2(steps < 20, qPrintable(QString::number(steps)));
    QVERIFY2(state.largest < 1e-9, qPrintable(QString::number(state.largest)));
    QVERIFY(std::abs(WidthSamples(count).extremes(state.control).width - 1.0) < 1e-12);
}

void tst_fit_steps::steps_take_all_from_a_full_penalty() {
    const Outline outline = outline_of(four_digit(0.12, 0.0, 61));
    const Problem problem(outline, 12, Ends::table);
    State state = problem.at_parameters(spread_by_curvature(outline, problem.targets(), 0.5));
    state.control[5] = state.control[4] + Point(-0.003, 0.0);
    problem.minimise(state, {2.0, 1.0, 1e-3, 60, 1e-4});
    for (std::size_t i = 1; i < state.control.size(); ++i)
        QVERIFY((state.control[i] - state.control[i - 1]).norm() > 0.005);
    QVERIFY(!problem.folds(state.control));
}

void tst_fit_steps::shares() {
    const Outline outline = outline_of(four_digit(0.12, 0.02, 61));
    const Problem problem(outline, 12, Ends::table);
    const std::vector<double> spread = spread_by_curvature(outline, problem.targets(), 0.5);
    QCOMPARE(spread.front(), 0.0);
    QCOMPARE(spread.back(), 1.0);
    QVERIFY(std::is_sorted(spread.begin(), spread.end()));
    const std::vector<double> even = spread_by_curvature(outline, problem.targets(), 0.0);
    for (std::size_t j = 0; j < even.size(); ++j)
        QVERIFY(std::abs(even[j] - problem.targets()[j].arc / outline.length()) < 1e-12);
    // As much before the nose as behind it.
    const Outline mirrored = outline_of(four_digit(0.12, 0.0, 61));
    const std::vector<double> halves = spread_by_curvature(mirrored, mirrored.targets(12), 0.5);
    for (std::size_t j = 0; j < halves.size(); ++j)
        QVERIFY(std::abs(halves[j] + halves[halves.size() - 1 - j] - 1.0) < 1e-9);
    const State state = problem.at_parameters(spread);
    QVERIFY(!problem.folds(state.control));
}

// Twelve points of every piece of the arch, without its joints. 1e-12 is more than the rounding.
// The lines at the ends include two points of their neighbours.
void tst_fit_steps::runs_end_where_pieces_do() {
    constexpr int places = 12;
    Points points;
    for (int piece = 0; piece < int(arch.size()); ++piece) {
        for (int i = 0; i < places; ++i)
            points.push_back(position(arch, {piece, (i + 0.5) / places}));
    }
    const std::vector<Run> runs = conic_runs(points, 1e-12);
    QCOMPARE(runs.size(), arch.size());
    QCOMPARE(runs.front().last, places + 1);
    QCOMPARE(runs.back().first, int(points.size()) - places - 2);
    for (int piece = 1; piece + 1 < int(runs.size()); ++piece) {
        const Run& run = runs[std::size_t(piece)];
        QCOMPARE(run.first, piece * places);
        QCOMPARE(run.last, piece * places + places - 1);
        const auto at = [&](int i) { return points[std::size_t(i)].dot(run.even); };
        // The parameter is linear along the direction.
        const double step = (at(run.last) - at(run.first)) / (places - 1);
        for (int i = run.first; i < run.last; ++i) {
            const double found = at(i + 1) - at(i);
            QVERIFY2(std::abs(found - step) < 1e-5 * step, qPrintable(QString::number(found)));
        }
    }
}

// Linear least squares at these parameters nearly reproduces the spline without any step.
void tst_fit_steps::parameters_are_read_off() {
    for (const unsigned seed : {2U, 7U, 11U}) {
        const SplineAndTable truth = random_spline(seed);
        const Outline outline = outline_of(truth.table);
        const Problem problem(outline, truth.spline.num_pnt, Ends::table);
        const std::vector<double> read_off =
            spread_by_pieces(outline, problem.targets(), problem.count(), 1e-9);
        QVERIFY(std::is_sorted(read_off.begin(), read_off.end()));
        QCOMPARE(read_off.front(), 0.0);
        QCOMPARE(read_off.back(), 1.0);
        State state = problem.at_parameters(read_off);
        State guess = problem.at_parameters(spread_by_curvature(outline, problem.targets(), 0.5));
        problem.evaluate(state, {}, problem.turns(state));
        problem.evaluate(guess, {}, problem.turns(guess));
        QVERIFY2(state.largest < 0.2 * guess.largest, qPrintable(QString::number(state.largest)));
    }
}

void tst_fit_steps::other_tables_show_no_pieces() {
    for (const QPolygonF& table :
         {coarse_flat_bottom(), with_noise(random_spline(7).table, 1e-6, 1)}) {
        const Outline outline = outline_of(table);
        QVERIFY(spread_by_pieces(outline, outline.targets(12), 12, 1e-9).empty());
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_fit_steps)
#include "tst_fit_steps.moc"
