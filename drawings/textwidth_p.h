// SPDX-FileCopyrightText: Aerolith developers
// The room that texts take in pictures, estimated without a font.
#pragma once

#include "drawings/scene.h"

#include <QRectF>
#include <QString>

namespace drawings {

/// The room that @p text takes, including descenders and accents: the widths of DejaVu Sans, and
/// its greatest width for non-ASCII characters. Most sans-serif fonts are narrower.
QRectF room_of(const Text& text);

/// The width of that room, mm.
/// @param height height of a capital letter, mm
double width_of(const QString& text, double height);

/// @p text with an ellipsis in place of its middle if it is wider than @p width; the ellipsis alone
/// if nothing else fits.
QString shortened(const QString& text, double height, double width);

/// @p text broken at blanks into lines of at most @p width; longer words are shortened().
QStringList lines_of(const QString& text, double height, double width);

} // namespace drawings
