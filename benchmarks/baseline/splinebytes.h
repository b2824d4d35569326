// SPDX-FileCopyrightText: Aerolith developers
// The bytes of a spline file, composed from the table of its items without QDataStream.
#pragma once

#include "document/parastruct.h"

#include <QByteArray>

#include <cstring>

namespace baseline {

/// Appends the lowest @p count bytes of @p value, the highest first.
inline void put_bytes(QByteArray& bytes, quint64 value, int count) {
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift & 0xff));
}

/// The file of @p spline: its name, four integers, knots, pairs of points and three numbers.
inline QByteArray spline_bytes(const SplineFoil& spline) {
    QByteArray bytes;
    const auto put = [&bytes](double value) {
        quint64 bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        put_bytes(bytes, bits, 8);
    };
    const QString& name = spline.airfoilName;
    put_bytes(bytes, name.isNull() ? 0xffffffffu : quint64(name.size()) * 2, 4);
    for (const QChar character : name)
        put_bytes(bytes, character.unicode(), 2);
    for (const int value : {spline.num_pnt, spline.num_knt, spline.degree, spline.order})
        put_bytes(bytes, static_cast<quint32>(value), 4);
    for (const double knot : spline.b_knots)
        put(knot);
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        for (const QPointF point : {spline.CP[i], spline.rd_CP[i]}) {
            put(point.x());
            put(point.y());
        }
    }
    for (const double value : {spline.startVent, spline.endVent, spline.L_T_S})
        put(value);
    return bytes;
}

} // namespace baseline
