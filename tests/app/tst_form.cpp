// SPDX-FileCopyrightText: Aerolith developers
// The form of the main window: layouts, menus, flags.
#include "app/mainwindow.h"
#include "editor/editspline.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QDockWidget>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

class tst_form : public QObject {
    Q_OBJECT

private slots:
    void init();
    void layouts();
    void menus_data();
    void menus();
    void no_other_bars();
    void window_flags();
    void positions_stay_on_screen();
    void own_fields();
};

void tst_form::init() {
    renew_document();
}

void tst_form::layouts() {
    const MainWindow window;
    QCOMPARE(window.centralWidget(), window.centralwidget);
    QCOMPARE(window.centralwidget->layout(), window.gridLayout);
    QCOMPARE(window.gridLayout->horizontalSpacing(), 6);
    QCOMPARE(window.gridLayout->verticalSpacing(), 6);
    QCOMPARE(window.gridLayout->contentsMargins(), QMargins(9, 9, 9, 9));
    QCOMPARE(window.gridLayout->count(), 2);
    QCOMPARE(window.gridLayout->itemAtPosition(0, 0)->layout(), window.horizontalLayout);
    QCOMPARE(window.gridLayout->itemAtPosition(0, 1)->widget(), window.tableEdit);

    QCOMPARE(window.horizontalLayout->direction(), QBoxLayout::LeftToRight);
    QCOMPARE(window.horizontalLayout->spacing(), 6);
    QCOMPARE(window.horizontalLayout->count(), 1);
    QCOMPARE(window.horizontalLayout->itemAt(0)->widget(), window.spline_widget);

    const QList<QWidget*> buttons{window.plusButton,      window.minusButton,
                                  window.rotplusButton,   window.rotminusButton,
                                  window.symetriclButton, window.refreshButton};
    QCOMPARE(window.splitter->count(), int(buttons.size()));
    for (int i = 0; i < buttons.size(); ++i)
        QCOMPARE(window.splitter->widget(i), buttons.at(i));
}

void tst_form::menus_data() {
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QStringList>("actions");

    QTest::newRow("bar") << QStringLiteral("menuBar")
                         << QStringList{QStringLiteral("menuFiles"), QStringLiteral("menuSave"),
                                        QStringLiteral("menuAbout")};
    QTest::newRow("files") << QStringLiteral("menuFiles")
                           << QStringList{QStringLiteral("actionOpen_backround_template"),
                                          QStringLiteral("actionOpen_foil_spline"),
                                          QStringLiteral("actionExit")};
    QTest::newRow("save") << QStringLiteral("menuSave")
                          << QStringList{QStringLiteral("actionSave_as_table"),
                                         QStringLiteral("actionSave_as_spline_file")};
    QTest::newRow("about") << QStringLiteral("menuAbout")
                           << QStringList{QStringLiteral("actionAbout_program")};
}

void tst_form::menus() {
    QFETCH(QString, menu);
    QFETCH(QStringList, actions);

    const MainWindow window;
    QCOMPARE(window.menuWidget(), window.Ui_main_window::menuBar);
    QStringList names;
    for (const QAction* action : window.findChild<QWidget*>(menu)->actions())
        names.append(action->menu() ? action->menu()->objectName() : action->objectName());
    QCOMPARE(names, actions);
}

void tst_form::no_other_bars() {
    const MainWindow window;
    QVERIFY(window.findChild<QStatusBar*>() == nullptr);
    QVERIFY(window.findChild<QToolBar*>() == nullptr);
    QVERIFY(window.findChild<QDockWidget*>() == nullptr);
}

void tst_form::window_flags() {
    const MainWindow window;
    // A window without a parent has the type of a window besides its hints.
    QCOMPARE(window.windowFlags(), Qt::WindowFlags(Qt::Window | Qt::FramelessWindowHint));
}

void tst_form::positions_stay_on_screen() {
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (const QSize size : {QSize(800, 600), QSize(1280, 780), QSize(1920, 1060)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(window.O1Edit->geometry(), QRect(50, 10, 51, 24));
        QCOMPARE(window.O2Edit->geometry(), QRect(50, 40, 51, 24));
        QCOMPARE(window.label->geometry(), QRect(10, 14, 34, 17));
        QCOMPARE(window.label_2->geometry(), QRect(10, 45, 34, 17));
        // On screen a splitter is never wider than its buttons.
        QCOMPARE(window.splitter->pos(), QPoint(190, 50));
        QVERIFY(QRect(190, 50, 281, 27).contains(window.splitter->geometry()));
        QCOMPARE(window.tableEdit->width(), 141);
    }
}

void tst_form::own_fields() {
    const MainWindow window;
    QCOMPARE(window.p, GetDataStruct());
    QCOMPARE(window.opf->parent(), static_cast<const QObject*>(&window));
    QCOMPARE(window.findChildren<myOpenFile*>().size(), 1);
    QCOMPARE(window.opf->p, window.p);
    QCOMPARE(window.spline_widget->p, window.p);
    QVERIFY(window.TabletextEdit.parent() == nullptr);
    QCOMPARE(window.parent(), nullptr);
}

AEROLITH_TEST_MAIN(tst_form)
#include "tst_form.moc"
