// SPDX-FileCopyrightText: Aerolith developers
// From arguments to the record of options.
#pragma once

#include "cli/options.h"

#include <string>
#include <string_view>
#include <vector>

namespace cli {

struct Verb;

/// The arguments behind a verb.
struct Parsed {
    Options options;
    std::string refusal; ///< Why the arguments are refused; empty if they are not.
};

/// Reads the arguments behind the name of @p verb. Options can stand anywhere before "--"; every
/// word behind it is a file name. Each option can be given only once.
Parsed parse(const Verb& verb, const std::vector<std::string>& arguments);

/// The known word nearest to a mistyped one, as "; did you mean '...'?". Empty if none is near.
std::string suggestion(std::string_view typed, const std::vector<std::string>& known);

} // namespace cli
