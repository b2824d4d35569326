// SPDX-FileCopyrightText: Aerolith developers
// Small pictures in a page.
#pragma once

#include <QByteArray>
#include <QPolygonF>
#include <QString>

#include <vector>

namespace drawings {

/// The meaning of a line; each has its own look, also in black and white.
enum class LineKind { outline, template_line, spline_line, upper, lower, axis, limit };

/// Lines of a picture, y upwards, from x = 0 to 1. The picture is as high as its lines.
struct Picture {
    struct Line {
        LineKind kind = LineKind::outline;
        QByteArray path; ///< Path data of SVG, in 1/10000.
    };
    std::vector<Line> lines;
    int low = 0; ///< Least and greatest y, in 1/10000.
    int high = 0;

    bool is_empty() const { return lines.empty(); }

    /// Adds a line through @p points, thinned(). Lines of fewer than two points, and lines with
    /// coordinates that are not finite or exceed 100, are dropped.
    void add(LineKind kind, const QPolygonF& points);
};

/// A line of a legend.
struct LegendEntry {
    LineKind kind = LineKind::outline;
    QString text;
};

/// @p points without those within @p flatness of the straight line between their remaining
/// neighbours (D. H. Douglas, T. K. Peucker, Cartographica 10 (1973) 112). More than 2000 points
/// are first reduced to every n-th point and the last. The ends are kept.
QPolygonF thinned(const QPolygonF& points, double flatness);

/// The class of a line in the style sheet of the page.
QByteArray line_class(LineKind kind);

/// @p picture as an SVG element without a title.
QByteArray picture_svg(const Picture& picture);

} // namespace drawings
