// SPDX-FileCopyrightText: Aerolith developers
// Curvature as combs.
#include "drawings/numbers_p.h"
#include "drawings/picture_plots_p.h"
#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

using sections::Curve;
using sections::Piece;

// Fractions of the chord.
constexpr double tooth_gap = 0.006;
constexpr double longest_step = 0.003;
constexpr double least_step = 0.0005;
constexpr double longest_tooth = 0.15;
constexpr double usual_tooth = 0.08; // the longest tooth aft of the nose
constexpr double nose_end = 0.08;

constexpr double usual_share = 0.95; // of the places; only few have more curvature
constexpr double most_steps = 200.0; // of a piece
constexpr double knot_width = 0.9;   // mm

// The root of a tooth.
struct Root {
    QPointF at;
    QPointF outward;
    double curvature = 0.0; // above 0 where the outline is convex
    bool has_tooth = false;
    bool is_knot = false;
};

// The roots include both ends of each piece: the curvature jumps where pieces of a spline meet.
std::vector<Root> roots_of(const sections::Section& section) {
    const Curve& curve = section.curve;
    std::vector<Root> roots;
    double way = 0.0;
    double last = -1.0;
    double last_tooth = -1.0;
    for (const Piece& piece : curve.pieces()) {
        const double length = piece.length();
        const double count = std::clamp(std::ceil(length / longest_step), 1.0, most_steps);
        for (double k = 0.0; k <= count; k += 1.0) {
            const double u = k / count;
            const double at = way + length * u; // accurate enough to choose teeth
            const bool is_end = k == 0.0 || k == count;
            const bool is_knot = section.is_spline && is_end;
            if (!is_knot && at - last < least_step)
                continue;
            Root root;
            root.at = piece.position(u);
            root.outward = -sections::turned_left(piece.tangent(u));
            root.curvature = piece.curvature(u);
            root.is_knot = is_knot;
            root.has_tooth = is_knot || at - last_tooth >= tooth_gap;
            if (!std::isfinite(root.curvature))
                continue;
            last = at;
            if (root.has_tooth)
                last_tooth = at;
            roots.push_back(root);
        }
        way += length;
    }
    return roots;
}

// 1, 2 or 5 times a power of ten, at most the value.
double rounded_down(double value) {
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double digit : {5.0, 2.0}) {
        if (digit * power <= value)
            return digit * power;
    }
    return power;
}

// The length of a tooth for the curvature 1.
double tooth_scale(const std::vector<std::vector<Root>>& combs) {
    std::vector<double> behind;
    for (const std::vector<Root>& comb : combs) {
        for (const Root& root : comb) {
            if (root.at.x() > nose_end)
                behind.push_back(std::abs(root.curvature));
        }
    }
    if (behind.empty())
        return usual_tooth;
    const auto usual = behind.begin() + std::ptrdiff_t(usual_share * double(behind.size() - 1));
    std::nth_element(behind.begin(), usual, behind.end());
    constexpr double straight = 0.1;
    return rounded_down(usual_tooth / std::max(*usual, straight));
}

void put_comb(Scene& scene, const std::vector<Root>& comb, double scale, const Look& look) {
    const Look tooth = {look.colour, 0.1, {}, false};
    QPolygonF tips;
    for (const Root& root : comb) {
        const double length = std::clamp(scale * root.curvature, -longest_tooth, longest_tooth);
        tips << root.at + length * root.outward;
        if (root.has_tooth)
            scene.draw(tooth, line(root.at, tips.last()));
    }
    scene.draw(look, path_through(tips, false));
    for (const Root& root : comb) {
        if (root.is_knot)
            scene.draw({look.colour, knot_width, {}, false}, Dot{root.at});
    }
}

} // namespace

Plot curvature_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks) {
    std::vector<std::vector<Root>> combs;
    combs.reserve(pictured.size());
    for (const Pictured& each : pictured)
        combs.push_back(roots_of(each.section));
    const double scale = tooth_scale(combs);
    Plot plot;
    bool has_spline = false;
    for (std::size_t i = 0; i < pictured.size(); ++i) {
        has_spline = has_spline || pictured[i].section.is_spline;
        plot.content.draw({looks[i].colour, 0.2, {}, false}, outline_of(pictured[i].section));
        put_comb(plot.content, combs[i], scale, looks[i]);
    }
    plot.range = with_margin(plot.content);
    const auto number = [](double value) { return QString::fromLatin1(decimal(value, 9)); };
    plot.title = QStringLiteral("Curvature as teeth, outwards where the outline is convex: ") +
                 number(0.1) + QStringLiteral(" in the plot is ") + number(0.1 / scale) +
                 QStringLiteral(" / chord; teeth end at ") + number(longest_tooth / scale) +
                 QStringLiteral(" / chord");
    if (has_spline)
        plot.title += QStringLiteral(". At the knots of a spline, the dots, the curvature jumps");
    return plot;
}

} // namespace drawings
