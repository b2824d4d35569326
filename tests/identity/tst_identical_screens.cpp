// SPDX-FileCopyrightText: Aerolith developers
// The editor moved between screens of one and of two device pixels per logical pixel.
#include "baseline/scene.h"
#include "frames.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <algorithm>

class tst_identical_screens : public QObject {
    Q_OBJECT

private slots:
    void moved_there_and_back_data();
    void moved_there_and_back();
};

void tst_identical_screens::moved_there_and_back_data() {
    QTest::addColumn<double>("zoom");

    for (const double zoom : {0.6, 1.0, 2.0})
        QTest::addRow("zoom-%g", zoom) << zoom;
}

void tst_identical_screens::moved_there_and_back() {
    QFETCH(double, zoom);

    QList<QScreen*> screens = QGuiApplication::screens();
    QCOMPARE(screens.size(), 2);
    std::sort(screens.begin(), screens.end(), [](const QScreen* a, const QScreen* b) {
        return a->devicePixelRatio() < b->devicePixelRatio();
    });
    QCOMPARE(screens[0]->devicePixelRatio(), 1.0);
    QCOMPARE(screens[1]->devicePixelRatio(), 2.0);

    FramePair pair(QSize(560, 400));
    QVERIFY(pair.show());
    baseline::place_spline(pair.editor, 12);
    pair.editor.p->baseAirfoil = baseline::smooth_outline(200, 0.12);
    pair.editor.f_scale = zoom;
    for (const int screen : {0, 1, 0, 1}) {
        for (EditSpline* window :
             {static_cast<EditSpline*>(&pair.editor), static_cast<EditSpline*>(&pair.plain)}) {
            window->setScreen(screens[screen]);
            window->show();
            QVERIFY(QTest::qWaitForWindowExposed(window));
            QCOMPARE(window->devicePixelRatio(), screens[screen]->devicePixelRatio());
        }
        // Restores the view: a move shows the window again.
        pair.editor.f_scale = zoom;
        for (int i = 0; i < 3; ++i) {
            pair.editor.repaint();
            QCOMPARE(pair.difference(), QString());
        }
    }
}

QTEST_MAIN(tst_identical_screens)
#include "tst_identical_screens.moc"
