// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/scene.h"

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

constexpr int most_lines = 10000;
constexpr double character_width = 0.8;
constexpr double descent = 0.25;

double length(QPointF a) {
    return std::hypot(a.x(), a.y());
}

// A chord over the parameter step h deviates from the segment by at most h^2/8 of the greatest
// second derivative, which a Bezier segment has at one of its ends.
int line_count(QPointF start, const Segment& segment, double flatness) {
    double second = 0.0;
    if (segment.degree == 2) {
        second = 2.0 * length(start - 2.0 * segment.controls[0] + segment.end);
    } else if (segment.degree == 3) {
        const auto& [a, b] = segment.controls;
        second = 6.0 * std::max(length(start - 2.0 * a + b), length(a - 2.0 * b + segment.end));
    }
    const double count = std::ceil(std::sqrt(second / (8.0 * flatness)));
    // Written so that NaN gives 1.
    return count > 1.0 ? int(std::min(count, double(most_lines))) : 1;
}

template<typename Function>
void transform_points(Element& element, const Function& image) {
    if (auto* path = std::get_if<Path>(&element.shape)) {
        path->start = image(path->start);
        for (Segment& segment : path->segments) {
            segment.end = image(segment.end);
            for (QPointF& control : segment.controls)
                control = image(control);
        }
    } else if (auto* circle = std::get_if<Circle>(&element.shape)) {
        circle->centre = image(circle->centre);
    } else if (auto* dot = std::get_if<Dot>(&element.shape)) {
        dot->at = image(dot->at);
    } else {
        Text& text = std::get<Text>(element.shape);
        text.at = image(text.at);
    }
}

class Box {
public:
    void take(QPointF p) {
        if (empty) {
            low = high = p;
            empty = false;
        }
        low = QPointF(std::min(low.x(), p.x()), std::min(low.y(), p.y()));
        high = QPointF(std::max(high.x(), p.x()), std::max(high.y(), p.y()));
    }
    void take(const QRectF& box) {
        take(box.topLeft());
        take(box.bottomRight());
    }
    QRectF rectangle() const { return empty ? QRectF() : QRectF(low, high); }

private:
    QPointF low, high;
    bool empty = true;
};

} // namespace

LayerNames standard_layer_names() {
    return {QStringLiteral("CUT"),   QStringLiteral("STITCH"), QStringLiteral("MOUTH"),
            QStringLiteral("MARKS"), QStringLiteral("GRAIN"),  QStringLiteral("CHORD"),
            QStringLiteral("TEXT"),  QStringLiteral("SCALE")};
}

void Scene::add(const Scene& other, QPointF shift) {
    elements.reserve(elements.size() + other.elements.size());
    for (Element element : other.elements) {
        transform_points(element, [shift](QPointF p) { return p + shift; });
        elements.push_back(std::move(element));
    }
}

Path path_through(const QPolygonF& points, bool closed) {
    Path path;
    path.closed = closed;
    if (points.isEmpty())
        return path;
    path.start = points.first();
    path.segments.reserve(std::size_t(points.size()) - 1);
    for (qsizetype i = 1; i < points.size(); ++i)
        path.segments.push_back({1, {}, points[i]});
    return path;
}

Path line(QPointF a, QPointF b) {
    return path_through({a, b}, false);
}

QPointF position(QPointF start, const Segment& segment, double u) {
    const double v = 1.0 - u;
    const auto& [a, b] = segment.controls;
    if (segment.degree == 1)
        return v * start + u * segment.end;
    if (segment.degree == 2)
        return v * v * start + 2.0 * u * v * a + u * u * segment.end;
    return v * v * v * start + 3.0 * u * v * v * a + 3.0 * u * u * v * b + u * u * u * segment.end;
}

QPolygonF flattened(const Path& path, double flatness) {
    QPolygonF points = {path.start};
    QPointF start = path.start;
    for (const Segment& segment : path.segments) {
        const int count = line_count(start, segment, flatness);
        for (int i = 1; i < count; ++i)
            points.append(position(start, segment, double(i) / count));
        points.append(segment.end);
        start = segment.end;
    }
    if (path.closed && points.size() > 1 && points.last() == path.start)
        points.removeLast();
    return points;
}

QRectF text_box(const Text& text) {
    return QRectF(text.at.x(), text.at.y() - descent * text.height,
                  character_width * text.height * double(text.text.size()),
                  (1.0 + descent) * text.height);
}

QRectF bounds(const Scene& scene, double flatness) {
    Box box;
    for (const Element& element : scene.elements) {
        if (const auto* path = std::get_if<Path>(&element.shape)) {
            for (const QPointF& p : flattened(*path, flatness))
                box.take(p);
        } else if (const auto* circle = std::get_if<Circle>(&element.shape)) {
            const QPointF corner(circle->radius, circle->radius);
            box.take(QRectF(circle->centre - corner, circle->centre + corner));
        } else if (const auto* dot = std::get_if<Dot>(&element.shape)) {
            box.take(dot->at);
        } else {
            box.take(text_box(std::get<Text>(element.shape)));
        }
    }
    return box.rectangle();
}

Scene mirrored(const Scene& scene, double x) {
    Scene result = scene;
    for (Element& element : result.elements) {
        if (auto* text = std::get_if<Text>(&element.shape))
            text->at.setX(2.0 * x - text_box(*text).right());
        else
            transform_points(element, [x](QPointF p) { return QPointF(2.0 * x - p.x(), p.y()); });
    }
    return result;
}

Scene placed(const Scene& scene, double scale, QPointF shift) {
    Scene result = scene;
    for (Element& element : result.elements)
        transform_points(element, [=](QPointF p) { return scale * p + shift; });
    return result;
}

QString printable(const QString& text) {
    QString result;
    const QList<uint> characters = text.toUcs4();
    for (const uint c : characters) {
        if (c < 0x20 || (c >= 0x7f && c < 0xa0))
            result += QLatin1Char(' ');
        else if (QChar::isNonCharacter(c) || QChar::isSurrogate(c))
            result += QChar(QChar::ReplacementCharacter);
        else
            result += QChar::fromUcs4(c);
    }
    return result;
}

} // namespace drawings
