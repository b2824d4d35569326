// SPDX-FileCopyrightText: Aerolith developers
// A user who does anything with the main window. The seed alone determines the actions, so a run
// can be repeated.
#pragma once

#include "app/mainwindow.h"

#include <QEvent>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <random>

/// Sends random events to a main window and checks the invariants after each.
class Monkey : public QObject {
public:
    /// @param seed   the seed of every choice
    /// @param folder a writable folder for its files
    Monkey(quint32 seed, const QString& folder);

    /// Performs one action. @return the invariant that no longer holds, empty for none
    QString step();

    QString last_event() const { return event; }              ///< The last action.
    double longest_step() const { return longest; }           ///< Processor time, in seconds.
    double longest_paint() const { return longest_painting; } ///< The same of one paint.
    int paints() const { return painted; }                    ///< Paints of the editor so far.
    quint64 digest() const { return state; }                  ///< Hash of all states so far.

    /// Times the editor's paints.
    bool eventFilter(QObject* watched, QEvent* sent) override;

private:
    struct Choice {
        int weight;
        const char* name;
        std::function<void()> act;
    };

    int below(int n);
    bool one_in(int n);
    template<typename List>
    auto any_of(const List& list);
    QPointF position();
    Qt::MouseButtons buttons();

    void make_files();
    void make_window();
    void make_choices();
    void send_mouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held);
    void send_wheel();
    void send_key();
    void ask_for_menu();
    void trigger_action();
    void press_button();
    void fill_field();
    void change_size();
    void change_visibility();
    void open_spline();
    void open_template();
    void save();
    void while_answering(const std::function<void()>& act);
    QString broken_rule() const;
    void digest_state();

    std::mt19937 random;
    QString folder;
    QStringList splines;
    QStringList tables;
    std::unique_ptr<MainWindow> window;
    EditSpline* editor = nullptr;
    std::vector<Choice> choices;
    int total_weight = 0;
    int steps = 0;
    int loaded_count = 0;
    QString event;
    double longest = 0.0;
    double longest_painting = 0.0;
    int painted = 0;
    quint64 state = 0xcbf29ce484222325;
};
