// SPDX-FileCopyrightText: Aerolith developers
// The editor for tests: of a given size, with an empty document, counting its paints.
#pragma once

#include "editor/editspline.h"
#include "editormodel.h"
#include "support/recordingpaintdevice.h"

#include <QLineF>
#include <QList>
#include <QPen>
#include <QSize>
#include <QString>

/// The size assumed by the numbers in the comments of the tests.
inline constexpr QSize usual_size = QSize(1024, 768);

/// The editor, which counts its paints. Construction empties the document.
class TestEditor : public EditSpline {
public:
    explicit TestEditor(QSize size = usual_size, QWidget* parent = nullptr);

    void paintEvent(QPaintEvent* event) override;

    int paints = 0;

    /// Puts @p points and uniform knots into the document.
    void set_points(const QPolygonF& points);

    /// Draws the symmetric section and paints until it has settled.
    void set_settled_section();

    QPolygonF points() const;

    /// A model with the state of this editor and its document.
    EditorModel model() const;

    /// One frame drawn on a recording device.
    QList<PaintOperation> recorded();
};

/// The points in use: 0..30.
QPolygonF spline_points(const SplineFoil& spline);

/// Paints until no paint event is pending; false if they do not end.
bool paint_until_idle(TestEditor& editor);

QList<PaintOperation> of_kind(const QList<PaintOperation>& all, PaintOperation::Kind kind);

/// The texts drawn, in order.
QStringList texts_of(const QList<PaintOperation>& all);

/// Points whose values identify their index.
QPolygonF numbered(int count);

/// Gives all elements of the arrays, used or not, values that identify their index.
void number_store(SplineFoil& spline);

/// All elements of the arrays of points and of second points.
QPolygonF store(const SplineFoil& spline);
QPolygonF second_store(const SplineFoil& spline);

/// How the knots differ from uniform ones; empty if they do not.
QString knot_difference(const SplineFoil& spline);

#define VERIFY_UNIFORM_KNOTS(spline)                                                               \
    QVERIFY2(knot_difference(spline).isEmpty(), qPrintable(knot_difference(spline)))

/// The lines drawn with a pen, in order.
QList<QLineF> lines_of(const QList<PaintOperation>& all, const QPen& pen);
