// SPDX-FileCopyrightText: Aerolith developers
// The program as a function.
#pragma once

#include "cli/streams.h"

#include <string>
#include <vector>

namespace cli {

/// How a run ends.
enum class ExitCode {
    success = 0, ///< All well.
    failure = 1, ///< A file is doubtful, bad or unreadable, or an output failed.
    usage = 2    ///< Wrong usage; nothing was written.
};

/// Does what the arguments, without the name of the program, say.
ExitCode run(const std::vector<std::string>& arguments, const Streams& streams);

} // namespace cli
