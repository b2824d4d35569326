// SPDX-FileCopyrightText: Aerolith developers
// From arguments to the record of options.
#pragma once

#include "cli/options.h"

#include <string>
#include <string_view>
#include <vector>

namespace cli {

struct Verb;

/// What the arguments behind a verb say.
struct Parsed {
    Options options;
    std::string refusal; ///< Why they are refused, empty when they are not.
};

/// Reads the arguments behind the name of @p verb. Options stand anywhere; what follows "--" is
/// a file name. An option may be given once.
Parsed parse(const Verb& verb, const std::vector<std::string>& arguments);

/// The word nearest to a mistyped one, as ", did you mean '...'?"; empty when none is near.
std::string suggestion(std::string_view typed, const std::vector<std::string>& known);

} // namespace cli
