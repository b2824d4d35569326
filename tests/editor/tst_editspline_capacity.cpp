// SPDX-FileCopyrightText: Aerolith developers
// The editing operations at the limits of the arrays: full arrays, and selections and counts that a
// file or a shorter spline has left out of range.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QTest>
#include <QToolTip>

#include <climits>

class tst_editspline_capacity : public QObject {
    Q_OBJECT

private slots:
    void init();
    void full_store_refuses_data();
    void full_store_refuses();
    void refusal_outlives_the_menu();
    void last_free_slot_data();
    void last_free_slot();
    void selection_out_of_range_data();
    void selection_out_of_range();
    void counts_out_of_range_data();
    void counts_out_of_range();
};

namespace {

const QPolygonF six = {QPointF(921, 383), QPointF(640, 300), QPointF(350.5, 290.25),
                       QPointF(120, 410), QPointF(380, 470), QPointF(905, 390)};

} // namespace

void tst_editspline_capacity::init() {
    QToolTip::hideText();
}

void tst_editspline_capacity::full_store_refuses_data() {
    QTest::addColumn<int>("num_pnt");
    QTest::addColumn<int>("selected");
    QTest::addColumn<bool>("insert");

    QTest::newRow("append") << 30 << -1 << false;
    QTest::newRow("insert") << 30 << 14 << true;
    QTest::newRow("insert-after-last") << 30 << 29 << true;
    QTest::newRow("append-to-a-count-out-of-range") << 31 << -1 << false;
    QTest::newRow("insert-into-a-count-out-of-range") << INT_MAX << 3 << true;
}

void tst_editspline_capacity::full_store_refuses() {
    QFETCH(int, num_pnt);
    QFETCH(int, selected);
    QFETCH(bool, insert);

    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    SplineFoil& spline = editor.p->spline;
    number_store(spline);
    spline.num_pnt = num_pnt;
    spline.num_knt = 33;
    spline.b_knots[5] = 0.7;
    editor.pnt_selected = selected;
    const QPolygonF first = store(spline);
    const QPolygonF second = second_store(spline);
    const ModalGuard guard;
    if (insert)
        editor.New_Point_Insert(QPoint(1, 2));
    else
        editor.Append_New_Point(QPoint(1, 2));
    QCOMPARE(spline.num_pnt, num_pnt);
    QCOMPARE(spline.num_knt, 33);
    COMPARE_BITS(spline.b_knots[5], 0.7);
    COMPARE_POLYGON_BITS(store(spline), first);
    COMPARE_POLYGON_BITS(second_store(spline), second);
    if (!insert || selected != num_pnt - 1) {
        QVERIFY(QToolTip::isVisible());
        QVERIFY(!QToolTip::text().isEmpty());
    }
    QCOMPARE(guard.count(), 0);
}

// The menu returns the focus only after the point has been refused.
void tst_editspline_capacity::refusal_outlives_the_menu() {
    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    editor.p->spline.num_pnt = 30;
    editor.Append_New_Point(QPoint(1, 2));
    QTRY_VERIFY(QToolTip::isVisible());
    QFocusEvent focus(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&editor, &focus);
    QTRY_VERIFY(!QToolTip::isVisible());
    QTRY_VERIFY(QToolTip::isVisible());
}

void tst_editspline_capacity::last_free_slot_data() {
    QTest::addColumn<int>("selected");

    QTest::newRow("after-the-first-inner") << 1;
    QTest::newRow("in-the-middle") << 14;
    QTest::newRow("after-the-last-inner") << 27;
}

// With 29 points, copying the unused element would write past the array.
void tst_editspline_capacity::last_free_slot() {
    QFETCH(int, selected);

    TestEditor editor;
    SplineFoil& spline = editor.p->spline;
    number_store(spline);
    spline.num_pnt = 29;
    editor.pnt_selected = selected;
    editor.lastPos = QPoint(0, 0);
    const QPolygonF second = second_store(spline);
    editor.New_Point_Insert(QPoint(1, 2));

    QPolygonF expected = numbered(29);
    expected.insert(selected + 1, QPointF(500 + 0.5 * (selected + 1), 1000 + 0.5 * (selected + 1)));
    QCOMPARE(spline.num_pnt, 30);
    COMPARE_POLYGON_BITS(store(spline), expected);
    COMPARE_POLYGON_BITS(second_store(spline), second);
    VERIFY_UNIFORM_KNOTS(spline);
    QVERIFY(!QToolTip::isVisible());
}

void tst_editspline_capacity::selection_out_of_range_data() {
    QTest::addColumn<int>("selected");

    QTest::newRow("count") << 6;
    QTest::newRow("one-more") << 7;
    QTest::newRow("capacity") << 30;
    QTest::newRow("hundred") << 100;
    QTest::newRow("greatest") << INT_MAX;
    QTest::newRow("negative") << -2;
    QTest::newRow("least") << INT_MIN;
}

// The spline may have become shorter since the point was selected.
void tst_editspline_capacity::selection_out_of_range() {
    QFETCH(int, selected);

    TestEditor editor;
    editor.p->spline.rd_CP[0] = QPointF(5, 5);
    editor.set_points(six);
    editor.pnt_selected = selected;
    const SplineFoil before = editor.p->spline;
    editor.MovePoint(5, 5);
    editor.New_Point_Insert(QPoint(1, 2));
    editor.Remove_Point();
    editor.pnt_selected = selected;
    editor.Toggle_Conic_Control();
    COMPARE_POLYGON_BITS(store(editor.p->spline), store(before));
    COMPARE_POLYGON_BITS(second_store(editor.p->spline), second_store(before));
    QCOMPARE(editor.p->spline.num_pnt, 6);
    VERIFY_UNIFORM_KNOTS(editor.p->spline);

    editor.mousepressed = true;
    const QList<PaintOperation> frame = editor.recorded();
    for (const PaintOperation& op : of_kind(frame, PaintOperation::Ellipse))
        QVERIFY(op.rect.width() < 18.0);
    QCOMPARE(texts_of(frame).filter(QStringLiteral(";")), QStringList());

    editor.Append_New_Point(QPoint(1, 2));
    QCOMPARE(editor.p->spline.num_pnt, 7);
}

void tst_editspline_capacity::counts_out_of_range_data() {
    QTest::addColumn<int>("num_pnt");
    QTest::addColumn<int>("num_knt");
    QTest::addColumn<int>("degree");

    const int numbers[] = {INT_MIN, -1, 0, 1, 29, 30, 31, 299, 300, 301, INT_MAX};
    for (const int num_pnt : numbers) {
        for (const int other : {INT_MIN, -1, 2, 33, 300, INT_MAX}) {
            QTest::addRow("points-%d-knots-and-degree-%d", num_pnt, other)
                << num_pnt << other << other;
            QTest::addRow("points-%d-knots-%d", num_pnt, other) << num_pnt << other << 2;
        }
    }
}

void tst_editspline_capacity::counts_out_of_range() {
    QFETCH(int, num_pnt);
    QFETCH(int, num_knt);
    QFETCH(int, degree);

    for (const int selected : {-1, 0, 1, 15, 29, 30, 298, 299, INT_MAX}) {
        for (int entry = 1; entry <= 6; ++entry) {
            TestEditor editor;
            SplineFoil& spline = editor.p->spline;
            number_store(spline);
            spline.startVent = 1.0;
            spline.endVent = 2.0;
            spline.L_T_S = 3.0;
            spline.num_pnt = num_pnt;
            spline.num_knt = num_knt;
            spline.degree = degree;
            editor.pnt_selected = selected;
            editor.lastPos = QPoint(1010, 2010);
            editor.SelectPoint();
            editor.MovePoint(1, 1);
            const QPolygonF second = second_store(spline);
            editor.Action_From_Menu(QPoint(5, 5), entry);
            COMPARE_POLYGON_BITS(second_store(spline), second);
            COMPARE_BITS(spline.startVent, 1.0);
            COMPARE_BITS(spline.endVent, 2.0);
            COMPARE_BITS(spline.L_T_S, 3.0);
            QVERIFY(spline.num_pnt == num_pnt || (spline.num_pnt >= 0 && spline.num_pnt <= 30));
        }
    }
}

AEROLITH_TEST_MAIN(tst_editspline_capacity)
#include "tst_editspline_capacity.moc"
