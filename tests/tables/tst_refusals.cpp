// SPDX-FileCopyrightText: Aerolith developers
// What is refused, in which line and why.
#include "support/testmain.h"
#include "tables/table.h"

#include <QTest>

using namespace tables;

class tst_refusals : public QObject {
    Q_OBJECT
private slots:
    void refused_data();
    void refused();
};

void tst_refusals::refused_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("reason"); // part of the text

    const auto row = [](const char* name, const QByteArray& text, int line, const char* reason) {
        QTest::newRow(name) << text << line << QString::fromLatin1(reason);
    };
    const QByteArray plain = "1 0\n0.5 0.06\n0.1 0.05\n0 0\n0.1 -0.03\n0.5 -0.02\n1 0\n";
    const auto changed = [&](const char* from, const char* to) {
        return QByteArray(plain).replace(from, to);
    };
    row("empty", "", 0, "no rows");
    row("words", "There are no\nnominal coordinates.\n", 1, "no rows");
    row("letter for a digit", changed("0.1 0.05", "O.1 0.05"), 3, "O.1 0.05");
    row("second point", changed("0.5 0.06", "0.5 1.234.5"), 2, "1.234.5");
    row("first row damaged", changed("1 0\n0.5", "l.0 0\n0.5"), 1, "l.0 0");
    row("last row damaged", plain.chopped(4) + "1 O.0\n", 7, "1 O.0");
    row("not a number", changed("0 0\n", "0 nan\n"), 4, "0 nan");
    row("too large", changed("0 0\n", "0 1e99\n"), 4, "1e99");
    row("a letter before", changed("0.1 0.05", "x0.1 0.05"), 3, "x0.1");
    row("a number short", changed("0.5 0.06", "0.56"), 2, "1 number");
    row("a number more", changed("0.5 0.06", "0.5 0 06.1"), 2, "3 numbers");
    row("comma for a point", changed("0.5 0.06", "0,5 0.06"), 2, "3 numbers");
    const QByteArray finer = "0.95 0.01\n" + plain.mid(4).chopped(4) + "0.97 0\n";
    row("first row a number short", "1.0\n" + finer, 1, "1 number");
    row("last row a number short", finer + "1.0\n", 8, "1 number");
    row("first row a number more", "0.96 0 0\n" + finer, 1, "3 numbers");
    row("leading comma", "1,0 0,0\n,5,5 ,06\n,1 ,05\n0 0\n,1 -,03\n,5 -,02\n1 0\n", 2, ",5,5");
    row("five points", "1 0\n0.5 0.06\n0 0\n0.5 -0.02\n1 0\n", 1, "expected");
    row("pressures", "1 .2\n.5 -.9\n.1 -1.2\n0 1\n.1 -.3\n.5 -.1\n1 .2\n", 1, "y runs");
    row("part of a chord", "1 0\n.95 .004\n.9 .005\n.85 .003\n.9 -.004\n.95 -.003\n1 0\n", 1,
        "whole chord");
    row("lower side only positive",
        changed("-", "").replace("0 0\n", "0.0125 0.021\n0 0\n0.0125 0.015\n"), 5,
        "both sides rise");
    row("polar", "-2 0.01 0.1\n0 0.008 0.3\n2 0.01 0.5\n4 0.012 0.7\n6 0.02 0.9\n8 0.03 1.1\n", 1,
        "expected");
    row("pressures, named", "x/c Cp\n" + plain, 2, "\"cp\"");
    row("coefficients over 360 degrees",
        "-180 0 0.01\n-120 0.3 1.2\n-90 0 1.3\n-30 -0.8 0.3\n0 0.1 0.01\n30 0.9 0.3\n90 0 1.3\n"
        "120 -0.3 1.2\n180 0 0.01\n",
        1, "expected");
    row("mean line with counts", "MEAN LINE\n6. 6.\n\n0 0\n.1 .01\n.3 .02\n.5 .02\n.8 .01\n1 0\n",
        4, "mean line");
    const QByteArray half = "0 0\n.1 .01\n.3 .02\n.5 .02\n.8 .01\n1 0\n";
    row("mean line 1000 characters above", "MEAN LINE\n" + QByteArray(989, 'z') + '\n' + half, 3,
        "mean line");
    const QByteArray stretch = "0.2 0.3\n0.3 0.3\n0.4 0.3\n0.5 0.3\n0.6 0.3\n0.7 0.3\n\n";
    row("one side behind other rows", stretch + half, 8, "x runs up, down, up");
    row("section behind 63 stretches", stretch.repeated(63) + plain, 442, "like a section");
    row("section behind 64 stretches", stretch.repeated(64) + plain, 8, "x runs up, down, up");
    row("mean line", "MEAN LINE\n0 0\n.1 .01\n.3 .02\n.5 .02\n.8 .01\n1 0\n", 2, "mean line");
    row("half and something else",
        "0 0\n.1 .05\n.5 .06\n1 0\nx\n0 5 9\n.1 -.03 8\n.5 -.02 8\n1 0 9\n", 6, "both sides");
    row("counts of a profile", "p\n8\n5\n2\n2\n" + plain, 2, "expected 10");
    row("count of a profile", "p\n9\n5\n2\n4\n" + plain, 2, "7 rows");
    row("counts of halves", "D\nN\n0\n3\n4\n0 0\n.1 .05\n.5 .06\n1 0\n0 0\n.1 -.03\n.5 -.02\n1 0\n",
        4, "counts 3 and 4");
    row("thickness, named", "x camber thickness\n0 0 0\n.1 .01 .08\n.5 .02 .08\n1 0 0\n", 2,
        "\"thickness\"");
    const QByteArray flap =
        "1.4 -.1\n1.2 -.076\n1.04 -.08\n1 -.1\n1.04 -.112\n1.2 -.108\n1.4 -.1\n";
    row("a flap of the same section", plain + "999.0 999.0\n" + flap, 9, "--element");
    row("two sections", plain + "other\n1 0\n.5 .1\n.1 .07\n0 0\n.1 -.03\n.5 -.02\n1 0\n", 9,
        "--element");
}

void tst_refusals::refused() {
    QFETCH(const QByteArray, text);
    QFETCH(const int, line);
    QFETCH(const QString, reason);

    const Table table = read(text);

    QVERIFY(!table.readable());
    const Finding& last = table.findings.last();
    QCOMPARE(last.gravity, Gravity::error);
    QVERIFY2(last.text.contains(reason), qPrintable(last.text));
    QCOMPARE(last.line, line);
}

AEROLITH_GUILESS_TEST_MAIN(tst_refusals)
#include "tst_refusals.moc"
