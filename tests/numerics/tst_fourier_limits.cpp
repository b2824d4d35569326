// SPDX-FileCopyrightText: Aerolith developers
// The Fourier functions at the ends of their ranges: sizes, orders, thresholds, input that is not a
// number.
#include "numerics/constants.h"
#include "numerics/fourier.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using Values = std::vector<double>;

const double nan_value = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();
const int least_int = std::numeric_limits<int>::min();
const int greatest_int = std::numeric_limits<int>::max();

// An output array of exactly the stated size, followed by a guard value.
class Guarded {
public:
    explicit Guarded(int size) : values(std::size_t(size) + 1, MARK) {}
    double* data() { return values.data(); }
    double operator[](int i) const { return values[std::size_t(i)]; }
    bool is_intact() const { return values.back() == MARK; }
    bool is_untouched(int i) const { return (*this)[i] == MARK; }
    bool is_zero() const {
        return std::all_of(values.begin(), values.end() - 1, [](double v) { return v == 0.0; });
    }
    bool is_finite() const {
        return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
    }

private:
    static constexpr double MARK = -12345.678;
    Values values;
};

Values noise(int count, quint32 seed) {
    QRandomGenerator random(seed);
    Values values;
    for (int i = 0; i < count; ++i)
        values.push_back(random.bounded(2.0) - 1.0);
    return values;
}

QPolygonF polygon_of(const Values& y) {
    QPolygonF poly;
    for (const double v : y)
        poly.append(QPointF(0.0, v));
    return poly;
}

// The derivative series of order M of 2M samples, at 1000 angles.
Values derivative(int M, Values y) {
    Values An(std::size_t(M) + 1);
    Values Bn(std::size_t(M), 0.0);
    F_coef(M, y.data(), An.data(), Bn.data());
    Values out;
    for (int k = 0; k < 1000; ++k)
        out.push_back(f_Dvalue(M, An.data(), Bn.data(), k));
    return out;
}

QStringList logged;

void collect(QtMsgType, const QMessageLogContext& context, const QString& message) {
    logged.append(QLatin1String(context.category) + QLatin1Char('|') + message);
}

} // namespace

class tst_fourier_limits : public QObject {
    Q_OBJECT

private slots:
    void Init_fu_fields_clears_N_places();
    void An_takes_N_plus_1_places_and_Bn_N();
    void order_0_or_less_gives_zeros_data();
    void order_0_or_less_gives_zeros();
    void Fourier_Derivate_writes_n_plus_1_slopes_data();
    void Fourier_Derivate_writes_n_plus_1_slopes();
    void Fourier_Derivate_needs_dx_of_1();
    void Fourier_Derivate_leaves_out_an_odd_sample();
    void Fourier_Polygon_D2_is_never_negative();
    void Fourier_Polygon_D2_takes_zeros_beyond_1000_values_data();
    void Fourier_Polygon_D2_takes_zeros_beyond_1000_values();
    void Fourier_Polygon_D2_of_less_than_2_points_is_0();
    void Fourier_Polygon_D2_logs_only_when_switched_on();
    void Fourier_Skeleton_writes_n_values();
    void outputs_keep_to_1000_values();
    void extreme_arguments();
    void input_that_is_not_finite();
};

void tst_fourier_limits::Init_fu_fields_clears_N_places() {
    Guarded An(3);
    Guarded Bn(3);
    Guarded Tp(6);
    Guarded fYn(6);
    Values func = {1.5, 2.5, 3.5, 4.5, 5.5, 6.5};
    Init_fu_fields(3, An.data(), Bn.data(), Tp.data(), fYn.data(), func.data());
    QVERIFY(An.is_zero() && Bn.is_zero());
    QVERIFY(An.is_intact() && Bn.is_intact() && Tp.is_intact() && fYn.is_intact());
    for (int k = 0; k < 6; ++k) {
        COMPARE_BITS(Tp[k], k * Pi / 3);
        COMPARE_BITS(fYn[k], func[std::size_t(k)]);
    }
}

void tst_fourier_limits::An_takes_N_plus_1_places_and_Bn_N() {
    Values y = noise(14, 1);
    Guarded An(8);
    Guarded Bn(7);
    F_coef(7, y.data(), An.data(), Bn.data());
    QVERIFY(!An.is_untouched(7));
    QVERIFY(An.is_intact() && Bn.is_intact());
    COMPARE_BITS(Bn[0], 0.0);

    Values Tp(14, 0.5);
    Guarded kept(7);
    Proc_A_bn(7, An.data(), kept.data(), Tp.data(), y.data());
    QVERIFY(kept.is_untouched(0));
    QVERIFY(!kept.is_untouched(6));
    for (int m = 1; m < 7; ++m) {
        COMPARE_NEAR(An[m], fSum_yn_cos(7, Tp.data(), y.data(), m) / 7, 1e-15);
        COMPARE_NEAR(kept[m], fSum_yn_sin(7, Tp.data(), y.data(), m) / 7, 1e-15);
    }
}

void tst_fourier_limits::order_0_or_less_gives_zeros_data() {
    QTest::addColumn<int>("order");

    QTest::newRow("zero") << 0;
    QTest::newRow("minus-one") << -1;
    QTest::newRow("least-int") << least_int;
}

// Only the outputs exist here, so access to any other array would crash.
void tst_fourier_limits::order_0_or_less_gives_zeros() {
    QFETCH(int, order);
    Guarded An(1);
    Init_fu_fields(order, An.data(), nullptr, nullptr, nullptr, nullptr);
    QVERIFY(An.is_untouched(0));
    Proc_A_bn(order, An.data(), nullptr, nullptr, nullptr);
    QCOMPARE(An.is_zero(), order == 0);
    QCOMPARE(An.is_untouched(0), order < 0);
    Guarded of_F_coef(1);
    F_coef(order, nullptr, of_F_coef.data(), nullptr);
    QCOMPARE(of_F_coef.is_zero(), order == 0);
    QVERIFY(An.is_intact() && of_F_coef.is_intact());

    COMPARE_BITS(fSum_yn_cos(order, nullptr, nullptr, 3), 0.0);
    COMPARE_BITS(fSum_yn_sin(order, nullptr, nullptr, 3), 0.0);
    COMPARE_BITS(f_theta_value(order, nullptr, nullptr, 1.0), 0.0);
    COMPARE_BITS(f_k_value(order, nullptr, nullptr, 7), 0.0);
    COMPARE_BITS(f_Dvalue(order, nullptr, nullptr, 7), 0.0);
    COMPARE_BITS(f_value(10, order, nullptr, nullptr, 7), 0.0);

    Guarded proc(1000);
    Guarded cos_proc(1000);
    Guarded skeleton(12);
    Fourier_Proc(order, nullptr, proc.data());
    Fourier_Cos_Proc(order, nullptr, cos_proc.data());
    Fourier_Skeleton(12, order, nullptr, skeleton.data());
    QVERIFY(proc.is_zero() && cos_proc.is_zero() && skeleton.is_zero());
    QVERIFY(proc.is_intact() && cos_proc.is_intact() && skeleton.is_intact());
}

void tst_fourier_limits::Fourier_Derivate_writes_n_plus_1_slopes_data() {
    QTest::addColumn<int>("n");
    for (const int n : {0, 1, 2, 3, 5, 8, 101})
        QTest::addRow("%d-points", n) << n;
}

void tst_fourier_limits::Fourier_Derivate_writes_n_plus_1_slopes() {
    QFETCH(int, n);
    Values x = noise(n, 1);
    Values y = noise(n, 2);
    for (double& v : x)
        v *= 1e4;
    Guarded out(n + 1);
    Fourier_Derivate(n, x.data(), y.data(), out.data());
    QVERIFY(out.is_intact());
    for (int k = 0; k <= n; ++k)
        QVERIFY2(!out.is_untouched(k), qPrintable(QString::number(k)));
    // Orders below 3 have no term in the derivative series.
    QCOMPARE(out.is_zero(), n < 6);

    Guarded none(0);
    Fourier_Derivate(-1, nullptr, nullptr, none.data());
    Fourier_Derivate(least_int, nullptr, nullptr, none.data());
    QVERIFY(none.is_intact());
}

void tst_fourier_limits::Fourier_Derivate_needs_dx_of_1() {
    const int n = 80;
    Values x;
    Values y;
    for (int k = 0; k < n; ++k) {
        x.push_back(-36.0 * std::cos(k * Pi / 40) - 48.0 * std::sin(k * Pi / 40));
        y.push_back(3.0 * std::sin(2 * k * Pi / 40));
    }
    Guarded out(n + 1);
    Fourier_Derivate(n, x.data(), y.data(), out.data());
    int steep = 0;
    for (int k = 0; k <= n; ++k) {
        const double t = 2 * k * Pi / 1000;
        const double dx = (36.0 * std::sin(t) - 48.0 * std::cos(t)) / 40.0;
        const double dy = 6.0 * std::cos(2 * t) / 40.0;
        COMPARE_NEAR(out[k], std::abs(dx) >= 1.0 ? dy / dx : 0.0, 1e-7);
        steep += std::abs(dx) < 1.0 ? 1 : 0;
    }
    QVERIFY(steep > 10 && steep < n - 10);

    // Exactly 1 is enough: the factor is searched for among neighbouring doubles, because dx is
    // rounded.
    Values unit = x;
    const auto first_dx = [&](double factor) {
        for (std::size_t k = 0; k < x.size(); ++k)
            unit[k] = factor * x[k];
        return derivative(n / 2, unit).front();
    };
    double factor_of_one = -1.0 / first_dx(1.0);
    for (int ulp = 0; ulp < 100; ++ulp)
        factor_of_one = std::nextafter(factor_of_one, 0.0);
    for (int ulp = 0; ulp < 200 && first_dx(factor_of_one) != -1.0; ++ulp)
        factor_of_one = std::nextafter(factor_of_one, 1.0);
    COMPARE_BITS(first_dx(factor_of_one), -1.0);
    Fourier_Derivate(n, unit.data(), y.data(), out.data());
    COMPARE_NEAR(out[0], -0.15, 1e-7);

    // |dx| beyond the range of any integer, and of either sign.
    for (const double factor : {1e12, -1e12, 1e30}) {
        Values wide = x;
        for (double& v : wide)
            v *= factor;
        Fourier_Derivate(n, wide.data(), y.data(), out.data());
        COMPARE_NEAR(out[0] * factor, 0.15 / (-48.0 / 40.0), 1e-7);
    }
}

void tst_fourier_limits::Fourier_Derivate_leaves_out_an_odd_sample() {
    Values x = noise(41, 3);
    Values y = noise(41, 4);
    for (double& v : x)
        v *= 1e3;
    Guarded out(42);
    Fourier_Derivate(41, x.data(), y.data(), out.data());
    x[40] = y[40] = nan_value;
    Guarded again(42);
    Fourier_Derivate(41, x.data(), y.data(), again.data());
    for (int k = 0; k <= 41; ++k)
        COMPARE_BITS(again[k], out[k]);
}

void tst_fourier_limits::Fourier_Polygon_D2_is_never_negative() {
    const Values y = noise(300, 5);
    Guarded out(1000);
    Fourier_Polygon_D2(polygon_of(y), out.data());
    // Order 150 takes the first 300 of the 1000 values.
    const Values second = derivative(150, derivative(150, y));
    QVERIFY(*std::min_element(second.begin(), second.end()) < -0.1);
    for (int k = 0; k < 1000; ++k)
        COMPARE_BITS(out[k], std::abs(second[std::size_t(k)]));
}

void tst_fourier_limits::Fourier_Polygon_D2_takes_zeros_beyond_1000_values_data() {
    QTest::addColumn<int>("points");
    for (const int points : {999, 1000, 1001, 1002, 1003, 1500})
        QTest::addRow("%d-points", points) << points;
}

void tst_fourier_limits::Fourier_Polygon_D2_takes_zeros_beyond_1000_values() {
    QFETCH(int, points);
    const int M = points / 2;
    const Values y = noise(points, 6);
    Guarded out(1000);
    Fourier_Polygon_D2(polygon_of(y), out.data());
    Values first = derivative(M, y);
    first.resize(std::max(std::size_t(1000), 2 * std::size_t(M)), 0.0);
    const Values second = derivative(M, first);
    for (int k = 0; k < 1000; ++k)
        COMPARE_BITS(out[k], std::abs(second[std::size_t(k)]));
    QVERIFY(out.is_intact());
}

void tst_fourier_limits::Fourier_Polygon_D2_of_less_than_2_points_is_0() {
    for (const int points : {0, 1}) {
        Guarded out(1000);
        Fourier_Polygon_D2(polygon_of(Values(std::size_t(points), 5.0)), out.data());
        QVERIFY(out.is_zero() && out.is_intact());
    }
}

void tst_fourier_limits::Fourier_Polygon_D2_logs_only_when_switched_on() {
    Guarded out(1000);
    const QtMessageHandler previous = qInstallMessageHandler(collect);
    const auto restore = qScopeGuard([previous] {
        qInstallMessageHandler(previous);
        QLoggingCategory::setFilterRules(QString());
        logged.clear();
    });
    Fourier_Polygon_D2(polygon_of(noise(80, 7)), out.data());
    QCOMPARE(logged, QStringList());

    QLoggingCategory::setFilterRules(QStringLiteral("aerolith.numerics.fourier.debug=true"));
    Fourier_Polygon_D2(polygon_of(noise(80, 7)), out.data());
    QCOMPARE(logged.size(), 1000);
    for (const int k : {0, 999})
        QCOMPARE(logged[k], QStringLiteral("aerolith.numerics.fourier|%1    d2: %2")
                                .arg(QString::number(k), QString::number(out[k] * 1e7, 'f', 5)));
}

void tst_fourier_limits::Fourier_Skeleton_writes_n_values() {
    Values y = noise(20, 8);
    for (const int n : {1, 2, 999, 1000, 1001}) {
        Guarded out(n);
        Fourier_Skeleton(n, 10, y.data(), out.data());
        QVERIFY(out.is_intact());
        QVERIFY(!out.is_untouched(0) && !out.is_untouched(n - 1));
        QVERIFY(out.is_finite());
    }
    for (const int n : {0, -1, least_int}) {
        Guarded none(0);
        Fourier_Skeleton(n, 10, y.data(), none.data());
        QVERIFY(none.is_intact());
    }
}

void tst_fourier_limits::outputs_keep_to_1000_values() {
    for (const int N : {1, 2, 3, 499, 500, 501, 700}) {
        Values y = noise(2 * N, 9);
        Guarded proc(1000);
        Guarded cos_proc(1000);
        Fourier_Proc(N, y.data(), proc.data());
        Fourier_Cos_Proc(N, y.data(), cos_proc.data());
        QVERIFY(proc.is_intact() && cos_proc.is_intact());
        QVERIFY(!proc.is_untouched(999) && !cos_proc.is_untouched(999));
        QVERIFY(proc.is_finite() && cos_proc.is_finite());
    }
}

void tst_fourier_limits::extreme_arguments() {
    Values An = {1.0, 0.5, 0.25, 0.125};
    Values Bn = {0.0, 0.5, 0.25, 0.125};
    for (const int k : {least_int, least_int + 1, greatest_int}) {
        // The series stays below the sum of its coefficients at any angle.
        QVERIFY(std::abs(f_k_value(4, An.data(), Bn.data(), k)) < 2.5);
        QVERIFY(std::abs(f_Dvalue(4, An.data(), Bn.data(), k)) < 2.5);
        QVERIFY(std::abs(f_value(11, 4, An.data(), Bn.data(), k)) < 2.5);
        QVERIFY(std::abs(f_value(k, 4, An.data(), Bn.data(), k)) < 2.5);
        QVERIFY(std::abs(fSum_yn_cos(2, An.data(), An.data(), k)) < 2.0);
        QVERIFY(std::abs(fSum_yn_sin(2, An.data(), An.data(), k)) < 2.0);
    }
    COMPARE_NEAR(f_k_value(4, An.data(), Bn.data(), greatest_int),
                 f_theta_value(4, An.data(), Bn.data(), 2.0 * greatest_int * Pi / 1000.0), 0.0);
    // Just beyond -n, where the sine of the rounded Pi is above 0.
    COMPARE_NEAR(f_theta(least_int, greatest_int), 9.28299e-5, 1e-9);
    COMPARE_NEAR(f_theta(greatest_int, greatest_int), 2.0 * Pi, 1e-15);
    COMPARE_NEAR(f_theta(0, greatest_int), 0.0, 0.0);
}

void tst_fourier_limits::input_that_is_not_finite() {
    for (const double odd : {nan_value, infinity, -infinity}) {
        for (const int place : {0, 1, 39}) {
            Values y = noise(40, 10);
            y[std::size_t(place)] = odd;
            Guarded out(1000);
            Fourier_Proc(20, y.data(), out.data());
            QVERIFY(out.is_intact());
            for (int i = 0; i < 1000; ++i)
                QVERIFY(!std::isfinite(out[i]));

            Values x = noise(40, 11);
            Guarded slopes(41);
            Fourier_Derivate(40, y.data(), x.data(), slopes.data());
            for (int k = 0; k <= 40; ++k)
                COMPARE_BITS(slopes[k], 0.0);
        }
    }
    Values An = {1.0, 0.5, 0.25, 0.125};
    QVERIFY(std::isnan(f_theta_value(4, An.data(), An.data(), nan_value)));
    QVERIFY(std::isnan(f_theta_value(4, An.data(), An.data(), infinity)));
}

AEROLITH_GUILESS_TEST_MAIN(tst_fourier_limits)
#include "tst_fourier_limits.moc"
