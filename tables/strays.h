// SPDX-FileCopyrightText: Aerolith developers
// Rows that stand among those of a section without being points.
#pragma once

#include "tables/layouts.h"

namespace tables {

/// Two counts before the rows, `61. 61.`: moves them from @p sheet to @p head.
void take_counts(Sheet& sheet, Head& head);

/// Removes rows at the ends that stand far outside the others, as a title of numbers or a last
/// row in another unit, and a closing row of zeros. Says so.
void remove_strays(Sheet& sheet, QList<Finding>& findings);

} // namespace tables
