// SPDX-FileCopyrightText: Aerolith developers
// The bytes of a spline file.
#pragma once

#include "document/parastruct.h"

#include <QByteArray>

/// The spline file of @p para: 3404 bytes plus two for each character of its airfoilName.
QByteArray spline_bytes(const ParaStruct& para);

/// Reads a spline file of @p bytes into the spline of @p para. Nothing is checked: missing items
/// become 0, and bytes after the last item are ignored.
void read_spline_bytes(const QByteArray& bytes, ParaStruct& para);
