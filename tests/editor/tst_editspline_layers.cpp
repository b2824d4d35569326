// SPDX-FileCopyrightText: Aerolith developers
// The painting functions of the editor, one by one.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QPainter>
#include <QTest>

#include <limits>

class tst_editspline_layers : public QObject {
    Q_OBJECT

private slots:
    void Paint_thickness();
    void ShowKnotString();
    void Paint_BackgroundPoly();
    void Paint_BackgroundPoly_not_finite();
    void Paint_Spline_Aux_data();
    void Paint_Spline_Aux();
    void markers_of_selection();
    void curve_marks();
};

namespace {

const double not_a_number = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

const QPen axis_pen(QBrush(Qt::black), 0);

// The operations of one of the painting functions.
template<typename Draw>
QList<PaintOperation> drawn_by(QSize size, Draw draw) {
    RecordingPaintDevice device(size);
    QPainter painter(&device);
    painter.setPen(axis_pen);
    draw(&painter);
    painter.end();
    return device.operations();
}

} // namespace

void tst_editspline_layers::Paint_thickness() {
    TestEditor editor;
    QPolygonF outline = {QPointF(1, 0), QPointF(0.25, 0.125), QPointF(0.5, -0.0625)};
    const QList<PaintOperation> all = drawn_by(usual_size, [&](QPainter* painter) {
        editor.Paint_thickness(&outline, QPointF(12, 34), QStringLiteral("%1 %2: "), painter);
    });
    QCOMPARE(texts_of(all),
             QStringList{QStringLiteral("%1 %2:  Thickness: 18.75  at  37.50 % ||  Top: at 25.00   "
                                        "Bottom: at: 50.00 ")});
    COMPARE_BITS(all.first().position, QPointF(12, 34));
    QPolygonF empty;
    QVERIFY(drawn_by(usual_size, [&](QPainter* painter) {
                editor.Paint_thickness(&empty, QPointF(12, 34), QStringLiteral("label"), painter);
            }).isEmpty());
}

void tst_editspline_layers::ShowKnotString() {
    TestEditor editor;
    editor.set_settled_section();
    QVERIFY(
        drawn_by(usual_size, [&](QPainter* painter) { editor.ShowKnotString(painter); }).isEmpty());
}

void tst_editspline_layers::Paint_BackgroundPoly() {
    TestEditor editor;
    editor.p->baseAirfoil = {QPointF(1, 0), QPointF(0.5, 0.25), QPointF(0, 0), QPointF(0.5, -1)};
    const QList<PaintOperation> all =
        drawn_by(usual_size, [&](QPainter* painter) { editor.Paint_BackgroundPoly(painter); });
    const QPolygonF pixels = {QPointF(921, 383), QPointF(511.5, 178.25), QPointF(102, 383),
                              QPointF(511.5, 1202)};
    QCOMPARE(all.size(), 5);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(all.at(i).kind, PaintOperation::Ellipse);
        COMPARE_BITS(all.at(i).centre(), pixels.at(i));
        QCOMPARE(all.at(i).rect.size(), QSizeF(6, 6));
        QCOMPARE(all.at(i).brush, QBrush(Qt::red));
        QCOMPARE(pen_text(all.at(i).pen), pen_text(axis_pen));
    }
    QCOMPARE(all.at(4).kind, PaintOperation::Polygon);
    COMPARE_POLYGON_BITS(all.at(4).points, pixels);
    QCOMPARE(all.at(4).fill, Qt::OddEvenFill);
    QCOMPARE(all.at(4).brush.style(), Qt::NoBrush);
    QCOMPARE(pen_text(all.at(4).pen), pen_text(QPen(QBrush(Qt::blue), 2.0)));
}

void tst_editspline_layers::Paint_BackgroundPoly_not_finite() {
    TestEditor editor;
    editor.p->baseAirfoil = {
        QPointF(1, 0), QPointF(not_a_number, 0), QPointF(0.5, 0.25), QPointF(0, infinity),
        QPointF(0, 0), QPointF(1e300, 1),        QPointF(0.5, -1e4), QPointF(0.5, -1)};
    RecordingPaintDevice device(usual_size);
    editor.render(&device, {}, {}, QWidget::DrawChildren);
    QCOMPARE(device.out_of_bounds(), QStringList());
    QCOMPARE(device.operations(PaintOperation::Ellipse).size(), 4);

    editor.p->baseAirfoil = QPolygonF(1000, QPointF(not_a_number, not_a_number));
    device.clear();
    editor.render(&device, {}, {}, QWidget::DrawChildren);
    QCOMPARE(device.out_of_bounds(), QStringList());
    QCOMPARE(device.operations(PaintOperation::Ellipse).size(), 0);
    QCOMPARE(texts_of(device.operations()).filter(QStringLiteral("Background foil")).size(), 1);
}

void tst_editspline_layers::Paint_Spline_Aux_data() {
    QTest::addColumn<int>("num");
    QTest::addColumn<int>("i");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QStringList>("log");

    const QStringList ring = {QStringLiteral("pen #ff0000 1 solid square bevel"),
                              QStringLiteral("brush none"),
                              QStringLiteral("ellipse 50,60 radii 9 9")};
    const QStringList start = {QStringLiteral("pen #00ff00 3 dash square bevel")};
    const QStringList white = {QStringLiteral("brush #ffffff solid")};
    const QStringList leg = {QStringLiteral("pen #000000 cosmetic solid square bevel")};
    QTest::newRow("first-of-three")
        << 3 << 0 << -1
        << start + white + QStringList{QStringLiteral("ellipse 10,20 radii 5 5")} + leg +
               QStringList{QStringLiteral("line 10,20 30,40")};
    QTest::newRow("last-of-three")
        << 3 << 2 << -1 << start + white + QStringList{QStringLiteral("ellipse 50,60 radii 5 5")};
    QTest::newRow("only-one") << 1 << 0 << -1
                              << start + white +
                                     QStringList{QStringLiteral("ellipse 10,20 radii 5 5")};
    QTest::newRow("another-is-selected")
        << 3 << 1 << 2
        << ring + white + QStringList{QStringLiteral("ellipse 30,40 radii 5 5")} + leg +
               QStringList{QStringLiteral("line 30,40 50,60")};
    QTest::newRow("itself-is-selected")
        << 3 << 2 << 2 << ring + white + QStringList{QStringLiteral("ellipse 50,60 radii 5 5")};
}

void tst_editspline_layers::Paint_Spline_Aux() {
    QFETCH(int, num);
    QFETCH(int, i);
    QFETCH(int, selected);
    QFETCH(QStringList, log);

    QPointF points[] = {QPointF(10, 20), QPointF(30, 40), QPointF(50, 60)};
    RecordingPaintDevice device(usual_size);
    QPainter painter(&device);
    painter.setPen(QPen(QBrush(Qt::green), 3.0, Qt::DashLine));
    painter.setBrush(Qt::green);
    ::Paint_Spline_Aux(&painter, num, i, points, selected);
    QCOMPARE(device.log().mid(1), log);
    QCOMPARE(painter.brush().style(), Qt::NoBrush);
    QCOMPARE(pen_text(painter.pen()), pen_text(QPen(QBrush(Qt::black), 0)));
}

// The ring is drawn with every marker, and its pen outlines them all.
void tst_editspline_layers::markers_of_selection() {
    TestEditor editor;
    editor.set_settled_section();
    for (const int selected : {-1, 4}) {
        editor.pnt_selected = selected;
        int rings = 0;
        QStringList outlines;
        for (const PaintOperation& op : of_kind(editor.recorded(), PaintOperation::Ellipse)) {
            if (op.rect.width() == 18.0) {
                COMPARE_NEAR(op.centre().x(), editor.points().at(4).x(), 1e-9);
                COMPARE_NEAR(op.centre().y(), editor.points().at(4).y(), 1e-9);
                ++rings;
            }
            if (op.rect.width() == 10.0)
                outlines << pen_text(op.pen);
        }
        QCOMPARE(rings, selected < 0 ? 0 : 10);
        QStringList expected(10, pen_text(QPen(QBrush(Qt::red), 1.0)));
        if (selected < 0) {
            expected.fill(pen_text(QPen(QBrush(Qt::black), 0)));
            expected[0] = pen_text(QPen(QBrush(Qt::blue), 2.0));
        }
        QCOMPARE(outlines, expected);
    }
}

void tst_editspline_layers::curve_marks() {
    TestEditor editor;
    editor.set_settled_section();
    const QList<PaintOperation> all = editor.recorded();
    QPolygonF marks;
    for (const PaintOperation& op : of_kind(all, PaintOperation::Ellipse)) {
        if (op.rect.width() == 4.0) {
            marks << op.centre();
            QCOMPARE(op.brush.style(), Qt::NoBrush);
            QCOMPARE(pen_text(op.pen), pen_text(QPen(QBrush(Qt::black), 0)));
        }
    }
    QCOMPARE(marks.size(), 250);
    for (int i = 0; i < 250; ++i)
        COMPARE_NEAR(QLineF(marks.at(i), editor.spline_poly.at(4 * i)).length(), 0.0, 1e-9);
    QCOMPARE(all.last().kind, PaintOperation::Polyline);
    COMPARE_POLYGON_BITS(all.last().points, editor.spline_poly);
    QCOMPARE(all.last().brush.style(), Qt::NoBrush);
}

AEROLITH_TEST_MAIN(tst_editspline_layers)
#include "tst_editspline_layers.moc"
