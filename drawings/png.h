// SPDX-FileCopyrightText: Aerolith developers
// Pictures as PNG.
#pragma once

#include "drawings/scene.h"

#include <QByteArray>
#include <QString>

namespace drawings {

struct PngResult {
    QByteArray bytes;
    QString reason; ///< Why there are none; empty when there are.
};

/// Pixels to the inch.
inline constexpr int png_resolution = 150;

/// Pixels to the millimetre.
inline constexpr double png_pixels = png_resolution / 25.4;

/// The longest side, pixels.
inline constexpr int png_limit = 8000;

/// @p scene, which has a page, in pixels at png_resolution; the page is rounded to whole ones.
/// Refused with a reason: sides beyond png_limit, and where the font or the memory is missing.
///
/// Needs a QGuiApplication, which may be of the offscreen platform. May be called from any
/// thread; one at a time works.
PngResult png(const Scene& scene);

} // namespace drawings
