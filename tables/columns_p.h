// SPDX-FileCopyrightText: Aerolith developers
// Third step of the reading: which columns are coordinates, and in what unit.
#pragma once

#include "tables/sheet_p.h"

#include <optional>
#include <vector>

namespace tables {

/// A sheet whose first column is x, with findings on how it was made.
struct Choice {
    Sheet sheet;
    QList<Finding> findings;
};

/// The possible readings of the columns, without point numbers and without a coordinate that is the
/// same in all rows. There are two where both make sense: a third column of zeros is either z of a
/// plane section or the lower side of a section with a flat bottom.
std::vector<Choice> column_choices(const Sheet& sheet);

/// Sets the unit by the width of x in @p scope: fractions of the chord for about 1, percent for
/// about 100, per mille for about 1000, millimetres for anything else. An error where x covers only
/// part of a chord. Does nothing for a width of 0.
std::optional<Finding> find_unit(Choice& choice, const Sheet& scope);

} // namespace tables
