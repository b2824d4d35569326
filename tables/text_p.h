// SPDX-FileCopyrightText: Aerolith developers
// First step of the reading: bytes to text.
#pragma once

#include "tables/table.h"

#include <QByteArray>
#include <QByteArrayView>

namespace tables {

constexpr qsizetype most_bytes = qsizetype(64) << 20;

struct Text {
    QByteArray utf8;
    QList<Finding> findings;
};

/// @p bytes as UTF-8. A byte-order mark identifies UTF-8, UTF-16 and UTF-32; zeros in every other
/// byte identify UTF-16 without a mark; what is not valid UTF-8 is taken as Latin-1. The text ends
/// at the DOS end-of-file character. Blanks and minus signs beyond ASCII become plain ones. More
/// bytes than most_bytes give an error and no text.
Text decoded(const QByteArray& bytes);

/// Removes and returns the first line of @p rest, which ends with LF, CR LF or CR.
QByteArrayView take_line(QByteArrayView& rest);

/// @p line for messages: no control characters, no blanks at its ends, at most 200 characters.
QString shown(QByteArrayView line);

} // namespace tables
