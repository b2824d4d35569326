// SPDX-FileCopyrightText: Aerolith developers
// How far two sections lie from each other.
#pragma once

#include "sections/section.h"

#include <array>
#include <cmath>

namespace sections {

/// Stations that part the chord into the ranges of a comparison, fractions of the chord.
inline constexpr std::array<double, 5> range_ends = {0.0, 0.05, 0.2, 0.6, 1.0};

/// Distances of many places of one curve from another.
struct Deviation {
    double greatest = 0.0; ///< Positive where the other section lies outside of the reference.
    double station = 0.0;  ///< x of the place of the greatest distance.
    double squares = 0.0;  ///< Integral of the squared distance along the curve.
    double length = 0.0;   ///< Length that it was taken over, 0 for none.

    /// Root mean square along the curve; 0 for no length.
    double root_mean_square() const { return length > 0.0 ? std::sqrt(squares / length) : 0.0; }
};

/// One side.
struct SideDeviation {
    Deviation whole;
    std::array<Deviation, range_ends.size() - 1> ranges; ///< By the station of the place.
};

/// All places of one section against the nearest places of the same side of the other one.
struct OneWay {
    SideDeviation upper;
    SideDeviation lower;

    Deviation greatest() const; ///< The side with the greater distance.
};

/// Lengths are fractions of the window's chord.
struct Comparison {
    OneWay to_reference;   ///< From places of the other section.
    OneWay from_reference; ///< From places of the reference.

    double upper_length = 0.0; ///< Along the surface, other less reference.
    double lower_length = 0.0;
    double length = 0.0;

    double scale = 1.0; ///< By what the other section was made larger to align it.
    double angle = 0.0; ///< By what it was turned to the left, degrees.

    /// The greatest distance of both ways, without sign.
    double greatest() const;
};

/// Compares @p other with @p reference, both in the window's frame.
///
/// Every piece is sampled at least 8 times and every 0.002 of the chord, and the greatest
/// distance is searched from there. A foot may lie beyond the leading edge by 0.05 of the
/// chord, never on the other side of a thin trailing edge.
/// @param align whether @p other is first scaled, turned and moved such that its chord line
///              becomes the one of @p reference
Comparison compare(const Section& reference, const Section& other, bool align = false);

} // namespace sections
