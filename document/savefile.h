// SPDX-FileCopyrightText: Aerolith developers
// The one place where files are written.
#pragma once

#include <QByteArray>
#include <QString>

/// Replaces the content of the file @p name by @p bytes: they go to a new file in the
/// same folder, which takes the place of the old one when it is whole. Symbolic links
/// are followed and stay, permission bits stay. Written in place, where a failure leaves
/// a part, are only what is no regular file, a file with several hard links, and one in a
/// folder where this user may make none. A full or failing disk is no reason for that.
/// From the first call on, a limit on the size of files is an error and no longer ends
/// the process. Threads may save different files at once.
/// @return whether all bytes are known to be written; false for an empty name, one with
///         a null character, a folder, a pipe that nobody reads or that is full, and a
///         target without write permission
bool write_file(const QString& name, const QByteArray& bytes);

/// The same for the bytes of a path, which need not be UTF-8.
/// @param overwrite whether a regular file that is there already is replaced; one that
///                  another program makes during the call is replaced in any case
/// @param waits     whether the reader of a full pipe is waited for
bool write_file_at(const QByteArray& path, const QByteArray& bytes, bool overwrite = true,
                   bool waits = true);
