// SPDX-FileCopyrightText: Aerolith developers
// The plots that a picture is made of.
#pragma once

#include "drawings/picture.h"
#include "drawings/plot.h"

#include <vector>

namespace drawings {

/// Radius of the circles at the ends of an intake, mm.
inline constexpr double opening_radius = 0.9;

/// How the sections of one picture look, in their order.
std::vector<Look> looks_of(const std::vector<Pictured>& pictured);

/// The outline of a section, closed.
Path outline_of(const sections::Section& section);

/// The box around a content in chord units with a margin, and not too flat.
QRectF with_margin(const Scene& content);

/// The sections one over the other.
Plot sections_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks);

/// Their noses as large as the plot holds them, with the points of tables.
Plot nose_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks);

/// The first section, and the others with their distances from it stretched.
/// @param distances receives the greatest distance of each of the others
Plot deviation_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks,
                    std::vector<Farthest>& distances);

/// The curvature of each section as teeth on its outline.
Plot curvature_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks);

} // namespace drawings
