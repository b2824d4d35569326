// SPDX-FileCopyrightText: Aerolith developers
// An outline in the form of a paragliding profile: its frame, its order, rows at the openings.
#pragma once

#include "tables/table.h"

namespace tables {

/// An outline with its upper side first, the nose at (0, 0) and (1, 0) on or between its ends.
struct Profile {
    Table table;         ///< With the openings in this frame.
    qsizetype nose = 0;  ///< The row of least x.
    qsizetype begin = 0; ///< The row of the opening O-1.
    qsizetype end = 0;   ///< The row of the opening O-2.
    /// Notes on what was changed, or the error that says why there is no profile: no openings, or
    /// openings that are out of order or off the lower side.
    QList<Finding> findings;

    bool ok() const; ///< Whether no finding is an error.
};

/// @p table as a profile: rotated and scaled where it has another frame, with a row inserted at an
/// opening that has none, on the cubic through the four rows around it. A row within half a unit of
/// the last decimal counts as one at the opening.
/// @param table at least 6 finite points
Profile profile_of(const Table& table, int decimals);

} // namespace tables
