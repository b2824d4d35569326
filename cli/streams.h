// SPDX-FileCopyrightText: Aerolith developers
// What the program has of the world around it, so that tests run it in their own process.
#pragma once

#include <functional>
#include <string_view>

namespace cli {

/// The standard streams and what is known of them.
struct Streams {
    int in = 0; ///< Descriptor of standard input.

    /// @name Writers
    /// Each takes whole lines, or the bytes of a file, and answers 0 or an error number.
    /// @{
    std::function<int(std::string_view)> out;
    std::function<int(std::string_view)> err;
    /// @}

    bool out_is_terminal = false;
    bool err_is_terminal = false;
    int width = 80;                  ///< Columns of the terminal, or of texts without one.
    int processors = 1;              ///< Files worked on at a time without `--jobs`.
    std::function<double()> seconds; ///< A clock, asked by the progress bar alone.
};

} // namespace cli
