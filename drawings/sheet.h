// SPDX-FileCopyrightText: Aerolith developers
// Several ribs on one sheet.
#pragma once

#include "drawings/scene.h"

#include <cstddef>
#include <vector>

namespace drawings {

/// How many lines, curves, circles, points and texts a scene has.
std::size_t line_count(const Scene& scene);

/// The pieces beside and below each other, in their order and unturned: rows from left to
/// right, at most as wide as the widest piece, the tops of a row at one height. The upper left
/// corner is (0, 0).
/// @param gap mm between the boxes of two pieces
Scene on_one_sheet(const std::vector<Scene>& pieces, double gap, double flatness);

} // namespace drawings
