// SPDX-FileCopyrightText: Aerolith developers
// What the picture is made of, changed one by one.
#pragma once

#include "frames.h"

#include <QPolygonF>

#include <vector>

constexpr int template_points = 200;

/// An outline as a table may give it: leaps, points far away and some that are no numbers.
QPolygonF damaged_outline();

/// One input of the picture, to be changed from a state that was painted several times.
struct NamedChange {
    const char* name;
    void (*change)(FramePair&);
};

/// Every input, and no change at all.
const std::vector<NamedChange>& changes();
