// SPDX-FileCopyrightText: Aerolith developers
// Checks of the shape of an outline that was read: typing errors, and outlines that are not
// sections.
#pragma once

#include "tables/table.h"

#include <QList>

namespace sections {

/// The findings about the outline of a readable table, ordered by line. All lengths in the texts
/// are fractions of the chord.
///
/// Doubts: a row off the smooth line through its neighbours, a height of 0 between others, x
/// running backwards in one row, ends more than 0.03 and a quarter of the height (or 0.02 in x)
/// apart, sides that cross at the trailing edge, a row after the end of the outline. Notes:
/// repeated rows, a nose whose rows leave more than 0.003 of its shape undetermined. Errors: a
/// second nose, a second run, sides that cross before the last 5 % of the chord, an end in another
/// unit. Sides that touch or overlap by less than 1e-5 do not cross. Flat ribs and single-skin ribs
/// have no sides that could cross.
QList<tables::Finding> shape_findings(const tables::Table& table);

} // namespace sections
