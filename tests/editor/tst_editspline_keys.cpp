// SPDX-FileCopyrightText: Aerolith developers
// Keys on the shown editor.
#include "showneditor.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QKeyEvent>
#include <QTest>

class tst_editspline_keys : public QObject {
    Q_OBJECT

private slots:
    void arrow_keys_data();
    void arrow_keys();
    void arrow_key_at_zoom_two();
    void return_keys_data();
    void return_keys();
    void delete_key_data();
    void delete_key();
    void escape_key();
    void other_keys_data();
    void other_keys();
};

void tst_editspline_keys::arrow_keys_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QPointF>("step");
    QTest::addColumn<int>("selected");

    QTest::newRow("left") << Qt::Key_Left << QPointF(-1, 0) << 4;
    QTest::newRow("up") << Qt::Key_Up << QPointF(0, -1) << 3;
    QTest::newRow("right") << Qt::Key_Right << QPointF(1, 0) << 2;
    QTest::newRow("down") << Qt::Key_Down << QPointF(0, 1) << 8;
    QTest::newRow("left-without-selection") << Qt::Key_Left << QPointF(0, 0) << -1;
    QTest::newRow("up-without-selection") << Qt::Key_Up << QPointF(0, 0) << -1;
    QTest::newRow("right-without-selection") << Qt::Key_Right << QPointF(0, 0) << -1;
    QTest::newRow("down-without-selection") << Qt::Key_Down << QPointF(0, 0) << -1;
}

void tst_editspline_keys::arrow_keys() {
    QFETCH(Qt::Key, key);
    QFETCH(QPointF, step);
    QFETCH(int, selected);

    ShownEditor editor;
    editor.pnt_selected = selected;
    editor.p->spline.b_knots[5] = 0.4;
    editor.rest();
    EditorModel model = editor.model();
    QTest::keyClick(&editor, key);
    const int frames = editor.new_paints();
    if (selected >= 0) {
        QVERIFY(frames >= 1);
        model.set_point(selected, model.points().at(selected) + step);
        paint_model(model, frames);
    } else {
        QCOMPARE(frames, 0);
    }
    COMPARE_WITH_MODEL(editor, model);
    COMPARE_BITS(editor.p->spline.b_knots[5], 0.4);
}

void tst_editspline_keys::arrow_key_at_zoom_two() {
    ShownEditor editor;
    editor.f_scale = 2.0;
    editor.pnt_selected = 2;
    const QPointF before = editor.f_scale * editor.points().at(2) + editor.p_D;
    QTest::keyClick(&editor, Qt::Key_Down);
    const QPointF after = editor.f_scale * editor.points().at(2) + editor.p_D;
    COMPARE_NEAR(after.y() - before.y(), 2.0, 1e-9);
}

void tst_editspline_keys::return_keys_data() {
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
}

void tst_editspline_keys::return_keys() {
    QFETCH(Qt::Key, key);

    ShownEditor editor;
    editor.pnt_selected = 4;
    editor.mousepressed = true;
    const QPolygonF points = editor.points();
    QTest::keyClick(&editor, key);
    QCOMPARE(editor.mousepressed, false);
    QCOMPARE(editor.pnt_selected, 4);
    QCOMPARE(editor.points().size(), points.size());
    QCOMPARE(editor.new_paints(), 1);
}

void tst_editspline_keys::delete_key_data() {
    QTest::addColumn<int>("selected");

    QTest::newRow("inner-point") << 4;
    QTest::newRow("nothing-selected") << -1;
    QTest::newRow("selection-out-of-range") << 10;
}

void tst_editspline_keys::delete_key() {
    QFETCH(int, selected);

    ShownEditor editor;
    editor.pnt_selected = selected;
    editor.mousepressed = true;
    EditorModel model = editor.model();
    QTest::keyPress(&editor, Qt::Key_Delete);
    QCOMPARE(editor.mousepressed, false);
    QCOMPARE(editor.pnt_selected, -1);
    QCOMPARE(editor.new_paints(), 1);
    if (selected == 4) {
        QPolygonF points = model.points();
        points.remove(4);
        model.set_points(points);
    }
    paint_model(model, 1);
    COMPARE_WITH_MODEL(editor, model);
}

void tst_editspline_keys::escape_key() {
    QWidget window;
    TestEditor editor(editor_size, &window);
    window.resize(editor_size);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(editor.isVisible());
    QTest::keyClick(&editor, Qt::Key_Escape);
    QVERIFY(!editor.isVisible());
    QVERIFY(editor.isHidden());
    QVERIFY(window.isVisible());
}

void tst_editspline_keys::other_keys_data() {
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("letter") << Qt::Key_A;
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("backspace") << Qt::Key_Backspace;
    QTest::newRow("page-up") << Qt::Key_PageUp;
    QTest::newRow("function-key") << Qt::Key_F1;
    QTest::newRow("handled-left") << Qt::Key_Left;
    QTest::newRow("handled-delete") << Qt::Key_Delete;
    QTest::newRow("handled-return") << Qt::Key_Return;
}

// A key that the editor does not use must not reach the window around it.
void tst_editspline_keys::other_keys() {
    QFETCH(Qt::Key, key);

    class KeyCounter : public QWidget {
    public:
        int keys = 0;

    protected:
        void keyPressEvent(QKeyEvent*) override { ++keys; }
    };
    KeyCounter window;
    TestEditor editor(editor_size, &window);
    window.resize(editor_size);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    editor.set_settled_section();
    editor.mousepressed = true;
    QVERIFY(paint_until_idle(editor));
    const QPolygonF points = editor.points();
    const int paints = editor.paints;
    QTest::keyPress(&editor, key);
    QCOMPARE(window.keys, 0);
    QVERIFY(editor.isVisible());
    if (key != Qt::Key_Delete && key != Qt::Key_Return) {
        QCOMPARE(editor.paints, paints);
        QCOMPARE(editor.mousepressed, true);
        COMPARE_POLYGON_BITS(editor.points(), points);
    }
}

AEROLITH_TEST_MAIN(tst_editspline_keys)
#include "tst_editspline_keys.moc"
