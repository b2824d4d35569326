// SPDX-FileCopyrightText: Aerolith developers
#include "cli/inputs.h"

#include "cli/shown.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cli {

namespace fs = std::filesystem;

namespace {

std::string error_text(int number) {
    return std::generic_category().message(number);
}

// Reads to the end, but at most one byte beyond the limit.
Content read_descriptor(int fd) {
    constexpr qsizetype step = 65536;
    Content content;
    struct stat status = {};
    if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode))
        content.bytes.reserve(qsizetype(std::clamp<qint64>(status.st_size, 0, largest_input)) + 1);
    for (qsizetype done = 0;;) {
        if (done == content.bytes.size())
            content.bytes.resize(std::max(done + step, content.bytes.capacity()));
        const ssize_t count =
            ::read(fd, content.bytes.data() + done, std::size_t(content.bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return {QByteArray(), error_text(errno)};
        done += count;
        if (done > largest_input)
            return {QByteArray(), "larger than 64 MiB"};
        if (count == 0) {
            content.bytes.truncate(done);
            return content;
        }
    }
}

const char* kind_of(mode_t mode) {
    switch (mode & mode_t(S_IFMT)) {
    case S_IFIFO:
        return "a pipe";
    case S_IFSOCK:
        return "a socket";
    case S_IFDIR:
        return "a folder";
    default:
        return "a device";
    }
}

Content read_file(const std::string& path, bool only_regular) {
    // Opening a pipe without a writer, or some devices, would block.
    const int wait = only_regular ? O_NONBLOCK : 0;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | wait);
    if (fd < 0)
        return {QByteArray(), error_text(errno)};
    struct stat status = {};
    Content content;
    if (::fstat(fd, &status) != 0)
        content.error = error_text(errno);
    else if (S_ISDIR(status.st_mode) || (only_regular && !S_ISREG(status.st_mode)))
        content.error = std::string("not a regular file but ") + kind_of(status.st_mode);
    else if (S_ISREG(status.st_mode) && status.st_size > largest_input)
        content.error = "larger than 64 MiB";
    else
        content = read_descriptor(fd);
    ::close(fd);
    return content;
}

std::string name_of(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

class Expansion {
public:
    explicit Expansion(Inputs& found) : inputs(found) {}

    void add(const std::string& name) {
        if (name == "-") {
            if (standard_input_taken)
                inputs.refusal = "standard input can be read only once";
            standard_input_taken = true;
            inputs.all.push_back({name, name, {}});
            return;
        }
        std::error_code error;
        if (fs::is_directory(fs::path(name), error))
            add_folder(name);
        else
            inputs.all.push_back({name, name_of(name), {}});
    }

    void take_standard_input() { standard_input_taken = true; }

private:
    void add_folder(const std::string& folder) {
        const std::size_t first = inputs.all.size();
        const std::string given = folder.back() == '/' ? folder : folder + '/';
        std::vector<std::string> waiting = {std::string()};
        while (!waiting.empty()) {
            const std::string below = waiting.back();
            waiting.pop_back();
            std::error_code error;
            fs::directory_iterator entry(fs::path(given + below), error);
            for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
                const std::string name = below + name_of(entry->path().native());
                std::error_code unknown;
                if (entry->symlink_status(unknown).type() == fs::file_type::directory)
                    waiting.push_back(name + '/');
                else if (!entry->is_directory(unknown))
                    inputs.all.push_back({given + name, name, {}});
            }
            if (error)
                inputs.all.push_back({given + below, below, error.message()});
        }
        std::sort(inputs.all.begin() + std::ptrdiff_t(first), inputs.all.end(),
                  [](const Input& a, const Input& b) { return a.path < b.path; });
    }

    Inputs& inputs;
    bool standard_input_taken = false;
};

} // namespace

std::string base_name(const std::string& path) {
    if (path == "-")
        return {};
    const std::string name = name_of(path);
    return name.substr(0, name.rfind('.'));
}

Inputs expand_inputs(const Options& options, int in) {
    Inputs inputs;
    Expansion expansion(inputs);
    const bool listed_on_input = options.files_from == "-";
    if (listed_on_input)
        expansion.take_standard_input();
    for (const std::string& name : options.files) {
        if (name.empty())
            inputs.refusal = "a file name is empty";
        else
            expansion.add(name);
    }
    if (options.files_from.empty())
        return inputs;

    const Content list =
        listed_on_input ? read_descriptor(in) : read_file(options.files_from, false);
    if (!list.error.empty()) {
        inputs.refusal = "the list " + shown(options.files_from) + ": " + list.error;
        return inputs;
    }
    const std::string_view names(list.bytes.constData(), std::size_t(list.bytes.size()));
    const char separator = options.null_separated ? '\0' : '\n';
    for (std::size_t from = 0; from < names.size();) {
        const std::size_t end = std::min(names.find(separator, from), names.size());
        std::string_view name = names.substr(from, end - from);
        from = end + 1;
        if (!options.null_separated && !name.empty() && name.back() == '\r')
            name.remove_suffix(1);
        if (name.find('\0') != std::string_view::npos)
            inputs.refusal = "the list " + shown(options.files_from) +
                             " contains null characters; read it with --null";
        else if (!name.empty())
            expansion.add(std::string(name));
    }
    return inputs;
}

Content read_input(const Input& input, int in) {
    if (!input.error.empty())
        return {QByteArray(), input.error};
    return input.is_standard_input() ? read_descriptor(in) : read_file(input.path, true);
}

} // namespace cli
