// SPDX-FileCopyrightText: Aerolith developers
// A section as one exact curve: consecutive pieces from the first trailing-edge point round the
// nose to the last.
#pragma once

#include "sections/piece.h"

#include <QPointF>
#include <QPolygonF>
#include <QString>

#include <optional>
#include <vector>

class SplineFoil;

namespace sections {

/// A place on a curve. The end of a piece and the start of the next one are the same
/// point; they differ in tangent and curvature where the curve has a corner or a knot.
struct Place {
    int piece = 0;  ///< Index of the piece.
    double u = 0.0; ///< Parameter of the piece, 0..1.
};

/// The place of a curve nearest to a point.
struct Foot {
    Place place;
    QPointF point;         ///< The place.
    double distance = 0.0; ///< Distance from the given point.
};

/// Consecutive pieces. Coordinates and lengths are in the unit of the points. Functions that take a
/// Place need a non-empty curve and a place on it.
class Curve {
public:
    Curve() = default;

    /// @param pieces  each begins where the previous one ends
    /// @param corners whether the joint at the end of piece i is a corner; one fewer than pieces
    explicit Curve(std::vector<Piece> pieces, std::vector<bool> corners = {});

    bool is_empty() const { return curve_pieces.empty(); }
    const std::vector<Piece>& pieces() const { return curve_pieces; }

    /// Whether the curve has a corner where piece @p i ends; false for the last piece.
    bool has_corner_after(int i) const;

    Place begin() const { return {0, 0.0}; }
    Place end() const { return {int(curve_pieces.size()) - 1, 1.0}; }

    QPointF position(Place place) const;
    QPointF tangent(Place place) const;  ///< Unit vector, see Piece::tangent().
    double curvature(Place place) const; ///< With sign, see Piece::curvature().

    double length() const; ///< Of the whole curve.

    /// Length along the curve from its start to @p place.
    double length_to(Place place) const;

    /// The place at @p distance along the curve from its start, clamped to the curve.
    Place place_at(double distance) const;

    /// The place nearest to @p q; the first of several. The curve must not be empty.
    Foot nearest(QPointF q) const;

    /// The place farthest from @p q; the first of several.
    Place farthest(QPointF q) const;

    /// The place with the greatest coordinate along @p direction; the first of several.
    Place extreme(QPointF direction) const;

    /// All places, in the order of the curve, whose coordinate along @p direction is
    /// @p value. A place that touches the value within @p tolerance counts once; a straight piece
    /// at that value is represented by its ends.
    std::vector<Place> crossings(QPointF direction, double value, double tolerance = 1e-12) const;

    /// Area enclosed by the curve and the straight line from its end to its start: positive when it
    /// runs counter-clockwise (y upwards).
    double signed_area() const;

    /// Centroid of that area; not finite where the area is 0.
    QPointF centroid() const;

    Curve reversed() const;

    /// The stretch between two places; @p from must not come after @p to.
    Curve part(Place from, Place to) const;

    /// The curve scaled and rotated by the complex factor @p rotation, then moved by @p shift.
    Curve mapped(QPointF rotation, QPointF shift) const;

    /// The curve as straight lines that deviate from it by at most @p flatness.
    QPolygonF polyline(double flatness) const;

private:
    std::vector<Piece> curve_pieces;
    std::vector<bool> joint_corners;
    std::vector<double> starts; // length before each piece, then the total length
    std::vector<QRectF> boxes;  // of each piece
};

/// A curve, or the reason for having none.
struct CurveResult {
    Curve curve;
    QString reason;         ///< Empty when there is a curve.
    int corners = 0;        ///< Corners that were kept.
    int straight_edges = 0; ///< Of tables: long edges kept straight.
};

/// The curve of a quadratic spline, one piece for each knot span. The inner spans are parabolas,
/// whose ends are values of the polar form at a knot (C. de Boor, "A Practical Guide to Splines",
/// ch. IX). The first and last are straight lines, since the normalised sum has only two basis
/// functions there.
///
/// A control point whose two knots are less than 0.0002 apart is a corner.
///
/// Refused with a reason: a degree other than 2, fewer than two control points, decreasing
/// knots, knots that do not run from 0 to 1, knots that break the curve apart, and numbers that are
/// not finite.
/// @param spline control points in any unit of length
CurveResult spline_curve(const SplineFoil& spline);

/// The curve through the points of a table, in their order: cubics with continuous
/// curvature over the chord length (as in C. de Boor, ch. IV), with a parabola at each free
/// end. The curve is split at corners, and long edges are straight lines.
///
/// A corner is a point where the direction turns by more than 30 degrees, and by more than ten
/// times as much (twenty times near the point farthest from the ends) as it turns in the same sense
/// at either neighbour. A long edge is one of more than 0.05 of the greatest extent and more than
/// six times either neighbouring edge, or one between two corners.
///
/// Points that repeat the previous one are dropped. Refused with a reason: fewer than three points,
/// and points that are not finite or exceed 1e6.
CurveResult table_curve(const QPolygonF& points);

} // namespace sections
