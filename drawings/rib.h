// SPDX-FileCopyrightText: Aerolith developers
// A rib at full size: cutting line, seam and marks.
#pragma once

#include "drawings/scene.h"
#include "sections/section.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace drawings {

/// How a rib crosses the mouth of its intake.
enum class Intake {
    curve,    ///< It follows the curve.
    straight, ///< It takes the straight line from one end of the mouth to the other.
    open,     ///< It does not: the seam is in two pieces, which cannot be cut out.
};

/// The form of a mark.
enum class MarkShape {
    point,  ///< A point in the middle of the allowance.
    circle, ///< A circle there, with a quarter of the allowance as radius, at most 2.5 mm.
    notch,  ///< A line from the outer edge to the middle of the allowance.
};

/// A mark where a vertical cut meets one side.
struct StationMark {
    bool upper = false;
    double percent = 0.0; ///< Of the chord, in the window's frame.
};

/// The most marks along the surface.
inline constexpr int most_marks = 10000;

/// The most characters in a text.
inline constexpr int longest_text = 1000;

struct RibOptions {
    double chord = 0.0;     ///< mm, above 0 and at most 100,000.
    double allowance = 0.0; ///< mm, 0..1000, like the next two; 0: the edge is the curve itself.
    std::optional<double> allowance_trailing_edge; ///< Default: allowance.
    std::optional<double> allowance_mouth;         ///< Default: allowance.
    Intake intake = Intake::curve;
    double mark_step = 0.0; ///< mm along the surface, at least 1; 0 for none.
    std::vector<StationMark> mark_at;
    MarkShape mark = MarkShape::notch;
    std::optional<double> grain; ///< Degrees from the chord line, positive nose up.
    bool mirror = false;         ///< Nose to the right.
    QString text;                ///< Empty for none.
    double flatness = 0.01;      ///< mm, 0.001..1.
};

struct RibResult {
    std::optional<Scene> scene;
    QString reason;    ///< Why there is none; empty when there is one.
    QStringList notes; ///< What needs a look.
};

/// The rib of @p section, as wide as the chord, nose left, upper side up. The origin is below or
/// above the nose, on the line y = 0 of the window's frame.
///
/// - CUT: the outer edge, closed; see cut_edge(). Without allowances it is the curve itself.
/// - STITCH: the curve, closed by a straight line between the ends of the trailing edge.
/// - MOUTH: a line at each end of the mouth, across the allowance, or 3 mm inwards.
/// - MARKS: at every step along the surface from the trailing edge, and at the given stations.
///   Steps on the upper panel go round the nose to the mouth, those on the lower panel to the
///   mouth; without a mouth both end at the leading edge. Marks lie in the allowance; without one a
///   notch extends 3 mm inwards, and a circle has a radius of 1 mm.
/// - GRAIN: an arrow with two heads. CHORD: from the leading edge to the trailing edge.
/// - TEXT: one line of 2.5 to 15 mm between the chord line and the upper side, as large as fits;
///   below the rib where there is not enough room.
///
/// Refused with a reason: an open mouth, or an allowance for the mouth, where the section has none;
/// an open mouth with allowances; more than most_marks; and a text longer than longest_text.
RibResult rib(const sections::Section& section, const RibOptions& options);

/// Adds a bar of 100 mm with its text below everything, at the left.
void add_scale_bar(Scene& scene, double flatness);

/// @p pattern with {name}, {chord} (mm, without trailing zeros) and {n} filled in.
QString filled_text(const QString& pattern, const QString& name, double chord, int n);

} // namespace drawings
