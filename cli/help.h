// SPDX-FileCopyrightText: Aerolith developers
// Texts made from the tables of verbs and options.
#pragma once

#include <string>

namespace cli {

struct Option;
struct Verb;

/// The verbs, in a screenful.
std::string program_help(int width);

/// One verb: usage, options, an example.
std::string verb_help(const Verb& verb, int width);

/// "-j, --jobs N" of an option.
std::string option_form(const Option& option);

/// What the help says of an option, with its unit, its choices and its default.
std::string option_help(const Option& option);

} // namespace cli
