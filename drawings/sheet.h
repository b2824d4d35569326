// SPDX-FileCopyrightText: Aerolith developers
// Several ribs on one sheet.
#pragma once

#include "drawings/scene.h"

#include <cstddef>
#include <vector>

namespace drawings {

/// The number of lines, curves, circles, points and texts in a scene.
std::size_t line_count(const Scene& scene);

/// The pieces in rows from left to right, in their order and not rotated. Rows are at most as wide
/// as the widest piece, and the pieces of a row are aligned at the top. The upper left corner is
/// (0, 0).
/// @param gap mm between the boxes of adjacent pieces
Scene on_one_sheet(const std::vector<Scene>& pieces, double gap, double flatness);

} // namespace drawings
