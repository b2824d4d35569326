// SPDX-FileCopyrightText: Aerolith developers
// The folder that random command lines run in, and what a run may do to it.
#pragma once

#include "fuzzing/commandlines.h"

#include <QByteArray>

#include <filesystem>
#include <map>
#include <string>

/// A fresh folder, the working folder of this process while it lives: `in` with sound and broken
/// section files, lists, links and a pipe, `out` with old files, links and a pipe.
class LineFolder {
public:
    LineFolder();
    LineFolder(const LineFolder&) = delete;
    LineFolder& operator=(const LineFolder&) = delete;
    ~LineFolder();

    /// Names that can be inputs: the sound ones, and all.
    Words sound;
    Words inputs;

    /// The bytes of the file @p name, null for none.
    QByteArray bytes(const std::string& name) const;

    /// Ends the process unless the files that @p words wrote are those they name, whole, and no
    /// other file has changed. Then everything is put back.
    /// @return how many files were written
    int require_whole(const Words& words, const Result& result);

private:
    // What is at a path.
    struct Entry {
        std::filesystem::file_type type = std::filesystem::file_type::none;
        QByteArray bytes; // Of a file, or where a link leads.

        bool operator==(const Entry& other) const {
            return type == other.type && bytes == other.bytes;
        }
    };
    using Tree = std::map<std::string, Entry>;

    void put(const std::string& name, const QByteArray& bytes) const;
    static Entry entry_of(const std::filesystem::path& path);
    static Tree tree();
    void put_back(const Tree& after) const;

    std::filesystem::path folder;
    Tree before;
};
