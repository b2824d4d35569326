// SPDX-FileCopyrightText: Aerolith developers
// Reading whole files of a bounded length.
#include "document/readfile.h"

#include <QFile>
#include <QFileInfo>

QByteArray read_file(const QString& name) {
    QFile file(name);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > longest_file)
        return QByteArray();
    return file.readAll();
}
