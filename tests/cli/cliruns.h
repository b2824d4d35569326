// SPDX-FileCopyrightText: Aerolith developers
// Runs the command line program in the process of the test.
#pragma once

#include "cli/streams.h"

#include <QByteArray>
#include <QByteArrayList>

#include <functional>
#include <string>
#include <vector>

/// The result of a run.
struct CliRun {
    int code = -1;
    QByteArray out;
    QByteArray err;
};

/// Converts words for run_cli().
std::vector<std::string> words_from(const QByteArrayList& list);

/// Runs the program with a terminal width of 80 on two threads.
/// @param input  content of standard input
/// @param change can change the streams before the run
CliRun run_cli(const std::vector<std::string>& arguments, const QByteArray& input = {},
               const std::function<void(cli::Streams&)>& change = {});

/// A fresh folder. It is the working folder of this process during the lifetime of the object.
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

/// Writes a file and creates its folders. A failure fails the test.
void put_file(const std::string& path, const QByteArray& bytes);

/// The bytes of a file; null if there is none.
QByteArray file_bytes(const std::string& path);

/// All files in the working folder and its subfolders, including hidden ones, sorted.
std::vector<std::string> files_here();

/// A section of eleven points as columns x and y, with a title.
QByteArray plain_table();
