// SPDX-FileCopyrightText: Aerolith developers
// State, mapping, size hints, showing and the meta-object of the editor.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QMetaMethod>
#include <QPainter>
#include <QTest>

#include <cmath>

class tst_editspline_view : public QObject {
    Q_OBJECT

private slots:
    void mapping_of_size_data();
    void mapping_of_size();
    void construction();
    void construction_empties_the_spline();
    void init_widget_resets();
    void init_widget_keeps();
    void resize_alone_keeps();
    void normalize_FromScreen_data();
    void normalize_FromScreen();
    void normalize_FromScreen_empty();
    void normalize_FromScreen_without_chord();
    void myAnchor();
    void transformPainter_data();
    void transformPainter();
    void size_hints_data();
    void size_hints();
    void show_resets_view();
    void show_connects_once_more();
    void repaint_opened_spline();
    void repaint_opened_spline_hidden();
    void meta_object();
    void slots_by_name();
};

void tst_editspline_view::mapping_of_size_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("wr");
    QTest::addColumn<int>("H");
    QTest::addColumn<int>("xc");
    QTest::addColumn<int>("L_T");
    QTest::addColumn<int>("yc");

    QTest::newRow("1024x768") << QSize(1024, 768) << 1023 << 767 << 102 << 819 << 383;
    QTest::newRow("minimum-of-the-form") << QSize(555, 400) << 554 << 399 << 55 << 444 << 199;
    QTest::newRow("even-sizes") << QSize(636, 562) << 635 << 561 << 63 << 509 << 280;
    QTest::newRow("high") << QSize(600, 2000) << 599 << 1999 << 59 << 481 << 999;
    QTest::newRow("largest") << QSize(16384, 16384) << 16383 << 16383 << 1638 << 13107 << 8191;
    QTest::newRow("5x5") << QSize(5, 5) << 4 << 4 << 0 << 4 << 2;
    QTest::newRow("1x1") << QSize(1, 1) << 0 << 0 << 0 << 0 << 0;
    QTest::newRow("0x0") << QSize(0, 0) << -1 << -1 << 0 << -1 << 0;
}

void tst_editspline_view::mapping_of_size() {
    QFETCH(QSize, size);
    QFETCH(int, wr);
    QFETCH(int, H);
    QFETCH(int, xc);
    QFETCH(int, L_T);
    QFETCH(int, yc);

    TestEditor editor(size);
    QCOMPARE(editor.MyRect, QRect(QPoint(0, 0), size));
    QCOMPARE(editor.wr, wr);
    QCOMPARE(editor.H, H);
    QCOMPARE(editor.xc, xc);
    QCOMPARE(editor.L_T, L_T);
    QCOMPARE(editor.yc, yc);
    COMPARE_BITS(editor.Orig, QPointF(xc, yc));
    COMPARE_BITS(editor.TE, QPointF(xc + L_T, yc));
}

void tst_editspline_view::construction() {
    QWidget parent;
    const EditSpline child(&parent);
    QCOMPARE(child.parentWidget(), &parent);
    QCOMPARE(child.p, GetDataStruct());
    QCOMPARE(child.windowFlags(), QWidget(&parent).windowFlags());
    QVERIFY(child.spline_poly.isEmpty());
    QCOMPARE(child.lastPos, QPoint(0, 0));
    COMPARE_BITS(child.lastPosF, QPointF(0, 0));
    COMPARE_BITS(child.curPnt, QPointF(0, 0));
    COMPARE_BITS(child.LE, QPointF(0, 0));
    QCOMPARE(child.fontheight, 10);
    COMPARE_BITS(child.f_scale, 1.0);
    COMPARE_BITS(child.p_D, QPointF(0, 0));
    QCOMPARE(child.pnt_selected, -1);
    QCOMPARE(child.mousepressed, false);
    COMPARE_BITS(child.top_p, 0.0);
    COMPARE_BITS(child.bot_p, 0.0);
    QCOMPARE(child.knot_string, QStringLiteral(" //////"));
    QCOMPARE(child.MyRect, child.rect());

    const EditSpline window(nullptr);
    QVERIFY(window.isWindow());
    QCOMPARE(window.windowFlags(), QWidget().windowFlags());
    QCOMPARE(window.MyRect, window.rect());
}

void tst_editspline_view::construction_empties_the_spline() {
    ParaStruct* document = GetDataStruct();
    document->spline.num_pnt = 4;
    document->spline.init_knots();
    document->spline.startVent = 10.0;
    document->spline.endVent = 20.0;
    const EditSpline editor;
    QCOMPARE(document->spline.num_pnt, 0);
    QCOMPARE(document->spline.num_knt, 0);
    COMPARE_BITS(document->spline.startVent, 0.0);
    COMPARE_BITS(document->spline.endVent, 0.0);
}

void tst_editspline_view::init_widget_resets() {
    TestEditor editor;
    editor.set_settled_section();
    editor.p->spline.startVent = 12.0;
    editor.p->spline.endVent = 34.0;
    editor.fontheight = 3;
    editor.mousepressed = true;
    editor.knot_string = QStringLiteral("knots");
    editor.pnt_selected = 5;
    editor.top_p = 1.5;
    editor.bot_p = 2.5;
    editor.f_scale = 3.0;
    editor.p_D = QPointF(7, -8);
    editor.resize(555, 400);
    editor.Init_widget();

    QCOMPARE(editor.fontheight, 10);
    QCOMPARE(editor.mousepressed, false);
    QCOMPARE(editor.knot_string, QStringLiteral(" //////"));
    QCOMPARE(editor.MyRect, QRect(0, 0, 555, 400));
    COMPARE_BITS(editor.Orig, QPointF(55, 199));
    COMPARE_BITS(editor.TE, QPointF(499, 199));
    QCOMPARE(editor.pnt_selected, -1);
    COMPARE_BITS(editor.top_p, 0.0);
    COMPARE_BITS(editor.bot_p, 0.0);
    COMPARE_BITS(editor.f_scale, 1.0);
    COMPARE_BITS(editor.p_D, QPointF(0, 0));
    QCOMPARE(editor.p->spline.num_pnt, 0);
    QCOMPARE(editor.p->spline.num_knt, 0);
    COMPARE_BITS(editor.p->spline.startVent, 0.0);
    COMPARE_BITS(editor.p->spline.endVent, 0.0);
}

void tst_editspline_view::init_widget_keeps() {
    TestEditor editor;
    editor.set_settled_section();
    editor.lastPos = QPoint(5, 6);
    editor.lastPosF = QPointF(5.5, 6.5);
    editor.curPnt = QPointF(1, 2);
    editor.p->baseAirfoil = sample_template(5);
    editor.p->baseAirfoilName = QStringLiteral("template.dat");
    editor.p->spline.airfoilName = QStringLiteral("spline.spl");
    const QPolygonF curve = editor.spline_poly;
    const QPointF third = editor.p->spline.CP[3];
    const double knot = editor.p->spline.b_knots[4];
    QCOMPARE(curve.size(), 999);
    editor.Init_widget();

    QCOMPARE(editor.lastPos, QPoint(5, 6));
    COMPARE_BITS(editor.lastPosF, QPointF(5.5, 6.5));
    COMPARE_BITS(editor.curPnt, QPointF(1, 2));
    COMPARE_BITS(editor.LE, QPointF(0, 0));
    COMPARE_POLYGON_BITS(editor.spline_poly, curve);
    COMPARE_BITS(editor.p->spline.CP[3], third);
    COMPARE_BITS(editor.p->spline.b_knots[4], knot);
    QCOMPARE(editor.p->spline.degree, 2);
    QCOMPARE(editor.p->spline.airfoilName, QStringLiteral("spline.spl"));
    QCOMPARE(editor.p->baseAirfoilName, QStringLiteral("template.dat"));
    COMPARE_POLYGON_BITS(editor.p->baseAirfoil, sample_template(5));
}

// The window calls Init_widget() when the size changes; the editor itself has no resize handler.
void tst_editspline_view::resize_alone_keeps() {
    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    editor.set_settled_section();
    editor.resize(700, 500);
    QTRY_COMPARE(editor.size(), QSize(700, 500));
    QVERIFY(paint_until_idle(editor));
    QCOMPARE(editor.MyRect, QRect(QPoint(0, 0), usual_size));
    QCOMPARE(editor.L_T, 819);
    QCOMPARE(editor.p->spline.num_pnt, 10);
}

void tst_editspline_view::normalize_FromScreen_data() {
    QTest::addColumn<QPointF>("chord");
    QTest::addColumn<QPointF>("pixels");

    QTest::newRow("leading-edge") << QPointF(0, 0) << QPointF(102, 383);
    QTest::newRow("trailing-edge") << QPointF(1, 0) << QPointF(921, 383);
    QTest::newRow("above-half-chord") << QPointF(0.5, 0.1) << QPointF(102 + 409.5, 383 - 81.9);
    QTest::newRow("below-the-chord") << QPointF(0.25, -0.5) << QPointF(306.75, 792.5);
    QTest::newRow("behind-the-trailing-edge") << QPointF(2, 0) << QPointF(1740, 383);
}

void tst_editspline_view::normalize_FromScreen() {
    QFETCH(QPointF, chord);
    QFETCH(QPointF, pixels);

    TestEditor editor;
    const EditorModel model(usual_size);
    COMPARE_BITS(model.to_pixels(chord), pixels);
    const QPolygonF result = editor.normalize_FromScreen({QPointF(102, 383), pixels, pixels});
    QCOMPARE(result.size(), 3);
    COMPARE_BITS(result.at(1),
                 QPointF((pixels.x() - 102.0) / 819.0, -(pixels.y() - 383.0) / 819.0));
    COMPARE_NEAR(result.at(2).x(), chord.x(), 1e-15);
    COMPARE_NEAR(result.at(2).y(), chord.y(), 1e-15);
}

void tst_editspline_view::normalize_FromScreen_empty() {
    TestEditor editor;
    QVERIFY(editor.normalize_FromScreen(QPolygonF()).isEmpty());
}

void tst_editspline_view::normalize_FromScreen_without_chord() {
    TestEditor editor(QSize(1, 1));
    const QPolygonF result = editor.normalize_FromScreen({QPointF(0, 0), QPointF(1, -1)});
    QCOMPARE(result.size(), 2);
    QVERIFY(std::isnan(result.at(0).x()));
    QVERIFY(std::isinf(result.at(1).x()));
    QVERIFY(std::isinf(result.at(1).y()));
}

void tst_editspline_view::myAnchor() {
    TestEditor editor;
    editor.move(20, 30);
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    const QPoint inside(111, 222);
    QCursor::setPos(editor.mapToGlobal(inside));
    COMPARE_BITS(editor.myAnchor(), QPointF(inside));
}

void tst_editspline_view::transformPainter_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("pan");

    QTest::newRow("reset-view") << 1.0 << QPointF(0, 0);
    QTest::newRow("zoomed") << 4.0 << QPointF(0, 0);
    QTest::newRow("panned") << 1.0 << QPointF(-12.5, 30);
    QTest::newRow("zoomed-and-panned") << 0.5 << QPointF(100, -200.25);
}

void tst_editspline_view::transformPainter() {
    QFETCH(double, zoom);
    QFETCH(QPointF, pan);

    TestEditor editor;
    editor.f_scale = zoom;
    editor.p_D = pan;
    RecordingPaintDevice device(usual_size);
    QPainter painter(&device);
    painter.setTransform(QTransform(2, 1, 0, 1, 2, 0, 77, 88, 1));
    editor.transformPainter(painter);
    const QTransform view = painter.transform();
    const QPointF logical(300, 400);
    COMPARE_BITS(view.map(logical), QPointF(pan.x() + zoom * 300, pan.y() + zoom * 400));
    COMPARE_BITS(view.m12(), 0.0);
    COMPARE_BITS(view.m21(), 0.0);
}

void tst_editspline_view::size_hints_data() {
    QTest::addColumn<QSize>("size");

    QTest::newRow("usual") << usual_size;
    QTest::newRow("small") << QSize(3, 2);
    QTest::newRow("large") << QSize(4000, 3000);
}

void tst_editspline_view::size_hints() {
    QFETCH(QSize, size);

    TestEditor editor(size);
    const QWidget& base = editor;
    QCOMPARE(base.minimumSizeHint(), QSize(1024, 768));
    QCOMPARE(editor.SizeHint(), size);
    QCOMPARE(base.sizeHint(), QWidget().sizeHint());
    editor.resize(size * 2);
    QCOMPARE(editor.SizeHint(), size * 2);
    QCOMPARE(base.minimumSizeHint(), QSize(1024, 768));
}

void tst_editspline_view::show_resets_view() {
    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    editor.set_settled_section();
    editor.f_scale = 2.0;
    editor.p_D = QPointF(5, 6);
    editor.hide();
    COMPARE_BITS(editor.f_scale, 2.0);
    editor.show();
    COMPARE_BITS(editor.f_scale, 1.0);
    COMPARE_BITS(editor.p_D, QPointF(0, 0));
    QCOMPARE(editor.p->spline.num_pnt, 10);
}

void tst_editspline_view::show_connects_once_more() {
    TestEditor editor;
    for (int shown = 1; shown <= 3; ++shown) {
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        const ModalGuard guard;
        QContextMenuEvent request(QContextMenuEvent::Keyboard, QPoint(50, 60),
                                  editor.mapToGlobal(QPoint(50, 60)));
        QCoreApplication::sendEvent(&editor, &request);
        QCOMPARE(guard.count(), shown);
        QCOMPARE(guard.seen(shown - 1).class_name, QStringLiteral("QMenu"));
        editor.hide();
    }
}

void tst_editspline_view::repaint_opened_spline() {
    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    QVERIFY(paint_until_idle(editor));
    editor.set_points(model_symmetric(EditorModel(usual_size)));
    EditorModel model = editor.model();
    const int before = editor.paints;
    editor.repaint_opened_spline();
    QCOMPARE(editor.paints, before + 1);
    model.evaluate();
    model.paint_log();
    COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
    COMPARE_POLYGON_BITS(editor.points(), model.points());
}

void tst_editspline_view::repaint_opened_spline_hidden() {
    TestEditor editor;
    editor.set_points(model_symmetric(EditorModel(usual_size)));
    EditorModel model = editor.model();
    editor.repaint_opened_spline();
    QCOMPARE(editor.paints, 0);
    model.evaluate();
    COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
    COMPARE_POLYGON_BITS(editor.points(), model.points());
    QVERIFY(editor.p->workAirfoil.isEmpty());
}

void tst_editspline_view::meta_object() {
    const QMetaObject& meta = EditSpline::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    const int first = meta.methodOffset();
    QCOMPARE(meta.methodCount(), first + 3);
    const QByteArray signatures[] = {"repaint_opened_spline()", "Action_From_Menu(QPoint,int)",
                                     "ShowContextMenu(QPoint)"};
    const QList<QByteArray> names[] = {{}, {"P", "m"}, {"pos"}};
    for (int i = 0; i < 3; ++i) {
        const QMetaMethod method = meta.method(first + i);
        QCOMPARE(method.methodSignature(), signatures[i]);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.parameterNames(), names[i]);
    }
}

void tst_editspline_view::slots_by_name() {
    TestEditor editor;
    QVERIFY(QMetaObject::invokeMethod(&editor, "Action_From_Menu", Q_ARG(QPoint, QPoint(9, 8)),
                                      Q_ARG(int, 2)));
    COMPARE_BITS(editor.p->spline.CP[0], QPointF(9, 8));
    QVERIFY(QMetaObject::invokeMethod(&editor, "repaint_opened_spline"));
    QCOMPARE(editor.spline_poly.size(), 999);
    const ModalGuard guard;
    QVERIFY(QMetaObject::invokeMethod(&editor, "ShowContextMenu", Q_ARG(QPoint, QPoint(9, 8))));
    QCOMPARE(guard.count(), 1);
}

AEROLITH_TEST_MAIN(tst_editspline_view)
#include "tst_editspline_view.moc"
