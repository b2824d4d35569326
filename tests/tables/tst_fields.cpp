// SPDX-FileCopyrightText: Aerolith developers
// The fields of a line, and the meaning of its commas.
#include "support/testmain.h"
#include "tables/fields_p.h"

#include <QTest>

#include <cmath>

using namespace tables;

Q_DECLARE_METATYPE(LineKind)

class tst_fields : public QObject {
    Q_OBJECT
private slots:
    void numbers_data();
    void numbers();
    void words_and_damage_data();
    void words_and_damage();
    void commas_data();
    void commas();
};

void tst_fields::numbers_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("commas");
    QTest::addColumn<QList<double>>("expected");
    QTest::addColumn<bool>("remark");

    const double none = std::nan("");
    const auto row = [](const char* line, QList<double> expected, bool remark = false,
                        bool commas = false) {
        QTest::newRow(line) << QByteArray(line) << commas << expected << remark;
    };
    row("1.0 0.0", {1.0, 0.0});
    row("  1.\t-.5  ", {1.0, -0.5});
    row("+0.5 +.25", {0.5, 0.25});
    row("1.0E-03 1d-3", {1e-3, 1e-3});
    row("0.5949424E-03 -1.D+00", {0.5949424e-3, -1.0});
    row("0.5,0.25", {0.5, 0.25});
    row("0.5, 0.25,", {0.5, 0.25});
    row("0.5;0.25", {0.5, 0.25});
    row("0.5,,0.25", {0.5, none, 0.25});
    row(",0.5,0.25", {none, 0.5, 0.25});
    row("0,5;0,25", {0.5, 0.25}, false, true);
    row("0,5, 0,25", {0.5, 0.25}, false, true);
    row(",5 -,25", {0.5, -0.25}, false, true);
    row("[0.0015] (-0.0013) \"0.5\" {1}", {0.0015, -0.0013, 0.5, 1.0});
    row("(0.5, 0.25)", {0.5, 0.25});
    row("50% 6.25%", {50.0, 6.25});
    row("250mm 12.5mm", {250.0, 12.5});
    row("1.00000-0.00123", {1.0, -0.00123});
    row("-.5-.25-1.E-3", {-0.5, -0.25, -1e-3});
    row("0.000000**********", {0.0, none});
    row("1.0000     ......", {1.0, none});
    row("0.5 0.25 trailing edge 12", {0.5, 0.25}, true);
    row("0.5 0.25 ! 0.7", {0.5, 0.25}, true);
    row("0.5 0.25 ; remark", {0.5, 0.25}, true);
    row("0.5 0.25 # 7", {0.5, 0.25}, true);
    row("12.5% CLARK Y", {12.5}, true);
    row("66 Num Pnts Upper", {66.0}, true);
    row("0.5 0.25 25/09/2007", {0.5, 0.25}, true);
}

void tst_fields::numbers() {
    QFETCH(const QByteArray, line);
    QFETCH(const bool, commas);
    QFETCH(const QList<double>, expected);
    QFETCH(const bool, remark);

    Fields fields;
    read_fields(line, commas, fields);

    QCOMPARE(fields.kind, LineKind::numbers);
    QCOMPARE(fields.remark, remark);
    QCOMPARE(qsizetype(fields.numbers.size()), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const double number = fields.numbers[std::size_t(i)];
        QVERIFY(number == expected[i] || (std::isnan(number) && std::isnan(expected[i])));
    }
}

void tst_fields::words_and_damage_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<LineKind>("kind");

    const auto row = [](const char* line, LineKind kind) {
        QTest::newRow(line) << QByteArray(line) << kind;
    };
    for (const char* line : {"", " \t ", "\f"})
        row(line, LineKind::blank);
    for (const char* line :
         {"NACA 0012", "E63  (4.25%)", "S1223", "# 1.0 0.0", "; 1.0 0.0", "! 1.0 0.0", "% 1.0 0.0",
          "// 1.0 0.0", "***** *****", "...... ......", "25/09/2007", "4Jan2002", "1A 2",
          "http://rsonst.bei.t-online.de/", "--- ---", "x,y"})
        row(line, LineKind::text);
    for (const char* line : {"O.123 0.5", "0.5 O.123", "1.234.5 0.1", "0.5 nan", "-inf 0.5",
                             "0.5 1e999", "0.5 1e15", "0.5 1.0E", "0.5 0.12-", "0.5 -O.1",
                             "0.5 l.0", "0.5 1.#QNAN", "1.0000-05 0.1", "1.2.2004", "0.5 +-1"})
        row(line, LineKind::damaged);
}

void tst_fields::words_and_damage() {
    QFETCH(const QByteArray, line);
    QFETCH(const LineKind, kind);

    Fields fields;
    read_fields(line, false, fields);

    QCOMPARE(fields.kind, kind);
    QCOMPARE(fields.damaged.isEmpty(), kind != LineKind::damaged);
}

void tst_fields::commas_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("decimal");

    const auto row = [](const char* text, bool decimal) {
        QTest::newRow(text) << QByteArray(text) << decimal;
    };
    row("1,0 0,0\n0,5 0,1\n", true);
    row("1,0;0,0\n0,5;-0,1\n", true);
    row("1,0\t0,0\n0,5\t0,1\n", true);
    row("1,0, 0,0\n0,5, 0,1\n", true);
    row("Title 1.5, 2.5\n1,0 0\n0,5 ,1\n", true);
    row("1 0\n0,5 0,1\n", true);
    row("1.0,0.0\n0.5,0.1\n", false);
    row("1.0, 0.0\n0.5, 0.1\n", false);
    row("100,0\n50,6\n0,0\n", false);
    row("100, 0\n50, 6\n0, 0\n", false);
    row("1,0,0,0\n0,5,0,1\n", false);
    row("1.0 0.0\n0.5 0.1\n0,4 0.1\n", false);
    row("1.0 0.0\n0.5 0.1\n0,4 0,1\n", false);
}

void tst_fields::commas() {
    QFETCH(const QByteArray, text);
    QFETCH(const bool, decimal);
    QCOMPARE(has_decimal_commas(text), decimal);
}

AEROLITH_GUILESS_TEST_MAIN(tst_fields)
#include "tst_fields.moc"
