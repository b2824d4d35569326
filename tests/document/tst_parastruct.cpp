// SPDX-FileCopyrightText: Aerolith developers
// The document record, the knot rule and the sampling of the spline.
#include "document/parastruct.h"
#include "filledrecords.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <limits>
#include <new>
#include <type_traits>

namespace {

const int least_int = std::numeric_limits<int>::min();
const int greatest_int = std::numeric_limits<int>::max();

static_assert(std::extent_v<decltype(SplineFoil::b_knots)> == 300);
static_assert(std::extent_v<decltype(SplineFoil::b_multi_knot)> == 300);
static_assert(std::extent_v<decltype(SplineFoil::CP)> == 30);
static_assert(std::extent_v<decltype(SplineFoil::rd_CP)> == 30);
static_assert(std::extent_v<decltype(ParaStruct::LineInd)> == 8);

bool in_order(std::initializer_list<const void*> addresses) {
    return std::is_sorted(addresses.begin(), addresses.end(), std::less<const void*>());
}

} // namespace

class tst_parastruct : public QObject {
    Q_OBJECT

private slots:
    void no_document_before_it_is_asked_for();
    void one_document();
    void start_values();
    void initial_values_do_nothing();
    void declaration_order();

    void copies_of_splines();
    void copies_of_records();
    void copies_are_apart();
    void self_assignment();

    void uniform_knots_data();
    void uniform_knots();
    void knots_of_four_points();
    void knots_beyond_use_stay();
    void sharpening_is_undone();
    void knots_of_impossible_counts_data();
    void knots_of_impossible_counts();

    void bounded_counts_data();
    void bounded_counts();
};

void tst_parastruct::no_document_before_it_is_asked_for() {
    QVERIFY(dataStruct == nullptr);
}

void tst_parastruct::one_document() {
    ParaStruct* document = GetDataStruct();
    QVERIFY(document != nullptr);
    QCOMPARE(GetDataStruct(), document);
    QCOMPARE(dataStruct, document);
    QCOMPARE(different_member(*document, ParaStruct()), QString());
}

void tst_parastruct::start_values() {
    // Constructed in memory full of ones, so that nothing is 0 by chance.
    alignas(ParaStruct) unsigned char memory[sizeof(ParaStruct)];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xff));
    auto* record = new (memory) ParaStruct;
    const auto guard = qScopeGuard([record] { record->~ParaStruct(); });

    QVERIFY(record->AirFoilName.isNull() && record->pureFileName.isNull());
    QVERIFY(record->fileName.isNull() && record->baseAirfoilName.isNull());
    QVERIFY(record->FoilPairList.isEmpty());
    QVERIFY(record->baseAirfoil.isEmpty() && record->workAirfoil.isEmpty());
    for (const int index : record->LineInd)
        QCOMPARE(index, 0);
    COMPARE_BITS(record->thickness, 0.0);
    QCOMPARE(record->NoseIndex, 500);
    QCOMPARE(record->TopIndexDw, 0);
    QCOMPARE(record->TopIndexUp, 0);

    const SplineFoil& spline = record->spline;
    QVERIFY(spline.airfoilName.isNull());
    QCOMPARE(spline.num_pnt, 0);
    QCOMPARE(spline.num_knt, 0);
    QCOMPARE(spline.degree, 2);
    QCOMPARE(spline.order, 3);
    for (int i = 0; i < MAXNUMKNOTS; ++i) {
        COMPARE_BITS(spline.b_knots[i], 0.0);
        QCOMPARE(spline.b_multi_knot[i], 0);
    }
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        COMPARE_BITS(spline.CP[i], QPointF(0.0, 0.0));
        COMPARE_BITS(spline.rd_CP[i], QPointF(0.0, 0.0));
    }
    COMPARE_BITS(spline.startVent, 0.0);
    COMPARE_BITS(spline.endVent, 0.0);
    COMPARE_BITS(spline.L_T_S, 0.0);

    COMPARE_BITS(Foil_Pair().H, 0.0);
    COMPARE_BITS(PntStruct().pnt, QPointF(0.0, 0.0));
}

void tst_parastruct::initial_values_do_nothing() {
    ParaStruct record = filled_record(1);
    record.SetInitialValues();
    QCOMPARE(different_member(record, filled_record(1)), QString());
}

void tst_parastruct::declaration_order() {
    const SplineFoil s;
    QVERIFY(in_order({&s.airfoilName, &s.num_pnt, &s.num_knt, &s.degree, &s.order, s.b_knots,
                      s.b_multi_knot, s.CP, s.rd_CP, &s.startVent, &s.endVent, &s.L_T_S}));
    const ParaStruct p;
    QVERIFY(in_order({&p.AirFoilName, &p.FoilPairList, p.LineInd, &p.thickness, &p.NoseIndex,
                      &p.TopIndexDw, &p.TopIndexUp, &p.spline, &p.pureFileName, &p.fileName,
                      &p.baseAirfoilName, &p.baseAirfoil, &p.workAirfoil}));
    const Foil_Pair pair;
    QVERIFY(in_order({&pair.i1, &pair.i2, &pair.H}));
    const PntStruct point;
    QVERIFY(in_order({&point.pnt, &point.pnt_index}));
}

void tst_parastruct::copies_of_splines() {
    const SplineFoil source = filled_spline(1);
    const SplineFoil constructed(source);
    QCOMPARE(different_member(constructed, source), QString());
    SplineFoil assigned = filled_spline(2);
    QVERIFY(!different_member(assigned, source).isEmpty());
    assigned = source;
    QCOMPARE(different_member(assigned, source), QString());
}

void tst_parastruct::copies_of_records() {
    const ParaStruct source = filled_record(1);
    const ParaStruct constructed(source);
    QCOMPARE(different_member(constructed, source), QString());
    ParaStruct assigned = filled_record(2);
    QVERIFY(!different_member(assigned, source).isEmpty());
    assigned = source;
    QCOMPARE(different_member(assigned, source), QString());
}

void tst_parastruct::copies_are_apart() {
    const ParaStruct source = filled_record(1);
    ParaStruct copy = source;
    copy.baseAirfoil[0] = QPointF(-1.0, -1.0);
    copy.FoilPairList[0].i1 = -1;
    copy.spline.CP[29] = QPointF(-1.0, -1.0);
    copy.spline.airfoilName[0] = QLatin1Char('x');
    QCOMPARE(different_member(source, filled_record(1)), QString());
}

void tst_parastruct::self_assignment() {
    ParaStruct record = filled_record(3);
    ParaStruct& same = record;
    record = same;
    QCOMPARE(different_member(record, filled_record(3)), QString());
    record.spline = same.spline;
    QCOMPARE(different_member(record, filled_record(3)), QString());
}

void tst_parastruct::uniform_knots_data() {
    QTest::addColumn<int>("count");
    for (int count = 0; count <= MAXNUMPOINTS; ++count)
        QTest::addRow("points-%d", count) << count;
}

void tst_parastruct::uniform_knots() {
    QFETCH(int, count);
    SplineFoil spline = filled_spline(1);
    spline.num_pnt = count;
    spline.init_knots();
    QCOMPARE(spline.num_pnt, count);
    QCOMPARE(spline.degree, 2);
    QCOMPARE(spline.order, 3);
    QCOMPARE(spline.num_knt, count + 3);
    for (int i = 0; i < count + 3; ++i) {
        COMPARE_BITS(spline.b_knots[i], double(i) / double(count + 2));
        QCOMPARE(spline.b_multi_knot[i], 1);
    }
    COMPARE_BITS(spline.b_knots[0], 0.0);
    COMPARE_BITS(spline.b_knots[count + 2], 1.0);
}

void tst_parastruct::knots_of_four_points() {
    SplineFoil spline;
    spline.num_pnt = 4;
    spline.init_knots();
    QCOMPARE(spline.num_knt, 7);
    const double knots[] = {0.0, 1.0 / 6.0, 2.0 / 6.0, 3.0 / 6.0, 4.0 / 6.0, 5.0 / 6.0, 1.0};
    for (int i = 0; i < 7; ++i)
        COMPARE_BITS(spline.b_knots[i], knots[i]);

    spline.num_pnt = 0;
    spline.init_knots();
    QCOMPARE(spline.num_knt, 3);
    for (int i = 0; i < 3; ++i)
        COMPARE_BITS(spline.b_knots[i], i * 0.5);
}

void tst_parastruct::knots_beyond_use_stay() {
    SplineFoil spline = filled_spline(1);
    const SplineFoil before = spline;
    spline.num_pnt = 4;
    spline.init_knots();
    for (int i = 7; i < MAXNUMKNOTS; ++i) {
        COMPARE_BITS(spline.b_knots[i], before.b_knots[i]);
        QCOMPARE(spline.b_multi_knot[i], before.b_multi_knot[i]);
    }
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        COMPARE_BITS(spline.CP[i], before.CP[i]);
        COMPARE_BITS(spline.rd_CP[i], before.rd_CP[i]);
    }
    COMPARE_BITS(spline.startVent, before.startVent);
    COMPARE_BITS(spline.endVent, before.endVent);
    COMPARE_BITS(spline.L_T_S, before.L_T_S);
    QCOMPARE(spline.airfoilName, before.airfoilName);
}

void tst_parastruct::sharpening_is_undone() {
    SplineFoil spline = zigzag(6);
    const SplineFoil uniform = spline;
    spline.b_knots[5] = spline.b_knots[4] + 0.0001;
    spline.b_multi_knot[4] = 2;
    QVERIFY(!same_bits(spline.make_SplinePoly(), uniform.make_SplinePoly()));
    spline.init_knots();
    QCOMPARE(different_member(spline, uniform), QString());
    COMPARE_POLYGON_BITS(spline.make_SplinePoly(), uniform.make_SplinePoly());
}

void tst_parastruct::knots_of_impossible_counts_data() {
    QTest::addColumn<int>("count");
    for (const int count : {-1, -2, -3, -1000, 31, 297, 298, 300, 5000})
        QTest::addRow("points-%d", count) << count;
    QTest::newRow("least") << least_int;
    QTest::newRow("greatest") << greatest_int;
}

// Whatever the count, nothing outside the arrays is written and the knots in use are valid.
void tst_parastruct::knots_of_impossible_counts() {
    QFETCH(int, count);
    SplineFoil spline = filled_spline(1);
    const SplineFoil before = spline;
    spline.num_pnt = count;
    spline.init_knots();
    QCOMPARE(spline.degree, 2);
    QCOMPARE(spline.order, 3);
    QVERIFY(spline.knot_count() >= 0 && spline.knot_count() <= MAXNUMKNOTS);
    for (int i = 0; i < spline.knot_count(); ++i)
        QVERIFY(std::isfinite(spline.b_knots[i]));
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        COMPARE_BITS(spline.CP[i], before.CP[i]);
        COMPARE_BITS(spline.rd_CP[i], before.rd_CP[i]);
    }
    COMPARE_BITS(spline.startVent, before.startVent);
    const QPolygonF curve = spline.make_SplinePoly();
    QVERIFY(curve.isEmpty() || curve.size() == 999);
}

void tst_parastruct::bounded_counts_data() {
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("knots");

    QTest::newRow("zero") << 0 << 0 << 0;
    QTest::newRow("one") << 1 << 1 << 1;
    QTest::newRow("points-full") << 30 << 30 << 30;
    QTest::newRow("points-beyond") << 31 << 30 << 31;
    QTest::newRow("knots-full") << 300 << 30 << 300;
    QTest::newRow("knots-beyond") << 301 << 30 << 300;
    QTest::newRow("below-zero") << -1 << 0 << 0;
    QTest::newRow("least") << least_int << 0 << 0;
    QTest::newRow("greatest") << greatest_int << 30 << 300;
}

void tst_parastruct::bounded_counts() {
    QFETCH(int, stored);
    QFETCH(int, points);
    QFETCH(int, knots);
    SplineFoil spline;
    spline.num_pnt = stored;
    spline.num_knt = stored;
    QCOMPARE(spline.point_count(), points);
    QCOMPARE(spline.knot_count(), knots);
    QCOMPARE(spline.num_pnt, stored);
    QCOMPARE(spline.num_knt, stored);
}

AEROLITH_GUILESS_TEST_MAIN(tst_parastruct)
#include "tst_parastruct.moc"
