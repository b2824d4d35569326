// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/lettering_p.h"

#include "drawings/numbers_p.h"
#include "drawings/page_p.h"
#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

using sections::cross;
using sections::dot;

constexpr double text_heights[] = {15.0, 12.0, 10.0, 8.0, 6.0, 5.0, 4.0, 3.0, 2.5};
constexpr double text_start = 0.2;     // share of the chord
constexpr double text_clearance = 1.5; // of the text height, below the upper side
constexpr double arrow_station = 0.65;
constexpr double longest_arrow = 200.0;
constexpr double head_length = 0.08; // of the arrow
constexpr double degree = 3.14159265358979324 / 180.0;

constexpr double bar_length = 100.0;
constexpr double bar_tick = 3.0;
constexpr double bar_gap = 15.0;

// Whether the outline and the chord line stay out of the box.
bool is_free(const QRectF& box, const QPolygonF& outline, QPointF nose, QPointF tail) {
    for (qsizetype i = 1; i < outline.size(); ++i) {
        if (meet(box, outline[i - 1], outline[i]))
            return false;
    }
    return !meet(box, nose, tail);
}

} // namespace

void put_text(Scene& scene, const FullSize& full, const QString& text, double flatness) {
    const QPolygonF outline = full.outline(Intake::curve, flatness).points;
    const QPointF nose = full.leading_edge();
    const QPointF tail = full.trailing_edge();
    const double x = nose.x() + text_start * (tail.x() - nose.x());
    const double chord_line = nose.y() + text_start * (tail.y() - nose.y());
    for (const double height : text_heights) {
        Text line = {{x, chord_line + text_clearance * height}, height, text};
        if (outline.containsPoint(line.at, Qt::WindingFill) &&
            is_free(text_box(line).adjusted(-height, -0.5 * height, height, 0.5 * height), outline,
                    nose, tail)) {
            scene.add(Layer::text, std::move(line));
            return;
        }
    }
    const double height = 5.0;
    scene.add(Layer::text,
              Text{{x, bounds(scene, flatness).top() - text_clearance * height}, height, text});
}

void put_grain(Scene& scene, const FullSize& full, double degrees, double flatness) {
    const QPolygonF outline = full.outline(Intake::curve, flatness).points;
    const QPointF chord = full.trailing_edge() - full.leading_edge();
    // Relative to the chord line from its rear end: a positive angle lifts the forward head.
    const double angle = std::atan2(chord.y(), chord.x()) - degrees * degree;
    const QPointF along(std::cos(angle), std::sin(angle));

    const double x = full.leading_edge().x() + arrow_station * chord.x();
    const std::optional<double> upper = full.cut(true, x);
    const std::optional<double> lower = full.cut(false, x);
    if (!upper || !lower)
        return;
    const QPointF middle = 0.5 * (full.at(*upper).point + full.at(*lower).point);
    double room = 0.5 * longest_arrow;
    for (qsizetype i = 0; i < outline.size(); ++i) {
        const QPointF a = outline[i] - middle;
        const QPointF b = outline[(i + 1) % outline.size()] - middle;
        const double left = cross(along, a);
        const double right = cross(along, b);
        if ((left > 0.0) != (right > 0.0)) {
            const double at = dot(along, a) + left / (left - right) * dot(along, b - a);
            room = std::min(room, 0.7 * std::abs(at));
        }
    }
    const QPointF half = room * along;
    const QPointF back = 2.0 * head_length * half;
    const QPointF across(-0.5 * back.y(), 0.5 * back.x());
    scene.add(Layer::grain, line(middle - half, middle + half));
    for (const double sign : {-1.0, 1.0}) {
        const QPointF tip = middle + sign * half;
        const QPointF root = tip - sign * back;
        scene.add(Layer::grain, path_through({root + across, tip, root - across}, false));
    }
}

void add_scale_bar(Scene& scene, double flatness) {
    const QRectF box = bounds(scene, flatness);
    const QPointF start(box.left(), box.top() - bar_gap);
    const QPointF end = start + QPointF(bar_length, 0.0);
    const QPointF tick(0.0, bar_tick);
    scene.add(Layer::scale, line(start, end));
    scene.add(Layer::scale, line(start - tick, start + tick));
    scene.add(Layer::scale, line(end - tick, end + tick));
    scene.add(Layer::scale, Text{end + QPointF(5.0, -2.5), 5.0, QStringLiteral("100 mm")});
}

QString filled_text(const QString& pattern, const QString& name, double chord, int n) {
    QString result;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QStringView rest = QStringView(pattern).mid(i);
        if (rest.startsWith(u"{name}")) {
            result += name;
            i += 5;
        } else if (rest.startsWith(u"{chord}")) {
            result += QString::fromLatin1(decimal(chord, 3));
            i += 6;
        } else if (rest.startsWith(u"{n}")) {
            result += QString::number(n);
            i += 2;
        } else {
            result += pattern[i];
        }
    }
    return result;
}

} // namespace drawings
