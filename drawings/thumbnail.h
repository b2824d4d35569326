// SPDX-FileCopyrightText: Aerolith developers
// Small pictures of sections for pages of HTML.
#pragma once

#include "sections/section.h"

#include <QByteArray>

namespace drawings {

/// An svg element of the outline of @p section, without head, names and axes, as wide as the page
/// wants it; some kilobytes. A user unit is a thousandth of the chord; the outline is closed, off
/// the curve by at most 5e-5 of the chord, and in the window's colour: blue for a table and red
/// for a spline. Lines are 1.5 pixels wide in every size. The ends of an intake are marked, a
/// filled circle where it begins and an empty one where it ends.
QByteArray outline_svg(const sections::Section& section);

} // namespace drawings
