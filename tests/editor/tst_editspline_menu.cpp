// SPDX-FileCopyrightText: Aerolith developers
// The context menu of the editor, and presses whose release it takes away.
#include "showneditor.h"
#include "support/exactcompare.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <QToolTip>

#include <climits>
#include <cmath>

class tst_editspline_menu : public QObject {
    Q_OBJECT

private slots:
    void init();
    void menu_entries_data();
    void menu_entries();
    void menu_chosen_data();
    void menu_chosen();
    void menu_position_is_not_mapped();
    void menu_at_capacity_data();
    void menu_at_capacity();
    void menu_dismissed_data();
    void menu_dismissed();
    void menu_over_emptied_spline_data();
    void menu_over_emptied_spline();
    void menu_of_the_right_button();
    void lost_release_data();
    void lost_release();
    void drag_after_an_ignored_press();
};

namespace {

const QStringList menu_texts = {
    QStringLiteral("________________"),       QStringLiteral("Normalize spline"),
    QStringLiteral("Append point to spline"), QStringLiteral("Insert point after selected point"),
    QStringLiteral("Remove selected point"),  QStringLiteral("________________"),
    QStringLiteral("set hull        "),
};

void request_menu(QWidget& widget, QPoint position) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, position, widget.mapToGlobal(position));
    QCoreApplication::sendEvent(&widget, &event);
}

// The effect of a menu entry at @p position.
void do_entry(EditorModel& model, int entry, QPoint position) {
    QPolygonF points = model.points();
    const int selected = model.selected;
    if (entry == 1) {
        model.normalise();
    } else if (entry == 2 && selected <= 0) {
        model.set_points(points + QPolygonF{position});
    } else if (entry == 3) {
        points.insert(selected + 1, 0.5 * (model.last_position + points.at(selected + 1)));
        model.set_points(points);
    } else if (entry == 4) {
        points.remove(selected);
        model.set_points(points);
        model.selected = -1;
    } else if (entry == 6 && selected >= 2) {
        model.spline.b_knots[selected + 2] = model.spline.b_knots[selected + 1] + 0.0001;
    }
}

ModalGuard::Reaction choose_by_mouse(int entry) {
    return [entry](QWidget* window) {
        auto* menu = qobject_cast<QMenu*>(window);
        QVERIFY(menu);
        const QRect place = menu->actionGeometry(menu->actions().at(entry));
        QTest::mouseMove(menu->windowHandle(), place.center());
        QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {}, place.center());
    };
}

ModalGuard::Reaction choose_by_keyboard(int entry) {
    return [entry](QWidget* window) {
        auto* menu = qobject_cast<QMenu*>(window);
        QVERIFY(menu);
        for (int downs = 0; menu->activeAction() != menu->actions().at(entry); ++downs) {
            QVERIFY(downs < 10);
            QTest::keyClick(menu, Qt::Key_Down);
        }
        QTest::keyClick(menu, Qt::Key_Return);
    };
}

} // namespace

void tst_editspline_menu::init() {
    QTestPrivate::qtestMouseButtons = Qt::NoButton;
}

void tst_editspline_menu::menu_entries_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QList<bool>>("enabled");

    QTest::newRow("empty-canvas") << 0 << -1
                                  << QList<bool>{true, false, true, false, false, true, true};
    QTest::newRow("one-point") << 1 << -1
                               << QList<bool>{true, true, true, false, false, true, true};
    QTest::newRow("nothing-selected")
        << 10 << -1 << QList<bool>{true, true, true, false, false, true, true};
    QTest::newRow("first-point-selected")
        << 10 << 0 << QList<bool>{true, true, true, true, true, true, true};
    QTest::newRow("point-selected")
        << 10 << 4 << QList<bool>{true, true, true, true, true, true, true};
    QTest::newRow("selection-out-of-range")
        << 3 << 4 << QList<bool>{true, true, true, false, false, true, true};
    QTest::newRow("count-out-of-range")
        << INT_MIN << 4 << QList<bool>{true, false, true, false, false, true, true};
}

void tst_editspline_menu::menu_entries() {
    QFETCH(int, points);
    QFETCH(int, selected);
    QFETCH(QList<bool>, enabled);

    ShownEditor editor;
    editor.p->spline.num_pnt = points;
    editor.pnt_selected = selected;
    QList<bool> seen;
    QPoint corner;
    bool of_the_editor = false;
    const ModalGuard guard({[&](QWidget* window) {
        const QList<QAction*> actions = window->actions();
        for (const QAction* action : actions) {
            QVERIFY(!action->isSeparator());
            seen << action->isEnabled();
        }
        corner = window->pos();
        for (const QWidget* it = window; it; it = it->parentWidget())
            of_the_editor = of_the_editor || it == &editor;
        ModalGuard::dismiss()(window);
    }});
    request_menu(editor, QPoint(50, 60));
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.seen().entries, menu_texts);
    QCOMPARE(seen, enabled);
    QCOMPARE(corner, editor.mapToGlobal(QPoint(50, 60)));
    // A child would get the colour of the editor's style sheet.
    QVERIFY(!of_the_editor);
}

void tst_editspline_menu::menu_chosen_data() {
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("selected");
    QTest::addColumn<bool>("mouse");

    const QString names[] = {QStringLiteral("upper-separator"), QStringLiteral("normalize"),
                             QStringLiteral("append"),          QStringLiteral("insert"),
                             QStringLiteral("remove"),          QStringLiteral("lower-separator"),
                             QStringLiteral("sharpen")};
    for (int entry = 0; entry < 7; ++entry) {
        const int selected = entry == 2 ? -1 : 4;
        QTest::newRow(qPrintable(names[entry] + QStringLiteral("-by-keyboard")))
            << entry << selected << false;
        QTest::newRow(qPrintable(names[entry] + QStringLiteral("-by-mouse")))
            << entry << selected << true;
    }
    QTest::newRow("append-refused-with-selection") << 2 << 4 << false;
    QTest::newRow("sharpen-without-selection") << 6 << -1 << false;
}

void tst_editspline_menu::menu_chosen() {
    QFETCH(int, entry);
    QFETCH(int, selected);
    QFETCH(bool, mouse);

    ShownEditor editor;
    editor.pnt_selected = selected;
    editor.lastPos = QPoint(200, 300);
    EditorModel before = editor.model();
    const ModalGuard guard({mouse ? choose_by_mouse(entry) : choose_by_keyboard(entry)});
    request_menu(editor, QPoint(50, 60));
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.forced(), 0);
    QCOMPARE(editor.pnt_selected, entry == 4 ? -1 : selected);

    // The focus goes to the menu and returns, which causes paints at unpredictable times.
    const int frames = editor.new_paints();
    bool same = false;
    for (int first = 0; first < frames && !same; ++first) {
        EditorModel model = before;
        do_entry(model, entry, QPoint(50, 60));
        paint_model(model, frames - first);
        same = same_bits(editor.points(), model.points()) &&
               same_bits(editor.spline_poly, model.curve) &&
               same_bits(editor.p->workAirfoil, model.work) &&
               std::equal(model.spline.b_knots, model.spline.b_knots + model.spline.num_knt,
                          editor.p->spline.b_knots);
        paint_model(before, 1);
    }
    QVERIFY(same);
}

// The click position becomes a point of the spline unchanged, even in a zoomed view.
void tst_editspline_menu::menu_position_is_not_mapped() {
    ShownEditor editor;
    editor.f_scale = 2.0;
    editor.p_D = QPointF(-60, 80);
    const ModalGuard guard({choose_by_keyboard(2)});
    request_menu(editor, QPoint(250, 60));
    COMPARE_BITS(editor.curPnt, QPointF(250, 60));
    QCOMPARE(editor.points().size(), 11);
}

void tst_editspline_menu::menu_at_capacity_data() {
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("selected");

    QTest::newRow("append") << 2 << -1;
    QTest::newRow("insert") << 3 << 17;
}

// A tool tip at the cursor reports the refusal, without a message box.
void tst_editspline_menu::menu_at_capacity() {
    QFETCH(int, entry);
    QFETCH(int, selected);

    ShownEditor editor;
    QPolygonF points;
    for (int i = 0; i < 29; ++i)
        points << QPointF(630 - 561 * std::sin(i / 28.0 * Pi), 249 + 5 * (i - 14));
    editor.set_points(points);
    editor.rest();
    editor.pnt_selected = selected;
    for (int attempt = 0; attempt < 3; ++attempt) {
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        const ModalGuard guard({choose_by_keyboard(entry)});
        request_menu(editor, QPoint(50, 60));
        QCOMPARE(guard.count(), 1);
        QCOMPARE(editor.p->spline.num_pnt, 30);
        QCOMPARE(QToolTip::isVisible(), attempt > 0);
        editor.rest();
    }
    QToolTip::hideText();
}

void tst_editspline_menu::menu_dismissed_data() {
    QTest::addColumn<bool>("by_key");

    QTest::newRow("escape") << true;
    QTest::newRow("click-beside") << false;
}

void tst_editspline_menu::menu_dismissed() {
    QFETCH(bool, by_key);

    ShownEditor editor;
    editor.pnt_selected = 4;
    const ModalGuard guard({[by_key](QWidget* menu) {
        if (by_key)
            QTest::keyClick(menu, Qt::Key_Escape);
        else
            QTest::mouseClick(menu, Qt::LeftButton, {}, QPoint(-30, -30));
    }});
    const EditorModel model = editor.model();
    request_menu(editor, QPoint(50, 60));
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.forced(), 0);
    // The menu uncovers what lay below it.
    QVERIFY(editor.new_paints() <= 1);
    COMPARE_WITH_MODEL(editor, model);
    QCOMPARE(editor.pnt_selected, 4);
}

void tst_editspline_menu::menu_over_emptied_spline_data() {
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("expected");

    QTest::newRow("normalize") << 1 << 0 << 0;
    QTest::newRow("append") << 2 << 0 << 1;
    QTest::newRow("insert") << 3 << 0 << 0;
    QTest::newRow("remove") << 4 << 0 << 0;
    QTest::newRow("sharpen") << 6 << 0 << 0;
    QTest::newRow("insert-into-shorter") << 3 << 3 << 3;
    QTest::newRow("remove-from-shorter") << 4 << 3 << 3;
    QTest::newRow("append-to-shorter") << 2 << 3 << 4;
}

// A timer or another window may remove the points while the menu is open.
void tst_editspline_menu::menu_over_emptied_spline() {
    QFETCH(int, entry);
    QFETCH(int, left);
    QFETCH(int, expected);

    ShownEditor editor;
    editor.pnt_selected = 8;
    const ModalGuard guard({[&editor, entry, left](QWidget* menu) {
        editor.p->spline.num_pnt = left;
        editor.p->spline.init_knots();
        choose_by_keyboard(entry)(menu);
    }});
    request_menu(editor, QPoint(50, 60));
    QCOMPARE(guard.forced(), 0);
    QCOMPARE(editor.p->spline.num_pnt, expected);
    QCOMPARE(editor.p->spline.num_knt, expected + 3);
    for (int i = 0; i < expected + 3; ++i)
        COMPARE_BITS(editor.p->spline.b_knots[i], double(i) / (expected + 2));
    editor.rest();
}

// The platform requests the menu on the press of the right button.
void tst_editspline_menu::menu_of_the_right_button() {
    ShownEditor editor;
    editor.pnt_selected = 4;
    const ModalGuard guard({choose_by_keyboard(3)});
    QTest::mousePress(editor.handle(), Qt::RightButton, {}, QPoint(220, 330));
    QCOMPARE(guard.count(), 1);
    QCOMPARE(editor.lastPos, QPoint(220, 330));
    QCOMPARE(editor.points().size(), 11);
    QCOMPARE(editor.pnt_selected, 4);
}

void tst_editspline_menu::lost_release_data() {
    QTest::addColumn<QString>("unlock");

    QTest::newRow("release-of-the-next-press") << QStringLiteral("release");
    QTest::newRow("return") << QStringLiteral("return");
    QTest::newRow("delete") << QStringLiteral("delete");
}

// The menu receives the release of the right button, so the editor goes on ignoring presses.
void tst_editspline_menu::lost_release() {
    QFETCH(QString, unlock);

    ShownEditor editor;
    const ModalGuard guard({[](QWidget* menu) {
        QTest::mouseRelease(menu, Qt::RightButton, {}, QPoint(-30, -30));
        QTest::keyClick(menu, Qt::Key_Escape);
    }});
    QTest::mousePress(editor.handle(), Qt::RightButton, {}, QPoint(20, 30));
    QCOMPARE(guard.count(), 1);
    QCOMPARE(editor.mousepressed, true);

    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, editor.place_of(3));
    QCOMPARE(editor.pnt_selected, -1);
    COMPARE_BITS(editor.lastPosF, QPointF(20, 30));
    if (unlock == QStringLiteral("return"))
        QTest::keyClick(&editor, Qt::Key_Return);
    else if (unlock == QStringLiteral("delete"))
        QTest::keyClick(&editor, Qt::Key_Delete);
    if (unlock != QStringLiteral("release"))
        QCOMPARE(editor.mousepressed, false);
    QTest::mouseRelease(editor.handle(), Qt::LeftButton, {}, editor.place_of(3));
    QCOMPARE(editor.mousepressed, false);
    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, editor.place_of(3));
    QCOMPARE(editor.pnt_selected, 3);
    QCOMPARE(editor.points().size(), 10);
    QTest::mouseRelease(editor.handle(), Qt::LeftButton, {}, editor.place_of(3));
}

// The selection is still the old one, and the button is down.
void tst_editspline_menu::drag_after_an_ignored_press() {
    ShownEditor editor;
    const ModalGuard guard({[](QWidget* menu) {
        QTest::mouseRelease(menu, Qt::RightButton, {}, QPoint(-30, -30));
        QTest::keyClick(menu, Qt::Key_Escape);
    }});
    editor.pnt_selected = 2;
    QTest::mousePress(editor.handle(), Qt::RightButton, {}, QPoint(20, 30));
    QCOMPARE(guard.count(), 1);

    const QPolygonF before = editor.points();
    const QPoint target = editor.place_of(2) + QPoint(10, 5);
    QTest::mousePress(editor.handle(), Qt::LeftButton, {}, editor.place_of(3));
    QTest::mouseMove(editor.handle(), target);
    QCOMPARE(editor.pnt_selected, 2);
    COMPARE_BITS(editor.points().at(3), before.at(3));
    COMPARE_BITS(editor.points().at(2), QPointF(target));
    QTest::mouseRelease(editor.handle(), Qt::LeftButton, {}, target);
}

AEROLITH_TEST_MAIN(tst_editspline_menu)
#include "tst_editspline_menu.moc"
