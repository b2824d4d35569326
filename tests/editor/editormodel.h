// SPDX-FileCopyrightText: Aerolith developers
// A second, plain implementation of the editor's mapping, curve and picture, with which the tests
// compare the widget. It shares no code with the widget.
#pragma once

#include "document/parastruct.h"

#include <QColor>
#include <QPaintDevice>
#include <QPoint>
#include <QPointF>
#include <QPolygonF>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

/// The state and the picture of the editor and its document, for a widget of a given size.
struct EditorModel {
    explicit EditorModel(QSize size);

    QRect window;
    int wr;
    int H;
    int xc;
    int yc;
    int L_T;
    QPointF TE;

    double zoom = 1.0;
    QPointF pan;
    QPoint last_position;
    bool pressed = false;
    int selected = -1;
    QColor text_colour = Qt::black;

    SplineFoil spline; ///< Storage only: none of its functions is called.
    QString template_name;
    QPolygonF template_outline;
    QPolygonF curve;
    QPolygonF work;

    QPointF to_pixels(QPointF chord) const;
    QPointF to_chord(QPointF pixels) const;

    void set_points(const QPolygonF& points); ///< With uniform knots.
    void set_point(int index, QPointF point) { spline.CP[index] = point; }
    void uniform_knots();
    QPolygonF points() const;
    bool has_selection() const;

    void evaluate(); ///< Samples the curve.
    void normalise();
    void adjust();
    bool settled() const; ///< The first point is at TE.

    /// One frame: its side effects, and what it draws on @p device.
    void paint(QPaintDevice* device);

    /// The log of one frame.
    QStringList paint_log();
};

/// Twice the signed area in single precision, without the closing edge.
double model_area(const QPolygonF& outline);

/// The two texts of an outline's thickness.
QStringList model_thickness(const QPolygonF& outline);

/// The rows of a saved table, byte by byte.
QByteArray model_table(const QString& name, const QPolygonF& chord_curve);

/// The ten points of the symmetric section.
QPolygonF model_symmetric(const EditorModel& model);

/// An asymmetric closed outline in chord units, of @p count points.
QPolygonF sample_template(int count);
