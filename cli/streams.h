// SPDX-FileCopyrightText: Aerolith developers
// The environment of the program, so that tests can run it in their own process.
#pragma once

#include <functional>
#include <string_view>

namespace cli {

/// The standard streams and their properties.
struct Streams {
    int in = 0; ///< Descriptor of standard input.

    /// @name Writers
    /// Each takes whole lines, or the bytes of a file, and returns 0 or an error number.
    /// @{
    std::function<int(std::string_view)> out;
    std::function<int(std::string_view)> err;
    /// @}

    bool out_is_terminal = false;
    bool err_is_terminal = false;
    int width = 80;     ///< Of the terminal, in columns; without one, the width of texts.
    int processors = 1; ///< The default of `--jobs`.
    std::function<double()> seconds; ///< A clock, used only by the progress bar.
};

} // namespace cli
