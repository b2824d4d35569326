// SPDX-FileCopyrightText: Aerolith developers
#include "sections/section.h"

#include "document/parastruct.h"
#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

// A smaller area, as a fraction of the squared chord, counts as none.
constexpr double no_area = 1e-6;

// Tolerance for a cut to touch the leading edge of a curve of rounded numbers.
constexpr double touches = 1e-9;

QPolygonF mapped(const QPolygonF& points, double scale, QPointF shift) {
    QPolygonF result;
    result.reserve(points.size());
    for (const QPointF& point : points)
        result << scale * point + shift;
    return result;
}

SectionResult in_window_frame(const CurveResult& found, QPolygonF points) {
    if (!found.reason.isEmpty())
        return {std::nullopt, found.reason};
    if (points.isEmpty())
        return {std::nullopt, QStringLiteral("an outline without points")};
    const auto [left, right] = std::minmax_element(
        points.begin(), points.end(), [](QPointF a, QPointF b) { return a.x() < b.x(); });
    const double width = right->x() - left->x();
    const double height = 1e-9 * found.curve.length();
    if (!(width > height))
        return {std::nullopt, QStringLiteral("an outline of no width")};

    Section section;
    section.corners = found.corners;
    section.straight_edges = found.straight_edges;
    Curve curve = found.curve;
    const QPointF chord = trailing_edge_of(curve) - curve.position(leading_edge_of(curve));
    const double area = curve.signed_area() / std::max(dot(chord, chord), width * width);
    section.equal_sides = std::abs(area) < no_area;
    section.was_reversed = area < 0.0 && !section.equal_sides;
    if (section.was_reversed) {
        curve = curve.reversed();
        std::reverse(points.begin(), points.end());
    }
    const double scale = 1.0 / width;
    const QPointF shift = QPointF(1.0, 0.0) - scale * curve.position(curve.begin());
    section.curve = curve.mapped({scale, 0.0}, shift);
    section.points = mapped(points, scale, shift);
    section.zero_line = shift.y();
    return {section, QString()};
}

std::optional<tables::Openings> without_closed(const std::optional<tables::Openings>& openings) {
    const bool closed = openings && openings->start == 0.0 && openings->end == 0.0;
    return closed ? std::nullopt : openings;
}

} // namespace

SectionResult section_of_table(const tables::Table& table) {
    SectionResult result = in_window_frame(table_curve(table.points), table.points);
    if (result.section) {
        result.section->kind = table.kind;
        result.section->openings = without_closed(table.openings);
    }
    return result;
}

SectionResult section_of_spline(const SplineFoil& spline) {
    QPolygonF samples = spline.make_SplinePoly();
    // If the last knots are below 1 there is no curve at the last parameters.
    samples.removeIf([](QPointF p) { return !std::isfinite(p.x()) || !std::isfinite(p.y()); });
    SectionResult result = in_window_frame(spline_curve(spline), samples);
    if (result.section) {
        result.section->is_spline = true;
        result.section->openings =
            without_closed(tables::Openings{spline.startVent, spline.endVent});
    }
    return result;
}

Sides sides_at(const Curve& curve, Place nose) {
    return {curve.part(curve.begin(), nose), curve.part(nose, curve.end()).reversed()};
}

QPointF trailing_edge_of(const Curve& curve) {
    return 0.5 * (curve.position(curve.begin()) + curve.position(curve.end()));
}

Place leading_edge_of(const Curve& curve) {
    return curve.farthest(trailing_edge_of(curve));
}

std::optional<Place> cut_at(const Curve& side, double x, double outward) {
    std::optional<Place> outermost;
    for (const Place& place : side.crossings({1.0, 0.0}, x, touches)) {
        const double y = outward * side.position(place).y();
        if (!outermost || y > outward * side.position(*outermost).y())
            outermost = place;
    }
    return outermost;
}

} // namespace sections
