// SPDX-FileCopyrightText: Aerolith developers
// Writing a file such that the old one survives every failure.
#include "document/savefile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <ctime>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

enum class Outcome {
    written,
    failed,       // and the old content is whole
    overtaken,    // another window has saved to the same file at the same moment
    not_possible, // a new file cannot stand for the old one
};

class Descriptor {
public:
    explicit Descriptor(int number) : fd(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (fd >= 0)
            ::close(fd);
    }

    const int fd;
};

// A file beyond the size that a process may write shall fail; by default it ends the process.
class SizeSignalIgnored {
public:
    SizeSignalIgnored() {
        struct sigaction ignored = {};
        ignored.sa_handler = SIG_IGN;
        ::sigaction(SIGXFSZ, &ignored, &before);
    }
    SizeSignalIgnored(const SizeSignalIgnored&) = delete;
    SizeSignalIgnored& operator=(const SizeSignalIgnored&) = delete;
    ~SizeSignalIgnored() { ::sigaction(SIGXFSZ, &before, nullptr); }

private:
    struct sigaction before = {};
};

QByteArray folder_of(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(std::max<qsizetype>(slash, 1));
}

// The file at the end of a chain of symbolic links, which need not exist.
QByteArray link_target(QByteArray path) {
    constexpr int longest_chain = 40;
    for (int step = 0; step < longest_chain; ++step) {
        char text[PATH_MAX];
        const ssize_t length = ::readlink(path.constData(), text, sizeof text);
        if (length <= 0)
            break;
        const QByteArray target(text, length);
        path = target.startsWith('/') ? target : folder_of(path) + '/' + target;
    }
    return path;
}

// The number of bytes written: all of them unless an error stops it.
qsizetype write_bytes(int fd, const char* bytes, qsizetype size) {
    qsizetype done = 0;
    while (done < size) {
        const ssize_t step = ::write(fd, bytes + done, std::size_t(size - done));
        if (step <= 0 && errno != EINTR)
            break;
        done += std::max<ssize_t>(step, 0);
    }
    return done;
}

// Gives a new file the group, the mode and the access list of the one it stands for.
bool take_permissions(int fd, const QByteArray& path, const struct stat& old) {
    struct stat status = {};
    if (::fstat(fd, &status) != 0)
        return false;
    if (status.st_gid != old.st_gid && ::fchown(fd, uid_t(-1), old.st_gid) != 0)
        return false;
    if (::fchmod(fd, old.st_mode & 07777) != 0)
        return false;
    constexpr const char* access_list = "system.posix_acl_access";
    char list[4096];
    const ssize_t size = ::getxattr(path.constData(), access_list, list, sizeof list);
    if (size < 0)
        return errno == ENODATA || errno == ENOTSUP;
    return ::fsetxattr(fd, access_list, list, std::size_t(size), 0) == 0;
}

// Names the file @p unnamed and lets it take the place of @p path. 0 or an error number.
int name_and_replace(const char* unnamed, const char* name, const char* path) {
    ::unlink(name);
    if (::linkat(AT_FDCWD, unnamed, AT_FDCWD, name, AT_SYMLINK_FOLLOW) != 0)
        return errno;
    if (::rename(name, path) == 0)
        return 0;
    const int error = errno;
    ::unlink(name);
    return error;
}

// A program that is killed after the naming and before the replacing would leave the name
// behind. So a process does both that nobody knows, and that outlives this one. Whoever
// ends it too leaves a name that the next save of the same file removes.
int name_and_replace_undisturbed(const Descriptor& file, const QByteArray& path) {
    const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(file.fd);
    const QByteArray own_name = path.mid(path.lastIndexOf('/') + 1);
    const QByteArray name = folder_of(path) + "/.aerolith-" +
                            QCryptographicHash::hash(own_name, QCryptographicHash::Sha1).toHex();

    const pid_t process = ::fork();
    if (process < 0)
        return name_and_replace(unnamed.constData(), name.constData(), path.constData());
    if (process == 0) {
        ::setsid();
        ::_exit(name_and_replace(unnamed.constData(), name.constData(), path.constData()));
    }
    int status = 0;
    while (::waitpid(process, &status, 0) < 0) {
        if (errno == EINTR)
            continue;
        // Where ended processes are not waited for, the file itself tells.
        struct stat written = {};
        return ::fstat(file.fd, &written) == 0 && written.st_nlink == 1 ? 0 : EIO;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : EIO;
}

Outcome publish(const Descriptor& file, const QByteArray& path) {
    const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(file.fd);
    if (::linkat(AT_FDCWD, unnamed.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) == 0)
        return Outcome::written;
    if (errno != EEXIST)
        return Outcome::not_possible;
    switch (name_and_replace_undisturbed(file, path)) {
    case 0:
        return Outcome::written;
    case ENOENT:
    case EEXIST:
        return Outcome::overtaken;
    default:
        return Outcome::not_possible;
    }
}

// For file systems without unnamed files.
Outcome write_named(const QByteArray& path, const QByteArray& bytes) {
    QSaveFile file(QFile::decodeName(path));
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? Outcome::written : Outcome::failed;
}

// @param old the file at @p path, null for none
Outcome write_replacing(const QByteArray& path, const struct stat* old, const QByteArray& bytes) {
    // Until it is whole the file has no name: nothing is left of it when the program ends.
    const Descriptor file(
        ::open(folder_of(path).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666));
    if (file.fd < 0) {
        if (errno == EACCES || errno == EPERM || errno == EROFS)
            return Outcome::not_possible;
        return write_named(path, bytes);
    }
    if (old && !take_permissions(file.fd, path, *old))
        return Outcome::not_possible;
    if (write_bytes(file.fd, bytes.constData(), bytes.size()) != bytes.size() ||
        ::fsync(file.fd) != 0)
        return Outcome::failed;
    return publish(file, path);
}

// Keeps two windows from writing into each other; not for ever, others may hold locks too.
void lock_for_a_while(int fd) {
    constexpr timespec pause = {0, 5'000'000};
    for (int tries = 0; tries < 200 && ::flock(fd, LOCK_EX | LOCK_NB) != 0; ++tries)
        ::nanosleep(&pause, nullptr);
}

// The bytes that writing @p size bytes to a file overwrites.
bool read_start(const QByteArray& path, qsizetype size, QByteArray& start) {
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    start = file.read(size);
    return file.error() == QFileDevice::NoError;
}

bool write_in_place(const QByteArray& path, const QByteArray& bytes) {
    // Does not wait for the reader of a pipe.
    const Descriptor file(::open(path.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat old = {};
    if (file.fd < 0 || ::fstat(file.fd, &old) != 0)
        return false;
    if (!S_ISREG(old.st_mode))
        return write_bytes(file.fd, bytes.constData(), bytes.size()) == bytes.size();

    lock_for_a_while(file.fd);
    QByteArray start;
    if (::fstat(file.fd, &old) != 0 || !read_start(path, bytes.size(), start))
        return false;
    const qsizetype done = write_bytes(file.fd, bytes.constData(), bytes.size());
    if (done == bytes.size() && ::fsync(file.fd) == 0 && ::ftruncate(file.fd, done) == 0)
        return true;
    // The place that the old bytes have had takes them again.
    ::lseek(file.fd, 0, SEEK_SET);
    write_bytes(file.fd, start.constData(), std::min(done, start.size()));
    [[maybe_unused]] const int cut = ::ftruncate(file.fd, old.st_size);
    return false;
}

// Whether a new file may stand for the old one unnoticed: further hard links would keep the
// old content, and the owner would change.
bool replaceable(const struct stat& old) {
    return S_ISREG(old.st_mode) && old.st_nlink == 1 && old.st_uid == ::geteuid();
}

} // namespace

bool write_file(const QString& name, const QByteArray& bytes) {
    if (name.isEmpty())
        return false;
    const SizeSignalIgnored guard;
    const QByteArray given = QFile::encodeName(name);
    struct stat old = {};
    const bool exists = ::stat(given.constData(), &old) == 0;
    if (!exists && errno != ENOENT)
        return false;
    if (exists && ::faccessat(AT_FDCWD, given.constData(), W_OK, AT_EACCESS) != 0)
        return false;

    const QByteArray path = link_target(given);
    struct stat end = {};
    // Links of the system may lead to files by texts that are no paths.
    const bool same = exists && ::lstat(path.constData(), &end) == 0 && end.st_ino == old.st_ino &&
                      end.st_dev == old.st_dev;
    if (exists && (!same || !replaceable(old)))
        return write_in_place(given, bytes);

    Outcome outcome = Outcome::overtaken;
    for (int tries = 0; tries < 100 && outcome == Outcome::overtaken; ++tries)
        outcome = write_replacing(path, exists ? &old : nullptr, bytes);
    if (outcome == Outcome::not_possible && exists)
        return write_in_place(path, bytes);
    // A file system may have unnamed files and yet give them no name.
    if (outcome == Outcome::not_possible)
        outcome = write_named(path, bytes);
    return outcome == Outcome::written;
}
