// SPDX-FileCopyrightText: Aerolith developers
// The folder in which random command lines run, and the checks of its files.
#pragma once

#include "fuzzing/commandlines.h"

#include <QByteArray>

#include <filesystem>
#include <map>
#include <string>

/// A fresh folder. It is the working folder of this process during the lifetime of the object. `in`
/// holds valid and broken section files, lists, links and a pipe. `out` holds old files, links and
/// a pipe.
class LineFolder {
public:
    LineFolder();
    LineFolder(const LineFolder&) = delete;
    LineFolder& operator=(const LineFolder&) = delete;
    ~LineFolder();

    /// Names of possible inputs: the valid ones, and all.
    Words sound;
    Words inputs;

    /// The bytes of the file @p name; null if there is none.
    QByteArray bytes(const std::string& name) const;

    /// Ends the process unless all written files are outputs of @p words and complete, and no other
    /// file has changed. Then restores the folder.
    /// @return the number of written files
    int require_whole(const Words& words, const Result& result);

private:
    // The file, link or folder at a path.
    struct Entry {
        std::filesystem::file_type type = std::filesystem::file_type::none;
        QByteArray bytes; // Content of a file, or target of a link.

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
