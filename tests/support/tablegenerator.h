// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables from a seed: the same seed gives the same bytes on every machine.
#pragma once

#include <QByteArray>

class QRandomGenerator;

/// How far a generated table is from what a designer would save.
enum class TableKind {
    Clean,     ///< One of the three layouts, plain rows.
    Decorated, ///< With titles, brackets, tabs, decimal commas, CR LF, a byte-order mark.
    Dirty,     ///< With rows of random pieces of tables: signs, letters, stray bytes, CR, NUL.
    Noise,     ///< Random bytes.
    Wide,      ///< A decorated table in UTF-16 or UTF-32 with a byte-order mark.
};

/// A table of about @p rows lines.
QByteArray generated_table(TableKind kind, quint32 seed, int rows);

/// A line of random pieces, without a line end.
QByteArray generated_pieces(QRandomGenerator& random, int most);
