// SPDX-FileCopyrightText: Aerolith developers
// The test support itself: exact comparison, modal windows, expected warnings.
#include "support/exactcompare.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>

#include <limits>

class tst_support : public QObject {
    Q_OBJECT

private slots:
    void ulp_distance_data();
    void ulp_distance();
    void bits();
    void polygons();
    void message_box();
    void message_box_button();
    void file_dialog();
    void replaced_file();
    void menu();
    void several_windows();
    void stubborn_window();
    void expected_warnings();
    void home_is_empty();
};

void tst_support::ulp_distance_data() {
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<quint64>("distance");

    const double next = std::nextafter(1.0, 2.0);
    const double least = std::numeric_limits<double>::denorm_min();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const quint64 far = std::numeric_limits<quint64>::max();
    QTest::newRow("equal") << 1.0 << 1.0 << quint64(0);
    QTest::newRow("neighbours") << 1.0 << next << quint64(1);
    QTest::newRow("neighbours-below-zero") << -next << -1.0 << quint64(1);
    QTest::newRow("zeros") << 0.0 << -0.0 << quint64(0);
    QTest::newRow("across-zero") << -least << least << quint64(2);
    QTest::newRow("nan") << nan << nan << far;
    QTest::newRow("nan-and-number") << 1.0 << nan << far;
}

void tst_support::ulp_distance() {
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(quint64, distance);
    QCOMPARE(::ulp_distance(a, b), distance);
    QCOMPARE(::ulp_distance(b, a), distance);
}

void tst_support::bits() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(same_bits(nan, nan));
    QVERIFY(!same_bits(0.0, -0.0));
    QVERIFY(!same_bits(1.0, std::nextafter(1.0, 2.0)));
    QVERIFY(!same_bits(QPointF(1.0, 0.0), QPointF(1.0, -0.0)));
    QVERIFY(!same_bits(QPointF(0.0, 1.0), QPointF(-0.0, 1.0)));
}

void tst_support::polygons() {
    const QPolygonF polygon{{0.0, 1.0}, {2.0, 3.0}};
    QVERIFY(first_difference(polygon, polygon).isEmpty());
    QVERIFY(!first_difference(polygon, QPolygonF{{0.0, 1.0}}).isEmpty());
    QVERIFY(first_difference(polygon, QPolygonF{{0.0, 1.0}, {2.0, 4.0}})
                .contains(QLatin1String("point 1")));
}

void tst_support::message_box() {
    ModalGuard guard;
    QMessageBox box;
    box.setWindowTitle(QStringLiteral("a title"));
    box.setText(QStringLiteral("a text"));
    box.exec();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.seen().class_name, QStringLiteral("QMessageBox"));
    QCOMPARE(guard.seen().title, QStringLiteral("a title"));
    QCOMPARE(guard.seen().text, QStringLiteral("a text"));
    QCOMPARE(guard.seen(1).text, QString());
    QCOMPARE(guard.forced(), 0);
}

void tst_support::message_box_button() {
    ModalGuard guard({ModalGuard::press(QMessageBox::No), ModalGuard::press(QMessageBox::Yes)});
    const auto both = QMessageBox::Yes | QMessageBox::No;
    QCOMPARE(QMessageBox::question(nullptr, {}, {}, both), QMessageBox::No);
    QCOMPARE(QMessageBox::question(nullptr, {}, {}, both), QMessageBox::Yes);
    QCOMPARE(QMessageBox::question(nullptr, {}, {}, both), QMessageBox::No);
    QCOMPARE(guard.count(), 3);
}

void tst_support::file_dialog() {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("new %1 file"));
    ModalGuard guard({ModalGuard::choose_file(name)});
    QCOMPARE(QFileDialog::getSaveFileName(nullptr, QStringLiteral("a title"), folder.path(),
                                          QStringLiteral("Files (*.a *.b)")),
             name);
    QCOMPARE(guard.seen().title, QStringLiteral("a title"));
    QCOMPARE(guard.seen().folder, folder.path());
    QCOMPARE(guard.seen().filters, QStringList(QStringLiteral("Files (*.a *.b)")));
    QVERIFY(QFileDialog::getSaveFileName().isNull());
    QCOMPARE(guard.count(), 2);
}

void tst_support::replaced_file() {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("old"));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    ModalGuard guard({ModalGuard::choose_file(name), ModalGuard::press(QMessageBox::Yes)});
    QCOMPARE(QFileDialog::getSaveFileName(nullptr, {}, folder.path()), name);
    QCOMPARE(guard.count(), 2);
}

void tst_support::menu() {
    ModalGuard guard({ModalGuard::choose_entry(QStringLiteral("second"))});
    QMenu menu;
    menu.addAction(QStringLiteral("first"));
    QAction* second = menu.addAction(QStringLiteral("second"));
    QCOMPARE(menu.exec(QPoint(10, 10)), second);
    QCOMPARE(menu.exec(QPoint(10, 10)), nullptr);
    QCOMPARE(guard.count(), 2);
    QCOMPARE(guard.seen().entries,
             QStringList({QStringLiteral("first"), QStringLiteral("second")}));
}

void tst_support::several_windows() {
    bool came = false;
    ModalGuard guard({[&came](QWidget* window) {
        came = true;
        QMessageBox::information(window, {}, QStringLiteral("inner"));
        window->close();
    }});
    QMessageBox outer;
    outer.setText(QStringLiteral("outer"));
    outer.exec();
    QVERIFY(came);
    QCOMPARE(guard.count(), 2);
    QCOMPARE(guard.seen(0).text, QStringLiteral("outer"));
    QCOMPARE(guard.seen(1).text, QStringLiteral("inner"));
}

void tst_support::stubborn_window() {
    ModalGuard guard({[](QWidget*) {}});
    QMessageBox box;
    box.exec();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.forced(), 1);
}

void tst_support::expected_warnings() {
    const ExpectedWarnings outer(QStringLiteral("outer"));
    {
        const ExpectedWarnings inner(QStringLiteral("inner"));
        qWarning("inner one");
        qWarning("outer one");
        qWarning("inner two");
        QCOMPARE(inner.count(), 2);
    }
    qWarning("outer two");
    QCOMPARE(outer.count(), 2);
}

void tst_support::home_is_empty() {
    QCOMPARE(QDir::homePath(), QFileInfo(QDir::homePath()).canonicalFilePath());
    QVERIFY(QDir::homePath().startsWith(QDir::tempPath()));
}

AEROLITH_TEST_MAIN(tst_support)
#include "tst_support.moc"
