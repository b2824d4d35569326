// SPDX-FileCopyrightText: Aerolith developers
// Writing a file such that the old one survives every failure.
#include "document/savefile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <iterator>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

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
        if (step == 0 || (step < 0 && errno != EINTR))
            break;
        done += std::max<ssize_t>(step, 0);
    }
    return done;
}

// The steps that follow answer 0 or an error number; this one, where the step may be tried again.
constexpr int overtaken = EAGAIN;

// Gives a new file the group, the access list and the mode of the one it stands for.
int take_permissions(int fd, const QByteArray& path, const struct stat& old) {
    struct stat status = {};
    if (::fstat(fd, &status) != 0)
        return errno;
    if (status.st_gid != old.st_gid && ::fchown(fd, uid_t(-1), old.st_gid) != 0)
        return errno;
    constexpr const char* access_list = "system.posix_acl_access";
    char list[4096];
    const ssize_t size = ::getxattr(path.constData(), access_list, list, sizeof list);
    if (size < 0 && errno != ENODATA && errno != EOPNOTSUPP)
        return errno;
    // A folder may give its new files a list that the old file has not.
    const int taken = size < 0 ? ::fremovexattr(fd, access_list)
                               : ::fsetxattr(fd, access_list, list, std::size_t(size), 0);
    if (taken != 0 && errno != ENODATA && errno != EOPNOTSUPP)
        return errno;
    return ::fchmod(fd, old.st_mode & 07777) == 0 ? 0 : errno;
}

// @param old the file that the new one shall stand for, null for none
int fill(int fd, const QByteArray& path, const struct stat* old, const QByteArray& bytes) {
    const int error = old ? take_permissions(fd, path, *old) : 0;
    if (error != 0)
        return error;
    const bool whole =
        write_bytes(fd, bytes.constData(), bytes.size()) == bytes.size() && ::fsync(fd) == 0;
    return whole ? 0 : EIO;
}

// Names the file @p unnamed and lets it take the place of @p path.
int name_and_replace(const char* unnamed, const char* name, const char* path) {
    if (::unlink(name) != 0 && errno != ENOENT)
        return errno;
    if (::linkat(AT_FDCWD, unnamed, AT_FDCWD, name, AT_SYMLINK_FOLLOW) != 0)
        return errno == EEXIST || errno == ENOENT ? overtaken : errno;
    const int error = ::rename(name, path) == 0 ? 0 : errno;
    // Even after success: one name of a file does not replace another name of it.
    ::unlink(name);
    return error == ENOENT ? overtaken : error;
}

// A program that is killed after the naming and before the replacing would leave the name
// behind. So a process does both that nobody knows, and that outlives this one. Whoever
// ends it too leaves a name that the next save of the same file removes.
int name_and_replace_undisturbed(const QByteArray& unnamed, const QByteArray& path) {
    const QByteArray own_name = path.mid(path.lastIndexOf('/') + 1);
    const QByteArray name = folder_of(path) + "/.aerolith-" +
                            QCryptographicHash::hash(own_name, QCryptographicHash::Sha1).toHex();

    const auto act = [&] {
        return name_and_replace(unnamed.constData(), name.constData(), path.constData());
    };

    const pid_t process = ::fork();
    if (process < 0)
        return act();
    if (process == 0) {
        ::setsid();
        ::_exit(act());
    }
    // Who does not know how far the other process came does it again, which does no harm.
    int status = 0;
    while (::waitpid(process, &status, 0) < 0) {
        if (errno != EINTR)
            return act();
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : act();
}

// Until it is whole the file has no name: nothing is left of it when the program ends.
int write_unnamed(const QByteArray& path, const struct stat* old, const QByteArray& bytes) {
    const Descriptor file(
        ::open(folder_of(path).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666));
    if (file.fd < 0)
        return errno;
    const int error = fill(file.fd, path, old, bytes);
    if (error != 0)
        return error;
    const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(file.fd);
    if (::linkat(AT_FDCWD, unnamed.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) == 0)
        return 0;
    return errno == EEXIST ? name_and_replace_undisturbed(unnamed, path) : errno;
}

// For file systems without unnamed files.
int write_named(const QByteArray& path, const struct stat* old, const QByteArray& bytes) {
    const QByteArray name =
        folder_of(path) + "/.aerolith-" + QUuid::createUuid().toByteArray(QUuid::Id128);
    const Descriptor file(::open(name.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666));
    if (file.fd < 0)
        return errno;
    int error = fill(file.fd, path, old, bytes);
    if (error == 0 && ::rename(name.constData(), path.constData()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(name.constData());
    return error;
}

// Whether an error tells that such a new file is not to be had, here or with these permissions.
// After any other the disk may be full or failing, and the old bytes are best left alone.
bool means_no_new_file(int error) {
    constexpr int known[] = {EACCES, EBUSY, EINVAL, EISDIR, ENAMETOOLONG, ENOENT,
                             ENOSYS, EPERM, ERANGE, EROFS,  EXDEV,        EOPNOTSUPP};
    return std::find(std::begin(known), std::end(known), error) != std::end(known);
}

// Keeps two windows from writing into each other; not for ever, others may hold locks too.
void lock_for_a_while(int fd) {
    constexpr timespec pause = {0, 5'000'000};
    for (int tries = 0; tries < 200 && ::flock(fd, LOCK_EX | LOCK_NB) != 0; ++tries)
        ::nanosleep(&pause, nullptr);
}

// The bytes that writing @p size bytes to a file overwrites.
bool read_start(int fd, qsizetype size, QByteArray& start) {
    start.resize(size);
    qsizetype done = 0;
    ssize_t step = 1;
    while (done < size && step != 0) {
        step = ::pread(fd, start.data() + done, std::size_t(size - done), done);
        if (step < 0 && errno != EINTR)
            return false;
        done += std::max<ssize_t>(step, 0);
    }
    start.truncate(done);
    return true;
}

// Finds out that a disk is full before an old byte is lost.
bool has_room(int fd, qsizetype size) {
    return size == 0 || ::fallocate(fd, FALLOC_FL_KEEP_SIZE, 0, size) == 0 ||
           (errno != ENOSPC && errno != EDQUOT && errno != EFBIG);
}

bool write_in_place(const QByteArray& path, const QByteArray& bytes, bool regular) {
    // Does not wait for the reader of a pipe.
    const Descriptor file(::open(path.constData(), (regular ? O_RDWR : O_WRONLY) | O_NONBLOCK |
                                                       O_NOCTTY | O_CLOEXEC));
    struct stat old = {};
    if (file.fd < 0 || ::fstat(file.fd, &old) != 0 || S_ISREG(old.st_mode) != regular)
        return false;
    if (!regular)
        return write_bytes(file.fd, bytes.constData(), bytes.size()) == bytes.size();

    lock_for_a_while(file.fd);
    QByteArray start;
    if (::fstat(file.fd, &old) != 0 || !read_start(file.fd, bytes.size(), start))
        return false;
    qsizetype done = 0;
    if (has_room(file.fd, bytes.size())) {
        done = write_bytes(file.fd, bytes.constData(), bytes.size());
        if (done == bytes.size() && ::fsync(file.fd) == 0 && ::ftruncate(file.fd, done) == 0)
            return true;
    }
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
    // The system would take a name to end at a null character.
    if (name.isEmpty() || name.contains(QChar::Null))
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
    const bool regular = exists && S_ISREG(old.st_mode);
    if (exists && (!same || !replaceable(old)))
        return write_in_place(given, bytes, regular);

    const struct stat* replaced = exists ? &old : nullptr;
    int error = overtaken;
    for (int tries = 0; tries < 100 && error == overtaken; ++tries)
        error = write_unnamed(path, replaced, bytes);
    if (means_no_new_file(error))
        error = write_named(path, replaced, bytes);
    if (means_no_new_file(error) && exists)
        return write_in_place(path, bytes, regular);
    return error == 0;
}
