// SPDX-FileCopyrightText: Aerolith developers
// Every frame of the editor has the pixels of a paint without caches, whatever was painted before.
// AEROLITH_IDENTITY_WALKS sets the number of random walks; without it AEROLITH_IDENTITY_BRIEF skips
// most zooms. AEROLITH_FRAMES names a folder for pictures that differ.
#include "baseline/scene.h"
#include "changes.h"
#include "frames.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QTest>

using baseline::place_spline;
using baseline::smooth_outline;

namespace {

constexpr QSize window_size(560, 400);
constexpr int default_walks = 3;
constexpr int steps_of_a_walk = 100;

const char walks_variable[] = "AEROLITH_IDENTITY_WALKS";

// Other platforms and pixel ratios need not repeat every zoom.
QList<double> zooms(const QList<double>& all, const QList<double>& few) {
    const bool brief = qEnvironmentVariableIsSet("AEROLITH_IDENTITY_BRIEF") &&
                       !qEnvironmentVariableIsSet(walks_variable);
    return brief ? few : all;
}

#define COMPARE_FRAMES(pair, step)                                                                 \
    do {                                                                                           \
        const QString frames_differ = (pair).difference();                                         \
        QVERIFY2(frames_differ.isEmpty(),                                                          \
                 qPrintable(QStringLiteral("%1: %2").arg((step), frames_differ)));                 \
    } while (false)

QString step_text(const char* what, int i) {
    return QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(i);
}

// So long that it is drawn in pieces. It begins at a sharp tooth, and the first piece ends among
// others. Repeated points make no corner.
QPolygonF toothed_outline() {
    QPolygonF outline = {{0.9, -0.25}, {0.91, -0.2}};
    outline << smooth_outline(19'948, 0.12);
    for (int i = 0; i < 100; ++i) {
        const QPointF tooth(0.05 + 0.009 * i, i % 2 == 0 ? 0.15 : 0.2);
        outline << tooth << tooth;
    }
    return outline;
}

void fill(FramePair& pair, const QString& content) {
    ParaStruct& document = *pair.editor.p;
    if (content == QLatin1String("bare"))
        return;
    if (content == QLatin1String("damaged"))
        document.baseAirfoil = damaged_outline();
    else
        document.baseAirfoil =
            smooth_outline(content == QLatin1String("dense") ? 1000 : template_points, 0.12);
    document.baseAirfoilName = QStringLiteral("/sections/thick one.dat");
    document.spline.airfoilName = QStringLiteral("/sections/drawn.spl");
    if (content == QLatin1String("openings")) {
        document.spline.startVent = 31.4;
        document.spline.endVent = 64.0;
    }
}

void set_view(FramePair& pair, double zoom, QPointF pan = QPointF()) {
    pair.editor.f_scale = zoom;
    pair.editor.p_D = pan;
}

const char* const contents[] = {"bare", "template", "openings", "damaged"};

void add_views() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("selected");

    for (const double zoom : zooms({0.5, 0.8, 1.0, 1.5, 2.0, 4.0}, {0.8, 1.5})) {
        for (const char* const content : contents) {
            for (const bool selected : {false, true})
                QTest::addRow("zoom-%g-%s-%s", zoom, content, selected ? "selected" : "idle")
                    << zoom << QString::fromLatin1(content) << selected;
        }
    }
    for (const double zoom : zooms({0.7, 1.0, 3.0}, {1.0}))
        QTest::addRow("zoom-%g-dense", zoom) << zoom << QStringLiteral("dense") << true;
}

} // namespace

class tst_identical_frames : public QObject {
    Q_OBJECT

private slots:
    void drags_data() { add_views(); }
    void drags();
    void pans_data() { add_views(); }
    void pans();
    void pans_over_the_edges_data();
    void pans_over_the_edges();
    void wheel_turns_data();
    void wheel_turns();
    void one_input_changes_data();
    void one_input_changes();
    void parts_of_the_window();
    void long_outlines_data();
    void long_outlines();
    void grabbed_parts_data();
    void grabbed_parts();
    void pixel_ratios_in_turns_data();
    void pixel_ratios_in_turns();
    void random_walks_data();
    void random_walks();
};

void tst_identical_frames::drags() {
    QFETCH(double, zoom);
    QFETCH(QString, content);
    QFETCH(bool, selected);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, content == QLatin1String("dense") ? 30 : 14);
    fill(pair, content);
    set_view(pair, zoom, QPointF(-40.0, 25.0));
    pair.editor.repaint();
    COMPARE_FRAMES(pair, QStringLiteral("start"));

    const int point = 5;
    QPoint pos = selected ? pair.shown(point) : QPoint(3, window_size.height() - 3);
    pair.press(pos, Qt::LeftButton);
    QCOMPARE(pair.editor.pnt_selected, selected ? point : -1);
    COMPARE_FRAMES(pair, QStringLiteral("press"));
    const int paints = pair.editor.paints;
    for (int i = 0; i < 6; ++i) {
        pos += QPoint(i - 2, 3);
        pair.move(pos, Qt::LeftButton);
        COMPARE_FRAMES(pair, step_text("move", i));
    }
    QCOMPARE(pair.editor.paints > paints, selected);
    pair.release(pos, Qt::LeftButton);
    COMPARE_FRAMES(pair, QStringLiteral("release"));
    pair.press_key(Qt::Key_Right);
    COMPARE_FRAMES(pair, QStringLiteral("nudge"));
}

void tst_identical_frames::pans() {
    QFETCH(double, zoom);
    QFETCH(QString, content);
    QFETCH(bool, selected);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 14);
    fill(pair, content);
    set_view(pair, zoom);
    if (selected)
        pair.editor.pnt_selected = 4;
    pair.editor.repaint();
    COMPARE_FRAMES(pair, QStringLiteral("start"));

    static constexpr QPoint moves[] = {{3, 0},     {0, -4}, {0, 0}, {-25, 40},
                                       {200, -90}, {1, 1},  {0, 0}};
    QPoint pos(120, 200);
    pair.press(pos, Qt::MiddleButton);
    for (const QPoint move : moves) {
        pos += move;
        const int paints = pair.editor.paints;
        pair.move(pos, Qt::MiddleButton);
        QVERIFY(pair.editor.paints > paints);
        COMPARE_FRAMES(pair, step_text("move to", pos.x()));
    }
    pair.release(pos, Qt::MiddleButton);
    COMPARE_FRAMES(pair, QStringLiteral("release"));
}

void tst_identical_frames::pans_over_the_edges_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPoint>("step");
    QTest::addColumn<int>("points");

    const struct {
        const char* name;
        QPoint step;
    } ways[] = {{"left", {-9, 0}},
                {"up", {0, -11}},
                {"right", {23, 0}},
                {"down", {0, 19}},
                {"askew", {-9, -7}}};
    for (const double zoom : zooms({1.0, 1.3, 2.0, 4.0}, {1.0})) {
        for (const auto& way : ways)
            for (const int points : {template_points, 9})
                QTest::addRow("%s-at-%g-%d-points", way.name, zoom, points)
                    << zoom << way.step << points;
    }
}

// Moves the section from the window's upper left corner out of the window and back.
void tst_identical_frames::pans_over_the_edges() {
    QFETCH(double, zoom);
    QFETCH(QPoint, step);
    QFETCH(int, points);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    pair.editor.p->baseAirfoil = smooth_outline(points, 0.12);
    const QPointF corner(pair.editor.xc, pair.editor.yc - 0.12 * pair.editor.L_T);
    set_view(pair, zoom, (QPointF(30.0, 30.0) - zoom * corner).toPoint());
    for (int i = 0; i < 3; ++i) {
        pair.editor.repaint();
        COMPARE_FRAMES(pair, step_text("start", i));
    }
    QPoint pos(250, 200);
    pair.press(pos, Qt::MiddleButton);
    for (int i = 0; i < 24; ++i) {
        pos += i < 12 ? step : -step;
        pair.move(pos, Qt::MiddleButton);
        COMPARE_FRAMES(pair, step_text("step", i));
    }
}

void tst_identical_frames::wheel_turns_data() {
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("selected");

    for (const char* const content : contents) {
        for (const bool selected : {false, true})
            QTest::addRow("%s-%s", content, selected ? "selected" : "idle")
                << QString::fromLatin1(content) << selected;
    }
}

void tst_identical_frames::wheel_turns() {
    QFETCH(QString, content);
    QFETCH(bool, selected);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 14);
    fill(pair, content);
    set_view(pair, 1.0, QPointF(-30.0, 12.0));
    if (selected)
        pair.editor.pnt_selected = 4;
    const auto turn = [&](int delta) {
        const int paints = pair.editor.paints;
        pair.turn_wheel(delta);
        QVERIFY(pair.editor.paints > paints);
        COMPARE_FRAMES(pair, QStringLiteral("zoom %1").arg(pair.editor.f_scale));
    };
    for (int i = 0; i < 6; ++i)
        turn(-240);
    QCOMPARE(pair.editor.f_scale, 0.5);
    for (int i = 0; i < 19; ++i)
        turn(i % 5 == 4 ? 17 : 240);
    QCOMPARE(pair.editor.f_scale, 4.0);
    for (int i = 0; i < 6; ++i)
        turn(i % 2 == 0 ? -120 : 120);
}

void tst_identical_frames::one_input_changes_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("change");

    for (const double zoom : zooms({0.7, 1.0, 2.2}, {1.0})) {
        for (int i = 0; i < int(changes().size()); ++i)
            QTest::addRow("%s-at-%g", changes()[size_t(i)].name, zoom) << zoom << i;
    }
}

void tst_identical_frames::one_input_changes() {
    QFETCH(double, zoom);
    QFETCH(int, change);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    fill(pair, QStringLiteral("openings"));
    set_view(pair, zoom);
    for (int i = 0; i < 3; ++i) {
        pair.editor.repaint();
        COMPARE_FRAMES(pair, step_text("before", i));
    }
    const double shown_zoom = pair.editor.f_scale;
    changes()[size_t(change)].change(pair);
    for (int i = 0; i < 4; ++i) {
        pair.editor.repaint();
        COMPARE_FRAMES(pair, step_text("after", i));
    }
    pair.editor.f_scale = shown_zoom;
    pair.editor.p_D = QPointF();
    pair.editor.p->baseAirfoil = smooth_outline(template_points, 0.12);
    for (int i = 0; i < 2; ++i) {
        pair.editor.repaint();
        COMPARE_FRAMES(pair, step_text("back", i));
    }
}

void tst_identical_frames::parts_of_the_window() {
    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    fill(pair, QStringLiteral("openings"));
    pair.editor.repaint();
    COMPARE_FRAMES(pair, QStringLiteral("start"));
    // A part alone, then everything: nothing may be missing after the part was cached.
    for (const double zoom : {1.0, 1.6, 0.6}) {
        set_view(pair, zoom);
        pair.editor.repaint();
        for (int i = 0; i < 3; ++i)
            pair.editor.repaint(QRect(120 + 40 * i, 170, 60, 50));
        COMPARE_FRAMES(pair, QStringLiteral("parts at %1").arg(zoom));
        pair.editor.p_D += QPointF(5.0, 5.0);
        pair.editor.repaint(QRect(0, 0, 280, 400));
        pair.editor.repaint(QRect(280, 0, 280, 400));
        COMPARE_FRAMES(pair, QStringLiteral("halves at %1").arg(zoom));
        pair.editor.repaint();
        COMPARE_FRAMES(pair, QStringLiteral("all at %1").arg(zoom));
    }
}

void tst_identical_frames::long_outlines_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("place");

    for (const double zoom : {0.6, 1.0, 4.0}) {
        QTest::addRow("teeth-at-%g", zoom) << zoom << QPointF(0.3, 0.18);
        QTest::addRow("first-point-at-%g", zoom) << zoom << QPointF(0.9, -0.25);
    }
}

void tst_identical_frames::long_outlines() {
    QFETCH(double, zoom);
    QFETCH(QPointF, place); // chord units

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    pair.editor.p->baseAirfoil = toothed_outline();
    const EditSpline& editor = pair.editor;
    const QPointF pixel(editor.xc + place.x() * editor.L_T, editor.yc - place.y() * editor.L_T);
    const QPointF pan = QPointF(280.0, 200.0) - zoom * pixel;
    set_view(pair, zoom, pan.toPoint());
    for (int i = 0; i < 3; ++i) {
        pair.editor.repaint();
        COMPARE_FRAMES(pair, step_text("paint", i));
    }
}

void tst_identical_frames::grabbed_parts_data() {
    QTest::addColumn<double>("zoom");

    for (const double zoom : {0.5, 1.0, 4.0})
        QTest::addRow("zoom-%g", zoom) << zoom;
}

// Pictures of parts have the view of the window but different edges.
void tst_identical_frames::grabbed_parts() {
    QFETCH(double, zoom);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    fill(pair, QStringLiteral("openings"));
    set_view(pair, zoom, QPointF(-90.0 * zoom, -100.0 * zoom));
    for (const QRect part : {QRect(0, 0, 200, 150), QRect(0, 0, 200, 150), QRect(0, 0, 300, 400),
                             QRect(100, 40, 200, 150), QRect(100, 40, 200, 150)}) {
        const QString difference = pair.difference_in_part(part);
        QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("part of %1 x %2: %3")
                                                      .arg(part.width())
                                                      .arg(part.height())
                                                      .arg(difference)));
        for (int i = 0; i < 2; ++i) {
            pair.editor.repaint();
            COMPARE_FRAMES(pair, step_text("window after the part", i));
        }
    }
}

void tst_identical_frames::pixel_ratios_in_turns_data() {
    QTest::addColumn<double>("zoom");

    for (const double zoom : {0.5, 1.0, 1.7, 4.0})
        QTest::addRow("zoom-%g", zoom) << zoom;
}

void tst_identical_frames::pixel_ratios_in_turns() {
    QFETCH(double, zoom);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    fill(pair, QStringLiteral("openings"));
    set_view(pair, zoom, QPointF(-8.0, 3.0));
    for (const double ratio : {1.0, 1.0, 2.0, 2.0, 1.0, 1.5, 1.5, 1.25, 1.0}) {
        const QString difference = pair.difference_in_image(ratio);
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("ratio %1: %2").arg(ratio).arg(difference)));
        pair.editor.repaint();
        COMPARE_FRAMES(pair, QStringLiteral("window after ratio %1").arg(ratio));
    }
}

void tst_identical_frames::random_walks_data() {
    QTest::addColumn<int>("seed");

    bool ok = false;
    const int walks = qEnvironmentVariableIntValue(walks_variable, &ok);
    for (int seed = 1; seed <= (ok ? walks : default_walks); ++seed)
        QTest::addRow("walk-%d", seed) << seed;
}

void tst_identical_frames::random_walks() {
    QFETCH(int, seed);

    QRandomGenerator random{quint32(seed)};
    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    fill(pair, QStringLiteral("template"));
    pair.editor.repaint();
    QPoint pos(200, 200);
    Qt::MouseButton held = Qt::NoButton;
    for (int i = 0; i < steps_of_a_walk; ++i) {
        const int kind = random.bounded(20);
        if (kind < 7 && held != Qt::NoButton) {
            pos += QPoint(random.bounded(-12, 13), random.bounded(-12, 13));
            pair.move(pos, held);
        } else if (kind < 9) {
            if (held != Qt::NoButton)
                pair.release(pos, held);
            held = kind < 8 ? Qt::LeftButton : Qt::MiddleButton;
            pos = pair.shown(1 + random.bounded(9));
            pair.press(pos, held);
        } else if (kind < 12) {
            pair.turn_wheel(random.bounded(-300, 301));
        } else if (kind < 15) {
            pair.editor.repaint();
        } else if (kind < 16) {
            pair.press_key(random.bounded(2) != 0 ? Qt::Key_Down : Qt::Key_Left);
        } else if (kind < 17) {
            pair.editor.p_D = QPointF();
            pair.editor.f_scale = random.bounded(1, 5);
            pair.editor.repaint();
        } else if (kind < 18) {
            pair.editor.repaint(QRect(random.bounded(300), random.bounded(200), 250, 250));
            pair.editor.repaint();
        } else {
            const int change = random.bounded(int(changes().size()));
            changes()[size_t(change)].change(pair);
            pair.editor.repaint();
        }
        COMPARE_FRAMES(pair, step_text("step", i));
    }
}

QTEST_MAIN(tst_identical_frames)
#include "tst_identical_frames.moc"
