// SPDX-FileCopyrightText: Aerolith developers
// Reading the files that the window opens.
#pragma once

#include <QByteArray>
#include <QString>

/// The longest file that is read, bytes. A table or a spline takes some kilobytes; the outline
/// of a long one, its texts and its picture take up to fifty times the file.
constexpr qint64 longest_file = qint64(256) << 20;

/// The content of the file @p name. Regular files only: reading a pipe or a device might never end.
/// @return null for a file that cannot be read or is longer than longest_file
/// @throws std::bad_alloc when there is not enough memory
QByteArray read_file(const QString& name);
