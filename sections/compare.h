// SPDX-FileCopyrightText: Aerolith developers
// Distances between two sections.
#pragma once

#include "sections/section.h"

#include <array>
#include <cmath>

namespace sections {

/// Stations that divide the chord into the ranges of a comparison, fractions of the chord.
inline constexpr std::array<double, 5> range_ends = {0.0, 0.05, 0.2, 0.6, 1.0};

/// Distances of sampled places of one curve from another curve.
struct Deviation {
    double greatest = 0.0; ///< Positive where the other section is outside the reference.
    double station = 0.0;  ///< x at the greatest distance.
    double squares = 0.0;  ///< Integral of the squared distance along the curve.
    double length = 0.0;   ///< Length of the integral's range, 0 for none.

    /// Root mean square along the curve; 0 without a length.
    double root_mean_square() const { return length > 0.0 ? std::sqrt(squares / length) : 0.0; }
};

/// One side.
struct SideDeviation {
    Deviation whole;
    std::array<Deviation, range_ends.size() - 1> ranges; ///< By the station of the sampled place.
};

/// Distances of the places of one section from the same side of the other.
struct OneWay {
    SideDeviation upper;
    SideDeviation lower;

    Deviation greatest() const; ///< The side with the greater distance.
};

/// Lengths are fractions of the window's chord.
struct Comparison {
    OneWay to_reference;   ///< From places of the other section.
    OneWay from_reference; ///< From places of the reference.

    double upper_length = 0.0; ///< Along the surface, other minus reference.
    double lower_length = 0.0;
    double length = 0.0;

    double scale = 1.0; ///< Factor by which the other section was scaled to align it.
    double angle = 0.0; ///< Angle by which it was rotated counter-clockwise, degrees.

    /// The greatest distance in either direction, without sign.
    double greatest() const;
};

/// Compares @p other with @p reference, both in the window's frame.
///
/// Every piece is sampled at least 8 times and every 0.002 of the chord, and the greatest distance
/// is refined from there. A foot may lie up to 0.05 of the chord beyond the leading edge, but never
/// on the other side of a thin trailing edge.
/// @param align whether to scale, rotate and move @p other first so that its chord line coincides
///              with that of @p reference
Comparison compare(const Section& reference, const Section& other, bool align = false);

} // namespace sections
