// SPDX-FileCopyrightText: Aerolith developers
// Reading and writing of spline files.
#include "baseline/splinebytes.h"
#include "document/openfile.h"
#include "filledrecords.h"
#include "support/exactcompare.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <iterator>
#include <optional>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString missing_text = QStringLiteral(" warning *** :file is missing ");

void write_bytes(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray bytes_of(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The multiplicities are not stored, so a loaded spline keeps those it had.
SplineFoil loaded(const SplineFoil& stored, const SplineFoil& before) {
    SplineFoil spline = stored;
    std::copy(std::begin(before.b_multi_knot), std::end(before.b_multi_knot),
              std::begin(spline.b_multi_knot));
    return spline;
}

// During its lifetime a process of root has the rights of the user nobody, to whom permissions
// apply.
class OrdinaryUser {
public:
    OrdinaryUser() : was_superuser(geteuid() == 0) {
        if (was_superuser && seteuid(65534) != 0)
            was_superuser = false;
    }
    ~OrdinaryUser() {
        if (was_superuser && seteuid(0) != 0)
            qFatal("the rights are gone");
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    bool holds() const { return geteuid() != 0; }

private:
    bool was_superuser;
};

} // namespace

class tst_openfile : public QObject {
    Q_OBJECT

private slots:
    void init();

    void members();

    void write_then_read_data();
    void write_then_read();
    void write_the_document();
    void write_shorter_over_longer();
    void write_refused_data();
    void write_refused();
    void write_to_full_device();
    void write_through_link();

    void read_empty_name();
    void read_missing_data();
    void read_missing();
    void read_short_data();
    void read_short();
    void read_unreadable_data();
    void read_unreadable();
    void read_into_another_record();
    void read_unreadable_into_another_record();
    void read_through_link();
    void read_longer();

private:
    QTemporaryDir folder;
};

void tst_openfile::init() {
    QVERIFY(folder.isValid());
    QVERIFY(
        QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | QFile::ExeOther));
    *GetDataStruct() = ParaStruct();
}

void tst_openfile::members() {
    QObject parent;
    auto* files = new myOpenFile(&parent);
    QCOMPARE(files->parent(), &parent);
    QCOMPARE(files->p, GetDataStruct());
    QCOMPARE(files->outdata, GetDataStruct());
    QCOMPARE(files->mydir, QDir::homePath() + QStringLiteral("/Desktop/Kavrund/Airfoils/"));
}

void tst_openfile::write_then_read_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("wing.spl");
    QTest::newRow("no-suffix") << QStringLiteral("wing");
    QTest::newRow("blank") << QStringLiteral("my wing.spl");
    QTest::newRow("percent-one") << QStringLiteral("%1%2.spl");
    QTest::newRow("markup") << QStringLiteral("<b>wing&amp;.spl");
    QTest::newRow("umlaut") << QStringLiteral("Fl\u00fcgel.spl");
}

// The stored name is what airfoilName holds, whatever file it is written to.
void tst_openfile::write_then_read() {
    QFETCH(QString, name);
    const QString path = folder.filePath(name);
    ParaStruct* document = GetDataStruct();
    myOpenFile files;
    ModalGuard guard;

    const ParaStruct source = filled_record(1);
    *document = source;
    document->spline.airfoilName = path;
    QCOMPARE(files.WriteParaStream(path), 1);
    QCOMPARE(document->spline.airfoilName, path);
    const QByteArray bytes = bytes_of(path);
    QCOMPARE(int(bytes.size()), 3404 + 2 * int(path.size()));
    QVERIFY(bytes == baseline::spline_bytes(document->spline));

    const ParaStruct before = filled_record(2);
    *document = before;
    QCOMPARE(files.ReadParaStream(path), 1);
    ParaStruct expected = before;
    expected.spline = loaded(source.spline, before.spline);
    expected.spline.airfoilName = path;
    QCOMPARE(different_member(*document, expected), QString());
    QCOMPARE(guard.count(), 0);
}

void tst_openfile::write_the_document() {
    const QString name = folder.filePath(QStringLiteral("document.spl"));
    ParaStruct first = filled_record(1);
    ParaStruct second = filled_record(2);
    myOpenFile files;
    files.p = &first;
    files.outdata = &second;
    QCOMPARE(files.WriteParaStream(name), 1);
    QVERIFY(bytes_of(name) == baseline::spline_bytes(first.spline));
    QCOMPARE(different_member(first, filled_record(1)), QString());
    QCOMPARE(different_member(second, filled_record(2)), QString());

    first.spline = SplineFoil();
    QCOMPARE(files.WriteParaStream(name), 1);
    QCOMPARE(int(bytes_of(name).size()), 3404);
}

void tst_openfile::write_shorter_over_longer() {
    const QString name = folder.filePath(QStringLiteral("long.spl"));
    write_bytes(name, QByteArray(100000, 'x'));
    myOpenFile files;
    QCOMPARE(files.WriteParaStream(name), 1);
    QVERIFY(bytes_of(name) == baseline::spline_bytes(SplineFoil()));
}

void tst_openfile::write_refused_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("empty-name") << QString();
    QTest::newRow("folder") << folder.path();
    QTest::newRow("no-such-folder") << folder.filePath(QStringLiteral("none/a.spl"));
    QTest::newRow("file-as-folder") << folder.filePath(QStringLiteral("plain/a.spl"));
    QTest::newRow("name-too-long") << folder.filePath(QString(300, QLatin1Char('x')));
}

void tst_openfile::write_refused() {
    QFETCH(QString, name);
    write_bytes(folder.filePath(QStringLiteral("plain")), "x");
    const QStringList before = QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden);
    *GetDataStruct() = filled_record(1);
    myOpenFile files;
    ModalGuard guard;
    QCOMPARE(files.WriteParaStream(name), 0);
    QCOMPARE(guard.count(), 0);
    QCOMPARE(different_member(*GetDataStruct(), filled_record(1)), QString());
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
}

// Such a device accepts bytes and reports its error only when they are flushed.
void tst_openfile::write_to_full_device() {
    const QString device = QStringLiteral("/dev/full");
    const OrdinaryUser user;
    if (!user.holds() || !QFileInfo(device).isWritable())
        QSKIP("a device that is always full and an ordinary user are needed");
    myOpenFile files;
    ModalGuard guard;
    QCOMPARE(files.WriteParaStream(device), 0);
    QCOMPARE(guard.count(), 0);
}

void tst_openfile::write_through_link() {
    const QString target = folder.filePath(QStringLiteral("target.spl"));
    const QString link = folder.filePath(QStringLiteral("link.spl"));
    write_bytes(target, "old");
    QVERIFY(QFile::link(target, link));
    myOpenFile files;
    QCOMPARE(files.WriteParaStream(link), 1);
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(!QFileInfo(target).isSymLink());
    QVERIFY(bytes_of(target) == baseline::spline_bytes(SplineFoil()));
}

void tst_openfile::read_empty_name() {
    *GetDataStruct() = filled_record(1);
    myOpenFile files;
    ModalGuard guard;
    QCOMPARE(files.ReadParaStream(QString()), 0);
    QCOMPARE(files.ReadParaStream(QStringLiteral("")), 0);
    QCOMPARE(guard.count(), 0);
    QCOMPARE(different_member(*GetDataStruct(), filled_record(1)), QString());
}

void tst_openfile::read_missing_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("none.spl");
    QTest::newRow("markup") << QStringLiteral("<b>none<br> <img src=x>.spl");
    QTest::newRow("percent-one") << QStringLiteral("%1 %2 %L1 100%.spl");
    QTest::newRow("umlaut") << QStringLiteral("Fl\u00fcgel.spl");
    QTest::newRow("line-break") << QStringLiteral("a\nb.spl");
    QTest::newRow("in-no-folder") << QStringLiteral("none/none.spl");
}

void tst_openfile::read_missing() {
    QFETCH(QString, name);
    const QString path = folder.filePath(QStringLiteral("missing ") + name);
    *GetDataStruct() = filled_record(1);
    myOpenFile files;
    ModalGuard guard;
    QCOMPARE(files.ReadParaStream(path), 0);
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.seen().class_name, QStringLiteral("QMessageBox"));
    QCOMPARE(guard.seen().text, path + missing_text);
    QCOMPARE(guard.seen().text_format, Qt::PlainText);
    QCOMPARE(guard.forced(), 0);
    QCOMPARE(different_member(*GetDataStruct(), filled_record(1)), QString());
}

void tst_openfile::read_short_data() {
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = baseline::spline_bytes(filled_spline(1));
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("in-name") << whole.left(20);
    QTest::newRow("in-counts") << whole.left(whole.size() - 3390);
    QTest::newRow("in-knots") << whole.left(whole.size() - 2000);
    QTest::newRow("in-points") << whole.left(whole.size() - 500);
    QTest::newRow("last-byte") << whole.chopped(1);
    QTest::newRow("huge-name") << QByteArray("\x7f\xff\xff\xfe", 4) + whole;
    QTest::newRow("huge-name-of-later-versions") << QByteArray("\xff\xff\xff\xfe", 4) + whole;
    QTest::newRow("text") << QByteArray("NACA 0012\n1.0 0.0\n");
}

// The same as from these bytes in memory; there is no error.
void tst_openfile::read_short() {
    QFETCH(QByteArray, bytes);
    const QString name = folder.filePath(QStringLiteral("short.spl"));
    write_bytes(name, bytes);
    ParaStruct expected = filled_record(2);
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_4_6);
    stream >> expected;

    *GetDataStruct() = filled_record(2);
    myOpenFile files;
    ModalGuard guard;
    QCOMPARE(files.ReadParaStream(name), 1);
    QCOMPARE(guard.count(), 0);
    QCOMPARE(different_member(*GetDataStruct(), expected), QString());
}

void tst_openfile::read_unreadable_data() {
    QTest::addColumn<QString>("kind");
    QTest::newRow("folder") << QStringLiteral("folder");
    QTest::newRow("pipe") << QStringLiteral("pipe");
    QTest::newRow("forbidden") << QStringLiteral("forbidden");
}

namespace {

// Makes a file that exists and cannot be read; false where that is impossible.
bool make_unreadable(const QString& kind, const QString& name) {
    if (kind == QLatin1String("folder"))
        return QDir().mkpath(name);
    if (kind == QLatin1String("pipe"))
        return mkfifo(QFile::encodeName(name).constData(), 0600) == 0;
    write_bytes(name, baseline::spline_bytes(filled_spline(1)));
    return QFile::setPermissions(name, QFile::Permissions());
}

} // namespace

// Succeeds without a message: the items are those of an empty stream.
void tst_openfile::read_unreadable() {
    QFETCH(QString, kind);
    const QString name = folder.filePath(kind + QStringLiteral(".spl"));
    QVERIFY(make_unreadable(kind, name));
    std::optional<OrdinaryUser> user;
    if (kind == QLatin1String("forbidden") && !user.emplace().holds())
        QSKIP("an ordinary user is needed");
    *GetDataStruct() = filled_record(1);
    myOpenFile files;
    ModalGuard guard;
    const ExpectedWarnings warnings(QStringLiteral("device not open"));
    QCOMPARE(files.ReadParaStream(name), 1);
    QCOMPARE(guard.count(), 0);
    ParaStruct* document = GetDataStruct();
    QVERIFY(document->spline.airfoilName.isEmpty());
    document->spline.airfoilName.clear();
    QCOMPARE(different_member(*document, nothing_read(filled_record(1))), QString());
    QVERIFY(document->spline.make_SplinePoly().isEmpty());
}

// The record that was read is copied to the document as a whole.
void tst_openfile::read_into_another_record() {
    const QString name = folder.filePath(QStringLiteral("other.spl"));
    write_bytes(name, baseline::spline_bytes(filled_spline(3)));
    ParaStruct document = filled_record(1);
    ParaStruct target = filled_record(2);
    myOpenFile files;
    files.p = &document;
    files.outdata = &target;
    QCOMPARE(files.ReadParaStream(name), 1);
    ParaStruct expected = filled_record(2);
    expected.spline = loaded(filled_spline(3), filled_spline(2));
    QCOMPARE(different_member(target, expected), QString());
    QCOMPARE(different_member(document, expected), QString());
}

void tst_openfile::read_unreadable_into_another_record() {
    const QString name = folder.filePath(QStringLiteral("other-folder.spl"));
    QVERIFY(QDir().mkpath(name));
    ParaStruct document = filled_record(1);
    ParaStruct target = filled_record(2);
    myOpenFile files;
    files.p = &document;
    files.outdata = &target;
    const ExpectedWarnings warnings(QStringLiteral("device not open"));
    QCOMPARE(files.ReadParaStream(name), 1);
    ParaStruct expected = nothing_read(filled_record(2));
    target.spline.airfoilName.clear();
    document.spline.airfoilName.clear();
    QCOMPARE(different_member(target, expected), QString());
    QCOMPARE(different_member(document, expected), QString());
}

void tst_openfile::read_through_link() {
    const QString target = folder.filePath(QStringLiteral("read-target.spl"));
    const QString link = folder.filePath(QStringLiteral("read-link.spl"));
    QVERIFY(QFile::link(target, link));
    myOpenFile files;
    ModalGuard guard;
    QCOMPARE(files.ReadParaStream(link), 0);
    QCOMPARE(guard.seen().text, link + missing_text);
    write_bytes(target, baseline::spline_bytes(filled_spline(1)));
    QCOMPARE(files.ReadParaStream(link), 1);
    QCOMPARE(guard.count(), 1);
    QCOMPARE(GetDataStruct()->spline.airfoilName, filled_spline(1).airfoilName);
}

void tst_openfile::read_longer() {
    const QString name = folder.filePath(QStringLiteral("longer.spl"));
    write_bytes(name, baseline::spline_bytes(filled_spline(1)) + QByteArray(1000000, 'x'));
    myOpenFile files;
    QCOMPARE(files.ReadParaStream(name), 1);
    QCOMPARE(different_member(GetDataStruct()->spline, loaded(filled_spline(1), SplineFoil())),
             QString());
}

AEROLITH_TEST_MAIN(tst_openfile)
#include "tst_openfile.moc"
