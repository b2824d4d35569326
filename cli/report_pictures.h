// SPDX-FileCopyrightText: Aerolith developers
// Small pictures of sections for a report.
#pragma once

#include "drawings/html_picture.h"
#include "sections/curve.h"

#include <QPolygonF>

namespace cli {

/// An outline in any frame, moved and scaled until the larger of its width and height is 1. Empty
/// for an outline without extent.
drawings::Picture outline_picture(const QPolygonF& outline);

/// Two outlines in the window's frame, @p above drawn over @p below.
drawings::Picture pair_picture(const QPolygonF& below, const QPolygonF& above);

/// The distances of @p points from @p curve along the chord, one line per side, positive outside
/// the curve, between the limits @p allowed. Distances are clipped at 1.3 times the limit at the
/// trailing edge. Of more than 500 points only every n-th one is drawn.
/// @param points  an outline from the trailing edge round the nose, in the window's frame
/// @param curve   not empty, in the same order and frame
/// @param allowed stations in rising order, each with the limit from there on. Limits do not fall.
///                At least two; the last limit is positive
drawings::Picture distance_picture(const QPolygonF& points, const sections::Curve& curve,
                                   const QPolygonF& allowed);

} // namespace cli
