// SPDX-FileCopyrightText: Aerolith developers
// The documents that are generated from the tables of verbs and options.
#pragma once

#include <string>

namespace cli {

/// The manual page, in the macros of man(7).
std::string manual_page();

/// @name Completion scripts
/// @{
std::string bash_completion();
std::string zsh_completion();
std::string fish_completion();
/// @}

/// The grammar of command lines. Each verb has a line "verb NAME", followed by a line
/// "--option WORD..." for each of its options. A word is "{a|b}" for a choice, "{LOW..HIGH}" for a
/// number, "{LOW..HIGH,...}" for a list of numbers, and "{file}" or "{folder}" for a name.
std::string grammar();

} // namespace cli
