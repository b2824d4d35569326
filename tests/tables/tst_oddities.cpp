// SPDX-FileCopyrightText: Aerolith developers
// What real tables contain besides plain rows: read to the same points, with a finding where
// something was corrected.
#include "support/testmain.h"
#include "tables/table.h"

#include <QTest>

using namespace tables;

Q_DECLARE_METATYPE(Gravity)

namespace {

const QByteArray plain = "1 0\n0.5 0.06\n0.1 0.05\n0 0\n0.1 -0.03\n0.5 -0.02\n1 0\n";

QByteArray changed(const QByteArray& from, const QByteArray& to) {
    return QByteArray(plain).replace(from, to);
}

} // namespace

class tst_oddities : public QObject {
    Q_OBJECT
private slots:
    void same_points_data();
    void same_points();
    void titles_data();
    void titles();
    void combined_table_counts();
    void bare_decimal_commas();
    void words_far_above();
    void slip_is_a_doubt();
    void nose_at_the_right_is_a_doubt();
};

void tst_oddities::same_points_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line"); // of the first finding; 0: no finding
    QTest::addColumn<Gravity>("gravity");

    const auto row = [](const char* name, const QByteArray& text, int line = 0,
                        Gravity gravity = Gravity::note) {
        QTest::newRow(name) << text << line << gravity;
    };
    row("plain", plain);
    row("title with a number", "NACA 0012\n" + plain);
    row("title of a number", "0012\n" + plain, 1);
    row("title of two numbers", "23012 12\n" + plain, 1);
    row("title that begins with a number", "12.5% CLARK\n" + plain, 1);
    row("two titles", "NACA 0012\nfrom a wind tunnel, 1933\n\n" + plain);
    row("title and count", "T\n7\n" + plain, 2);
    row("Reynolds number", "T\nRe = 0.5e6\n" + plain);
    row("remark and date", plain + "\nhttp://somewhere.net/a1.htm\n25/09/2007\n");
    row("date of numbers", plain + "\n12.11.2004\n");
    row("remark with numbers", plain + "modif 0.99 -> 1\n0.0 0.00102 -> 0.00001 0.00102\n", 9);
    row("end", plain + "end\n\n");
    row("blank lines", changed("\n", "\n\n"));
    row("blank lines at the nose", changed("0 0\n", "0 0\n\n"));
    row("comment in the middle", changed("0 0\n", "0 0\n# lower side\n"));
    row("CR LF", changed("\n", "\r\n"));
    row("CR", changed("\n", "\r"));
    row("tabs and blanks", changed(" ", " \t  "));
    row("tab at the ends", changed("\n", "\t\n"));
    row("brackets", changed(" 0.06", " [0.06]"));
    row("form feed", "T\n\f" + plain);
    row("no line end", plain.chopped(1));
    row("percent", "100 0\n50 6\n10 5\n0 0\n10 -3\n50 -2\n100 0\n", 1);
    row("per mille", "1000 0\n500 60\n100 50\n0 0\n100 -30\n500 -20\n1000 0\n", 1);
    row("millimetres", "250 0\n125 15\n25 12.5\n0 0\n25 -7.5\n125 -5\n250 0\n", 1);
    row("percent with a title of two numbers",
        "63 412\n100 0\n50 6\n10 5\n0 0\n10 -3\n50 -2\n100 0\n", 1);
    row("touching columns", changed("0.1 -0.03", "0.1-0.03"));
    row("exponents", changed("0.06", "6.0E-02").replace("0.05", "5.d-2"));
    row("no value", changed("0.5 0.06\n", "0.7 ......\n0.5 0.06\n"), 2);
    row("row of zeros", plain + "0 0\n", 8);
    row("last row in percent", plain + "100.00 0.0\n", 8, Gravity::doubt);
    row("row after words", plain + "Cl and Cm\n0.5 0.1\n", 9, Gravity::doubt);
    row("DOS end", plain + "\x1a");
}

void tst_oddities::same_points() {
    QFETCH(const QByteArray, text);
    QFETCH(const int, line);
    QFETCH(const Gravity, gravity);

    const Table table = read(text);

    QVERIFY2(table.readable(),
             table.findings.isEmpty() ? "" : qPrintable(table.findings.last().text));
    QCOMPARE(table.points, read(plain).points);
    QCOMPARE(table.kind, Kind::section);
    if (line == 0) {
        QVERIFY2(table.findings.isEmpty(),
                 table.findings.isEmpty() ? "" : qPrintable(table.findings.first().text));
    } else {
        QVERIFY(!table.findings.isEmpty());
        QCOMPARE(table.findings.first().line, line);
        QCOMPARE(table.findings.first().gravity, gravity);
    }
}

void tst_oddities::titles_data() {
    QTest::addColumn<QByteArray>("above");
    QTest::addColumn<QString>("title");

    QTest::newRow("none") << QByteArray() << QString();
    QTest::newRow("plain") << QByteArray(" NACA 0012 \n") << QStringLiteral("NACA 0012");
    QTest::newRow("comment") << QByteArray("# E63\n") << QStringLiteral("E63");
    QTest::newRow("semicolon") << QByteArray(";\n; MH 60\n; second\n") << QStringLiteral("MH 60");
    QTest::newRow("columns") << QByteArray("x,y\n") << QString();
    QTest::newRow("title, columns") << QByteArray("T\n x  y\n") << QStringLiteral("T");
    QTest::newRow("number first") << QByteArray("12.5% CLARK Y\n")
                                  << QStringLiteral("12.5% CLARK Y");
    QTest::newRow("Latin-1") << QByteArray("SCH\xDCTTE\n") << QStringLiteral("SCH\u00dcTTE");
    QTest::newRow("control characters") << QByteArray("A\x1b"
                                                      "B\n")
                                        << QStringLiteral("A B");
}

void tst_oddities::titles() {
    QFETCH(const QByteArray, above);
    QFETCH(const QString, title);
    QCOMPARE(read(above + plain).title, title);
}

void tst_oddities::bare_decimal_commas() {
    const QByteArray text = "1 0\n.5 .06\n.1 .05\n0 0\n.1 .01\n.5 .01\n1 0\n";
    QVERIFY(read(text).readable());
    QCOMPARE(read(QByteArray(text).replace('.', ',')).points, read(text).points);
}

// The words that tell a mean line from a half are those of the last 1000 characters.
void tst_oddities::words_far_above() {
    const QByteArray half = "0 0\n.1 .01\n.3 .02\n.5 .02\n.8 .01\n1 0\n";
    QVERIFY(read("MEAN LINE\n" + QByteArray(990, 'z') + '\n' + half).readable());
}

// Tables of thickness and of the mean line are not outlines; the combined table is.
void tst_oddities::combined_table_counts() {
    const Table table = read("THICKNESS, MEAN LINE\n"
                             "1 0 0.0 **** 0.0 0.3\n2 0.1 0.04 0.4 0.01 0.1\n"
                             "3 0.5 0.04 -0.1 0.02 0.0\n4 1 0.0 -0.2 0.0 -0.1\n"
                             "COMBINED\n"
                             "1 0 0 0 0\n2 0.1 0.05 0.1 -0.03\n3 0.5 0.06 0.5 -0.02\n4 1 0 1 0\n"
                             "INTERPOLATED\n"
                             "1 0 0 0\n2 0.1 0.055 -0.03\n3 0.5 0.06 -0.02\n4 1 0 0\n");
    QVERIFY(table.readable());
    QCOMPARE(table.points, read(plain).points);
    QCOMPARE(table.lines.front(), 10);
}

void tst_oddities::slip_is_a_doubt() {
    const Table table = read("1 0\n0.8 0.03\n0.6 0.05\n0.04 0.06\n0.3 0.06\n0.1 0.05\n0 0\n"
                             "0.1 -0.03\n0.5 -0.02\n1 0\n");
    QVERIFY(table.readable());
    QCOMPARE(table.points.size(), 10);
    QCOMPARE(table.findings.size(), 1);
    QCOMPARE(table.findings[0].gravity, Gravity::doubt);
    QCOMPARE(table.findings[0].line, 4);
}

void tst_oddities::nose_at_the_right_is_a_doubt() {
    const QByteArray backwards = "0 0\n0.2 0.02\n0.5 0.05\n0.8 0.06\n0.95 0.04\n0.99 0.02\n1 0\n"
                                 "0.99 -0.02\n0.95 -0.03\n0.8 -0.03\n0.5 -0.02\n0 0\n";
    const Table table = read(backwards);
    QVERIFY(table.readable());
    QCOMPARE(table.findings.last().gravity, Gravity::doubt);
    QVERIFY2(table.findings.last().text.contains(QStringLiteral("round at the greatest")),
             qPrintable(table.findings.last().text));
}

AEROLITH_GUILESS_TEST_MAIN(tst_oddities)
#include "tst_oddities.moc"
