// SPDX-FileCopyrightText: Aerolith developers
// Small pictures of sections for a report.
#pragma once

#include "drawings/html_picture.h"
#include "sections/curve.h"

#include <QPolygonF>

namespace cli {

/// An outline in any frame, moved and scaled to a width of 1, or to a height of 1 where that is
/// greater. Empty for one without extent.
drawings::Picture outline_picture(const QPolygonF& outline);

/// Two outlines in the window's frame, @p above drawn over @p below.
drawings::Picture pair_picture(const QPolygonF& below, const QPolygonF& above);

/// How far @p points lie from @p curve over the chord, each side by itself, positive outside of
/// the curve; drawn between the lines of what is allowed. Distances beyond 1.3 times of what is
/// allowed at the trailing edge are drawn there. Of more than 500 points every n-th one is taken.
/// @param points  an outline from the trailing edge round the nose, window's frame
/// @param curve   not empty, in the same order and frame
/// @param allowed stations in rising order with the distance allowed from each on, not falling;
///                at least two, the last one above 0
drawings::Picture distance_picture(const QPolygonF& points, const sections::Curve& curve,
                                   const QPolygonF& allowed);

} // namespace cli
