// SPDX-FileCopyrightText: Aerolith developers
// The measures of a section. docs/measures.md defines each of them, with a figure.
#pragma once

#include "sections/section.h"

#include <QPointF>
#include <QStringList>

#include <optional>
#include <vector>

namespace sections {

/// A greatest value and its station. For a camber below 1e-7 both are 0.
struct Peak {
    double size = 0.0;
    double station = 0.0;
};

/// Radius at the leading edge.
struct Nose {
    double radius = 0.0;
    double upper = 0.0; ///< For a spline: from the mean curvature of the upper side alone.
    double lower = 0.0; ///< For a spline: the same of the lower side. Otherwise both equal radius.
    std::optional<double> over_thickness_squared; ///< None without a thickness.
};

/// The intake between two vertical cuts of the lower side, and the rest of the surface.
struct Mouth {
    QPointF start;               ///< At O-1.
    QPointF end;                 ///< At O-2.
    double straight = 0.0;       ///< From one to the other.
    double along = 0.0;          ///< The same along the curve.
    double angle = 0.0;          ///< Of the straight line to the chord line, degrees, positive
                                 ///< where it rises towards the trailing edge.
    double panel_over_top = 0.0; ///< Along the curve from the trailing edge over the top to O-1.
    double panel_behind = 0.0;   ///< Along the curve from O-2 to the trailing edge.
};

/// A vertical cut.
struct Station {
    double x = 0.0;
    double upper = 0.0;
    double lower = 0.0;
    double thickness = 0.0;
    double upper_from_trailing_edge = 0.0; ///< Along the upper surface.
    double upper_from_nose = 0.0;
    double lower_from_trailing_edge = 0.0; ///< Along the lower surface.
    double lower_from_nose = 0.0;
};

/// Lengths, heights and stations are fractions of the window's chord, areas of its square, unless
/// stated otherwise. Measures that make no sense for a section are left out, and notes give the
/// reason.
struct Measures {
    QPointF leading_edge;     ///< The place farthest from trailing_edge.
    QPointF trailing_edge;    ///< The midpoint of the two ends.
    double chord = 0.0;       ///< From one to the other.
    double chord_angle = 0.0; ///< Of the chord line to the x axis, degrees.

    std::optional<Peak> thickness;         ///< Across the chord line; both fractions of that chord.
    std::optional<Peak> camber;            ///< Across it, with sign; both fractions of that chord.
    std::optional<Peak> thickness_upright; ///< Vertical, in the frame of the file.
    std::optional<Peak> camber_upright;    ///< Vertical, above y = 0 of the file, with sign.
    double height = 0.0;                   ///< As the window shows it: that of the points it draws.
    QPointF highest;
    QPointF lowest;

    std::optional<Nose> nose;
    double trailing_edge_gap = 0.0;
    std::optional<double> trailing_edge_angle; ///< Degrees.

    std::optional<double> area;
    std::optional<QPointF> centroid;

    double length = 0.0;       ///< Of the whole curve.
    double upper_length = 0.0; ///< From the trailing edge to the leading edge.
    double lower_length = 0.0;
    std::optional<Mouth> mouth;

    std::vector<Station> stations; ///< Those requested, in that order; see notes.
    QStringList notes;             ///< Why a measure is missing or needs a look.
};

/// Half the length of the arc, as a fraction of the chord line, whose mean curvature gives the nose
/// radius of a spline.
inline constexpr double nose_stretch = 0.005;

/// Fraction of the chord line at its end in which straight lines give the trailing-edge angle.
inline constexpr double tail_share = 0.02;

/// Measures @p section.
/// @param stations vertical cuts requested, fractions of the window's chord; one that meets only
///                 one side is left out with a note
Measures measure(const Section& section, const std::vector<double>& stations = {});

} // namespace sections
