// SPDX-FileCopyrightText: Aerolith developers
// Drawings as DXF R12 (AC1009), which all cutters read.
#pragma once

#include "drawings/output.h"

#include <QByteArray>

namespace drawings {

/// @p scene as a DXF file in ASCII: paths as polylines (lines for two points) that deviate from the
/// curve by at most the flatness, circles, points and texts, with coordinates to 1e-6 of the unit.
/// The header holds the unit and the true extents of the lines and, by text_box(), of the texts.
QByteArray dxf(const Scene& scene, const OutputSettings& settings = {});

/// @p text in the form of a DXF text: one line, non-ASCII characters as \U+XXXX (two of them beyond
/// U+FFFF), and characters that would start a control code escaped.
QByteArray dxf_text(const QString& text);

/// The most bytes in a text of R12.
inline constexpr int dxf_text_limit = 255;

} // namespace drawings
