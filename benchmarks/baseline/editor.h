// SPDX-FileCopyrightText: Aerolith developers
// The editor with a paint that caches nothing between frames.
#pragma once

#include "editor/editspline.h"

namespace baseline {

/// Has the state, the mapping and the handlers of EditSpline, but paints every frame from the
/// document alone: the curve by the plain recursion, everything drawn directly on the widget.
class Editor : public EditSpline {
public:
    using EditSpline::EditSpline;

    void paintEvent(QPaintEvent* event) override;

private:
    void normalize();
    void adjust();
    void paint_thickness(QPainter* painter, const QPolygonF& poly, QPointF pos,
                         const QString& label);
    void paint_cursor(QPainter* painter);
    void paint_grid(QPainter* painter);
    void paint_template(QPainter* painter);
    void paint_spline(QPainter* painter);
    void settle();

    int extra_paints = 0;
};

} // namespace baseline
