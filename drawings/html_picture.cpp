// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/html_picture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace drawings {

namespace {

constexpr double units = 10000.0;
constexpr double farthest = 100.0;
constexpr double finest = 0.5 / units;
constexpr int margin = 120;

double distance_from_edge(QPointF p, QPointF a, QPointF b) {
    const QPointF along = b - a;
    const double square = QPointF::dotProduct(along, along);
    const double u =
        square > 0.0 ? std::clamp(QPointF::dotProduct(p - a, along) / square, 0.0, 1.0) : 0.0;
    const QPointF off = p - (a + u * along);
    return std::hypot(off.x(), off.y());
}

// Writes the steps from point to point; a minus sign needs no separator before it.
void put_step(QByteArray& path, int value, bool first) {
    if (!first && value >= 0)
        path += ' ';
    path += QByteArray::number(value);
}

} // namespace

QPolygonF thinned(const QPolygonF& points, double flatness) {
    constexpr qsizetype most = 2000;
    QPolygonF few;
    const qsizetype stride = (points.size() + most - 1) / most;
    for (qsizetype i = 0; i < points.size(); i += std::max<qsizetype>(stride, 1))
        few << points[i];
    if (!points.isEmpty() && stride > 1)
        few << points.last();
    if (few.size() < 3)
        return few;

    std::vector<bool> kept(std::size_t(few.size()), false);
    kept.front() = true;
    kept.back() = true;
    std::vector<std::pair<qsizetype, qsizetype>> waiting = {{0, few.size() - 1}};
    while (!waiting.empty()) {
        const auto [from, to] = waiting.back();
        waiting.pop_back();
        double greatest = flatness;
        qsizetype at = -1;
        for (qsizetype i = from + 1; i < to; ++i) {
            const double distance = distance_from_edge(few[i], few[from], few[to]);
            if (distance > greatest) {
                greatest = distance;
                at = i;
            }
        }
        if (at < 0)
            continue;
        kept[std::size_t(at)] = true;
        waiting.push_back({from, at});
        waiting.push_back({at, to});
    }
    QPolygonF result;
    for (qsizetype i = 0; i < few.size(); ++i) {
        if (kept[std::size_t(i)])
            result << few[i];
    }
    return result;
}

void Picture::add(LineKind kind, const QPolygonF& points) {
    const bool is_within = std::all_of(points.begin(), points.end(), [](QPointF p) {
        return std::abs(p.x()) <= farthest && std::abs(p.y()) <= farthest;
    });
    if (points.size() < 2 || !is_within)
        return;
    Line line;
    line.kind = kind;
    QPoint last;
    for (const QPointF& point : thinned(points, finest)) {
        const QPoint here(int(std::lround(units * point.x())),
                          int(std::lround(-units * point.y())));
        const bool first = line.path.isEmpty();
        if (!first && here == last)
            continue;
        const bool starts = first || line.path.indexOf('l') < 0;
        if (starts)
            line.path += first ? 'M' : 'l';
        const QPoint step = first ? here : here - last;
        put_step(line.path, step.x(), starts);
        put_step(line.path, step.y(), false);
        low = lines.empty() && first ? -here.y() : std::min(low, -here.y());
        high = lines.empty() && first ? -here.y() : std::max(high, -here.y());
        last = here;
    }
    if (line.path.indexOf('l') < 0)
        line.path += "h0";
    lines.push_back(std::move(line));
}

QByteArray line_class(LineKind kind) {
    switch (kind) {
    case LineKind::outline:
        return "o";
    case LineKind::template_line:
        return "t";
    case LineKind::spline_line:
        return "s";
    case LineKind::upper:
        return "u";
    case LineKind::lower:
        return "w";
    case LineKind::axis:
        return "a";
    case LineKind::limit:
        return "m";
    }
    return {};
}

QByteArray picture_svg(const Picture& picture) {
    QByteArray svg = "<svg viewBox=\"" + QByteArray::number(-margin) + ' ' +
                     QByteArray::number(-picture.high - margin) + ' ' +
                     QByteArray::number(int(units) + 2 * margin) + ' ' +
                     QByteArray::number(picture.high - picture.low + 2 * margin) +
                     R"(" aria-hidden="true">)";
    for (const Picture::Line& line : picture.lines)
        svg += "<path class=\"" + line_class(line.kind) + "\" d=\"" + line.path + "\"/>";
    return svg + "</svg>";
}

} // namespace drawings
