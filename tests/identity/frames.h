// SPDX-FileCopyrightText: Aerolith developers
// Frames of the editor beside frames that the plain paint makes of the same state.
#pragma once

#include "baseline/editor.h"
#include "editor/editspline.h"

#include <QEvent>
#include <QImage>
#include <QPoint>
#include <QString>

/// What a picture is made of, apart from the widget's own attributes.
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

/// The editor, which notes its state at the start of each paint.
class WatchedEditor : public EditSpline {
public:
    FrameState painted; ///< The state at the start of the last paint.
    int paints = 0;     ///< Paints so far.

    void paintEvent(QPaintEvent* event) override;
};

/// An editor and a plain one, two windows side by side. The plain one has a document of
/// its own, so that no paint of one reaches the other.
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

    /// Lets the plain editor paint the state that the editor painted last, and compares
    /// the two windows' pixels and what both paints left in the document.
    /// @return where they differ, empty for nowhere
    QString difference();

    /// The same for a picture of the present state in an image of its own.
    /// @param ratio device pixels a logical pixel
    QString difference_in_image(double ratio);

    /// The same for a grabbed part of the window.
    QString difference_in_part(QRect part);

private:
    void send_mouse(QEvent::Type type, QPoint pos, Qt::MouseButton button, Qt::MouseButtons held);
    void take_state();
    QString document_difference() const;

    ParaStruct plain_document; // As the plain paint left it.
};
