// SPDX-FileCopyrightText: Aerolith developers
#include "cli/cliruns.h"

#include "cli/run.h"

#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <sys/mman.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::vector<std::string> words_from(const QByteArrayList& list) {
    std::vector<std::string> words;
    for (const QByteArray& word : list)
        words.push_back(word.toStdString());
    return words;
}

CliRun run_cli(const std::vector<std::string>& arguments, const QByteArray& input,
               const std::function<void(cli::Streams&)>& change) {
    CliRun run;
    cli::Streams streams;
    const int in = ::memfd_create("input", MFD_CLOEXEC);
    if (::write(in, input.constData(), std::size_t(input.size())) != input.size())
        qFatal("standard input cannot be made");
    ::lseek(in, 0, SEEK_SET);
    streams.in = in;
    const auto into = [](QByteArray& bytes) {
        return [&bytes](std::string_view text) {
            bytes.append(text.data(), qsizetype(text.size()));
            return 0;
        };
    };
    streams.out = into(run.out);
    streams.err = into(run.err);
    streams.processors = 2;
    if (change)
        change(streams);
    run.code = int(cli::run(arguments, streams));
    ::close(in);
    return run;
}

// QTemporaryDir needs UTF-8; here names can be any bytes.
FreshFolder::FreshFolder() : before(fs::current_path()) {
    if (!::mkdtemp(folder.data()))
        qFatal("no folder can be made");
    fs::current_path(folder);
}

FreshFolder::~FreshFolder() {
    fs::current_path(before);
    fs::remove_all(folder);
}

void put_file(const std::string& path, const QByteArray& bytes) {
    const fs::path folder = fs::path(path).parent_path();
    if (!folder.empty())
        fs::create_directories(folder);
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.constData(), bytes.size());
    file.close();
    QVERIFY2(file.good(), path.c_str());
}

QByteArray file_bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return {};
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    return QByteArray::fromStdString(text);
}

std::vector<std::string> files_here() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(".")) {
        if (!entry.is_directory())
            names.push_back(entry.path().native().substr(2));
    }
    std::sort(names.begin(), names.end());
    return names;
}

QByteArray plain_table() {
    return "A plain section\n"
           "1.00000  0.00000\n"
           "0.75000  0.05000\n"
           "0.50000  0.08000\n"
           "0.25000  0.07000\n"
           "0.05000  0.03000\n"
           "0.00000  0.00000\n"
           "0.05000 -0.02000\n"
           "0.25000 -0.04000\n"
           "0.50000 -0.04000\n"
           "0.75000 -0.02000\n"
           "1.00000  0.00000\n";
}
