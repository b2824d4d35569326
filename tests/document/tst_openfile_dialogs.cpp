// SPDX-FileCopyrightText: Aerolith developers
// The file dialogs: what they show and what they return.
#include "document/openfile.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QTemporaryDir>

namespace {

void write_bytes(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray bytes_of(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString dialog_folder() {
    return QDir::homePath() + QStringLiteral("/Desktop/Kavrund/Airfoils");
}

using Dialog = QString (*)(myOpenFile&);

} // namespace

Q_DECLARE_METATYPE(Dialog)

class tst_openfile_dialogs : public QObject {
    Q_OBJECT

private slots:
    void init();
    void folder_is_not_made();
    void dialogs_data();
    void dialogs();
    void dialogs_without_their_folder_data();
    void dialogs_without_their_folder();
    void dialog_of_a_caller();
    void saved_name_stays_as_typed_data();
    void saved_name_stays_as_typed();
    void existing_target_is_asked_for();

private:
    QTemporaryDir folder;
};

void tst_openfile_dialogs::init() {
    QVERIFY(folder.isValid());
    QDir desktop(QDir::homePath() + QStringLiteral("/Desktop"));
    QVERIFY(!desktop.exists() || desktop.removeRecursively());
}

void tst_openfile_dialogs::folder_is_not_made() {
    myOpenFile files;
    ModalGuard guard;
    files.DialogReadFromFile();
    files.DialogWriteSplineToFile();
    QCOMPARE(guard.count(), 2);
    QVERIFY(!QFileInfo::exists(QDir::homePath() + QStringLiteral("/Desktop")));
}

void tst_openfile_dialogs::dialogs_data() {
    QTest::addColumn<Dialog>("dialog");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("saves");

    const auto row = [](const char* tag, Dialog dialog, const char* caption, const char* filter,
                        bool saves) {
        QTest::newRow(tag) << dialog << QString::fromLatin1(caption) << QString::fromLatin1(filter)
                           << saves;
    };
    row(
        "open-table", [](myOpenFile& files) { return files.DialogReadFromFile(); }, "Open airfoil",
        "Files(*.txt *.dat)", false);
    row(
        "open-spline", [](myOpenFile& files) { return files.DialogReadSplineFromFile(); },
        "Open airfoil spline (*.spl)", "Files (*.spl)", false);
    row(
        "save-table", [](myOpenFile& files) { return files.DialogWriteToFile(); },
        "Save File (...as)", "Files (*.txt *.dat)", true);
    row(
        "save-spline", [](myOpenFile& files) { return files.DialogWriteSplineToFile(); },
        "Save Spline (.spl) (as...)", "Files (*.spl)", true);
}

void tst_openfile_dialogs::dialogs() {
    QFETCH(Dialog, dialog);
    QFETCH(QString, caption);
    QFETCH(QString, filter);
    QFETCH(bool, saves);
    QVERIFY(QDir().mkpath(dialog_folder()));
    const QString name = dialog_folder() + QStringLiteral("/a %1 <b>name.spl");
    if (!saves)
        write_bytes(name, "x");

    bool looked = false;
    const auto look = [&](QWidget* window) {
        auto* shown = qobject_cast<QFileDialog*>(window);
        QVERIFY(shown);
        QCOMPARE(shown->parentWidget(), nullptr);
        QVERIFY(shown->isModal());
        QCOMPARE(shown->acceptMode(), saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        QCOMPARE(shown->fileMode(), saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
        QCOMPARE(shown->defaultSuffix(), QString());
        ModalGuard::choose_file(name)(window);
        looked = true;
    };
    // A dialog without a folder starts where the last one ended, which is elsewhere.
    const QString elsewhere = folder.filePath(QStringLiteral("not there yet"));
    myOpenFile files;
    ModalGuard guard({ModalGuard::choose_file(elsewhere), look});
    QCOMPARE(QFileDialog::getSaveFileName(nullptr, {}, folder.path()), elsewhere);
    QCOMPARE(dialog(files), name);
    QVERIFY(looked);
    QCOMPARE(guard.seen(1).title, caption);
    QCOMPARE(guard.seen(1).filters, QStringList(filter));
    QCOMPARE(guard.seen(1).folder, dialog_folder());

    QVERIFY(dialog(files).isEmpty());
    QCOMPARE(guard.count(), 3);
    QCOMPARE(guard.forced(), 0);
}

void tst_openfile_dialogs::dialogs_without_their_folder_data() {
    dialogs_data();
}

void tst_openfile_dialogs::dialogs_without_their_folder() {
    QFETCH(Dialog, dialog);
    QFETCH(bool, saves);
    const QString name = folder.filePath(QStringLiteral("elsewhere.txt"));
    QFile::remove(name);
    if (!saves)
        write_bytes(name, "x");
    myOpenFile files;
    ModalGuard guard({ModalGuard::choose_file(name)});
    QCOMPARE(dialog(files), name);
    QCOMPARE(guard.count(), 1);
}

void tst_openfile_dialogs::dialog_of_a_caller() {
    QVERIFY(QDir().mkpath(dialog_folder()));
    const QString name = dialog_folder() + QStringLiteral("/picture.png");
    write_bytes(name, "x");
    myOpenFile files;
    ModalGuard guard({ModalGuard::choose_file(name)});
    QCOMPARE(files.OpenFileName(QStringLiteral("A caption"), QStringLiteral("*.png *.bmp")), name);
    QCOMPARE(guard.seen().title, QStringLiteral("A caption"));
    QCOMPARE(guard.seen().filters, QStringList(QStringLiteral("Files (*.png *.bmp)")));
    QCOMPARE(guard.seen().folder, dialog_folder());
    QVERIFY(files.OpenFileName({}, {}).isEmpty());
}

void tst_openfile_dialogs::saved_name_stays_as_typed_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("no-suffix") << QStringLiteral("wing");
    QTest::newRow("other-suffix") << QStringLiteral("wing.png");
    QTest::newRow("capital-suffix") << QStringLiteral("wing.SPL");
    QTest::newRow("blank") << QStringLiteral("my wing.spl");
    QTest::newRow("percent-one") << QStringLiteral("%1%2.spl");
    QTest::newRow("markup") << QStringLiteral("<b>wing&amp;.spl");
    QTest::newRow("umlaut") << QStringLiteral("Fl\u00fcgel.spl");
}

void tst_openfile_dialogs::saved_name_stays_as_typed() {
    QFETCH(QString, name);
    const QString path = folder.filePath(name);
    myOpenFile files;
    ModalGuard guard({ModalGuard::choose_file(path), ModalGuard::choose_file(path)});
    QCOMPARE(files.DialogWriteToFile(), path);
    QCOMPARE(files.DialogWriteSplineToFile(), path);
    QCOMPARE(guard.count(), 2);
}

void tst_openfile_dialogs::existing_target_is_asked_for() {
    const QString name = folder.filePath(QStringLiteral("there.spl"));
    write_bytes(name, "old");
    myOpenFile files;
    ModalGuard guard({ModalGuard::choose_file(name), ModalGuard::press(QMessageBox::Yes),
                      ModalGuard::choose_file(name), ModalGuard::press(QMessageBox::No)});
    QCOMPARE(files.DialogWriteSplineToFile(), name);
    QCOMPARE(guard.count(), 2);
    QVERIFY(files.DialogWriteSplineToFile().isEmpty());
    QCOMPARE(bytes_of(name), QByteArray("old"));
}

AEROLITH_TEST_MAIN(tst_openfile_dialogs)
#include "tst_openfile_dialogs.moc"
