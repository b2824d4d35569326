// SPDX-FileCopyrightText: Aerolith developers
// The command line program, run in the process of the test.
#pragma once

#include "cli/streams.h"

#include <QByteArray>
#include <QByteArrayList>

#include <functional>
#include <string>
#include <vector>

/// What a run left.
struct CliRun {
    int code = -1;
    QByteArray out;
    QByteArray err;
};

/// Words as run_cli() takes them.
std::vector<std::string> words_from(const QByteArrayList& list);

/// Runs the program with a terminal width of 80 on two threads.
/// @param input  what standard input holds
/// @param change may change the streams before the run
CliRun run_cli(const std::vector<std::string>& arguments, const QByteArray& input = {},
               const std::function<void(cli::Streams&)>& change = {});

/// The working folder of this process while it lives: a fresh one.
class FreshFolder {
public:
    FreshFolder();
    FreshFolder(const FreshFolder&) = delete;
    FreshFolder& operator=(const FreshFolder&) = delete;
    ~FreshFolder();

private:
    std::string folder = "/tmp/aerolith-XXXXXX";
    std::string before;
};

/// Writes a file, its folders too. Fails the test when it fails.
void put_file(const std::string& path, const QByteArray& bytes);

/// The bytes of a file, null for none.
QByteArray file_bytes(const std::string& path);

/// All files below the working folder, sorted, hidden ones too.
std::vector<std::string> files_here();

/// A section of eleven points as x and y columns, with a title.
QByteArray plain_table();
