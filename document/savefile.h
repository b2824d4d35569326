// SPDX-FileCopyrightText: Aerolith developers
// The one place where files are written.
#pragma once

#include <QByteArray>
#include <QString>

/// Replaces the content of the file @p name by @p bytes such that a failure leaves
/// the old content: the bytes go to a new file in the same folder, which takes the
/// place of the old one only when it is known to be whole. Symbolic links are
/// followed and stay; group, permissions and access list stay. Where a new file
/// cannot stand for the old one (a folder that forbids new files, a file with
/// several hard links or of another owner, a device), the bytes are written in
/// place. A full or failing disk is no reason for that: the file is left alone.
/// @return whether all bytes are known to be written; false for an empty name, one
///         with a null character, a folder, and a target without write permission
bool write_file(const QString& name, const QByteArray& bytes);
