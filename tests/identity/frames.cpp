// SPDX-FileCopyrightText: Aerolith developers
// Frames of the editor, and frames by the plain paint for the same state.
#include "frames.h"

#include "support/exactcompare.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <QWheelEvent>

namespace {

QImage window_picture(const QWidget& window) {
    return window.screen()
        ->grabWindow(window.winId())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

QString image_difference(const QImage& actual, const QImage& expected) {
    if (actual.isNull() || actual.size() != expected.size())
        return QStringLiteral("pictures of %1 x %2 and %3 x %4 pixels")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    if (actual == expected)
        return QString();
    int count = 0;
    QRect where;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (actual.pixel(x, y) != expected.pixel(x, y)) {
                ++count;
                where |= QRect(x, y, 1, 1);
            }
        }
    }
    const QString folder = qEnvironmentVariable("AEROLITH_FRAMES");
    if (!folder.isEmpty()) {
        actual.save(folder + QStringLiteral("/actual.png"));
        expected.save(folder + QStringLiteral("/expected.png"));
    }
    return QStringLiteral("%1 pixels differ within (%2, %3) %4 x %5, the first is %6 for %7")
        .arg(count)
        .arg(where.x())
        .arg(where.y())
        .arg(where.width())
        .arg(where.height())
        .arg(actual.pixel(where.topLeft()), 8, 16)
        .arg(expected.pixel(where.topLeft()), 8, 16);
}

QImage rendered(QWidget& widget, double ratio) {
    QImage image((QSizeF(widget.size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::gray);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground);
    return image;
}

} // namespace

void WatchedEditor::paintEvent(QPaintEvent* event) {
    painted = {*p, MyRect, lastPos, TE, p_D, f_scale, L_T, H, xc, yc, pnt_selected, mousepressed};
    ++paints;
    EditSpline::paintEvent(event);
}

FramePair::FramePair(QSize size) {
    *editor.p = ParaStruct();
    plain.p = &plain_document;
    for (EditSpline* widget :
         {static_cast<EditSpline*>(&editor), static_cast<EditSpline*>(&plain)}) {
        widget->setWindowFlags(Qt::FramelessWindowHint);
        widget->resize(size);
        widget->move(0, 0);
        widget->Init_widget();
    }
    // Covered pixels of an X window cannot be read back.
    plain.move(size.width() + 1, 0);
}

bool FramePair::show() {
    editor.show();
    plain.show();
    return QTest::qWaitForWindowExposed(&editor) && QTest::qWaitForWindowExposed(&plain);
}

void FramePair::send_mouse(QEvent::Type type, QPoint pos, Qt::MouseButton button,
                           Qt::MouseButtons held) {
    QMouseEvent event(type, QPointF(pos), QPointF(editor.mapToGlobal(pos)), button, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&editor, &event);
}

void FramePair::press(QPoint pos, Qt::MouseButton button) {
    send_mouse(QEvent::MouseButtonPress, pos, button, button);
}

void FramePair::move(QPoint pos, Qt::MouseButton button) {
    send_mouse(QEvent::MouseMove, pos, Qt::NoButton, button);
}

void FramePair::release(QPoint pos, Qt::MouseButton button) {
    send_mouse(QEvent::MouseButtonRelease, pos, button, Qt::NoButton);
}

void FramePair::turn_wheel(int delta) {
    const QPointF centre = editor.rect().center();
    QWheelEvent event(centre, editor.mapToGlobal(centre), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&editor, &event);
}

void FramePair::press_key(Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&editor, &event);
}

QPoint FramePair::shown(int i) const {
    return (editor.f_scale * editor.p->spline.CP[i] + editor.p_D).toPoint();
}

void FramePair::take_state() {
    const FrameState& state = editor.painted;
    plain_document = state.document;
    plain.MyRect = state.window;
    plain.lastPos = state.last_pos;
    plain.TE = state.trailing_edge;
    plain.p_D = state.pan;
    plain.f_scale = state.zoom;
    plain.L_T = state.chord;
    plain.H = state.height;
    plain.xc = state.x_origin;
    plain.yc = state.y_origin;
    plain.pnt_selected = state.selected;
    plain.mousepressed = state.pressed;
    if (plain.size() != editor.size()) {
        plain.resize(editor.size());
        plain.move(editor.x() + editor.width() + 1, 0);
    }
    if (plain.palette() != editor.palette())
        plain.setPalette(editor.palette());
    if (plain.font() != editor.font())
        plain.setFont(editor.font());
    if (plain.styleSheet() != editor.styleSheet())
        plain.setStyleSheet(editor.styleSheet());
    if (plain.layoutDirection() != editor.layoutDirection())
        plain.setLayoutDirection(editor.layoutDirection());
}

QString FramePair::document_difference() const {
    const ParaStruct& actual = *editor.p;
    const ParaStruct& expected = plain_document;
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        if (!same_bits(actual.spline.CP[i], expected.spline.CP[i]))
            return QStringLiteral("control point %1: %2 for %3")
                .arg(i)
                .arg(exact_text(actual.spline.CP[i]), exact_text(expected.spline.CP[i]));
    }
    const QString curve = first_difference(editor.spline_poly, plain.spline_poly);
    if (!curve.isEmpty())
        return QStringLiteral("curve: ") + curve;
    const QString work = first_difference(actual.workAirfoil, expected.workAirfoil);
    return work.isEmpty() ? work : QStringLiteral("work polygon: ") + work;
}

QString FramePair::difference() {
    // Pending events of the window system (a new size, a new screen) come first.
    QCoreApplication::processEvents();
    take_state();
    QCoreApplication::processEvents();
    take_state();
    plain.repaint();
    const QString pixels = image_difference(window_picture(editor), window_picture(plain));
    return pixels.isEmpty() ? document_difference() : pixels;
}

QString FramePair::difference_in_image(double ratio) {
    const QImage actual = rendered(editor, ratio);
    take_state();
    const QImage expected = rendered(plain, ratio);
    const QString pixels = image_difference(actual, expected);
    return pixels.isEmpty() ? document_difference() : pixels;
}

QString FramePair::difference_in_part(QRect part) {
    const QImage actual = editor.grab(part).toImage();
    take_state();
    const QString pixels = image_difference(actual, plain.grab(part).toImage());
    return pixels.isEmpty() ? document_difference() : pixels;
}
