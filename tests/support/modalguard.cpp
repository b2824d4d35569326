// SPDX-FileCopyrightText: Aerolith developers
// Answers modal dialogs, message boxes and menus.
#include "support/modalguard.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>

namespace {

constexpr int look_interval = 5; // ms
constexpr int looks_until_close = 200;
constexpr int watch_interval = 2000; // ms

int living_guards = 0;

// The window that waits for the user. The main window is modal too, but needs no answer.
QWidget* waiting_window() {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* window = popup ? popup : QApplication::activeModalWidget();
    const bool waits = window && window->isVisible() && !qobject_cast<QMainWindow*>(window);
    return waits ? window : nullptr;
}

void close_window(QWidget* window) {
    const QPointer<QWidget> still_there(window);
    QTest::keyClick(window, Qt::Key_Escape);
    if (!still_there || !window->isVisible())
        return;
    if (auto* dialog = qobject_cast<QDialog*>(window))
        dialog->reject();
    else
        window->close();
}

ModalSeen describe(QWidget* window) {
    ModalSeen seen{};
    seen.class_name = QString::fromLatin1(window->metaObject()->className());
    seen.title = window->windowTitle();
    if (const auto* box = qobject_cast<QMessageBox*>(window)) {
        seen.text = box->text();
        seen.text_format = box->textFormat();
    } else if (const auto* dialog = qobject_cast<QFileDialog*>(window)) {
        seen.folder = dialog->directory().absolutePath();
        seen.filters = dialog->nameFilters();
    } else if (const auto* menu = qobject_cast<QMenu*>(window)) {
        const QList<QAction*> actions = menu->actions();
        for (const QAction* action : actions)
            seen.entries.append(action->text());
    }
    return seen;
}

} // namespace

ModalGuard::ModalGuard(const QList<Reaction>& answers) : reactions(answers) {
    ++living_guards;
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { look(); });
    timer.start(look_interval);
}

ModalGuard::~ModalGuard() {
    --living_guards;
    if (QWidget* window = waiting_window())
        close_window(window);
}

// A menu or a dialog may be shown again.
bool ModalGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide)
        answered.removeAll(watched);
    return false;
}

void ModalGuard::look() {
    QWidget* window = waiting_window();
    if (!window)
        return;
    if (answered.contains(window)) {
        if (++patience > looks_until_close) {
            patience = 0;
            ++forced_count;
            close_window(window);
        }
        return;
    }
    patience = 0;
    answered.append(window);
    window->installEventFilter(this);
    windows.append(describe(window));
    const Reaction reaction = reactions.isEmpty() ? dismiss() : reactions.takeFirst();
    // Not called directly: a timer does not fire while its slot runs, and the reaction may open the
    // next window.
    QTimer::singleShot(0, window, [reaction, window] { reaction(window); });
}

ModalGuard::Reaction ModalGuard::dismiss() {
    return [](QWidget* window) { close_window(window); };
}

ModalGuard::Reaction ModalGuard::press(QMessageBox::StandardButton button) {
    return [button](QWidget* window) {
        auto* box = qobject_cast<QMessageBox*>(window);
        QVERIFY2(box && box->button(button), "no message box with this button");
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    };
}

ModalGuard::Reaction ModalGuard::choose_file(const QString& name) {
    return [name](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        QVERIFY2(dialog, "no file dialog");
        auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY2(field, "no field for the file name");
        field->setText(name);
        QMetaObject::invokeMethod(dialog, "accept");
    };
}

ModalGuard::Reaction ModalGuard::choose_entry(const QString& text) {
    return [text](QWidget* window) {
        auto* menu = qobject_cast<QMenu*>(window);
        QVERIFY2(menu, "no menu");
        const QList<QAction*> actions = menu->actions();
        for (QAction* action : actions) {
            if (action->text() == text) {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
                return;
            }
        }
        QFAIL(qPrintable(QStringLiteral("no entry ") + text));
    };
}

bool ModalGuard::is_active() {
    return living_guards > 0;
}

ModalWatch::ModalWatch() {
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { look(); });
    timer.start(watch_interval);
}

void ModalWatch::look() {
    QWidget* window = ModalGuard::is_active() ? nullptr : waiting_window();
    if (window && window == last) {
        const ModalSeen seen = describe(window);
        close_window(window);
        QFAIL(qPrintable(QStringLiteral("nobody answered %1: %2 %3")
                             .arg(seen.class_name, seen.title, seen.text)));
    }
    last = window;
}
