// SPDX-FileCopyrightText: Aerolith developers
// New points for a paragliding profile, so that all profiles of a wing have the same counts.
#pragma once

#include "sections/curve.h"
#include "tables/table.h"

#include <QString>

#include <vector>

namespace cli {

/// A profile with its counts, or the reason why there is none.
struct CountedProfile {
    tables::Table table; ///< Upper side first.
    QString reason;      ///< Empty when there is a profile.
};

/// Spreads new points over the curve of a table: as many as @p counts says from the trailing edge
/// to O-1, from there to O-2, and from there to the trailing edge, both ends of each stretch
/// counted.
/// @param table  with openings; its title and layout stay
/// @param curve  through its points, in their order
/// @param counts three numbers; the middle one is 1 where the openings are the same
CountedProfile with_counts(const tables::Table& table, const sections::Curve& curve,
                           const std::vector<int>& counts);

} // namespace cli
