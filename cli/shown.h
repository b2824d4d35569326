// SPDX-FileCopyrightText: Aerolith developers
// Texts as a terminal may show them.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace cli {

/// @p bytes as UTF-8 in which nothing steers a terminal: each byte of a control character (C0,
/// C1, line and paragraph separators, those that turn the direction of writing) and each byte
/// that is no UTF-8 is written as `\xHH`. All else stays, backslashes too.
std::string shown(std::string_view bytes);

/// The same of a text.
std::string shown(const QString& text);

/// @p text with blanks behind it, @p width characters wide; a longer one stays whole.
std::string column(std::string_view text, int width);

/// The same with the blanks before it.
std::string right_column(std::string_view text, int width);

/// @p text broken at blanks into lines of at most @p width characters, each behind @p indent
/// blanks and ended by a line feed. Words longer than a line stay whole; line feeds in the text
/// break it too. A @p width that leaves less than 10 characters counts as one that leaves 10.
std::string wrapped(std::string_view text, int width, int indent);

/// The number of characters of a text in UTF-8.
int length_of(std::string_view text);

} // namespace cli
