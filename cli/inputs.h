// SPDX-FileCopyrightText: Aerolith developers
// The files that a verb works on: found by their raw names, each opened once.
#pragma once

#include "cli/options.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace cli {

/// The largest input that is read, bytes.
constexpr qint64 largest_input = qint64(64) << 20;

/// One input. Names are bytes, as the system has them.
struct Input {
    std::string path;  ///< As it is opened and reported; "-" for standard input.
    std::string below; ///< The path below the folder that was given, else the name alone.
    /// Why there is nothing to open, for instance a folder that cannot be read; empty for none.
    std::string error;

    bool is_standard_input() const { return path == "-"; }
};

/// The bytes of one input, or why they were not read.
struct Content {
    QByteArray bytes;
    std::string error; ///< Empty when the bytes are whole.
};

/// The inputs in the order of the arguments, then those of the list.
struct Inputs {
    std::vector<Input> all;
    std::string refusal; ///< Wrong usage, for instance standard input twice; empty for none.
};

/// The name of an input without its folders and its ending, bytes; empty for standard input.
std::string base_name(const std::string& path);

/// The files that Options::files and Options::files_from stand for. A folder stands for all that
/// lies below it but folders, in the order of the bytes of the paths; symbolic links to folders
/// are followed only where they were given. A name that does not exist is an input, too.
/// @param in descriptor of standard input
Inputs expand_inputs(const Options& options, int in);

/// Reads an input. Refused are files that are no regular files, and more than 64 MiB; standard
/// input may be anything.
Content read_input(const Input& input, int in);

} // namespace cli
