// SPDX-FileCopyrightText: Aerolith developers
// What is written and drawn for people: text, grain and scale.
#pragma once

#include "drawings/outline.h"
#include "drawings/scene.h"

namespace drawings {

/// Adds one line of text between chord line and upper side, or below the rib.
void put_text(Scene& scene, const FullSize& full, const QString& text, double flatness);

/// Adds the arrow of the grain at @p degrees from the chord line, in the rear half of the
/// rib and within it.
void put_grain(Scene& scene, const FullSize& full, double degrees, double flatness);

} // namespace drawings
