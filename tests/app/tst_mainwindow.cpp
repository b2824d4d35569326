// SPDX-FileCopyrightText: Aerolith developers
// The main window: first show, resizing, closing, the About box.
#include "app/mainwindow.h"
#include "editor/editspline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QCloseEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <QToolButton>

class tst_mainwindow : public QObject {
    Q_OBJECT

private slots:
    void init();
    void first_show_data();
    void first_show();
    void later_resizes();
    void resize_empties_spline();
    void exit_ends_the_loop();
    void close_ends_the_loop();
    void close_events();
    void about_box();
    void style_sheet_reaches_fields_and_buttons();
    void style_sheet_spares_canvas_and_pane();
};

namespace {

const QColor pink(243, 159, 225);

/// The percentage of pixels in a part of a widget that are a shade of pink, in a picture of the
/// window: buttons are drawn in shades of their colour.
int pink_share(MainWindow* window, const QWidget* widget, const QRect& part) {
    const QImage picture = window->grab().toImage();
    const QPoint corner = widget->mapTo(window, QPoint(0, 0));
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const QColor color = picture.pixelColor(corner + QPoint(x, y));
            count += color.hslSaturation() > 60 && qAbs(color.hslHue() - pink.hslHue()) < 15;
        }
    }
    return 100 * count / (part.width() * part.height());
}

int pink_share(MainWindow* window, const QWidget* widget) {
    return pink_share(window, widget, widget->rect());
}

} // namespace

void tst_mainwindow::init() {
    renew_document();
}

void tst_mainwindow::first_show_data() {
    QTest::addColumn<bool>("maximised");

    QTest::newRow("plain") << false;
    QTest::newRow("maximised") << true;
}

void tst_mainwindow::first_show() {
    QFETCH(bool, maximised);

    MainWindow window;
    if (maximised)
        window.showMaximized();
    else
        window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();

    const EditSpline& editor = *window.spline_widget;
    QVERIFY(editor.width() > 555);
    QCOMPARE(editor.MyRect, editor.rect());
    QCOMPARE(editor.wr, editor.width() - 1);
    QCOMPARE(editor.H, editor.height() - 1);
    QCOMPARE(editor.xc, int(0.1 * (editor.width() - 1)));
    QCOMPARE(editor.L_T, editor.wr - 2 * editor.xc);
    if (maximised)
        QCOMPARE(window.size(), window.screen()->availableGeometry().size());
    else
        QCOMPARE(window.size(), QSize(800, 600));
}

void tst_mainwindow::later_resizes() {
    MainWindow window;
    SHOW(window);
    const EditSpline& editor = *window.spline_widget;
    for (const QSize size :
         {QSize(1280, 800), QSize(801, 601), QSize(1920, 1080), QSize(800, 600)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(window.size(), size);
        QCOMPARE(editor.MyRect, editor.rect());
        QCOMPARE(editor.TE, QPointF(editor.xc + editor.L_T, editor.yc));
    }
    window.hide();
    window.resize(1000, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    QCOMPARE(editor.MyRect, editor.rect());
}

void tst_mainwindow::resize_empties_spline() {
    MainWindow window;
    SHOW(window);
    QTest::mouseClick(window.symetriclButton, Qt::LeftButton);
    window.p->spline.startVent = 10.0;
    window.p->spline.endVent = 20.0;
    QCOMPARE(window.p->spline.num_pnt, 10);
    QVERIFY(!window.spline_widget->spline_poly.isEmpty());

    window.resize(window.width() + 40, window.height() + 30);
    QCoreApplication::processEvents();
    QCOMPARE(window.p->spline.num_pnt, 0);
    QCOMPARE(window.p->spline.num_knt, 0);
    COMPARE_BITS(window.p->spline.startVent, 0.0);
    COMPARE_BITS(window.p->spline.endVent, 0.0);
    QCOMPARE(window.spline_widget->pnt_selected, -1);
    QTRY_VERIFY(window.spline_widget->spline_poly.isEmpty());
    QVERIFY(window.p->workAirfoil.isEmpty());
}

void tst_mainwindow::exit_ends_the_loop() {
    MainWindow window;
    SHOW(window);
    QTimer::singleShot(0, window.actionExit, &QAction::trigger);
    QTimer::singleShot(10000, &window, [] { QCoreApplication::exit(99); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(!window.isVisible());
}

void tst_mainwindow::close_ends_the_loop() {
    MainWindow window;
    SHOW(window);
    bool closed = false;
    QTimer::singleShot(0, &window, [&] { closed = window.close(); });
    QTimer::singleShot(10000, &window, [] { QCoreApplication::exit(99); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(closed);
    QVERIFY(!window.isVisible());
}

void tst_mainwindow::close_events() {
    MainWindow window;
    SHOW(window);
    QCloseEvent event;
    QCoreApplication::sendEvent(&window, &event);
    QVERIFY(event.isAccepted());
    QVERIFY(!window.isVisible());

    SHOW(window);
    QVERIFY(window.close());
    QVERIFY(!window.isVisible());
    QVERIFY(window.close());
}

void tst_mainwindow::about_box() {
    MainWindow window;
    SHOW(window);
    const QWidget* parent = nullptr;
    ModalGuard guard({[&parent](QWidget* box) {
        parent = box->parentWidget();
        box->close();
    }});
    window.actionAbout_program->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.seen().class_name, QStringLiteral("QMessageBox"));
    QCOMPARE(parent, static_cast<const QWidget*>(&window));
    QCOMPARE(guard.seen().title, QStringLiteral(" About Aerolith ver 1.0 -Qt4 "));
    const QRegularExpression text(
        QStringLiteral("^Aerolith ver\\.1\\.0 \\n"
                       "\\n Author: ?Aerolith developers\\b[^\\n]*\\b20\\d\\d\\b[^\\n]* \\n"
                       "\\n contact: - \\n"
                       "\\n     home: -     \\n\\z"));
    QVERIFY2(text.match(guard.seen().text).hasMatch(), qPrintable(guard.seen().text));
}

void tst_mainwindow::style_sheet_reaches_fields_and_buttons() {
    MainWindow window;
    SHOW(window);
    QVERIFY(pink_share(&window, window.O1Edit) > 60);
    QVERIFY(pink_share(&window, window.O2Edit) > 60);
    QVERIFY(pink_share(&window, window.label) > 60);
    QVERIFY(pink_share(&window, window.label_2) > 60);
    for (int i = 0; i < window.splitter->count(); ++i)
        QVERIFY(pink_share(&window, window.splitter->widget(i)) > 60);
}

void tst_mainwindow::style_sheet_spares_canvas_and_pane() {
    MainWindow window;
    SHOW(window);
    const EditSpline& editor = *window.spline_widget;
    const QImage picture = window.grab().toImage();
    const QColor ground = window.palette().color(QPalette::Window);
    QVERIFY(ground != pink);
    for (const QPoint inside : {QPoint(2, 3), QPoint(editor.width() - 3, editor.height() - 4),
                                QPoint(150, 110), QPoint(editor.width() - 20, 5)})
        QCOMPARE(picture.pixelColor(editor.mapTo(&window, inside)), ground);
    const QRect below_the_buttons = editor.rect().adjusted(0, 100, 0, 0);
    QCOMPARE(pink_share(&window, &editor, below_the_buttons), 0);
    QCOMPARE(pink_share(&window, window.tableEdit), 0);
    QCOMPARE(pink_share(&window, window.Ui_main_window::menuBar), 0);
}

AEROLITH_TEST_MAIN(tst_mainwindow)
#include "tst_mainwindow.moc"
