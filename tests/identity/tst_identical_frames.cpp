// SPDX-FileCopyrightText: Aerolith developers
// Every frame of the editor has the pixels of a paint that keeps nothing, whatever was
// painted before. AEROLITH_IDENTITY_WALKS sets how many random walks are made; without it
// AEROLITH_IDENTITY_BRIEF leaves out most zooms. AEROLITH_FRAMES names a folder for the
// pictures that differ.
#include "baseline/scene.h"
#include "frames.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>

using baseline::place_spline;
using baseline::smooth_outline;

namespace {

constexpr QSize window_size(560, 400);
constexpr int template_points = 200;
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

// As a table may give it: leaps, points far away and some that are no numbers.
QPolygonF damaged_outline() {
    QPolygonF outline = smooth_outline(60, 0.2);
    outline[7] = QPointF(std::numeric_limits<double>::quiet_NaN(), 0.1);
    outline[20] = QPointF(0.3, std::numeric_limits<double>::infinity());
    outline[33] = QPointF(1e9, 0.0);
    outline[40] = QPointF(-0.4, 0.9);
    outline << outline.first();
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

// One input of the picture, changed from a state that was painted several times.
using Change = void (*)(FramePair&);

struct NamedChange {
    const char* name;
    Change change;
};

const NamedChange changes[] = {
    {"template", [](FramePair& f) { f.editor.p->baseAirfoil = smooth_outline(150, 0.2); }},
    {"template-of-the-same-size",
     [](FramePair& f) { f.editor.p->baseAirfoil = smooth_outline(template_points, 0.121); }},
    {"template-in-the-same-memory",
     [](FramePair& f) {
         f.editor.p->baseAirfoil.clear();
         f.editor.p->baseAirfoil = smooth_outline(template_points, 0.16);
     }},
    {"one-point-of-the-template",
     [](FramePair& f) {
         if (!f.editor.p->baseAirfoil.isEmpty())
             f.editor.p->baseAirfoil[f.editor.p->baseAirfoil.size() / 2].ry() += 0.05;
     }},
    {"template-gone", [](FramePair& f) { f.editor.p->baseAirfoil.clear(); }},
    {"template-damaged", [](FramePair& f) { f.editor.p->baseAirfoil = damaged_outline(); }},
    {"name-of-the-template",
     [](FramePair& f) { f.editor.p->baseAirfoilName = QStringLiteral("other %1.dat"); }},
    {"name-of-the-spline",
     [](FramePair& f) { f.editor.p->spline.airfoilName = QStringLiteral("/a/b.c.spl"); }},
    {"start-of-the-opening", [](FramePair& f) { f.editor.p->spline.startVent = 12.5; }},
    {"end-of-the-opening", [](FramePair& f) { f.editor.p->spline.endVent = 77.0; }},
    {"opening-nowhere",
     [](FramePair& f) { f.editor.p->spline.endVent = std::numeric_limits<double>::infinity(); }},
    {"zoom-up", [](FramePair& f) { f.editor.f_scale *= 1.3; }},
    {"zoom-down", [](FramePair& f) { f.editor.f_scale *= 0.6; }},
    {"zoom-by-one-bit",
     [](FramePair& f) { f.editor.f_scale = std::nextafter(f.editor.f_scale, 4.0); }},
    {"pan-x", [](FramePair& f) { f.editor.p_D.rx() += 17.0; }},
    {"pan-y", [](FramePair& f) { f.editor.p_D.ry() -= 9.0; }},
    {"pan-x-by-half-a-pixel", [](FramePair& f) { f.editor.p_D.rx() += 0.5; }},
    {"pan-y-by-half-a-pixel", [](FramePair& f) { f.editor.p_D.ry() += 0.5; }},
    {"pan-by-parts-of-a-pixel", [](FramePair& f) { f.editor.p_D += QPointF(0.5, 0.25); }},
    {"pan-out-of-sight", [](FramePair& f) { f.editor.p_D += QPointF(5000.0, 0.0); }},
    {"size",
     [](FramePair& f) {
         f.editor.resize(500, 380);
         f.editor.Init_widget();
         place_spline(f.editor, 12);
     }},
    {"height-only",
     [](FramePair& f) {
         f.editor.resize(f.editor.width(), 381);
         f.editor.Init_widget();
         place_spline(f.editor, 12);
     }},
    {"width-without-a-new-mapping", [](FramePair& f) { f.editor.resize(500, f.editor.height()); }},
    {"height-without-a-new-mapping", [](FramePair& f) { f.editor.resize(f.editor.width(), 370); }},
    {"size-without-a-new-mapping", [](FramePair& f) { f.editor.resize(500, 380); }},
    {"mapping-without-a-new-size", [](FramePair& f) { f.editor.xc += 10; }},
    {"chord", [](FramePair& f) { f.editor.L_T -= 10; }},
    {"chord-line", [](FramePair& f) { f.editor.yc += 7; }},
    {"palette",
     [](FramePair& f) {
         QPalette palette = f.editor.palette();
         palette.setColor(QPalette::WindowText, Qt::darkGreen);
         palette.setColor(QPalette::Window, Qt::yellow);
         f.editor.setPalette(palette);
     }},
    {"text-colour",
     [](FramePair& f) {
         QPalette palette = f.editor.palette();
         palette.setColor(QPalette::WindowText, Qt::magenta);
         f.editor.setPalette(palette);
     }},
    {"style-sheet",
     [](FramePair& f) {
         f.editor.setStyleSheet(
             QStringLiteral("background-color: rgb(243, 159, 225); color: rgb(10, 90, 40);"));
     }},
    {"disabled",
     [](FramePair& f) {
         f.editor.setEnabled(false);
         f.plain.setEnabled(false);
     }},
    {"font",
     [](FramePair& f) {
         QFont font = f.editor.font();
         font.setPointSize(font.pointSize() + 5);
         font.setItalic(true);
         f.editor.setFont(font);
     }},
    {"direction-of-reading", [](FramePair& f) { f.editor.setLayoutDirection(Qt::RightToLeft); }},
    {"selection", [](FramePair& f) { f.editor.pnt_selected = 5; }},
    {"control-point", [](FramePair& f) { f.editor.p->spline.CP[4] += QPointF(3.0, 11.0); }},
    {"control-point-far-away", [](FramePair& f) { f.editor.p->spline.CP[4] = QPointF(1e9, -1e9); }},
    {"control-point-no-number",
     [](FramePair& f) {
         f.editor.p->spline.CP[4].rx() = std::numeric_limits<double>::quiet_NaN();
     }},
    {"number-of-points", [](FramePair& f) { place_spline(f.editor, 9); }},
    {"no-points", [](FramePair& f) { f.editor.p->spline.num_pnt = 0; }},
    {"sharpened",
     [](FramePair& f) {
         f.editor.pnt_selected = 6;
         f.editor.Toggle_Conic_Control();
     }},
    {"hidden-and-shown",
     [](FramePair& f) {
         f.editor.hide();
         f.editor.p->baseAirfoil = smooth_outline(template_points, 0.18);
         f.editor.show();
         QVERIFY(QTest::qWaitForWindowExposed(&f.editor));
     }},
    {"nothing", [](FramePair&) {}},
};

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
            QTest::addRow("%s-at-%g", way.name, zoom) << zoom << way.step;
    }
}

// From the section in the window's upper left corner out of the window and back.
void tst_identical_frames::pans_over_the_edges() {
    QFETCH(double, zoom);
    QFETCH(QPoint, step);

    FramePair pair(window_size);
    QVERIFY(pair.show());
    place_spline(pair.editor, 12);
    fill(pair, QStringLiteral("template"));
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
        for (int i = 0; i < int(std::size(changes)); ++i)
            QTest::addRow("%s-at-%g", changes[i].name, zoom) << zoom << i;
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
    changes[change].change(pair);
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
    // A part alone, then all of it: nothing that was kept from the part may be missing.
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

void tst_identical_frames::grabbed_parts_data() {
    QTest::addColumn<double>("zoom");

    for (const double zoom : {0.5, 1.0, 4.0})
        QTest::addRow("zoom-%g", zoom) << zoom;
}

// Pictures of parts have the view of the window but other edges.
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
            const int change = random.bounded(int(std::size(changes)));
            changes[change].change(pair);
            pair.editor.repaint();
        }
        COMPARE_FRAMES(pair, step_text("step", i));
    }
}

QTEST_MAIN(tst_identical_frames)
#include "tst_identical_frames.moc"
