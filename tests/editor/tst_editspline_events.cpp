// SPDX-FileCopyrightText: Aerolith developers
// Mouse and wheel on the shown editor.
#include "showneditor.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

#include <climits>
#include <cmath>

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::MouseButtons)

class tst_editspline_events : public QObject {
    Q_OBJECT

private slots:
    void init();
    void press_data();
    void press();
    void press_with_other_button_data();
    void press_with_other_button();
    void press_with_left_held();
    void press_while_pressed();
    void press_at_a_fraction();
    void drag_data();
    void drag();
    void drag_without_selection();
    void drag_middle();
    void drag_left_and_middle_data();
    void drag_left_and_middle();
    void drag_keeps_knots();
    void hover();
    void release_data();
    void release();
    void read_out_while_pressed();
    void double_click_data();
    void double_click();
    void double_click_normalizes();
    void double_click_without_button();
    void double_click_of_the_mouse();
    void wheel_data();
    void wheel();
    void wheel_stops_data();
    void wheel_stops();
};

namespace {

void send_mouse(QWidget& widget, QEvent::Type type, QPointF position, Qt::MouseButton button,
                Qt::MouseButtons held) {
    QMouseEvent event(type, position, widget.mapToGlobal(position), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void send_wheel(QWidget& widget, QPoint angle) {
    const QPointF position(100, 100);
    QWheelEvent event(position, widget.mapToGlobal(position), QPoint(), angle, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

void tst_editspline_events::init() {
    QTestPrivate::qtestMouseButtons = Qt::NoButton;
}

void tst_editspline_events::press_data() {
    QTest::addColumn<int>("point");
    QTest::addColumn<QPoint>("off");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("selected");

    QTest::newRow("inner-point") << 3 << QPoint(0, 0) << -1 << 3;
    QTest::newRow("beside-an-inner-point") << 2 << QPoint(6, 0) << -1 << 2;
    QTest::newRow("another-point") << 7 << QPoint(0, -6) << 2 << 7;
    QTest::newRow("empty-canvas-clears") << 3 << QPoint(0, 60) << 2 << -1;
    QTest::newRow("first-point") << 0 << QPoint(0, 0) << 2 << -1;
    QTest::newRow("last-point") << 9 << QPoint(0, 0) << 2 << -1;
}

void tst_editspline_events::press() {
    QFETCH(int, point);
    QFETCH(QPoint, off);
    QFETCH(int, before);
    QFETCH(int, selected);

    ShownEditor editor;
    editor.pnt_selected = before;
    EditorModel model = editor.model();
    const QPoint mouse = editor.place_of(point) + off;
    QTest::mousePress(&editor, Qt::LeftButton, {}, mouse);
    QCOMPARE(editor.pnt_selected, selected);
    QCOMPARE(editor.mousepressed, true);
    QCOMPARE(editor.lastPos, mouse);
    COMPARE_BITS(editor.lastPosF, QPointF(mouse));
    QCOMPARE(editor.new_paints(), 1);
    paint_model(model, 1);
    COMPARE_WITH_MODEL(editor, model);
}

void tst_editspline_events::press_with_other_button_data() {
    QTest::addColumn<Qt::MouseButton>("button");

    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void tst_editspline_events::press_with_other_button() {
    QFETCH(Qt::MouseButton, button);

    ShownEditor editor;
    editor.pnt_selected = 4;
    QTest::mousePress(&editor, button, {}, QPoint(20, 30));
    QCOMPARE(editor.pnt_selected, 4);
    QCOMPARE(editor.mousepressed, true);
    QCOMPARE(editor.lastPos, QPoint(20, 30));
    COMPARE_BITS(editor.lastPosF, QPointF(20, 30));
    QCOMPARE(editor.new_paints(), 0);
}

// The buttons held decide, not the button pressed.
void tst_editspline_events::press_with_left_held() {
    ShownEditor editor;
    send_mouse(editor, QEvent::MouseButtonPress, editor.place_of(3), Qt::MiddleButton,
               Qt::LeftButton | Qt::MiddleButton);
    QCOMPARE(editor.pnt_selected, 3);
    QCOMPARE(editor.new_paints(), 1);
}

void tst_editspline_events::press_while_pressed() {
    ShownEditor editor;
    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, editor.place_of(3));
    QCOMPARE(editor.pnt_selected, 3);
    const QPoint mouse = editor.lastPos;
    editor.rest();
    QTest::mousePress(editor.handle(), Qt::MiddleButton, {}, mouse);
    send_mouse(editor, QEvent::MouseButtonPress, QPointF(20, 30), Qt::LeftButton, Qt::LeftButton);
    QCOMPARE(editor.pnt_selected, 3);
    QCOMPARE(editor.lastPos, mouse);
    COMPARE_BITS(editor.lastPosF, QPointF(mouse));
    QCOMPARE(editor.new_paints(), 0);
    QTest::mouseRelease(editor.handle(), Qt::MiddleButton, {}, mouse);
    QCOMPARE(editor.mousepressed, false);
}

void tst_editspline_events::press_at_a_fraction() {
    ShownEditor editor;
    send_mouse(editor, QEvent::MouseButtonPress, QPointF(100.625, 50.25), Qt::LeftButton,
               Qt::LeftButton);
    QCOMPARE(editor.lastPos, QPoint(101, 50));
    COMPARE_BITS(editor.lastPosF, QPointF(100.625, 50.25));
    editor.pnt_selected = 4;
    EditorModel model = editor.model();
    send_mouse(editor, QEvent::MouseMove, QPointF(200.25, 150.75), Qt::NoButton, Qt::LeftButton);
    QCOMPARE(editor.lastPos, QPoint(200, 151));
    COMPARE_BITS(editor.lastPosF, QPointF(100.625, 50.25));
    model.set_point(4, QPointF(200, 151));
    paint_model(model, 1);
    COMPARE_POLYGON_BITS(editor.points(), model.points());
}

void tst_editspline_events::drag_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("pan");

    QTest::newRow("reset-view") << 1.0 << QPointF(0, 0);
    QTest::newRow("zoomed-in") << 2.0 << QPointF(0, 0);
    QTest::newRow("most-zoomed-out") << 0.5 << QPointF(0, 0);
    QTest::newRow("panned") << 1.0 << QPointF(-31, 47);
    QTest::newRow("zoomed-and-panned") << std::pow(2.0, 1.0 / 9.0) << QPointF(-31.25, 47.75);
}

void tst_editspline_events::drag() {
    QFETCH(double, zoom);
    QFETCH(QPointF, pan);

    ShownEditor editor;
    editor.f_scale = zoom;
    editor.p_D = pan;
    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, editor.place_of(7));
    QCOMPARE(editor.pnt_selected, 7);
    const QPointF pressed_at = editor.lastPosF;
    editor.rest();
    EditorModel model = editor.model();
    for (const QPoint mouse : {QPoint(300, 150), QPoint(301, 150), QPoint(260, 360)}) {
        QTest::mouseMove(editor.handle(), mouse);
        model.set_point(7, QPointF((mouse.x() - pan.x()) / zoom, (mouse.y() - pan.y()) / zoom));
        const int frames = editor.new_paints();
        QVERIFY(frames >= 1);
        paint_model(model, frames);
        COMPARE_WITH_MODEL(editor, model);
        QCOMPARE(editor.lastPos, mouse);
        COMPARE_BITS(editor.lastPosF, pressed_at);
        QCOMPARE(editor.pnt_selected, 7);
    }
    QTest::mouseRelease(editor.handle(), Qt::LeftButton, {}, QPoint(260, 360));
    QTest::mouseMove(editor.handle(), QPoint(10, 10));
    paint_model(model, editor.new_paints());
    COMPARE_WITH_MODEL(editor, model);
}

void tst_editspline_events::drag_without_selection() {
    ShownEditor editor;
    const QPolygonF points = editor.points();
    QTest::mousePress(&editor, Qt::LeftButton, {}, QPoint(20, 30));
    QCOMPARE(editor.new_paints(), 1);
    QTest::mouseMove(&editor, QPoint(120, 130));
    COMPARE_POLYGON_BITS(editor.points(), points);
    COMPARE_BITS(editor.p_D, QPointF(0, 0));
    QCOMPARE(editor.lastPos, QPoint(120, 130));
    QCOMPARE(editor.new_paints(), 0);
}

void tst_editspline_events::drag_middle() {
    ShownEditor editor;
    editor.f_scale = 2.0;
    editor.pnt_selected = 4;
    const QPolygonF points = editor.points();
    QTest::mousePress(editor.handle(), Qt::MiddleButton, {}, QPoint(100, 100));
    QTest::mouseMove(editor.handle(), QPoint(110, 95));
    COMPARE_BITS(editor.p_D, QPointF(10, -5));
    QVERIFY(editor.new_paints() >= 1);
    QTest::mouseMove(editor.handle(), QPoint(90, 95));
    COMPARE_BITS(editor.p_D, QPointF(-10, -5));
    QCOMPARE(editor.lastPos, QPoint(90, 95));
    QTest::mouseRelease(editor.handle(), Qt::MiddleButton, {}, QPoint(90, 95));
    QTest::mouseMove(editor.handle(), QPoint(10, 10));
    COMPARE_BITS(editor.p_D, QPointF(-10, -5));
    EditorModel model = editor.model();
    QCOMPARE(editor.pnt_selected, 4);
    for (int i = 0; i < 10; ++i) {
        COMPARE_NEAR(editor.points().at(i).x(), points.at(i).x(), 1e-9);
        COMPARE_NEAR(editor.points().at(i).y(), points.at(i).y(), 1e-9);
    }
}

void tst_editspline_events::drag_left_and_middle_data() {
    QTest::addColumn<int>("point");

    QTest::newRow("first-point") << 0;
    QTest::newRow("inner-point") << 4;
}

void tst_editspline_events::drag_left_and_middle() {
    QFETCH(int, point);
    ShownEditor editor;
    editor.pnt_selected = point;
    editor.mousepressed = true;
    editor.lastPos = QPoint(100, 100);
    editor.p_D = QPointF(3, 4);
    EditorModel model = editor.model();
    send_mouse(editor, QEvent::MouseMove, QPointF(130, 180), Qt::NoButton,
               Qt::LeftButton | Qt::MiddleButton);
    QCOMPARE(editor.new_paints(), 2);
    model.set_point(point, QPointF(127, 176));
    paint_model(model, 1);
    model.pan = QPointF(33, 84);
    paint_model(model, 1);
    COMPARE_WITH_MODEL(editor, model);
}

void tst_editspline_events::drag_keeps_knots() {
    ShownEditor editor;
    editor.p->spline.b_knots[5] = 0.4;
    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, editor.place_of(7));
    QTest::mouseMove(editor.handle(), QPoint(300, 150));
    QTest::mouseRelease(editor.handle(), Qt::LeftButton, {}, QPoint(300, 150));
    COMPARE_BITS(editor.p->spline.b_knots[5], 0.4);
}

void tst_editspline_events::hover() {
    ShownEditor editor;
    editor.pnt_selected = 4;
    editor.lastPos = QPoint(7, 8);
    const QPolygonF points = editor.points();
    QTest::mouseMove(editor.handle(), QPoint(300, 150));
    send_mouse(editor, QEvent::MouseMove, QPointF(50, 60), Qt::NoButton, Qt::LeftButton);
    COMPARE_POLYGON_BITS(editor.points(), points);
    QCOMPARE(editor.lastPos, QPoint(7, 8));
    QCOMPARE(editor.new_paints(), 0);
}

void tst_editspline_events::release_data() {
    QTest::addColumn<Qt::MouseButton>("button");

    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("middle") << Qt::MiddleButton;
    QTest::newRow("right") << Qt::RightButton;
}

void tst_editspline_events::release() {
    QFETCH(Qt::MouseButton, button);

    ShownEditor editor;
    editor.pnt_selected = 4;
    editor.mousepressed = true;
    editor.lastPos = QPoint(7, 8);
    QTest::mouseRelease(&editor, button, {}, QPoint(200, 200));
    QCOMPARE(editor.mousepressed, false);
    QCOMPARE(editor.pnt_selected, 4);
    QCOMPARE(editor.lastPos, QPoint(7, 8));
    QCOMPARE(editor.new_paints(), 1);
}

void tst_editspline_events::read_out_while_pressed() {
    const QString separator = QStringLiteral(";");
    ShownEditor editor;
    const QPoint mouse = editor.place_of(3);
    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, mouse);
    const QList<PaintOperation> frame = editor.recorded();
    const QStringList read_outs = texts_of(frame).filter(separator);
    const QPointF chord = editor.model().to_chord(editor.points().at(3));
    QCOMPARE(
        read_outs,
        QStringList{QStringLiteral("(%1;%2)").arg(chord.x(), 0, 'f', 3).arg(chord.y(), 0, 'f', 3)});
    for (const PaintOperation& op : of_kind(frame, PaintOperation::Text)) {
        if (op.text == read_outs.first())
            COMPARE_BITS(op.view.map(op.position), QPointF(mouse.x(), mouse.y() - 20));
    }
    QTest::mouseRelease(editor.handle(), Qt::LeftButton, {}, mouse);
    QCOMPARE(editor.pnt_selected, 3);
    QCOMPARE(texts_of(editor.recorded()).filter(separator), QStringList());
    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, QPoint(20, 30));
    QCOMPARE(texts_of(editor.recorded()).filter(separator), QStringList());
    QTest::mouseRelease(editor.handle(), Qt::LeftButton, {}, QPoint(20, 30));
}

void tst_editspline_events::double_click_data() {
    release_data();
}

void tst_editspline_events::double_click() {
    QFETCH(Qt::MouseButton, button);

    ShownEditor editor;
    editor.f_scale = 3.0;
    editor.p_D = QPointF(40, 50);
    editor.pnt_selected = 2;
    editor.p->spline.CP[4].rx() -= 40;
    EditorModel model = editor.model();
    QTest::mouseDClick(&editor, button, {}, QPoint(20, 30));
    QCOMPARE(editor.new_paints(), 1);
    model.zoom = 1.0;
    model.pan = QPointF(0, 0);
    model.normalise();
    paint_model(model, 1);
    COMPARE_WITH_MODEL(editor, model);
    QCOMPARE(editor.pnt_selected, 2);
    QCOMPARE(editor.mousepressed, false);
}

// Hidden, so that no paint normalises the spline as well.
void tst_editspline_events::double_click_normalizes() {
    TestEditor editor(editor_size);
    editor.Generate_symetric_spline();
    editor.spline_poly = {QPointF(100, 0), QPointF(380.5, 0)};
    EditorModel model = editor.model();
    send_mouse(editor, QEvent::MouseButtonDblClick, QPointF(20, 30), Qt::LeftButton,
               Qt::LeftButton);
    model.normalise();
    COMPARE_POLYGON_BITS(editor.points(), model.points());
    COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
    COMPARE_NEAR(editor.points().at(0).x(), 1260.0, 1e-9);
}

void tst_editspline_events::double_click_without_button() {
    ShownEditor editor;
    editor.f_scale = 3.0;
    editor.p_D = QPointF(40, 50);
    const QPolygonF points = editor.points();
    send_mouse(editor, QEvent::MouseButtonDblClick, QPointF(20, 30), Qt::NoButton, Qt::NoButton);
    COMPARE_BITS(editor.f_scale, 3.0);
    COMPARE_BITS(editor.p_D, QPointF(40, 50));
    COMPARE_POLYGON_BITS(editor.points(), points);
}

void tst_editspline_events::double_click_of_the_mouse() {
    ShownEditor editor;
    editor.f_scale = 3.0;
    editor.p_D = QPointF(40, 50);
    QTest::mouseDClick(editor.handle(), Qt::LeftButton, {}, QPoint(20, 30));
    COMPARE_BITS(editor.f_scale, 1.0);
    COMPARE_BITS(editor.p_D, QPointF(0, 0));
    QCOMPARE(editor.mousepressed, false);
}

void tst_editspline_events::wheel_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPoint>("angle");
    QTest::addColumn<double>("result");

    const double notch = std::pow(2.0, 1.0 / 9.0);
    QTest::newRow("one-notch") << 1.0 << QPoint(0, 120) << notch;
    QTest::newRow("one-notch-back") << 1.0 << QPoint(0, -120) << std::pow(2.0, -120 / 1080.0);
    QTest::newRow("nine-notches-double") << 1.0 << QPoint(0, 1080) << 2.0;
    QTest::newRow("relative-to-the-present-zoom") << 1.5 << QPoint(0, 1080) << 3.0;
    QTest::newRow("touchpad-step") << 1.0 << QPoint(0, 1) << std::pow(2.0, 1 / 1080.0);
    QTest::newRow("horizontal") << 1.0 << QPoint(120, 0) << notch;
    QTest::newRow("vertical-first") << 1.0 << QPoint(-1080, 120) << notch;
    QTest::newRow("no-step") << 1.25 << QPoint(0, 0) << 1.25;
    QTest::newRow("clamped-above") << 3.9 << QPoint(0, 120) << 4.0;
    QTest::newRow("clamped-below") << 0.51 << QPoint(0, -120) << 0.5;
    QTest::newRow("greatest-step") << 1.0 << QPoint(0, INT_MAX) << 4.0;
    QTest::newRow("least-step") << 1.0 << QPoint(0, INT_MIN) << 0.5;
}

void tst_editspline_events::wheel() {
    QFETCH(double, zoom);
    QFETCH(QPoint, angle);
    QFETCH(double, result);

    ShownEditor editor;
    editor.f_scale = zoom;
    editor.p_D = QPointF(12, 34);
    EditorModel model = editor.model();
    send_wheel(editor, angle);
    COMPARE_ULP(editor.f_scale, result, 1);
    COMPARE_BITS(editor.p_D, QPointF(12, 34));
    QCOMPARE(editor.new_paints(), 1);
    paint_model(model, 1);
    COMPARE_POLYGON_BITS(editor.points(), model.points());
}

void tst_editspline_events::wheel_stops_data() {
    QTest::addColumn<int>("step");
    QTest::addColumn<double>("stop");

    QTest::newRow("above") << 120 << 4.0;
    QTest::newRow("below") << -120 << 0.5;
    QTest::newRow("above-by-small-steps") << 7 << 4.0;
}

void tst_editspline_events::wheel_stops() {
    QFETCH(int, step);
    QFETCH(double, stop);

    ShownEditor editor;
    for (int i = 0; i < 400; ++i) {
        send_wheel(editor, QPoint(0, step));
        QVERIFY(editor.f_scale >= 0.5 && editor.f_scale <= 4.0);
    }
    COMPARE_BITS(editor.f_scale, stop);
    send_wheel(editor, QPoint(0, -step));
    QVERIFY(editor.f_scale > 0.5 && editor.f_scale < 4.0);
}

AEROLITH_TEST_MAIN(tst_editspline_events)
#include "tst_editspline_events.moc"
