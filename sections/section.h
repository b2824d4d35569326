// SPDX-FileCopyrightText: Aerolith developers
// A section in the form that all verbs use: one curve in the window's frame, upper side first.
#pragma once

#include "sections/curve.h"
#include "tables/table.h"

#include <QPointF>
#include <QPolygonF>
#include <QString>

#include <optional>

namespace sections {

/// A section in the window's frame: the trailing-edge point of its upper side at (1, 0), its points
/// (for a spline its 999 samples) 1 wide, y upwards. Lengths are fractions of that width.
///
/// The upper side is the one of greater mean height above the chord line, the first one of a
/// counter-clockwise outline. So both orders of an outline give the same result.
struct Section {
    Curve curve;                               ///< Upper side first.
    QPolygonF points;                          ///< What the window draws, in the same order.
    bool is_spline = false;                    ///< Then the curvature jumps at knots.
    bool was_reversed = false;                 ///< The lower side came first.
    bool equal_sides = false;                  ///< Both mean heights are equal; order kept.
    int corners = 0;                           ///< Corners that the curve keeps.
    int straight_edges = 0;                    ///< Long edges that the curve keeps straight.
    double zero_line = 0.0;                    ///< Height of y = 0 of the file.
    tables::Kind kind = tables::Kind::section; ///< As the table was read.
    std::optional<tables::Openings> openings;  ///< None for a closed section (0 and 0).
};

/// A section, or the reason for having none.
struct SectionResult {
    std::optional<Section> section;
    QString reason; ///< Empty when there is a section.
};

/// The section of a table that is readable().
SectionResult section_of_table(const tables::Table& table);

/// The section of a spline.
/// @param spline in chord units, y upwards
SectionResult section_of_spline(const SplineFoil& spline);

/// A curve divided at a place between its ends; both parts run from the trailing edge to the nose.
struct Sides {
    Curve upper;
    Curve lower;
};

/// The sides of @p curve (upper side first) on both sides of @p nose.
Sides sides_at(const Curve& curve, Place nose);

/// The midpoint of the two ends of the curve.
QPointF trailing_edge_of(const Curve& curve);

/// The place farthest from trailing_edge_of(); the tangent there is perpendicular to the chord
/// line.
Place leading_edge_of(const Curve& curve);

/// The place of a vertical cut at @p x on one side: the highest (@p outward 1) or lowest (@p
/// outward -1) where the cut meets the side more than once; none where it misses the side.
std::optional<Place> cut_at(const Curve& side, double x, double outward);

} // namespace sections
