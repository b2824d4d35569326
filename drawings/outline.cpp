// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/outline_p.h"

#include "sections/plane.h"

namespace drawings {

namespace {

using sections::Curve;
using sections::Piece;
using sections::Place;

// A narrower mouth, as a fraction of the chord, counts as none.
constexpr double least_mouth = 1e-6;

Segment segment_of(const Piece& piece) {
    const QPointF start = piece.position(0.0);
    const QPointF end = piece.position(1.0);
    if (piece.degree() == 1)
        return {1, {}, end};
    const QPointF a = start + piece.derivative(0.0) / piece.degree();
    if (piece.degree() == 2)
        return {2, {a}, end};
    return {3, {a, end - piece.derivative(1.0) / 3.0}, end};
}

// Appends the pieces of the curve.
void append(Path& path, const Curve& curve) {
    for (const Piece& piece : curve.pieces())
        path.segments.push_back(segment_of(piece));
}

void append(Path& path, QPointF end) {
    path.segments.push_back({1, {}, end});
}

QPolygonF points_of(const Curve& curve, double flatness) {
    return flattened(path_of(curve), flatness);
}

} // namespace

Path path_of(const Curve& curve) {
    Path path;
    path.start = curve.position(curve.begin());
    append(path, curve);
    return path;
}

FullSize::FullSize(const sections::Section& section, double chord)
    : whole(section.curve.mapped({chord, 0.0}, {0.0, 0.0})),
      upright(sections::sides_at(whole, whole.extreme({-1.0, 0.0}))) {
    if (!section.openings)
        return;
    const double first = section.openings->start / 100.0 * chord;
    const double second = section.openings->end / 100.0 * chord;
    if (!(first >= 0.0 && first < second))
        return;
    const double nose = upright.upper.length();
    const std::optional<double> from = first > 0.0 ? cut(false, first) : nose;
    const std::optional<double> to = cut(false, second);
    if (from && to && *to - *from > least_mouth * chord)
        mouth_stretch = Stretch{*from, *to};
}

std::vector<Path> FullSize::stitches(Intake intake) const {
    if (!mouth_stretch || intake == Intake::curve) {
        Path closed = path_of(whole);
        closed.closed = true;
        return {closed};
    }
    const Curve over_top = stretch(0.0, mouth_stretch->from);
    const Curve behind = stretch(mouth_stretch->to, whole.length());
    if (intake == Intake::straight) {
        Path closed = path_of(over_top);
        append(closed, behind.position(behind.begin()));
        append(closed, behind);
        closed.closed = true;
        return {closed};
    }
    Path lower = path_of(behind);
    const QPointF start = whole.position(whole.begin());
    if (lower.segments.back().end != start)
        append(lower, start);
    return {path_of(over_top), lower};
}

Outline FullSize::outline(Intake intake, double flatness) const {
    Outline outline;
    outline.first_tangent = whole.tangent(whole.begin());
    outline.last_tangent = whole.tangent(whole.end());
    if (!mouth_stretch) {
        outline.points = points_of(whole, flatness);
        return outline;
    }
    outline.points = points_of(stretch(0.0, mouth_stretch->from), flatness);
    outline.mouth_first = outline.points.size() - 1;
    if (intake == Intake::curve)
        outline.points +=
            points_of(stretch(mouth_stretch->from, mouth_stretch->to), flatness).mid(1);
    const QPolygonF behind = points_of(stretch(mouth_stretch->to, whole.length()), flatness);
    if (intake != Intake::curve)
        outline.points += behind.first();
    outline.mouth_last = outline.points.size() - 1;
    outline.points += behind.mid(1);
    return outline;
}

OnCurve FullSize::at(double distance) const {
    const Place place = whole.place_at(distance);
    return {whole.position(place), -sections::turned_left(whole.tangent(place))};
}

std::optional<double> FullSize::cut(bool upper, double x) const {
    const Curve& side = upper ? upright.upper : upright.lower;
    const std::optional<Place> place = sections::cut_at(side, x, upper ? 1.0 : -1.0);
    if (!place)
        return std::nullopt;
    const double distance = side.length_to(*place);
    return upper ? distance : whole.length() - distance;
}

QPointF FullSize::leading_edge() const {
    return whole.position(sections::leading_edge_of(whole));
}

QPointF FullSize::trailing_edge() const {
    return sections::trailing_edge_of(whole);
}

double FullSize::leading_edge_distance() const {
    return whole.length_to(sections::leading_edge_of(whole));
}

Curve FullSize::stretch(double from, double to) const {
    return whole.part(whole.place_at(from), whole.place_at(to));
}

} // namespace drawings
