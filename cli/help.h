// SPDX-FileCopyrightText: Aerolith developers
// Help texts from the tables of verbs and options.
#pragma once

#include <string>

namespace cli {

struct Option;
struct Verb;

/// The help of the program: its verbs.
std::string program_help(int width);

/// The help of a verb: usage, options, an example.
std::string verb_help(const Verb& verb, int width);

/// The forms of an option, for example "-j, --jobs N".
std::string option_form(const Option& option);

/// The help text of an option with its choices, its unit and its default.
std::string option_help(const Option& option);

} // namespace cli
