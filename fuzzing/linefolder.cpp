// SPDX-FileCopyrightText: Aerolith developers
#include "fuzzing/linefolder.h"

#include "cli/outputs.h"
#include "fuzzing/fuzzing.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <fstream>
#include <set>

#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

QByteArray bytes_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    QByteArray bytes(qsizetype(fs::file_size(path)), '\0');
    REQUIRE(file.read(bytes.data(), bytes.size()));
    return bytes;
}

// The values of these options: the words behind their names, and the rest of a word that begins
// with their letter.
Words values_of(const Words& words, const Words& options) {
    Words values;
    for (const std::string& option : options) {
        const std::string letter = {'-', option[2]};
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (i > 0 && words[i - 1] == option)
                values.push_back(words[i]);
            if (words[i].size() > 2 && words[i].compare(0, 2, letter) == 0)
                values.push_back(words[i].substr(2));
        }
    }
    return values;
}

bool has(const Words& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::set<std::string> places_of(const Words& names) {
    std::set<std::string> places;
    cli::Places resolved;
    for (const std::string& name : names) {
        if (!name.empty())
            places.insert(
                resolved.place_of(name.back() == '/' ? name.substr(0, name.size() - 1) : name));
    }
    return places;
}

bool is_below(const std::string& place, const std::string& folder) {
    return place == folder || place.compare(0, folder.size() + 1, folder + '/') == 0;
}

bool is_in_one_of(const std::string& place, const std::set<std::string>& folders) {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const std::string& folder) { return is_below(place, folder); });
}

bool is_whole_svg(const QByteArray& bytes) {
    QXmlStreamReader reader(bytes);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

// Whether a written file is complete. Its content determines its format.
void require_whole_file(const std::string& name, const QByteArray& bytes) {
    if (bytes.startsWith("<?xml"))
        REQUIRE(is_whole_svg(bytes));
    else if (bytes.startsWith("<!DOCTYPE html>"))
        REQUIRE(bytes.endsWith("</html>\n"));
    else if (bytes.startsWith("%PDF-"))
        REQUIRE(bytes.trimmed().endsWith("%%EOF"));
    else if (bytes.startsWith("\x89PNG"))
        REQUIRE(bytes.endsWith(QByteArray("IEND\xae\x42\x60\x82")));
    else if (bytes.startsWith("  0\nSECTION\n"))
        REQUIRE(bytes.endsWith("  0\nEOF\n"));
    else {
        const Result read = run_here({"check", "--json", name}, {});
        REQUIRE(bytes.endsWith('\n') || read.out.contains("\"layout\":\"spl\""));
        REQUIRE(read.code <= 1);
        REQUIRE(!read.out.contains("\"verdict\":\"bad\""));
    }
}

} // namespace

LineFolder::LineFolder() {
    std::string name = (fs::temp_directory_path() / "aerolith-lines-XXXXXX").native();
    REQUIRE(::mkdtemp(name.data()));
    folder = name;
    fs::current_path(folder);
    for (const char* made : {"in/sub", "out/sub"})
        fs::create_directories(made);

    const auto add = [this](const std::string& input, const QByteArray& bytes) {
        put("in/" + input, bytes);
        inputs.push_back("in/" + input);
    };
    for (const auto& [kind, extension] :
         std::map<std::string, std::string>{{"tables", ".dat"}, {"spline", ".spl"}}) {
        for (const fs::directory_entry& entry :
             fs::directory_iterator(fs::path(SOURCES) / "fuzzing/corpus" / kind))
            add(entry.path().filename().native() + extension, bytes_of(entry.path()));
    }
    const QByteArray table = bytes_of("in/outline.dat");
    const QByteArray spline = bytes_of(SOURCES "/samples/ram-air-intake.spl");
    add("empty", {});
    add("half-a-table.dat", table.left(table.size() / 2));
    add("half-a-spline.spl", spline.left(spline.size() / 2));
    QByteArray noise;
    for (int i = 0; i < 4096; ++i)
        noise.append(char(i * i % 251));
    add("noise", noise);
    add("\x1b[2J\xff\n.dat", table);
    add("list", "in/outline.dat\n"
                "in/ram.spl\n"
                "in/none\n");
    add("ribs.csv", "ram.spl,200,R1,2,yes\noutline.dat,150\n");
    add("sub/a.dat", table);
    add("sub/b.spl", spline);
    add("ram.spl", spline);
    REQUIRE(::mkfifo("in/pipe", 0600) == 0 && ::mkfifo("out/pipe", 0600) == 0);
    for (const auto& [link, target] :
         std::map<std::string, std::string>{{"in/link.dat", "outline.dat"},
                                            {"in/dangling", "none"},
                                            {"in/loop", "loop"},
                                            {"out/link.txt", "old.txt"},
                                            {"out/dangling.txt", "target.txt"},
                                            {"out/loop.txt", "loop.txt"},
                                            {"out/linked", "sub"}})
        fs::create_symlink(target, link);
    for (const char* old : {"txt", "dat", "spl", "svg", "html", "dxf"})
        put(std::string("out/old.") + old, "old");
    std::sort(inputs.begin(), inputs.end());
    for (const char* more : {"in/pipe", "in/link.dat", "in/dangling", "in/loop", "in/sub",
                             "in/sub/", "in/none", "-", "out", "in/pipe/x", "in/./outline.dat"})
        inputs.emplace_back(more);
    sound = {"in/outline.dat", "in/ram.spl", "in/halves.dat",      "in/symmetric.spl",
             "in/profile.dat", "in/sub",     "in/half-contour.dat"};
    before = tree();
}

LineFolder::~LineFolder() {
    fs::current_path("/");
    fs::remove_all(folder);
}

QByteArray LineFolder::bytes(const std::string& name) const {
    const auto found = before.find("./" + name);
    return found == before.end() ? QByteArray() : found->second.bytes;
}

void LineFolder::put(const std::string& name, const QByteArray& bytes) const {
    std::ofstream file(folder / name, std::ios::binary);
    file.write(bytes.constData(), bytes.size());
    file.close();
    REQUIRE(file.good());
}

LineFolder::Entry LineFolder::entry_of(const fs::path& path) {
    const fs::file_type type = fs::symlink_status(path).type();
    if (type == fs::file_type::symlink)
        return {type, QByteArray::fromStdString(fs::read_symlink(path).native())};
    return {type, type == fs::file_type::regular ? bytes_of(path) : QByteArray()};
}

LineFolder::Tree LineFolder::tree() {
    Tree found;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator("."))
        found[entry.path().native()] = entry_of(entry.path());
    return found;
}

void LineFolder::put_back(const Tree& after) const {
    for (const auto& [name, entry] : after) {
        const auto old = before.find(name);
        if (old == before.end() || !(old->second == entry))
            fs::remove_all(name);
    }
    for (const auto& [name, entry] : before) {
        const auto now = after.find(name);
        if (now == after.end() || !(now->second == entry))
            put(name, entry.bytes);
    }
}

int LineFolder::require_whole(const Words& words, const Result& result) {
    const Tree after = tree();
    if (after == before)
        return 0;
    REQUIRE(result.code != 2);
    // Links are resolved before anything is restored.
    const std::set<std::string> files = places_of(values_of(words, {"--output", "--report"}));
    const Words folders = values_of(words, {"--dir"});
    const std::set<std::string> below = places_of(folders);
    Words read;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (!has({"--output", "--report", "--dir"}, words[i - 1]))
            read.push_back(words[i]);
    }
    const std::set<std::string> given = places_of(read);
    cli::Places resolved;
    int written = 0;
    for (const auto& [name, entry] : before)
        REQUIRE(after.count(name) == 1);
    for (const auto& [name, entry] : after) {
        const auto old = before.find(name);
        if (old != before.end() && old->second == entry)
            continue;
        const std::string place = resolved.place_of(name);
        if (entry.type == fs::file_type::directory) {
            REQUIRE(old == before.end());
            REQUIRE(is_in_one_of(place, below) ||
                    std::any_of(below.begin(), below.end(),
                                [&](const std::string& made) { return is_below(made, place); }));
            continue;
        }
        REQUIRE(entry.type == fs::file_type::regular);
        REQUIRE(files.count(place) == 1 || is_in_one_of(place, below));
        if (files.count(place) == 0)
            REQUIRE(has({".txt", ".dat", ".csv", ".json", ".spl", ".dxf", ".svg", ".pdf"},
                        fs::path(name).extension().native()));
        if (old != before.end()) {
            REQUIRE(has(words, "--force"));
            REQUIRE(old->second.type == fs::file_type::regular && !is_in_one_of(place, given));
        }
        require_whole_file(name, entry.bytes);
        ++written;
    }
    put_back(after);
    return written;
}
