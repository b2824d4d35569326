// SPDX-FileCopyrightText: Aerolith developers
// Answers modal dialogs, message boxes and menus, which wait for a user inside the
// call under test.
#pragma once

#include <QFileDialog>
#include <QList>
#include <QMenu>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <functional>

/// What a modal window showed.
struct ModalSeen {
    QString class_name;         ///< Name of the widget's class, "QMessageBox" for one.
    QString title;              ///< Window title.
    QString text;               ///< Text of a message box.
    Qt::TextFormat text_format; ///< Format of that text.
    QString folder;             ///< Start folder of a file dialog.
    QStringList filters;        ///< Name filters of a file dialog.
    QStringList entries;        ///< Texts of the entries of a menu.
};

/// During its lifetime, answers each modal window that opens: the first with the first reaction and
/// so on. Further windows are dismissed. Create it before the call that opens the window.
///
///     ModalGuard guard({ModalGuard::choose_file(path), ModalGuard::press(QMessageBox::No)});
///     window.on_actionSave_triggered();
///     QCOMPARE(guard.count(), 2);
///     QCOMPARE(guard.seen(1).text, expected_text);
class ModalGuard : public QObject {
public:
    using Reaction = std::function<void(QWidget*)>;

    explicit ModalGuard(const QList<Reaction>& answers = {});
    ~ModalGuard() override;

    /// The number of windows so far.
    int count() const { return int(windows.size()); }

    /// The @p index-th window; an empty record if there was none.
    ModalSeen seen(int index = 0) const { return windows.value(index); }

    /// The number of windows that the guard had to close after a time because their reaction did
    /// not.
    int forced() const { return forced_count; }

    /// @name Reactions
    /// @{

    /// Closes the window as the Escape key does.
    static Reaction dismiss();

    /// Presses a button of a message box.
    static Reaction press(QMessageBox::StandardButton button);

    /// Types a name into a file dialog and accepts it.
    static Reaction choose_file(const QString& name);

    /// Chooses the entry of a menu that has this text, with the keyboard.
    static Reaction choose_entry(const QString& text);
    /// @}

    /// Whether a guard exists.
    static bool is_active();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void look();

    QList<Reaction> reactions;
    QList<ModalSeen> windows;
    QList<QPointer<QWidget>> answered;
    QTimer timer;
    int patience = 0;
    int forced_count = 0;
};

/// Fails the running test and closes the window when a modal window is open that no guard answers.
/// Exists for the whole test program.
class ModalWatch {
public:
    ModalWatch();

private:
    void look();

    QTimer timer;
    QPointer<QWidget> last;
};
