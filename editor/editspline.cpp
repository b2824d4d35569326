// SPDX-FileCopyrightText: Aerolith developers
// State, view and mapping of the editor.
#include "editor/editspline.h"

#include <QCursor>
#include <QPainter>
#include <QTransform>

EditSpline::EditSpline(QWidget* parent) : QWidget(parent), p(GetDataStruct()) {
    Init_widget();
}

void EditSpline::Init_widget() {
    fontheight = 10;
    mousepressed = false;
    knot_string = QStringLiteral(" //////");
    MyRect = rect();
    // A rectangle's right and bottom lie inside it: one less than its width and height.
    wr = MyRect.bottomRight().x() - MyRect.topLeft().x();
    H = MyRect.bottom() - MyRect.top();
    xc = int(wr * 0.1);
    L_T = wr - 2 * xc;
    yc = int(H * 0.5);
    Orig = QPointF(xc, yc);
    TE = QPointF(xc + L_T, yc);
    pnt_selected = -1;
    p->spline.startVent = 0.0;
    p->spline.endVent = 0.0;
    top_p = 0.0;
    bot_p = 0.0;
    p->spline.num_pnt = 0;
    p->spline.num_knt = 0;
    f_scale = 1.0;
    p_D = QPointF(0.0, 0.0);
}

QPointF EditSpline::myAnchor() {
    return QPointF(mapFromGlobal(QCursor::pos()));
}

QPolygonF EditSpline::normalize_FromScreen(QPolygonF poly) {
    const double x0 = xc;
    const double y0 = yc;
    const double chord = L_T;
    // By coordinate: the point's own division asserts a divisor that is not 0.
    for (QPointF& point : poly)
        point = QPointF((point.x() - x0) / chord, -(point.y() - y0) / chord);
    return poly;
}

void EditSpline::transformPainter(QPainter& painter) {
    QTransform transform;
    transform.translate(p_D.x(), p_D.y());
    transform.scale(f_scale, f_scale);
    painter.setTransform(transform, false);
}

QSize EditSpline::minimumSizeHint() const {
    return QSize(W_res, H_res);
}

QSize EditSpline::SizeHint() const {
    return QSize(width(), height());
}

void EditSpline::showEvent(QShowEvent*) {
    // One more connection each time the widget is shown: the menu then opens as often.
    connect(this, &QWidget::customContextMenuRequested, this, &EditSpline::ShowContextMenu);
    f_scale = 1.0;
    p_D = QPointF(0.0, 0.0);
    repaint();
}

void EditSpline::repaint_opened_spline() {
    spline_poly = p->spline.make_SplinePoly();
    repaint();
}

int EditSpline::selected_point() const {
    return pnt_selected < p->spline.point_count() ? std::max(pnt_selected, -1) : -1;
}
