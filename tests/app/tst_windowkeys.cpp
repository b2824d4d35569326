// SPDX-FileCopyrightText: Aerolith developers
// Keys in the opening fields, on the tool buttons and on the editor: a key that a child of the
// editor ignores propagates to the editor.
#include "app/mainwindow.h"
#include "editor/editspline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QLineEdit>
#include <QTest>
#include <QToolButton>

class tst_windowkeys : public QObject {
    Q_OBJECT

private slots:
    void init();
    void key_stays_in_field_data();
    void key_stays_in_field();
    void delete_edits_the_field_data();
    void delete_edits_the_field();
    void return_stores_and_repaints_data();
    void return_stores_and_repaints();
    void escape_stays_on_button_data();
    void escape_stays_on_button();
    void other_keys_of_a_button_reach_the_editor();
    void escape_on_the_editor_hides_it();
    void keys_on_the_editor_edit();
    void keys_in_the_table_pane_stay_there();
};

namespace {

/// State that a key would change if it reached the editor.
struct EditorState {
    explicit EditorState(const MainWindow& window)
        : visible(window.spline_widget->isVisible()), selected(window.spline_widget->pnt_selected),
          pressed(window.spline_widget->mousepressed), points(window.p->spline.num_pnt) {
        for (int i = 0; i < points; ++i)
            control_points.append(window.p->spline.CP[i]);
    }

    bool operator==(const EditorState& other) const {
        return visible == other.visible && selected == other.selected && pressed == other.pressed &&
               points == other.points && same_bits(control_points, other.control_points);
    }

    bool visible;
    int selected;
    bool pressed;
    int points;
    QPolygonF control_points;
};

/// A settled section with a point selected and a mouse button held.
void draw_and_select(MainWindow& window) {
    window.symetriclButton->click();
    settle(window);
    window.spline_widget->pnt_selected = 3;
    window.spline_widget->mousepressed = true;
}

} // namespace

void tst_windowkeys::init() {
    renew_document();
}

void tst_windowkeys::key_stays_in_field_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");

    const struct {
        const char* tag;
        int key;
        int modifiers;
    } keys[] = {
        {"escape", Qt::Key_Escape, Qt::NoModifier},
        {"shift-escape", Qt::Key_Escape, Qt::ShiftModifier},
        {"up", Qt::Key_Up, Qt::NoModifier},
        {"down", Qt::Key_Down, Qt::NoModifier},
        {"keypad-down", Qt::Key_Down, Qt::KeypadModifier},
        {"control-up", Qt::Key_Up, Qt::ControlModifier},
        {"delete", Qt::Key_Delete, Qt::NoModifier},
        {"control-delete", Qt::Key_Delete, Qt::ControlModifier},
        {"left", Qt::Key_Left, Qt::NoModifier},
        {"right", Qt::Key_Right, Qt::NoModifier},
        {"alt-left", Qt::Key_Left, Qt::AltModifier},
        {"alt-right", Qt::Key_Right, Qt::AltModifier},
        {"meta-left", Qt::Key_Left, Qt::MetaModifier},
        {"control-alt-right", Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier},
    };
    for (const char* field : {"O1Edit", "O2Edit"}) {
        for (const auto& row : keys)
            QTest::newRow((QByteArray(row.tag) + "-in-" + field).constData())
                << QString::fromLatin1(field) << row.key << row.modifiers;
    }
}

void tst_windowkeys::key_stays_in_field() {
    QFETCH(QString, field);
    QFETCH(int, key);
    QFETCH(int, modifiers);

    MainWindow window;
    SHOW(window);
    draw_and_select(window);
    auto* edit = window.findChild<QLineEdit*>(field);
    edit->setFocus();
    QVERIFY(edit->hasFocus());
    const EditorState before(window);
    for (const int position : {0, 2, int(edit->text().size())}) {
        edit->setCursorPosition(position);
        QTest::keyClick(window.windowHandle(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QVERIFY(EditorState(window) == before);
        QVERIFY(edit->isVisible());
        QVERIFY(edit->hasFocus());
    }
}

void tst_windowkeys::delete_edits_the_field_data() {
    QTest::addColumn<QString>("field");

    QTest::newRow("first") << QStringLiteral("O1Edit");
    QTest::newRow("second") << QStringLiteral("O2Edit");
}

void tst_windowkeys::delete_edits_the_field() {
    QFETCH(QString, field);

    MainWindow window;
    SHOW(window);
    auto* edit = window.findChild<QLineEdit*>(field);
    edit->setFocus();
    edit->setText(QStringLiteral("123"));
    edit->setCursorPosition(1);
    QTest::keyClick(window.windowHandle(), Qt::Key_Delete);
    QCOMPARE(edit->text(), QStringLiteral("13"));
    edit->selectAll();
    QTest::keyClick(window.windowHandle(), Qt::Key_Delete);
    QCOMPARE(edit->text(), QString());
    QTest::keyClick(window.windowHandle(), Qt::Key_Delete);
    QCOMPARE(edit->text(), QString());
}

void tst_windowkeys::return_stores_and_repaints_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("key");

    for (const char* field : {"O1Edit", "O2Edit"}) {
        QTest::addRow("return-in-%s", field) << QString::fromLatin1(field) << int(Qt::Key_Return);
        QTest::addRow("enter-in-%s", field) << QString::fromLatin1(field) << int(Qt::Key_Enter);
    }
}

void tst_windowkeys::return_stores_and_repaints() {
    QFETCH(QString, field);
    QFETCH(int, key);

    MainWindow window;
    SHOW(window);
    draw_and_select(window);
    auto* edit = window.findChild<QLineEdit*>(field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("45.5"));
    COMPARE_BITS(window.p->spline.startVent + window.p->spline.endVent, 0.0);

    const PaintCount paints(window.spline_widget);
    QTest::keyClick(window.windowHandle(), Qt::Key(key));
    const bool first = edit == window.O1Edit;
    COMPARE_BITS(window.p->spline.startVent, first ? 45.5 : 0.0);
    COMPARE_BITS(window.p->spline.endVent, first ? 0.0 : 45.5);
    QVERIFY(paints.whole() > 0);
    QVERIFY(!window.spline_widget->mousepressed);
    QCOMPARE(window.spline_widget->pnt_selected, 3);
    QVERIFY(edit->hasFocus());
}

void tst_windowkeys::escape_stays_on_button_data() {
    QTest::addColumn<QString>("button");

    for (const char* button : {"plusButton", "minusButton", "rotplusButton", "rotminusButton",
                               "symetriclButton", "refreshButton"})
        QTest::newRow(button) << QString::fromLatin1(button);
}

void tst_windowkeys::escape_stays_on_button() {
    QFETCH(QString, button);

    MainWindow window;
    SHOW(window);
    draw_and_select(window);
    auto* widget = window.findChild<QToolButton*>(button);
    widget->setFocus();
    QVERIFY(widget->hasFocus());
    const EditorState before(window);
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    QVERIFY(EditorState(window) == before);

    // The key releases a button that the space bar holds down.
    QTest::keyPress(window.windowHandle(), Qt::Key_Space);
    QVERIFY(widget->isDown());
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    QVERIFY(!widget->isDown());
    QVERIFY(window.spline_widget->isVisible());
}

void tst_windowkeys::other_keys_of_a_button_reach_the_editor() {
    MainWindow window;
    SHOW(window);
    draw_and_select(window);
    window.refreshButton->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Return);
    QVERIFY(!window.spline_widget->mousepressed);
    QCOMPARE(window.spline_widget->pnt_selected, 3);
    QTest::keyClick(window.windowHandle(), Qt::Key_Delete);
    QCOMPARE(window.spline_widget->pnt_selected, -1);
}

void tst_windowkeys::escape_on_the_editor_hides_it() {
    MainWindow window;
    SHOW(window);
    window.spline_widget->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    QVERIFY(!window.spline_widget->isVisible());
    QVERIFY(!window.O1Edit->isVisible());
    QVERIFY(!window.plusButton->isVisible());
    QVERIFY(window.isVisible());
    QVERIFY(window.tableEdit->isVisible());
}

void tst_windowkeys::keys_on_the_editor_edit() {
    MainWindow window;
    SHOW(window);
    draw_and_select(window);
    window.spline_widget->setFocus();
    const EditorState before(window);
    QTest::keyClick(window.windowHandle(), Qt::Key_Up);
    QVERIFY(!(EditorState(window) == before));
    QTest::keyClick(window.windowHandle(), Qt::Key_Delete);
    QCOMPARE(window.spline_widget->pnt_selected, -1);
    QVERIFY(window.spline_widget->isVisible());
}

void tst_windowkeys::keys_in_the_table_pane_stay_there() {
    MainWindow window;
    SHOW(window);
    draw_and_select(window);
    window.tableEdit->setFocus();
    const EditorState before(window);
    for (const Qt::Key key :
         {Qt::Key_Escape, Qt::Key_Up, Qt::Key_Down, Qt::Key_Delete, Qt::Key_Return}) {
        QTest::keyClick(window.windowHandle(), key);
        QVERIFY(EditorState(window) == before);
    }
}

AEROLITH_TEST_MAIN(tst_windowkeys)
#include "tst_windowkeys.moc"
