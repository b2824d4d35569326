// SPDX-FileCopyrightText: Aerolith developers
// Documents in which every member has a distinct value, and the comparison of all members bit for
// bit.
#pragma once

#include "document/parastruct.h"

/// A spline whose members differ from their initial values and from those of every other seed.
/// @param seed 1 or more
SplineFoil filled_spline(int seed);

/// A document of that kind.
ParaStruct filled_record(int seed);

/// @p before after reading nothing: the items of its spline that are stored are 0, and everything
/// else is kept.
ParaStruct nothing_read(const ParaStruct& before);

/// A spline with uniform knots whose control points zigzag from left to right. The count is stored
/// as it is; there are at most 30 points.
SplineFoil zigzag(int count);

/// The name of a member that differs, empty for none. For names of files, null and empty differ.
QString different_member(const SplineFoil& a, const SplineFoil& b);
QString different_member(const ParaStruct& a, const ParaStruct& b);
