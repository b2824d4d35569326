// SPDX-FileCopyrightText: Aerolith developers
// Where results are written: planned for all inputs before the first one is read.
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
    std::string refusal; ///< Wrong usage; empty when everything may be written.
};

/// Where files are or will be, whatever links lead there.
class Places {
public:
    /// The same path, without links, for all names of one file, whether it exists or not.
    std::string place_of(const std::string& name);

private:
    // Most names that follow one another are in one folder.
    std::filesystem::path last;
    std::filesystem::path resolved;
};

/// Whether both names lead to one file that exists.
bool is_same_file(const std::string& a, const std::string& b);

/// Names the outputs by Options::output or Options::folder. Refused: neither or both, several
/// inputs for one output, outputs that clash, that are inputs, the list of them or folders, and
/// existing files without Options::force.
/// @param ending of the names below a folder, with its point, for instance ".txt"
Outputs plan_outputs(const Options& options, const std::vector<Input>& inputs,
                     const std::string& ending);

/// The one output of all inputs, Options::output. Refused as above, but for several inputs.
Outputs plan_one_output(const Options& options, const std::vector<Input>& inputs);

/// Writes a whole file; folders that are missing below Options::folder are made.
/// @return why it could not be written, empty when it was
std::string write_output(const std::string& name, const QByteArray& bytes, bool make_folders);

} // namespace cli
