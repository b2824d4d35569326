// SPDX-FileCopyrightText: Aerolith developers
// The menu entries that save files, driven through their dialogs.
#include "app/mainwindow.h"
#include "baseline/splinebytes.h"
#include "editor/editormodel.h"
#include "editor/editspline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_saveflows : public QObject {
    Q_OBJECT

private slots:
    void init();
    void spline_bytes_data();
    void spline_bytes();
    void spline_name_is_kept();
    void empty_spline();
    void cancelled_spline();
    void just_save_without_a_name();
    void spline_that_cannot_be_written_is_silent_data();
    void spline_that_cannot_be_written_is_silent();
    void replacing_asks_first();
    void table_bytes_data();
    void table_bytes();
    void cancelled_table();
    void table_that_cannot_be_written_is_told_data();
    void table_that_cannot_be_written_is_told();
    void table_is_told_each_time();

private:
    QTemporaryDir folder;
};

namespace {

/// The table of the editor's curve, computed independently of the program.
QByteArray expected_table(const EditSpline& editor, const QString& name) {
    const EditorModel model(editor.size());
    QPolygonF curve;
    for (const QPointF& point : editor.spline_poly)
        curve.append(model.to_chord(point));
    return model_table(name, curve);
}

} // namespace

void tst_saveflows::init() {
    renew_document();
    QVERIFY(folder.isValid());
}

void tst_saveflows::spline_bytes_data() {
    QTest::addColumn<QString>("file");

    QTest::newRow("spl") << QStringLiteral("a.spl");
    QTest::newRow("no-extension") << QStringLiteral("plain");
    QTest::newRow("other-extension") << QStringLiteral("a.dat");
    QTest::newRow("marks") << QStringLiteral("<b>%1 &amp; %2.spl");
    QTest::newRow("umlaut") << QString::fromUtf8("Fl\xC3\xBCgel.spl");
}

void tst_saveflows::spline_bytes() {
    QFETCH(QString, file);

    const QString name = folder.filePath(file);
    MainWindow window;
    window.p->spline = distinct_spline();
    SplineFoil expected = window.p->spline;
    expected.airfoilName = name;
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionSave_as_spline_file->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(window.p->spline.airfoilName, name);
    QCOMPARE(file_bytes(name).toHex(), baseline::spline_bytes(expected).toHex());
    QVERIFY(!QFile::exists(name + QStringLiteral(".spl")));
    QVERIFY(QFile::remove(name));
}

void tst_saveflows::spline_name_is_kept() {
    const QString name = folder.filePath(QStringLiteral("a.spl"));
    {
        MainWindow window;
        window.p->spline = distinct_spline();
        window.JustSaveSplineFile(name);
    }
    renew_document();
    MainWindow window;
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(window.p->spline.airfoilName, name);
}

void tst_saveflows::empty_spline() {
    const QString name = folder.filePath(QStringLiteral("empty.spl"));
    MainWindow window;
    QCOMPARE(window.p->spline.num_pnt, 0);
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionSave_as_spline_file->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(file_bytes(name).size(), 3404 + 2 * name.size());
}

void tst_saveflows::cancelled_spline() {
    MainWindow window;
    window.p->spline = distinct_spline();
    const QByteArray before = baseline::spline_bytes(window.p->spline);
    ModalGuard guard;
    window.actionSave_as_spline_file->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(baseline::spline_bytes(window.p->spline).toHex(), before.toHex());
}

void tst_saveflows::just_save_without_a_name() {
    MainWindow window;
    window.p->spline = distinct_spline();
    const ModalGuard guard;
    window.JustSaveSplineFile(QString());
    window.JustSaveSplineFile(QStringLiteral(""));
    QCOMPARE(window.p->spline.airfoilName, distinct_spline().airfoilName);
    QCOMPARE(guard.count(), 0);
}

void tst_saveflows::spline_that_cannot_be_written_is_silent_data() {
    QTest::addColumn<QString>("name");

    QTest::newRow("no-such-folder") << folder.filePath(QStringLiteral("missing/a.spl"));
    QTest::newRow("full-device") << QStringLiteral("/dev/full");
    QTest::newRow("folder") << folder.path();
}

void tst_saveflows::spline_that_cannot_be_written_is_silent() {
    QFETCH(QString, name);

    MainWindow window;
    window.p->spline = distinct_spline();
    const ModalGuard guard;
    window.JustSaveSplineFile(name);
    QCoreApplication::processEvents();
    QCOMPARE(guard.count(), 0);
    // The name is stored before the file is written, and stays.
    QCOMPARE(window.p->spline.airfoilName, name);
    QCOMPARE(window.p->spline.num_pnt, 5);
}

void tst_saveflows::replacing_asks_first() {
    const QString name = folder.filePath(QStringLiteral("there.spl"));
    QVERIFY(make_file(name, QByteArray(9000, 'x')));
    MainWindow window;
    window.p->spline = distinct_spline();
    {
        ModalGuard guard({[name](QWidget* dialog) {
                              ModalGuard::choose_file(name)(dialog);
                              qobject_cast<QDialog*>(dialog)->reject();
                          },
                          ModalGuard::press(QMessageBox::No)});
        window.actionSave_as_spline_file->trigger();
        QCOMPARE(guard.count(), 2);
        QCOMPARE(file_bytes(name), QByteArray(9000, 'x'));
        QCOMPARE(window.p->spline.airfoilName, distinct_spline().airfoilName);
    }
    ModalGuard guard({ModalGuard::choose_file(name), ModalGuard::press(QMessageBox::Yes)});
    window.actionSave_as_spline_file->trigger();
    QCOMPARE(guard.count(), 2);
    QCOMPARE(file_bytes(name).size(), 3404 + 2 * name.size());
}

void tst_saveflows::table_bytes_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("mirrored");

    QTest::newRow("dat") << QStringLiteral("a.dat") << false;
    QTest::newRow("mirrored") << QStringLiteral("b.dat") << true;
    QTest::newRow("no-extension") << QStringLiteral("plain") << false;
    QTest::newRow("spline-extension") << QStringLiteral("a.spl") << false;
    QTest::newRow("marks") << QStringLiteral("<b>%1 &amp; %2.txt") << false;
    QTest::newRow("umlaut") << QString::fromUtf8("Fl\xC3\xBCgel.txt") << false;
}

void tst_saveflows::table_bytes() {
    QFETCH(QString, file);
    QFETCH(bool, mirrored);

    const QString name = folder.filePath(file);
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    // Not symmetric, so that the order is visible.
    window.p->spline.CP[3] += QPointF(20.0, 15.0);
    for (int i = 0; mirrored && i < 10; ++i)
        window.p->spline.CP[i].setY(2.0 * window.spline_widget->yc - window.p->spline.CP[i].y());
    settle(window);
    QVERIFY(make_file(name, QByteArray(20000, 'x')));

    ModalGuard guard({ModalGuard::choose_file(name), ModalGuard::press(QMessageBox::Yes)});
    window.actionSave_as_table->trigger();
    QCOMPARE(guard.count(), 2);
    const QByteArray expected = expected_table(*window.spline_widget, name);
    QVERIFY(expected.count('\n') > 80);
    QCOMPARE(file_bytes(name).split('\n'), expected.split('\n'));
    QVERIFY(window.p->spline.airfoilName.isEmpty());
    QVERIFY(QFile::remove(name));
}

void tst_saveflows::cancelled_table() {
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    const QByteArray before = baseline::spline_bytes(window.p->spline);
    ModalGuard guard;
    window.actionSave_as_table->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.seen().class_name, QStringLiteral("QFileDialog"));
    QCOMPARE(baseline::spline_bytes(window.p->spline).toHex(), before.toHex());
}

void tst_saveflows::table_that_cannot_be_written_is_told_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("exists");

    QTest::newRow("no-such-folder") << folder.filePath(QStringLiteral("missing/a.dat")) << false;
    QTest::newRow("marks") << folder.filePath(
                                  QStringLiteral("missing/<b>bold<b><br>%1 %2 &amp; %L3.dat"))
                           << false;
    QTest::newRow("full-device") << QStringLiteral("/dev/full") << true;
}

void tst_saveflows::table_that_cannot_be_written_is_told() {
    QFETCH(QString, name);
    QFETCH(bool, exists);

    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    QList<ModalGuard::Reaction> reactions{ModalGuard::choose_file(name)};
    if (exists)
        reactions.append(ModalGuard::press(QMessageBox::Yes));
    reactions.append(ModalGuard::press(QMessageBox::Ok));
    ModalGuard guard(reactions);
    window.actionSave_as_table->trigger();
    QCOMPARE(guard.count(), int(reactions.size()));
    QCOMPARE(guard.forced(), 0);
    const ModalSeen told = guard.seen(int(reactions.size()) - 1);
    QCOMPARE(told.class_name, QStringLiteral("QMessageBox"));
    QVERIFY2(told.text.contains(name), qPrintable(told.text));
    QCOMPARE(told.text_format, Qt::PlainText);
    QCOMPARE(window.p->spline.num_pnt, 10);
}

void tst_saveflows::table_is_told_each_time() {
    const QString bad = folder.filePath(QStringLiteral("missing/a.dat"));
    const QString good = folder.filePath(QStringLiteral("told.dat"));
    MainWindow window;
    const auto windows_for = [&window](const QString& name) {
        ModalGuard guard({ModalGuard::choose_file(name)});
        window.actionSave_as_table->trigger();
        return guard.count();
    };
    QCOMPARE(windows_for(bad), 2);
    QCOMPARE(windows_for(good), 1);
    QCOMPARE(windows_for(bad), 2);
    // A cancelled dialog reports nothing, whatever the previous one did.
    ModalGuard guard;
    window.actionSave_as_table->trigger();
    QCOMPARE(guard.count(), 1);
}

AEROLITH_TEST_MAIN(tst_saveflows)
#include "tst_saveflows.moc"
