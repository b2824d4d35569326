// SPDX-FileCopyrightText: Aerolith developers
// Sections to compare and to measure with.
#pragma once

#include "editor/editspline.h"

#include <QPolygonF>

namespace baseline {

/// A closed section of @p points points in chord units.
/// @param thickness approximate thickness as a fraction of the chord
QPolygonF smooth_outline(int points, double thickness);

/// Gives the editor's document a spline of @p points control points along a section,
/// with uniform knots.
void place_spline(EditSpline& editor, int points);

} // namespace baseline
