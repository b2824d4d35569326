// SPDX-FileCopyrightText: Aerolith developers
// The outer edge of a rib: its outline with the allowances around it.
#pragma once

#include <QPolygonF>
#include <QString>

namespace drawings {

/// Widths added outside an outline, mm.
struct Allowances {
    double general = 0.0;
    double mouth = 0.0;
    double trailing_edge = 0.0;
};

/// The outline of a rib as straight lines, mm, counter-clockwise (y upwards).
struct Outline {
    QPolygonF points;      ///< From the upper end of the trailing edge to the lower one.
    QPointF first_tangent; ///< Unit vectors along the curve at its ends.
    QPointF last_tangent;
    qsizetype mouth_first = 0; ///< The mouth is the edges from this point
    qsizetype mouth_last = 0;  ///< to this one; none where both are the same.
};

struct CutEdge {
    QPolygonF points; ///< Closed, counter-clockwise, from the upper rear corner on.
    QString reason;   ///< Why there is none; empty when there is one.
    QString note;     ///< What does not fit the outline, otherwise empty.
};

/// The boundary of the outline together with everything within the allowance of an edge from that
/// edge, computed by the Clipper library. Corners are round. Behind the trailing edge the allowance
/// continues straight back on both sides, in the mean of their directions (along x where they are
/// more than 120 degrees apart), and ends square at its own width. A rib that extends farther back
/// than its trailing edge gets a round end there, and a note.
/// @param tolerance mm, above 0: greatest deviation of arcs from their circle
CutEdge cut_edge(const Outline& outline, const Allowances& allowances, double tolerance);

} // namespace drawings
