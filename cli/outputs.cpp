// SPDX-FileCopyrightText: Aerolith developers
#include "cli/outputs.h"

#include "cli/interrupts.h"
#include "cli/shown.h"
#include "document/savefile.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <numeric>
#include <optional>
#include <set>
#include <system_error>
#include <tuple>
#include <utility>

#include <sys/stat.h>

namespace cli {

namespace fs = std::filesystem;

namespace {

using Identity = std::pair<dev_t, ino_t>;

// A path without its extension. The text behind the last point is an extension only if it holds a
// letter: the "0012" of "naca.0012" is part of the name.
std::string without_extension(const std::string& path) {
    constexpr std::size_t longest = 8;
    const std::size_t point = path.rfind('.');
    const std::size_t name = path.rfind('/') + 1;
    if (point == std::string::npos || point <= name || path.size() - point - 1 > longest)
        return path;
    const std::string extension = path.substr(point + 1);
    const auto is = [&](int (*kind)(int)) {
        return [kind](char c) { return kind(static_cast<unsigned char>(c)) != 0; };
    };
    const bool is_extension = std::all_of(extension.begin(), extension.end(), is(std::isalnum)) &&
                              std::any_of(extension.begin(), extension.end(), is(std::isalpha));
    return is_extension ? path.substr(0, point) : path;
}

std::string two_on_standard_output(const Options& options) {
    return options.output == "-" && options.json
               ? "--json and --output - cannot be combined; both use standard output"
               : std::string();
}

std::string name_outputs(const Options& options, const std::vector<Input>& inputs,
                         const std::string& extension, std::vector<std::string>& names) {
    if (options.output.empty() == options.folder.empty())
        return options.output.empty()
                   ? "no output given; use --output OUT for one file, --dir FOLDER for several"
                   : "--output and --dir cannot be combined";
    if (!options.output.empty()) {
        if (inputs.size() > 1)
            return "--output takes one input, not " + std::to_string(inputs.size()) +
                   "; use --dir FOLDER";
        names.assign(inputs.size(), options.output);
        return two_on_standard_output(options);
    }
    const std::string folder = options.folder.back() == '/' ? options.folder : options.folder + '/';
    names.reserve(inputs.size());
    for (const Input& input : inputs) {
        if (input.is_standard_input())
            return "standard input has no name for a file in --dir; use --output OUT";
        names.push_back(
            std::string(folder).append(without_extension(input.below)).append(extension));
    }
    struct stat status = {};
    if (::stat(options.folder.c_str(), &status) == 0 && !S_ISDIR(status.st_mode))
        return "--dir " + shown(options.folder) + " is not a folder";
    return {};
}

// Finds two outputs of the same name, or one that would have to be the folder of another.
std::string find_clash(const std::vector<Input>& inputs, const std::vector<std::string>& names) {
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::sort(order.begin(), order.end(), [&names](std::size_t a, std::size_t b) {
        return std::tie(names[a], a) < std::tie(names[b], b);
    });
    const auto same =
        std::adjacent_find(order.begin(), order.end(),
                           [&names](std::size_t a, std::size_t b) { return names[a] == names[b]; });
    if (same != order.end())
        return shown(inputs[same[0]].path) + " and " + shown(inputs[same[1]].path) +
               " would both be written to " + shown(names[*same]);
    for (auto i = order.begin(); i != order.end(); ++i) {
        const std::string folder = names[*i] + '/';
        const auto below =
            std::lower_bound(i, order.end(), folder, [&names](std::size_t a, const std::string& b) {
                return names[a] < b;
            });
        if (below != order.end() && names[*below].compare(0, folder.size(), folder) == 0)
            return shown(names[*i]) + " would be both a file and the folder of " +
                   shown(names[*below]);
    }
    return {};
}

// The identities of the inputs and of the list that names them.
std::set<Identity> identities_of(const Options& options, const std::vector<Input>& inputs) {
    std::set<Identity> identities;
    const auto add = [&identities](const std::string& name) {
        struct stat status = {};
        if (name != "-" && ::stat(name.c_str(), &status) == 0)
            identities.emplace(status.st_dev, status.st_ino);
    };
    add(options.files_from);
    for (const Input& input : inputs)
        add(input.path);
    return identities;
}

// Finds two missing outputs that would be the same file. Only hashes of the places are kept, to
// save memory.
std::string find_same_place(const std::vector<std::string>& names,
                            const std::vector<std::size_t>& missing) {
    if (missing.size() < 2)
        return {};
    Places places;
    std::vector<std::pair<std::size_t, std::size_t>> hashes;
    hashes.reserve(missing.size());
    for (const std::size_t i : missing)
        hashes.emplace_back(std::hash<std::string>()(places.place_of(names[i])), i);
    std::sort(hashes.begin(), hashes.end());
    for (std::size_t i = 1; i < hashes.size(); ++i) {
        const std::string& name = names[hashes[i].second];
        if (hashes[i].first == hashes[i - 1].first &&
            places.place_of(name) == places.place_of(names[hashes[i - 1].second]))
            return shown(name) + " is the same file as another output";
    }
    return {};
}

std::string find_existing(const Options& options, const std::vector<Input>& inputs,
                          const std::vector<std::string>& names) {
    std::optional<std::set<Identity>> read;
    std::set<Identity> written;
    std::vector<std::size_t> missing;
    std::size_t existing = 0;
    std::string first;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string& name = names[i];
        struct stat status = {};
        if (::stat(name.c_str(), &status) != 0) {
            missing.push_back(i);
            continue;
        }
        if (S_ISDIR(status.st_mode))
            return shown(name) + " is a folder";
        if (!S_ISREG(status.st_mode))
            continue;
        if (!read)
            read = identities_of(options, inputs);
        if (read->count({status.st_dev, status.st_ino}) > 0)
            return shown(name) + " is an input; choose another name";
        if (!written.emplace(status.st_dev, status.st_ino).second)
            return shown(name) + " is the same file as another output";
        if (existing++ == 0)
            first = name;
    }
    std::string same = find_same_place(names, missing);
    if (!same.empty() || options.force || existing == 0)
        return same;
    return shown(first) + (existing == 1 ? " exists; use --force to replace it"
                                         : " and " + std::to_string(existing - 1) +
                                               " more exist; use --force to replace them");
}

} // namespace

std::string Places::place_of(const std::string& name) {
    std::error_code error;
    fs::path end = fs::absolute(name, error);
    if (error)
        end = name;
    // A dangling link is followed as well: the file is created at its target.
    for (int step = 0; step < 40 && fs::is_symlink(end, error); ++step)
        end = end.parent_path() / fs::read_symlink(end, error);
    const fs::path folder = end.parent_path();
    if (folder != last || last.empty()) {
        last = folder;
        resolved = fs::weakly_canonical(folder, error);
        if (error)
            resolved = folder.lexically_normal();
    }
    return (resolved / end.filename()).native();
}

bool is_same_file(const std::string& a, const std::string& b) {
    std::error_code error;
    return fs::equivalent(a, b, error);
}

Outputs plan_outputs(const Options& options, const std::vector<Input>& inputs,
                     const std::string& extension) {
    Outputs outputs;
    outputs.refusal = name_outputs(options, inputs, extension, outputs.names);
    if (!outputs.refusal.empty() || options.output == "-")
        return outputs;
    outputs.refusal = find_clash(inputs, outputs.names);
    if (outputs.refusal.empty())
        outputs.refusal = find_existing(options, inputs, outputs.names);
    return outputs;
}

Outputs plan_one_output(const Options& options, const std::vector<Input>& inputs) {
    if (options.output.empty())
        return {{}, "no output given; use --output OUT"};
    Outputs outputs = {{options.output}, two_on_standard_output(options)};
    if (outputs.refusal.empty() && options.output != "-")
        outputs.refusal = find_existing(options, inputs, outputs.names);
    return outputs;
}

std::string write_output(const std::string& name, const QByteArray& bytes, bool make_folders) {
    std::error_code error;
    if (make_folders)
        fs::create_directories(fs::path(name).parent_path(), error);
    if (error)
        return "cannot make the folder: " + error.message();
    const FileBeingWritten guard;
    errno = 0;
    if (write_file_at(QByteArray::fromStdString(name), bytes))
        return {};
    const int reason = errno;
    return "cannot be written" +
           (reason == 0 ? std::string() : ": " + std::generic_category().message(reason));
}

} // namespace cli
