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
    QByteArray oddities;         ///< What was done to it, for people.
    QPolygonF points;            ///< The outline that a right reading gives.
    bool in_millimetres = false; ///< The chord is known but for what the nose carries beyond it.
    bool damaged = false;        ///< A number was spoilt: only a refusal is right.
};

/// The same seed gives the same table on every machine.
GeneratedTable generated_outline_table(quint32 seed);
