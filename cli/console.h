// SPDX-FileCopyrightText: Aerolith developers
// The output of a run: results, messages and, on a terminal, a progress bar.
#pragma once

#include "cli/streams.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// Writes to the standard streams, and erases the progress bar before each text. The bar is shown
/// on standard error if that is a terminal and standard output is not, after one second.
class Console {
public:
    explicit Console(const Streams& given);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Writes to standard output. Reports the first failure on standard error and writes nothing
    /// after it.
    void out(std::string_view text);

    void err(std::string_view text);

    /// Shows that @p done of @p all files are finished.
    void progress(std::size_t done, std::size_t all);

    bool failed() const { return out_error != 0; }
    const Streams& streams() const { return world; }

private:
    void clear_bar();

    const Streams& world;
    int out_error = 0;
    bool bar_shown = false;
    double start = 0.0;
    double last = 0.0;
};

} // namespace cli
