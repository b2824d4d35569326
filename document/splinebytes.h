// SPDX-FileCopyrightText: Aerolith developers
// The bytes of a spline file.
#pragma once

#include "document/parastruct.h"

#include <QByteArray>

/// The spline file of @p para: 3404 bytes plus two a character of its airfoilName.
QByteArray spline_bytes(const ParaStruct& para);

/// Reads a spline file of @p bytes into the spline of @p para. Nothing is checked: items
/// that are missing become 0, and bytes behind the last item are left alone.
void read_spline_bytes(const QByteArray& bytes, ParaStruct& para);
