// SPDX-FileCopyrightText: Aerolith developers
// Editing of control points.
#include "editor/editspline.h"

#include "numerics/transform.h"

#include <QCursor>
#include <QMessageBox>
#include <QTimerEvent>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double pick_radius = 8.0; // widget pixels

constexpr int refocus_time = 150; // milliseconds

// Far enough below the knot spacing for a corner, far enough above rounding noise.
constexpr double sharp_knot_step = 0.0001;

} // namespace

int EditSpline::SelectPoint() {
    const SplineFoil& spline = p->spline;
    const QPointF Lpos(lastPos);
    for (int k = 1; k < spline.point_count() - 1; ++k) {
        if (Dist2(Lpos, view().to_widget(spline.CP[k])) < pick_radius)
            return k;
    }
    return -1;
}

void EditSpline::MovePoint(int dx, int dy) {
    const int selected = selected_point();
    if (selected < 0)
        return;
    p->spline.CP[selected] += QPointF(dx, dy);
    repaint();
}

bool EditSpline::at_point_limit() {
    if (p->spline.point_count() < MAXNUMPOINTS)
        return false;
    show_point_limit();
    // The focus returns from the menu later, which hides every tool tip.
    tooltip_timer.start(refocus_time, this);
    return true;
}

void EditSpline::show_point_limit() {
    const QString text = tr("A spline has at most %1 control points.").arg(MAXNUMPOINTS);
    QToolTip::showText(QCursor::pos(), text, this);
}

void EditSpline::timerEvent(QTimerEvent* event) {
    if (event->timerId() != tooltip_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    tooltip_timer.stop();
    show_point_limit();
}

void EditSpline::New_Point_Insert(QPoint P) {
    SplineFoil& spline = p->spline;
    const int i_pnt = selected_point();
    const int count = spline.point_count();
    if (i_pnt < 0)
        return;
    if (i_pnt == count - 1) {
        Append_New_Point(P);
        return;
    }
    if (at_point_limit())
        return;
    curPnt = QPointF(lastPos);
    const QPointF newPnt = 0.5 * (curPnt + spline.CP[i_pnt + 1]);
    // The element after the last point moves too, where the array has room for it.
    for (int k = std::min(count, MAXNUMPOINTS - 2); k >= i_pnt + 1; --k)
        spline.CP[k + 1] = spline.CP[k];
    spline.CP[i_pnt + 1] = newPnt;
    spline.num_pnt = count + 1;
    spline.init_knots();
}

void EditSpline::Append_New_Point(QPoint P) {
    SplineFoil& spline = p->spline;
    const int count = spline.point_count();
    if (selected_point() > 0 || at_point_limit())
        return;
    curPnt = QPointF(P);
    spline.num_pnt = count + 1;
    spline.CP[count] = curPnt;
    spline.init_knots();
}

void EditSpline::Remove_Point() {
    SplineFoil& spline = p->spline;
    const int sp = selected_point();
    const int count = spline.point_count();
    if (sp < 0)
        return;
    for (int k = sp; k < std::min(count, MAXNUMPOINTS - 1); ++k)
        spline.CP[k] = spline.CP[k + 1];
    spline.num_pnt = count - 1;
    mousepressed = false;
    spline_poly.clear();
    pnt_selected = -1;
    spline.init_knots();
}

void EditSpline::Toggle_Conic_Control() {
    SplineFoil& spline = p->spline;
    const int selected = selected_point();
    if (selected < 0 || !spline.has_curve())
        return;
    const int a = spline.degree;
    const int b = spline.knot_count() - spline.degree;
    if (is_between(a, b, selected)) {
        const int id = selected + 1;
        spline.b_knots[id + 1] = spline.b_knots[id] + sharp_knot_step;
    }
}

double Dist_Spline_Pnt(QPolygonF poly, QVector2D P) {
    double distance = 1e18;
    for (const QPointF& vertex : std::as_const(poly)) {
        const double dx = double(P.x()) - vertex.x();
        const double dy = double(P.y()) - vertex.y();
        const double d = std::pow(dx * dx + dy * dy, 0.5);
        if (d < distance)
            distance = d;
    }
    return distance;
}

int Break_Question(QString Text, QString questionText) {
    // Without a parent: a child of the editor would inherit its colour.
    QMessageBox msgBox;
    msgBox.setTextFormat(Qt::PlainText);
    msgBox.setText(Text);
    msgBox.setInformativeText(questionText);
    msgBox.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
    msgBox.setDefaultButton(QMessageBox::Cancel);
    const int ret = msgBox.exec();
    return ret == QMessageBox::Ok ? 1 : 0;
}
