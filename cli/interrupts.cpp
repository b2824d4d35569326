// SPDX-FileCopyrightText: Aerolith developers
#include "cli/interrupts.h"

#include <atomic>
#include <csignal>
#include <initializer_list>

#include <unistd.h>

namespace cli {

namespace {

// The signal handler uses them, so they must be free of locks.
std::atomic<int> files_being_written = 0;
std::atomic<int> interrupt = 0;
static_assert(std::atomic<int>::is_always_lock_free);

void end_by(int number) {
    std::signal(number, SIG_DFL);
    std::raise(number);
}

void handle(int number) {
    const bool again = interrupt.exchange(number) != 0;
    if (again || files_being_written == 0)
        end_by(number);
}

void file_is_written() {
    if (--files_being_written == 0 && interrupt != 0)
        end_by(interrupt);
}

} // namespace

void end_between_files() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action.sa_handler = handle;
        action.sa_flags = SA_RESTART | SA_NODEFER;
        ::sigaction(number, &action, nullptr);
    }
}

FileBeingWritten::FileBeingWritten() {
    ++files_being_written;
    if (interrupt == 0)
        return;
    file_is_written();
    while (true)
        ::pause();
}

FileBeingWritten::~FileBeingWritten() {
    file_is_written();
}

} // namespace cli
