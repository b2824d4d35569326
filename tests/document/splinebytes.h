// SPDX-FileCopyrightText: Aerolith developers
// The bytes of a spline file, composed from the table of its items without QDataStream.
#pragma once

#include "document/parastruct.h"

#include <QByteArray>

#include <cstring>

inline void put_bytes(QByteArray& bytes, quint64 value, int count) {
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift & 0xff));
}

inline void put_int(QByteArray& bytes, int value) {
    put_bytes(bytes, static_cast<quint32>(value), 4);
}

inline void put_double(QByteArray& bytes, double value) {
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    put_bytes(bytes, bits, 8);
}

inline void put_point(QByteArray& bytes, QPointF value) {
    put_double(bytes, value.x());
    put_double(bytes, value.y());
}

inline void put_text(QByteArray& bytes, const QString& text) {
    put_bytes(bytes, text.isNull() ? 0xffffffffu : quint64(text.size()) * 2, 4);
    for (const QChar character : text)
        put_bytes(bytes, character.unicode(), 2);
}

inline QByteArray spline_bytes(const SplineFoil& spline) {
    QByteArray bytes;
    put_text(bytes, spline.airfoilName);
    put_int(bytes, spline.num_pnt);
    put_int(bytes, spline.num_knt);
    put_int(bytes, spline.degree);
    put_int(bytes, spline.order);
    for (const double knot : spline.b_knots)
        put_double(bytes, knot);
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        put_point(bytes, spline.CP[i]);
        put_point(bytes, spline.rd_CP[i]);
    }
    put_double(bytes, spline.startVent);
    put_double(bytes, spline.endVent);
    put_double(bytes, spline.L_T_S);
    return bytes;
}
