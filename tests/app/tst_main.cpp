// SPDX-FileCopyrightText: Aerolith developers
// The program from its start to its end: its main function runs inside this test.
#include "app/mainwindow.h"
#include "editor/editspline.h"

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <vector>

int aerolith_main(int argc, char* argv[]);

class tst_main : public QObject {
    Q_OBJECT

private slots:
    void start_to_exit_data();
    void start_to_exit();
};

namespace {

/// What was visible once the event loop ran.
struct Seen {
    int windows = 0;
    bool maximised = false;
    bool fills_screen = false;
    bool without_parent = false;
    bool frameless = false;
    bool mapping_is_right = false;
    int points = -1;
    QString title;
    QString desktop_file;
};

Seen seen;

void look_and_exit() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* widget : windows) {
        auto* window = qobject_cast<MainWindow*>(widget);
        if (!window || !window->isVisible())
            continue;
        ++seen.windows;
        seen.maximised = window->isMaximized();
        seen.fills_screen = window->geometry() == window->screen()->availableGeometry();
        seen.without_parent = window->parent() == nullptr;
        seen.frameless = window->windowFlags().testFlag(Qt::FramelessWindowHint);
        seen.mapping_is_right = window->spline_widget->MyRect == window->spline_widget->rect();
        seen.points = window->p->spline.num_pnt;
        seen.title = window->windowTitle();
        seen.desktop_file = QGuiApplication::desktopFileName();
        QTimer::singleShot(0, window->actionExit, &QAction::trigger);
    }
    QTimer::singleShot(20000, qApp, [] { QCoreApplication::exit(99); });
}

/// Called by the application object on its creation.
void wait_for_event_loop() {
    QTimer::singleShot(0, qApp, &look_and_exit);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(wait_for_event_loop)

void tst_main::start_to_exit_data() {
    QTest::addColumn<QList<QByteArray>>("arguments");

    QTest::newRow("no-arguments") << QList<QByteArray>{"aerolith"};
    QTest::newRow("arguments-are-ignored")
        << QList<QByteArray>{"aerolith", "--help", "--version", "missing.spl"};
}

void tst_main::start_to_exit() {
    QFETCH(QList<QByteArray>, arguments);

    seen = Seen();
    std::vector<char*> argv;
    for (QByteArray& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    QCOMPARE(aerolith_main(int(arguments.size()), argv.data()), 0);

    QCOMPARE(seen.windows, 1);
    QVERIFY(seen.maximised);
    QVERIFY(seen.fills_screen);
    QVERIFY(seen.without_parent);
    QVERIFY(seen.frameless);
    QVERIFY(seen.mapping_is_right);
    QCOMPARE(seen.points, 0);
    QCOMPARE(seen.title, QStringLiteral("Aerolith"));
    QCOMPARE(seen.desktop_file, QStringLiteral("org.kavrund.Aerolith"));
}

// The program creates the application object itself.
int main(int argc, char** argv) {
    tst_main test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_main.moc"
