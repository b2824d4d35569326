// SPDX-FileCopyrightText: Aerolith developers
// What a run prints: results, messages and, on a terminal, how far it is.
#pragma once

#include "cli/streams.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// Writes to the standard streams and keeps the progress bar out of their way. The bar stands on
/// standard error when that is a terminal, standard output is none, and a second has passed.
class Console {
public:
    explicit Console(const Streams& given);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Writes to standard output. The first failure is reported on standard error; after it
    /// nothing is written any more.
    void out(std::string_view text);

    void err(std::string_view text);

    /// Says that @p done of @p all files are worked on.
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
