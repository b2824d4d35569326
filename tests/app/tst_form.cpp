// SPDX-FileCopyrightText: Aerolith developers
// The form of the main window: objects, layouts, menus, flags.
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

#include <type_traits>

static_assert(std::is_base_of_v<Ui_main_window, Ui::main_window>);
static_assert(std::is_base_of_v<Ui::main_window, MainWindow>);
static_assert(std::is_base_of_v<QMainWindow, MainWindow>);
static_assert(std::is_constructible_v<MainWindow, QWidget*>);
static_assert(std::is_same_v<decltype(Ui_main_window::spline_widget), EditSpline*>);

class tst_form : public QObject {
    Q_OBJECT

private slots:
    void init();
    void tree();
    void members_in_creation_order();
    void layouts();
    void menus_data();
    void menus();
    void no_other_bars();
    void window_flags();
    void positions_stay_on_screen();
    void own_fields();
};

namespace {

const char* const expected_tree = R"(MainWindow main_window
  QAction actionOpen_backround_template
  QAction actionExit
  QAction actionSave_as_table
  QAction actionOpen_foil_spline
  QAction actionSave_as_spline_file
  QAction actionAbout_program
  QWidget centralwidget
    QGridLayout gridLayout
      QHBoxLayout horizontalLayout
    EditSpline spline_widget
      QLineEdit O1Edit
      QLineEdit O2Edit
      QLabel label
      QLabel label_2
      QSplitter splitter
        QToolButton plusButton
        QToolButton minusButton
        QToolButton rotplusButton
        QToolButton rotminusButton
        QToolButton symetriclButton
        QToolButton refreshButton
    QTextEdit tableEdit
  QMenuBar menuBar
    QMenu menuFiles
    QMenu menuSave
    QMenu menuAbout
)";

/// The children of an object in the order of their creation. QSplitter reorders its children.
QObjectList children_of(const QObject* object) {
    const auto* splitter = qobject_cast<const QSplitter*>(object);
    if (!splitter)
        return object->children();
    QObjectList widgets;
    for (int i = 0; i < splitter->count(); ++i)
        widgets.append(splitter->widget(i));
    return widgets;
}

/// Named objects below @p object in the order of their creation, without Qt's internal ones.
QString tree_text(const QObject* object, int depth = 0) {
    QString text = QString(2 * depth, QLatin1Char(' ')) +
                   QString::fromLatin1(object->metaObject()->className()) + QLatin1Char(' ') +
                   object->objectName() + QLatin1Char('\n');
    const QObjectList children = children_of(object);
    for (const QObject* child : children) {
        const QString name = child->objectName();
        if (!name.isEmpty() && !name.startsWith(QLatin1Char('_')) &&
            !name.startsWith(QStringLiteral("qt_")))
            text += tree_text(child, depth + 1);
    }
    return text;
}

} // namespace

void tst_form::init() {
    renew_document();
}

void tst_form::tree() {
    const MainWindow window;
    QCOMPARE(tree_text(&window).split(QLatin1Char('\n')),
             QString::fromLatin1(expected_tree).split(QLatin1Char('\n')));
}

void tst_form::members_in_creation_order() {
    const MainWindow window;
    const Ui_main_window& form = window;
    const void* const members[] = {
        &form.actionOpen_backround_template,
        &form.actionExit,
        &form.actionSave_as_table,
        &form.actionOpen_foil_spline,
        &form.actionSave_as_spline_file,
        &form.actionAbout_program,
        &form.centralwidget,
        &form.gridLayout,
        &form.horizontalLayout,
        &form.spline_widget,
        &form.O1Edit,
        &form.O2Edit,
        &form.label,
        &form.label_2,
        &form.splitter,
        &form.plusButton,
        &form.minusButton,
        &form.rotplusButton,
        &form.rotminusButton,
        &form.symetriclButton,
        &form.refreshButton,
        &form.tableEdit,
        &form.menuBar,
        &form.menuFiles,
        &form.menuSave,
        &form.menuAbout,
    };
    const char* expected = reinterpret_cast<const char*>(&form);
    for (const void* const member : members) {
        QCOMPARE(member, static_cast<const void*>(expected));
        expected += sizeof(void*);
    }
    QCOMPARE(sizeof(Ui_main_window), sizeof(members));
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
    QVERIFY(!window.TabletextEdit.isVisible());
    QCOMPARE(window.parent(), nullptr);
}

AEROLITH_TEST_MAIN(tst_form)
#include "tst_form.moc"
