// SPDX-FileCopyrightText: Aerolith developers
#include "changes.h"

#include "baseline/scene.h"

#include <QTest>

#include <cmath>
#include <limits>

using baseline::place_spline;
using baseline::smooth_outline;

QPolygonF damaged_outline() {
    QPolygonF outline = smooth_outline(60, 0.2);
    outline[7] = QPointF(std::numeric_limits<double>::quiet_NaN(), 0.1);
    outline[20] = QPointF(0.3, std::numeric_limits<double>::infinity());
    outline[33] = QPointF(1e9, 0.0);
    outline[40] = QPointF(-0.4, 0.9);
    outline << outline.first();
    return outline;
}

const std::vector<NamedChange>& changes() {
    static const std::vector<NamedChange> all = {
        {"template", [](FramePair& f) { f.editor.p->baseAirfoil = smooth_outline(150, 0.2); }},
        {"template-of-the-same-size",
         [](FramePair& f) { f.editor.p->baseAirfoil = smooth_outline(template_points, 0.121); }},
        {"template-in-the-same-memory",
         [](FramePair& f) {
             f.editor.p->baseAirfoil.clear();
             f.editor.p->baseAirfoil = smooth_outline(template_points, 0.16);
         }},
        {"one-point-of-the-template",
         [](FramePair& f) {
             if (!f.editor.p->baseAirfoil.isEmpty())
                 f.editor.p->baseAirfoil[f.editor.p->baseAirfoil.size() / 2].ry() += 0.05;
         }},
        {"template-gone", [](FramePair& f) { f.editor.p->baseAirfoil.clear(); }},
        {"template-damaged", [](FramePair& f) { f.editor.p->baseAirfoil = damaged_outline(); }},
        {"name-of-the-template",
         [](FramePair& f) { f.editor.p->baseAirfoilName = QStringLiteral("other %1.dat"); }},
        {"name-of-the-spline",
         [](FramePair& f) { f.editor.p->spline.airfoilName = QStringLiteral("/a/b.c.spl"); }},
        {"start-of-the-opening", [](FramePair& f) { f.editor.p->spline.startVent = 12.5; }},
        {"end-of-the-opening", [](FramePair& f) { f.editor.p->spline.endVent = 77.0; }},
        {"opening-nowhere",
         [](FramePair& f) {
             f.editor.p->spline.endVent = std::numeric_limits<double>::infinity();
         }},
        {"zoom-up", [](FramePair& f) { f.editor.f_scale *= 1.3; }},
        {"zoom-down", [](FramePair& f) { f.editor.f_scale *= 0.6; }},
        {"zoom-by-one-bit",
         [](FramePair& f) { f.editor.f_scale = std::nextafter(f.editor.f_scale, 4.0); }},
        {"pan-x", [](FramePair& f) { f.editor.p_D.rx() += 17.0; }},
        {"pan-y", [](FramePair& f) { f.editor.p_D.ry() -= 9.0; }},
        {"pan-x-by-half-a-pixel", [](FramePair& f) { f.editor.p_D.rx() += 0.5; }},
        {"pan-y-by-half-a-pixel", [](FramePair& f) { f.editor.p_D.ry() += 0.5; }},
        {"pan-by-parts-of-a-pixel", [](FramePair& f) { f.editor.p_D += QPointF(0.5, 0.25); }},
        {"pan-out-of-sight", [](FramePair& f) { f.editor.p_D += QPointF(5000.0, 0.0); }},
        {"size",
         [](FramePair& f) {
             f.editor.resize(500, 380);
             f.editor.Init_widget();
             place_spline(f.editor, 12);
         }},
        {"height-only",
         [](FramePair& f) {
             f.editor.resize(f.editor.width(), 381);
             f.editor.Init_widget();
             place_spline(f.editor, 12);
         }},
        {"width-without-a-new-mapping",
         [](FramePair& f) { f.editor.resize(500, f.editor.height()); }},
        {"height-without-a-new-mapping",
         [](FramePair& f) { f.editor.resize(f.editor.width(), 370); }},
        {"size-without-a-new-mapping", [](FramePair& f) { f.editor.resize(500, 380); }},
        {"mapping-without-a-new-size", [](FramePair& f) { f.editor.xc += 10; }},
        {"chord", [](FramePair& f) { f.editor.L_T -= 10; }},
        {"chord-line", [](FramePair& f) { f.editor.yc += 7; }},
        {"palette",
         [](FramePair& f) {
             QPalette palette = f.editor.palette();
             palette.setColor(QPalette::WindowText, Qt::darkGreen);
             palette.setColor(QPalette::Window, Qt::yellow);
             f.editor.setPalette(palette);
         }},
        {"text-colour",
         [](FramePair& f) {
             QPalette palette = f.editor.palette();
             palette.setColor(QPalette::WindowText, Qt::magenta);
             f.editor.setPalette(palette);
         }},
        {"style-sheet",
         [](FramePair& f) {
             f.editor.setStyleSheet(
                 QStringLiteral("background-color: rgb(243, 159, 225); color: rgb(10, 90, 40);"));
         }},
        {"disabled",
         [](FramePair& f) {
             f.editor.setEnabled(false);
             f.plain.setEnabled(false);
         }},
        {"font",
         [](FramePair& f) {
             QFont font = f.editor.font();
             font.setPointSize(font.pointSize() + 5);
             font.setItalic(true);
             f.editor.setFont(font);
         }},
        {"direction-of-reading",
         [](FramePair& f) { f.editor.setLayoutDirection(Qt::RightToLeft); }},
        {"selection", [](FramePair& f) { f.editor.pnt_selected = 5; }},
        {"control-point", [](FramePair& f) { f.editor.p->spline.CP[4] += QPointF(3.0, 11.0); }},
        {"control-point-far-away",
         [](FramePair& f) { f.editor.p->spline.CP[4] = QPointF(1e9, -1e9); }},
        {"control-point-no-number",
         [](FramePair& f) {
             f.editor.p->spline.CP[4].rx() = std::numeric_limits<double>::quiet_NaN();
         }},
        {"number-of-points", [](FramePair& f) { place_spline(f.editor, 9); }},
        {"no-points", [](FramePair& f) { f.editor.p->spline.num_pnt = 0; }},
        {"sharpened",
         [](FramePair& f) {
             f.editor.pnt_selected = 6;
             f.editor.Toggle_Conic_Control();
         }},
        {"hidden-and-shown",
         [](FramePair& f) {
             f.editor.hide();
             f.editor.p->baseAirfoil = smooth_outline(template_points, 0.18);
             f.editor.show();
             QVERIFY(QTest::qWaitForWindowExposed(&f.editor));
         }},
        {"nothing", [](FramePair&) {}},
    };
    return all;
}
