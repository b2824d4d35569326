// SPDX-FileCopyrightText: Aerolith developers
// State, view and mapping of the editor.
#include "editor/editspline.h"

#include "editor/templateimage_p.h"

#include <QCursor>
#include <QPainter>
#include <QTransform>

#include <algorithm>

EditSpline::EditSpline(QWidget* parent)
    : QWidget(parent), p(GetDataStruct()), template_image(std::make_unique<TemplateImage>()) {
    Init_widget();
}

EditSpline::~EditSpline() = default;

void EditSpline::Init_widget() {
    fontheight = 10;
    mousepressed = false;
    knot_string = QStringLiteral(" //////");
    MyRect = rect();
    const ChordMapping taken = ChordMapping::of_size(MyRect.size());
    wr = taken.width;
    H = taken.height;
    xc = taken.xc;
    yc = taken.yc;
    L_T = taken.chord;
    Orig = taken.leading_edge();
    TE = taken.trailing_edge();
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

ChordMapping EditSpline::mapping() const {
    return {wr, H, xc, yc, L_T};
}

View EditSpline::view() const {
    return {f_scale, p_D};
}

QPolygonF EditSpline::normalize_FromScreen(QPolygonF poly) {
    for (QPointF& point : poly)
        point = mapping().to_chord(point);
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
    // Every show event adds a connection, and the menu then opens that many times.
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
