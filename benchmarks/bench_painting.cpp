// SPDX-FileCopyrightText: Aerolith developers
// Steps of dragging, panning and zooming, from the event to the finished paint.
#include "baseline/editor.h"
#include "baseline/scene.h"
#include "harness.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <memory>

namespace {

constexpr QSize screen_size(1920, 1080);
constexpr int dragged_point = 8;

// An editor in its own window, with its own document.
class Stage {
public:
    Stage(std::unique_ptr<EditSpline> widget, int template_points, double zoom = 1.0,
          QPointF pan = QPointF())
        : editor(std::move(widget)) {
        editor->p = &document;
        editor->setWindowFlags(Qt::FramelessWindowHint);
        editor->resize(screen_size);
        editor->show();
        QCoreApplication::processEvents();
        editor->Init_widget();
        document.baseAirfoil = baseline::smooth_outline(template_points, 0.12);
        document.baseAirfoilName = QStringLiteral("/sections/background.dat");
        document.spline.airfoilName = QStringLiteral("/sections/drawn.spl");
        document.spline.startVent = 30.0;
        document.spline.endVent = 60.0;
        baseline::place_spline(*editor, MAXNUMPOINTS);
        editor->f_scale = zoom;
        editor->p_D = pan;
        // The first paints only move the spline to its place.
        for (int i = 0; i < 6; ++i) {
            editor->repaint();
            QCoreApplication::processEvents();
        }
        start = editor->f_scale * document.spline.CP[dragged_point] + editor->p_D;
    }

    void press(Qt::MouseButton button) {
        send_mouse(QEvent::MouseButtonPress, start.toPoint(), button, button);
    }

    void drag_step() { move(Qt::LeftButton, QPoint(3 * step % 11, 5 * step % 23)); }

    void pan_step() { move(Qt::MiddleButton, QPoint(7 * step % 31, 4 * step % 19)); }

    // Up and down through all zooms, three doublings in eight steps.
    void wheel_step() {
        if (editor->f_scale > 3.99)
            wheel_delta = -405;
        else if (editor->f_scale < 0.51)
            wheel_delta = 405;
        const QPointF centre(editor->rect().center());
        QWheelEvent event(centre, centre, QPoint(), QPoint(0, wheel_delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(editor.get(), &event);
        QCoreApplication::processEvents();
    }

private:
    void move(Qt::MouseButton button, QPoint offset) {
        ++step;
        send_mouse(QEvent::MouseMove, start.toPoint() + offset, Qt::NoButton, button);
        QCoreApplication::processEvents();
    }

    void send_mouse(QEvent::Type type, QPoint pos, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(pos), QPointF(pos), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(editor.get(), &event);
    }

    ParaStruct document;
    std::unique_ptr<EditSpline> editor;
    QPointF start;
    int step = 0;
    int wheel_delta = 405;
};

std::unique_ptr<EditSpline> plain_editor() {
    return std::make_unique<baseline::Editor>();
}

std::unique_ptr<EditSpline> our_editor() {
    return std::make_unique<EditSpline>();
}

struct View {
    double zoom;
    QPointF pan;
};

// The section in the middle of the window; at zoom 2 it is wider than the window.
constexpr View normal = {1.0, QPointF(0.0, 0.0)};
constexpr View near_middle = {2.0, QPointF(-960.0, -540.0)};
constexpr View near_nose = {2.0, QPointF(-200.0, -540.0)};

void compare_steps(const QString& number, const QString& work, const View& view,
                   Qt::MouseButton button, void (Stage::*step)(), double bound) {
    Stage plain(plain_editor(), 1000, view.zoom, view.pan);
    Stage ours(our_editor(), 1000, view.zoom, view.pan);
    plain.press(button);
    ours.press(button);
    const Comparison result =
        compare(21, {[&] { (ours.*step)(); }, 8}, {[&] { (plain.*step)(); }, 4});
    print_row(number, work, times_text(result.first, result.second), {Goal::at_most, bound},
              result.ratio);
}

// Eight steps up from the least zoom to the greatest and eight down.
void compare_wheel_steps() {
    constexpr int steps = 16;
    constexpr int rounds = 9;
    Stage plain(plain_editor(), 1000, 0.5);
    Stage ours(our_editor(), 1000, 0.5);
    std::vector<double> times[2][steps];
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        double sums[2] = {};
        for (int i = 0; i < steps; ++i) {
            const double both[2] = {timed([&] { ours.wheel_step(); }),
                                    timed([&] { plain.wheel_step(); })};
            for (int side = 0; side < 2; ++side) {
                sums[side] += both[side];
                times[side][i].push_back(both[side]);
            }
        }
        ratios.push_back(sums[0] / sums[1]);
    }
    double medians[2] = {};
    std::vector<double> ratio_at_zoom;
    for (int i = 0; i < steps; ++i) {
        const double ours_time = quartiles(times[0][i]).median;
        const double plain_time = quartiles(times[1][i]).median;
        medians[0] += ours_time / steps;
        medians[1] += plain_time / steps;
        ratio_at_zoom.push_back(ours_time / plain_time);
    }
    print_row(QStringLiteral("6"), QStringLiteral("wheel step, zoom 0.5 to 4, ours : plain"),
              times_text(medians[0], medians[1]), {Goal::at_most, 0.85}, quartiles(ratios));
    const double worst = *std::max_element(ratio_at_zoom.begin(), ratio_at_zoom.end());
    print_row(QStringLiteral("6"), QStringLiteral("the same, at the zoom where it is worst"),
              QString(), {Goal::at_most, 1.0}, {worst, worst, worst});
}

} // namespace

void bench_painting() {
    compare_steps(QStringLiteral("4"), QStringLiteral("drag step at zoom 1, ours : plain"), normal,
                  Qt::LeftButton, &Stage::drag_step, 0.30);
    compare_steps(QStringLiteral("4"), QStringLiteral("drag step at zoom 2, ours : plain"),
                  near_middle, Qt::LeftButton, &Stage::drag_step, 0.30);
    compare_steps(QStringLiteral("5"), QStringLiteral("pan step at zoom 1, ours : plain"), normal,
                  Qt::MiddleButton, &Stage::pan_step, 0.30);
    compare_steps(QStringLiteral("5"), QStringLiteral("pan step at zoom 2, nose in the window"),
                  near_nose, Qt::MiddleButton, &Stage::pan_step, 0.30);
    compare_steps(QStringLiteral("5"), QStringLiteral("pan step at zoom 2, nose out of the window"),
                  near_middle, Qt::MiddleButton, &Stage::pan_step, 0.30);
    compare_wheel_steps();
    print_note(QStringLiteral("7"), QStringLiteral("every frame, to the pixel"),
               QStringLiteral("tst_identical_frames"));

    Stage many(our_editor(), 100000);
    Stage few(our_editor(), 1000);
    many.press(Qt::LeftButton);
    few.press(Qt::LeftButton);
    const Comparison crowded =
        compare(21, {[&] { many.drag_step(); }, 8}, {[&] { few.drag_step(); }, 8});
    print_row(QStringLiteral("8"), QStringLiteral("drag step, template of 100,000 : 1000 points"),
              times_text(crowded.first, crowded.second), {Goal::at_most, 1.5}, crowded.ratio);
}
