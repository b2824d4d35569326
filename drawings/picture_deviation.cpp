// SPDX-FileCopyrightText: Aerolith developers
// Distances between sections, magnified.
#include "drawings/picture_plots_p.h"
#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

using sections::Curve;
using sections::Foot;

constexpr double stretch = 50.0;

// Fractions of the chord.
constexpr double most_beyond = 0.25; // from the first section to the edge of the plot
constexpr double sample_step = 0.0005;
constexpr double longest_side = 2.0; // of a side that is sampled at this step
constexpr double beyond_the_nose = 0.05;

// The upper and the lower side, from the trailing edge to the nose.
using Halves = std::array<Curve, 2>;

Halves halves_of(const Curve& curve, double overlap) {
    const double nose = curve.length_to(sections::leading_edge_of(curve));
    return {curve.part(curve.begin(), curve.place_at(nose + overlap)),
            curve.part(curve.place_at(nose - overlap), curve.end()).reversed()};
}

// One side with its distances magnified, and the greatest of them.
class StretchedSide {
public:
    StretchedSide(const Curve& given, const Curve& first, bool is_upper)
        : side(given), target(first), upper(is_upper) {}

    QPolygonF points(Farthest& farthest) const {
        const double length = side.length();
        const double count = std::ceil(std::min(length, longest_side) / sample_step);
        QPolygonF stretched;
        for (double i = 0.0; i <= count; i += 1.0) {
            const QPointF at = side.position(side.place_at(length * i / count));
            const Foot foot = target.nearest(at);
            stretched << foot.point + stretch * (at - foot.point);
            if (foot.distance > std::abs(farthest.distance))
                farthest = {is_outside(at, foot) ? foot.distance : -foot.distance, at.x(), upper};
        }
        return stretched;
    }

private:
    // Outlines run counter-clockwise, but the lower side was reversed.
    bool is_outside(QPointF at, const Foot& foot) const {
        const double left = sections::cross(target.tangent(foot.place), at - foot.point);
        return upper ? left < 0.0 : left > 0.0;
    }

    const Curve& side;
    const Curve& target;
    const bool upper;
};

} // namespace

Plot deviation_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks,
                    std::vector<Farthest>& distances) {
    Plot plot;
    plot.content.draw(looks.front(), outline_of(pictured.front().section));
    const QRectF first = with_margin(plot.content);
    const Halves targets = halves_of(pictured.front().section.curve, beyond_the_nose);
    for (std::size_t i = 1; i < pictured.size(); ++i) {
        const Halves sides = halves_of(pictured[i].section.curve, 0.0);
        Farthest farthest;
        for (const std::size_t side : {0U, 1U}) {
            const StretchedSide stretched(sides[side], targets[side], side == 0);
            plot.content.draw(looks[i], path_through(stretched.points(farthest), false));
        }
        distances.push_back(farthest);
    }
    const QRectF most = first.adjusted(-most_beyond, -most_beyond, most_beyond, most_beyond);
    const QRectF all = with_margin(plot.content);
    plot.range = all & most;
    plot.title = QStringLiteral("Distances from ") + pictured.front().name +
                 QStringLiteral(", stretched 50 times: 0.05 in the plot is 0.001 of the chord");
    if (!most.contains(all))
        plot.title += QStringLiteral("; some leave the plot");
    return plot;
}

} // namespace drawings
