// SPDX-FileCopyrightText: Aerolith developers
// Rows among those of a section that are not points.
#pragma once

#include "tables/layouts_p.h"

namespace tables {

/// Two counts before the rows, `61. 61.`: moves them from @p sheet to @p head.
void take_counts(Sheet& sheet, Head& head);

/// Removes and reports rows at the ends that lie far outside the others, such as a title of numbers
/// or a last row in another unit, and a closing row of zeros.
void remove_strays(Sheet& sheet, QList<Finding>& findings);

} // namespace tables
