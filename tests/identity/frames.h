// SPDX-FileCopyrightText: Aerolith developers
// Frames of the editor, and frames by the plain paint for the same state.
#pragma once

#include "baseline/editor.h"
#include "editor/editspline.h"

#include <QEvent>
#include <QImage>
#include <QPoint>
#include <QString>

/// The inputs of a picture, apart from the widget's own attributes.
struct FrameState {
    ParaStruct document;
    QRect window;
    QPoint last_pos;
    QPointF trailing_edge;
    QPointF pan;
    double zoom = 1.0;
    int chord = 0;
    int height = 0;
    int x_origin = 0;
    int y_origin = 0;
    int selected = -1;
    bool pressed = false;
};

/// The editor, recording its state at the start of each paint.
class WatchedEditor : public EditSpline {
public:
    FrameState painted; ///< The state at the start of the last paint.
    int paints = 0;     ///< Paints so far.

    void paintEvent(QPaintEvent* event) override;
};

/// An editor and a plain one in two windows. The plain one has its own document, so that paints of
/// one do not affect the other.
class FramePair {
public:
    explicit FramePair(QSize size);

    WatchedEditor editor;
    baseline::Editor plain;

    /// Shows both windows and waits for them.
    /// @return whether both were exposed
    bool show();

    /// Sends a mouse event to the editor.
    /// @param button the button that changes, or that is held while moving
    void press(QPoint pos, Qt::MouseButton button);
    void move(QPoint pos, Qt::MouseButton button);
    void release(QPoint pos, Qt::MouseButton button);

    void turn_wheel(int delta); ///< Sends a wheel event.
    void press_key(Qt::Key key);

    /// Where control point @p i is shown, widget pixels.
    QPoint shown(int i) const;

    /// Makes the plain editor paint the state that the editor painted last, and compares the pixels
    /// of the two windows and the effects on the documents.
    /// @return where they differ; empty if they do not
    QString difference();

    /// The same for a picture of the current state in a separate image.
    /// @param ratio device pixels per logical pixel
    QString difference_in_image(double ratio);

    /// The same for a grabbed part of the window.
    QString difference_in_part(QRect part);

private:
    void send_mouse(QEvent::Type type, QPoint pos, Qt::MouseButton button, Qt::MouseButtons held);
    void take_state();
    QString document_difference() const;

    ParaStruct plain_document; // As the plain paint left it.
};
