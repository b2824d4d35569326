// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/sheet.h"

#include <algorithm>

namespace drawings {

std::size_t line_count(const Scene& scene) {
    std::size_t count = 0;
    for (const Element& element : scene.elements) {
        const auto* path = std::get_if<Path>(&element.shape);
        count += path ? path->segments.size() : 1;
    }
    return count;
}

Scene on_one_sheet(const std::vector<Scene>& pieces, double gap, double flatness) {
    std::vector<QRectF> boxes;
    double widest = 0.0;
    for (const Scene& piece : pieces) {
        boxes.push_back(bounds(piece, flatness));
        widest = std::max(widest, boxes.back().width());
    }
    Scene sheet;
    QPointF next(0.0, 0.0);
    double row_height = 0.0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const QRectF& box = boxes[i];
        if (next.x() > 0.0 && next.x() + box.width() > widest) {
            next = QPointF(0.0, next.y() - row_height - gap);
            row_height = 0.0;
        }
        sheet.add(pieces[i], next - box.bottomLeft());
        next.rx() += box.width() + gap;
        row_height = std::max(row_height, box.height());
    }
    return sheet;
}

} // namespace drawings
