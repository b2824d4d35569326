// SPDX-FileCopyrightText: Aerolith developers
// The bytes of a spline file: the same items in the same order, written and read.
#include "document/parastruct.h"
#include "document/splinebytes.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

QDataStream& operator<<(QDataStream& stream, const ParaStruct& para) {
    const SplineFoil& spline = para.spline;
    stream << spline.airfoilName;
    stream << qint32(spline.num_pnt) << qint32(spline.num_knt);
    stream << qint32(spline.degree) << qint32(spline.order);
    for (const double knot : spline.b_knots)
        stream << knot;
    for (int i = 0; i < MAXNUMPOINTS; ++i)
        stream << spline.CP[i] << spline.rd_CP[i];
    return stream << spline.startVent << spline.endVent << spline.L_T_S;
}

QDataStream& operator>>(QDataStream& stream, ParaStruct& para) {
    SplineFoil& spline = para.spline;
    stream >> spline.airfoilName;
    for (int* number : {&spline.num_pnt, &spline.num_knt, &spline.degree, &spline.order}) {
        qint32 stored = 0;
        stream >> stored;
        *number = stored;
    }
    for (double& knot : spline.b_knots)
        stream >> knot;
    for (int i = 0; i < MAXNUMPOINTS; ++i)
        stream >> spline.CP[i] >> spline.rd_CP[i];
    return stream >> spline.startVent >> spline.endVent >> spline.L_T_S;
}

QByteArray spline_bytes(const ParaStruct& para) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_6);
    stream << para;
    return bytes;
}

void read_spline_bytes(const QByteArray& bytes, ParaStruct& para) {
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_4_6);
    stream >> para;
}
