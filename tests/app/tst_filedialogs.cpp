// SPDX-FileCopyrightText: Aerolith developers
// The file dialogs themselves, and the menu entry that opens a template.
#include "app/mainwindow.h"
#include "baseline/splinebytes.h"
#include "editor/editspline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class tst_filedialogs : public QObject {
    Q_OBJECT

private slots:
    void init();
    void dialogs_data();
    void dialogs();
    void dialogs_without_their_folder();
    void filters_are_translated();
    void template_is_opened_data();
    void template_is_opened();
    void template_is_normalised();
    void template_of_no_layout();
    void cancelled_template_changes_nothing();

private:
    QTemporaryDir folder;
};

namespace {

const QString header = QStringLiteral(" airfoil table \t\n \t\n");

} // namespace

void tst_filedialogs::init() {
    renew_document();
    QVERIFY(folder.isValid());
}

void tst_filedialogs::dialogs_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("opens");

    QTest::newRow("template") << QStringLiteral("actionOpen_backround_template")
                              << QStringLiteral("Open airfoil")
                              << QStringLiteral("Files(*.txt *.dat)") << true;
    QTest::newRow("spline") << QStringLiteral("actionOpen_foil_spline")
                            << QStringLiteral("Open airfoil spline (*.spl)")
                            << QStringLiteral("Files (*.spl)") << true;
    QTest::newRow("save-table") << QStringLiteral("actionSave_as_table")
                                << QStringLiteral("Save File (...as)")
                                << QStringLiteral("Files (*.txt *.dat)") << false;
    QTest::newRow("save-spline") << QStringLiteral("actionSave_as_spline_file")
                                 << QStringLiteral("Save Spline (.spl) (as...)")
                                 << QStringLiteral("Files (*.spl)") << false;
}

void tst_filedialogs::dialogs() {
    QFETCH(QString, entry);
    QFETCH(QString, caption);
    QFETCH(QString, filter);
    QFETCH(bool, opens);

    const QString start = QDir::homePath() + QStringLiteral("/Desktop/Kavrund/Airfoils");
    QVERIFY(QDir().mkpath(start));
    MainWindow window;
    SHOW(window);
    QCOMPARE(window.opf->mydir, start + QLatin1Char('/'));

    bool checked = false;
    ModalGuard guard({[&checked, opens](QWidget* shown) {
        auto* dialog = qobject_cast<QFileDialog*>(shown);
        QVERIFY(dialog != nullptr);
        QVERIFY(dialog->parentWidget() == nullptr);
        QCOMPARE(dialog->acceptMode(), opens ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
        QCOMPARE(dialog->fileMode(), opens ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
        QCOMPARE(dialog->options(), QFileDialog::Options());
        QCOMPARE(dialog->defaultSuffix(), QString());
        checked = true;
        dialog->reject();
    }});
    window.findChild<QAction*>(entry)->trigger();
    QCOMPARE(guard.count(), 1);
    QVERIFY(checked);
    QCOMPARE(guard.seen().class_name, QStringLiteral("QFileDialog"));
    QCOMPARE(guard.seen().title, caption);
    QCOMPARE(guard.seen().filters, QStringList(filter));
    QCOMPARE(guard.seen().folder, start);
    QVERIFY(QDir(QDir::homePath() + QStringLiteral("/Desktop")).removeRecursively());
}

void tst_filedialogs::dialogs_without_their_folder() {
    MainWindow window;
    SHOW(window);
    ModalGuard guard;
    window.actionOpen_backround_template->trigger();
    window.actionOpen_foil_spline->trigger();
    window.actionSave_as_table->trigger();
    window.actionSave_as_spline_file->trigger();
    QCOMPARE(guard.count(), 4);
    QVERIFY(!QFile::exists(QDir::homePath() + QStringLiteral("/Desktop")));
}

void tst_filedialogs::filters_are_translated() {
    MainWindow window;
    SHOW(window);
    const RecordingTranslator recorder("nothing");
    ModalGuard guard;
    window.actionOpen_backround_template->trigger();
    window.actionOpen_foil_spline->trigger();
    window.actionSave_as_table->trigger();
    window.actionSave_as_spline_file->trigger();
    QCOMPARE(guard.count(), 4);
    QList<QByteArray> filters;
    for (const auto& [context, text] : recorder.calls) {
        if (context == "myOpenFile")
            filters.append(text);
    }
    const QList<QByteArray> expected{"Files(*.txt *.dat)", "Files (*.spl)", "Files (*.txt *.dat)",
                                     "Files (*.spl)"};
    QCOMPARE(filters, expected);
}

void tst_filedialogs::template_is_opened_data() {
    QTest::addColumn<QString>("file");

    QTest::newRow("dat") << QStringLiteral("section.dat");
    QTest::newRow("other-extension") << QStringLiteral("section.coordinates");
    QTest::newRow("blanks-and-marks") << QStringLiteral("a <b>section<br> %1 & more.txt");
    QTest::newRow("umlaut") << QString::fromUtf8("Fl\xC3\xBCgel.txt");
}

void tst_filedialogs::template_is_opened() {
    QFETCH(QString, file);

    const QString name = folder.filePath(file);
    QVERIFY(make_file(name, "A section\n1.0 0.0\n0.5 0.0625\n0.0 0.0\n0.5 -0.0625\n1.0 0.0\n"));
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    const QByteArray spline = baseline::spline_bytes(window.p->spline);

    const PaintCount paints(window.spline_widget, [&window] {
        return !window.p->baseAirfoil.isEmpty() && !window.tableEdit->toPlainText().isEmpty();
    });
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_backround_template->trigger();
    QCOMPARE(guard.count(), 1);
    QVERIFY(paints.whole() > 0);
    QCOMPARE(window.p->baseAirfoilName, name);
    const QPolygonF outline({{1.0, 0.0}, {0.5, 0.0625}, {0.0, 0.0}, {0.5, -0.0625}, {1.0, 0.0}});
    COMPARE_POLYGON_BITS(window.p->baseAirfoil, outline);
    QCOMPARE(window.tableEdit->toPlainText(), header + table_row(1, 0) + table_row(0.5, 0.0625) +
                                                  table_row(0, 0) + table_row(0.5, -0.0625) +
                                                  table_row(1, 0));
    QCOMPARE(baseline::spline_bytes(window.p->spline), spline);
}

// A table in percent that begins off the chord line.
void tst_filedialogs::template_is_normalised() {
    const QString name = folder.filePath(QStringLiteral("percent.dat"));
    QVERIFY(make_file(name, "In percent\n100.0 2.0\n50.0 8.25\n0.0 2.0\n50.0 -4.25\n100.0 2.0\n"));
    MainWindow window;
    SHOW(window);
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_backround_template->trigger();
    QCOMPARE(guard.count(), 1);
    COMPARE_POLYGON_BITS(
        window.p->baseAirfoil,
        QPolygonF({{1.0, 0.0}, {0.5, 0.0625}, {0.0, 0.0}, {0.5, -0.0625}, {1.0, 0.0}}));
    QVERIFY(window.tableEdit->toPlainText().startsWith(header + table_row(1, 0) +
                                                       table_row(0.5, 0.0625)));
}

void tst_filedialogs::template_of_no_layout() {
    const QString name = folder.filePath(QStringLiteral("words.txt"));
    QVERIFY(make_file(name, "no numbers here\n"));
    MainWindow window;
    SHOW(window);
    window.p->baseAirfoil = QPolygonF(QList<QPointF>{{1.0, 0.0}, {0.5, 0.5}});
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_backround_template->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(window.p->baseAirfoilName, name);
    QVERIFY(window.p->baseAirfoil.isEmpty());
    QCOMPARE(window.tableEdit->toPlainText(), header + table_row(1, 0) + table_row(1, 0));
}

void tst_filedialogs::cancelled_template_changes_nothing() {
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    const QPolygonF outline({{1.0, 0.0}, {0.0, 0.25}, {0.5, -0.5}});
    window.p->baseAirfoil = outline;
    window.p->baseAirfoilName = QStringLiteral("before");
    window.Write_BaseTable(outline);
    const QString table = window.tableEdit->toPlainText();
    const QByteArray spline = baseline::spline_bytes(window.p->spline);

    ModalGuard guard;
    window.actionOpen_backround_template->trigger();
    QCOMPARE(guard.count(), 1);
    COMPARE_POLYGON_BITS(window.p->baseAirfoil, outline);
    QCOMPARE(window.p->baseAirfoilName, QStringLiteral("before"));
    QCOMPARE(window.tableEdit->toPlainText(), table);
    QCOMPARE(baseline::spline_bytes(window.p->spline), spline);
}

AEROLITH_TEST_MAIN(tst_filedialogs)
#include "tst_filedialogs.moc"
