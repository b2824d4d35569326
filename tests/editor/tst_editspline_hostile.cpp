// SPDX-FileCopyrightText: Aerolith developers
// Records that a file may hold and sizes that a window may have: frames take bounded work and draw
// nothing out of bounds, and edits stay inside the arrays.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QPainter>
#include <QTest>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>

class tst_editspline_hostile : public QObject {
    Q_OBJECT

private slots:
    void records_data();
    void records();
    void good_part_is_drawn_data();
    void good_part_is_drawn();
    void repeated_knots_data();
    void repeated_knots();
    void selections_data();
    void selections();
    void sizes_data();
    void sizes();
};

namespace {

const double not_a_number = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

// No frame without a template has more operations than this: the grid (170), three for each point,
// 250 marks, and the curve in at most as many pieces as samples.
constexpr int most_operations = 170 + 3 * 30 + 250 + 999;

using Filler = std::function<double(int)>;

const QList<std::pair<QString, Filler>> knot_fillings = {
    {QStringLiteral("uniform"), [](int i) { return i / 12.0; }},
    {QStringLiteral("zeros"), [](int) { return 0.0; }},
    {QStringLiteral("ones"), [](int) { return 1.0; }},
    {QStringLiteral("pairs"), [](int i) { return i / 2 / 8.0; }},
    {QStringLiteral("clamped"), [](int i) { return i < 3    ? 0.0
                                                   : i < 10 ? (i - 2) / 8.0
                                                            : 1.0; }},
    {QStringLiteral("decreasing"), [](int i) { return 1.0 - i / 12.0; }},
    {QStringLiteral("zigzag"), [](int i) { return i % 2 == 0 ? 0.0 : 1.0; }},
    {QStringLiteral("nan"), [](int) { return not_a_number; }},
    {QStringLiteral("some-nan"), [](int i) { return i == 5 ? not_a_number : i / 12.0; }},
    {QStringLiteral("infinite"), [](int i) { return i < 6 ? -infinity : infinity; }},
    {QStringLiteral("1e308"), [](int i) { return (i - 6) * 1e307; }},
    {QStringLiteral("tiny-steps"), [](int i) { return 0.5 + i * 1e-320; }},
    {QStringLiteral("beyond-the-range"), [](int i) { return 2.0 + i; }},
};

const QList<std::pair<QString, Filler>> point_fillings = {
    {QStringLiteral("ordinary"), [](int i) { return 900.0 - 97.0 * (i % 9); }},
    {QStringLiteral("nan"), [](int) { return not_a_number; }},
    {QStringLiteral("some-nan"), [](int i) { return i % 4 == 2 ? not_a_number : 80.0 * i; }},
    {QStringLiteral("first-nan"), [](int i) { return i == 0 ? not_a_number : 80.0 * i; }},
    {QStringLiteral("infinite"), [](int i) { return i % 2 == 0 ? infinity : -infinity; }},
    {QStringLiteral("1e300"), [](int i) { return (i % 2 == 0 ? 1e300 : -1e300) * (i + 1); }},
    {QStringLiteral("1e308-among-ordinary"), [](int i) { return i == 3 ? 1e308 : 60.0 * i; }},
    {QStringLiteral("beyond-a-million"), [](int i) { return i * 300001.0; }},
    {QStringLiteral("denormal"), [](int i) { return i * 5e-324; }},
};

void fill(SplineFoil& spline, const Filler& knots, const Filler& points) {
    for (int i = 0; i < MAXNUMKNOTS; ++i)
        spline.b_knots[i] = knots(i);
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        spline.CP[i] = QPointF(points(i), points(i) * 0.5);
        spline.rd_CP[i] = QPointF(i, -i);
    }
}

// Whether the members after the points in the record are intact.
bool intact(const SplineFoil& spline) {
    bool same = same_bits(spline.startVent, 11.0) && same_bits(spline.endVent, 22.0) &&
                same_bits(spline.L_T_S, 33.0);
    for (int i = 0; i < MAXNUMPOINTS; ++i)
        same = same && same_bits(spline.rd_CP[i], QPointF(i, -i));
    return same;
}

void edit(TestEditor& editor, int which) {
    editor.lastPos = QPoint(200, 100);
    switch (which) {
    case 0:
        editor.pnt_selected = editor.SelectPoint();
        break;
    case 1:
        editor.MovePoint(3, -4);
        break;
    case 2:
        editor.New_Point_Insert(QPoint(5, 6));
        break;
    case 3:
        editor.Append_New_Point(QPoint(5, 6));
        break;
    case 4:
        editor.Remove_Point();
        break;
    case 5:
        editor.Toggle_Conic_Control();
        break;
    case 6:
        editor.Normalize_Spline_Poly();
        break;
    case 7:
        editor.ScaleFoil(-1.0);
        break;
    case 8:
        editor.RotateSpline(0.125);
        break;
    case 9:
        editor.Translate_Spline(QPointF(7, 8));
        break;
    case 10:
        editor.AdjustSpline_TE();
        break;
    default:
        editor.Generate_symetric_spline();
        break;
    }
}

constexpr int edits = 12;

bool drawable(QPointF point) {
    return std::abs(point.x()) <= 1e6 && std::abs(point.y()) <= 1e6;
}

} // namespace

void tst_editspline_hostile::records_data() {
    QTest::addColumn<int>("knots");
    QTest::addColumn<int>("points");

    for (int knots = 0; knots < knot_fillings.size(); ++knots) {
        for (int points = 0; points < point_fillings.size(); ++points)
            QTest::newRow(qPrintable(QStringLiteral("knots-") + knot_fillings.at(knots).first +
                                     QStringLiteral("-points-") + point_fillings.at(points).first))
                << knots << points;
    }
}

void tst_editspline_hostile::records() {
    QFETCH(int, knots);
    QFETCH(int, points);

    struct Counts {
        int num_pnt;
        int num_knt;
        int degree;
    };
    const Counts records[] = {{INT_MIN, INT_MIN, INT_MIN},
                              {-1, -1, -1},
                              {0, 3, 2},
                              {1, 4, 2},
                              {2, 5, 0},
                              {3, INT_MAX, 1},
                              {10, 13, 2},
                              {10, 16, 5},
                              {30, 33, 2},
                              {30, -1, 6},
                              {31, 34, 2},
                              {INT_MAX, INT_MAX, INT_MAX},
                              {30, 33, INT_MAX}};
    int turn = knots + points;
    for (const auto& [num_pnt, num_knt, degree] : records) {
        TestEditor editor(QSize(700, 500));
        SplineFoil& spline = editor.p->spline;
        fill(spline, knot_fillings.at(knots).second, point_fillings.at(points).second);
        spline.startVent = 11.0;
        spline.endVent = 22.0;
        spline.L_T_S = 33.0;
        spline.num_pnt = num_pnt;
        spline.num_knt = num_knt;
        spline.degree = degree;
        editor.pnt_selected = turn % 5 - 1;
        editor.mousepressed = turn % 2 == 0;
        for (int frame = 0; frame < 2; ++frame) {
            RecordingPaintDevice device(editor.size());
            editor.render(&device, {}, {}, QWidget::DrawChildren);
            QCOMPARE(device.out_of_bounds(), QStringList());
            QVERIFY2(device.operations().size() <= most_operations,
                     qPrintable(QString::number(device.operations().size())));
            QVERIFY(intact(spline));
            if (frame == 0) {
                QCOMPARE(spline.num_pnt, num_pnt);
                QCOMPARE(spline.num_knt, num_knt);
                QCOMPARE(spline.degree, degree);
                QVERIFY(editor.spline_poly.size() <= 999);
            }
            edit(editor, turn++ % edits);
        }
    }
}

void tst_editspline_hostile::good_part_is_drawn_data() {
    QTest::addColumn<QPointF>("bad");
    QTest::addColumn<bool>("curve");

    // Every sample is a sum over all points, and 0 * NaN is NaN.
    QTest::newRow("nan") << QPointF(not_a_number, not_a_number) << false;
    QTest::newRow("nan-height") << QPointF(400, not_a_number) << false;
    QTest::newRow("infinite-height") << QPointF(400, infinity) << false;
    QTest::newRow("1e300-height") << QPointF(400, -1e300) << true;
    QTest::newRow("two-million-height") << QPointF(400, 2e6) << true;
}

// One bad control point removes its part of the picture, but not the rest.
void tst_editspline_hostile::good_part_is_drawn() {
    QFETCH(QPointF, bad);
    QFETCH(bool, curve);

    TestEditor editor;
    editor.set_settled_section();
    editor.p->spline.CP[5] = bad;
    const QList<PaintOperation> all = editor.recorded();
    QPolygonF marks;
    QPolygonF markers;
    for (const PaintOperation& op : of_kind(all, PaintOperation::Ellipse)) {
        if (op.rect.width() == 4.0)
            marks << op.centre();
        if (op.rect.width() == 10.0)
            markers << op.centre();
    }
    QPolygonF good_samples;
    QPolygonF good_marks;
    for (int j = 0; j < editor.spline_poly.size(); ++j) {
        const QPointF sample = editor.spline_poly.at(j);
        if (drawable(sample))
            good_samples << sample;
        if (j % 4 == 0 && drawable(sample))
            good_marks << sample;
    }
    QVERIFY(good_marks.size() < 250);
    QCOMPARE(good_marks.size() > 100, curve);
    QCOMPARE(marks.size(), good_marks.size());
    for (int i = 0; i < marks.size(); ++i)
        COMPARE_NEAR(QLineF(marks.at(i), good_marks.at(i)).length(), 0.0, 1e-6);
    QCOMPARE(markers.size(), 9);
    // Two legs end at the bad point.
    int legs = 0;
    for (const PaintOperation& op : of_kind(all, PaintOperation::Line)) {
        for (int i = 0; i + 1 < 10 && op.pen.color() == QColor(Qt::black); ++i)
            legs += op.points.at(0) == editor.points().at(i) ? 1 : 0;
    }
    QCOMPARE(legs, 7);
    QPolygonF drawn;
    for (const PaintOperation& op : of_kind(all, PaintOperation::Polyline))
        drawn += op.points;
    QVERIFY(drawn.size() >= good_samples.size() - 2 && drawn.size() <= good_samples.size());
    for (const QPointF point : std::as_const(drawn))
        QVERIFY(good_samples.contains(point));
}

void tst_editspline_hostile::repeated_knots_data() {
    QTest::addColumn<QList<double>>("knots");

    QTest::newRow("clamped") << QList<double>{0, 0, 0, 0.25, 0.5, 0.75, 1, 1, 1};
    QTest::newRow("double-inner") << QList<double>{0, 0.125, 0.25, 0.5, 0.5, 0.75, 0.875, 0.9, 1};
    QTest::newRow("triple-inner") << QList<double>{0, 0.125, 0.5, 0.5, 0.5, 0.75, 0.875, 0.9, 1};
    QTest::newRow("clamped-without-inner") << QList<double>{0, 0, 0, 0, 0.5, 1, 1, 1, 1};
}

void tst_editspline_hostile::repeated_knots() {
    QFETCH(QList<double>, knots);

    const QPolygonF six = {QPointF(921, 383), QPointF(640, 300), QPointF(350.5, 290.25),
                           QPointF(120, 410), QPointF(380, 470), QPointF(905, 390)};
    TestEditor editor;
    editor.set_points(six);
    std::copy(knots.begin(), knots.end(), editor.p->spline.b_knots);
    for (int frame = 0; frame < 3; ++frame) {
        EditorModel model = editor.model();
        const QStringList expected = model.paint_log();
        const QString drawn = first_log_difference(paint_log(editor.recorded()), expected);
        QVERIFY2(drawn.isEmpty(), qPrintable(drawn));
        COMPARE_POLYGON_BITS(editor.points(), model.points());
        COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
        for (const QPointF sample : std::as_const(editor.spline_poly))
            QVERIFY(drawable(sample));
    }
}

void tst_editspline_hostile::selections_data() {
    QTest::addColumn<int>("selected");

    QTest::newRow("least") << INT_MIN;
    QTest::newRow("minus-two") << -2;
    QTest::newRow("count") << 10;
    QTest::newRow("capacity") << 30;
    QTest::newRow("greatest") << INT_MAX;
}

void tst_editspline_hostile::selections() {
    QFETCH(int, selected);

    TestEditor editor;
    editor.set_settled_section();
    editor.mousepressed = true;
    const QStringList expected = paint_log(editor.recorded());
    editor.pnt_selected = selected;
    const QString drawn = first_log_difference(paint_log(editor.recorded()), expected);
    QVERIFY2(drawn.isEmpty(), qPrintable(drawn));
    for (int which = 1; which < edits - 1; ++which) {
        editor.pnt_selected = selected;
        edit(editor, which);
        QVERIFY(editor.p->spline.num_pnt == 10 || (which >= 3 && editor.p->spline.num_pnt == 11));
    }
}

void tst_editspline_hostile::sizes_data() {
    QTest::addColumn<QSize>("size");

    for (const int width : {0, 1, 2, 5, 10, 11, 100, 16384}) {
        for (const int height : {0, 1, 5, 600, 16384})
            QTest::addRow("%dx%d", width, height) << QSize(width, height);
    }
}

void tst_editspline_hostile::sizes() {
    QFETCH(QSize, size);

    for (const bool captured : {true, false}) {
        TestEditor editor(captured ? size : usual_size);
        editor.p->baseAirfoil = sample_template(100);
        editor.resize(size);
        editor.Generate_symetric_spline();
        for (int frame = 0; frame < 3; ++frame) {
            RecordingPaintDevice device(size);
            editor.render(&device, {}, {}, QWidget::DrawChildren);
            QVERIFY(device.operations().size() <= most_operations + 101);
            for (const PaintOperation& op : device.operations())
                QVERIFY(std::isfinite(op.rect.x()) && std::isfinite(op.rect.width()));
            // The layers one by one, even where there is nothing to render on.
            QPainter painter(&device);
            editor.Coor_System(&painter);
            editor.Paint_BackgroundPoly(&painter);
            editor.Paint_Spline(&painter);
            painter.end();
            QVERIFY(device.operations().size() <= 2 * (most_operations + 101));
            edit(editor, frame);
        }
        if (!captured)
            continue;
        RecordingPaintDevice device(size);
        QPainter painter(&device);
        editor.Coor_System(&painter);
        painter.end();
        const bool ticks = editor.L_T > 0;
        int verticals = 0;
        for (const PaintOperation& op : device.operations(PaintOperation::Text))
            verticals += op.position.y() == editor.yc ? 1 : 0;
        QVERIFY(ticks ? verticals >= 11 : device.operations().size() == 4);
    }
}

AEROLITH_TEST_MAIN(tst_editspline_hostile)
#include "tst_editspline_hostile.moc"
