// SPDX-FileCopyrightText: Aerolith developers
// Texts that are safe for a terminal.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace cli {

/// @p bytes as UTF-8 that cannot control a terminal. Each byte of a control character becomes
/// `\xHH`, and so does each byte that is not UTF-8. Control characters are those of C0 and C1, line
/// and paragraph separators, and those that change the writing direction. All other bytes stay,
/// including backslashes.
std::string shown(std::string_view bytes);

/// The same for a text of Qt.
std::string shown(const QString& text);

/// @p text, padded with blanks to @p width characters. A longer text stays as it is.
std::string column(std::string_view text, int width);

/// The same with the blanks in front.
std::string right_column(std::string_view text, int width);

/// Breaks @p text at blanks and line feeds into lines of at most @p width characters. Each line
/// begins with @p indent blanks and ends with a line feed. Words longer than a line are not broken.
/// A line holds at least 10 characters behind the blanks, whatever the width.
std::string wrapped(std::string_view text, int width, int indent);

/// The number of characters of a text in UTF-8.
int length_of(std::string_view text);

} // namespace cli
