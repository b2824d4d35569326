// SPDX-FileCopyrightText: Aerolith developers
// A frame with axes and its content.
#pragma once

#include "drawings/scene.h"

#include <QRectF>
#include <QString>

namespace drawings {

/// A frame of a picture. Both axes have the same scale.
struct Plot {
    QString title;
    Scene content; ///< In chord units, with looks; radii and widths in mm. Texts are not allowed.
    QRectF range;  ///< The least that must be visible, chord units; top() is the least y.

    /// The height that shows the range at a width of @p width, mm: from one eighth to three
    /// quarters of the width.
    double natural_height(double width) const;
};

/// Heights of letters, mm.
/// @{
inline constexpr double title_height = 2.5;
inline constexpr double label_height = 2.1;
/// @}

inline constexpr double title_step = 4.8; ///< mm from one line of a title to the next.
inline constexpr double gutter = 15.0;    ///< mm left of a frame, for the labels of its y axis.
inline constexpr double tick_room = 6.5;  ///< mm below a frame, for the labels of its x axis.

/// Draws @p plot with its axes into the frame (mm), with the range in the middle. Parts outside the
/// frame are clipped.
void put_plot(Scene& scene, const Plot& plot, const QRectF& frame);

} // namespace drawings
