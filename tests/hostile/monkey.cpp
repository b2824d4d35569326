// SPDX-FileCopyrightText: Aerolith developers
// A user who does anything with the main window.
#include "hostile/monkey.h"

#include "airfoil/airfoil.h"
#include "document/splinebytes.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>

#include <array>
#include <climits>
#include <cmath>
#include <ctime>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

// Each window of the program has one more connection for every time it was shown.
constexpr int steps_of_a_window = 2000;

constexpr int most_answers = 4;

constexpr double longest_time = 5.0; // processor time of an event or a paint, seconds

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr std::array odd_numbers = {0.0, -0.0, 1e308, -1e308, 1e-320, inf, -inf, nan, 0.5, 1.0};

void write(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write the files of the test");
}

bool is_modal_child(const QWidget* widget) {
    return widget && widget->isVisible() && !qobject_cast<const QMainWindow*>(widget);
}

// Answers the modal window that is open, if any. The number chooses the answer.
void answer(QWidget* widget, int number, const QString& file_name) {
    if (auto* menu = qobject_cast<QMenu*>(widget)) {
        const QList<QAction*> actions = menu->actions();
        QAction* const action = actions.value(number % (int(actions.size()) + 3));
        if (!action || !action->isEnabled()) {
            menu->close();
            return;
        }
        menu->setActiveAction(action);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(menu, &press);
    } else if (auto* box = qobject_cast<QMessageBox*>(widget)) {
        const QList<QAbstractButton*> answers = box->buttons();
        if (auto* button = answers.value(number % (int(answers.size()) + 1)))
            button->click();
        else
            box->close();
    } else if (auto* dialog = qobject_cast<QFileDialog*>(widget)) {
        if (number % 4 == 0) {
            dialog->reject();
            return;
        }
        dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(file_name);
        QMetaObject::invokeMethod(dialog, "accept");
    } else {
        widget->close();
    }
}

} // namespace

Monkey::Monkey(quint32 seed, const QString& file_folder) : random(seed), folder(file_folder) {
    *GetDataStruct() = ParaStruct();
    make_files();
    make_choices();
    make_window();
}

int Monkey::below(int n) {
    return int(random() % unsigned(n));
}

bool Monkey::one_in(int n) {
    return below(n) == 0;
}

template<typename List>
auto Monkey::any_of(const List& list) {
    return *(std::begin(list) + below(int(std::size(list))));
}

void Monkey::make_files() {
    for (int i = 0; i < 40; ++i) {
        ParaStruct para;
        SplineFoil& spline = para.spline;
        spline.airfoilName = QString(below(300), u'\u00e4');
        spline.num_pnt = one_in(6) ? int(random()) : below(MAXNUMPOINTS + 2);
        spline.init_knots();
        for (double& knot : spline.b_knots)
            knot = one_in(40) ? any_of(odd_numbers) : knot;
        for (QPointF& point : spline.CP)
            point = one_in(60) ? QPointF(any_of(odd_numbers), any_of(odd_numbers)) : position();
        spline.num_knt = one_in(6) ? int(random()) : spline.num_knt;
        spline.degree = one_in(6) ? int(random()) : one_in(4) ? below(7) - 1 : spline.degree;
        spline.startVent = one_in(3) ? any_of(odd_numbers) : below(100);
        spline.endVent = one_in(3) ? any_of(odd_numbers) : below(100);
        QByteArray bytes = spline_bytes(para);
        if (one_in(8))
            bytes.truncate(below(int(bytes.size())));
        for (int k = one_in(4) ? below(100) : 0; k > 0 && !bytes.isEmpty(); --k)
            bytes[below(int(bytes.size()))] = char(below(256));
        splines << folder + u"/%1.spl"_s.arg(i);
        write(splines.last(), bytes);
    }
    const int row_counts[] = {0, 1, 2, 3, 40, 999, 1001};
    for (int i = 0; i < 20; ++i) {
        QByteArray bytes = one_in(3) ? "title\n\n\n60. 60.\n" : "";
        const int columns = 2 + below(2);
        const int rows = any_of(row_counts);
        for (int row = 0; row < rows; ++row) {
            for (int k = 0; k < columns; ++k)
                bytes += QByteArray::number((below(2001) - 500) / 1000.0, 'f', 3 + below(4)) + ' ';
            bytes += one_in(50) ? "\r\n" : "\n";
        }
        for (int k = one_in(3) ? below(20) : 0; k > 0 && !bytes.isEmpty(); --k)
            bytes[below(int(bytes.size()))] = char(below(256));
        tables << folder + u"/%1 <b>%2.dat"_s.arg(i);
        write(tables.last(), bytes);
    }
}

void Monkey::make_window() {
    window = std::make_unique<MainWindow>();
    editor = window->spline_widget;
    editor->installEventFilter(this);
    // Small pictures leave time for more of them.
    window->setMinimumSize(100, 80);
    editor->setMinimumSize(60, 50);
    window->resize(420, 300);
    window->show();
    QApplication::processEvents();
    loaded_count = 0;
}

void Monkey::make_choices() {
    const auto mouse = [this](QEvent::Type type) {
        const Qt::MouseButton button =
            any_of(std::array{Qt::LeftButton, Qt::LeftButton, Qt::MiddleButton, Qt::RightButton});
        send_mouse(type, button, type == QEvent::MouseButtonRelease ? Qt::NoButton : button);
    };
    choices = {
        {300, "move", [this] { send_mouse(QEvent::MouseMove, Qt::NoButton, buttons()); }},
        {150, "press", [=] { mouse(QEvent::MouseButtonPress); }},
        {120, "release", [=] { mouse(QEvent::MouseButtonRelease); }},
        {10, "double click", [=] { mouse(QEvent::MouseButtonDblClick); }},
        {40, "wheel", [this] { send_wheel(); }},
        {100, "key", [this] { send_key(); }},
        {10, "context menu", [this] { ask_for_menu(); }},
        {40, "menu entry",
         [this] { editor->Action_From_Menu(position().toPoint(), below(12) - 2); }},
        {2, "menu action", [this] { trigger_action(); }},
        {60, "button", [this] { press_button(); }},
        {30, "field", [this] { fill_field(); }},
        {10, "size", [this] { change_size(); }},
        {6, "visibility", [this] { change_visibility(); }},
        {20, "spline", [this] { open_spline(); }},
        {6, "template", [this] { open_template(); }},
        {1, "save", [this] { save(); }},
        {60, "pending events", [] { QApplication::processEvents(); }},
    };
    for (const Choice& choice : choices)
        total_weight += choice.weight;
}

QPointF Monkey::position() {
    const SplineFoil& spline = GetDataStruct()->spline;
    if (editor && spline.point_count() > 0 && one_in(2)) {
        // Where there is a point to pick.
        const QPointF point = spline.CP[below(spline.point_count())];
        const QPointF shown = editor->f_scale * point + editor->p_D;
        if (std::abs(shown.x()) < 1e5 && std::abs(shown.y()) < 1e5)
            return shown + QPointF(below(13) - 6, below(13) - 6);
    }
    if (one_in(50))
        return QPointF(below(200'001) - 100'000, below(200'001) - 100'000);
    return QPointF(below(4600) / 10.0 - 20.0, below(3600) / 10.0 - 20.0);
}

Qt::MouseButtons Monkey::buttons() {
    return any_of(std::array{Qt::MouseButtons(Qt::LeftButton), Qt::MouseButtons(Qt::LeftButton),
                             Qt::MouseButtons(Qt::MiddleButton), Qt::MouseButtons(Qt::NoButton),
                             Qt::LeftButton | Qt::MiddleButton | Qt::RightButton});
}

void Monkey::send_mouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
    const QPointF at = position();
    QMouseEvent mouse(type, at, editor->mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(editor, &mouse);
}

void Monkey::send_wheel() {
    const int deltas[] = {120, -120, 240, 1, -1, 15, 0, 100'000, -100'000, INT_MAX, INT_MIN};
    const QPointF at = position();
    const QPoint turned(any_of(deltas), any_of(deltas));
    QWheelEvent wheel(at, editor->mapToGlobal(at), QPoint(), turned, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(editor, &wheel);
}

void Monkey::send_key() {
    const int keys[] = {Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,
                        Qt::Key_Return, Qt::Key_Return, Qt::Key_Enter,  Qt::Key_Delete,
                        Qt::Key_Tab,    Qt::Key_A,      Qt::Key_Escape, Qt::Key_Backspace};
    QWidget* const targets[] = {
        editor, editor, editor, window->O1Edit, window->plusButton, window->tableEdit};
    const int key = any_of(keys);
    QWidget* const target = any_of(targets);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent press(type, key, Qt::NoModifier, key == Qt::Key_A ? u"a"_s : QString());
        QApplication::sendEvent(target, &press);
    }
}

// Runs an action that opens modal windows, and answers each of them.
void Monkey::while_answering(const std::function<void()>& act) {
    const QString names[] = {any_of(splines),           any_of(tables), folder + u"/missing.spl"_s,
                             folder + u"/new.spl"_s,    folder,         QString(),
                             folder + u"/new <i>.dat"_s};
    const QString name = any_of(names);
    const int number = int(random() >> 2);
    int answers = 0;
    QPointer<QWidget> answered;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* widget = popup ? popup : QApplication::activeModalWidget();
        if (!is_modal_child(widget) || widget == answered)
            return;
        answered = widget;
        // A dialog that stays open after its answer, as for a missing file, is eventually closed.
        const bool give_up = ++answers > most_answers;
        // A timer does not fire while its slot runs, and an answer may open the next window.
        QTimer::singleShot(0, widget, [widget, number, name, give_up, &answered] {
            const QPointer<QWidget> still_there(widget);
            if (auto* dialog = qobject_cast<QDialog*>(widget); dialog && give_up)
                dialog->reject();
            else
                answer(widget, number, name);
            if (still_there == answered)
                answered.clear();
        });
    });
    timer.start(0);
    act();
}

void Monkey::ask_for_menu() {
    const QPoint at = position().toPoint();
    while_answering([&] {
        QContextMenuEvent request(QContextMenuEvent::Mouse, at, editor->mapToGlobal(at));
        QApplication::sendEvent(editor, &request);
    });
}

void Monkey::trigger_action() {
    QAction* const actions[] = {
        window->actionOpen_backround_template, window->actionExit,
        window->actionSave_as_table,           window->actionOpen_foil_spline,
        window->actionSave_as_spline_file,     window->actionAbout_program};
    QAction* const action = any_of(actions);
    while_answering([&] { action->trigger(); });
    loaded_count = GetDataStruct()->spline.num_pnt;
    if (!window->isVisible())
        window->show();
}

void Monkey::press_button() {
    const QList<QToolButton*> all = {window->plusButton,      window->minusButton,
                                     window->rotplusButton,   window->rotminusButton,
                                     window->symetriclButton, window->refreshButton};
    all[below(int(all.size()))]->click();
}

void Monkey::fill_field() {
    const QString texts[] = {u"1e308"_s,         u"nan"_s,    u"-0"_s, u"-inf"_s,
                             u"12,5"_s,          u""_s,       u"50"_s, u"1e400"_s,
                             QString(500, u'9'), u"\u0663"_s, u"--"_s};
    QLineEdit* const field = one_in(2) ? window->O1Edit : window->O2Edit;
    field->setText(any_of(texts));
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(field, &press);
    if (one_in(4))
        window->setupEditO1_O2();
}

void Monkey::change_size() {
    const int sides[] = {0, 1, 100, 300, 420, 800, 1500};
    const int chosen = below(3);
    if (chosen == 0)
        window->resize(any_of(sides), any_of(sides));
    else if (chosen == 1)
        window->resize(300 + below(200), 200 + below(200));
    else
        // Without the mapping that belongs to the size.
        editor->resize(any_of(sides), any_of(sides));
}

void Monkey::change_visibility() {
    switch (below(6)) {
    case 0:
        editor->hide();
        break;
    case 1:
        window->hide();
        break;
    case 2:
        window->showMinimized();
        break;
    case 3:
        window->showMaximized();
        break;
    default:
        window->showNormal();
        editor->show();
        break;
    }
    QApplication::processEvents();
}

void Monkey::open_spline() {
    editor->Init_widget();
    window->opf->ReadParaStream(any_of(splines));
    loaded_count = GetDataStruct()->spline.num_pnt;
    emit window->to_repaint_opened_spline();
}

void Monkey::open_template() {
    window->p->baseAirfoilName = any_of(tables);
    window->p->baseAirfoil = airfoil_Read(window->p->baseAirfoilName);
    window->Write_BaseTable(window->p->baseAirfoil);
    emit window->repaint_all();
}

void Monkey::save() {
    if (one_in(2))
        editor->Save_airfoil_table(folder + u"/saved.dat"_s);
    else
        window->JustSaveSplineFile(folder + u"/saved.spl"_s);
}

bool Monkey::eventFilter(QObject* watched, QEvent* sent) {
    if (sent->type() != QEvent::Paint)
        return false;
    const std::clock_t begin = std::clock();
    watched->event(sent);
    longest_painting = std::max(longest_painting, double(std::clock() - begin) / CLOCKS_PER_SEC);
    ++painted;
    return true;
}

QString Monkey::step() {
    if (steps++ % steps_of_a_window == steps_of_a_window - 1)
        make_window();
    int chosen = below(total_weight);
    const Choice* choice = choices.data();
    while (chosen >= choice->weight)
        chosen -= (choice++)->weight;
    event = QString::fromLatin1(choice->name);
    const std::clock_t begin = std::clock();
    choice->act();
    const double time = double(std::clock() - begin) / CLOCKS_PER_SEC;
    digest_state();
    longest = std::max(longest, time);
    return time > longest_time ? u"it took too long"_s : broken_rule();
}

QString Monkey::broken_rule() const {
    const SplineFoil& spline = window->p->spline;
    const int count = spline.point_count();
    if (longest_painting > longest_time)
        return u"a paint took %1 s"_s.arg(longest_painting);
    // The count in a file is kept as it was, and the first edit brings it into range.
    if (spline.num_pnt != loaded_count && (spline.num_pnt < 0 || spline.num_pnt > MAXNUMPOINTS))
        return u"the count is %1"_s.arg(spline.num_pnt);
    if (editor->pnt_selected < -1 || editor->pnt_selected >= std::max(count, 1))
        return u"point %1 of %2 is selected"_s.arg(editor->pnt_selected).arg(count);
    if (!(editor->f_scale >= 0.5 && editor->f_scale <= 4.0))
        return u"the zoom is %1"_s.arg(editor->f_scale);
    if (!std::isfinite(editor->p_D.x()) || !std::isfinite(editor->p_D.y()))
        return u"the pan is not finite"_s;
    if (!editor->spline_poly.isEmpty() && editor->spline_poly.size() != 999)
        return u"the curve has %1 samples"_s.arg(editor->spline_poly.size());
    return QString();
}

void Monkey::digest_state() {
    const auto add = [this](const void* data, std::size_t size) {
        // The Fowler-Noll-Vo hash, because Qt's own hashes differ from run to run.
        for (std::size_t i = 0; i < size; ++i)
            state = (state ^ static_cast<const uchar*>(data)[i]) * 0x100000001b3;
    };
    const SplineFoil& spline = window->p->spline;
    add(&spline.num_pnt, sizeof spline.num_pnt);
    add(spline.CP, sizeof spline.CP);
    add(spline.b_knots, sizeof spline.b_knots);
    add(&editor->pnt_selected, sizeof editor->pnt_selected);
    add(&editor->f_scale, sizeof editor->f_scale);
    add(&editor->p_D, sizeof editor->p_D);
}
