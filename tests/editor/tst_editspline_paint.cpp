// SPDX-FileCopyrightText: Aerolith developers
// What a frame draws, in which order and with which pens, and what it does to the
// document.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTest>

class tst_editspline_paint : public QObject {
    Q_OBJECT

private slots:
    void frame_data();
    void frame();
    void frame_leaves_other_state();
    void golden_data();
    void golden();
    void golden_files();
    void layers_in_order();
    void one_pixel_pens_data();
    void one_pixel_pens();
    void outlines_of_points();
    void fonts();
    void captured_window();
    void status_lines_data();
    void status_lines();
    void status_line_of_empty_spline();
    void read_out_data();
    void read_out();
};

namespace {

const QString golden_folder = QStringLiteral(GOLDEN);
const QStringList golden_names = {QStringLiteral("dragged-point.log"), QStringLiteral("empty.log"),
                                  QStringLiteral("section-over-template.log")};

const QPen axis_pen(QBrush(Qt::black), 0);
const QPen grid_pen(QBrush(Qt::darkRed), 0, Qt::DotLine);
const QPen opening_pen(QBrush(Qt::darkBlue), 1.0);

int first_with(const QList<PaintOperation>& all, PaintOperation::Kind kind, const QPen& pen) {
    for (int i = 0; i < all.size(); ++i) {
        if (all.at(i).kind == kind && pen_text(all.at(i).pen) == pen_text(pen))
            return i;
    }
    return -1;
}

const QPolygonF arch = {QPointF(900, 380), QPointF(640, 300), QPointF(350.5, 290.25),
                        QPointF(120, 410), QPointF(380, 470), QPointF(905, 390)};

} // namespace

void tst_editspline_paint::frame_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<int>("template_points");
    QTest::addColumn<int>("selected");
    QTest::addColumn<bool>("pressed");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("pan");
    QTest::addColumn<double>("o1");
    QTest::addColumn<double>("o2");

    const QSize minimum(555, 400);
    const QSize large(1900, 1000);
    const QPointF none;
    const QPolygonF empty;
    QTest::newRow("empty") << usual_size << empty << 0 << -1 << false << 1.0 << none << 0.0 << 0.0;
    QTest::newRow("template") << usual_size << empty << 33 << -1 << false << 1.0 << none << 0.0
                              << 0.0;
    QTest::newRow("spline") << usual_size << arch << 0 << -1 << false << 1.0 << none << 0.0 << 0.0;
    QTest::newRow("all-layers") << usual_size << arch << 65 << -1 << false << 1.0 << none << 12.5
                                << 37.5;
    QTest::newRow("selected") << usual_size << arch << 9 << 2 << false << 1.0 << none << 0.0
                              << 50.0;
    QTest::newRow("dragged") << usual_size << arch << 9 << 3 << true << 1.0 << none << 0.0 << 50.0;
    QTest::newRow("pressed-without-selection")
        << usual_size << arch << 9 << -1 << true << 1.0 << none << 0.0 << 50.0;
    QTest::newRow("zoomed-and-panned")
        << usual_size << arch << 9 << 1 << true << 2.5 << QPointF(-300.5, 75) << 10.0 << 20.0;
    QTest::newRow("zoomed-out") << usual_size << arch << 9 << -1 << false << 0.5 << QPointF(40, 50)
                                << -10.0 << 120.0;
    QTest::newRow("one-point") << usual_size << QPolygonF{QPointF(921, 383)} << 0 << -1 << false
                               << 1.0 << none << 0.0 << 0.0;
    QTest::newRow("minimum-size") << minimum << arch << 9 << -1 << false << 1.0 << none << 5.0
                                  << 6.0;
    QTest::newRow("large") << large << arch << 9 << -1 << false << 1.0 << none << 5.0 << 6.0;
}

void tst_editspline_paint::frame() {
    QFETCH(QSize, size);
    QFETCH(QPolygonF, points);
    QFETCH(int, template_points);
    QFETCH(int, selected);
    QFETCH(bool, pressed);
    QFETCH(double, zoom);
    QFETCH(QPointF, pan);
    QFETCH(double, o1);
    QFETCH(double, o2);

    TestEditor editor(size);
    editor.set_points(points);
    editor.p->spline.airfoilName = QStringLiteral("/a/wing.two.spl");
    editor.p->spline.startVent = o1;
    editor.p->spline.endVent = o2;
    editor.p->baseAirfoilName = QStringLiteral("/b/base.dat");
    editor.p->baseAirfoil = template_points > 0 ? sample_template(template_points) : QPolygonF();
    editor.pnt_selected = selected;
    editor.mousepressed = pressed;
    editor.lastPos = QPoint(410, 222);
    editor.f_scale = zoom;
    editor.p_D = pan;

    for (int frame = 0; frame < 3; ++frame) {
        EditorModel model = editor.model();
        const QStringList expected = model.paint_log();
        const QString drawn = first_log_difference(paint_log(editor.recorded()), expected);
        QVERIFY2(drawn.isEmpty(), qPrintable(drawn));
        COMPARE_POLYGON_BITS(editor.points(), model.points());
        COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
        COMPARE_POLYGON_BITS(editor.p->workAirfoil, model.work);
    }
}

void tst_editspline_paint::frame_leaves_other_state() {
    TestEditor editor;
    editor.set_points(arch);
    editor.p->baseAirfoil = sample_template(9);
    editor.p->spline.startVent = 1.5;
    editor.p->spline.rd_CP[2] = QPointF(1, 2);
    editor.p->spline.CP[7] = QPointF(3, 4);
    editor.curPnt = QPointF(5, 6);
    editor.lastPosF = QPointF(7, 8);
    editor.mousepressed = true;
    editor.pnt_selected = 2;
    const SplineFoil before = editor.p->spline;
    editor.recorded();
    COMPARE_POLYGON_BITS(editor.p->baseAirfoil, sample_template(9));
    COMPARE_BITS(editor.p->spline.startVent, 1.5);
    COMPARE_BITS(editor.p->spline.rd_CP[2], QPointF(1, 2));
    COMPARE_BITS(editor.p->spline.CP[7], QPointF(3, 4));
    COMPARE_BITS(editor.curPnt, QPointF(5, 6));
    COMPARE_BITS(editor.lastPosF, QPointF(7, 8));
    QCOMPARE(editor.mousepressed, true);
    QCOMPARE(editor.pnt_selected, 2);
    QCOMPARE(editor.p->spline.num_pnt, before.num_pnt);
    for (int i = 0; i < MAXNUMKNOTS; ++i)
        COMPARE_BITS(editor.p->spline.b_knots[i], before.b_knots[i]);
}

void tst_editspline_paint::golden_data() {
    QTest::addColumn<QString>("name");

    for (const QString& name : golden_names)
        QTest::newRow(qPrintable(QString(name).remove(QStringLiteral(".log")))) << name;
}

void tst_editspline_paint::golden() {
    QFETCH(QString, name);

    TestEditor editor;
    if (name != golden_names.at(1)) {
        editor.p->baseAirfoilName = QStringLiteral("/sections/template.dat");
        editor.p->baseAirfoil = sample_template(9);
        editor.p->spline.airfoilName = QStringLiteral("/sections/wing.spl");
        editor.set_settled_section();
    }
    if (name == golden_names.at(0)) {
        editor.pnt_selected = 3;
        editor.mousepressed = true;
        editor.lastPos = QPoint(150, 440);
        editor.f_scale = 1.25;
        editor.p_D = QPointF(-20, 12);
        editor.p->spline.startVent = 25.0;
        editor.p->spline.endVent = 37.5;
    }
    const QString drawn = golden_difference(golden_folder, name, paint_log(editor.recorded()));
    QVERIFY2(drawn.isEmpty(), qPrintable(drawn));
}

void tst_editspline_paint::golden_files() {
    QCOMPARE(QDir(golden_folder).entryList(QDir::Files), golden_names);
}

void tst_editspline_paint::layers_in_order() {
    TestEditor editor;
    editor.p->baseAirfoil = sample_template(9);
    editor.set_settled_section();
    editor.pnt_selected = 3;
    editor.mousepressed = true;
    const QList<PaintOperation> all = editor.recorded();

    QCOMPARE(all.at(0).text.left(18), QStringLiteral("Background foil: :"));
    QCOMPARE(all.at(1).text.left(18), QStringLiteral("Spline ....... : :"));
    QVERIFY(all.at(2).text.startsWith(QLatin1Char('(')));
    const QList<int> starts = {
        2,
        first_with(all, PaintOperation::Line, axis_pen),
        first_with(all, PaintOperation::Line, grid_pen),
        first_with(all, PaintOperation::Line, opening_pen),
        first_with(all, PaintOperation::Ellipse, opening_pen),
        first_with(all, PaintOperation::Polygon, QPen(QBrush(Qt::blue), 2.0)),
        first_with(all, PaintOperation::Ellipse, QPen(QBrush(Qt::red), 1.0)),
        first_with(all, PaintOperation::Ellipse, QPen(QBrush(Qt::black), 0)),
        first_with(all, PaintOperation::Polyline, QPen(QBrush(Qt::red), 1.0)),
    };
    for (int i = 1; i < starts.size(); ++i)
        QVERIFY2(starts.at(i) > starts.at(i - 1), qPrintable(QString::number(i)));
    QCOMPARE(starts.last(), int(all.size()) - 1);
}

void tst_editspline_paint::one_pixel_pens_data() {
    QTest::addColumn<double>("zoom");

    for (const double zoom : {0.5, 1.0, 1.75, 4.0})
        QTest::addRow("zoom-%d-per-cent", int(zoom * 100)) << zoom;
}

void tst_editspline_paint::one_pixel_pens() {
    QFETCH(double, zoom);

    TestEditor editor;
    editor.p->baseAirfoil = sample_template(9);
    editor.set_settled_section();
    editor.f_scale = zoom;
    editor.pnt_selected = 3;
    editor.mousepressed = true;
    const QList<PaintOperation> all = editor.recorded();
    int axes = 0;
    for (const PaintOperation& op : all) {
        const bool axis = op.kind == PaintOperation::Line && axes < 2;
        if (op.kind == PaintOperation::Text || axis) {
            QVERIFY2(op.pen.isCosmetic() && op.pen.widthF() <= 1.0, qPrintable(pen_text(op.pen)));
            axes += axis ? 1 : 0;
        }
        if (axis) {
            QCOMPARE(op.pen.color(), editor.palette().color(editor.foregroundRole()));
            QCOMPARE(op.pen.style(), Qt::SolidLine);
        }
    }
    QCOMPARE(axes, 2);
    // The pens that have a width grow with the zoom.
    const int polyline = first_with(all, PaintOperation::Polyline, QPen(QBrush(Qt::red), 1.0));
    QVERIFY(polyline > 0);
    QVERIFY(!all.at(polyline).pen.isCosmetic());
    COMPARE_BITS(all.at(polyline).view.m11(), zoom);
}

// The points are outlined with the painter's pen.
void tst_editspline_paint::outlines_of_points() {
    TestEditor editor;
    editor.p->baseAirfoil = sample_template(60);
    for (const Qt::GlobalColor colour : {Qt::green, Qt::green, Qt::green, Qt::magenta, Qt::black}) {
        QImage image(usual_size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setPen(QPen(QBrush(colour), 1.0));
        editor.Paint_BackgroundPoly(&painter);
        painter.end();
        const QPointF place = editor.model().to_pixels(editor.p->baseAirfoil.at(20));
        bool outlined = false;
        for (int dx = 2; dx <= 4; ++dx)
            outlined =
                outlined || image.pixelColor(place.toPoint() + QPoint(dx, 0)) == QColor(colour);
        QVERIFY(outlined);
    }
}

void tst_editspline_paint::fonts() {
    TestEditor editor;
    QFont font = editor.font();
    font.setPixelSize(23);
    editor.setFont(font);
    editor.set_settled_section();
    const QList<PaintOperation> texts = of_kind(editor.recorded(), PaintOperation::Text);
    QCOMPARE(texts.size(), 21);
    for (const PaintOperation& op : texts)
        QCOMPARE(op.font, font);
}

// After a resize without Init_widget(), the picture is stretched.
void tst_editspline_paint::captured_window() {
    TestEditor editor(QSize(1000, 600));
    editor.p->baseAirfoil = sample_template(9);
    editor.resize(2000, 300);
    const QList<PaintOperation> all = editor.recorded();
    QCOMPARE(all.first().view, QTransform(2.0, 0, 0, 0.5, 0, 0));
    COMPARE_BITS(all.first().position, QPointF(300, 20));
    const QList<QLineF> axes = lines_of(all, axis_pen);
    QCOMPARE(axes.first(), QLineF(0, 299, 999, 299));
}

void tst_editspline_paint::status_lines_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");

    QTest::newRow("no-name") << QString() << QString();
    QTest::newRow("folder-and-suffix")
        << QStringLiteral("/a/b.c/wing.dat") << QStringLiteral("wing");
    QTest::newRow("all-suffixes") << QStringLiteral("/a/wing.two.dat") << QStringLiteral("wing");
    QTest::newRow("place-markers")
        << QStringLiteral("/a/w%1 %2 %3%%.dat") << QStringLiteral("w%1 %2 %3%%");
    QTest::newRow("markup") << QStringLiteral("<b>&amp;<i>.dat") << QStringLiteral("<b>&amp;<i>");
    QTest::newRow("hidden-file") << QStringLiteral("/a/.dat") << QString();
    QTest::newRow("folder-only") << QStringLiteral("/a/") << QString();
    QTest::newRow("ampersand") << QStringLiteral("a&b.txt") << QStringLiteral("a&b");
}

void tst_editspline_paint::status_lines() {
    QFETCH(QString, path);
    QFETCH(QString, name);

    TestEditor editor;
    editor.set_settled_section();
    editor.p->baseAirfoil = {QPointF(1, 0), QPointF(0.25, 0.125), QPointF(0.5, -0.0625)};
    editor.p->baseAirfoilName = path;
    editor.p->spline.airfoilName = path;
    editor.f_scale = 2.0;
    editor.p_D = QPointF(50, 60);
    const QList<PaintOperation> all = editor.recorded();
    QString background;
    QString spline;
    for (const PaintOperation& op : of_kind(all, PaintOperation::Text)) {
        const QPointF position = op.view.map(op.position);
        if (position == QPointF(300, 20))
            background += op.text;
        if (position == QPointF(300, 35))
            spline += op.text;
    }
    QCOMPARE(background, QStringLiteral("Background foil: ") + name +
                             QStringLiteral(":  Thickness: 18.75  at  37.50 % ||  Top: at 25.00   "
                                            "Bottom: at: 50.00 "));
    const QStringList thickness = model_thickness(editor.p->workAirfoil);
    QCOMPARE(spline, QStringLiteral("Spline ....... : ") + name + QStringLiteral(": ") +
                         thickness.at(0) + QStringLiteral(" || ") + thickness.at(1));
}

void tst_editspline_paint::status_line_of_empty_spline() {
    TestEditor editor;
    editor.set_settled_section();
    QCOMPARE(texts_of(editor.recorded()).filter(QStringLiteral("Thickness")).size(), 1);
    editor.p->spline.num_pnt = 0;
    const QList<PaintOperation> all = editor.recorded();
    QCOMPARE(texts_of(all).filter(QStringLiteral("Thickness")).size(), 0);
    QVERIFY(editor.p->workAirfoil.isEmpty());
    QVERIFY(editor.spline_poly.isEmpty());
    QCOMPARE(of_kind(all, PaintOperation::Ellipse).size(), 0);
    QCOMPARE(of_kind(all, PaintOperation::Polyline).size(), 0);
    QCOMPARE(of_kind(all, PaintOperation::Polygon).size(), 0);
}

void tst_editspline_paint::read_out_data() {
    QTest::addColumn<QPointF>("chord");
    QTest::addColumn<QString>("text");

    QTest::newRow("above") << QPointF(0.25, 0.125) << QStringLiteral("(0.250;0.125)");
    QTest::newRow("below") << QPointF(0.75, -0.0626) << QStringLiteral("(0.750;-0.063)");
    QTest::newRow("on-the-chord-line") << QPointF(0.5, 0) << QStringLiteral("(0.500;0.000)");
    QTest::newRow("two-zeros") << QPointF(0.001, 0.5) << QStringLiteral("(0.001;0.500)");
    QTest::newRow("third-decimal") << QPointF(0.1236, 0.9876) << QStringLiteral("(0.124;0.988)");
}

void tst_editspline_paint::read_out() {
    QFETCH(QPointF, chord);
    QFETCH(QString, text);

    TestEditor editor;
    const EditorModel model = editor.model();
    // The ends of the curve are a chord apart, so a frame moves nothing.
    editor.set_points({model.TE, model.to_pixels(chord), model.to_pixels(QPointF(0, 0))});
    for (int i = 0; i < 3; ++i)
        editor.recorded();
    editor.pnt_selected = 1;
    editor.mousepressed = true;
    editor.lastPos = QPoint(77, 88);
    editor.f_scale = 3.0;
    editor.p_D = QPointF(1, 2);
    const QList<PaintOperation> all = editor.recorded();
    const QPointF shown = model.to_chord(editor.points().at(1));
    COMPARE_NEAR(shown.x(), chord.x(), 1e-12);
    COMPARE_NEAR(shown.y(), chord.y(), 1e-12);
    const QStringList expected{text};
    QCOMPARE(texts_of(all).filter(QStringLiteral(";")), expected);
    for (const PaintOperation& op : all) {
        if (op.text == text)
            COMPARE_BITS(op.view.map(op.position), QPointF(77, 68));
    }
    editor.mousepressed = false;
    QCOMPARE(texts_of(editor.recorded()).filter(QStringLiteral(";")), QStringList());
    editor.mousepressed = true;
    editor.pnt_selected = -1;
    QCOMPARE(texts_of(editor.recorded()).filter(QStringLiteral(";")), QStringList());
}

AEROLITH_TEST_MAIN(tst_editspline_paint)
#include "tst_editspline_paint.moc"
