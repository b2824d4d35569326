// SPDX-FileCopyrightText: Aerolith developers
// The tool buttons of the main window.
#include "app/mainwindow.h"
#include "editor/editspline.h"
#include "numerics/transform.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <cmath>

class tst_windowbuttons : public QObject {
    Q_OBJECT

private slots:
    void init();
    void press_and_release_data();
    void press_and_release();
    void release_outside_is_no_click();
    void shows_at_once_data();
    void shows_at_once();
    void scale_steps_data();
    void scale_steps();
    void eight_rotations_are_two_degrees_data();
    void eight_rotations_are_two_degrees();
    void one_rotation_to_the_last_bit();
    void rotations_cancel();
    void symmetric_section();
    void refresh_knots_data();
    void refresh_knots();
    void refresh_knots_keeps_the_selection();
};

namespace {

/// Section points of the button "S", chord units with y downwards.
const QPointF symmetric_points[10] = {{1.0, 0.0},    {0.7, 0.025}, {0.3, 0.07},   {0.05, 0.08},
                                      {0.0, 0.01},   {0.0, -0.01}, {0.05, -0.08}, {0.3, -0.07},
                                      {0.7, -0.025}, {1.0, 0.0}};

QList<QPointF> control_points(const MainWindow& window) {
    QList<QPointF> points;
    for (int i = 0; i < window.p->spline.num_pnt; ++i)
        points.append(window.p->spline.CP[i]);
    return points;
}

/// Greatest distance between two points of the same index, pixels.
double distance(const QList<QPointF>& a, const QList<QPointF>& b) {
    if (a.size() != b.size())
        return 1e9;
    double farthest = 0.0;
    for (int i = 0; i < a.size(); ++i) {
        const QPointF d = a.at(i) - b.at(i);
        farthest = std::max(farthest, std::hypot(d.x(), d.y()));
    }
    return farthest;
}

/// Angle of the leg from control point @p from to @p to, radians, clockwise on screen.
double leg_angle(const MainWindow& window, int from, int to) {
    const QPointF d = window.p->spline.CP[to] - window.p->spline.CP[from];
    return std::atan2(d.y(), d.x());
}

} // namespace

void tst_windowbuttons::init() {
    renew_document();
}

void tst_windowbuttons::press_and_release_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("on_press");

    QTest::newRow("plus") << QStringLiteral("plusButton") << true;
    QTest::newRow("minus") << QStringLiteral("minusButton") << true;
    QTest::newRow("rotate-clockwise") << QStringLiteral("rotplusButton") << false;
    QTest::newRow("rotate-back") << QStringLiteral("rotminusButton") << false;
    QTest::newRow("symmetric") << QStringLiteral("symetriclButton") << false;
}

void tst_windowbuttons::press_and_release() {
    QFETCH(QString, button);
    QFETCH(bool, on_press);

    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    window.p->spline.CP[3] += QPointF(3.0, 5.0);
    settle(window);
    auto* widget = window.findChild<QToolButton*>(button);
    const QList<QPointF> before = control_points(window);

    QTest::mousePress(widget, Qt::LeftButton);
    const QList<QPointF> pressed = control_points(window);
    QCOMPARE(distance(pressed, before) > 0.1, on_press);
    settle(window);
    const QList<QPointF> settled = control_points(window);
    QTest::mouseRelease(widget, Qt::LeftButton);
    QCOMPARE(distance(control_points(window), settled) > 0.1, !on_press);
}

void tst_windowbuttons::release_outside_is_no_click() {
    MainWindow window;
    SHOW(window);
    for (QToolButton* button :
         {window.rotplusButton, window.rotminusButton, window.symetriclButton}) {
        QTest::mousePress(button, Qt::LeftButton);
        QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(-30, -30));
        QCOMPARE(window.p->spline.num_pnt, 0);
    }
}

void tst_windowbuttons::shows_at_once_data() {
    QTest::addColumn<QString>("button");

    for (const char* button : {"plusButton", "minusButton", "rotplusButton", "rotminusButton",
                               "symetriclButton", "refreshButton"})
        QTest::newRow(button) << QString::fromLatin1(button);
}

void tst_windowbuttons::shows_at_once() {
    QFETCH(QString, button);

    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    QCoreApplication::processEvents();
    const PaintCount paints(window.spline_widget);
    QTest::mouseClick(window.findChild<QToolButton*>(button), Qt::LeftButton);
    QCOMPARE(paints.whole(), 1);
}

void tst_windowbuttons::scale_steps_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("presses");
    QTest::addColumn<double>("factor");

    QTest::newRow("thicker") << QStringLiteral("plusButton") << 1 << 1.02;
    QTest::newRow("thinner") << QStringLiteral("minusButton") << 1 << 0.98;
    QTest::newRow("three-times-thicker") << QStringLiteral("plusButton") << 3 << 1.02 * 1.02 * 1.02;
}

void tst_windowbuttons::scale_steps() {
    QFETCH(QString, button);
    QFETCH(int, presses);
    QFETCH(double, factor);

    MainWindow window;
    SHOW(window);
    QTest::mouseClick(window.symetriclButton, Qt::LeftButton);
    settle(window);
    const QList<QPointF> before = control_points(window);
    for (int i = 0; i < presses; ++i)
        QTest::mouseClick(window.findChild<QToolButton*>(button), Qt::LeftButton);
    settle(window);
    const double axis = window.spline_widget->yc;
    const QList<QPointF> after = control_points(window);
    QCOMPARE(after.size(), 10);
    for (int i = 0; i < 10; ++i) {
        COMPARE_NEAR(after.at(i).x(), before.at(i).x(), 1e-6);
        COMPARE_NEAR(axis - after.at(i).y(), factor * (axis - before.at(i).y()), 1e-6);
    }
}

void tst_windowbuttons::eight_rotations_are_two_degrees_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<double>("angle");

    // The step is computed from pi with nine decimals; 1e-12 distinguishes it from a more accurate
    // one.
    const double two_degrees = 4.0 * 3.141592653 / 360.0;
    QTest::newRow("clockwise") << QStringLiteral("rotplusButton") << two_degrees;
    QTest::newRow("counter-clockwise") << QStringLiteral("rotminusButton") << -two_degrees;
}

void tst_windowbuttons::eight_rotations_are_two_degrees() {
    QFETCH(QString, button);
    QFETCH(double, angle);

    MainWindow window;
    SHOW(window);
    QTest::mouseClick(window.symetriclButton, Qt::LeftButton);
    settle(window);
    QList<double> before;
    for (int i = 0; i < 9; ++i)
        before.append(leg_angle(window, i, i + 1));
    for (int clicks = 0; clicks < 8; ++clicks)
        QTest::mouseClick(window.findChild<QToolButton*>(button), Qt::LeftButton);
    for (int i = 0; i < 9; ++i) {
        const double turned =
            std::remainder(leg_angle(window, i, i + 1) - before.at(i), 2.0 * 3.14159265358979324);
        COMPARE_NEAR(turned, angle, 1e-12);
    }
    settle(window);
    COMPARE_NEAR(window.p->spline.CP[0].x(), window.spline_widget->TE.x(), 1e-4);
    COMPARE_NEAR(window.p->spline.CP[0].y(), window.spline_widget->TE.y(), 1e-4);
}

void tst_windowbuttons::one_rotation_to_the_last_bit() {
    // A hidden window is not painted, so the points stay as the button leaves them.
    MainWindow window;
    window.p->spline = distinct_spline();
    const QList<QPointF> before = control_points(window);
    const QPointF center = window.spline_widget->TE;
    for (const double sign : {1.0, -1.0}) {
        (sign > 0.0 ? window.rotplusButton : window.rotminusButton)->click();
        const double angle = sign * 0.5 * 3.141592653 / 360.0;
        for (int i = 0; i < before.size(); ++i) {
            COMPARE_BITS(window.p->spline.CP[i], RotFixP(angle, center, before.at(i)));
            window.p->spline.CP[i] = before.at(i);
        }
    }
}

void tst_windowbuttons::rotations_cancel() {
    MainWindow window;
    SHOW(window);
    QTest::mouseClick(window.symetriclButton, Qt::LeftButton);
    settle(window);
    const QList<QPointF> before = control_points(window);
    QTest::mouseClick(window.rotplusButton, Qt::LeftButton);
    settle(window);
    QVERIFY(distance(control_points(window), before) > 1.0);
    QTest::mouseClick(window.rotminusButton, Qt::LeftButton);
    settle(window);
    QVERIFY(distance(control_points(window), before) < 1e-6);
}

void tst_windowbuttons::symmetric_section() {
    MainWindow hidden;
    hidden.p->spline = distinct_spline();
    hidden.spline_widget->pnt_selected = 2;
    hidden.symetriclButton->click();
    QCOMPARE(hidden.p->spline.num_pnt, 10);
    QCOMPARE(hidden.p->spline.num_knt, 13);
    QCOMPARE(hidden.spline_widget->pnt_selected, -1);
    const EditSpline& editor = *hidden.spline_widget;
    for (int i = 0; i < 10; ++i) {
        const QPointF expected(editor.xc + symmetric_points[i].x() * editor.L_T,
                               editor.yc + symmetric_points[i].y() * editor.L_T);
        COMPARE_BITS(hidden.p->spline.CP[i], expected);
    }

    MainWindow window;
    SHOW(window);
    const PaintCount paints(window.spline_widget);
    window.symetriclButton->click();
    QVERIFY(paints.whole() > 0);
    QCOMPARE(window.spline_widget->spline_poly.size(), 999);
    QCOMPARE(window.p->workAirfoil.size(), 999);
}

void tst_windowbuttons::refresh_knots_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("knots");

    QTest::newRow("none") << 0 << 3;
    QTest::newRow("one") << 1 << 4;
    QTest::newRow("five") << 5 << 8;
    QTest::newRow("full") << 30 << 33;
}

void tst_windowbuttons::refresh_knots() {
    QFETCH(int, points);
    QFETCH(int, knots);

    MainWindow window;
    SHOW(window);
    window.p->spline = distinct_spline();
    window.p->spline.num_pnt = points;
    window.p->spline.num_knt = 77;
    window.p->spline.degree = 1;
    window.p->spline.order = 9;
    const PaintCount paints(window.spline_widget);
    QTest::mousePress(window.refreshButton, Qt::LeftButton);
    QCOMPARE(window.p->spline.num_knt, 77);
    const int paints_before = paints.whole();
    QTest::mouseRelease(window.refreshButton, Qt::LeftButton);
    QVERIFY(paints.whole() > paints_before);
    QCOMPARE(window.p->spline.num_pnt, points);
    QCOMPARE(window.p->spline.num_knt, knots);
    QCOMPARE(window.p->spline.degree, 2);
    QCOMPARE(window.p->spline.order, 3);
    for (int i = 0; i < knots; ++i) {
        COMPARE_BITS(window.p->spline.b_knots[i], double(i) / double(knots - 1));
        QCOMPARE(window.p->spline.b_multi_knot[i], 1);
    }
}

void tst_windowbuttons::refresh_knots_keeps_the_selection() {
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    const auto place = [&window] { return window.p->spline.CP[2]; };
    QTest::mouseClick(window.spline_widget, Qt::LeftButton, {}, place().toPoint());
    QTest::mouseClick(window.refreshButton, Qt::LeftButton);
    const QPointF before = place();
    window.spline_widget->setFocus();
    QTest::keyClick(window.spline_widget, Qt::Key_Up);
    COMPARE_NEAR(place().y(), before.y() - 1.0, 1e-9);
}

AEROLITH_TEST_MAIN(tst_windowbuttons)
#include "tst_windowbuttons.moc"
