// SPDX-FileCopyrightText: Aerolith developers
// Saving to valid and invalid targets, and on failing disks: the result is the old file or the new
// one, complete, and no other file.
#include "document/savefile.h"
#include "hostile/savingtools.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray old_content(5000, 'o');
const QByteArray new_content(3000, 'n');
mode_t mode_by_administrator = 0; // of a file that had the mode 0451

// A descriptor of a file without a name, negative where the file system has none.
int open_nameless(const QString& folder) {
    return ::open(QFile::encodeName(folder).constData(), O_TMPFILE | O_RDWR, 0600);
}

// The system call that fails, none by default.
QByteArray failing_call;

template<typename... Values>
int call_unless_failing(const char* name, Values... values) {
    if (failing_call == name) {
        errno = EIO;
        return -1;
    }
    const auto real = reinterpret_cast<int (*)(Values...)>(::dlsym(RTLD_NEXT, name));
    return real(values...);
}

} // namespace

// These replace the functions of the system, for Qt too.
extern "C" {
int fsync(int fd) {
    return call_unless_failing("fsync", fd);
}
int linkat(int from, const char* path, int to, const char* other, int flags) noexcept {
    return call_unless_failing("linkat", from, path, to, other, flags);
}
int rename(const char* path, const char* other) noexcept {
    return call_unless_failing("rename", path, other);
}
}

class tst_saving : public SavingTest {
    Q_OBJECT

private slots:
    void cleanup();
    void replacing_data();
    void replacing();
    void in_place_data();
    void in_place();
    void nameless_file();
    void refused_data();
    void refused();
    void dangling_link_data();
    void dangling_link();
    void permissions_kept_data();
    void permissions_kept();
    void permissions_kept_by_administrator();
    void names_data();
    void names();
    void raw_names_data();
    void raw_names();
    void folder_of_process_removed();
    void not_overwritten();
    void devices();
    void slow_reader();
    void failing_disk_data();
    void failing_disk();
    void full_disk_data();
    void full_disk();
    void size_limit_data();
    void size_limit();
};

void tst_saving::cleanup() {
    failing_call.clear();
    SavingTest::cleanup();
}

void tst_saving::replacing_data() {
    QTest::addColumn<QStringList>("links");
    QTest::newRow("regular-file") << QStringList();
    QTest::newRow("relative-link") << QStringList{u"old"_s};
    QTest::newRow("absolute-link") << QStringList{u"%1/old"_s};
    QTest::newRow("chain-of-links") << QStringList{u"old"_s, u"link0"_s, u"%1/link1"_s};
    QTest::newRow("out-of-linked-folder") << QStringList{u"linked-folder/../../old"_s};
}

// The file at the end of the links is a new file afterwards, and they still lead to it.
void tst_saving::replacing() {
    QFETCH(QStringList, links);
    put(path(u"old"_s), old_content);
    QVERIFY(QDir(dir->path()).mkpath(u"folder/folder"_s));
    soft_link(u"folder/folder"_s, path(u"linked-folder"_s));
    const QString name = links.isEmpty() ? path(u"old"_s) : make_links(links);
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
    QTest::addColumn<bool>("hard_linked");
    QTest::addColumn<bool>("has_input");
    QTest::newRow("hard-links") << true << true;
    QTest::newRow("folder-forbids-new-files") << false << true;
    QTest::newRow("without-standard-input") << true << false;
}

// The file stays the same file and gets the new content.
void tst_saving::in_place() {
    QFETCH(bool, hard_linked);
    QFETCH(bool, has_input);
    put(path(u"old"_s), old_content);
    if (hard_linked)
        hard_link(path(u"old"_s), path(u"other"_s));
    else
        set_mode(dir->path(), 0500);
    const QStringList files = listing(dir->path());
    const struct stat before = status_of(path(u"old"_s));
    const int input = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    const auto restored = qScopeGuard([input] { ::dup2(input, STDIN_FILENO), ::close(input); });
    // The next file that is opened then has its number, 0.
    if (!has_input)
        ::close(STDIN_FILENO);

    for (const QByteArray& bytes : {new_content, QByteArray(9000, 'l')}) {
        QVERIFY(write_file(path(u"old"_s), bytes));

        const struct stat after = status_of(path(u"old"_s));
        QCOMPARE(content(path(u"old"_s)), bytes);
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(after.st_mode, before.st_mode);
        QCOMPARE(after.st_nlink, before.st_nlink);
        QCOMPARE(listing(dir->path()), files);
    }
    failing_call = "fsync";
    QVERIFY(!write_file(path(u"old"_s), new_content));
}

// A link of the system leads to a file without a name.
void tst_saving::nameless_file() {
    QFile file;
    const int fd = open_nameless(dir->path());
    if (fd < 0)
        QSKIP("this file system has no files without names");
    QVERIFY(file.open(fd, QIODevice::ReadWrite, QFile::AutoCloseHandle));
    QVERIFY(write_file(u"/proc/self/fd/"_s + QString::number(fd), new_content));
    QCOMPARE(file.readAll(), new_content);
    QVERIFY(listing(dir->path()).isEmpty());
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
    const QString here = QDir::currentPath();

    QVERIFY(QDir::setCurrent(dir->path()));
    const bool written = write_file(name.isEmpty() ? name : path(name), new_content);
    QDir::setCurrent(here);

    QVERIFY(!written);
    QCOMPARE(listing(dir->path()), files);
    QCOMPARE(content(path(u"old"_s)), old_content);
    QCOMPARE(content(path(u"read-only"_s)), old_content);
    QVERIFY(listing(path(u"folder"_s)).isEmpty());
    QVERIFY(listing(path(u"locked"_s)).isEmpty());
}

void tst_saving::dangling_link_data() {
    QTest::addColumn<QStringList>("links");
    QTest::newRow("relative") << QStringList{u"folder/new"_s};
    QTest::newRow("absolute") << QStringList{u"%1/folder/new"_s};
    QTest::newRow("chain") << QStringList{u"folder/new"_s, u"%1/link0"_s, u"link1"_s};
}

void tst_saving::dangling_link() {
    QFETCH(QStringList, links);
    QVERIFY(QDir(dir->path()).mkdir(u"folder"_s));
    const QString name = make_links(links);
    QVERIFY(write_file(name, new_content));
    QVERIFY(S_ISLNK(status_of(name).st_mode));
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
    const ino_t before = status_of(path(u"old"_s)).st_ino;

    QVERIFY(write_file(path(u"old"_s), new_content));

    const struct stat after = status_of(path(u"old"_s));
    QVERIFY(after.st_ino != before);
    QCOMPARE(after.st_mode & 07777U, mode);
    set_mode(path(u"old"_s), 0600);
    QCOMPARE(content(path(u"old"_s)), new_content);

    const mode_t mask = ::umask(027);
    QVERIFY(write_file(path(u"new"_s), new_content));
    ::umask(mask);
    QCOMPARE(status_of(path(u"new"_s)).st_mode & 07777U, 0640U);
}

void tst_saving::permissions_kept_by_administrator() {
    if (mode_by_administrator == 0)
        QSKIP("needs to be started by the administrator");
    QCOMPARE(mode_by_administrator, 0451U);
}

void tst_saving::names_data() {
    QTest::addColumn<QString>("name");
    for (const int length : {248, 249, 255}) // room for a suffix, none, the longest name
        QTest::addRow("%d letters", length) << QString(length, u'x');
    QTest::newRow("letters") << u"Fl\u00fcgel \u7ffc %1 <b>.spl"_s;
    QTest::newRow("hidden") << u".dat"_s;
    QTest::newRow("line-feed") << u"a\nb"_s;
    QTest::newRow("colon") << u":a"_s;
}

void tst_saving::names() {
    QFETCH(QString, name);
    QVERIFY(write_file(path(name), old_content));
    set_mode(path(name), 0604);
    QVERIFY(write_file(path(name), new_content));
    QCOMPARE(content(path(name)), new_content);
    QCOMPARE(status_of(path(name)).st_mode & 07777U, 0604U);
    QCOMPARE(listing(dir->path()), QStringList(name));

    const QString here = QDir::currentPath();
    QVERIFY(QDir::setCurrent(dir->path()));
    const bool written = write_file(name, old_content);
    QDir::setCurrent(here);
    QVERIFY(written);
    QCOMPARE(content(path(name)), old_content);
}

void tst_saving::raw_names_data() {
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("name") << QByteArray("a/") << QByteArray("\xff.dat");
    QTest::newRow("folder") << QByteArray("\xfe/") << QByteArray("a");
    QTest::newRow("both") << QByteArray("\xfe/") << QByteArray("Fl\xfcgel");
}

// Qt's file names are UTF-8.
void tst_saving::raw_names() {
    QFETCH(QByteArray, folder);
    QFETCH(QByteArray, name);
    folder.prepend(QFile::encodeName(dir->path()) + '/');
    ::mkdir(folder.constData(), 0700);
    const QByteArray file = folder + name;

    const QStringList open_files = listing(u"/proc/self/fd"_s);

    QVERIFY(write_file_at(file, old_content));
    QCOMPARE(::chmod(file.constData(), 0604), 0);
    QVERIFY(write_file_at(file, new_content));
    failing_call = "rename";
    QVERIFY(!write_file_at(file, old_content));
    failing_call.clear();
    QVERIFY(!write_file_at(file, old_content, false));
    QCOMPARE(::chmod(file.constData(), 0404), 0);
    QVERIFY(!write_file_at(file, old_content));

    QCOMPARE(listing(u"/proc/self/fd"_s), open_files);

    struct stat status = {};
    QCOMPARE(::stat(file.constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0404U);
    QFile reader;
    QVERIFY(reader.open(::open(file.constData(), O_RDONLY), QIODevice::ReadOnly,
                        QFile::AutoCloseHandle));
    QCOMPARE(reader.readAll(), new_content);
    // No other file remains.
    QCOMPARE(::unlink(file.constData()), 0);
    QCOMPARE(::rmdir(folder.constData()), 0);
}

void tst_saving::folder_of_process_removed() {
    const QString here = QDir::currentPath();
    QVERIFY(QDir(dir->path()).mkdir(u"folder"_s));
    QVERIFY(QDir::setCurrent(path(u"folder"_s)));
    QVERIFY(QDir(dir->path()).rmdir(u"folder"_s));
    const bool written = write_file(u"new"_s, new_content);
    QDir::setCurrent(here);
    QVERIFY(!written);
    QVERIFY(listing(dir->path()).isEmpty());
}

void tst_saving::not_overwritten() {
    const QByteArray name = QFile::encodeName(path(u"new"_s));
    QVERIFY(write_file_at(name, new_content, false));
    QVERIFY(!write_file_at(name, old_content, false));
    QCOMPARE(content(path(u"new"_s)), new_content);
    soft_link(u"new"_s, path(u"link"_s));
    QVERIFY(!write_file_at(QFile::encodeName(path(u"link"_s)), old_content, false));
    QCOMPARE(content(path(u"new"_s)), new_content);
    QVERIFY(write_file_at("/dev/null", old_content, false));
}

void tst_saving::devices() {
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("this system has no /dev/full");
    QVERIFY(!write_file(u"/dev/full"_s, new_content));
    QVERIFY(write_file(u"/dev/null"_s, new_content));
    soft_link(u"/dev/full"_s, path(u"link"_s));
    QVERIFY(!write_file(path(u"link"_s), new_content));
    QVERIFY(S_ISCHR(status_of(u"/dev/full"_s).st_mode));
}

// A pipe buffers 64 kB.
void tst_saving::slow_reader() {
    const QString pipe = path(u"pipe"_s);
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const int fd = ::open(QFile::encodeName(pipe).constData(), O_RDONLY | O_NONBLOCK);
    QFile reader;
    QVERIFY(reader.open(fd, QIODevice::ReadOnly, QFile::AutoCloseHandle));
    const pid_t process = in_other_process([&] {
        if (!write_file_at(QFile::encodeName(pipe), QByteArray(300'000, 'n')))
            ::_exit(1);
    });
    QByteArray bytes;
    QTRY_COMPARE((bytes += reader.readAll()).size(), 300'000);
    QCOMPARE(result_of(process), 0);
    QVERIFY(S_ISFIFO(status_of(pipe).st_mode));
    // The window does not wait.
    QVERIFY(!write_file(pipe, QByteArray(300'000, 'n')));
}

void tst_saving::failing_disk_data() {
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("synchronising") << QByteArray("fsync");
    QTest::newRow("naming") << QByteArray("linkat");
    QTest::newRow("renaming") << QByteArray("rename");
}

// On a disk that fails to take a new file, the old file must not be overwritten.
void tst_saving::failing_disk() {
    QFETCH(QByteArray, call);
    const int nameless = open_nameless(dir->path());
    if (nameless < 0 && call == "linkat")
        QSKIP("this file system has no files without names");
    ::close(nameless);
    put(path(u"old"_s), old_content);

    failing_call = call;
    QVERIFY(!write_file(path(u"old"_s), new_content));

    QCOMPARE(content(path(u"old"_s)), old_content);
    QCOMPARE(listing(dir->path()), QStringList(u"old"_s));
}

void tst_saving::full_disk_data() {
    QTest::addColumn<bool>("exists");
    QTest::newRow("new-file") << false;
    QTest::newRow("replaced") << true;
}

void tst_saving::full_disk() {
    QFETCH(bool, exists);
    if (!prepared.full_disk)
        QSKIP("needs to be started by the administrator");
    const QString folder = QFile::decodeName(prepared.folder + "/disk");
    const QString name = folder + u"/old"_s;
    if (exists)
        put(name, old_content);
    const QStringList files = listing(folder);

    const bool written = write_file(name, QByteArray(200'000, 'n'));

    const QStringList files_after = listing(folder);
    const QByteArray after = content(name);
    QFile::remove(name);
    QVERIFY(!written);
    QCOMPARE(files_after, files);
    if (exists)
        QCOMPARE(after, old_content);
}

void tst_saving::size_limit_data() {
    QTest::addColumn<bool>("exists");
    QTest::addColumn<uint>("size");
    for (const uint size : {0U, 1U, 4096U, 9999U}) {
        QTest::addRow("new-%u-bytes", size) << false << size;
        QTest::addRow("replaced-%u-bytes", size) << true << size;
    }
}

void tst_saving::size_limit() {
    QFETCH(bool, exists);
    QFETCH(uint, size);
    if (exists)
        put(path(u"old"_s), old_content);
    const QStringList files = listing(dir->path());

    rlimit limit = {};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small = {size, limit.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool written = write_file(path(u"old"_s), QByteArray(10'000, 'n'));
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);

    QVERIFY(!written);
    QCOMPARE(listing(dir->path()), files);
    if (exists)
        QCOMPARE(content(path(u"old"_s)), old_content);
    QVERIFY(write_file(path(u"old"_s), new_content));
    QCOMPARE(content(path(u"old"_s)), new_content);
}

int main(int argc, char* argv[]) {
    QTemporaryDir dir;
    if (::geteuid() == 0) {
        const QString name = dir.filePath(u"old"_s);
        put(name, old_content);
        set_mode(name, 0451);
        mode_by_administrator = write_file(name, new_content) ? status_of(name).st_mode & 07777 : 1;
    }
    return run_as_ordinary_user([&] {
        QCoreApplication application(argc, argv);
        tst_saving test;
        return QTest::qExec(&test, argc, argv);
    });
}

#include "tst_saving.moc"
