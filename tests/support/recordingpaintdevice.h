// SPDX-FileCopyrightText: Aerolith developers
// A paint device that records operations instead of pixels, so that a picture can be checked
// independently of fonts and rasterisation.
#pragma once

#include <QBrush>
#include <QFont>
#include <QList>
#include <QPaintDevice>
#include <QPen>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTransform>

#include <memory>

/// One drawing operation, with the state of the painter.
struct PaintOperation {
    enum Kind { Line, Ellipse, Polygon, Polyline, Rectangle, Points, Path, Text, Image };

    Kind kind = Line;
    QPen pen;
    QBrush brush;
    QFont font;
    QTransform view;  ///< From the coordinates below to pixels of the device.
    QPolygonF points; ///< Line: its two ends; Polygon, Polyline, Points: the vertices.
    QRectF rect;      ///< Ellipse, Rectangle, Path, Image: the extent.
    QPointF position; ///< Text: start of the baseline.
    QString text;     ///< Text only.
    Qt::FillRule fill = Qt::OddEvenFill; ///< Polygon only.

    /// Centre of an ellipse.
    QPointF centre() const { return rect.center(); }

    /// All coordinates of the operation, in device pixels.
    QPolygonF device_points() const;
};

/// Records on a paint engine other than the raster engine, so that no cached image is drawn.
class RecordingPaintDevice : public QPaintDevice {
public:
    /// @param size pixels
    explicit RecordingPaintDevice(QSize size);
    ~RecordingPaintDevice() override;

    QPaintEngine* paintEngine() const override;

    const QList<PaintOperation>& operations() const;
    QList<PaintOperation> operations(PaintOperation::Kind kind) const;
    void clear();

    /// One line of text for each operation, preceded by its pen, brush and view where they have
    /// changed and matter to it. Coordinates have four decimals; long lists of vertices are wrapped
    /// and indented.
    QStringList log() const;

    /// Operations with a device coordinate that is not finite or exceeds @p limit pixels, as lines
    /// of the log; empty for none.
    QStringList out_of_bounds(double limit = 1e6) const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;

    QSize device_size;
    std::unique_ptr<Engine> engine;
};

/// The operations as lines of text, see RecordingPaintDevice::log().
QStringList paint_log(const QList<PaintOperation>& operations);

/// A pen in the notation of the log, for example "pen #8b0000 cosmetic dot square bevel".
QString pen_text(const QPen& pen);

/// Where two logs first differ, with the lines before; empty if they are equal.
QString first_log_difference(const QStringList& actual, const QStringList& expected);

/// Compares a log with the file @p name (without folder) in the folder @p folder. With
/// the environment variable AEROLITH_UPDATE_GOLDEN set, writes the file instead.
/// @return the difference; empty for none
QString golden_difference(const QString& folder, const QString& name, const QStringList& log);
