// SPDX-FileCopyrightText: Aerolith developers
// Interrupts wait until files are written. Each file is first written to a temporary file beside
// the old one, and an interrupt would leave that file behind.
#pragma once

namespace cli {

/// Makes SIGINT, SIGTERM and SIGHUP end the program as soon as no file is being written. A second
/// signal ends it at once. The program still ends by the signal. Ignored signals stay ignored.
void end_between_files();

/// A file is being written during the lifetime of this object. After an interrupt the constructor
/// does not return: the program is about to end.
class FileBeingWritten {
public:
    FileBeingWritten();
    FileBeingWritten(const FileBeingWritten&) = delete;
    FileBeingWritten& operator=(const FileBeingWritten&) = delete;
    ~FileBeingWritten();
};

} // namespace cli
