// SPDX-FileCopyrightText: Aerolith developers
// What the writers of SVG and PDF share.
#pragma once

#include "drawings/scene.h"

#include <QRectF>

#include <optional>
#include <utility>

namespace drawings {

inline constexpr double line_width = 0.2; ///< mm.
inline constexpr double dot_width = 1.0;  ///< mm.

/// Colours of the layers as #rrggbb, readable on white, in the order of Layer.
inline constexpr const char* layer_colours[layer_count] = {
    "#c00000", "#000000", "#a000a0", "#007000", "#606060", "#0050a0", "#000000", "#0050a0"};

/// The page of a picture; for any other scene its box (mm, whole numbers) with a margin of 5 mm.
/// top() is the least y.
QRectF page_box(const Scene& scene, double flatness);

/// The look of an element: its own, or that of its layer.
Look look_of(const Element& element);

/// The range of parameters, from 0 at @p a to 1 at @p b, in which the straight line from @p a to @p
/// b is in the box; none where the line misses the box.
std::optional<std::pair<double, double>> part_within(const QRectF& box, QPointF a, QPointF b);

/// Whether the straight line from @p a to @p b and the box have a point in common.
bool meet(const QRectF& box, QPointF a, QPointF b);

} // namespace drawings
