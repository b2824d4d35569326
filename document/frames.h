// SPDX-FileCopyrightText: Aerolith developers
// The frames of coordinates: chord units, the pixels of a widget, the view; and how a
// spline is brought from one to another.
#pragma once

#include "document/parastruct.h"

#include <QPointF>
#include <QPolygonF>
#include <QSize>

#include <optional>

/// The mapping between chord units (leading edge (0, 0), trailing edge (1, 0), y upwards)
/// and the logical pixels of a widget (y downwards).
struct ChordMapping {
    int width = 0;  ///< Width of the widget less 1, pixels.
    int height = 0; ///< Height of the widget less 1, pixels.
    int xc = 0;     ///< x of the leading edge, pixels.
    int yc = 0;     ///< y of the chord line, pixels.
    int chord = 0;  ///< Chord length, pixels; 0 in a widget of no width.

    /// The mapping of a widget of @p size: a tenth of the width on either side of the
    /// chord, which lies at half of the height.
    static ChordMapping of_size(QSize size);

    QPointF leading_edge() const { return QPointF(xc, yc); }
    QPointF trailing_edge() const { return QPointF(xc + chord, yc); }

    /// @p point from chord units to pixels.
    QPointF to_pixels(QPointF point) const {
        return QPointF(xc + point.x() * chord, yc - point.y() * chord);
    }

    /// @p pixel in chord units; not finite where the chord is 0.
    QPointF to_chord(QPointF pixel) const {
        return QPointF((pixel.x() - xc) / chord, -(pixel.y() - yc) / chord);
    }
};

/// The view of a widget: its zoom and shift between logical pixels and widget pixels.
struct View {
    double zoom = 1.0; ///< Not 0.
    QPointF shift;     ///< Widget pixels.

    /// @p point from logical to widget pixels.
    QPointF to_widget(QPointF point) const { return zoom * point + shift; }

    /// @p pixel from widget to logical pixels.
    QPointF to_logical(QPointF pixel) const {
        return QPointF((pixel.x() - shift.x()) / zoom, (pixel.y() - shift.y()) / zoom);
    }
};

/// A spline nearer to its trailing edge than this (pixels, Manhattan) is at its place.
constexpr double settled_distance = 1e-5;

/// Scales the control points about the origin such that @p curve becomes @p length wide,
/// and evaluates the curve again. The scaling moves the spline along; pin_to_trailing_edge()
/// moves it back.
/// @param curve the samples of the spline, in its unit; its least and greatest x are
///              looked for within -10000..10000. A width that is not finite or below 1e-6
///              scales nothing; an empty one counts as -20000
/// @param length the chord wanted, in the unit of the spline
void scale_to_chord(SplineFoil& spline, QPolygonF& curve, double length);

/// Moves the first control point to @p trailing_edge, all others with it, and scales by
/// scale_to_chord(), if it is farther away than @p tolerance (Manhattan).
/// @return whether it moved; false for a spline without points or at no finite place
bool pin_to_trailing_edge(SplineFoil& spline, QPolygonF& curve, QPointF trailing_edge,
                          double length, double tolerance = settled_distance);

/// The spline of a file in chord units, whatever widget it was drawn in: its first control
/// point at (1, 0), its 999 samples 1 wide, y upwards. Knots, degree and openings stay.
/// @return none for a spline without a curve, or one that never comes to rest there (a
///         point that is not finite, a curve of no width)
std::optional<SplineFoil> in_chord_units(SplineFoil spline);

/// @p spline (chord units) in the pixels of a widget. Knots, degree and openings stay.
SplineFoil in_pixels(SplineFoil spline, const ChordMapping& mapping);
