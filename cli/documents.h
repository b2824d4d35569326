// SPDX-FileCopyrightText: Aerolith developers
// What is installed beside the program, made from the tables of verbs and options.
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

/// The words of command lines: a line "verb NAME" for each verb and, behind it, a line
/// "--option WORD..." for each of its options, with "{a|b}" for a choice, "{LOW..HIGH}" for a
/// number, "{LOW..HIGH,...}" for a list of them, and {file} or {folder} for a name.
std::string grammar();

} // namespace cli
