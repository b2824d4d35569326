// SPDX-FileCopyrightText: Aerolith developers
#include "cli/report_pictures.h"

#include <algorithm>

namespace cli {

using drawings::LineKind;
using drawings::Picture;

namespace {

// Half the height of a picture of distances, as a fraction of its width.
constexpr double half_height = 0.12;
constexpr double beyond = 1.3;

constexpr qsizetype most_feet = 500;

QPolygonF mirrored(const QPolygonF& line) {
    QPolygonF result;
    for (const QPointF& point : line)
        result << QPointF(point.x(), -point.y());
    return result;
}

} // namespace

Picture outline_picture(const QPolygonF& outline) {
    Picture picture;
    const QRectF box = outline.boundingRect();
    const double extent = std::max(box.width(), box.height());
    if (!(extent > 0.0))
        return picture;
    QPolygonF line;
    line.reserve(outline.size());
    // Centred, so that upright outlines have their middle where the others have it.
    const double left = box.center().x() - 0.5 * extent;
    for (const QPointF& point : outline)
        line << QPointF((point.x() - left) / extent, (point.y() - box.center().y()) / extent);
    picture.add(LineKind::outline, line);
    return picture;
}

Picture pair_picture(const QPolygonF& below, const QPolygonF& above) {
    Picture picture;
    picture.add(LineKind::template_line, below);
    picture.add(LineKind::spline_line, above);
    return picture;
}

Picture distance_picture(const QPolygonF& points, const sections::Curve& curve,
                         const QPolygonF& allowed) {
    const double scale = half_height / (beyond * allowed.last().y());
    QPolygonF limit;
    for (int i = 0; i < allowed.size(); ++i) {
        if (i > 0)
            limit << QPointF(allowed[i].x(), limit.last().y());
        limit << QPointF(allowed[i].x(), scale * allowed[i].y());
    }
    const auto nose = std::min_element(points.begin(), points.end(),
                                       [](QPointF a, QPointF b) { return a.x() < b.x(); });
    const bool upper_first = curve.signed_area() > 0.0;
    const double outside = upper_first ? -scale : scale;
    QPolygonF lines[2];
    const qsizetype stride = points.size() / most_feet + 1;
    for (auto point = points.begin(); point < points.end(); point += stride) {
        const sections::Foot foot = curve.nearest(*point);
        const QPointF tangent = curve.tangent(foot.place);
        const QPointF off = *point - foot.point;
        const bool is_left = tangent.x() * off.y() > tangent.y() * off.x();
        const double height =
            std::clamp((is_left ? outside : -outside) * foot.distance, -half_height, half_height);
        const QPointF place(point->x(), height);
        lines[(point <= nose) == upper_first ? 0 : 1] << place;
    }
    Picture picture;
    picture.add(LineKind::axis, {{QPointF(0.0, 0.0), QPointF(1.0, 0.0)}});
    picture.add(LineKind::limit, limit);
    picture.add(LineKind::limit, mirrored(limit));
    picture.add(LineKind::upper, lines[0]);
    picture.add(LineKind::lower, lines[1]);
    return picture;
}

} // namespace cli
