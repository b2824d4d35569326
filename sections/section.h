// SPDX-FileCopyrightText: Aerolith developers
// A section as every verb takes it: one curve in the window's frame, upper side first.
#pragma once

#include "sections/curve.h"
#include "tables/table.h"

#include <QPointF>
#include <QPolygonF>
#include <QString>

#include <optional>

namespace sections {

/// A section in the window's frame: the trailing-edge point of its upper side at (1, 0), its
/// points (of a spline its 999 samples) 1 wide, y upwards. Lengths are fractions of that
/// width.
///
/// The upper side is the one of greater mean height above the chord line, which is the one
/// that runs first when the outline is counter-clockwise. So the result is the same for both
/// orders of an outline.
struct Section {
    Curve curve;                               ///< Upper side first.
    QPolygonF points;                          ///< What the window draws, in the same order.
    bool is_spline = false;                    ///< Whether the curvature jumps at knots.
    bool was_reversed = false;                 ///< The lower side came first.
    bool equal_sides = false;                  ///< Both mean heights are equal; order kept.
    int corners = 0;                           ///< Corners that the curve keeps.
    int straight_edges = 0;                    ///< Long edges that the curve keeps straight.
    double zero_line = 0.0;                    ///< Height of y = 0 of the file.
    tables::Kind kind = tables::Kind::section; ///< As the table was read.
    std::optional<tables::Openings> openings;  ///< None for a closed section (0 and 0).
};

/// A section, or the reason why there is none.
struct SectionResult {
    std::optional<Section> section;
    QString reason; ///< Empty when there is a section.
};

/// The section of a table that is readable().
SectionResult section_of_table(const tables::Table& table);

/// The section of a spline.
/// @param spline in chord units, y upwards
SectionResult section_of_spline(const SplineFoil& spline);

/// A curve cut in two at a place between its ends, both parts from the trailing edge to the
/// nose.
struct Sides {
    Curve upper;
    Curve lower;
};

/// The sides of @p curve (upper side first) on both sides of @p nose.
Sides sides_at(const Curve& curve, Place nose);

/// The middle between the two ends of the curve.
QPointF trailing_edge_of(const Curve& curve);

/// The place farthest from the middle of the trailing edge, where the tangent is
/// perpendicular to the chord line.
Place leading_edge_of(const Curve& curve);

/// The place of a vertical cut at @p x on one side: the one farthest up (@p outward 1) or
/// down (@p outward -1) where the cut meets the side more than once; none beside the side.
std::optional<Place> cut_at(const Curve& side, double x, double outward);

} // namespace sections
