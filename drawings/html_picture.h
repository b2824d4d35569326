// SPDX-FileCopyrightText: Aerolith developers
// Small pictures within a page.
#pragma once

#include <QByteArray>
#include <QPolygonF>
#include <QString>

#include <vector>

namespace drawings {

/// What a line stands for; each has its own look, also in black and white.
enum class LineKind { outline, template_line, spline_line, upper, lower, axis, limit };

/// Lines of a picture, y upwards, 1 wide from x = 0: its height is that of its lines.
struct Picture {
    struct Line {
        LineKind kind = LineKind::outline;
        QByteArray path; ///< Of an SVG, in 1/10000.
    };
    std::vector<Line> lines;
    int low = 0; ///< Least and greatest y, in 1/10000.
    int high = 0;

    bool is_empty() const { return lines.empty(); }

    /// Adds a line through @p points, thinned(). Fewer than two, and coordinates that are not
    /// finite or beyond 100, are left out.
    void add(LineKind kind, const QPolygonF& points);
};

/// A line of a legend.
struct LegendEntry {
    LineKind kind = LineKind::outline;
    QString text;
};

/// @p points without those that lie within @p flatness of the straight line between their
/// neighbours that are kept (D. H. Douglas, T. K. Peucker, Cartographica 10 (1973) 112). Of more
/// than 2000 points every n-th one is taken first, and the last. Ends stay.
QPolygonF thinned(const QPolygonF& points, double flatness);

/// The class of a line in the style of the page.
QByteArray line_class(LineKind kind);

/// @p picture as an SVG element without a title.
QByteArray picture_svg(const Picture& picture);

} // namespace drawings
