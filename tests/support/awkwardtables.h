// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables that may break a reader, each with the size of its outline.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// One awkward table.
struct AwkwardTable {
    const char* name; ///< Usable as a file name and as the tag of a test row.
    QByteArray bytes; ///< The file.
    int points;       ///< Points of its outline in file units, counted by hand.
};

/// All awkward tables; no name occurs twice.
const QList<AwkwardTable>& awkward_tables();

/// Each layout with 100,000 rows, generated on each call: some megabytes.
QList<AwkwardTable> endless_tables();

/// The table of this name; an empty one if there is none.
AwkwardTable awkward_table(const QByteArray& name);

/// Writes every table to @p folder as "<name>.dat".
/// @return whether all bytes were written
bool write_awkward_tables(const QString& folder);
