// SPDX-FileCopyrightText: Aerolith developers
// The main window's signals and slots: their order, their signatures, and that those
// named after an object of the form are connected to it.
#include "app/mainwindow.h"
#include "editor/editspline.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QMetaMethod>
#include <QTest>

class tst_windowslots : public QObject {
    Q_OBJECT

private slots:
    void init();
    void connected_by_name_data();
    void connected_by_name();
    void not_connected_data();
    void not_connected();
    void repaint_all_repaints_once();
    void opened_spline_is_evaluated_and_repainted();
};

namespace {

/// Whether @p sender's signal @p name is connected to a slot of the window. Disconnects it.
bool take_connection(QObject* sender, const QByteArray& name, QObject* window, int slot) {
    const QMetaObject* object = sender->metaObject();
    for (int i = 0; i < object->methodCount(); ++i) {
        const QMetaMethod method = object->method(i);
        if (method.methodType() != QMetaMethod::Signal || method.name() != name ||
            (method.attributes() & QMetaMethod::Cloned))
            continue;
        if (QMetaObject::disconnectOne(sender, i, window, slot))
            return true;
    }
    return false;
}

} // namespace

void tst_windowslots::init() {
    renew_document();
}

void tst_windowslots::connected_by_name_data() {
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QByteArray>("signal");

    const char* const rows[][2] = {
        {"actionExit", "triggered"},
        {"plusButton", "pressed"},
        {"minusButton", "pressed"},
        {"actionOpen_backround_template", "triggered"},
        {"actionOpen_foil_spline", "triggered"},
        {"actionSave_as_table", "triggered"},
        {"actionSave_as_spline_file", "triggered"},
        {"O1Edit", "editingFinished"},
        {"O2Edit", "editingFinished"},
        {"rotplusButton", "clicked"},
        {"rotminusButton", "clicked"},
        {"symetriclButton", "clicked"},
        {"actionAbout_program", "triggered"},
        {"refreshButton", "clicked"},
    };
    for (const auto& row : rows)
        QTest::addRow("%s.%s", row[0], row[1]) << QByteArray(row[0]) << QByteArray(row[1]);
}

void tst_windowslots::connected_by_name() {
    QFETCH(QByteArray, object);
    QFETCH(QByteArray, signal);

    MainWindow window;
    auto* sender = window.findChild<QObject*>(QString::fromLatin1(object));
    QVERIFY(sender != nullptr);
    const QByteArray signature = "on_" + object + "_" + signal + "()";
    const int slot = window.metaObject()->indexOfSlot(signature.constData());
    QVERIFY(slot >= 0);
    QVERIFY(take_connection(sender, signal, &window, slot));
    QVERIFY2(!take_connection(sender, signal, &window, slot), "connected twice");
}

void tst_windowslots::not_connected_data() {
    QTest::addColumn<QByteArray>("slot");

    QTest::newRow("fields-from-document") << QByteArray("setupEditO1_O2()");
    QTest::newRow("fields-to-document") << QByteArray("change_O1_O2()");
}

void tst_windowslots::not_connected() {
    QFETCH(QByteArray, slot);

    MainWindow window;
    const int index = window.metaObject()->indexOfSlot(slot.constData());
    QVERIFY(index >= 0);
    QList<QObject*> senders = window.findChildren<QObject*>();
    senders.append(&window);
    for (QObject* sender : std::as_const(senders)) {
        for (int i = 0; i < sender->metaObject()->methodCount(); ++i) {
            if (sender->metaObject()->method(i).methodType() == QMetaMethod::Signal)
                QVERIFY(!QMetaObject::disconnectOne(sender, i, &window, index));
        }
    }
}

void tst_windowslots::repaint_all_repaints_once() {
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();

    const PaintCount paints(window.spline_widget);
    emit window.repaint_all();
    QCOMPARE(paints.count(), 1);
    QCOMPARE(paints.whole(), 1);
}

void tst_windowslots::opened_spline_is_evaluated_and_repainted() {
    MainWindow hidden;
    hidden.p->spline = distinct_spline();
    hidden.p->spline.init_knots();
    QVERIFY(hidden.spline_widget->spline_poly.isEmpty());
    emit hidden.repaint_all();
    QVERIFY(hidden.spline_widget->spline_poly.isEmpty());
    emit hidden.to_repaint_opened_spline();
    QCOMPARE(hidden.spline_widget->spline_poly.size(), 999);

    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    const PaintCount paints(window.spline_widget);
    emit window.to_repaint_opened_spline();
    QCOMPARE(paints.count(), 1);
}

AEROLITH_TEST_MAIN(tst_windowslots)
#include "tst_windowslots.moc"
