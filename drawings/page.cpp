// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/page_p.h"

#include <algorithm>
#include <cmath>

namespace drawings {

QRectF page_box(const Scene& scene, double flatness) {
    constexpr double margin = 5.0;
    if (scene.page)
        return *scene.page;
    const QRectF box = bounds(scene, flatness);
    return QRectF(QPointF(std::floor(box.left() - margin), std::floor(box.top() - margin)),
                  QPointF(std::ceil(box.right() + margin), std::ceil(box.bottom() + margin)));
}

Look look_of(const Element& element) {
    if (element.look)
        return *element.look;
    Look look;
    look.colour = layer_colours[int(element.layer)];
    look.width = std::holds_alternative<Dot>(element.shape) ? dot_width : line_width;
    return look;
}

// The line is clipped by each side of the box (Liang and Barsky, 1984).
std::optional<std::pair<double, double>> part_within(const QRectF& box, QPointF a, QPointF b) {
    double from = 0.0;
    double to = 1.0;
    const QPointF d = b - a;
    const double steps[] = {-d.x(), d.x(), -d.y(), d.y()};
    const double room[] = {a.x() - box.left(), box.right() - a.x(), a.y() - box.top(),
                           box.bottom() - a.y()};
    for (int i = 0; i < 4; ++i) {
        if (steps[i] == 0.0 && room[i] < 0.0)
            return std::nullopt;
        if (steps[i] < 0.0)
            from = std::max(from, room[i] / steps[i]);
        else if (steps[i] > 0.0)
            to = std::min(to, room[i] / steps[i]);
    }
    return from <= to ? std::optional(std::pair(from, to)) : std::nullopt;
}

bool meet(const QRectF& box, QPointF a, QPointF b) {
    return part_within(box, a, b).has_value();
}

} // namespace drawings
