// SPDX-FileCopyrightText: Aerolith developers
// Texts as lines, for plotters without fonts.
#pragma once

#include "drawings/scene.h"

#include <QString>

namespace drawings {

/// Replaces the texts of @p scene by lines: digits, capitals, '.', '-', '/' and the blank.
/// Small letters are drawn as capitals. Each character has the width assumed by text_box().
/// @return all other characters, each once; they are omitted
QString stroke_texts(Scene& scene);

} // namespace drawings
