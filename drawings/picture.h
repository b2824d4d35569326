// SPDX-FileCopyrightText: Aerolith developers
// Pictures of sections, to look at: one over the other, with axes and a legend.
#pragma once

#include "drawings/scene.h"
#include "sections/section.h"

#include <QSizeF>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace drawings {

/// A section of a picture.
struct Pictured {
    QString name; ///< As the legend has it.
    sections::Section section;
};

/// The most sections of a picture: each has dashes and a width of its own.
inline constexpr std::size_t most_pictured = 24;

struct PictureOptions {
    /// mm; none: 240 wide and as high as the content.
    std::optional<QSizeF> size;
};

struct PictureResult {
    std::optional<Scene> scene; ///< With a page.
    QString reason;             ///< Why there is none; empty when there is one.
};

/// Draws 1 to most_pictured sections. The first table has the blue and the first spline the red
/// of the window, and further ones have other colours; all differ in dashes or width.
/// Openings are marked on the curve, a filled circle where the intake begins and an empty one
/// where it ends, and are named in the legend. No two texts overlap: names that are too long
/// are shortened in their middle.
///
/// Refused with a reason: what does not fit the size.
PictureResult picture(const std::vector<Pictured>& pictured, const PictureOptions& options = {});

} // namespace drawings
