// SPDX-FileCopyrightText: Aerolith developers
// The formats of outputs: tables, splines, drawings and pictures.
#pragma once

#include "sections/resample.h"
#include "tables/write.h"

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// The format of spline files.
constexpr const char* spline_format = "spl";

/// The formats of rib drawings.
std::vector<std::string> drawing_formats();

/// Whether @p name is one of drawing_formats().
bool is_drawing(const std::string& name);

/// The values of `--to`, the default first.
std::vector<std::string> output_formats();

/// The values of `--to` for pictures, the default first.
std::vector<std::string> picture_formats();

/// The values of `--layout`.
std::vector<std::string> input_layouts();

/// The values of `--spacing`, the default first.
std::vector<std::string> spacings();

/// The spacing of a name in spacings().
sections::Spacing spacing_of(const std::string& name);

/// The choice of a format.
struct Chosen {
    std::string name;    ///< One of output_formats().
    std::string refusal; ///< Why no format was chosen; empty if one was.
};

/// The format of `--to`, else the format of the extension of the output, else the default.
/// @param to     value of the option; empty if it was not given
/// @param output name of the only output; empty for several outputs and for standard output
Chosen choose_format(const std::string& to, const std::string& output);

/// The same for pictures.
Chosen choose_picture_format(const std::string& to, const std::string& output);

/// The extension of files in a format, with its point.
std::string extension_of_format(const std::string& name);

/// The table format of a name; nothing for other formats.
std::optional<tables::Format> table_format(const std::string& name);

} // namespace cli
