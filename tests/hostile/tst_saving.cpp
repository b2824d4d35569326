// SPDX-FileCopyrightText: Aerolith developers
// Saving to any target and to none: the file is the old one or the new one, whole, and alone.
#include "document/openfile.h"
#include "document/savefile.h"
#include "hostile/savingtools.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray old_content(5000, 'o');
const QByteArray new_content(3000, 'n');

// An access list as files and folders hold it: the owner, user 1234, the group, a mask, others.
QByteArray access_list() {
    constexpr quint32 unnamed = 0xffffffff;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint32(2);
    const auto entry = [&](quint16 kind, quint16 rights, quint32 id) {
        stream << kind << rights << id;
    };
    entry(1, 6, unnamed);
    entry(2, 6, 1234);
    entry(4, 4, unnamed);
    entry(16, 6, unnamed);
    entry(32, 0, unnamed);
    return bytes;
}

int set_list(const QString& path, const char* kind) {
    const QByteArray bytes = access_list();
    return ::setxattr(QFile::encodeName(path).constData(), kind, bytes.constData(),
                      std::size_t(bytes.size()), 0);
}

QByteArray list_of(const QString& path) {
    char bytes[1024];
    const ssize_t size = ::getxattr(QFile::encodeName(path).constData(), "system.posix_acl_access",
                                    bytes, sizeof bytes);
    return QByteArray(bytes, std::max<ssize_t>(size, 0));
}

} // namespace

class tst_saving : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void replacing_data();
    void replacing();
    void in_place_data();
    void in_place();
    void refused_data();
    void refused();
    void dangling_link();
    void permissions_kept_data();
    void permissions_kept();
    void access_list_kept_data();
    void access_list_kept();
    void names_data();
    void names();
    void spline_file_return_values();
    void full_device();
    void full_disk_data();
    void full_disk();
    void size_limit_data();
    void size_limit();

private:
    QString path(const QString& name) const { return dir->filePath(name); }

    std::unique_ptr<QTemporaryDir> dir;
};

void tst_saving::initTestCase() {
    QVERIFY(::geteuid() != 0);
}

void tst_saving::init() {
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
}

void tst_saving::cleanup() {
    set_mode(dir->path(), 0700);
    dir.reset();
}

void tst_saving::replacing_data() {
    QTest::addColumn<QStringList>("links");
    QTest::newRow("regular-file") << QStringList();
    QTest::newRow("relative-link") << QStringList{u"old"_s};
    QTest::newRow("absolute-link") << QStringList{u"%1/old"_s};
    QTest::newRow("chain-of-links") << QStringList{u"old"_s, u"link0"_s, u"%1/link1"_s};
}

// The file at the end of the links is another file afterwards, and they still lead to it.
void tst_saving::replacing() {
    QFETCH(QStringList, links);
    put(path(u"old"_s), old_content);
    QString name = path(u"old"_s);
    for (qsizetype i = 0; i < links.size(); ++i) {
        name = path(u"link"_s) + QString::number(i);
        soft_link(QString(links[i]).replace(u"%1"_s, dir->path()), name);
    }
    const QStringList files = listing(dir->path());
    const ino_t before = status_of(path(u"old"_s)).st_ino;

    QVERIFY(write_file(name, new_content));

    QCOMPARE(content(path(u"old"_s)), new_content);
    QVERIFY(status_of(path(u"old"_s)).st_ino != before);
    QVERIFY(S_ISREG(status_of(path(u"old"_s)).st_mode));
    for (qsizetype i = 0; i < links.size(); ++i)
        QVERIFY(S_ISLNK(status_of(path(u"link"_s) + QString::number(i)).st_mode));
    QCOMPARE(listing(dir->path()), files);
}

void tst_saving::in_place_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"hard-links", "folder-forbids-new-files", "file-of-another-owner"}) {
        QTest::addRow("%s-shorter", kind) << new_content << QString::fromLatin1(kind);
        QTest::addRow("%s-longer", kind) << QByteArray(9000, 'l') << QString::fromLatin1(kind);
    }
}

// The file stays the same file and gets the new content.
void tst_saving::in_place() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, kind);
    QString name = path(u"old"_s);
    if (kind == u"file-of-another-owner"_s) {
        if (!prepared.foreign_file)
            QSKIP("needs to be started by the administrator");
        name = QFile::decodeName(prepared.folder + "/foreign");
    }
    put(name, old_content);
    if (kind == u"hard-links"_s)
        hard_link(name, path(u"other"_s));
    if (kind == u"folder-forbids-new-files"_s)
        set_mode(dir->path(), 0500);
    const QString folder = QFileInfo(name).path();
    const QStringList files = listing(folder);
    const struct stat before = status_of(name);

    QVERIFY(write_file(name, bytes));

    const struct stat after = status_of(name);
    QCOMPARE(content(name), bytes);
    QCOMPARE(after.st_ino, before.st_ino);
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_nlink, before.st_nlink);
    QCOMPARE(listing(folder), files);
}

void tst_saving::refused_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("empty-name") << u""_s;
    QTest::newRow("null-character-in-a-new-name") << u"new"_s + QChar(QChar::Null) + u"name"_s;
    QTest::newRow("null-character-after-a-name") << u"old"_s + QChar(QChar::Null);
    QTest::newRow("folder") << u"folder"_s;
    QTest::newRow("folder-with-slash") << u"folder/"_s;
    QTest::newRow("link-to-folder") << u"link-to-folder"_s;
    QTest::newRow("no-write-permission") << u"read-only"_s;
    QTest::newRow("link-to-read-only") << u"link-to-read-only"_s;
    QTest::newRow("missing-folder") << u"missing/new"_s;
    QTest::newRow("file-as-folder") << u"old/new"_s;
    QTest::newRow("new-name-with-slash") << u"new/"_s;
    QTest::newRow("ring-of-links") << u"ring1"_s;
    QTest::newRow("new-in-locked-folder") << u"locked/new"_s;
    QTest::newRow("dangling-into-locked-folder") << u"dangling-locked"_s;
    QTest::newRow("dangling-into-missing-folder") << u"dangling-missing"_s;
    QTest::newRow("pipe-without-reader") << u"pipe"_s;
    QTest::newRow("name-too-long") << QString(300, u'x');
    QTest::newRow("path-too-long") << u"folder/../"_s.repeated(1000) + u"old"_s;
}

void tst_saving::refused() {
    QFETCH(QString, name);
    put(path(u"old"_s), old_content);
    put(path(u"read-only"_s), old_content);
    set_mode(path(u"read-only"_s), 0444);
    QVERIFY(QDir(dir->path()).mkdir(u"folder"_s));
    QVERIFY(QDir(dir->path()).mkdir(u"locked"_s));
    set_mode(path(u"locked"_s), 0500);
    QCOMPARE(::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600), 0);
    soft_link(u"folder"_s, path(u"link-to-folder"_s));
    soft_link(u"read-only"_s, path(u"link-to-read-only"_s));
    soft_link(u"ring2"_s, path(u"ring1"_s));
    soft_link(u"ring1"_s, path(u"ring2"_s));
    soft_link(u"locked/new"_s, path(u"dangling-locked"_s));
    soft_link(u"missing/new"_s, path(u"dangling-missing"_s));
    const QStringList files = listing(dir->path());

    QVERIFY(!write_file(name.isEmpty() ? name : dir->filePath(name), new_content));

    QCOMPARE(listing(dir->path()), files);
    QCOMPARE(content(path(u"old"_s)), old_content);
    QCOMPARE(content(path(u"read-only"_s)), old_content);
    QVERIFY(listing(path(u"folder"_s)).isEmpty());
    QVERIFY(listing(path(u"locked"_s)).isEmpty());
}

void tst_saving::dangling_link() {
    QVERIFY(QDir(dir->path()).mkdir(u"folder"_s));
    soft_link(u"folder/new"_s, path(u"link"_s));
    QVERIFY(write_file(path(u"link"_s), new_content));
    QVERIFY(S_ISLNK(status_of(path(u"link"_s)).st_mode));
    QCOMPARE(content(path(u"folder/new"_s)), new_content);
    QCOMPARE(listing(path(u"folder"_s)), QStringList(u"new"_s));
}

void tst_saving::permissions_kept_data() {
    QTest::addColumn<uint>("mode");
    QTest::newRow("private") << 0600U;
    QTest::newRow("group-writable") << 0664U;
    QTest::newRow("for-all") << 0666U;
    QTest::newRow("executable") << 0751U;
    QTest::newRow("write-only") << 0200U;
}

void tst_saving::permissions_kept() {
    QFETCH(uint, mode);
    put(path(u"old"_s), old_content);
    set_mode(path(u"old"_s), mode);
    const struct stat before = status_of(path(u"old"_s));

    QVERIFY(write_file(path(u"old"_s), new_content));

    const struct stat after = status_of(path(u"old"_s));
    QVERIFY(after.st_ino != before.st_ino);
    QCOMPARE(after.st_mode, before.st_mode);
    QCOMPARE(after.st_gid, before.st_gid);
    set_mode(path(u"old"_s), 0600);
    QCOMPARE(content(path(u"old"_s)), new_content);

    const mode_t mask = ::umask(027);
    QVERIFY(write_file(path(u"new"_s), new_content));
    ::umask(mask);
    QCOMPARE(status_of(path(u"new"_s)).st_mode & 07777U, 0640U);
}

void tst_saving::access_list_kept_data() {
    QTest::addColumn<bool>("of_file");
    QTest::addColumn<bool>("of_folder");
    QTest::newRow("of-file") << true << false;
    QTest::newRow("of-new-files-of-folder") << false << true;
    QTest::newRow("of-both") << true << true;
}

// A folder may give new files a list; who could not read the old file cannot read the new one.
void tst_saving::access_list_kept() {
    QFETCH(bool, of_file);
    QFETCH(bool, of_folder);
    const QString name = path(u"old"_s);
    put(name, old_content);
    set_mode(name, 0640);
    if (of_file && set_list(name, "system.posix_acl_access") != 0)
        QSKIP("this file system has no access lists");
    if (of_folder && set_list(dir->path(), "system.posix_acl_default") != 0)
        QSKIP("this file system has no access lists");
    const QByteArray list = list_of(name);
    const struct stat before = status_of(name);
    QCOMPARE(list.isEmpty(), !of_file);

    QVERIFY(write_file(name, new_content));

    QVERIFY(status_of(name).st_ino != before.st_ino);
    QCOMPARE(list_of(name), list);
    QCOMPARE(status_of(name).st_mode, before.st_mode);
}

void tst_saving::names_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("longest") << QString(255, u'x');
    QTest::newRow("letters") << u"Fl\u00fcgel \u7ffc %1 <b>.spl"_s;
    QTest::newRow("hidden") << u".dat"_s;
    QTest::newRow("line-feed") << u"a\nb"_s;
}

void tst_saving::names() {
    QFETCH(QString, name);
    QVERIFY(write_file(dir->filePath(name), old_content));
    QVERIFY(write_file(dir->filePath(name), new_content));
    QCOMPARE(content(dir->filePath(name)), new_content);
    QCOMPARE(listing(dir->path()), QStringList(name));

    const QString folder = QDir::currentPath();
    QVERIFY(QDir::setCurrent(dir->path()));
    const bool written = write_file(name, old_content);
    QDir::setCurrent(folder);
    QVERIFY(written);
    QCOMPARE(content(dir->filePath(name)), old_content);
}

void tst_saving::spline_file_return_values() {
    myOpenFile files;
    put(path(u"read-only.spl"_s), old_content);
    set_mode(path(u"read-only.spl"_s), 0444);
    QCOMPARE(files.WriteParaStream(path(u"a.spl"_s)), 1);
    QCOMPARE(files.WriteParaStream(path(u"read-only.spl"_s)), 0);
    QCOMPARE(files.WriteParaStream(dir->path()), 0);
    QCOMPARE(files.WriteParaStream(QString()), 0);
    QCOMPARE(content(path(u"read-only.spl"_s)), old_content);
}

void tst_saving::full_device() {
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("this system has no /dev/full");
    QVERIFY(!write_file(u"/dev/full"_s, new_content));
    QVERIFY(write_file(u"/dev/null"_s, new_content));
    soft_link(u"/dev/full"_s, path(u"link"_s));
    QVERIFY(!write_file(path(u"link"_s), new_content));
    QVERIFY(S_ISCHR(status_of(u"/dev/full"_s).st_mode));
}

void tst_saving::full_disk_data() {
    QTest::addColumn<QString>("kind");
    QTest::newRow("new-file") << u"new"_s;
    QTest::newRow("replaced") << u"replaced"_s;
    QTest::newRow("in-place") << u"in-place"_s;
}

void tst_saving::full_disk() {
    QFETCH(QString, kind);
    if (!prepared.full_disk)
        QSKIP("needs to be started by the administrator");
    const QString folder = QFile::decodeName(prepared.folder + "/disk");
    const QString name = folder + u"/old"_s;
    if (kind != u"new"_s)
        put(name, old_content);
    if (kind == u"in-place"_s)
        hard_link(name, folder + u"/other"_s);
    const QStringList files = listing(folder);

    const bool written = write_file(name, QByteArray(200'000, 'n'));

    const QStringList files_after = listing(folder);
    const QByteArray after = content(name);
    QFile::remove(name);
    QFile::remove(folder + u"/other"_s);
    QVERIFY(!written);
    QCOMPARE(files_after, files);
    if (kind != u"new"_s)
        QCOMPARE(after, old_content);
}

void tst_saving::size_limit_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<uint>("limit");
    for (const uint limit : {0U, 1U, 4096U, 9999U}) {
        for (const char* kind : {"new", "replaced", "in-place"})
            QTest::addRow("%s-%u-bytes", kind, limit) << QString::fromLatin1(kind) << limit;
    }
}

void tst_saving::size_limit() {
    QFETCH(QString, kind);
    QFETCH(uint, limit);
    if (kind != u"new"_s)
        put(path(u"old"_s), old_content);
    if (kind == u"in-place"_s)
        hard_link(path(u"old"_s), path(u"other"_s));
    const QStringList files = listing(dir->path());

    const auto written = [&] {
        const Limit limited(RLIMIT_FSIZE, limit);
        return write_file(path(u"old"_s), QByteArray(10'000, 'n'));
    }();

    QVERIFY(!written);
    QCOMPARE(listing(dir->path()), files);
    if (kind != u"new"_s)
        QCOMPARE(content(path(u"old"_s)), old_content);
    QVERIFY(write_file(path(u"old"_s), new_content));
    QCOMPARE(content(path(u"old"_s)), new_content);
}

int main(int argc, char* argv[]) {
    return run_as_ordinary_user([&] {
        QCoreApplication application(argc, argv);
        tst_saving test;
        return QTest::qExec(&test, argc, argv);
    });
}

#include "tst_saving.moc"
