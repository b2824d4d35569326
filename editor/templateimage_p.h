// SPDX-FileCopyrightText: Aerolith developers
// The drawn template kept as an image.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPen>
#include <QPoint>
#include <QPolygonF>
#include <QRect>
#include <QRectF>
#include <QRegion>
#include <QTransform>

/// Draws the template, and keeps its picture for frames in which only other items change.
///
/// The image replaces the drawing pixel for pixel: it is used only on raster engines, without
/// antialiasing, and at a zoom of 1 or more, where every pixel is either drawn or not. It is made
/// when the same picture is drawn for the second time, and a shift by whole device pixels keeps it.
/// Another outline, pen, zoom or fractional offset discards it.
class TemplateImage {
public:
    /// Draws the template with the painter's pen around its points. Afterwards the painter
    /// has the pen of the outline and no brush.
    /// @param painter the active painter, with the transform of the view
    /// @param outline the template in the painter's logical pixels, all drawable
    void paint(QPainter* painter, const QPolygonF& outline);

private:
    struct Picture {
        QPolygonF outline;
        QPen pen;
        QTransform transform; // logical to device pixels
        QRectF bounds;        // of all that is drawn, device pixels
    };

    static void draw(QPainter* painter, const QPolygonF& outline, const QRectF& part = {});
    static bool same_but_shifted(const Picture& a, const Picture& b);
    static QRegion crossings(const Picture& picture, QRect device);
    static bool crosses_edges(const Picture& picture);
    bool holds(const QPainter& painter, const Picture& picture) const;
    bool make(const QPainter& painter, const Picture& picture);
    bool show(QPainter* painter, const Picture& picture) const;

    Picture kept;
    // Empty unless the kept picture was drawn twice.
    QImage image;
    // Device pixel of the image's first pixel, at the transform of the kept picture.
    QPoint origin;
    // Transform of the picture that was painted last.
    QTransform last_transform;
    // Whether the image holds the whole picture, and not only what the device shows of it.
    bool whole = false;
};
