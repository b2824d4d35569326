// SPDX-FileCopyrightText: Aerolith developers
// Pictures of sections for viewing: superimposed, with axes and a legend.
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
    QString name; ///< The name in the legend.
    sections::Section section;
};

/// The most sections of a picture: each has dashes and a width of its own.
inline constexpr std::size_t most_pictured = 24;

struct PictureOptions {
    /// mm; none: 240 wide and as high as the content.
    std::optional<QSizeF> size;
    bool nose = false;      ///< A plot of the noses, enlarged.
    bool deviation = false; ///< A plot of the distances from the first section, magnified.
    bool curvature = false; ///< A plot of the curvatures as combs.
};

/// Where a section is farthest from the first one of its picture.
struct Farthest {
    double distance = 0.0; ///< Fraction of the chord, above 0 where it is outside the first.
    double station = 0.0;  ///< x of the place.
    bool upper = true;     ///< The side of the place.
};

struct PictureResult {
    std::optional<Scene> scene; ///< With a page.
    QString reason;             ///< Why there is none; empty when there is one.
    /// With a plot of distances: of the second and all further sections, in their order.
    std::vector<Farthest> distances;
};

/// Draws 1 to most_pictured sections. The first table has the blue and the first spline the red
/// of the window, and further ones have other colours; all differ in dashes or width.
/// Openings are marked on the curve, by a filled circle where the intake begins and an open one
/// where it ends, and are listed in the legend. No two texts overlap: names that are too long are
/// shortened in the middle.
///
/// The plots are stacked. Distances are measured from places of the other sections, 0.0005 of the
/// chord apart, to the same side of the first section, and magnified 50 times along the line to the
/// foot. Combs have teeth perpendicular to the outline, outwards where it is convex, whose length
/// is proportional to the curvature; at the knots of a spline, where the curvature jumps, the comb
/// has a step.
///
/// Refused with a reason: content that does not fit the size.
PictureResult picture(const std::vector<Pictured>& pictured, const PictureOptions& options = {});

} // namespace drawings
