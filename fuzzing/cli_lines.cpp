// SPDX-FileCopyrightText: Aerolith developers
// Runs random command lines on valid and broken files, and checks the files of the folder after
// each. Line k does not depend on the lines before it. Without an argument all lines run in one
// process; with the name of the program each line runs as a process.
//
// AEROLITH_LINES       number of lines (default 2000)
// AEROLITH_LINES_SEED  seed (default 1)
// AEROLITH_LINES_FIRST number of the first line (default 0)
#include "cli/formats.h"
#include "cli/shown.h"
#include "fuzzing/fuzzing.h"
#include "fuzzing/linefolder.h"

#include <QJsonDocument>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <new>
#include <random>

#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Seconds. One fit takes up to 20 under the sanitizers, and more on a busy machine.
constexpr int patience = 400;

struct Line {
    Words words;
    QByteArray input;
};

// Shared by the process that runs the lines and the one that watches it.
struct Progress {
    std::atomic<long> line = 0;
    std::atomic<long> codes[3] = {};
    std::atomic<long> written = 0;
};

long number_of(const char* variable, long standard) {
    const char* text = std::getenv(variable);
    return text ? std::atol(text) : standard;
}

bool has(const Words& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// The extensions of the outputs of a verb.
Words extensions_of(const std::vector<Words>& options) {
    for (const Words& option : options) {
        if (option[0] != "--to")
            continue;
        Words extensions;
        std::string name;
        for (const char c : option[1].substr(1)) {
            if (c != '|' && c != '}') {
                name += c;
                continue;
            }
            extensions.push_back(cli::extension_of_format(name));
            name.clear();
        }
        extensions.emplace_back(".png");
        return extensions;
    }
    return {".spl"};
}

// Removes options with their values.
Words without(const Words& words, const std::function<bool(const Words&, const std::string&)>& is) {
    Words left;
    bool goes = false;
    for (const std::string& word : words) {
        if (word.compare(0, 2, "--") == 0)
            goes = is(left, word);
        if (!goes)
            left.push_back(word);
    }
    return left;
}

Line line_of(long seed, long number, const LineFolder& folder) {
    std::seed_seq mixed = {seed, number};
    std::mt19937 generator(mixed);
    // Few options, because most lines with many options are refused.
    QByteArray bytes(8 + qsizetype(generator() % (generator() % 8 == 0 ? 24 : 8)), '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return char(generator()); });
    Choices choices(bytes);

    const auto& verbs = verbs_of_grammar();
    // Fits would take most of the time.
    std::size_t choice = choices.below(verbs.size());
    if (verbs[choice].first == "fit")
        choice = choices.below(verbs.size());
    const auto& [verb, options] = verbs[choice];
    const auto one_of = [&](const Words& words) { return words[choices.below(words.size())]; };
    const auto input = [&] { return one_of(choices.below(2) == 0 ? folder.sound : folder.inputs); };
    const Words extensions = extensions_of(options);
    Line line;
    const NameOf name_of = [&](const std::string& option, Choices&) -> std::string {
        if (option == "--dir")
            return one_of({"out", "new", "new/deep", "out/linked", "out/sub/", "in", "in/pipe",
                           "out/loop.txt", "out/old.txt"});
        if (option == "--files-from")
            return one_of({"in/list", "-", "in/none", "in/noise"});
        if (option == "--ribs")
            return one_of({"in/ribs.csv", "in/list", "in/noise", "in/pipe"});
        static const Words odd = {"-",         "out/link.txt",     "out/dangling.txt",
                                  "out/pipe",  "out/loop.txt",     "in/outline.dat",
                                  "out",       "none/new.txt",     "/dev/full",
                                  "/dev/null", "out/\x07\xff.txt", "in/sub/a.dat"};
        const std::size_t kind = choices.below(4);
        if (kind == 3)
            return choices.below(3) == 0 && line.words.size() > 1 ? line.words[1] : one_of(odd);
        return (kind == 0 ? "out/old" : "out/new") +
               (option == "--report" ? ".html" : one_of(extensions));
    };

    line.words = {verb};
    for (std::size_t i = choices.below(8) == 0 ? choices.below(4)
                         : verb == "compare"   ? 2
                                               : 1;
         i > 0; --i)
        line.words.push_back(input());
    const bool writes = std::any_of(options.begin(), options.end(),
                                    [](const Words& option) { return option[0] == "--output"; });
    if (writes && choices.below(8) > 0) {
        const std::string option = verb != "draw" && choices.below(4) == 0 ? "--dir" : "--output";
        line.words.push_back(option);
        line.words.push_back(name_of(option, choices));
        const std::string extension = std::filesystem::path(line.words.back()).extension().native();
        if (verb == "convert" && extension.size() > 1 && cli::is_drawing(extension.substr(1)))
            line.words.insert(line.words.end(), {"--chord", "200"});
    }
    if (choices.below(3) == 0 && (writes || verb == "check"))
        line.words.emplace_back("--force");
    line.words = with_options(line.words, options, choices, name_of);
    // Lines that are refused at once test little, and so do slow fits.
    if (generator() % 16 > 0)
        line.words = without(line.words, [&](const Words& before, const std::string& option) {
            return option == "--best" || option == "--help" || has(before, option);
        });
    if (generator() % 16 == 0) {
        const auto word = line.words.begin() + long(generator() % line.words.size());
        const char more = char(1 + generator() % 255);
        if (generator() % 2 == 0)
            line.words.erase(word);
        else if (more != '/' && word->substr(0, 1) != "/") // Stay inside the folder.
            word->insert(word->begin() + long(generator() % (word->size() + 1)), more);
    }
    line.input = folder.bytes(has(line.words, "--files-from") ? "in/list" : input());
    return line;
}

int memory_file(const QByteArray& bytes) {
    const int fd = ::memfd_create("stream", MFD_CLOEXEC);
    REQUIRE(fd >= 0 && ::write(fd, bytes.constData(), std::size_t(bytes.size())) == bytes.size());
    ::lseek(fd, 0, SEEK_SET);
    return fd;
}

QByteArray taken_from(int fd) {
    QByteArray bytes(::lseek(fd, 0, SEEK_END), '\0');
    REQUIRE(::pread(fd, bytes.data(), std::size_t(bytes.size()), 0) == bytes.size());
    ::close(fd);
    return bytes;
}

// Runs a line as a process.
Result run_program(std::string program, const Line& line) {
    const int streams[] = {memory_file(line.input), memory_file({}), memory_file({})};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    for (int fd = 0; fd < 3; ++fd)
        ::posix_spawn_file_actions_adddup2(&actions, streams[fd], fd);
    Words words = line.words;
    std::vector<char*> arguments = {program.data()};
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = 0;
    REQUIRE(::posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(),
                          environ) == 0);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    REQUIRE(::waitpid(process, &status, 0) == process);
    REQUIRE(WIFEXITED(status));
    ::close(streams[0]);
    return {WEXITSTATUS(status), taken_from(streams[1]), taken_from(streams[2])};
}

void require_output(const Line& line, const Result& result) {
    const bool to_out = has(line.words, "-");
    if (!to_out)
        REQUIRE(std::none_of(result.out.begin(), result.out.end(), [](char c) {
            return static_cast<unsigned char>(c) < ' ' && c != '\n';
        }));
    if (result.code != 2 && has(line.words, "--json") && !has(line.words, "--help") &&
        result.out.startsWith('['))
        REQUIRE(QJsonDocument::fromJson(result.out).isArray());
}

void run_lines(long seed, long end, const std::string& program, Progress& progress) {
    LineFolder folder;
    for (; progress.line < end; ++progress.line) {
        const Line line = line_of(seed, progress.line, folder);
        const Result result =
            program.empty() ? run_here(line.words, line.input) : run_program(program, line);
        require_decent(result);
        require_output(line, result);
        progress.written += folder.require_whole(line.words, result);
        ++progress.codes[result.code];
    }
}

void print(long seed, long number) {
    const LineFolder folder;
    const Line line = line_of(seed, number, folder);
    std::string text;
    for (const std::string& word : line.words)
        text += " '" + cli::shown(word) + "'";
    std::printf("line %ld of seed %ld:%s\n", number, seed, text.c_str());
}

// Waits for the process and kills it if it makes no progress. It has its own process group, so that
// its children end with it. Returns whether it succeeded.
bool watch(pid_t process, const Progress& progress) {
    const int fd = int(::syscall(SYS_pidfd_open, process, 0));
    REQUIRE(fd >= 0);
    pollfd ended = {fd, POLLIN, 0};
    long seen = -1;
    while (::poll(&ended, 1, patience * 1000) == 0) {
        if (progress.line == seen) {
            std::printf("nothing for %d s\n", patience);
            ::kill(-process, SIGKILL);
            break;
        }
        seen = progress.line;
    }
    ::close(fd);
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

int main(int argc, char* argv[]) {
    const std::string program = argc > 1 ? std::filesystem::absolute(argv[1]).native() : "";
    const long seed = number_of("AEROLITH_LINES_SEED", 1);
    const long first = number_of("AEROLITH_LINES_FIRST", 0);
    const long count = number_of("AEROLITH_LINES", program.empty() ? 2000 : 200);
    void* const shared = ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                                MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    REQUIRE(shared != MAP_FAILED);
    auto& progress = *new (shared) Progress;
    int findings = 0;
    for (progress.line = first; progress.line < first + count;) {
        std::fflush(nullptr);
        const pid_t process = ::fork();
        REQUIRE(process >= 0);
        if (process == 0) {
            ::setpgid(0, 0);
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            run_lines(seed, first + count, program, progress);
            ::_exit(0);
        }
        if (watch(process, progress))
            break;
        print(seed, progress.line++);
        if (++findings == 10)
            break;
    }
    std::printf("%ld lines from %ld of seed %ld: %ld with 0, %ld with 1, %ld with 2, "
                "%ld files written, %d findings\n",
                progress.line - first, first, seed, progress.codes[0].load(),
                progress.codes[1].load(), progress.codes[2].load(), progress.written.load(),
                findings);
    return findings == 0 ? 0 : 1;
}
