// SPDX-FileCopyrightText: Aerolith developers
// The files that a verb works on. Each is opened once.
#pragma once

#include "cli/options.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace cli {

/// The size of the largest input, bytes.
constexpr qint64 largest_input = qint64(64) << 20;

/// One input. Names are raw bytes.
struct Input {
    std::string path;  ///< The path to open; "-" for standard input.
    std::string below; ///< The path inside the given folder, else the name without folders.
    /// Why the input cannot be opened, for example an unreadable folder; empty if it can.
    std::string error;

    bool is_standard_input() const { return path == "-"; }
};

/// The bytes of an input, or why they were not read.
struct Content {
    QByteArray bytes;
    std::string error; ///< Empty if the bytes are complete.
};

/// The inputs in the order of the arguments, followed by those of the list.
struct Inputs {
    std::vector<Input> all;
    std::string refusal; ///< Wrong usage, for example standard input twice; empty for none.
};

/// The name of an input without folders and extension, bytes; empty for standard input.
std::string base_name(const std::string& path);

/// The inputs that Options::files and Options::files_from name. A folder stands for everything in
/// it and its subfolders, sorted by the bytes of the paths. Symbolic links to folders are followed
/// only if they were given themselves. A name that does not exist is an input as well.
/// @param in descriptor of standard input
Inputs expand_inputs(const Options& options, int in);

/// Reads an input. Refuses more than 64 MiB, and everything but regular files and standard input.
Content read_input(const Input& input, int in);

} // namespace cli
