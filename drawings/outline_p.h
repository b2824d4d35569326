// SPDX-FileCopyrightText: Aerolith developers
// The curve of a section at full size, and places on it.
#pragma once

#include "drawings/cut_p.h"
#include "drawings/rib.h"
#include "drawings/scene.h"

#include "sections/curve.h"

#include <optional>
#include <vector>

namespace drawings {

/// A place on the curve, mm.
struct OnCurve {
    QPointF point;
    QPointF outward; ///< Unit vector perpendicular to the curve.
};

/// A stretch of the curve, as lengths from its start, mm, from <= to.
struct Stretch {
    double from = 0.0;
    double to = 0.0;
};

/// The whole curve as a path, one segment for each piece.
Path path_of(const sections::Curve& curve);

class FullSize {
public:
    FullSize(const sections::Section& section, double chord);

    /// The whole curve, upper side first, mm.
    const sections::Curve& curve() const { return whole; }

    /// The mouth, from its end near the nose to its rear end; none for a section without openings,
    /// or if the lower side does not reach them.
    const std::optional<Stretch>& mouth() const { return mouth_stretch; }

    /// The seam: closed, or two pieces where the mouth is open.
    std::vector<Path> stitches(Intake intake) const;

    /// The closed seam as straight lines that deviate from the curve by at most @p flatness.
    Outline outline(Intake intake, double flatness) const;

    /// The place at @p distance along the curve from its start.
    OnCurve at(double distance) const;

    /// The distance along the curve of a vertical cut at @p x (mm) on one side; none where the cut
    /// misses the side.
    std::optional<double> cut(bool upper, double x) const;

    QPointF leading_edge() const;
    QPointF trailing_edge() const; ///< The midpoint of its ends.
    double leading_edge_distance() const;

private:
    sections::Curve stretch(double from, double to) const;

    sections::Curve whole;
    sections::Sides upright; // sides of vertical cuts, from the trailing edge
    std::optional<Stretch> mouth_stretch;
};

} // namespace drawings
