// SPDX-FileCopyrightText: Aerolith developers
// Where results are written: planned for all inputs before the first one is read.
#pragma once

#include "cli/inputs.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace cli {

/// The name of the output of each input, bytes; "-" for standard output.
struct Outputs {
    std::vector<std::string> names;
    std::string refusal; ///< Wrong usage; empty when everything may be written.
};

/// Names the outputs by Options::output or Options::folder. Refused: neither or both, several
/// inputs for one output, outputs that clash, that are inputs or folders, and existing files
/// without Options::force.
/// @param ending of the names below a folder, with its point, for instance ".txt"
Outputs plan_outputs(const Options& options, const std::vector<Input>& inputs,
                     const std::string& ending);

/// The one output of all inputs, Options::output. Refused as above, but for several inputs.
Outputs plan_one_output(const Options& options, const std::vector<Input>& inputs);

/// Writes a whole file; folders that are missing below Options::folder are made.
/// @return why it could not be written, empty when it was
std::string write_output(const std::string& name, const QByteArray& bytes, bool make_folders);

} // namespace cli
