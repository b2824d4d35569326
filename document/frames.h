// SPDX-FileCopyrightText: Aerolith developers
// The coordinate frames (chord units, the pixels of a widget, the view) and the conversion of a
// spline between them.
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

    /// The mapping of a widget of @p size: the chord leaves a tenth of the width free on either
    /// side and lies at half the height.
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

/// A spline closer to its trailing edge than this (pixels, Manhattan) is in its place.
constexpr double settled_distance = 1e-5;

/// Scales the control points about the origin so that @p curve becomes @p length wide, and
/// evaluates the curve again. The scaling moves the spline along; pin_to_trailing_edge() moves it
/// back.
/// @param curve the samples of the spline, in its unit; their least and greatest x are looked for
///              within -10000..10000. A width that is not finite or is below 1e-6 scales nothing;
///              an empty curve has the width -20000
/// @param length the chord wanted, in the unit of the spline
void scale_to_chord(SplineFoil& spline, QPolygonF& curve, double length);

/// If the first control point is farther than @p tolerance (Manhattan) from @p trailing_edge, moves
/// the whole spline so that it lies there, and scales it by scale_to_chord().
/// @return whether it moved; false for a spline without points or whose place is not finite
bool pin_to_trailing_edge(SplineFoil& spline, QPolygonF& curve, QPointF trailing_edge,
                          double length, double tolerance = settled_distance);

/// The spline of a file in chord units, whatever the size of the widget it was drawn in: its first
/// control point at (1, 0), its 999 samples 1 wide, y upwards. Knots, degree and openings stay.
/// @return none for a spline without a curve, or for one that does not settle there (a point that
///         is not finite, a curve of no width)
std::optional<SplineFoil> in_chord_units(SplineFoil spline);

/// @p spline (chord units) in the pixels of a widget. Knots, degree and openings stay.
SplineFoil in_pixels(SplineFoil spline, const ChordMapping& mapping);
