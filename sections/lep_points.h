// SPDX-FileCopyrightText: Aerolith developers
// A paragliding profile with given counts: all profiles of a wing have the same.
#pragma once

#include "tables/table.h"

namespace sections {

/// Rows of a profile: from the trailing edge over the upper side round the nose to O-1; from O-1 to
/// O-2; from O-2 to the trailing edge. The shared rows count in both.
struct LepPoints {
    int upper = 0;
    int intake = 0;
    int lower = 0;
};

/// @p table in the frame of a profile, with the number of rows that these counts require. Each
/// piece between the trailing edge, the nose, O-1 and O-2 gets rows on the curve through the points
/// (table_curve()), spaced like those of the table; if the table already has these counts, its rows
/// stay where they are. Notes are added to the findings, or an error with the reason: no openings,
/// counts that leave a piece without rows, more than 500 rows.
tables::Table with_lep_points(const tables::Table& table, const LepPoints& counts, int decimals);

} // namespace sections
