// SPDX-FileCopyrightText: Aerolith developers
// Rows, the course of x, columns and units, stray rows.
#include "support/testmain.h"
#include "tables/columns_p.h"
#include "tables/groups_p.h"
#include "tables/runs_p.h"
#include "tables/strays_p.h"

#include <QTest>

using namespace tables;

namespace {

struct Given {
    explicit Given(const QByteArray& text)
        : rows(rows_of(text)), sheet(rows, 0, rows.lines.size(), int(rows.lines[0].count)) {}
    Rows rows;
    Sheet sheet;
};

QByteArray column(const QList<double>& numbers) {
    QByteArray text;
    for (const double number : numbers)
        text += QByteArray::number(number) + " 0\n";
    return text;
}

} // namespace

class tst_sheets : public QObject {
    Q_OBJECT
private slots:
    void rows_know_their_lines();
    void course_data();
    void course();
    void slip_is_no_turn();
    void choices_data();
    void choices();
    void unit_data();
    void unit();
    void part_of_a_chord();
    void counts_data();
    void counts();
    void strays_data();
    void strays();
};

void tst_sheets::rows_know_their_lines() {
    const Rows rows = rows_of("Title\r\n\r\n1 0\r\n0.5 0.1 tip\r\n\r\n0 0\r\n");
    QCOMPARE(int(rows.lines.size()), 4);
    QCOMPARE(rows.lines[0].kind, LineKind::text);
    QCOMPARE(rows.line_text(0).toByteArray(), QByteArray("Title"));
    QCOMPARE(rows.lines[1].number, 3);
    QVERIFY(rows.lines[1].after_gap);
    QVERIFY(rows.lines[2].remark && !rows.lines[2].after_gap);
    QCOMPARE(rows.value(2, 1), 0.1);
    QCOMPARE(rows.lines[3].number, 6);
    QVERIFY(rows.lines[3].after_gap);
}

void tst_sheets::course_data() {
    QTest::addColumn<QList<double>>("x");
    QTest::addColumn<QString>("expected");

    using List = QList<double>;
    QTest::newRow("down, up") << List{1, .6, .2, 0, .3, .7, 1} << "down, up";
    QTest::newRow("up, down") << List{0, .3, .7, 1, .6, .2, 0} << "up, down";
    QTest::newRow("twice up") << List{0, .3, .7, 1, 0, .2, .6, 1} << "up, up";
    QTest::newRow("twice down") << List{1, .6, .2, 0, 1, .6, .2, 0} << "down, down";
    QTest::newRow("once") << List{0, .3, .7, 1} << "up";
    QTest::newRow("a little back") << List{1, .6, .2, 0, .01, -.001, .3, .7, .69, 1} << "down, up";
    QTest::newRow("two loops") << List{1, .5, 0, .5, 1, .5, 0, .5, 1} << "down, up, down, up";
    QTest::newRow("nowhere") << List{1, 1, 1, 1} << "";
}

void tst_sheets::course() {
    QFETCH(const QList<double>, x);
    QFETCH(const QString, expected);
    const Given given(column(x));
    QCOMPARE(described(course_of(given.sheet)), expected);
}

void tst_sheets::slip_is_no_turn() {
    const Given given(column({1, .9, .8, .17, .6, .5, .3, .1, 0, .1, .3, .5, .8, 1}));
    const Course course = course_of(given.sheet);
    QCOMPARE(described(course), QStringLiteral("down, up"));
    QCOMPARE(course.slips, std::vector<int>{3});
}

void tst_sheets::choices_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QList<int>>("columns"); // of each choice

    QTest::newRow("x y") << QByteArray("1 0\n0.5 0.1\n0 0\n") << QList<int>{2};
    QTest::newRow("numbered") << QByteArray("1 1 0\n2 0.5 0.1\n3 0 0\n") << QList<int>{2};
    QTest::newRow("numbered anew")
        << QByteArray("1 0 0\n2 1 0\n\n1 0 0\n2 1 0.5\n") << QList<int>{2};
    QTest::newRow("numbers behind") << QByteArray("1 0 0\n0.5 0.1 1\n0 0 2\n") << QList<int>{2};
    QTest::newRow("stations") << QByteArray("0 0 0\n1 2 -2\n3 3 -3\n") << QList<int>{3};
    QTest::newRow("z behind") << QByteArray("1 0 7\n0.5 0.1 7\n0 0 7\n") << QList<int>{2};
    QTest::newRow("z or a flat side")
        << QByteArray("1 0 0\n0.5 0.1 0\n0 0 0\n") << QList<int>{2, 3};
    QTest::newRow("empty column") << QByteArray("1,,0\n0.5,,0.1\n0,,0\n") << QList<int>{2};
}

void tst_sheets::choices() {
    QFETCH(const QByteArray, text);
    QFETCH(const QList<int>, columns);
    const Given given(text);
    QList<int> found;
    for (const Choice& choice : column_choices(given.sheet))
        found.append(choice.sheet.columns());
    QCOMPARE(found, columns);
}

void tst_sheets::unit_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("findings");

    // Of the first row.
    QTest::newRow("fractions") << QByteArray("1 0.1\n0 0\n") << 1.0 << 0.1 << 0;
    QTest::newRow("a little more") << QByteArray("1.00001 0.1\n0 0\n") << 1.00001 << 0.1 << 0;
    QTest::newRow("extended") << QByteArray("1.2 0.1\n0 0\n") << 1.2 << 0.1 << 0;
    QTest::newRow("percent") << QByteArray("100 10\n0 0\n") << 1.0 << 0.1 << 1;
    QTest::newRow("extended, percent") << QByteArray("120 10\n0 0\n") << 1.2 << 0.1 << 1;
    QTest::newRow("per mille") << QByteArray("1000 100\n0 0\n") << 1.0 << 0.1 << 1;
    QTest::newRow("250 mm") << QByteArray("250 25\n0 0\n") << 1.0 << 0.1 << 1;
    QTest::newRow("quarter point") << QByteArray("75 10\n-25 0\n") << 0.75 << 0.1 << 1;
    QTest::newRow("percent and fractions") << QByteArray("100 0.1\n0 0\n") << 1.0 << 0.1 << 2;
}

void tst_sheets::unit() {
    QFETCH(const QByteArray, text);
    QFETCH(const double, x);
    QFETCH(const double, y);
    QFETCH(const int, findings);
    const Given given(text);
    Choice choice = {given.sheet, {}};
    QVERIFY(!find_unit(choice, given.sheet));
    QCOMPARE(choice.sheet.at(0, 0), x);
    QCOMPARE(choice.sheet.at(0, 1), y);
    QCOMPARE(choice.findings.size(), findings);
}

void tst_sheets::part_of_a_chord() {
    const Given given("1 0\n0.85 0.003\n0.975 0\n");
    Choice choice = {given.sheet, {}};
    const auto fault = find_unit(choice, given.sheet);
    QVERIFY(fault && fault->gravity == Gravity::error && fault->line == 1);
}

void tst_sheets::counts_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("counts");

    const QByteArray halves = "0 0\n0.5 0.1\n1 0\n0 0\n0.5 -0.1\n1 0\n";
    const QByteArray percent = "0 0\n50 10\n100 0\n0 0\n50 -10\n100 0\n";
    QTest::newRow("fractions") << "3. 3.\n" + halves << true;
    QTest::newRow("percent") << "3 3\n" + percent << true;
    QTest::newRow("others") << "61 61\n" + halves << true;
    QTest::newRow("others in percent") << "17 16\n" + percent << true;
    QTest::newRow("a point") << "1 0\n" + halves << false;
    QTest::newRow("a point in percent") << "2 10\n" + percent << false;
}

void tst_sheets::counts() {
    QFETCH(const QByteArray, text);
    QFETCH(const bool, counts);
    Given given(text);
    Head head;
    take_counts(given.sheet, head);
    QCOMPARE(head.lines.size(), std::size_t(counts ? 1 : 0));
    QCOMPARE(given.sheet.line(0), counts ? 2 : 1);
}

void tst_sheets::strays_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("behind");
    QTest::addColumn<int>("left");

    QTest::newRow("none") << QByteArray() << QByteArray() << 7;
    QTest::newRow("title") << QByteArray("23012 12\n") << QByteArray() << 7;
    QTest::newRow("unit") << QByteArray() << QByteArray("100.00 0.0000\n") << 7;
    QTest::newRow("digit") << QByteArray() << QByteArray("10000 0.0000\n") << 7;
    QTest::newRow("zeros") << QByteArray() << QByteArray("0 0\n") << 7;
    QTest::newRow("both ends") << QByteArray("99 1\n") << QByteArray("-7 -7\n") << 7;
    QTest::newRow("y") << QByteArray() << QByteArray("0.9 4\n") << 7;
    QTest::newRow("trailing edge") << QByteArray() << QByteArray("1.01 0\n") << 8;
}

void tst_sheets::strays() {
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, behind);
    QFETCH(const int, left);
    Given given(before + "1 0\n0.5 0.06\n0.1 0.05\n0 0\n0.1 -0.03\n0.5 -0.02\n1 0\n" + behind);
    QList<Finding> findings;
    remove_strays(given.sheet, findings);
    QCOMPARE(given.sheet.rows(), left);
    QCOMPARE(findings.isEmpty(), before.isEmpty() && (behind.isEmpty() || left == 8));
}

AEROLITH_GUILESS_TEST_MAIN(tst_sheets)
#include "tst_sheets.moc"
