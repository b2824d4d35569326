// SPDX-FileCopyrightText: Aerolith developers
// Transformations of the whole spline: the symmetric section, scaling, rotation,
// normalising, and pinning to the trailing edge.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QTest>

#include <climits>
#include <cmath>
#include <limits>

class tst_editspline_transform : public QObject {
    Q_OBJECT

private slots:
    void Generate_symetric_spline();
    void Generate_symetric_spline_any_size_data();
    void Generate_symetric_spline_any_size();
    void ScaleFoil_data();
    void ScaleFoil();
    void ScaleFoil_repaints();
    void RotateSpline_data();
    void RotateSpline();
    void RotateSpline_back();
    void RotateSpline_is_clockwise_on_screen();
    void Translate_Spline_data();
    void Translate_Spline();
    void AdjustSpline_TE_data();
    void AdjustSpline_TE();
    void Normalize_Spline_Poly_data();
    void Normalize_Spline_Poly();
    void Normalize_Spline_Poly_spans_the_chord();
    void curve_without_width_data();
    void curve_without_width();
    void one_point_anywhere_data();
    void one_point_anywhere();
    void counts_out_of_range_data();
    void counts_out_of_range();
};

namespace {

const double not_a_number = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

const QPolygonF arch = {QPointF(900, 380), QPointF(640, 300), QPointF(350.5, 290.25),
                        QPointF(120, 410), QPointF(380, 470), QPointF(905, 390)};

// A click on a rotation button, in radians.
const double quarter_degree = 0.5 * 3.141592653 / 360;

// Whether everything that no transformation may change is the same.
bool same_but_points(const SplineFoil& a, const SplineFoil& b) {
    bool same = a.num_pnt == b.num_pnt && a.num_knt == b.num_knt && a.degree == b.degree &&
                a.order == b.order && same_bits(a.startVent, b.startVent) &&
                same_bits(a.endVent, b.endVent) && same_bits(a.L_T_S, b.L_T_S);
    for (int i = 0; i < MAXNUMPOINTS; ++i)
        same = same && same_bits(a.rd_CP[i], b.rd_CP[i]);
    for (int i = 0; i < MAXNUMKNOTS; ++i)
        same = same && same_bits(a.b_knots[i], b.b_knots[i]);
    return same;
}

QPolygonF row_of_points(double x, double width, int count) {
    QPolygonF points;
    for (int i = 0; i < count; ++i)
        points << QPointF(x + width * i / (count - 1), 300 + 20 * i);
    return points;
}

} // namespace

void tst_editspline_transform::Generate_symetric_spline() {
    TestEditor editor;
    editor.spline_poly << QPointF(1, 2);
    editor.pnt_selected = 4;
    editor.set_points(arch);
    editor.Generate_symetric_spline();

    const SplineFoil& spline = editor.p->spline;
    QCOMPARE(spline.num_pnt, 10);
    COMPARE_BITS(spline.CP[0], QPointF(921, 383));
    COMPARE_BITS(spline.CP[9], QPointF(921, 383));
    COMPARE_NEAR(spline.CP[3].x(), 142.95, 1e-12);
    COMPARE_NEAR(spline.CP[3].y(), 448.52, 1e-12);
    QCOMPARE(spline.degree, 2);
    QCOMPARE(spline.order, 3);
    QCOMPARE(spline.num_knt, 13);
    for (int i = 0; i < 13; ++i) {
        COMPARE_BITS(spline.b_knots[i], i / 12.0);
        QCOMPARE(spline.b_multi_knot[i], 1);
    }
    QCOMPARE(editor.pnt_selected, -1);
    QVERIFY(editor.spline_poly.isEmpty());

    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    QVERIFY(paint_until_idle(editor));
    const int before = editor.paints;
    editor.Generate_symetric_spline();
    QCOMPARE(editor.paints, before);
}

void tst_editspline_transform::Generate_symetric_spline_any_size_data() {
    QTest::addColumn<QSize>("size");

    QTest::newRow("usual") << usual_size;
    QTest::newRow("minimum") << QSize(555, 400);
    QTest::newRow("large") << QSize(1920, 1080);
}

void tst_editspline_transform::Generate_symetric_spline_any_size() {
    QFETCH(QSize, size);

    TestEditor editor(size);
    editor.Generate_symetric_spline();
    COMPARE_POLYGON_BITS(editor.points(), model_symmetric(EditorModel(size)));
    // Mirrored about the chord line, and the lower side first.
    for (int i = 0; i < 10; ++i) {
        const QPointF lower = editor.points().at(i);
        const QPointF upper = editor.points().at(9 - i);
        COMPARE_BITS(lower.x(), upper.x());
        COMPARE_NEAR(lower.y() - editor.yc, editor.yc - upper.y(), 1e-12);
        QVERIFY(i > 4 || lower.y() >= editor.yc);
    }
}

void tst_editspline_transform::ScaleFoil_data() {
    QTest::addColumn<double>("k");
    QTest::addColumn<double>("above");
    QTest::addColumn<double>("result");

    QTest::newRow("thicker") << 1.0 << 100.0 << 102.0;
    QTest::newRow("thinner") << -1.0 << 100.0 << 98.0;
    QTest::newRow("thicker-below") << 1.0 << -50.0 << -51.0;
    QTest::newRow("on-the-chord-line") << 1.0 << 0.0 << 0.0;
    QTest::newRow("five-steps") << 5.0 << 100.0 << 110.0;
    QTest::newRow("flat") << -50.0 << 100.0 << 0.0;
}

void tst_editspline_transform::ScaleFoil() {
    QFETCH(double, k);
    QFETCH(double, above);
    QFETCH(double, result);

    TestEditor editor;
    const double y = editor.yc - above;
    editor.set_points({QPointF(900, 383), QPointF(500.25, y), QPointF(-3.5, y)});
    editor.ScaleFoil(k);
    QCOMPARE(editor.p->spline.num_pnt, 3);
    COMPARE_BITS(editor.p->spline.CP[0], QPointF(900, 383));
    for (int i = 1; i < 3; ++i) {
        COMPARE_BITS(editor.p->spline.CP[i].x(), i == 1 ? 500.25 : -3.5);
        COMPARE_BITS(editor.p->spline.CP[i].y(), 383 - (1 + 0.02 * k) * (383 - y));
        COMPARE_NEAR(383 - editor.p->spline.CP[i].y(), result, 1e-12);
    }
}

void tst_editspline_transform::ScaleFoil_repaints() {
    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    editor.set_settled_section();
    QVERIFY(paint_until_idle(editor));
    EditorModel model = editor.model();
    const int before = editor.paints;
    editor.ScaleFoil(1.0);
    QCOMPARE(editor.paints, before + 1);
    for (QPointF& point : model.spline.CP)
        point.setY(383 - 1.02 * (383 - point.y()));
    model.paint_log();
    COMPARE_POLYGON_BITS(editor.points(), model.points());
    COMPARE_POLYGON_BITS(editor.p->workAirfoil, model.work);
}

void tst_editspline_transform::RotateSpline_data() {
    QTest::addColumn<double>("angle");

    QTest::newRow("one-click") << quarter_degree;
    QTest::newRow("one-click-back") << -quarter_degree;
    QTest::newRow("right-angle") << 1.5707963267948966;
    QTest::newRow("none") << 0.0;
}

void tst_editspline_transform::RotateSpline() {
    QFETCH(double, angle);

    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    editor.set_settled_section();
    QVERIFY(paint_until_idle(editor));
    editor.set_points(arch);
    const QPolygonF curve = editor.spline_poly;
    const int before = editor.paints;
    editor.RotateSpline(angle);
    QCOMPARE(editor.paints, before);
    COMPARE_POLYGON_BITS(editor.spline_poly, curve);
    QPolygonF expected;
    for (const QPointF point : arch) {
        const double dx = point.x() - 921.0;
        const double dy = point.y() - 383.0;
        expected << QPointF(std::cos(angle) * dx - std::sin(angle) * dy + 921.0,
                            std::sin(angle) * dx + std::cos(angle) * dy + 383.0);
    }
    COMPARE_POLYGON_BITS(editor.points(), expected);
}

void tst_editspline_transform::RotateSpline_back() {
    TestEditor editor;
    editor.set_points(arch);
    editor.RotateSpline(quarter_degree);
    QVERIFY(std::abs(editor.points().at(3).y() - arch.at(3).y()) > 1.0);
    editor.RotateSpline(-quarter_degree);
    for (int i = 0; i < arch.size(); ++i) {
        COMPARE_NEAR(editor.points().at(i).x(), arch.at(i).x(), 1e-11);
        COMPARE_NEAR(editor.points().at(i).y(), arch.at(i).y(), 1e-11);
    }
}

void tst_editspline_transform::RotateSpline_is_clockwise_on_screen() {
    TestEditor editor;
    editor.set_points({editor.TE, QPointF(102, 383), editor.TE});
    editor.RotateSpline(1.5707963267948966);
    COMPARE_NEAR(editor.points().at(1).x(), 921.0, 1e-9);
    COMPARE_NEAR(editor.points().at(1).y(), 383.0 - 819.0, 1e-9);
    COMPARE_BITS(editor.points().at(0), editor.TE);
}

void tst_editspline_transform::Translate_Spline_data() {
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<QPolygonF>("moved");

    const QPointF TE(921, 383);
    QTest::newRow("none") << QPolygonF() << QPolygonF();
    QTest::newRow("one") << QPolygonF{QPointF(1, 2)} << QPolygonF{TE};
    QTest::newRow("two") << QPolygonF{QPointF(1, 2), QPointF(3, 4)} << QPolygonF{TE, TE};
    QTest::newRow("four") << QPolygonF{QPointF(1, 2), QPointF(3, 4), QPointF(5, 6), QPointF(7, 8)}
                          << QPolygonF{TE, QPointF(13.5, -16), QPointF(15.5, -14), TE};
}

void tst_editspline_transform::Translate_Spline() {
    QFETCH(QPolygonF, points);
    QFETCH(QPolygonF, moved);

    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    QVERIFY(paint_until_idle(editor));
    editor.set_points(points);
    const SplineFoil before = editor.p->spline;
    const int paints = editor.paints;
    editor.Translate_Spline(QPointF(10.5, -20));
    COMPARE_POLYGON_BITS(editor.points(), moved);
    QVERIFY(same_but_points(editor.p->spline, before));
    for (int i = int(points.size()); i < MAXNUMPOINTS; ++i)
        COMPARE_BITS(editor.p->spline.CP[i], before.CP[i]);
    QCOMPARE(editor.paints, paints);
    QVERIFY(editor.spline_poly.isEmpty());
}

void tst_editspline_transform::AdjustSpline_TE_data() {
    QTest::addColumn<QPointF>("off");
    QTest::addColumn<bool>("moves");

    QTest::newRow("on-the-trailing-edge") << QPointF(0, 0) << false;
    QTest::newRow("within") << QPointF(4e-6, -5e-6) << false;
    QTest::newRow("just-within") << QPointF(0, 9.99e-6) << false;
    QTest::newRow("sum-beyond") << QPointF(6e-6, -6e-6) << true;
    QTest::newRow("just-beyond") << QPointF(1.001e-5, 0) << true;
    QTest::newRow("far") << QPointF(-300, 200) << true;
}

void tst_editspline_transform::AdjustSpline_TE() {
    QFETCH(QPointF, off);
    QFETCH(bool, moves);

    TestEditor editor;
    QPolygonF points = arch;
    points[0] = editor.TE + off;
    editor.set_points(points);
    EditorModel model = editor.model();
    model.evaluate();
    editor.spline_poly = model.curve;
    editor.AdjustSpline_TE();
    if (moves) {
        model.adjust();
        QVERIFY(!same_bits(editor.points(), points));
    }
    COMPARE_POLYGON_BITS(editor.points(), moves ? model.points() : points);
    COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
}

void tst_editspline_transform::Normalize_Spline_Poly_data() {
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<QPolygonF>("curve");

    const QPolygonF wide = {QPointF(0, 0), QPointF(409.5, 3), QPointF(-409.5, 0)};
    QTest::newRow("no-points") << QPolygonF() << wide;
    QTest::newRow("known-factor") << arch << wide;
    QTest::newRow("doubled") << arch << QPolygonF{QPointF(100, 0), QPointF(509.5, 0)};
    QTest::newRow("empty-curve-mirrors") << arch << QPolygonF();
    QTest::newRow("width-of-a-micropixel")
        << arch << QPolygonF{QPointF(1.0, 0), QPointF(1.0 + 1.1e-6, 0)};
    QTest::newRow("below-a-micropixel")
        << arch << QPolygonF{QPointF(1.0, 0), QPointF(1.0 + 0.9e-6, 0)};
    QTest::newRow("all-beyond-the-bounds")
        << arch << QPolygonF{QPointF(12000, 0), QPointF(20000, 0)};
    QTest::newRow("all-before-the-bounds")
        << arch << QPolygonF{QPointF(-12000, 0), QPointF(-20000, 0)};
    QTest::newRow("one-sample") << arch << QPolygonF{QPointF(500, 0)};
    QTest::newRow("nan-samples") << arch
                                 << QPolygonF{QPointF(not_a_number, not_a_number),
                                              QPointF(not_a_number, 1)};
    QTest::newRow("some-nan-samples") << arch
                                      << QPolygonF{QPointF(not_a_number, 0), QPointF(100, 0),
                                                   QPointF(700, 0), QPointF(not_a_number, 0)};
    QTest::newRow("infinite-sample") << arch << QPolygonF{QPointF(100, 0), QPointF(infinity, 0)};
    QTest::newRow("infinite-samples")
        << arch << QPolygonF{QPointF(-infinity, 0), QPointF(infinity, 0)};
}

void tst_editspline_transform::Normalize_Spline_Poly() {
    QFETCH(QPolygonF, points);
    QFETCH(QPolygonF, curve);

    TestEditor editor;
    editor.set_points(points);
    editor.spline_poly = curve;
    EditorModel model = editor.model();
    editor.Normalize_Spline_Poly();
    model.normalise();
    COMPARE_POLYGON_BITS(editor.points(), model.points());
    COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
}

void tst_editspline_transform::Normalize_Spline_Poly_spans_the_chord() {
    TestEditor editor;
    editor.set_points(arch);
    editor.repaint_opened_spline();
    editor.Normalize_Spline_Poly();
    const QRectF extent = editor.spline_poly.boundingRect();
    COMPARE_NEAR(extent.width(), 819.0, 1e-10);
    const QPolygonF once = editor.points();
    editor.Normalize_Spline_Poly();
    for (int i = 0; i < once.size(); ++i)
        COMPARE_NEAR(QLineF(editor.points().at(i), once.at(i)).length(), 0.0, 1e-10);
}

void tst_editspline_transform::curve_without_width_data() {
    QTest::addColumn<QPolygonF>("points");

    QTest::newRow("one-point") << QPolygonF{QPointF(321.7, 456.1)};
    QTest::newRow("one-point-at-the-origin") << QPolygonF{QPointF(0, 0)};
    QTest::newRow("two-points-at-one-place") << QPolygonF{QPointF(0.1, 0.3), QPointF(0.1, 0.3)};
    QTest::newRow("two-points-at-one-x") << QPolygonF{QPointF(321.7, 456.1), QPointF(321.7, 100)};
    QTest::newRow("five-points-at-one-x") << row_of_points(777.7, 0.0, 5);
    QTest::newRow("thirty-points-at-one-x") << row_of_points(0.1, 0.0, 30);
    QTest::newRow("points-in-a-hair") << row_of_points(333.3, 1e-8, 7);
    QTest::newRow("points-not-finite")
        << QPolygonF{QPointF(not_a_number, 1), QPointF(not_a_number, 2)};
}

// Scaling noise up to the chord would throw the points off the picture.
void tst_editspline_transform::curve_without_width() {
    QFETCH(QPolygonF, points);

    TestEditor editor;
    editor.set_points(points);
    EditorModel model = editor.model();
    model.evaluate();
    editor.spline_poly = model.curve;
    editor.spline_poly[0].setY(-7.0);
    editor.Normalize_Spline_Poly();
    COMPARE_POLYGON_BITS(editor.points(), points);
    COMPARE_POLYGON_BITS(editor.spline_poly, model.curve);
}

void tst_editspline_transform::one_point_anywhere_data() {
    QTest::addColumn<int>("row");

    for (int row = 0; row < 16; ++row)
        QTest::addRow("row-%d", row * 48) << row * 48;
}

void tst_editspline_transform::one_point_anywhere() {
    QFETCH(int, row);

    TestEditor editor;
    for (int x = 0; x < 1024; x += 31) {
        editor.set_points({});
        editor.spline_poly.clear();
        editor.pnt_selected = -1;
        editor.Append_New_Point(QPoint(x, row));
        for (int frame = 0; frame < 3; ++frame) {
            editor.recorded();
            COMPARE_NEAR(editor.points().at(0).x(), 921.0, 1e-9);
            COMPARE_NEAR(editor.points().at(0).y(), 383.0, 1e-9);
        }
        QCOMPARE(editor.spline_poly.size(), 999);
        COMPARE_NEAR(editor.spline_poly.boundingRect().width(), 0.0, 1e-9);
    }
}

void tst_editspline_transform::counts_out_of_range_data() {
    QTest::addColumn<int>("num_pnt");
    QTest::addColumn<int>("num_knt");
    QTest::addColumn<int>("degree");

    QTest::newRow("least") << INT_MIN << INT_MIN << INT_MIN;
    QTest::newRow("negative") << -1 << -1 << -1;
    QTest::newRow("zero") << 0 << 0 << 0;
    QTest::newRow("one-more") << 31 << 34 << 2;
    QTest::newRow("as-many-as-knots") << 300 << 303 << 2;
    QTest::newRow("greatest") << INT_MAX << INT_MAX << INT_MAX;
    QTest::newRow("great-degree") << 10 << 13 << 1000000;
    QTest::newRow("great-knots") << 10 << INT_MAX << 2;
    QTest::newRow("degree-six") << 10 << 17 << 6;
}

void tst_editspline_transform::counts_out_of_range() {
    QFETCH(int, num_pnt);
    QFETCH(int, num_knt);
    QFETCH(int, degree);

    TestEditor editor;
    SplineFoil& spline = editor.p->spline;
    spline.num_pnt = num_pnt;
    spline.num_knt = num_knt;
    spline.degree = degree;
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        spline.CP[i] = QPointF(100 + 20 * i, 300 + i * i);
        spline.rd_CP[i] = QPointF(-i, i);
    }
    for (int i = 0; i < MAXNUMKNOTS; ++i)
        spline.b_knots[i] = i / 299.0;
    spline.startVent = 11.0;
    const SplineFoil before = spline;
    const int used = qBound(0, num_pnt, MAXNUMPOINTS);

    editor.Translate_Spline(QPointF(1, 1));
    COMPARE_BITS(spline.CP[0], used > 0 ? editor.TE : before.CP[0]);
    editor.RotateSpline(0.1);
    editor.ScaleFoil(1.0);
    editor.AdjustSpline_TE();
    editor.Normalize_Spline_Poly();
    editor.Normalize_Spline_Poly();
    editor.AdjustSpline_TE();
    QVERIFY(same_but_points(spline, before));
    for (int i = used; i < MAXNUMPOINTS; ++i)
        COMPARE_BITS(spline.CP[i], before.CP[i]);
    QCOMPARE(editor.spline_poly.size(), used > 0 && degree >= 0 && degree <= 5 ? 999 : 0);
    editor.Generate_symetric_spline();
    QCOMPARE(spline.num_pnt, 10);
    QCOMPARE(spline.num_knt, 13);
    QCOMPARE(spline.degree, 2);
}

AEROLITH_TEST_MAIN(tst_editspline_transform)
#include "tst_editspline_transform.moc"
