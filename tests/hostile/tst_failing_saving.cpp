// SPDX-FileCopyrightText: Aerolith developers
// Saving where single system calls fail, as they do on disks and systems that no test has at
// hand: the linker gives the calls of write_file to the functions here.
#include "document/savefile.h"
#include "hostile/savingtools.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <functional>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Error numbers, 0 for none.
struct Faults {
    int unnamed = 0;  // of making a file without a name
    int naming = 0;   // of giving it one
    int renaming = 0; // of letting it take another's place
    int room = 0;     // of asking for room
    // When the first process that names the file is killed.
    enum { not_at_all, at_once, when_named, when_renamed } killed = not_at_all;
    std::function<void()> when_locked;
};

Faults faults;
int writes = 0;
pid_t test_process = 0;

int failing(int error) {
    errno = error;
    return -1;
}

void die(bool now) {
    if (now && ::getpid() != test_process)
        ::raise(SIGKILL);
}

} // namespace

extern "C" {

int __real_open(const char* path, int flags, ...);
int __real_linkat(int from, const char* path, int to, const char* other, int flags);
int __real_rename(const char* path, const char* other);
pid_t __real_fork();
int __real_fallocate(int fd, int mode, off_t offset, off_t size);
int __real_flock(int fd, int operation);
ssize_t __real_write(int fd, const void* bytes, std::size_t size);

int __wrap_open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const bool unnamed = (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = unnamed || (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return unnamed && faults.unnamed != 0 ? failing(faults.unnamed)
                                          : __real_open(path, flags, mode);
}

int __wrap_linkat(int from, const char* path, int to, const char* other, int flags) {
    return faults.naming != 0 ? failing(faults.naming)
                              : __real_linkat(from, path, to, other, flags);
}

int __wrap_rename(const char* path, const char* other) {
    die(faults.killed == Faults::when_named);
    const int result = faults.renaming != 0 ? failing(faults.renaming) : __real_rename(path, other);
    die(faults.killed == Faults::when_renamed);
    return result;
}

pid_t __wrap_fork() {
    const pid_t process = __real_fork();
    die(faults.killed == Faults::at_once);
    if (process != 0)
        faults.killed = Faults::not_at_all;
    return process;
}

int __wrap_fallocate(int fd, int mode, off_t offset, off_t size) {
    return faults.room != 0 ? failing(faults.room) : __real_fallocate(fd, mode, offset, size);
}

int __wrap_flock(int fd, int operation) {
    const int result = __real_flock(fd, operation);
    if (faults.when_locked)
        faults.when_locked();
    return result;
}

ssize_t __wrap_write(int fd, const void* bytes, std::size_t size) {
    ++writes;
    return __real_write(fd, bytes, size);
}
}

class tst_failing_saving : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void replacing_data();
    void replacing();
    void in_place();
    void left_alone_data();
    void left_alone();
    void new_file_data();
    void new_file();
    void no_room_in_place_data();
    void no_room_in_place();
    void replaced_while_waiting();

private:
    QString path(const QString& name) const { return dir->filePath(name); }

    std::unique_ptr<QTemporaryDir> dir;
    const QByteArray old_content = QByteArray(5000, 'o');
    const QByteArray new_content = QByteArray(3000, 'n');
};

void tst_failing_saving::initTestCase() {
    QVERIFY(::geteuid() != 0);
    test_process = ::getpid();
}

void tst_failing_saving::init() {
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
    writes = 0;
}

void tst_failing_saving::cleanup() {
    faults = Faults();
    dir.reset();
}

void tst_failing_saving::replacing_data() {
    QTest::addColumn<std::function<void()>>("fail");
    const auto row = [](const char* name, const std::function<void()>& fail) {
        QTest::newRow(name) << fail;
    };
    row("no-fault", [] {});
    row("no-unnamed-files", [] { faults.unnamed = EOPNOTSUPP; });
    row("unnamed-files-unknown", [] { faults.unnamed = EISDIR; });
    row("naming-forbidden", [] { faults.naming = EPERM; });
    row("without-process-folder", [] { faults.naming = ENOENT; });
    row("killed-at-once", [] { faults.killed = Faults::at_once; });
    row("killed-when-named", [] { faults.killed = Faults::when_named; });
    row("killed-when-renamed", [] { faults.killed = Faults::when_renamed; });
}

// The new file takes the old one's place all the same, and with its permissions.
void tst_failing_saving::replacing() {
    QFETCH(std::function<void()>, fail);
    put(path(u"old"_s), old_content);
    set_mode(path(u"old"_s), 0626);
    const struct stat before = status_of(path(u"old"_s));

    fail();
    QVERIFY(write_file(path(u"old"_s), new_content));

    const struct stat after = status_of(path(u"old"_s));
    QCOMPARE(content(path(u"old"_s)), new_content);
    QVERIFY(after.st_ino != before.st_ino);
    QCOMPARE(after.st_mode, before.st_mode);
    QCOMPARE(after.st_nlink, nlink_t(1));
    QCOMPARE(listing(dir->path()), QStringList(u"old"_s));
}

// As with a file that something is mounted on.
void tst_failing_saving::in_place() {
    put(path(u"old"_s), old_content);
    const ino_t before = status_of(path(u"old"_s)).st_ino;

    faults.renaming = EBUSY;
    QVERIFY(write_file(path(u"old"_s), new_content));

    QCOMPARE(content(path(u"old"_s)), new_content);
    QCOMPARE(status_of(path(u"old"_s)).st_ino, before);
    QCOMPARE(listing(dir->path()), QStringList(u"old"_s));
}

void tst_failing_saving::left_alone_data() {
    QTest::addColumn<std::function<void()>>("fail");
    const auto rows = [](const char* name, int error) {
        QTest::addRow("%s-making", name) << std::function<void()>([=] { faults.unnamed = error; });
        QTest::addRow("%s-naming", name) << std::function<void()>([=] { faults.naming = error; });
        QTest::addRow("%s-renaming", name)
            << std::function<void()>([=] { faults.renaming = error; });
    };
    rows("full-disk", ENOSPC);
    rows("quota", EDQUOT);
    rows("failing-disk", EIO);
}

// A disk that takes no new file shall not be trusted with the place of the old one.
void tst_failing_saving::left_alone() {
    QFETCH(std::function<void()>, fail);
    put(path(u"old"_s), old_content);
    const ino_t before = status_of(path(u"old"_s)).st_ino;

    fail();
    QVERIFY(!write_file(path(u"old"_s), new_content));

    QCOMPARE(writes, faults.unnamed != 0 ? 0 : 1);
    QCOMPARE(content(path(u"old"_s)), old_content);
    QCOMPARE(status_of(path(u"old"_s)).st_ino, before);
    QCOMPARE(listing(dir->path()), QStringList(u"old"_s));
}

void tst_failing_saving::new_file_data() {
    QTest::addColumn<int>("unnamed");
    QTest::addColumn<int>("naming");
    QTest::addColumn<bool>("written");
    QTest::newRow("no-unnamed-files") << EOPNOTSUPP << 0 << true;
    QTest::newRow("naming-forbidden") << 0 << EPERM << true;
    QTest::newRow("full-disk") << 0 << ENOSPC << false;
}

void tst_failing_saving::new_file() {
    QFETCH(int, unnamed);
    QFETCH(int, naming);
    QFETCH(bool, written);
    const mode_t mask = ::umask(027);

    faults.unnamed = unnamed;
    faults.naming = naming;
    const bool answer = write_file(path(u"new"_s), new_content);

    ::umask(mask);
    QCOMPARE(answer, written);
    QCOMPARE(listing(dir->path()), written ? QStringList(u"new"_s) : QStringList());
    if (written) {
        QCOMPARE(content(path(u"new"_s)), new_content);
        QCOMPARE(status_of(path(u"new"_s)).st_mode & 07777U, 0640U);
    }
}

void tst_failing_saving::no_room_in_place_data() {
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("written");
    QTest::newRow("full-disk") << ENOSPC << false;
    QTest::newRow("quota") << EDQUOT << false;
    QTest::newRow("cannot-be-asked-for") << EOPNOTSUPP << true;
}

// Where writing in place is all there is, no old byte is touched unless all the new ones fit.
void tst_failing_saving::no_room_in_place() {
    QFETCH(int, error);
    QFETCH(bool, written);
    put(path(u"old"_s), old_content);
    hard_link(path(u"old"_s), path(u"other"_s));

    faults.room = error;
    const bool answer = write_file(path(u"old"_s), new_content);

    QCOMPARE(answer, written);
    QCOMPARE(writes, written ? 1 : 0);
    QCOMPARE(content(path(u"other"_s)), written ? new_content : old_content);
}

// Another window puts a new file into the place of the one that this one waits for. What is
// given back after a failure belongs to the file that was waited for.
void tst_failing_saving::replaced_while_waiting() {
    put(path(u"old"_s), old_content);
    hard_link(path(u"old"_s), path(u"other"_s));
    put(path(u"foreign"_s), QByteArray(9000, 'f'));

    faults.when_locked = [this] {
        __real_rename(QFile::encodeName(path(u"foreign"_s)).constData(),
                      QFile::encodeName(path(u"old"_s)).constData());
    };
    const bool written = [this] {
        const Limit limited(RLIMIT_FSIZE, 1000);
        return write_file(path(u"old"_s), new_content);
    }();

    QVERIFY(!written);
    QCOMPARE(content(path(u"old"_s)), QByteArray(9000, 'f'));
    QCOMPARE(content(path(u"other"_s)), old_content);
}

int main(int argc, char* argv[]) {
    return run_as_ordinary_user([&] {
        QCoreApplication application(argc, argv);
        tst_failing_saving test;
        return QTest::qExec(&test, argc, argv);
    });
}

#include "tst_failing_saving.moc"
