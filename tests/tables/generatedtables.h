// SPDX-FileCopyrightText: Aerolith developers
// Known sections as tables of every layout with the oddities of real files, from a seed.
#pragma once

#include <QByteArray>
#include <QPolygonF>
#include <QString>

/// A table and what it means.
struct GeneratedTable {
    QByteArray bytes;
    QByteArray layout;           ///< As it was written.
    QByteArray oddities;         ///< What was done to it, as a text for messages.
    QPolygonF points;            ///< The outline that a correct reading gives.
    bool in_millimetres = false; ///< The chord is known only up to what the nose adds to it.
    bool damaged = false;        ///< A number was damaged: only a refusal is correct.
};

/// The same seed gives the same table on every machine.
GeneratedTable generated_outline_table(quint32 seed);
