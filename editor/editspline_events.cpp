// SPDX-FileCopyrightText: Aerolith developers
// Mouse, wheel, keys and the context menu.
#include "editor/editspline.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double least_zoom = 0.5;
constexpr double greatest_zoom = 4.0;
constexpr double wheel_units_per_doubling = 1080.0;

// The positions of the context menu's entries.
enum MenuEntry {
    upper_line,
    normalize_entry,
    append_entry,
    insert_entry,
    remove_entry,
    lower_line,
    sharpen_entry,
    entry_count
};

} // namespace

void EditSpline::mousePressEvent(QMouseEvent* event) {
    if (mousepressed)
        return;
    lastPos = event->position().toPoint();
    lastPosF = event->position();
    mousepressed = true;
    if (event->buttons() & Qt::LeftButton) {
        pnt_selected = SelectPoint();
        repaint();
    }
}

void EditSpline::mouseMoveEvent(QMouseEvent* event) {
    if (!mousepressed)
        return;
    const QPoint pos = event->position().toPoint();
    const double dx = pos.x() - lastPos.x();
    const double dy = pos.y() - lastPos.y();
    lastPos = pos;
    const int selected = selected_point();
    if (event->buttons() & Qt::LeftButton && selected >= 0) {
        p->spline.CP[selected] = view().to_logical(pos);
        repaint();
    }
    if (event->buttons() & Qt::MiddleButton) {
        p_D += QPointF(dx, dy);
        repaint();
    }
}

void EditSpline::mouseReleaseEvent(QMouseEvent*) {
    mousepressed = false;
    repaint();
}

void EditSpline::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton)
        return;
    p_D = QPointF(0.0, 0.0);
    f_scale = 1.0;
    Normalize_Spline_Poly();
    repaint();
}

void EditSpline::wheelEvent(QWheelEvent* event) {
    const QPoint turned = event->angleDelta();
    const int delta = turned.y() != 0 ? turned.y() : turned.x();
    const double scale = std::pow(2.0, delta / wheel_units_per_doubling) * f_scale;
    f_scale = std::clamp(scale, least_zoom, greatest_zoom);
    repaint();
}

void EditSpline::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Recovers from a press whose release went to the context menu.
        mousepressed = false;
        repaint();
        break;
    case Qt::Key_Delete:
        Remove_Point();
        mousepressed = false;
        pnt_selected = -1;
        repaint();
        break;
    case Qt::Key_Left:
        MovePoint(-1, 0);
        break;
    case Qt::Key_Up:
        MovePoint(0, -1);
        break;
    case Qt::Key_Right:
        MovePoint(1, 0);
        break;
    case Qt::Key_Down:
        MovePoint(0, 1);
        break;
    default:
        break;
    }
}

void EditSpline::ShowContextMenu(const QPoint& pos) {
    const bool is_pnt = selected_point() >= 0;
    const QPoint globalPos = mapToGlobal(pos);
    // Without a parent: a child of the editor would inherit its colour.
    QMenu myMenu;
    std::array<QAction*, entry_count> actions = {};
    actions[upper_line] = myMenu.addAction(tr("________________"));
    actions[normalize_entry] = myMenu.addAction(tr("Normalize spline"));
    actions[append_entry] = myMenu.addAction(tr("Append point to spline"));
    actions[insert_entry] = myMenu.addAction(tr("Insert point after selected point"));
    actions[remove_entry] = myMenu.addAction(tr("Remove selected point"));
    actions[lower_line] = myMenu.addAction(tr("________________"));
    actions[sharpen_entry] = myMenu.addAction(tr("set hull        "));
    actions[normalize_entry]->setEnabled(p->spline.point_count() > 0);
    actions[insert_entry]->setEnabled(is_pnt);
    actions[remove_entry]->setEnabled(is_pnt);

    const QAction* selectedItem = myMenu.exec(globalPos);
    const auto found = std::find(actions.begin(), actions.end(), selectedItem);
    if (found == actions.end())
        return;
    Action_From_Menu(pos, int(found - actions.begin()));
    repaint();
}

void EditSpline::Action_From_Menu(QPoint P, int m) {
    switch (m) {
    case normalize_entry:
        Normalize_Spline_Poly();
        break;
    case append_entry:
        Append_New_Point(P);
        break;
    case insert_entry:
        New_Point_Insert(P);
        break;
    case remove_entry:
        Remove_Point();
        break;
    case sharpen_entry:
        Toggle_Conic_Control();
        break;
    default:
        break;
    }
}
