// SPDX-FileCopyrightText: Aerolith developers
// Interrupts leave no half of a file: the saver writes a new file beside the old one, and would
// leave it there when the program ends meanwhile.
#pragma once

namespace cli {

/// From now on SIGINT, SIGTERM and SIGHUP, where they end the program, do so as soon as no file is
/// being written; a second one does at once. The program still ends by the signal.
void end_between_files();

/// While it lives a file is being written. After an interrupt none is made: the thread waits for
/// the end.
class FileBeingWritten {
public:
    FileBeingWritten();
    FileBeingWritten(const FileBeingWritten&) = delete;
    FileBeingWritten& operator=(const FileBeingWritten&) = delete;
    ~FileBeingWritten();
};

} // namespace cli
