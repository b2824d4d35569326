// SPDX-FileCopyrightText: Aerolith developers
// How much room texts take in pictures, known without a font.
#pragma once

#include "drawings/scene.h"

#include <QRectF>
#include <QString>

namespace drawings {

/// The room that @p text takes, descenders and accents included: the widths of DejaVu Sans, and
/// for what is not ASCII the greatest that it has. Most fonts without serifs are narrower.
QRectF room_of(const Text& text);

/// The width of that, mm.
/// @param height of a capital letter, mm
double width_of(const QString& text, double height);

/// @p text with an ellipsis in place of its middle where it is wider than @p width; the ellipsis
/// alone where nothing else fits.
QString shortened(const QString& text, double height, double width);

/// @p text broken at blanks into lines of at most @p width; longer words are shortened().
QStringList lines_of(const QString& text, double height, double width);

} // namespace drawings
