// SPDX-FileCopyrightText: Aerolith developers
// Scenes drawn by QPainter, for PDF and PNG.
#pragma once

#include "drawings/scene.h"

#include <QFont>
#include <QMutex>
#include <QString>

#include <optional>

class QPainter;

namespace drawings {

/// The font of all texts, loaded from its file whatever fonts the system prefers, without glyphs of
/// other fonts; none where the file is missing. Needs a QGuiApplication.
std::optional<QFont> fixed_font();

/// The reason when the font is missing.
QString missing_font();

/// To be locked while painting: all threads share the fonts.
QMutex& font_turn();

/// Paints the elements of @p scene in their order.
/// @param painter with a unit of 1 mm and y upwards
void paint(QPainter& painter, const Scene& scene, const QFont& font);

} // namespace drawings
