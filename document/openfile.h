// SPDX-FileCopyrightText: Aerolith developers
// Spline files and the file dialogs.
#pragma once

#include "document/parastruct.h"

#include <QObject>
#include <QString>

/// Asks for file names and reads and writes spline files.
class myOpenFile : public QObject {
    Q_OBJECT

public:
    explicit myOpenFile(QObject* parent = nullptr);

    QString mydir;       ///< Folder in which every dialog starts.
    ParaStruct* p;       ///< The document.
    ParaStruct* outdata; ///< The record that files are read into: also the document.

    /// Asks for an existing file.
    /// @param caption title of the dialog
    /// @param ext     name patterns, separated by blanks
    /// @return the path, or a null string when the dialog was cancelled
    QString OpenFileName(QString caption, QString ext);

    /// @name Dialogs
    /// Each returns the chosen path, or a null string when it was cancelled.
    /// @{
    QString DialogReadFromFile();       ///< For a coordinate table to open.
    QString DialogReadSplineFromFile(); ///< For a spline file to open.
    QString DialogWriteToFile();        ///< For a coordinate table to save.
    QString DialogWriteSplineToFile();  ///< For a spline file to save.
    /// @}

    /// Writes the document's spline to the file @p fileName, without any message.
    /// @return 1 when every byte is known to have been written, otherwise 0
    int WriteParaStream(QString fileName);

    /// Reads the spline file @p fileName into the document. A missing file is reported in a message
    /// box. A file that cannot be opened, is not a regular file, exceeds the limit of read_file()
    /// or the available memory, or is too short, gives zeros for whatever could not be read.
    /// @return 0 for an empty name or a missing file, otherwise 1
    int ReadParaStream(QString fileName);
};
