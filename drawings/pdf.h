// SPDX-FileCopyrightText: Aerolith developers
// Drawings as PDF.
#pragma once

#include "drawings/output.h"

#include <QByteArray>
#include <QString>

namespace drawings {

/// How a drawing is spread over pages.
enum class Tiling {
    none, ///< One page as large as the drawing.
    a4,   ///< Sheets of A4 across, to be joined.
};

struct PdfResult {
    QByteArray bytes;
    QString reason; ///< Why there are none; empty when there are.
};

/// The longest side of a page, mm: 14,400 points, the limit of many readers.
inline constexpr double pdf_limit = 5080.0;

/// The most sheets of one file.
inline constexpr int most_sheets = 2000;

/// @p scene as a PDF file at 1:1 with lines, curves and text, no pixels. The file names no
/// date and no program: the same scene gives the same bytes as long as the libraries and the
/// font are the same.
///
/// Sheets show 277 x 190 mm of the drawing each and 4 mm more on each side, where they
/// overlap. Crosses stand at the corners of the part that is a sheet's own; the crosses of
/// neighbours fall on each other. Row and column stand on each; empty ones are left out.
///
/// Refused with a reason: a page beyond pdf_limit, more than most_sheets, and where the
/// font is missing.
///
/// Needs a QGuiApplication, which may be of the offscreen platform. May be called from any
/// thread; one at a time works.
PdfResult pdf(const Scene& scene, const OutputSettings& settings = {},
              Tiling tiling = Tiling::none);

} // namespace drawings
