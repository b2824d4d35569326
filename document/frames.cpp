// SPDX-FileCopyrightText: Aerolith developers
// The coordinate frames, and the conversion of a spline between them.
#include "document/frames.h"

#include <cmath>

namespace {

// Curves narrower than this differ by rounding noise only.
constexpr double least_chord = 1e-6;

double width_of(const QPolygonF& curve) {
    double x_min = 10000.0;
    double x_max = -10000.0;
    for (const QPointF& point : curve) {
        if (point.x() < x_min)
            x_min = point.x();
        if (point.x() >= x_max)
            x_max = point.x();
    }
    return x_max - x_min;
}

} // namespace

ChordMapping ChordMapping::of_size(QSize size) {
    ChordMapping mapping;
    mapping.width = size.width() - 1;
    mapping.height = size.height() - 1;
    mapping.xc = int(mapping.width * 0.1);
    mapping.yc = int(mapping.height * 0.5);
    mapping.chord = mapping.width - 2 * mapping.xc;
    return mapping;
}

void scale_to_chord(SplineFoil& spline, QPolygonF& curve, double length) {
    const int count = spline.point_count();
    if (count <= 0)
        return;
    const double chord = width_of(curve);
    if (curve.isEmpty() || (std::isfinite(chord) && chord >= least_chord)) {
        for (int i = 0; i < count; ++i) {
            const QPointF c = spline.CP[i];
            spline.CP[i] = QPointF(length * c.x() / chord, length * c.y() / chord);
        }
    }
    curve = spline.make_SplinePoly();
}

bool pin_to_trailing_edge(SplineFoil& spline, QPolygonF& curve, QPointF trailing_edge,
                          double length, double tolerance) {
    const int count = spline.point_count();
    if (count <= 0)
        return false;
    const QPointF d = trailing_edge - spline.CP[0];
    if (!(d.manhattanLength() > tolerance))
        return false;
    for (int i = 0; i < count; ++i)
        spline.CP[i] += d;
    scale_to_chord(spline, curve, length);
    return true;
}

std::optional<SplineFoil> in_chord_units(SplineFoil spline) {
    constexpr QPointF trailing_edge(1.0, 0.0);
    constexpr double at_rest = 1e-12;
    constexpr int most_rounds = 8;

    if (!spline.has_curve())
        return std::nullopt;
    // scale_to_chord() looks for the extremes of x within a range about the origin.
    const QPointF first = spline.CP[0];
    for (int i = 0; i < spline.point_count(); ++i)
        spline.CP[i] -= first;
    QPolygonF curve = spline.make_SplinePoly();
    for (int round = 0; round < most_rounds; ++round) {
        if (!pin_to_trailing_edge(spline, curve, trailing_edge, 1.0, at_rest))
            break;
    }
    const double away = (trailing_edge - spline.CP[0]).manhattanLength();
    if (!(away <= at_rest && std::abs(width_of(curve) - 1.0) <= at_rest))
        return std::nullopt;
    for (int i = 0; i < spline.point_count(); ++i)
        spline.CP[i].setY(-spline.CP[i].y());
    return spline;
}

SplineFoil in_pixels(SplineFoil spline, const ChordMapping& mapping) {
    for (int i = 0; i < spline.point_count(); ++i)
        spline.CP[i] = mapping.to_pixels(spline.CP[i]);
    return spline;
}
