// SPDX-FileCopyrightText: Aerolith developers
// Transformations of the whole spline.
#include "editor/editspline.h"

#include "document/frames.h"
#include "numerics/transform.h"

void EditSpline::Normalize_Spline_Poly() {
    // Scales about the pixel origin: the next paint moves the spline back to the trailing edge.
    scale_to_chord(p->spline, spline_poly, L_T);
}

void EditSpline::AdjustSpline_TE() {
    pin_to_trailing_edge(p->spline, spline_poly, TE, L_T);
}

void EditSpline::Translate_Spline(QPointF d) {
    SplineFoil& spline = p->spline;
    const int count = spline.point_count();
    if (count <= 0)
        return;
    for (int i = 0; i < count; ++i)
        spline.CP[i] += d;
    spline.CP[0] = TE;
    spline.CP[count - 1] = TE;
}

void EditSpline::ScaleFoil(double k) {
    SplineFoil& spline = p->spline;
    for (int i = 0; i < spline.point_count(); ++i)
        spline.CP[i].setY(yc - (1 + 0.02 * k) * (yc - spline.CP[i].y()));
    repaint();
}

void EditSpline::RotateSpline(double angle) {
    SplineFoil& spline = p->spline;
    for (int i = 0; i < spline.point_count(); ++i)
        spline.CP[i] = RotFixP(angle, TE, spline.CP[i]);
}

void EditSpline::Generate_symetric_spline() {
    // From the trailing edge along the lower side to the nose and back along the upper side.
    static constexpr QPointF section[] = {{1.0, 0.0},   {0.7, -0.025}, {0.3, -0.07}, {0.05, -0.08},
                                          {0.0, -0.01}, {0.0, 0.01},   {0.05, 0.08}, {0.3, 0.07},
                                          {0.7, 0.025}, {1.0, 0.0}};
    SplineFoil& spline = p->spline;
    spline.num_pnt = 0;
    spline_poly.clear();
    for (const QPointF& point : section) {
        spline.CP[spline.num_pnt] = mapping().to_pixels(point);
        ++spline.num_pnt;
    }
    spline.init_knots();
    pnt_selected = -1;
}
