// SPDX-FileCopyrightText: Aerolith developers
// The inputs of the picture, changed one by one.
#pragma once

#include "frames.h"

#include <QPolygonF>

#include <vector>

constexpr int template_points = 200;

/// An outline as a damaged table may give it: jumps, points far away, and NaN.
QPolygonF damaged_outline();

/// A change of one input of the picture, after several paints without a change.
struct NamedChange {
    const char* name;
    void (*change)(FramePair&);
};

/// Every input, and no change at all.
const std::vector<NamedChange>& changes();
