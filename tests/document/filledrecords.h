// SPDX-FileCopyrightText: Aerolith developers
// Documents in which every member has a value of its own, and the comparison of all
// members to the last bit.
#pragma once

#include "document/parastruct.h"

/// A spline whose members differ from their start values and from those of every other
/// seed.
/// @param seed 1 or more
SplineFoil filled_spline(int seed);

/// A document of that kind.
ParaStruct filled_record(int seed);

/// A spline with uniform knots whose control points jump up and down from left to
/// right. The count is stored as it is, the points are at most 30.
SplineFoil zigzag(int count);

/// The name of a member that differs, empty for none. Names of files are compared also
/// for being null.
QString different_member(const SplineFoil& a, const SplineFoil& b);
QString different_member(const ParaStruct& a, const ParaStruct& b);
