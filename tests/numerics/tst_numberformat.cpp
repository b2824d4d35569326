// SPDX-FileCopyrightText: Aerolith developers
// Number texts.
#include "numerics/transform.h"
#include "support/testmain.h"

#include <QLocale>
#include <QScopeGuard>

#include <limits>

namespace {

const double nan_value = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

const char* const american = "en_US";
const char* const german = "de_DE";

// Sets the locale of the number texts during the lifetime of the guard.
[[nodiscard]] auto use_locale(const QString& name) {
    const QLocale old;
    QLocale::setDefault(QLocale(name));
    return qScopeGuard([old] { QLocale::setDefault(old); });
}

} // namespace

class tst_numberformat : public QObject {
    Q_OBJECT

private slots:
    void two_decimals_data();
    void two_decimals();
    void whole_number_data();
    void whole_number();
    void table_number_data();
    void table_number();
    void table_number_of_every_length();
};

void tst_numberformat::two_decimals_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<double>("x");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* tag, const char* locale, double x, const char* text) {
        QTest::newRow(tag) << QString::fromLatin1(locale) << x << QString::fromLatin1(text);
    };
    row("cut-not-rounded", american, 1.239, "1.23");
    row("cut-below-zero", american, -1.239, "-1.23");
    row("almost-one", american, 0.999, "0.99");
    row("almost-minus-one", american, -0.999, "-0.99");
    row("zero", american, 0.0, "0");
    row("minus-zero", american, -0.0, "0");
    row("cut-to-zero", american, -0.009, "0");
    row("one-decimal", american, 2.5, "2.5");
    row("whole", american, 42.0, "42");
    // 0.29 * 100 is 28.999999999999996.
    row("product-below-whole", american, 0.29, "0.28");
    row("all-six-digits", american, 1234.567, "1,234.56");
    row("rounded-to-six-digits", american, 12345.67, "12,345.7");
    row("hundred-thousand", american, 100000.0, "100,000");
    row("exponent", american, 1234567.0, "1.23457E+06");
    row("german", german, 1.239, "1,23");
    row("german-grouped", german, 100000.0, "100.000");
    row("within-64-bits", american, 9.2e16, "9.2E+16");
    row("beyond-64-bits", american, 1e20, "1E+20");
    row("beyond-64-bits-below-zero", american, -1e300, "-1E+300");
    row("limit-of-64-bits", american, 92233720368547758.08, "9.22337E+16");
    row("infinite", american, infinity, "INF");
    row("minus-infinite", american, -infinity, "-INF");
    row("nan", american, nan_value, "NAN");
}

void tst_numberformat::two_decimals() {
    QFETCH(QString, locale);
    QFETCH(double, x);
    QFETCH(QString, text);
    const auto guard = use_locale(locale);
    QCOMPARE(R_round2(x), text);
}

void tst_numberformat::whole_number_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<qlonglong>("n");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* tag, const char* locale, qlonglong n, const char* text) {
        QTest::newRow(tag) << QString::fromLatin1(locale) << n << QString::fromLatin1(text);
    };
    row("zero", american, 0, "0");
    row("below-zero", american, -5, "-5");
    row("three-digits", american, 999, "999");
    row("grouped", american, 1234567, "1,234,567");
    row("grouped-below-zero", american, -1234567, "-1,234,567");
    row("no-exponent", american, 1000000000, "1,000,000,000");
    row("german", german, 1234567, "1.234.567");
    // No double lies between this number and the next but one.
    row("beyond-a-double", american, (1LL << 53) + 1, "9,007,199,254,740,992");
    row("least", american, std::numeric_limits<long>::min(), "-9,223,372,036,854,775,808");
}

void tst_numberformat::whole_number() {
    QFETCH(QString, locale);
    QFETCH(qlonglong, n);
    QFETCH(QString, text);
    const auto guard = use_locale(locale);
    QCOMPARE(I_out(long(n)), text);
}

void tst_numberformat::table_number_data() {
    QTest::addColumn<double>("x");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* tag, double x, const char* text) {
        QTest::newRow(tag) << x << QString::fromLatin1(text);
    };
    row("one", 1.0, "1.000000");
    row("zero", 0.0, "0.000000");
    row("minus-zero", -0.0, "0.000000");
    row("hundred", 100.0, "100.000000");
    row("half", 0.5, "0.500000");
    row("two-digits-before-point", 12.5, "12.500000");
    row("small", 0.0123, "0.012300");
    row("four-decimals-left", 0.123456, "0.123400");
    row("quarter-below-zero", -0.25, "-0.250000");
    row("one-and-a-half-below-zero", -1.5, "-1.500000");
    row("three-decimals-left", 12.3456, "12.345000");
    row("two-decimals-left", 123.456, "123.450000");
    row("one-decimal-left", 1234.56, "1234.500000");
    row("three-decimals-left-by-sign", -0.123456, "-0.123000");
    row("one-decimal-left-by-sign", -123.456, "-123.400000");
    row("point-in-last-place", 12345.6, "12345..00000");
    row("point-behind-last-place", -12345.6, "-123450.00000");
    row("six-digits", 123456.0, "123456.000000");
    row("rounded-to-whole", 123456.7, "123457.000000");
    row("exponent-without-point", 1e-05, "1e-05.000000");
    row("exponent-with-point", 1.5e-05, "1.5e-000");
    row("great-exponent", 1e6, "1e+06.000000");
    row("great-exponent-with-digits", 1234567.0, "1.234500");
    row("leading-zeros", 0.00012345, "0.000100");
    row("infinite", infinity, "inf.000000");
    row("minus-infinite", -infinity, "-inf.000000");
    row("nan", nan_value, "nan.000000");
}

void tst_numberformat::table_number() {
    QFETCH(double, x);
    QFETCH(QString, text);
    QCOMPARE(R_out6(x), text);
    const auto guard = use_locale(QString::fromLatin1(german));
    QCOMPARE(R_out6(x), text);
}

// The text before the point, and seven characters for the point and the decimals.
void tst_numberformat::table_number_of_every_length() {
    for (int i = -20000; i <= 20000; ++i) {
        const double x = i / 16384.0;
        const QString six = QString::number(x, 'g', 6);
        const QString text = R_out6(x);
        if (six.contains(QLatin1Char('e')))
            continue;
        const qsizetype point = six.indexOf(QLatin1Char('.'));
        const QString kept = point < 0 ? six : six.left(6);
        QVERIFY2(text.startsWith(kept), qPrintable(text));
        QCOMPARE(text.size(), (point < 0 ? six.size() : point) + 7);
        for (qsizetype k = kept.size() + (point < 0 ? 1 : 0); k < text.size(); ++k)
            QCOMPARE(text.at(k), QLatin1Char('0'));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_numberformat)
#include "tst_numberformat.moc"
