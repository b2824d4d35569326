// SPDX-FileCopyrightText: Aerolith developers
// Drawings as DXF R12 (AC1009), which every cutter reads.
#pragma once

#include "drawings/output.h"

#include <QByteArray>

namespace drawings {

/// @p scene as a DXF file in ASCII: paths as polylines (two points: lines) off the curve by
/// at most the flatness, circles, points and texts, coordinates to 1e-6 of the unit. The
/// header has the true extents of the lines and, by text_box(), of the texts, and the unit.
QByteArray dxf(const Scene& scene, const OutputSettings& settings = {});

/// @p text as a DXF text holds it: one line, what is not ASCII as \U+XXXX (beyond U+FFFF two
/// of them), and characters that start a control code written such that they are shown.
QByteArray dxf_text(const QString& text);

/// The most bytes that a text of R12 has.
inline constexpr int dxf_text_limit = 255;

} // namespace drawings
