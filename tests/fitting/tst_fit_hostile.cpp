// SPDX-FileCopyrightText: Aerolith developers
// Tables that are not sections: each gives a spline with finite points or a reason.
#include "fitting/fit.h"
#include "fittingtables.h"
#include "support/testmain.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <random>
#include <utility>

using namespace fitting;

namespace {

QPolygonF scattered(unsigned seed, int count) {
    std::mt19937 engine(seed);
    QPolygonF table;
    for (int i = 0; i < count; ++i)
        table << QPointF(double(engine()) / 4e9, double(engine()) / 4e9);
    return table;
}

QPolygonF spiral(int count) {
    QPolygonF table;
    for (int i = 0; i < count; ++i)
        table << (1.0 - i / double(count)) * QPointF(std::cos(0.2 * i), std::sin(0.2 * i));
    return table;
}

} // namespace

class tst_fit_hostile : public QObject {
    Q_OBJECT

private slots:
    void tables_data();
    void tables();
};

void tst_fit_hostile::tables_data() {
    QTest::addColumn<QPolygonF>("table");
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("empty") << QPolygonF();
    QTest::newRow("one") << QPolygonF{{1, 0}};
    QTest::newRow("triangle") << QPolygonF{{1, 0}, {0, 0.1}, {0, -0.1}, {1, 0}};
    QTest::newRow("infinite") << QPolygonF{{1, 0}, {infinity, 0.1}, {0, -0.1}, {1, 0}};
    QTest::newRow("square") << QPolygonF{{1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}};
    QTest::newRow("two-heaps") << QPolygonF{{1, 0}, {1, 1e-9}, {1, 2e-9}, {0, 1},
                                            {0, 1}, {1e-9, 1}, {0, 0},    {1, 0}};
    QTest::newRow("begins-in-the-middle")
        << QPolygonF{{0.5, 0.1}, {0, 0}, {0.5, -0.1}, {1, 0}, {0.8, 0.05}, {0.5, 0.1}};
    QTest::newRow("figure-eight") << QPolygonF{{1, 0},       {0.75, 0.1},   {0.5, 0},
                                               {0.25, -0.1}, {0, 0},        {0.25, 0.1},
                                               {0.5, 0},     {0.75, -0.09}, {1, 0}};
    QTest::newRow("spiral") << spiral(200);
    QTest::newRow("tiny") << copy_of(four_digit(0.12, 0.0, 41), 0).translated(1e5, 1e5);
    for (int seed = 0; seed < 6; ++seed)
        QTest::addRow("scattered-%d", seed) << scattered(unsigned(seed), 8 + 20 * seed);
}

// The time limit of the test stops an endless search.
void tst_fit_hostile::tables() {
    QFETCH(QPolygonF, table);
    const std::pair<int, Ends> requests[] = {{0, Ends::table},
                                             {4, Ends::table},
                                             {30, Ends::table},
                                             {13, Ends::closed},
                                             {13, Ends::symmetric}};
    for (const auto& [points, ends] : requests) {
        Request request;
        request.points = points;
        request.ends = ends;
        const Fit result = fit(table, request);
        if (!result.reason.isEmpty())
            continue;
        QVERIFY(result.spline.num_pnt >= least_points && result.spline.num_pnt <= most_points);
        for (int i = 0; i < result.spline.num_pnt; ++i)
            QVERIFY(std::isfinite(result.spline.CP[i].x()) &&
                    std::isfinite(result.spline.CP[i].y()));
        QVERIFY(std::isfinite(result.deviation.largest));
        QVERIFY(result.holds == (result.deviation.outside == 0));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_fit_hostile)
#include "tst_fit_hostile.moc"
