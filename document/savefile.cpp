// SPDX-FileCopyrightText: Aerolith developers
// Writing a file so that the old one survives a failure.
#include "document/savefile.h"

#include <QFile>
#include <QSaveFile>
#include <QUuid>

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

bool write_in_place(const char* path, const QByteArray& bytes, bool regular, bool waits) {
    // Without blocking, so that a pipe that nobody reads is refused.
    const int fd = ::open(path, O_WRONLY | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    QFile file;
    return fd >= 0 && (!waits || ::fcntl(fd, F_SETFL, 0) == 0) &&
           file.open(fd, QIODevice::WriteOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle) &&
           file.write(bytes) == bytes.size() && (!regular || ::fsync(fd) == 0);
}

bool replace(const fs::path& path, const QByteArray& bytes, const fs::file_status& old) {
    QSaveFile file(QFile::decodeName(path.c_str()));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (fs::exists(
            old)) // Qt would copy only the bits that restrict this user, and none restricts root.
        ::fchmod(file.handle(), mode_t(old.permissions()) & 0777);
    // Qt synchronises too, but ignores a failure.
    return file.write(bytes) == bytes.size() && ::fsync(file.handle()) == 0 && file.commit();
}

} // namespace

bool write_file_at(const QByteArray& path, const QByteArray& bytes, bool overwrite, bool waits) {
    // Exceeding a limit on the size of files would end the process.
    [[maybe_unused]] static const auto before = std::signal(SIGXFSZ, SIG_IGN);
    std::error_code error;
    const fs::path given(path.toStdString());
    const fs::file_status old = fs::status(given, error);
    const bool regular = fs::is_regular_file(old);
    if (path.contains('\0') || !fs::status_known(old) || (regular && !overwrite) ||
        (fs::exists(old) && ::euidaccess(path.constData(), W_OK) != 0))
        return false;
    // Qt would shorten "folder/.." in a link although the folder may be a link.
    fs::path end = given;
    for (int step = 0; step < 40 && fs::is_symlink(end, error); ++step)
        end = end.parent_path() / fs::read_symlink(end, error);
    const fs::path folder = fs::canonical(fs::absolute(end, error).parent_path(), error);
    // A file reached only through links of the system has no name: its link count is 0.
    const bool alone = regular && fs::hard_link_count(given, error) == 1;
    if (fs::exists(old) && (!alone || ::euidaccess(folder.c_str(), W_OK) != 0))
        return write_in_place(path.constData(), bytes, regular, waits);
    if (folder.empty())
        return false;

    const fs::path target = folder / end.filename();
    // Qt needs a name in UTF-8 with room for a suffix; any other file is renamed at the end.
    const bool utf8 = QFile::encodeName(QFile::decodeName(target.c_str())) == target.c_str();
    if (utf8 && end.filename().native().size() < 249)
        return replace(target, bytes, old);
    const int fd = ::open(folder.c_str(), O_PATH | O_CLOEXEC);
    const fs::path other = "/proc/self/fd/" + std::to_string(fd) + "/.aerolith-" +
                           QUuid::createUuid().toByteArray(QUuid::Id128).toStdString();
    const bool done = replace(other, bytes, old) && ::rename(other.c_str(), target.c_str()) == 0;
    ::unlink(other.c_str());
    ::close(fd);
    return done;
}

bool write_file(const QString& name, const QByteArray& bytes) {
    // Waiting for the reader of a pipe would freeze the window.
    return write_file_at(QFile::encodeName(name), bytes, true, false);
}
