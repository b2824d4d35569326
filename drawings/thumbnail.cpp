// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/thumbnail.h"

#include "drawings/numbers.h"
#include "drawings/outline.h"
#include "drawings/picture_plots.h"

#include <algorithm>

namespace drawings {

namespace {

constexpr double unit = 1000.0; // of the chord
constexpr double flatness = 5e-5 * unit;
constexpr double margin = 12.0;
constexpr double mark_radius = 6.0;

QByteArray pair(QPointF p) {
    return decimal(unit * p.x(), 2) + ' ' + decimal(-unit * p.y(), 2);
}

QByteArray mark(QPointF at, const char* fill) {
    return "<circle cx=\"" + decimal(unit * at.x(), 2) + "\" cy=\"" + decimal(-unit * at.y(), 2) +
           "\" r=\"" + decimal(mark_radius, 2) + "\" fill=\"" + fill +
           "\" vector-effect=\"non-scaling-stroke\"/>";
}

} // namespace

QByteArray outline_svg(const sections::Section& section) {
    const QPolygonF points = flattened(outline_of(section), flatness / unit);
    const QRectF box = points.boundingRect();
    const QByteArray colour = section.is_spline ? "#ff0000" : "#0000ff";
    QByteArray element =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" +
        decimal(unit * box.left() - margin, 2) + ' ' + decimal(-unit * box.bottom() - margin, 2) +
        ' ' + decimal(unit * box.width() + 2.0 * margin, 2) + ' ' +
        decimal(unit * box.height() + 2.0 * margin, 2) + "\" fill=\"none\" stroke=\"" + colour +
        "\" stroke-width=\"1.5\" stroke-linejoin=\"round\">"
        "<path vector-effect=\"non-scaling-stroke\" d=\"M";
    for (qsizetype i = 0; i < points.size(); ++i)
        element += (i == 0 ? "" : i == 1 ? "L" : " ") + pair(points[i]);
    element += "Z\"/>";
    const FullSize full(section, 1.0);
    if (full.mouth()) {
        element += mark(full.at(full.mouth()->from).point, colour.constData()) +
                   mark(full.at(full.mouth()->to).point, "#ffffff");
    }
    return element + "</svg>";
}

} // namespace drawings
