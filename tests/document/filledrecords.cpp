// SPDX-FileCopyrightText: Aerolith developers
// Documents in which every member has a distinct value.
#include "filledrecords.h"

#include "support/exactcompare.h"

#include <algorithm>
#include <iterator>

SplineFoil filled_spline(int seed) {
    SplineFoil spline;
    spline.airfoilName = QStringLiteral("/folder/spline %1.spl").arg(seed);
    spline.num_pnt = 7 + seed;
    spline.num_knt = 10 + seed;
    spline.degree = 2 + seed;
    spline.order = 3 + seed;
    for (int i = 0; i < MAXNUMKNOTS; ++i) {
        spline.b_knots[i] = seed + i / 7.0;
        spline.b_multi_knot[i] = seed * 1000 + i;
    }
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        spline.CP[i] = QPointF(seed + i / 3.0, seed - i / 9.0);
        spline.rd_CP[i] = QPointF(-seed - i / 11.0, seed * 5.0 + i);
    }
    spline.startVent = seed + 0.125;
    spline.endVent = seed + 0.25;
    spline.L_T_S = seed + 0.375;
    return spline;
}

ParaStruct filled_record(int seed) {
    ParaStruct record;
    record.AirFoilName = QStringLiteral("a%1").arg(seed);
    Foil_Pair pair;
    pair.i1 = seed;
    pair.i2 = seed + 1;
    pair.H = seed / 3.0;
    record.FoilPairList = {pair};
    for (int i = 0; i < 8; ++i)
        record.LineInd[i] = seed * 100 + i;
    record.thickness = seed / 7.0;
    record.NoseIndex = 400 + seed;
    record.TopIndexDw = 600 + seed;
    record.TopIndexUp = 200 + seed;
    record.spline = filled_spline(seed);
    record.pureFileName = QStringLiteral("b%1").arg(seed);
    record.fileName = QStringLiteral("c%1").arg(seed);
    record.baseAirfoilName = QStringLiteral("d%1").arg(seed);
    record.baseAirfoil = QPolygonF{{seed / 3.0, 1.0}};
    record.workAirfoil = QPolygonF{{1.0, seed / 3.0}, {2.0, 3.0}};
    return record;
}

ParaStruct nothing_read(const ParaStruct& before) {
    ParaStruct record = before;
    record.spline = SplineFoil();
    record.spline.degree = 0;
    record.spline.order = 0;
    std::copy(std::begin(before.spline.b_multi_knot), std::end(before.spline.b_multi_knot),
              std::begin(record.spline.b_multi_knot));
    return record;
}

QString different_member(const SplineFoil& a, const SplineFoil& b) {
    if (a.airfoilName != b.airfoilName || a.airfoilName.isNull() != b.airfoilName.isNull())
        return QStringLiteral("airfoilName");
    if (a.num_pnt != b.num_pnt || a.num_knt != b.num_knt || a.degree != b.degree ||
        a.order != b.order)
        return QStringLiteral("one of the four integers");
    for (int i = 0; i < MAXNUMKNOTS; ++i)
        if (!same_bits(a.b_knots[i], b.b_knots[i]) || a.b_multi_knot[i] != b.b_multi_knot[i])
            return QStringLiteral("knot %1").arg(i);
    for (int i = 0; i < MAXNUMPOINTS; ++i)
        if (!same_bits(a.CP[i], b.CP[i]) || !same_bits(a.rd_CP[i], b.rd_CP[i]))
            return QStringLiteral("point %1").arg(i);
    if (!same_bits(a.startVent, b.startVent) || !same_bits(a.endVent, b.endVent) ||
        !same_bits(a.L_T_S, b.L_T_S))
        return QStringLiteral("startVent, endVent or L_T_S");
    return {};
}

QString different_member(const ParaStruct& a, const ParaStruct& b) {
    if (a.AirFoilName != b.AirFoilName || a.pureFileName != b.pureFileName ||
        a.fileName != b.fileName || a.baseAirfoilName != b.baseAirfoilName)
        return QStringLiteral("a name");
    if (a.FoilPairList.size() != b.FoilPairList.size())
        return QStringLiteral("FoilPairList");
    for (qsizetype i = 0; i < a.FoilPairList.size(); ++i)
        if (a.FoilPairList[i].i1 != b.FoilPairList[i].i1 ||
            a.FoilPairList[i].i2 != b.FoilPairList[i].i2 ||
            !same_bits(a.FoilPairList[i].H, b.FoilPairList[i].H))
            return QStringLiteral("pair %1").arg(i);
    if (!std::equal(std::begin(a.LineInd), std::end(a.LineInd), std::begin(b.LineInd)))
        return QStringLiteral("LineInd");
    if (!same_bits(a.thickness, b.thickness))
        return QStringLiteral("thickness");
    if (a.NoseIndex != b.NoseIndex || a.TopIndexDw != b.TopIndexDw || a.TopIndexUp != b.TopIndexUp)
        return QStringLiteral("an index");
    if (!same_bits(a.baseAirfoil, b.baseAirfoil) || !same_bits(a.workAirfoil, b.workAirfoil))
        return QStringLiteral("an outline");
    return different_member(a.spline, b.spline);
}

SplineFoil zigzag(int count) {
    SplineFoil spline;
    spline.num_pnt = count;
    spline.init_knots();
    for (int i = 0; i < qMin(count, MAXNUMPOINTS); ++i)
        spline.CP[i] = QPointF(17.0 + 31.0 * i - 0.7 * i * i, i % 2 ? 240.25 : -60.5 + 3.0 * i);
    return spline;
}
