// SPDX-FileCopyrightText: Aerolith developers
// Information for the reader of a drawing: text, grain and scale.
#pragma once

#include "drawings/outline_p.h"
#include "drawings/scene.h"

namespace drawings {

/// Adds one line of text between the chord line and the upper side, or below the rib.
void put_text(Scene& scene, const FullSize& full, const QString& text, double flatness);

/// Adds the grain arrow at @p degrees from the chord line, in the rear half of the rib and within
/// it.
void put_grain(Scene& scene, const FullSize& full, double degrees, double flatness);

} // namespace drawings
