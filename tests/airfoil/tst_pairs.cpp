// SPDX-FileCopyrightText: Aerolith developers
// Nose, crests and the pairs of upper and lower points of an outline.
#include "airfoil/airfoil.h"
#include "document/parastruct.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>

namespace {

const QString no_airfoil = QStringLiteral("Airfoil not present yet - IMPORT first");

// 1000 points: x falls from 1 to 0 at point 500 and rises again.
QPolygonF thousand_points() {
    QPolygonF outline;
    for (int i = 0; i < N_airfoil; ++i) {
        const double x = std::abs(i - 500) / 500.0;
        const double y = 0.1 * std::sin(M_PI * i / 500.0);
        outline.append(QPointF(x, y));
    }
    return outline;
}

QPolygonF random_points(quint32 seed, int count) {
    QRandomGenerator random(seed);
    QPolygonF outline;
    for (int i = 0; i < count; ++i)
        outline.append(QPointF(random.generateDouble(), random.generateDouble() - 0.5));
    return outline;
}

int lower_partner(const QPolygonF& outline, int nose, int i) {
    int partner = 0;
    int k = nose;
    while (k < 1000 && outline[i].x() > outline[k].x())
        partner = k++;
    return partner;
}

int upper_partner(const QPolygonF& outline, int nose, int i) {
    int partner = 0;
    int k = 0;
    while (k < nose && outline[k].x() > outline[i].x())
        partner = k++;
    return partner;
}

} // namespace

class tst_pairs : public QObject {
    Q_OBJECT
private slots:
    void init();
    void extremes_data();
    void extremes();
    void extremes_without_any();
    void record_of_its_own();
    void empty_outline();
    void FindUPIndex_data();
    void FindUPIndex();
    void FindDWIndex_data();
    void FindDWIndex();
    void pairs_of_a_section();
    void pairs_of_random_points_data();
    void pairs_of_random_points();
    void points_beyond_a_thousand_are_not_searched();
    void any_size_data();
    void any_size();
};

void tst_pairs::init() {
    *GetDataStruct() = ParaStruct();
}

void tst_pairs::extremes_data() {
    QTest::addColumn<QPolygonF>("outline");
    QTest::addColumn<int>("nose");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("bottom");
    const QPolygonF section = thousand_points();
    const auto changed = [&section](const QList<QPair<int, QPointF>>& changes) {
        QPolygonF outline = section;
        for (const auto& change : changes)
            outline[change.first] = change.second;
        return outline;
    };

    QTest::newRow("section") << section << 500 << 250 << 750;
    QTest::newRow("first-of-equal-noses")
        << changed({{460, {-1.0, 0.0}}, {540, {-1.0, 0.0}}}) << 460 << 250 << 750;
    QTest::newRow("first-index-searched") << changed({{450, {-1.0, 0.0}}}) << 450 << 250 << 750;
    QTest::newRow("before-the-searched") << changed({{449, {-1.0, 0.0}}}) << 500 << 250 << 750;
    QTest::newRow("last-index-searched") << changed({{549, {-1.0, 0.0}}}) << 549 << 250 << 750;
    QTest::newRow("after-the-searched") << changed({{550, {-1.0, 0.0}}}) << 500 << 250 << 750;
    QTest::newRow("first-of-equal-tops")
        << changed({{100, {0.8, 0.2}}, {300, {0.4, 0.2}}}) << 500 << 100 << 750;
    QTest::newRow("first-of-equal-bottoms")
        << changed({{600, {0.2, -0.2}}, {900, {0.8, -0.2}}}) << 500 << 250 << 600;
    QTest::newRow("top-at-the-start") << changed({{0, {1.0, 0.5}}}) << 500 << 0 << 750;
    QTest::newRow("top-just-before-the-nose") << changed({{499, {0.1, 0.5}}}) << 500 << 499 << 750;
    QTest::newRow("nose-is-no-top") << changed({{500, {0.0, 0.5}}}) << 500 << 250 << 750;
    QTest::newRow("nose-may-be-the-bottom") << changed({{500, {0.0, -0.5}}}) << 500 << 250 << 500;
    QTest::newRow("bottom-at-the-end") << changed({{999, {1.0, -0.5}}}) << 500 << 250 << 999;
    QTest::newRow("lower-points-above-are-no-top")
        << changed({{700, {0.4, 0.9}}}) << 500 << 250 << 750;
    QTest::newRow("upper-points-below-are-no-bottom")
        << changed({{300, {0.4, -0.9}}}) << 500 << 250 << 750;
    QTest::newRow("nan-is-no-extreme")
        << changed({{470, {std::nan(""), 0.0}}, {100, {0.8, std::nan("")}}}) << 500 << 250 << 750;
}

void tst_pairs::extremes() {
    QFETCH(QPolygonF, outline);
    QFETCH(int, nose);
    QFETCH(int, top);
    QFETCH(int, bottom);
    FindNoseTopIndex(GetDataStruct(), outline);
    QCOMPARE(GetDataStruct()->NoseIndex, nose);
    QCOMPARE(GetDataStruct()->TopIndexUp, top);
    QCOMPARE(GetDataStruct()->TopIndexDw, bottom);
    QCOMPARE(GetDataStruct()->FoilPairList.size(), 1000);
}

// Neither -100 nor 100 is exceeded, so the old indices stay.
void tst_pairs::extremes_without_any() {
    QPolygonF outline = thousand_points();
    for (int i = 0; i < outline.size(); ++i)
        outline[i].setY(i < 500 ? -100.0 : 100.0);
    GetDataStruct()->TopIndexUp = 17;
    GetDataStruct()->TopIndexDw = 18;
    FindNoseTopIndex(GetDataStruct(), outline);
    QCOMPARE(GetDataStruct()->TopIndexUp, 17);
    QCOMPARE(GetDataStruct()->TopIndexDw, 18);

    // The search for the nose starts at a million.
    for (QPointF& point : outline)
        point.setX(1e6);
    GetDataStruct()->NoseIndex = 19;
    FindNoseTopIndex(GetDataStruct(), outline);
    QCOMPARE(GetDataStruct()->NoseIndex, 19);
    outline[470].setX(std::nextafter(1e6, 0.0));
    FindNoseTopIndex(GetDataStruct(), outline);
    QCOMPARE(GetDataStruct()->NoseIndex, 470);
}

// The indices go to the record given, the pairs to the document.
void tst_pairs::record_of_its_own() {
    ParaStruct record;
    GetDataStruct()->NoseIndex = 480;
    FindNoseTopIndex(&record, thousand_points());
    QCOMPARE(record.NoseIndex, 500);
    QCOMPARE(record.TopIndexUp, 250);
    QVERIFY(record.FoilPairList.isEmpty());
    QCOMPARE(GetDataStruct()->NoseIndex, 480);
    QCOMPARE(GetDataStruct()->TopIndexUp, 0);
    QCOMPARE(GetDataStruct()->FoilPairList.size(), 1000);
    QCOMPARE(GetDataStruct()->FoilPairList[480].i2, 480);
}

void tst_pairs::empty_outline() {
    ParaStruct* document = GetDataStruct();
    document->NoseIndex = 480;
    document->TopIndexUp = 17;
    document->TopIndexDw = 18;
    document->FoilPairList = {Foil_Pair{1, 2, 3.0}};
    {
        const ModalGuard guard;
        FindNoseTopIndex(document, {});
        QCOMPARE(guard.count(), 1);
        QCOMPARE(guard.seen().text, no_airfoil);
        QCOMPARE(guard.seen().class_name, QStringLiteral("QMessageBox"));
    }
    QCOMPARE(document->NoseIndex, 500);
    QCOMPARE(document->TopIndexUp, 17);
    QCOMPARE(document->TopIndexDw, 18);
    QCOMPARE(document->FoilPairList.size(), 1);
    {
        const ModalGuard guard;
        QCOMPARE(::FindUPIndex(7, {}), 0);
        QCOMPARE(guard.count(), 1);
        QCOMPARE(guard.seen().text, no_airfoil);
    }
    {
        const ModalGuard guard;
        QCOMPARE(::FindDWIndex(7, {}), 7);
        QCOMPARE(guard.count(), 1);
        QCOMPARE(guard.seen().text, no_airfoil);
    }
    {
        const ModalGuard guard;
        Create_FoilPairList({});
        QCOMPARE(guard.count(), 1);
        QCOMPARE(guard.seen().text, no_airfoil);
    }
    QVERIFY(document->FoilPairList.isEmpty());
    QCOMPARE(document->NoseIndex, 500);
}

void tst_pairs::FindUPIndex_data() {
    QTest::addColumn<int>("i");
    QTest::addColumn<int>("expected");

    // Points 1 to 500 have the x of 999 to 500; only point 0 is at x = 1.
    QTest::newRow("trailing-edge") << 0 << 0;
    QTest::newRow("lower-side") << 700 << 299;
    QTest::newRow("first-lower-point") << 501 << 498;
    QTest::newRow("last-point") << 999 << 0;
    QTest::newRow("nose") << 500 << 499;
    QTest::newRow("upper-side") << 250 << 249;
    QTest::newRow("beyond-the-end") << 1000 << 0;
    QTest::newRow("negative") << -1 << 0;
}

void tst_pairs::FindUPIndex() {
    QFETCH(int, i);
    QFETCH(int, expected);
    QCOMPARE(::FindUPIndex(i, thousand_points()), expected);
}

void tst_pairs::FindDWIndex_data() {
    QTest::addColumn<int>("i");
    QTest::addColumn<int>("expected");

    QTest::newRow("trailing-edge") << 0 << 999;
    QTest::newRow("upper-side") << 300 << 699;
    QTest::newRow("last-upper-point") << 499 << 500;
    QTest::newRow("first-lower-point-fails-already") << 500 << 0;
    QTest::newRow("lower-side") << 700 << 699;
    QTest::newRow("beyond-the-end") << 1000 << 0;
    QTest::newRow("negative") << -1 << 0;
}

void tst_pairs::FindDWIndex() {
    QFETCH(int, i);
    QFETCH(int, expected);
    QCOMPARE(::FindDWIndex(i, thousand_points()), expected);
}

void tst_pairs::pairs_of_a_section() {
    const QPolygonF outline = thousand_points();
    Create_FoilPairList(outline);
    const QList<Foil_Pair> pairs = GetDataStruct()->FoilPairList;
    QCOMPARE(pairs.size(), 1000);
    QCOMPARE(pairs[0].i1, 0);
    QCOMPARE(pairs[0].i2, 1000);
    COMPARE_BITS(pairs[0].H, 0.0);
    QCOMPARE(pairs[300].i1, 300);
    QCOMPARE(pairs[300].i2, 699);
    COMPARE_BITS(pairs[300].H, std::abs(outline[300].y() - outline[699].y()));
    QCOMPARE(pairs[500].i1, 500);
    QCOMPARE(pairs[500].i2, 500);
    COMPARE_BITS(pairs[500].H, 0.0);
    QCOMPARE(pairs[700].i1, 299);
    QCOMPARE(pairs[700].i2, 700);
    COMPARE_BITS(pairs[700].H, 0.0);
    Create_FoilPairList(outline);
    QCOMPARE(GetDataStruct()->FoilPairList.size(), 1000);
}

void tst_pairs::pairs_of_random_points_data() {
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("nose");

    QTest::newRow("nose-500") << 1U << 500;
    QTest::newRow("nose-450") << 2U << 450;
    QTest::newRow("nose-549") << 3U << 549;
    QTest::newRow("nose-1") << 4U << 1;
    QTest::newRow("nose-998") << 5U << 998;
}

void tst_pairs::pairs_of_random_points() {
    QFETCH(quint32, seed);
    QFETCH(int, nose);
    const QPolygonF outline = random_points(seed, 1000);
    GetDataStruct()->NoseIndex = nose;
    Create_FoilPairList(outline);
    const QList<Foil_Pair> pairs = GetDataStruct()->FoilPairList;
    QCOMPARE(pairs.size(), 1000);
    for (int i = 1; i < 1000; ++i) {
        if (i < nose) {
            QCOMPARE(pairs[i].i1, i);
            QCOMPARE(pairs[i].i2, lower_partner(outline, nose, i));
            COMPARE_BITS(pairs[i].H, std::abs(outline[i].y() - outline[pairs[i].i2].y()));
        } else if (i > nose) {
            QCOMPARE(pairs[i].i1, upper_partner(outline, nose, i));
            QCOMPARE(pairs[i].i2, i);
            COMPARE_BITS(pairs[i].H, 0.0);
        } else {
            QCOMPARE(pairs[i].i1, nose);
            QCOMPARE(pairs[i].i2, nose);
        }
    }
}

void tst_pairs::points_beyond_a_thousand_are_not_searched() {
    QPolygonF outline = thousand_points();
    for (int i = 0; i < 200; ++i)
        outline.append(QPointF(0.9985, -0.5));
    QCOMPARE(::FindDWIndex(0, outline), 999);
    FindNoseTopIndex(GetDataStruct(), outline);
    QCOMPARE(GetDataStruct()->TopIndexDw, 750);
    QCOMPARE(GetDataStruct()->FoilPairList.size(), 1000);
}

void tst_pairs::any_size_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("nose");

    for (const int points : {1, 2, 449, 450, 451, 500, 549, 999, 1001, 2000}) {
        for (const int nose : {-7, 0, 1, 500, 999, 1000, 5000})
            QTest::addRow("points-%d-nose-%d", points, nose) << points << nose;
    }
}

// Outlines of another size than intended, and any index of the nose, give pairs within the outline.
void tst_pairs::any_size() {
    QFETCH(int, points);
    QFETCH(int, nose);
    const QPolygonF outline = random_points(9, points);
    GetDataStruct()->NoseIndex = nose;
    for (const int i : {-1, 0, 1, points - 1, points, 100000}) {
        QVERIFY(::FindUPIndex(i, outline) >= 0 && ::FindUPIndex(i, outline) < points);
        QVERIFY(::FindDWIndex(i, outline) >= 0 && ::FindDWIndex(i, outline) < points);
    }
    Create_FoilPairList(outline);
    const QList<Foil_Pair> pairs = GetDataStruct()->FoilPairList;
    if (nose == 0)
        QCOMPARE(pairs.size(), 1 + qMin(points, 1000));
    QVERIFY(!pairs.isEmpty());
    QCOMPARE(pairs.first().i2, 1000);
    for (qsizetype i = 1; i < pairs.size(); ++i) {
        QVERIFY(pairs[i].H >= 0.0);
        if (pairs[i].i1 != nose) {
            QVERIFY(pairs[i].i1 >= 0 && pairs[i].i1 < points);
            QVERIFY(pairs[i].i2 >= 0 && pairs[i].i2 < points);
        }
    }
    FindNoseTopIndex(GetDataStruct(), outline);
    const int found = GetDataStruct()->NoseIndex;
    if (points <= 450)
        QCOMPARE(found, nose);
    else
        QVERIFY(found >= 450 && found < qMin(points, 550));
}

AEROLITH_TEST_MAIN(tst_pairs)
#include "tst_pairs.moc"
