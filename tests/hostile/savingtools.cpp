// SPDX-FileCopyrightText: Aerolith developers
// Helpers shared by the tests of saving.
#include "hostile/savingtools.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cstdio>

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef AEROLITH_COVERAGE
extern "C" void __gcov_dump();
#endif

Prepared prepared;

namespace {

// Ends a process without running the exit handlers of its parent.
[[noreturn]] void end_process(int result) {
    std::fflush(nullptr);
#ifdef AEROLITH_COVERAGE
    __gcov_dump();
#endif
    ::_exit(result);
}

bool told(bool done, const char* what) {
    if (!done)
        std::perror(what);
    return done;
}

// Permissions do not restrict root, and mistakes of a test must not reach devices.
bool become_ordinary_user() {
    constexpr uid_t nobody = 65534;
    char folder[] = "/tmp/aerolith-saving-XXXXXX";
    if (!told(::mkdtemp(folder), folder))
        return false;
    prepared.folder = folder;
    if (!told(::chmod(folder, 0777) == 0, folder))
        return false;
    const QByteArray disk = prepared.folder + "/disk";
    prepared.full_disk = ::mkdir(disk.constData(), 0755) == 0 && ::unshare(CLONE_NEWNS) == 0 &&
                         ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                         ::mount("none", disk.constData(), "tmpfs", 0, "size=64k,mode=0777") == 0;
    return told(::setgroups(0, nullptr) == 0, "setgroups") &&
           told(::setresgid(nobody, nobody, nobody) == 0, "setresgid") &&
           told(::setresuid(nobody, nobody, nobody) == 0, "setresuid");
}

void remove_prepared() {
    ::rmdir((prepared.folder + "/disk").constData());
    ::rmdir(prepared.folder.constData());
}

} // namespace

int run_as_ordinary_user(const std::function<int()>& test) {
    if (::geteuid() != 0)
        return test();
    // The process of root stays to remove what it has created.
    int to_parent[2];
    if (::pipe(to_parent) != 0)
        return 1;
    const pid_t process = ::fork();
    if (process == 0) {
        const bool ordinary = become_ordinary_user();
        const bool known = ::write(to_parent[1], prepared.folder.constData(),
                                   std::size_t(prepared.folder.size())) > 0;
        const int result = ordinary && known ? test() : 1;
        end_process(result);
    }
    // Otherwise the read below would wait for this process's own end of the pipe.
    ::close(to_parent[1]);
    const int result = result_of(process);
    char folder[64] = {};
    if (::read(to_parent[0], folder, sizeof folder - 1) > 0) {
        prepared.folder = folder;
        remove_prepared();
    }
    return result;
}

pid_t in_other_process(const std::function<void()>& work) {
    const pid_t process = ::fork();
    if (process == 0) {
        work();
        end_process(0);
    }
    return process;
}

int result_of(pid_t process) {
    int status = 0;
    return ::waitpid(process, &status, 0) == process && WIFEXITED(status) ? WEXITSTATUS(status)
                                                                          : -1;
}

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

void put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(bytes), bytes.size());
}

void soft_link(const QString& target, const QString& path) {
    QCOMPARE(::symlink(QFile::encodeName(target).constData(), QFile::encodeName(path).constData()),
             0);
}

void hard_link(const QString& path, const QString& other) {
    QCOMPARE(::link(QFile::encodeName(path).constData(), QFile::encodeName(other).constData()), 0);
}

void set_mode(const QString& path, mode_t mode) {
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

struct stat status_of(const QString& path) {
    struct stat status = {};
    ::lstat(QFile::encodeName(path).constData(), &status);
    return status;
}

QStringList listing(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                  QDir::NoDotAndDotDot);
}

void SavingTest::initTestCase() {
    QVERIFY(::geteuid() != 0);
}

void SavingTest::init() {
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
}

void SavingTest::cleanup() {
    set_mode(dir->path(), 0700);
    dir.reset();
}

QString SavingTest::make_links(const QStringList& targets) const {
    QString name;
    for (qsizetype i = 0; i < targets.size(); ++i) {
        name = path(QStringLiteral("link%1").arg(i));
        soft_link(QString(targets[i]).replace(QStringLiteral("%1"), dir->path()), name);
    }
    return name;
}
