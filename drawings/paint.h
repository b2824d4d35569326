// SPDX-FileCopyrightText: Aerolith developers
// Scenes through a painter of Qt, for PDF and PNG.
#pragma once

#include "drawings/scene.h"

#include <QFont>
#include <QMutex>
#include <QString>

#include <optional>

class QPainter;

namespace drawings {

/// The font of all texts, taken from its file whatever fonts the system prefers, without glyphs
/// of others; none where the file is missing. Needs a QGuiApplication.
std::optional<QFont> fixed_font();

/// Why there is none.
QString missing_font();

/// Held by whoever paints: fonts are shared by all threads.
QMutex& font_turn();

/// Paints the elements of @p scene in their order.
/// @param painter with a unit of 1 mm and y upwards
void paint(QPainter& painter, const Scene& scene, const QFont& font);

} // namespace drawings
