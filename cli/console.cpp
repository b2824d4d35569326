// SPDX-FileCopyrightText: Aerolith developers
#include "cli/console.h"

#include <algorithm>
#include <system_error>

namespace cli {

Console::Console(const Streams& given) : world(given) {
    if (world.seconds)
        start = last = world.seconds();
}

Console::~Console() {
    clear_bar();
}

void Console::out(std::string_view text) {
    if (failed() || text.empty())
        return;
    clear_bar();
    out_error = world.out(text);
    if (failed())
        err("aerolith-cli: standard output: " + std::generic_category().message(out_error) + "\n");
}

void Console::err(std::string_view text) {
    if (text.empty())
        return;
    clear_bar();
    world.err(text);
}

void Console::progress(std::size_t done, std::size_t all) {
    constexpr double patience = 1.0;
    constexpr double pause = 0.1;
    if (!world.err_is_terminal || world.out_is_terminal || !world.seconds)
        return;
    const double now = world.seconds();
    if (now - start < patience || now - last < pause)
        return;
    last = now;
    const std::string count = " " + std::to_string(done) + "/" + std::to_string(all);
    const auto room = std::size_t(std::clamp(world.width - int(count.size()) - 3, 0, 50));
    const std::size_t filled = room * done / std::max<std::size_t>(all, 1);
    world.err("\r[" + std::string(filled, '#') + std::string(room - filled, ' ') + "]" + count);
    bar_shown = true;
}

void Console::clear_bar() {
    if (bar_shown)
        world.err("\r\x1b[K");
    bar_shown = false;
}

} // namespace cli
