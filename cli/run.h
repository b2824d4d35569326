// SPDX-FileCopyrightText: Aerolith developers
// The program as a function.
#pragma once

#include "cli/streams.h"

#include <string>
#include <vector>

namespace cli {

/// How a run ends.
enum class ExitCode {
    success = 0,
    /// A file is doubtful, bad or unreadable, an output failed, or a tolerance was missed.
    failure = 1,
    /// Wrong usage; nothing was written.
    usage = 2
};

/// Runs the program.
/// @param arguments without the name of the program
ExitCode run(const std::vector<std::string>& arguments, const Streams& streams);

} // namespace cli
