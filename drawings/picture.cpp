// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/picture.h"

#include "drawings/numbers_p.h"
#include "drawings/picture_plots_p.h"
#include "drawings/textwidth_p.h"

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

constexpr double standard_width = 240.0; // mm, as are all that follow unless stated otherwise
constexpr double margin = 6.0;
constexpr double plot_gap = 3.0;
constexpr double least_plot = 15.0;
constexpr double legend_height = 2.3;
constexpr double legend_step = 5.2;
constexpr double sample_length = 16.0;
constexpr double sample_gap = 2.0;
constexpr double column_gap = 6.0;

const Look text_look = {"#000000", 0.0, {}, true};

QString percent(double value) {
    return QString::fromLatin1(decimal(value, 4));
}

// The legend: the lines of all sections with their names.
class Legend {
public:
    Legend(const std::vector<Pictured>& pictured, const std::vector<Look>& given,
           const std::vector<Farthest>& distances, double room)
        : looks(given) {
        double widest = 0.0;
        const double text_room = room - sample_length - sample_gap;
        for (const Pictured& each : pictured) {
            QString rest = rest_of(each.section);
            const auto others = std::size_t(texts.size());
            if (!distances.empty() && others > 0)
                rest += QStringLiteral(", farthest ") + distance_text(distances[others - 1]);
            has_openings = has_openings || each.section.openings;
            const double name_room = text_room - width_of(rest, legend_height);
            texts << shortened(shortened(each.name, legend_height, name_room) + rest, legend_height,
                               text_room);
            widest = std::max(widest, width_of(texts.last(), legend_height));
        }
        column_width = sample_length + sample_gap + widest + column_gap;
        columns =
            std::clamp<qsizetype>(qsizetype((room + column_gap) / column_width), 1, texts.size());
        rows = (texts.size() + columns - 1) / columns;
        columns = (texts.size() + rows - 1) / rows;
    }

    double height() const { return double(rows + (has_openings ? 1 : 0)) * legend_step; }

    // Draws it below and to the right of a point.
    void put(Scene& scene, QPointF corner) const {
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const qsizetype column = i / rows;
            const QPointF at = corner + QPointF(double(column) * column_width,
                                                -double(i % rows + 1) * legend_step);
            const QPointF start = at + QPointF(0.0, 0.5 * legend_height);
            scene.draw(looks[std::size_t(i)], line(start, start + QPointF(sample_length, 0.0)));
            put_text(scene, at, texts[i]);
        }
        if (!has_openings)
            return;
        const QPointF at = corner - QPointF(0.0, double(rows + 1) * legend_step);
        const QPointF mark = at + QPointF(0.0, 0.5 * legend_height);
        const Look edge = {"#000000", 0.3, {}, false};
        scene.draw(text_look, Circle{mark + QPointF(4.0, 0.0), opening_radius});
        scene.draw(edge, Circle{mark + QPointF(12.0, 0.0), opening_radius});
        put_text(scene, at, QStringLiteral("start and end of the intake"));
    }

private:
    static void put_text(Scene& scene, QPointF at, const QString& text) {
        scene.draw(text_look,
                   Text{at + QPointF(sample_length + sample_gap, 0.0), legend_height, text});
    }

    static QString rest_of(const sections::Section& section) {
        QString rest = section.is_spline ? QStringLiteral(", spline") : QStringLiteral(", table");
        if (section.openings)
            rest += QStringLiteral(", intake from ") + percent(section.openings->start) +
                    QStringLiteral(" to ") + percent(section.openings->end) + QStringLiteral(" %");
        return rest;
    }

    static QString distance_text(const Farthest& farthest) {
        return QString::number(std::abs(farthest.distance), 'g', 2) +
               (farthest.distance < 0.0 ? QStringLiteral(" chord inside at ")
                                        : QStringLiteral(" chord outside at ")) +
               QString::number(100.0 * farthest.station, 'f', 1) +
               (farthest.upper ? QStringLiteral(" % of the upper side")
                               : QStringLiteral(" % of the lower side"));
    }

    const std::vector<Look>& looks;
    QStringList texts;
    bool has_openings = false;
    double column_width = 0.0;
    qsizetype columns = 1;
    qsizetype rows = 1;
};

double room_of_title(const Plot& plot, double width) {
    return double(lines_of(plot.title, title_height, width).size()) * title_step;
}

} // namespace

PictureResult picture(const std::vector<Pictured>& pictured, const PictureOptions& options) {
    const std::vector<Look> looks = looks_of(pictured);
    PictureResult result;
    std::vector<Plot> plots = {sections_plot(pictured, looks)};
    if (options.nose)
        plots.push_back(nose_plot(pictured, looks));
    if (options.deviation)
        plots.push_back(deviation_plot(pictured, looks, result.distances));
    if (options.curvature)
        plots.push_back(curvature_plot(pictured, looks));

    const double width = options.size ? options.size->width() : standard_width;
    const double room = width - 2.0 * margin - gutter;
    const Legend legend(pictured, looks, result.distances, room);
    double fixed_height = 2.0 * margin + legend.height();
    double plot_height = 0.0;
    for (const Plot& plot : plots) {
        fixed_height += room_of_title(plot, room) + tick_room + plot_gap;
        plot_height += plot.natural_height(room);
    }
    const double height =
        options.size ? options.size->height() : std::ceil(fixed_height + plot_height);
    const double least = fixed_height + double(plots.size()) * least_plot;
    if (height < least) {
        result.reason = QStringLiteral("does not fit a height of %1 mm; it takes %2 mm")
                            .arg(height)
                            .arg(std::ceil(least));
        return result;
    }

    // Spare height is shared equally; if there is too little, all plots shrink in proportion.
    const double spare = height - fixed_height - plot_height;
    const double share = std::max(0.0, spare) / double(plots.size());
    const double shrunk = std::min(1.0, (height - fixed_height) / plot_height);
    Scene scene;
    scene.page = QRectF(0.0, 0.0, width, height);
    scene.draw({"#ffffff", 0.0, {}, true},
               path_through({{0.0, 0.0}, {width, 0.0}, {width, height}, {0.0, height}}, true));
    double top = height - margin;
    for (const Plot& plot : plots) {
        top -= room_of_title(plot, room);
        const double plot_share = shrunk * plot.natural_height(room) + share;
        put_plot(scene, plot, QRectF(margin + gutter, top - plot_share, room, plot_share));
        top -= plot_share + tick_room + plot_gap;
    }
    legend.put(scene, {margin + gutter, top});
    result.scene = std::move(scene);
    return result;
}

} // namespace drawings
