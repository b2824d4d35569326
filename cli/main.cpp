// SPDX-FileCopyrightText: Aerolith developers
#include "cli/interrupts.h"
#include "cli/run.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

// Otherwise a file opened later could get the number of a closed standard stream.
void fill_closed_streams() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(fd, F_GETFD) < 0)
            ::open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

int write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return errno;
        bytes.remove_prefix(std::size_t(std::max<ssize_t>(count, 0)));
    }
    return 0;
}

int terminal_width() {
    winsize size = {};
    for (const int fd : {STDOUT_FILENO, STDERR_FILENO}) {
        if (::ioctl(fd, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
            return size.ws_col;
    }
    return 80;
}

} // namespace

int main(int argc, char* argv[]) {
    fill_closed_streams();
    // A closed pipe must end the program even if its parent ignored SIGPIPE. Exceeding the limit on
    // the file size must be an error, and must not end it.
    std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGXFSZ, SIG_IGN);
    cli::end_between_files();

    cli::Streams streams;
    streams.out = [](std::string_view bytes) { return write_all(STDOUT_FILENO, bytes); };
    streams.err = [](std::string_view bytes) { return write_all(STDERR_FILENO, bytes); };
    streams.out_is_terminal = ::isatty(STDOUT_FILENO) == 1;
    streams.err_is_terminal = ::isatty(STDERR_FILENO) == 1;
    streams.width = terminal_width();
    streams.processors = int(std::max(1U, std::thread::hardware_concurrency()));
    streams.seconds = [] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    };
    return int(cli::run({argv + std::min(argc, 1), argv + argc}, streams));
}
