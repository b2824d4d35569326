// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/rib.h"

#include "drawings/lettering_p.h"
#include "drawings/outline_p.h"

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

// Length of lines drawn inwards where there is no allowance, mm.
constexpr double inward = 3.0;
constexpr double least_circle = 1.0;
constexpr double greatest_circle = 2.5;

// Larger coordinates, mm, come from broken tables.
constexpr double largest = 1e6;

class Rib {
public:
    Rib(const sections::Section& section, const RibOptions& given)
        : options(given), full(section, given.chord) {
        allowances.general = given.allowance;
        allowances.mouth = given.allowance_mouth.value_or(given.allowance);
        allowances.trailing_edge = given.allowance_trailing_edge.value_or(given.allowance);
    }

    RibResult drawn();

private:
    QString fault() const;
    QRectF extent() const;
    void put_cut();
    void put_stitches();
    void put_mouth();
    void put_marks();
    void put_mark(double distance);

    bool has_allowance() const {
        return allowances.general > 0.0 || allowances.mouth > 0.0 || allowances.trailing_edge > 0.0;
    }
    bool in_mouth(double distance) const {
        return full.mouth() && distance > full.mouth()->from && distance < full.mouth()->to;
    }

    const RibOptions& options;
    const FullSize full;
    Allowances allowances;
    Scene scene;
    RibResult result;
};

// A millimetre is accurate enough for a size.
QRectF Rib::extent() const {
    Scene alone;
    alone.add(Layer::stitch, full.stitches(Intake::curve).front());
    return bounds(alone, 1.0);
}

QString Rib::fault() const {
    const QRectF box = extent();
    // Written so that NaN is refused too.
    if (!(std::max({-box.left(), box.right(), -box.top(), box.bottom()}) < largest))
        return QStringLiteral("coordinates beyond a kilometre");
    if (options.intake == Intake::open && has_allowance())
        return QStringLiteral("an open mouth is for drawing only and has no allowance");
    if (options.mark_step > 0.0 && full.curve().length() > most_marks * options.mark_step)
        return QStringLiteral("more than %1 marks").arg(most_marks);
    if (options.text.size() > longest_text)
        return QStringLiteral("a text of more than %1 characters").arg(longest_text);
    if (full.mouth())
        return {};
    if (options.intake != Intake::curve)
        return QStringLiteral("no mouth to leave open or to cross straight");
    if (options.allowance_mouth)
        return QStringLiteral("no mouth for an allowance of its own");
    return {};
}

RibResult Rib::drawn() {
    result.reason = fault();
    if (result.reason.isEmpty())
        put_cut();
    if (!result.reason.isEmpty())
        return result;
    put_stitches();
    put_mouth();
    put_marks();
    scene.add(Layer::chord, line(full.leading_edge(), full.trailing_edge()));
    if (options.grain)
        put_grain(scene, full, *options.grain, options.flatness);
    if (!options.text.isEmpty())
        put_text(scene, full, options.text, options.flatness);
    result.scene = options.mirror ? mirrored(scene, 0.5 * options.chord) : std::move(scene);
    return std::move(result);
}

void Rib::put_cut() {
    if (options.intake == Intake::open)
        return;
    if (!has_allowance()) {
        scene.add(Layer::cut, full.stitches(options.intake).front());
        return;
    }
    // Half of the flatness for the curve, a quarter for round corners.
    const CutEdge edge = cut_edge(full.outline(options.intake, 0.5 * options.flatness), allowances,
                                  0.25 * options.flatness);
    result.reason = edge.reason;
    if (!edge.note.isEmpty())
        result.notes << edge.note;
    scene.add(Layer::cut, path_through(edge.points, true));
}

void Rib::put_stitches() {
    for (Path& path : full.stitches(options.intake))
        scene.add(Layer::stitch, std::move(path));
}

void Rib::put_mouth() {
    if (!full.mouth())
        return;
    for (const double distance : {full.mouth()->from, full.mouth()->to}) {
        const OnCurve place = full.at(distance);
        const double reach = allowances.general > 0.0 ? allowances.general : -inward;
        scene.add(Layer::mouth, line(place.point, place.point + reach * place.outward));
    }
}

void Rib::put_marks() {
    if (options.mark_step > 0.0) {
        const double whole = full.curve().length();
        const double nose = full.leading_edge_distance();
        const double upper = full.mouth() ? full.mouth()->from : nose;
        const double lower = whole - (full.mouth() ? full.mouth()->to : nose);
        for (int i = 1; i * options.mark_step < upper; ++i)
            put_mark(i * options.mark_step);
        for (int i = 1; i * options.mark_step < lower; ++i)
            put_mark(whole - i * options.mark_step);
    }
    for (const StationMark& mark : options.mark_at) {
        const std::optional<double> distance =
            full.cut(mark.upper, mark.percent / 100.0 * options.chord);
        const QString name = QStringLiteral("%1:%2").arg(mark.upper ? QStringLiteral("upper")
                                                                    : QStringLiteral("lower"),
                                                         QString::number(mark.percent));
        if (!distance)
            result.notes << QStringLiteral("no mark at %1: that side does not reach it").arg(name);
        else if (in_mouth(*distance) && options.intake != Intake::curve)
            result.notes << QStringLiteral("no mark at %1, in the mouth").arg(name);
        else
            put_mark(*distance);
    }
}

void Rib::put_mark(double distance) {
    const OnCurve place = full.at(distance);
    const double width = in_mouth(distance) ? allowances.mouth : allowances.general;
    const QPointF middle = place.point + 0.5 * width * place.outward;
    if (options.mark == MarkShape::point) {
        scene.add(Layer::marks, Dot{middle});
    } else if (options.mark == MarkShape::circle) {
        const double radius = width > 0.0 ? std::min(0.25 * width, greatest_circle) : least_circle;
        scene.add(Layer::marks, Circle{middle, radius});
    } else {
        const QPointF inner = width > 0.0 ? middle : place.point - inward * place.outward;
        scene.add(Layer::marks, line(place.point + width * place.outward, inner));
    }
}

} // namespace

RibResult rib(const sections::Section& section, const RibOptions& options) {
    return Rib(section, options).drawn();
}

} // namespace drawings
