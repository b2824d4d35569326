// SPDX-FileCopyrightText: Aerolith developers
// What can be written: tables in several forms, and splines.
#pragma once

#include "sections/resample.h"
#include "tables/write.h"

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// The name of spline files among the formats.
constexpr const char* spline_format = "spl";

/// The names of the formats that are drawings.
std::vector<std::string> drawing_formats();

/// Whether @p name is one of them.
bool is_drawing(const std::string& name);

/// What `--to` takes, the default first.
std::vector<std::string> output_formats();

/// What `--to` takes for pictures, the default first.
std::vector<std::string> picture_formats();

/// What `--layout` takes.
std::vector<std::string> input_layouts();

/// What `--spacing` takes, the default first.
std::vector<std::string> spacings();

/// The spacing of a name that spacings() has.
sections::Spacing spacing_of(const std::string& name);

/// A format that was chosen.
struct Chosen {
    std::string name;    ///< One of output_formats().
    std::string refusal; ///< Why none was chosen; empty for none.
};

/// The format of `--to`, or that of the ending of the output, or the default.
/// @param to     value of the option, empty for none
/// @param output name of the one output, empty where there are many or it is standard output
Chosen choose_format(const std::string& to, const std::string& output);

/// The same for pictures.
Chosen choose_picture_format(const std::string& to, const std::string& output);

/// The ending of files of a format, with its point.
std::string ending_of_format(const std::string& name);

/// The table format of a name; none for the spline's.
std::optional<tables::Format> table_format(const std::string& name);

} // namespace cli
