// SPDX-FileCopyrightText: Aerolith developers
// Drawings as PDF.
#pragma once

#include "drawings/output.h"

#include <QByteArray>
#include <QString>

namespace drawings {

/// How a drawing is divided into pages.
enum class Tiling {
    none, ///< One page as large as the drawing.
    a4,   ///< A4 sheets in landscape, to be joined.
};

struct PdfResult {
    QByteArray bytes;
    QString reason; ///< Why there are none; empty when there are.
};

/// The longest side of a page, mm: 14,400 points, the limit of many readers.
inline constexpr double pdf_limit = 5080.0;

/// The most sheets of one file.
inline constexpr int most_sheets = 2000;

/// @p scene as a PDF file at 1:1 with lines, curves and text, not pixels. The file names neither
/// date nor program: the same scene gives the same bytes as long as the libraries and the font are
/// the same.
///
/// Each sheet shows 277 x 190 mm of the drawing, plus an overlap of 4 mm on each side. Crosses mark
/// the corners of the part without the overlap; those of adjacent sheets coincide. Each sheet
/// states its row and column; empty sheets are omitted.
///
/// Refused with a reason: a page beyond pdf_limit, more than most_sheets, and a missing font.
///
/// Needs a QGuiApplication, which may use the offscreen platform. May be called from any thread;
/// calls are serialised.
PdfResult pdf(const Scene& scene, const OutputSettings& settings = {},
              Tiling tiling = Tiling::none);

} // namespace drawings
