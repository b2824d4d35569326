// SPDX-FileCopyrightText: Aerolith developers
// Every sample of the curve has the bits of the plain recursion. AEROLITH_IDENTITY_SPLINES sets the
// total number of random splines.
#include "baseline/spline.h"
#include "document/parastruct.h"
#include "support/exactcompare.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr int default_splines = 3000;
constexpr int families = 8;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

int splines_per_family() {
    bool ok = false;
    const int total = qEnvironmentVariableIntValue("AEROLITH_IDENTITY_SPLINES", &ok);
    return (ok && total > 0 ? total : default_splines) / families + 1;
}

class RandomSplines {
public:
    explicit RandomSplines(quint32 seed) : random(seed) {}

    int below(int bound) { return random.bounded(bound); }
    bool one_in(int n) { return below(n) == 0; }
    double between(double low, double high) { return low + random.generateDouble() * (high - low); }

    void place_points(SplineFoil& spline) {
        spline.num_pnt = 1 + below(MAXNUMPOINTS);
        // Usually the size of a screen, sometimes anything that a file may hold.
        const double size = one_in(8) ? std::pow(10.0, between(-300.0, 300.0)) : 2000.0;
        for (QPointF& point : spline.CP)
            point = QPointF(between(-size, size), between(-size, size));
    }

    void sharpen(SplineFoil& spline) {
        for (int i = below(3 * MAXNUMPOINTS); i >= 0; --i) {
            const int id = below(spline.knot_count() - 1);
            spline.b_knots[id + 1] = spline.b_knots[id] + 0.0001;
        }
    }

    // Consecutive runs of close knots, upwards or downwards along the spline.
    void sharpen_runs(SplineFoil& spline) {
        for (int runs = 1 + below(3); runs > 0; --runs) {
            const int start = below(spline.knot_count() - 1);
            const int direction = one_in(2) ? 1 : -1;
            int id = start;
            for (int n = 1 + below(5); n > 0; --n, id += direction) {
                if (id >= 0 && id + 1 < spline.knot_count())
                    spline.b_knots[id + 1] = spline.b_knots[id] + 0.0001;
            }
        }
    }

    void free_knots(SplineFoil& spline) {
        double knot = between(-0.2, 0.1);
        const double mean_step = (1.2 - knot) / spline.knot_count();
        for (int i = 0; i < spline.knot_count(); ++i) {
            spline.b_knots[i] = knot;
            knot +=
                mean_step * (one_in(4) ? std::pow(10.0, between(-9.0, 0.0)) : between(0.1, 1.9));
        }
    }

    void disorder_knots(SplineFoil& spline) {
        for (int i = 1 + below(4); i > 0; --i) {
            const int at = below(spline.knot_count());
            double& knot = spline.b_knots[at];
            switch (below(6)) {
            case 0:
                knot = between(-0.5, 1.5);
                break;
            case 1:
                knot = one_in(2) ? infinity : -infinity;
                break;
            case 2:
                knot = not_a_number;
                break;
            default:
                knot = spline.b_knots[below(spline.knot_count())];
            }
        }
    }

    void spoil_points(SplineFoil& spline) {
        static constexpr double values[] = {infinity, -infinity, not_a_number, 1e308, -1e308};
        for (int i = 1 + below(4); i > 0; --i) {
            QPointF& point = spline.CP[below(MAXNUMPOINTS)];
            (one_in(2) ? point.rx() : point.ry()) = values[below(5)];
        }
    }

    void sign_zeros(SplineFoil& spline) {
        for (QPointF& point : spline.CP) {
            if (one_in(2))
                point.rx() = one_in(2) ? 0.0 : -0.0;
            if (one_in(2))
                point.ry() = one_in(2) ? 0.0 : -0.0;
        }
    }

private:
    QRandomGenerator random;
};

bool same_but_for_kind_of_nan(const QPolygonF& actual, const QPolygonF& expected) {
    const auto same = [](double a, double b) {
        return same_bits(a, b) || (std::isnan(a) && std::isnan(b));
    };
    if (actual.size() != expected.size())
        return false;
    for (qsizetype i = 0; i < actual.size(); ++i) {
        if (!same(actual[i].x(), expected[i].x()) || !same(actual[i].y(), expected[i].y()))
            return false;
    }
    return true;
}

bool same_memory(const QPolygonF& actual, const QPolygonF& expected) {
    return actual.size() == expected.size() &&
           std::memcmp(actual.constData(), expected.constData(),
                       std::size_t(actual.size()) * sizeof(QPointF)) == 0;
}

} // namespace

class tst_identical_samples : public QObject {
    Q_OBJECT

private slots:
    void random_splines_data();
    void random_splines();
    void one_change_after_another_data();
    void one_change_after_another();
    void records_in_turns();
};

void tst_identical_samples::random_splines_data() {
    QTest::addColumn<int>("family");
    // Values that are not finite may give a NaN of either sign.
    QTest::addColumn<bool>("finite");

    QTest::newRow("uniform") << 0 << true;
    QTest::newRow("sharpened-singly") << 1 << true;
    QTest::newRow("sharpened-in-runs") << 2 << true;
    QTest::newRow("free-increasing-knots") << 3 << true;
    QTest::newRow("signed-zeros") << 4 << true;
    QTest::newRow("points-not-finite") << 5 << false;
    QTest::newRow("knots-not-increasing") << 6 << false;
    QTest::newRow("other-degrees") << 7 << false;
}

void tst_identical_samples::random_splines() {
    QFETCH(int, family);
    QFETCH(bool, finite);

    RandomSplines random{quint32(20261 + family)};
    for (int n = splines_per_family(); n > 0; --n) {
        SplineFoil spline;
        random.place_points(spline);
        spline.init_knots();
        switch (family) {
        case 1:
            random.sharpen(spline);
            break;
        case 2:
            random.sharpen_runs(spline);
            break;
        case 3:
            random.free_knots(spline);
            break;
        case 4:
            random.sign_zeros(spline);
            break;
        case 5:
            random.spoil_points(spline);
            break;
        case 6:
            random.disorder_knots(spline);
            break;
        case 7:
            spline.degree = random.below(6);
            spline.num_knt = spline.num_pnt + spline.degree + 1;
            random.free_knots(spline);
            break;
        default:
            break;
        }
        const QPolygonF expected = baseline::make_SplinePoly(spline);
        QCOMPARE(expected.size(), 999);
        const QPolygonF actual = spline.make_SplinePoly();
        const QPolygonF again = spline.make_SplinePoly();
        const bool same = finite ? same_memory(actual, expected) && same_memory(again, expected)
                                 : same_but_for_kind_of_nan(actual, expected) &&
                                       same_but_for_kind_of_nan(again, expected);
        QVERIFY2(same, qPrintable(QStringLiteral("spline %1 of the row, %2 points: %3")
                                      .arg(splines_per_family() - n)
                                      .arg(spline.num_pnt)
                                      .arg(first_difference(actual, expected))));
    }
}

void tst_identical_samples::one_change_after_another_data() {
    QTest::addColumn<int>("count");

    for (const int count : {1, 2, 3, 4, 5, 10, 29, 30})
        QTest::addRow("%d-points", count) << count;
}

// Every input of the cached basis values is changed by the smallest effective amount, one at a
// time, and then restored. Each knot is out of order once.
void tst_identical_samples::one_change_after_another() {
    QFETCH(int, count);

    RandomSplines random{quint32(count)};
    SplineFoil spline;
    random.place_points(spline);
    spline.num_pnt = count;
    spline.init_knots();
    const SplineFoil start = spline;
    const auto compare = [&](const char* change, int index) {
        const QString difference =
            first_difference(spline.make_SplinePoly(), baseline::make_SplinePoly(spline));
        if (!difference.isEmpty())
            QFAIL(qPrintable(
                QStringLiteral("%1 %2: %3").arg(QLatin1String(change)).arg(index).arg(difference)));
    };
    compare("start", 0);
    for (int i = 0; i < start.num_knt; ++i) {
        spline.b_knots[i] = std::nextafter(spline.b_knots[i], 2.0);
        compare("knot", i);
        for (const double knot : {-0.3, 0.45, 1.3}) {
            spline.b_knots[i] = knot;
            compare("knot out of order", i);
        }
        spline = start;
        compare("knot back", i);
    }
    for (int i = 0; i < count; ++i) {
        spline.CP[i].rx() = std::nextafter(spline.CP[i].x(), infinity);
        compare("point", i);
    }
    for (const int degree : {0, 1, 3, 4, 5, 2}) {
        spline.degree = degree;
        compare("degree", degree);
    }
    for (int points = count; points > 0; --points) {
        spline.num_pnt = points;
        compare("fewer points on the same knots", points);
    }
    spline = start;
    spline.b_knots[0] = -0.0;
    compare("sign of the first knot", 0);
}

void tst_identical_samples::records_in_turns() {
    RandomSplines random(7);
    SplineFoil splines[3];
    for (SplineFoil& spline : splines) {
        random.place_points(spline);
        spline.num_pnt = 12;
        spline.init_knots();
    }
    random.sharpen_runs(splines[1]);
    random.free_knots(splines[2]);
    for (int i = 0; i < 20; ++i) {
        const SplineFoil& spline = splines[random.below(3)];
        COMPARE_POLYGON_BITS(spline.make_SplinePoly(), baseline::make_SplinePoly(spline));
    }
}

QTEST_GUILESS_MAIN(tst_identical_samples)
#include "tst_identical_samples.moc"
