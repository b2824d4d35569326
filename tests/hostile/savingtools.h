// SPDX-FileCopyrightText: Aerolith developers
// Helpers shared by the tests of saving, which run as an ordinary user, to whom permissions apply.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include <sys/stat.h>
#include <sys/types.h>

/// What only root can set up, created before the test becomes an ordinary user.
struct Prepared {
    QByteArray folder;      ///< Writable for everybody.
    bool full_disk = false; ///< Its folder "disk" is a file system of 64 kB.
};
extern Prepared prepared;

/// Runs @p test; if started by root, in a process of an ordinary user.
int run_as_ordinary_user(const std::function<int()>& test);

/// Runs @p work in another process, which then ends with 0.
pid_t in_other_process(const std::function<void()>& work);

/// Waits for @p process. @return its exit code, -1 if it was killed
int result_of(pid_t process);

/// @name Files
/// Functions that change something fail the test when they fail.
/// @{
QByteArray content(const QString& path);
void put(const QString& path, const QByteArray& bytes);
void soft_link(const QString& target, const QString& path);
void hard_link(const QString& path, const QString& other);
void set_mode(const QString& path, mode_t mode);
struct stat status_of(const QString& path); ///< Of a symbolic link, not of its target.
QStringList listing(const QString& folder); ///< Hidden files, too.
/// @}

/// A test in which each function has an empty folder.
class SavingTest : public QObject {
    Q_OBJECT

protected slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    QString path(const QString& name) const { return dir->path() + QChar(u'/') + name; }

    /// Makes link0, link1... to @p targets, in which %1 is the folder. @return the last one's path
    QString make_links(const QStringList& targets) const;

    std::unique_ptr<QTemporaryDir> dir;
};
