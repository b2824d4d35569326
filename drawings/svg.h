// SPDX-FileCopyrightText: Aerolith developers
// Drawings as SVG 1.1 (https://www.w3.org/TR/SVG11/).
#pragma once

#include "drawings/output.h"

#include <QByteArray>

namespace drawings {

/// @p scene as an SVG file that prints 1:1: one user unit is one unit of @p settings, y points
/// downwards, and the drawing has a margin of 5 mm. Parabolas and cubics are kept, with coordinates
/// to 1e-9 of the unit. A layer becomes a group with the name of the layer, which drawing programs
/// show as a layer too. A picture has no layers, and coordinates to 1e-3.
QByteArray svg(const Scene& scene, const OutputSettings& settings = {});

} // namespace drawings
