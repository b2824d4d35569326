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

/// Pixels per inch.
inline constexpr int png_resolution = 150;

/// Pixels per millimetre.
inline constexpr double png_pixels = png_resolution / 25.4;

/// The longest side, pixels.
inline constexpr int png_limit = 8000;

/// @p scene, which has a page, in pixels at png_resolution; the page is rounded to whole pixels.
/// Refused with a reason: sides beyond png_limit, a missing font, and too little memory.
///
/// Needs a QGuiApplication, which may use the offscreen platform. May be called from any thread;
/// calls are serialised.
PngResult png(const Scene& scene);

} // namespace drawings
