// SPDX-FileCopyrightText: Aerolith developers
// Transformations of the whole spline.
#include "editor/editspline.h"

#include "numerics/transform.h"

#include <cmath>

namespace {

// Curves narrower than this (pixels) differ by rounding noise only.
constexpr double least_chord = 1e-6;

// Farther from the trailing edge than this (pixels, Manhattan) a spline is moved to it.
constexpr double pinning_tolerance = 1e-5;

} // namespace

void EditSpline::Normalize_Spline_Poly() {
    SplineFoil& spline = p->spline;
    const int count = spline.point_count();
    if (count <= 0)
        return;
    double x_min = 10000.0;
    double x_max = -10000.0;
    for (const QPointF& point : std::as_const(spline_poly)) {
        if (point.x() < x_min)
            x_min = point.x();
        if (point.x() >= x_max)
            x_max = point.x();
    }
    const double chord = x_max - x_min;
    if (spline_poly.isEmpty() || (std::isfinite(chord) && chord >= least_chord)) {
        // About the pixel origin: the next paint moves the spline back to the
        // trailing edge.
        for (int i = 0; i < count; ++i) {
            const QPointF c = spline.CP[i];
            spline.CP[i] = QPointF(L_T * c.x() / chord, L_T * c.y() / chord);
        }
    }
    spline_poly = spline.make_SplinePoly();
}

void EditSpline::AdjustSpline_TE() {
    SplineFoil& spline = p->spline;
    const int count = spline.point_count();
    if (count <= 0)
        return;
    const QPointF d = TE - spline.CP[0];
    if (!(d.manhattanLength() > pinning_tolerance))
        return;
    for (int i = 0; i < count; ++i)
        spline.CP[i] += d;
    Normalize_Spline_Poly();
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
    // Chord units, y downwards: from the trailing edge along the lower side to the nose
    // and back along the upper side.
    static constexpr QPointF section[] = {{1.0, 0.0},    {0.7, 0.025}, {0.3, 0.07},   {0.05, 0.08},
                                          {0.0, 0.01},   {0.0, -0.01}, {0.05, -0.08}, {0.3, -0.07},
                                          {0.7, -0.025}, {1.0, 0.0}};
    SplineFoil& spline = p->spline;
    spline.num_pnt = 0;
    spline_poly.clear();
    for (const QPointF& point : section) {
        spline.CP[spline.num_pnt] = QPointF(xc + point.x() * L_T, yc + point.y() * L_T);
        ++spline.num_pnt;
    }
    spline.init_knots();
    pnt_selected = -1;
}
