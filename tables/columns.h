// SPDX-FileCopyrightText: Aerolith developers
// Third step of the reading: which columns are coordinates, and in what unit.
#pragma once

#include "tables/sheet.h"

#include <optional>
#include <vector>

namespace tables {

/// A sheet whose first column is x, with what was done to it.
struct Choice {
    Sheet sheet;
    QList<Finding> findings;
};

/// The readings of the columns: without point numbers, without a coordinate that is the same in
/// all rows. More than one where both make sense: a third column of zeros is z of a plane
/// section, or the lower side of one with a flat bottom.
std::vector<Choice> column_choices(const Sheet& sheet);

/// Sets the unit by the width of x in @p scope: about 1 fractions of the chord, about 100
/// percent, about 1000 per mille, all else millimetres. An error where x covers a part of a
/// chord only. Does nothing for a width of 0.
std::optional<Finding> find_unit(Choice& choice, const Sheet& scope);

} // namespace tables
