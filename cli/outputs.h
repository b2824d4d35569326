// SPDX-FileCopyrightText: Aerolith developers
// Where results are written. All outputs are planned before the first input is read.
#pragma once

#include "cli/inputs.h"

#include <QByteArray>

#include <filesystem>
#include <string>
#include <vector>

namespace cli {

/// The name of the output of each input, bytes; "-" for standard output.
struct Outputs {
    std::vector<std::string> names;
    std::string refusal; ///< Wrong usage; empty if everything may be written.
};

/// The places of files, with all links resolved.
class Places {
public:
    /// The path of a file without links. All names of a file have the same place, even if the file
    /// does not exist yet.
    std::string place_of(const std::string& name);

private:
    // The last folder: consecutive names are mostly in the same one.
    std::filesystem::path last;
    std::filesystem::path resolved;
};

/// Whether both names lead to the same existing file.
bool is_same_file(const std::string& a, const std::string& b);

/// Names the outputs by Options::output or Options::folder. Refuses neither or both of these,
/// several inputs for one output, and outputs that clash. Also refuses outputs that are inputs, the
/// list of inputs, folders, or existing files without Options::force.
/// @param extension of the names in a folder, with its point, for example ".txt"
Outputs plan_outputs(const Options& options, const std::vector<Input>& inputs,
                     const std::string& extension);

/// The one output of all inputs, Options::output. Refuses the same as plan_outputs(), except
/// several inputs.
Outputs plan_one_output(const Options& options, const std::vector<Input>& inputs);

/// Writes a whole file.
/// @param make_folders whether to create missing folders
/// @return why the file could not be written; empty on success
std::string write_output(const std::string& name, const QByteArray& bytes, bool make_folders);

} // namespace cli
