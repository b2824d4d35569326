// SPDX-FileCopyrightText: Aerolith developers
// How the picture settles after the spline has changed: the further frames that a frame requests.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QTest>

#include <limits>

class tst_editspline_settling : public QObject {
    Q_OBJECT

private slots:
    void rests_after_two_frames_data();
    void rests_after_two_frames();
    void asks_for_the_second_frame_data();
    void asks_for_the_second_frame();
    void rests_after_many_frames_at_once_data();
    void rests_after_many_frames_at_once();
    void asks_for_nothing_at_rest();
    void ends_without_rest_data();
    void ends_without_rest();
    void asks_again_after_an_edit();
    void opened_at_another_size();
};

namespace {

const double not_a_number = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

const QPolygonF arch = {QPointF(900, 380), QPointF(640, 300), QPointF(350.5, 290.25),
                        QPointF(120, 410), QPointF(380, 470), QPointF(905, 390)};

bool at_trailing_edge(const TestEditor& editor) {
    const QPointF off = editor.TE - editor.p->spline.CP[0];
    return off.manhattanLength() <= 1e-5;
}

void add_splines() {
    QTest::addColumn<QPolygonF>("points");

    QTest::newRow("one-point") << QPolygonF{QPointF(333, 77)};
    QTest::newRow("two-points") << QPolygonF{QPointF(333, 77), QPointF(20, 30)};
    QTest::newRow("two-points-at-one-x") << QPolygonF{QPointF(333, 77), QPointF(333, 200)};
    QTest::newRow("arch") << arch;
    QTest::newRow("small") << QPolygonF{QPointF(300, 300), QPointF(220, 299), QPointF(219, 301)};
    QTest::newRow("mirrored") << QPolygonF{QPointF(20, 30), QPointF(800, 60), QPointF(400, 90)};
    QTest::newRow("outside") << QPolygonF{QPointF(-900, -800), QPointF(-1500, 60),
                                          QPointF(-400, 5000)};
}

} // namespace

void tst_editspline_settling::rests_after_two_frames_data() {
    add_splines();
}

// One frame scales about the pixel origin, and only the next one shifts.
void tst_editspline_settling::rests_after_two_frames() {
    QFETCH(QPolygonF, points);

    TestEditor editor;
    editor.set_points(points);
    editor.recorded();
    editor.recorded();
    QVERIFY(at_trailing_edge(editor));
    const QStringList second = paint_log(editor.recorded());
    const QPolygonF work = editor.p->workAirfoil;
    const QString drawn = first_log_difference(paint_log(editor.recorded()), second);
    QVERIFY2(drawn.isEmpty(), qPrintable(drawn));
    for (int i = 0; i < work.size(); ++i)
        COMPARE_NEAR(QLineF(editor.p->workAirfoil.at(i), work.at(i)).length(), 0.0, 1e-12);
}

void tst_editspline_settling::asks_for_the_second_frame_data() {
    add_splines();
}

void tst_editspline_settling::asks_for_the_second_frame() {
    QFETCH(QPolygonF, points);

    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    QVERIFY(paint_until_idle(editor));
    editor.set_points(points);
    EditorModel model = editor.model();
    const int before = editor.paints;
    editor.repaint();
    QCOMPARE(editor.paints, before + 1);
    model.paint_log();
    const bool moves = !model.settled();
    QCOMPARE(at_trailing_edge(editor), !moves);
    QVERIFY(paint_until_idle(editor));
    QCOMPARE(editor.paints, before + (moves ? 2 : 1));
    QVERIFY(at_trailing_edge(editor));
}

void tst_editspline_settling::rests_after_many_frames_at_once_data() {
    QTest::addColumn<int>("frames");

    for (int frames = 1; frames <= 12; ++frames)
        QTest::addRow("%d-frames", frames) << frames;
}

// Edits that come faster than the frames that they request.
void tst_editspline_settling::rests_after_many_frames_at_once() {
    QFETCH(int, frames);

    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    QVERIFY(paint_until_idle(editor));
    for (int i = 0; i < frames; ++i) {
        editor.set_points(arch);
        editor.repaint();
    }
    QVERIFY(!at_trailing_edge(editor));
    QVERIFY(paint_until_idle(editor));
    QVERIFY(at_trailing_edge(editor));
}

void tst_editspline_settling::asks_for_nothing_at_rest() {
    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    editor.set_settled_section();
    QVERIFY(paint_until_idle(editor));
    for (int i = 0; i < 10; ++i) {
        const int before = editor.paints;
        editor.repaint();
        QVERIFY(paint_until_idle(editor));
        QCOMPARE(editor.paints, before + 1);
    }
}

void tst_editspline_settling::ends_without_rest_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<int>("degree");
    QTest::addColumn<int>("frames");

    const QPolygonF bad(3, QPointF(not_a_number, 1));
    const QPolygonF endless(3, QPointF(infinity, -infinity));
    const QPolygonF huge = {QPointF(1e300, 1), QPointF(-1e300, 1), QPointF(0, 1e300)};
    // Without a curve every frame would divide by a width of 0.
    QTest::newRow("no-curve-of-the-points") << usual_size << arch << 7 << 5;
    QTest::newRow("not-a-number") << usual_size << bad << 2 << 1;
    QTest::newRow("infinite") << usual_size << endless << 2 << 1;
    QTest::newRow("huge") << usual_size << huge << 2 << -1;
    QTest::newRow("without-chord") << QSize(1, 300) << arch << 2 << -1;
    // To the right of the limit of the search for the leftmost sample, immediately or after scaling
    // up to the chord.
    QTest::newRow("narrow") << usual_size
                            << QPolygonF{QPointF(300, 300), QPointF(299, 299), QPointF(299, 301)}
                            << 2 << 5;
    QTest::newRow("behind-the-bound-of-the-search")
        << QSize(16384, 40) << QPolygonF{QPointF(14745, 19), QPointF(26000, 30), QPointF(27852, 19)}
        << 2 << -1;
}

void tst_editspline_settling::ends_without_rest() {
    QFETCH(QSize, size);
    QFETCH(QPolygonF, points);
    QFETCH(int, degree);
    QFETCH(int, frames);

    TestEditor editor(size);
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    QVERIFY(paint_until_idle(editor));
    for (int row = 0; row < 3; ++row) {
        editor.set_points(points);
        editor.p->spline.degree = degree;
        const int before = editor.paints;
        editor.repaint();
        QVERIFY(paint_until_idle(editor));
        const int came = editor.paints - before;
        QVERIFY2(came >= 1 && came <= 5, qPrintable(QString::number(came)));
        QVERIFY2(row > 0 || frames < 0 || came == frames, qPrintable(QString::number(came)));
    }
}

// Having given up once does not keep later changes from settling.
void tst_editspline_settling::asks_again_after_an_edit() {
    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    editor.set_points(arch);
    editor.p->spline.degree = 7;
    editor.repaint();
    QVERIFY(paint_until_idle(editor));
    QVERIFY(!at_trailing_edge(editor));
    for (int i = 0; i < 3; ++i) {
        editor.set_points(arch);
        editor.repaint();
        QVERIFY(paint_until_idle(editor));
        QVERIFY(at_trailing_edge(editor));
    }
}

void tst_editspline_settling::opened_at_another_size() {
    TestEditor small(QSize(600, 450));
    small.set_points(arch);
    for (int i = 0; i < 3; ++i)
        small.recorded();
    const SplineFoil saved = small.p->spline;
    const QPolygonF shape = small.p->workAirfoil;

    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    QVERIFY(paint_until_idle(editor));
    editor.p->spline = saved;
    editor.repaint_opened_spline();
    QVERIFY(paint_until_idle(editor));
    QVERIFY(at_trailing_edge(editor));
    QCOMPARE(editor.p->workAirfoil.size(), shape.size());
    for (int i = 0; i < shape.size(); ++i)
        COMPARE_NEAR(QLineF(editor.p->workAirfoil.at(i), shape.at(i)).length(), 0.0, 1e-12);
}

AEROLITH_TEST_MAIN(tst_editspline_settling)
#include "tst_editspline_settling.moc"
