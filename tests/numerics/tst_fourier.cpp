// SPDX-FileCopyrightText: Aerolith developers
// Properties and deliberate oddities of the Fourier functions. tst_fourier_reference
// tests their accuracy, tst_fourier_limits the ends of their ranges.
#include "baseline/fourier.h"
#include "numerics/constants.h"
#include "numerics/fourier.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QPointF>
#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using Values = std::vector<double>;

const double nan_value = std::numeric_limits<double>::quiet_NaN();

Values noise(int count, quint32 seed) {
    QRandomGenerator random(seed);
    Values values;
    for (int i = 0; i < count; ++i)
        values.push_back(random.bounded(2.0) - 1.0);
    return values;
}

struct Fit {
    int N;
    Values An;
    Values Bn;

    Fit(int order, Values y) : N(order), An(std::size_t(N) + 1), Bn(std::size_t(N)) {
        F_coef(N, y.data(), An.data(), Bn.data());
    }
};

Values contour(int N, Values y) {
    Values out(1000);
    Fourier_Proc(N, y.data(), out.data());
    return out;
}

Values plain_contour(int N, const Values& y) {
    Values out(1000);
    baseline::Fourier_Proc(N, y.data(), out.data());
    return out;
}

// How far the fitted series is from its samples.
double largest_residual(int N, const Values& y) {
    Fit fit(N, y);
    double most = 0.0;
    for (int k = 0; k < 2 * N; ++k) {
        const double fitted = f_theta_value(N, fit.An.data(), fit.Bn.data(), k * Pi / N);
        most = max_or_nan(most, std::abs(fitted - y[std::size_t(k)]));
    }
    return most;
}

double largest_difference(const Values& a, const Values& b) {
    double most = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        most = max_or_nan(most, std::abs(a[i] - b[i]));
    return a.size() == b.size() ? most : nan_value;
}

// A four-digit section of 12 % thickness and 2 % camber at 40 % of chord, once round from the
// trailing edge along the upper side.
QPointF section_point(double turn) {
    const double x = (1.0 + std::cos(turn)) / 2.0;
    const double half = 0.6 * (0.2969 * std::sqrt(x) - 0.126 * x - 0.3516 * x * x +
                               0.2843 * x * x * x - 0.1036 * x * x * x * x);
    const double camber =
        x < 0.4 ? 0.02 / 0.16 * (0.8 * x - x * x) : 0.02 / 0.36 * (0.2 + 0.8 * x - x * x);
    return QPointF(x, turn < 3.14159265358979 ? camber + half : camber - half);
}

} // namespace

class tst_fourier : public QObject {
    Q_OBJECT

private slots:
    void constant_input_leaves_coefficients_of_1e_9();
    void constant_input_is_reproduced_but_for_the_closing_term();
    void pure_harmonics_data();
    void pure_harmonics();
    void linearity();
    void equals_the_plain_sums_data();
    void equals_the_plain_sums();
    void section_fit_reproduces_the_samples_data();
    void section_fit_reproduces_the_samples();

    void Pi_is_taken_as_given();
    void f_theta_value_ends_at_N_minus_2();
    void f_theta_value_closes_with_a_fixed_angle();
    void f_theta_value_of_order_2_is_its_closing_term();
    void f_theta_exact_values();
    void f_theta_gathers_at_the_nose();
    void f_k_value_is_f_theta_value_at_even_angles();
    void f_Dvalue_ends_at_N_minus_2_and_divides_by_N();
    void f_value_ends_at_M_minus_1();
    void f_value_of_one_sample_has_no_step();
    void Fourier_Proc_is_f_theta_value_at_f_theta();
    void Fourier_Cos_Proc_drops_the_sines();
    void Fourier_Skeleton_drops_the_sines();
};

// Pi falls short of pi by 5.9e-10, so the sums over one turn do not vanish.
void tst_fourier::constant_input_leaves_coefficients_of_1e_9() {
    const Fit fit(500, Values(1000, 3.0));
    COMPARE_NEAR(fit.An[0], 6.0, 1e-12);
    double most = 0.0;
    for (int m = 1; m < 500; ++m)
        most = max_or_nan(
            most, max_or_nan(std::abs(fit.An[std::size_t(m)]), std::abs(fit.Bn[std::size_t(m)])));
    QVERIFY2(most > 1e-10 && most < 1e-8, qPrintable(exact_text(most)));
}

void tst_fourier::constant_input_is_reproduced_but_for_the_closing_term() {
    Values y(1000, 3.0);
    Values even(1000);
    Fourier_Cos_Proc(500, y.data(), even.data());
    QVERIFY(largest_difference(contour(500, y), y) < 1e-6);
    QVERIFY(largest_difference(even, y) < 1e-6);
}

void tst_fourier::pure_harmonics_data() {
    QTest::addColumn<int>("N");
    QTest::addColumn<int>("m");

    QTest::newRow("first") << 500 << 1;
    QTest::newRow("fifth") << 500 << 5;
    QTest::newRow("last-but-one-of-the-series") << 500 << 497;
    QTest::newRow("last-of-the-series") << 500 << 498;
    QTest::newRow("small-order") << 7 << 3;
}

void tst_fourier::pure_harmonics() {
    QFETCH(int, N);
    QFETCH(int, m);
    Values y;
    for (int k = 0; k < 2 * N; ++k)
        y.push_back(0.75 * std::cos(m * k * Pi / N) - 0.5 * std::sin(m * k * Pi / N));
    Fit fit(N, y);
    for (int j = 0; j < N; ++j) {
        COMPARE_NEAR(fit.An[std::size_t(j)], j == m ? 0.75 : 0.0, 5e-8);
        COMPARE_NEAR(fit.Bn[std::size_t(j)], j == m ? -0.5 : 0.0, 5e-8);
    }
    const Values out = contour(N, y);
    for (int i = 0; i < 1000; ++i) {
        const double angle = m * f_theta(i, 1000);
        COMPARE_NEAR(out[std::size_t(i)], 0.75 * std::cos(angle) - 0.5 * std::sin(angle), 1e-6);
    }
}

void tst_fourier::linearity() {
    const Values a = noise(200, 1);
    const Values b = noise(200, 2);
    Values mixed(200);
    for (std::size_t k = 0; k < mixed.size(); ++k)
        mixed[k] = 2.5 * a[k] - 0.3 * b[k];
    const Values of_a = contour(100, a);
    const Values of_b = contour(100, b);
    Values expected(1000);
    for (std::size_t i = 0; i < expected.size(); ++i)
        expected[i] = 2.5 * of_a[i] - 0.3 * of_b[i];
    QVERIFY(largest_difference(contour(100, mixed), expected) < 1e-12);
}

// Near the numbers of samples that fill whole blocks of the fit, and the largest order.
void tst_fourier::equals_the_plain_sums_data() {
    QTest::addColumn<int>("N");
    for (const int N : {1, 2, 3, 4, 5, 8, 12, 13, 99, 499, 500})
        QTest::addRow("order-%d", N) << N;
}

void tst_fourier::equals_the_plain_sums() {
    QFETCH(int, N);
    const Values y = noise(2 * N, quint32(N));
    QVERIFY(largest_difference(contour(N, y), plain_contour(N, y)) < 1e-12);
}

// The last two harmonics are not in the series and the closing term has a fixed angle, so y is
// reproduced as well as the series converges, which the kink of the camber line at 40 % of chord
// limits. In x, a pure cosine, the error of the short Pi grows with the order.
void tst_fourier::section_fit_reproduces_the_samples_data() {
    QTest::addColumn<int>("N");
    QTest::addColumn<double>("x_figure");
    QTest::addColumn<double>("y_figure");

    QTest::newRow("order-20") << 20 << 6e-9 << 6e-6;
    QTest::newRow("order-100") << 100 << 3e-8 << 4e-8;
    QTest::newRow("order-500") << 500 << 1.5e-7 << 8e-11;
}

void tst_fourier::section_fit_reproduces_the_samples() {
    QFETCH(int, N);
    QFETCH(double, x_figure);
    QFETCH(double, y_figure);
    Values x;
    Values y;
    for (int k = 0; k < 2 * N; ++k) {
        x.push_back(section_point(k * Pi / N).x());
        y.push_back(section_point(k * Pi / N).y());
    }
    const double x_error = largest_residual(N, x);
    const double y_error = largest_residual(N, y);
    qInfo("largest difference from a sample, parts of chord: x %.2e, y %.2e", x_error, y_error);
    QVERIFY(x_error < x_figure && y_error < y_figure);
    QVERIFY2(x_error > x_figure / 4.0 && y_error > y_figure / 4.0, "too good for this series");
}

void tst_fourier::Pi_is_taken_as_given() {
    Values Tp(8);
    Values fYn(8);
    Values func(8);
    Values An(5);
    Values Bn(4);
    Init_fu_fields(4, An.data(), Bn.data(), Tp.data(), fYn.data(), func.data());
    COMPARE_BITS(Tp[4], 3.141592653);
    COMPARE_BITS(f_theta(500, 1000), 3.141592653);
    // The cosine of a quarter turn: half the error of Pi.
    Values one_cosine = {0.0, 1.0, 0.0, 0.0};
    Values none(4);
    COMPARE_NEAR(f_k_value(4, one_cosine.data(), none.data(), 250), 2.948966e-10, 1e-15);
}

void tst_fourier::f_theta_value_ends_at_N_minus_2() {
    Values none(6);
    for (int m = 0; m < 6; ++m) {
        Values sines(6);
        sines[std::size_t(m)] = 1.0;
        const double in_series = m >= 1 && m <= 4 ? std::sin(m * 0.7) : 0.0;
        COMPARE_NEAR(f_theta_value(6, none.data(), sines.data(), 0.7), in_series, 1e-15);
    }
    Values cosines = {0.0, 0.0, 0.0, 0.0, 1.0, 0.0};
    COMPARE_NEAR(f_theta_value(6, cosines.data(), none.data(), 0.7), std::cos(4 * 0.7), 1e-15);
}

void tst_fourier::f_theta_value_closes_with_a_fixed_angle() {
    // An[N] is not read: there is none here.
    Values cosines = {0.0, 0.0, 0.0, 0.0, 0.0, 1.0};
    Values none(6);
    for (const double t : {0.0, 0.7, 3.0, 6.2})
        COMPARE_BITS(f_theta_value(6, cosines.data(), none.data(), t),
                     0.5 * std::cos(12 * Pi / 1000));
}

void tst_fourier::f_theta_value_of_order_2_is_its_closing_term() {
    Values An = {3.0, 5.0};
    Values Bn = {7.0, 9.0};
    for (const double t : {0.0, 1.0, 6.0})
        COMPARE_BITS(f_theta_value(2, An.data(), Bn.data(), t),
                     0.5 * (3.0 + 5.0 * std::cos(4 * Pi / 1000)));
    COMPARE_BITS(f_theta_value(1, An.data(), Bn.data(), 1.0),
                 0.5 * (3.0 + 3.0 * std::cos(2 * Pi / 1000)));
}

void tst_fourier::f_theta_exact_values() {
    COMPARE_BITS(f_theta(0, 1000), 0.0);
    COMPARE_BITS(f_theta(500, 1000), Pi);
    COMPARE_BITS(f_theta(1000, 1000), 2.0 * Pi);
    const double last = f_theta(999, 1000);
    QVERIFY(last < TwoPi && last > TwoPi - 0.2);
    COMPARE_NEAR(last, TwoPi - Pi * std::sqrt(std::sin(Pi / 1000)), 1e-15);
    // Half of an odd count is truncated: sample 3 of 7 is on the first branch.
    COMPARE_NEAR(f_theta(3, 7), Pi * std::sqrt(std::sin(3 * Pi / 7)), 1e-15);
    COMPARE_NEAR(f_theta(4, 7), Pi * (2.0 - std::sqrt(std::sin(3 * Pi / 7))), 1e-15);
    QVERIFY(std::isnan(f_theta(-1, 1000)) && std::isnan(f_theta(1001, 1000)));
    QVERIFY(std::isnan(f_theta(0, 0)) && std::isnan(f_theta(3, 0)));
}

void tst_fourier::f_theta_gathers_at_the_nose() {
    for (int i = 1; i < 1000; ++i)
        QVERIFY(f_theta(i, 1000) > f_theta(i - 1, 1000));
    QVERIFY(f_theta(1, 1000) - f_theta(0, 1000) > 0.17);
    QVERIFY(f_theta(500, 1000) - f_theta(499, 1000) < 1e-5);
    QVERIFY(f_theta(501, 1000) - f_theta(500, 1000) < 1e-5);
}

void tst_fourier::f_k_value_is_f_theta_value_at_even_angles() {
    Fit fit(20, noise(40, 3));
    for (const int k : {-7, 0, 1, 500, 999, 1000})
        COMPARE_BITS(f_k_value(20, fit.An.data(), fit.Bn.data(), k),
                     f_theta_value(20, fit.An.data(), fit.Bn.data(), (2 * k) * Pi / 1000));
}

void tst_fourier::f_Dvalue_ends_at_N_minus_2_and_divides_by_N() {
    const double t = 2 * 77 * Pi / 1000;
    for (int m = 0; m < 6; ++m) {
        Values only(6);
        Values none(6);
        only[std::size_t(m)] = 1.0;
        const double in_series = m >= 1 && m <= 4 ? 1.0 : 0.0;
        COMPARE_NEAR(f_Dvalue(6, only.data(), none.data(), 77),
                     in_series * -m * std::sin(m * t) / 6, 1e-15);
        COMPARE_NEAR(f_Dvalue(6, none.data(), only.data(), 77), in_series * m * std::cos(m * t) / 6,
                     1e-15);
    }
}

void tst_fourier::f_value_ends_at_M_minus_1() {
    const double t = 3 * (Pi + Pi) / 10;
    for (int m = 0; m < 6; ++m) {
        Values only(6);
        Values none(6);
        only[std::size_t(m)] = 1.0;
        COMPARE_NEAR(f_value(11, 6, only.data(), none.data(), 3), m == 0 ? 0.5 : std::cos(m * t),
                     1e-15);
        COMPARE_NEAR(f_value(11, 6, none.data(), only.data(), 3), m == 0 ? 0.0 : std::sin(m * t),
                     1e-15);
    }
}

void tst_fourier::f_value_of_one_sample_has_no_step() {
    Values An = {1.0, 2.0, 4.0};
    Values Bn = {0.0, 8.0, 16.0};
    for (const int k : {0, 1, 1000})
        COMPARE_BITS(f_value(1, 3, An.data(), Bn.data(), k), 0.5 + 2.0 + 4.0);
}

void tst_fourier::Fourier_Proc_is_f_theta_value_at_f_theta() {
    const Values y = noise(122, 4);
    Fit fit(61, y);
    const Values out = contour(61, y);
    for (int i = 0; i < 1000; ++i)
        COMPARE_BITS(out[std::size_t(i)],
                     f_theta_value(61, fit.An.data(), fit.Bn.data(), f_theta(i, 1000)));
}

void tst_fourier::Fourier_Cos_Proc_drops_the_sines() {
    Values y = noise(122, 5);
    Fit fit(61, y);
    Values no_sines(61);
    Values out(1000);
    Fourier_Cos_Proc(61, y.data(), out.data());
    for (int k = 0; k < 1000; ++k)
        COMPARE_BITS(out[std::size_t(k)], f_k_value(61, fit.An.data(), no_sines.data(), k));
}

void tst_fourier::Fourier_Skeleton_drops_the_sines() {
    Values y = noise(60, 6);
    Fit fit(30, y);
    Values no_sines(30);
    Values out(41);
    Fourier_Skeleton(41, 30, y.data(), out.data());
    for (int k = 0; k < 41; ++k)
        COMPARE_BITS(out[std::size_t(k)], f_value(41, 30, fit.An.data(), no_sines.data(), k));
    // Without sine terms the two ends of the turn meet.
    COMPARE_NEAR(out[0], out[40], 1e-6);
}

AEROLITH_GUILESS_TEST_MAIN(tst_fourier)
#include "tst_fourier.moc"
