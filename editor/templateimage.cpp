// SPDX-FileCopyrightText: Aerolith developers
// The drawn template kept as an image.
#include "editor/templateimage_p.h"

#include <QPaintEngine>
#include <QPointF>
#include <QSize>

#include <algorithm>
#include <cmath>

namespace {

constexpr double point_radius = 3.0;
constexpr double outline_width = 2.0;

// How far the drawing extends beyond the outline, plus one pixel.
constexpr double margin = point_radius + outline_width + 1.0;

constexpr qint64 most_pixels = qint64(16) << 20;

// A path takes the paint engine some 250 bytes a point, too much for an outline of a million
// points.
constexpr qsizetype longest_path = 20'000;

// Draws the lines of a closed outline that begin at the points first .. last, and the line after
// them, so that the corner between has its join.
void draw_lines(QPainter* painter, const QPolygonF& outline, qsizetype first, qsizetype last) {
    const qsizetype size = outline.size();
    qsizetype end = last + 2;
    while (end - last <= size && outline[end % size] == outline[(last + 1) % size])
        ++end;
    QPolygonF run = outline.mid(first, last - first + 1);
    for (qsizetype i = last + 1; i <= end; ++i)
        run << outline[i % size];
    painter->drawPolyline(run);
}

// Draws a closed outline in runs of those lines that come within a rectangle; all of them for a
// null rectangle.
void draw_in_runs(QPainter* painter, const QPolygonF& outline, const QRectF& within) {
    const QPen pen = painter->pen();
    // A cap would show where the next run begins.
    QPen uncapped = pen;
    uncapped.setCapStyle(Qt::FlatCap);
    painter->setPen(uncapped);
    const auto is_shown = [&](QPointF a, QPointF b) {
        return within.isNull() || (std::min(a.x(), b.x()) <= within.right() &&
                                   std::max(a.x(), b.x()) >= within.left() &&
                                   std::min(a.y(), b.y()) <= within.bottom() &&
                                   std::max(a.y(), b.y()) >= within.top());
    };
    qsizetype first = 0;
    for (qsizetype i = 0; i < outline.size(); ++i) {
        const bool is_last = i + 1 == outline.size();
        const bool shown = is_shown(outline[i], outline[is_last ? 0 : i + 1]);
        if (shown && !is_last && i - first + 1 < longest_path)
            continue;
        if (shown || first < i)
            draw_lines(painter, outline, first, shown ? i : i - 1);
        first = i + 1;
    }
    painter->setPen(pen);
}

// Whether every pixel is either drawn or not, without blending, so that an image can hold the
// drawing.
bool draws_whole_pixels(const QPainter& painter) {
    const QTransform& transform = painter.deviceTransform();
    return painter.paintEngine()->type() == QPaintEngine::Raster &&
           !painter.testRenderHint(QPainter::Antialiasing) &&
           transform.type() <= QTransform::TxScale && transform.m11() >= 1.0 &&
           transform.m22() >= 1.0;
}

bool is_whole(double value) {
    return value == std::floor(value);
}

qint64 pixel_count(QSize size) {
    return qint64(size.width()) * size.height();
}

// Whether a rectangle is far from the limits of integer coordinates.
bool is_near(const QRectF& rect) {
    constexpr double far_away = 1e8;
    return rect.left() > -far_away && rect.top() > -far_away && rect.right() < far_away &&
           rect.bottom() < far_away;
}

// The part of a picture that the device shows.
QRect shown_part(const QPainter& painter, QRect bounds) {
    const QPaintDevice* device = painter.paintEngine()->paintDevice();
    return QRect(0, 0, std::min(bounds.right() + 1, device->width()),
                 std::min(bounds.bottom() + 1, device->height()));
}

QPoint shift_between(const QTransform& from, const QTransform& to) {
    return QPoint(int(to.dx() - from.dx()), int(to.dy() - from.dy()));
}

} // namespace

void TemplateImage::paint(QPainter* painter, const QPolygonF& outline) {
    const QTransform& transform = painter->deviceTransform();
    const QRectF reach = outline.boundingRect().adjusted(-margin, -margin, margin, margin);
    const Picture picture = {outline, painter->pen(), transform, transform.mapRect(reach)};
    if (outline.isEmpty() || !draws_whole_pixels(*painter) || !is_near(picture.bounds)) {
        draw(painter, outline);
        return;
    }
    if (!holds(*painter, picture) && !make(*painter, picture))
        image = QImage();
    if (image.isNull() || !show(painter, picture)) {
        kept = picture;
        draw(painter, outline);
    }
    last_transform = picture.transform;
}

void TemplateImage::draw(QPainter* painter, const QPolygonF& outline, const QRectF& part) {
    const QRectF within = part.isNull() ? part : part.adjusted(-margin, -margin, margin, margin);
    painter->setBrush(QBrush(Qt::red));
    for (const QPointF& point : outline) {
        if (part.isNull() || within.contains(point))
            painter->drawEllipse(point, point_radius, point_radius);
    }
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(QBrush(Qt::blue), outline_width));
    if (outline.size() < 3 || (part.isNull() && outline.size() <= longest_path))
        painter->drawPolygon(outline);
    else
        draw_in_runs(painter, outline, within);
}

bool TemplateImage::same_but_shifted(const Picture& a, const Picture& b) {
    return a.outline.constData() == b.outline.constData() && a.outline.size() == b.outline.size() &&
           a.pen == b.pen && a.transform.m11() == b.transform.m11() &&
           a.transform.m22() == b.transform.m22() &&
           is_whole(a.transform.dx() - b.transform.dx()) &&
           is_whole(a.transform.dy() - b.transform.dy());
}

bool TemplateImage::crosses_edges(const Picture& picture) {
    return picture.bounds.left() < 0.0 || picture.bounds.top() < 0.0;
}

// When a picture that crosses the edges is drawn again at the same place, an image of only the
// visible part makes the crossings unnecessary.
bool TemplateImage::holds(const QPainter& painter, const Picture& picture) const {
    if (image.isNull() || !same_but_shifted(kept, picture))
        return false;
    if (whole)
        return !crosses_edges(picture) || picture.transform != last_transform;
    return picture.transform == kept.transform &&
           image.rect().contains(shown_part(painter, picture.bounds.toAlignedRect()));
}

bool TemplateImage::make(const QPainter& painter, const Picture& picture) {
    if (!same_but_shifted(kept, picture))
        return false;
    const QRect bounds = picture.bounds.toAlignedRect();
    QRect held = bounds;
    const bool stands_still = picture.transform == last_transform;
    whole = pixel_count(bounds.size()) <= most_pixels && !(stands_still && crosses_edges(picture));
    if (!whole) {
        held = shown_part(painter, bounds);
        if (!stands_still || held.isEmpty() || pixel_count(held.size()) > most_pixels)
            return false;
    }
    image = QImage(held.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return false;
    image.fill(Qt::transparent);
    kept = picture;
    origin = held.topLeft();
    QPainter image_painter(&image);
    image_painter.setRenderHints(painter.renderHints());
    image_painter.setPen(picture.pen);
    image_painter.setTransform(picture.transform *
                               QTransform::fromTranslate(-origin.x(), -origin.y()));
    draw(&image_painter, picture.outline);
    return true;
}

// Where points and lines cross the left or upper edge of the device. There the paint engine rounds
// differently than inside, so a shifted image does not show what the engine would draw.
QRegion TemplateImage::crossings(const Picture& picture, QRect device) {
    if (!crosses_edges(picture))
        return QRegion();
    const double dx = margin * picture.transform.m11();
    const double dy = margin * picture.transform.m22();
    QRegion region;
    QPointF a = picture.transform.map(picture.outline.last());
    for (const QPointF& point : picture.outline) {
        const QPointF b = picture.transform.map(point);
        const QRectF line = QRectF(a, b).normalized().adjusted(-dx, -dy, dx, dy);
        if ((line.left() < 0.0 || line.top() < 0.0) && line.right() >= 0.0 && line.bottom() >= 0.0)
            region += line.toAlignedRect() & device;
        a = b;
    }
    return region;
}

bool TemplateImage::show(QPainter* painter, const Picture& picture) const {
    painter->save();
    painter->resetTransform();
    const QTransform to_device = painter->deviceTransform().inverted();
    painter->setTransform(to_device);
    const bool pixel_to_pixel = painter->deviceTransform().isIdentity();
    if (pixel_to_pixel) {
        const QPaintDevice* paint_device = painter->paintEngine()->paintDevice();
        const QRect device(0, 0, paint_device->width(), paint_device->height());
        const QRegion drawn = whole ? crossings(picture, device) : QRegion();
        if (!drawn.isEmpty())
            painter->setClipRegion(QRegion(device) - drawn);
        painter->drawImage(origin + shift_between(kept.transform, picture.transform), image);
        if (!drawn.isEmpty()) {
            painter->setClipRegion(drawn);
            painter->setTransform(picture.transform * to_device);
            const QRectF part(drawn.boundingRect());
            draw(painter, picture.outline, picture.transform.inverted().mapRect(part));
        }
    }
    painter->restore();
    if (pixel_to_pixel) {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(QBrush(Qt::blue), outline_width));
    }
    return pixel_to_pixel;
}
