// SPDX-FileCopyrightText: Aerolith developers
// Sections to compare and to measure with.
#include "baseline/scene.h"

#include <algorithm>
#include <cmath>

namespace baseline {

QPolygonF smooth_outline(int points, double thickness) {
    QPolygonF outline;
    for (int i = 0; i < points; ++i) {
        const double angle = TwoPi * i / std::max(points - 1, 1);
        const double x = 0.5 * (1.0 + std::cos(angle));
        const double half = 2.6 * thickness * std::sqrt(x) * (1.0 - x);
        outline << QPointF(x, angle < Pi ? half : -0.8 * half);
    }
    return outline;
}

void place_spline(EditSpline& editor, int points) {
    SplineFoil& spline = editor.p->spline;
    const QPolygonF outline = smooth_outline(points, 0.14);
    spline.num_pnt = points;
    for (int i = 0; i < points; ++i)
        spline.CP[i] = QPointF(editor.xc + outline[i].x() * editor.L_T,
                               editor.yc - outline[i].y() * editor.L_T);
    spline.init_knots();
}

} // namespace baseline
