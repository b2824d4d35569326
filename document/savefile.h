// SPDX-FileCopyrightText: Aerolith developers
// The one place where files are written.
#pragma once

#include <QByteArray>
#include <QString>

/// Replaces the content of the file @p name by @p bytes: they go to a new file in the same folder,
/// which replaces the old one when it is complete. Symbolic links are followed and kept, and so are
/// permission bits. Only three kinds of file are written in place, where a failure leaves a part:
/// what is not a regular file, a file with several hard links, and a file in a folder where this
/// user may not create files. A full or failing disk is no reason to write in place. From the first
/// call on, exceeding a limit on the size of files is an error and no longer ends the process.
/// Threads may save different files at the same time.
/// @return whether all bytes are known to have been written; false for an empty name, one with a
///         null character, a folder, a pipe that nobody reads or that is full, and a target without
///         write permission
bool write_file(const QString& name, const QByteArray& bytes);

/// The same for the bytes of a path, which need not be UTF-8.
/// @param overwrite whether an existing regular file is replaced; one that another program creates
///                  during the call is replaced in any case
/// @param waits     whether to wait for the reader of a full pipe
bool write_file_at(const QByteArray& path, const QByteArray& bytes, bool overwrite = true,
                   bool waits = true);
