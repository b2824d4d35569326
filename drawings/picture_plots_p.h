// SPDX-FileCopyrightText: Aerolith developers
// The plots of a picture.
#pragma once

#include "drawings/picture.h"
#include "drawings/plot_p.h"

#include <vector>

namespace drawings {

/// Radius of the circles at the ends of an intake, mm.
inline constexpr double opening_radius = 0.9;

/// The looks of the sections of a picture, in their order.
std::vector<Look> looks_of(const std::vector<Pictured>& pictured);

/// The outline of a section, closed.
Path outline_of(const sections::Section& section);

/// The box around the content in chord units, with a margin and a minimum height.
QRectF with_margin(const Scene& content);

/// The sections superimposed.
Plot sections_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks);

/// The noses as large as the plot allows, with the points of tables.
Plot nose_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks);

/// The first section, and the others with their distances from it magnified.
/// @param distances receives the greatest distance of each of the others
Plot deviation_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks,
                    std::vector<Farthest>& distances);

/// The curvature of each section as teeth on its outline.
Plot curvature_plot(const std::vector<Pictured>& pictured, const std::vector<Look>& looks);

} // namespace drawings
