// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/picture_plots_p.h"

#include "drawings/outline_p.h"
#include <algorithm>
#include <iterator>

namespace drawings {

namespace {

// Fractions of the chord.
constexpr double chord_margin = 0.02;
constexpr double least_half_range = 0.05;
constexpr double bounds_flatness = 1e-5;

// The plot of the nose extends back until its height is this fraction of its width.
constexpr double nose_height = 0.7;
constexpr double nose_start = 0.01;
constexpr double nose_end = 0.7;
constexpr double nose_growth = 1.05;
constexpr double nose_margin = 0.05;
constexpr double row_width = 0.8; // mm

void put_openings(Scene& scene, const Pictured& pictured, const Look& look) {
    const FullSize full(pictured.section, 1.0);
    if (!full.mouth())
        return;
    const Look area = {look.colour, 0.0, {}, true};
    const Look edge = {look.colour, 0.3, {}, false};
    scene.draw(area, Circle{full.at(full.mouth()->from).point, opening_radius});
    const QPointF end = full.at(full.mouth()->to).point;
    scene.draw({"#ffffff", 0.0, {}, true}, Circle{end, opening_radius});
    scene.draw(edge, Circle{end, opening_radius});
}

} // namespace

void draw_outlines(Scene& content, const std::vector<Pictured>& pictured,
                   const std::vector<Look>& looks) {
    for (std::size_t i = 0; i < pictured.size(); ++i)
        content.draw(looks[i], outline_of(pictured[i].section));
}

QRectF with_margin(const Scene& content) {
    QRectF range = bounds(content, bounds_flatness);
    range.adjust(-chord_margin, -chord_margin, chord_margin, chord_margin);
    const double missing = std::max(0.0, least_half_range - 0.5 * range.height());
    return range.adjusted(0.0, -missing, 0.0, missing);
}

Path outline_of(const sections::Section& section) {
    Path path = path_of(section.curve);
    path.closed = true;
    return path;
}

std::vector<Look> looks_of(const std::vector<Pictured>& pictured) {
    static const char* const colours[] = {"#007a33", "#8e24aa", "#b35900", "#00707a",
                                          "#5d4037", "#c2185b", "#404040", "#3949ab"};
    static const std::vector<double> dashes[] = {{},
                                                 {4.0, 1.5},
                                                 {1.0, 1.2},
                                                 {6.0, 1.2, 1.0, 1.2},
                                                 {2.2, 1.1},
                                                 {9.0, 2.0},
                                                 {5.0, 1.0, 1.0, 1.0, 1.0, 1.0},
                                                 {3.0, 1.0, 3.0, 1.0, 1.0, 1.0}};
    constexpr double widths[] = {0.35, 0.6, 0.2};
    std::vector<Look> looks;
    bool has_table = false;
    bool has_spline = false;
    std::size_t others = 0;
    for (const Pictured& each : pictured) {
        bool& has_one = each.section.is_spline ? has_spline : has_table;
        const char* first = each.section.is_spline ? "#ff0000" : "#0000ff";
        const std::size_t i = looks.size();
        looks.push_back({has_one ? colours[others++ % std::size(colours)] : first,
                         widths[i / std::size(dashes) % std::size(widths)],
                         dashes[i % std::size(dashes)], false});
        has_one = true;
    }
    return looks;
}

Plot sections_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks) {
    Plot plot;
    plot.title = QStringLiteral("Sections in units of the chord");
    draw_outlines(plot.content, pictured, looks);
    plot.range = with_margin(plot.content);
    for (std::size_t i = 0; i < pictured.size(); ++i)
        put_openings(plot.content, pictured[i], looks[i]);
    return plot;
}

Plot nose_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks) {
    Plot plot;
    plot.title = QStringLiteral("Noses, enlarged");
    draw_outlines(plot.content, pictured, looks);
    QPolygonF points;
    for (const Element& element : plot.content.elements)
        points += flattened(std::get<Path>(element.shape), bounds_flatness);
    const QRectF all = points.boundingRect();
    for (double length = nose_start; length < nose_end; length *= nose_growth) {
        double low = all.bottom();
        double high = all.top();
        for (const QPointF& point : points) {
            if (point.x() <= all.left() + length) {
                low = std::min(low, point.y());
                high = std::max(high, point.y());
            }
        }
        const double edge = nose_margin * length;
        plot.range = QRectF(all.left(), low, length, std::max(high - low, 0.0))
                         .adjusted(-edge, -edge, edge, edge);
        if (plot.range.height() <= nose_height * plot.range.width())
            break;
    }
    bool has_rows = false;
    for (std::size_t i = 0; i < pictured.size(); ++i) {
        put_openings(plot.content, pictured[i], looks[i]);
        if (pictured[i].section.is_spline)
            continue;
        has_rows = true;
        for (const QPointF& point : pictured[i].section.points)
            plot.content.draw({looks[i].colour, row_width, {}, false}, Dot{point});
    }
    if (has_rows)
        plot.title += QStringLiteral("; dots are the points of tables");
    return plot;
}

} // namespace drawings
