// SPDX-FileCopyrightText: Aerolith developers
// Picking, moving, inserting, appending and removing control points, without events.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QTest>
#include <QToolTip>

class tst_editspline_edit : public QObject {
    Q_OBJECT

private slots:
    void init();
    void SelectPoint_data();
    void SelectPoint();
    void SelectPoint_in_view_data();
    void SelectPoint_in_view();
    void MovePoint_data();
    void MovePoint();
    void New_Point_Insert_data();
    void New_Point_Insert();
    void New_Point_Insert_after_last();
    void New_Point_Insert_ignores_view();
    void New_Point_Insert_without_selection();
    void Append_New_Point_data();
    void Append_New_Point();
    void Append_New_Point_refused_data();
    void Append_New_Point_refused();
    void Remove_Point_data();
    void Remove_Point();
    void Remove_Point_without_selection();
};

namespace {

const QPolygonF six = {QPointF(921, 383), QPointF(640, 300), QPointF(350.5, 290.25),
                       QPointF(120, 410), QPointF(380, 470), QPointF(905, 390)};

} // namespace

void tst_editspline_edit::init() {
    QToolTip::hideText();
}

void tst_editspline_edit::SelectPoint_data() {
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<QPoint>("mouse");
    QTest::addColumn<int>("index");

    const QPolygonF spread = {QPointF(100, 100), QPointF(200, 100), QPointF(300, 100),
                              QPointF(400, 100)};
    QTest::newRow("on-the-point") << spread << QPoint(200, 100) << 1;
    QTest::newRow("eight-pixels") << spread << QPoint(208, 100) << -1;
    QTest::newRow("eight-pixels-up") << spread << QPoint(200, 92) << -1;
    QTest::newRow("seven-point-99")
        << QPolygonF{QPointF(), QPointF(200.01, 100), QPointF()} << QPoint(208, 100) << 1;
    QTest::newRow("just-below-eight")
        << QPolygonF{QPointF(), QPointF(200 + 1e-12, 100), QPointF()} << QPoint(208, 100) << 1;
    QTest::newRow("seven-pixels") << spread << QPoint(193, 100) << 1;
    QTest::newRow("round-not-square") << spread << QPoint(206, 106) << -1;
    QTest::newRow("first-point") << spread << QPoint(100, 100) << -1;
    QTest::newRow("last-point") << spread << QPoint(400, 100) << -1;
    QTest::newRow("last-inner-point") << spread << QPoint(300, 100) << 2;
    QTest::newRow("nothing-there") << spread << QPoint(250, 300) << -1;
    QTest::newRow("two-within-the-radius-lower-wins")
        << QPolygonF{QPointF(), QPointF(200, 100), QPointF(205, 100), QPointF()} << QPoint(205, 100)
        << 1;
    QTest::newRow("two-within-the-radius-order-decides")
        << QPolygonF{QPointF(), QPointF(205, 100), QPointF(200, 100), QPointF()} << QPoint(200, 100)
        << 1;
    QTest::newRow("inner-point-below-the-first")
        << QPolygonF{QPointF(200, 100), QPointF(200, 100), QPointF(300, 100)} << QPoint(200, 100)
        << 1;
    QTest::newRow("no-points") << QPolygonF() << QPoint(0, 0) << -1;
    QTest::newRow("one-point") << QPolygonF{QPointF(9, 9)} << QPoint(9, 9) << -1;
    QTest::newRow("two-points") << QPolygonF{QPointF(9, 9), QPointF(9, 9)} << QPoint(9, 9) << -1;
}

void tst_editspline_edit::SelectPoint() {
    QFETCH(QPolygonF, points);
    QFETCH(QPoint, mouse);
    QFETCH(int, index);

    TestEditor editor;
    editor.set_points(points);
    editor.lastPos = mouse;
    QCOMPARE(editor.SelectPoint(), index);
    QCOMPARE(editor.pnt_selected, -1);
}

void tst_editspline_edit::SelectPoint_in_view_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("pan");
    QTest::addColumn<QPoint>("mouse");
    QTest::addColumn<int>("index");

    // The inner point is at (200, 100).
    QTest::newRow("zoomed-in-on-it") << 4.0 << QPointF(0, 0) << QPoint(800, 400) << 1;
    QTest::newRow("zoomed-in-within") << 4.0 << QPointF(0, 0) << QPoint(807, 400) << 1;
    QTest::newRow("zoomed-in-eight") << 4.0 << QPointF(0, 0) << QPoint(808, 400) << -1;
    QTest::newRow("zoomed-out-within") << 0.5 << QPointF(0, 0) << QPoint(100, 57) << 1;
    QTest::newRow("zoomed-out-eight") << 0.5 << QPointF(0, 0) << QPoint(100, 58) << -1;
    QTest::newRow("panned") << 1.0 << QPointF(-50, 20) << QPoint(150, 120) << 1;
    QTest::newRow("panned-old-place") << 1.0 << QPointF(-50, 20) << QPoint(200, 100) << -1;
    QTest::newRow("zoomed-and-panned") << 2.0 << QPointF(-50, 20) << QPoint(350, 220) << 1;
    QTest::newRow("pan-is-not-zoomed") << 2.0 << QPointF(-50, 20) << QPoint(300, 240) << -1;
}

void tst_editspline_edit::SelectPoint_in_view() {
    QFETCH(double, zoom);
    QFETCH(QPointF, pan);
    QFETCH(QPoint, mouse);
    QFETCH(int, index);

    TestEditor editor;
    editor.set_points({QPointF(0, 0), QPointF(200, 100), QPointF(0, 0)});
    editor.f_scale = zoom;
    editor.p_D = pan;
    editor.lastPos = mouse;
    QCOMPARE(editor.SelectPoint(), index);
}

void tst_editspline_edit::MovePoint_data() {
    QTest::addColumn<int>("selected");
    QTest::addColumn<QPoint>("step");
    QTest::addColumn<double>("zoom");

    QTest::newRow("left") << 2 << QPoint(-1, 0) << 1.0;
    QTest::newRow("down") << 1 << QPoint(0, 1) << 1.0;
    QTest::newRow("not-divided-by-the-zoom") << 4 << QPoint(7, -9) << 4.0;
    QTest::newRow("end-point") << 5 << QPoint(3, 3) << 1.0;
    QTest::newRow("nothing-selected") << -1 << QPoint(7, -9) << 1.0;
}

void tst_editspline_edit::MovePoint() {
    QFETCH(int, selected);
    QFETCH(QPoint, step);
    QFETCH(double, zoom);

    TestEditor editor;
    editor.set_points(six);
    editor.p->spline.b_knots[4] = 0.4375;
    editor.pnt_selected = selected;
    editor.f_scale = zoom;
    editor.MovePoint(step.x(), step.y());
    QPolygonF expected = six;
    if (selected >= 0)
        expected[selected] += step;
    COMPARE_POLYGON_BITS(editor.points(), expected);
    COMPARE_BITS(editor.p->spline.b_knots[4], 0.4375);
    QCOMPARE(editor.pnt_selected, selected);
}

void tst_editspline_edit::New_Point_Insert_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("selected");

    QTest::newRow("three-after-inner") << 3 << 1;
    QTest::newRow("six-after-first-inner") << 6 << 1;
    QTest::newRow("six-after-last-inner") << 6 << 4;
    QTest::newRow("six-after-the-first") << 6 << 0;
    QTest::newRow("twenty-eight") << 28 << 13;
}

void tst_editspline_edit::New_Point_Insert() {
    QFETCH(int, count);
    QFETCH(int, selected);

    TestEditor editor;
    SplineFoil& spline = editor.p->spline;
    number_store(spline);
    spline.num_pnt = count;
    spline.b_knots[3] = 99.0;
    editor.pnt_selected = selected;
    editor.lastPos = QPoint(11, 22);
    editor.New_Point_Insert(QPoint(777, 888));

    QPolygonF expected = numbered(MAXNUMPOINTS);
    for (int k = count; k >= selected + 1; --k)
        expected[k + 1] = expected[k];
    expected[selected + 1] =
        QPointF(0.5 * (11 + 1000 + selected + 1), 0.5 * (22 + 2000 + selected + 1));
    QCOMPARE(spline.num_pnt, count + 1);
    COMPARE_POLYGON_BITS(store(spline), expected);
    VERIFY_UNIFORM_KNOTS(spline);
    COMPARE_BITS(editor.curPnt, QPointF(11, 22));
    QCOMPARE(editor.pnt_selected, selected);
    QCOMPARE(editor.lastPos, QPoint(11, 22));
}

void tst_editspline_edit::New_Point_Insert_after_last() {
    TestEditor editor;
    editor.set_points(six);
    editor.pnt_selected = 5;
    editor.New_Point_Insert(QPoint(7, 8));
    COMPARE_POLYGON_BITS(editor.points(), six);

    editor.set_points({QPointF(1, 2)});
    editor.pnt_selected = 0;
    editor.lastPos = QPoint(11, 22);
    editor.New_Point_Insert(QPoint(7, 8));
    COMPARE_POLYGON_BITS(editor.points(), (QPolygonF{QPointF(1, 2), QPointF(7, 8)}));
    VERIFY_UNIFORM_KNOTS(editor.p->spline);
}

void tst_editspline_edit::New_Point_Insert_ignores_view() {
    TestEditor editor;
    editor.set_points(six);
    editor.pnt_selected = 2;
    editor.f_scale = 2.0;
    editor.p_D = QPointF(100, 200);
    editor.lastPos = QPoint(30, 50);
    editor.New_Point_Insert(QPoint(0, 0));
    COMPARE_BITS(editor.points().at(3), QPointF(0.5 * (30 + 120), 0.5 * (50 + 410)));
}

void tst_editspline_edit::New_Point_Insert_without_selection() {
    TestEditor editor;
    editor.set_points(six);
    editor.p->spline.b_knots[3] = 0.7;
    editor.New_Point_Insert(QPoint(7, 8));
    COMPARE_POLYGON_BITS(editor.points(), six);
    COMPARE_BITS(editor.p->spline.b_knots[3], 0.7);
}

void tst_editspline_edit::Append_New_Point_data() {
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<int>("selected");

    QTest::newRow("to-an-empty-canvas") << QPolygonF() << -1;
    QTest::newRow("to-one") << QPolygonF{QPointF(1, 2)} << -1;
    QTest::newRow("to-six") << six << -1;
    QTest::newRow("first-point-selected") << six << 0;
    QTest::newRow("to-twenty-nine") << numbered(29) << -1;
}

void tst_editspline_edit::Append_New_Point() {
    QFETCH(QPolygonF, points);
    QFETCH(int, selected);

    TestEditor editor;
    editor.set_points(points);
    editor.pnt_selected = selected;
    editor.f_scale = 2.0;
    editor.p_D = QPointF(30, 40);
    editor.lastPos = QPoint(1, 1);
    editor.Append_New_Point(QPoint(300, 200));
    COMPARE_POLYGON_BITS(editor.points(), points + QPolygonF{QPointF(300, 200)});
    COMPARE_BITS(editor.curPnt, QPointF(300, 200));
    VERIFY_UNIFORM_KNOTS(editor.p->spline);
    QCOMPARE(editor.pnt_selected, selected);
    QVERIFY(!QToolTip::isVisible());
}

void tst_editspline_edit::Append_New_Point_refused_data() {
    QTest::addColumn<int>("selected");

    QTest::newRow("first-inner") << 1;
    QTest::newRow("inner") << 3;
    QTest::newRow("last") << 5;
}

void tst_editspline_edit::Append_New_Point_refused() {
    QFETCH(int, selected);

    TestEditor editor;
    editor.set_points(six);
    editor.p->spline.b_knots[3] = 0.7;
    editor.pnt_selected = selected;
    editor.Append_New_Point(QPoint(300, 200));
    COMPARE_POLYGON_BITS(editor.points(), six);
    COMPARE_BITS(editor.p->spline.b_knots[3], 0.7);
}

void tst_editspline_edit::Remove_Point_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("selected");

    QTest::newRow("the-only-inner") << 3 << 1;
    QTest::newRow("first-inner-of-six") << 6 << 1;
    QTest::newRow("last-inner-of-six") << 6 << 4;
    QTest::newRow("last-of-six") << 6 << 5;
    QTest::newRow("first-of-one") << 1 << 0;
    QTest::newRow("twenty-nine") << 29 << 7;
    QTest::newRow("thirty") << 30 << 7;
    QTest::newRow("last-of-thirty") << 30 << 29;
}

void tst_editspline_edit::Remove_Point() {
    QFETCH(int, count);
    QFETCH(int, selected);

    TestEditor editor;
    SplineFoil& spline = editor.p->spline;
    number_store(spline);
    spline.num_pnt = count;
    editor.pnt_selected = selected;
    editor.mousepressed = true;
    editor.spline_poly << QPointF(1, 2);
    const QPolygonF second = second_store(spline);
    editor.Remove_Point();

    QPolygonF expected = numbered(MAXNUMPOINTS);
    for (int k = selected; k < count && k + 1 < MAXNUMPOINTS; ++k)
        expected[k] = expected[k + 1];
    QCOMPARE(spline.num_pnt, count - 1);
    COMPARE_POLYGON_BITS(store(spline), expected);
    COMPARE_POLYGON_BITS(second_store(spline), second);
    VERIFY_UNIFORM_KNOTS(spline);
    QCOMPARE(editor.pnt_selected, -1);
    QCOMPARE(editor.mousepressed, false);
    QVERIFY(editor.spline_poly.isEmpty());
}

void tst_editspline_edit::Remove_Point_without_selection() {
    TestEditor editor;
    editor.set_points(six);
    editor.mousepressed = true;
    editor.spline_poly << QPointF(1, 2);
    editor.p->spline.b_knots[3] = 0.7;
    editor.Remove_Point();
    COMPARE_POLYGON_BITS(editor.points(), six);
    QCOMPARE(editor.mousepressed, true);
    QCOMPARE(editor.spline_poly.size(), 1);
    COMPARE_BITS(editor.p->spline.b_knots[3], 0.7);
}

AEROLITH_TEST_MAIN(tst_editspline_edit)
#include "tst_editspline_edit.moc"
