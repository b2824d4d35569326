// SPDX-FileCopyrightText: Aerolith developers
// Sharpening, the dispatch of menu entries by number, and the helper functions of the editor.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QVector2D>

#include <climits>

class tst_editspline_actions : public QObject {
    Q_OBJECT

private slots:
    void Toggle_Conic_Control_data();
    void Toggle_Conic_Control();
    void Toggle_Conic_Control_again();
    void Toggle_Conic_Control_undone_data();
    void Toggle_Conic_Control_undone();
    void Toggle_Conic_Control_pulls_the_curve();
    void Action_From_Menu_data();
    void Action_From_Menu();
    void Dist_Spline_Pnt_data();
    void Dist_Spline_Pnt();
    void Break_Question_data();
    void Break_Question();
};

namespace {

const QPolygonF six = {QPointF(921, 383), QPointF(640, 300), QPointF(350.5, 290.25),
                       QPointF(120, 410), QPointF(380, 470), QPointF(905, 390)};

} // namespace

void tst_editspline_actions::Toggle_Conic_Control_data() {
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("knots");
    QTest::addColumn<int>("degree");
    QTest::addColumn<bool>("sharpens");

    QTest::newRow("none") << -1 << 9 << 2 << false;
    QTest::newRow("first") << 0 << 9 << 2 << false;
    QTest::newRow("one-is-never-sharpened") << 1 << 9 << 2 << false;
    QTest::newRow("two") << 2 << 9 << 2 << true;
    QTest::newRow("last-inner") << 4 << 9 << 2 << true;
    QTest::newRow("last") << 5 << 9 << 2 << true;
    QTest::newRow("last-of-a-file-with-few-knots") << 4 << 6 << 2 << true;
    QTest::newRow("beyond-the-knots-of-a-file") << 5 << 6 << 2 << false;
    QTest::newRow("without-a-curve") << 4 << 9 << -1 << false;
}

void tst_editspline_actions::Toggle_Conic_Control() {
    QFETCH(int, selected);
    QFETCH(int, knots);
    QFETCH(int, degree);
    QFETCH(bool, sharpens);

    TestEditor editor;
    editor.set_points(six);
    editor.p->spline.num_knt = knots;
    editor.p->spline.degree = degree;
    editor.pnt_selected = selected;
    SplineFoil expected = editor.p->spline;
    if (sharpens)
        expected.b_knots[selected + 2] = (selected + 1) / 8.0 + 0.0001;
    editor.Toggle_Conic_Control();
    for (int i = 0; i < MAXNUMKNOTS; ++i) {
        COMPARE_BITS(editor.p->spline.b_knots[i], expected.b_knots[i]);
        QCOMPARE(editor.p->spline.b_multi_knot[i], expected.b_multi_knot[i]);
    }
    COMPARE_POLYGON_BITS(editor.points(), six);
    QCOMPARE(editor.pnt_selected, selected);
}

void tst_editspline_actions::Toggle_Conic_Control_again() {
    TestEditor editor;
    editor.set_points(six);
    editor.pnt_selected = 3;
    editor.Toggle_Conic_Control();
    const SplineFoil once = editor.p->spline;
    editor.Toggle_Conic_Control();
    for (int i = 0; i < MAXNUMKNOTS; ++i)
        COMPARE_BITS(editor.p->spline.b_knots[i], once.b_knots[i]);
}

void tst_editspline_actions::Toggle_Conic_Control_undone_data() {
    QTest::addColumn<QString>("edit");
    QTest::addColumn<bool>("undone");

    QTest::newRow("insertion") << QStringLiteral("insert") << true;
    QTest::newRow("removal") << QStringLiteral("remove") << true;
    QTest::newRow("append") << QStringLiteral("append") << true;
    QTest::newRow("nudge") << QStringLiteral("nudge") << false;
}

void tst_editspline_actions::Toggle_Conic_Control_undone() {
    QFETCH(QString, edit);
    QFETCH(bool, undone);

    TestEditor editor;
    editor.set_points(six);
    editor.pnt_selected = 3;
    editor.Toggle_Conic_Control();
    QVERIFY(!knot_difference(editor.p->spline).isEmpty());
    if (edit == QStringLiteral("insert")) {
        editor.New_Point_Insert(QPoint(1, 2));
    } else if (edit == QStringLiteral("remove")) {
        editor.Remove_Point();
    } else if (edit == QStringLiteral("append")) {
        editor.pnt_selected = -1;
        editor.Append_New_Point(QPoint(1, 2));
    } else {
        editor.MovePoint(1, 1);
    }
    QCOMPARE(knot_difference(editor.p->spline).isEmpty(), undone);
}

void tst_editspline_actions::Toggle_Conic_Control_pulls_the_curve() {
    TestEditor editor;
    editor.set_points(six);
    editor.repaint_opened_spline();
    const QVector2D corner(six.at(3));
    const double before = ::Dist_Spline_Pnt(editor.spline_poly, corner);
    editor.pnt_selected = 3;
    editor.Toggle_Conic_Control();
    editor.repaint_opened_spline();
    const double after = ::Dist_Spline_Pnt(editor.spline_poly, corner);
    QVERIFY2(before > 20.0 && after < 1.0,
             qPrintable(QStringLiteral("%1 %2").arg(before).arg(after)));
}

void tst_editspline_actions::Action_From_Menu_data() {
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("count");

    QTest::newRow("upper-separator") << 0 << 3 << 6;
    QTest::newRow("normalize") << 1 << 3 << 6;
    QTest::newRow("append") << 2 << -1 << 7;
    QTest::newRow("append-with-selection") << 2 << 3 << 6;
    QTest::newRow("insert") << 3 << 3 << 7;
    QTest::newRow("remove") << 4 << 3 << 5;
    QTest::newRow("lower-separator") << 5 << 3 << 6;
    QTest::newRow("sharpen") << 6 << 3 << 6;
    QTest::newRow("seven") << 7 << 3 << 6;
    QTest::newRow("negative") << -1 << 3 << 6;
    QTest::newRow("least") << INT_MIN << 3 << 6;
    QTest::newRow("greatest") << INT_MAX << 3 << 6;
}

void tst_editspline_actions::Action_From_Menu() {
    QFETCH(int, entry);
    QFETCH(int, selected);
    QFETCH(int, count);

    TestEditor editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    QVERIFY(paint_until_idle(editor));
    editor.set_points(six);
    editor.spline_poly = {QPointF(100, 0), QPointF(509.5, 0)};
    editor.pnt_selected = selected;
    editor.lastPos = QPoint(200, 300);
    const int paints = editor.paints;
    editor.Action_From_Menu(QPoint(10, 20), entry);
    QCOMPARE(editor.paints, paints);

    const QPolygonF points = editor.points();
    QCOMPARE(points.size(), count);
    QPolygonF expected = six;
    if (entry == 1) {
        for (QPointF& point : expected)
            point *= 2.0;
    } else if (entry == 2 && selected < 0) {
        expected << QPointF(10, 20);
    } else if (entry == 3) {
        expected.insert(4, QPointF(290, 385));
    } else if (entry == 4) {
        expected.remove(3);
    }
    COMPARE_POLYGON_BITS(points, expected);
    QCOMPARE(knot_difference(editor.p->spline).isEmpty(), entry != 6);
    QCOMPARE(editor.spline_poly.size(), entry == 1 ? 999 : entry == 4 ? 0 : 2);
}

void tst_editspline_actions::Dist_Spline_Pnt_data() {
    QTest::addColumn<QPolygonF>("polygon");
    QTest::addColumn<QVector2D>("point");
    QTest::addColumn<double>("distance");

    QTest::newRow("empty") << QPolygonF() << QVector2D(1, 2) << 1e18;
    QTest::newRow("one-vertex") << QPolygonF{QPointF(3, 4)} << QVector2D(0, 0) << 5.0;
    QTest::newRow("on-a-vertex") << six << QVector2D(120, 410) << 0.0;
    QTest::newRow("least-of-several")
        << QPolygonF{QPointF(100, 0), QPointF(0, 6), QPointF(50, 50)} << QVector2D(8, 0) << 10.0;
    QTest::newRow("vertices-only")
        << QPolygonF{QPointF(-10, 0), QPointF(10, 0)} << QVector2D(0, 0) << 10.0;
    QTest::newRow("single-precision-point")
        << QPolygonF{QPointF(0, 0)} << QVector2D(0.1F, 0) << double(0.1F);
    QTest::newRow("farther-than-the-start")
        << QPolygonF{QPointF(2e18, 0)} << QVector2D(0, 0) << 1e18;
}

void tst_editspline_actions::Dist_Spline_Pnt() {
    QFETCH(QPolygonF, polygon);
    QFETCH(QVector2D, point);
    QFETCH(double, distance);
    COMPARE_ULP(::Dist_Spline_Pnt(polygon, point), distance, 1);
}

void tst_editspline_actions::Break_Question_data() {
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("result");

    QTest::newRow("ok") << QStringLiteral("ok") << 1;
    QTest::newRow("cancel") << QStringLiteral("cancel") << 0;
    QTest::newRow("escape") << QStringLiteral("escape") << 0;
    QTest::newRow("return-takes-the-default") << QStringLiteral("return") << 0;
    QTest::newRow("closed") << QStringLiteral("close") << 0;
}

void tst_editspline_actions::Break_Question() {
    QFETCH(QString, answer);
    QFETCH(int, result);

    const ModalGuard guard({[answer](QWidget* window) {
        auto* box = qobject_cast<QMessageBox*>(window);
        QVERIFY(box);
        QCOMPARE(box->parent(), nullptr);
        QCOMPARE(box->text(), QStringLiteral("Stop <b>now</b>?"));
        QCOMPARE(box->informativeText(), QStringLiteral("%1 points"));
        QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
        QCOMPARE(box->defaultButton(), box->button(QMessageBox::Cancel));
        QCOMPARE(box->textFormat(), Qt::PlainText);
        if (answer == QStringLiteral("ok"))
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        else if (answer == QStringLiteral("cancel"))
            QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
        else if (answer == QStringLiteral("escape"))
            QTest::keyClick(box, Qt::Key_Escape);
        else if (answer == QStringLiteral("return"))
            QTest::keyClick(box, Qt::Key_Return);
        else
            box->close();
    }});
    QCOMPARE(::Break_Question(QStringLiteral("Stop <b>now</b>?"), QStringLiteral("%1 points")),
             result);
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.forced(), 0);
}

AEROLITH_TEST_MAIN(tst_editspline_actions)
#include "tst_editspline_actions.moc"
