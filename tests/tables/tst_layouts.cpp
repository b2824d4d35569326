// SPDX-FileCopyrightText: Aerolith developers
// Every layout: the same small section, written in each of them.
#include "support/testmain.h"
#include "tables/table.h"

#include <QTest>

using namespace tables;

namespace {

// One outline, upper side first.
const QByteArray upper_first = "1,0 .5,.06 .1,.05 0,0 .1,-.03 .5,-.02 1,0";
const QByteArray lower_first = "1,0 .5,-.02 .1,-.03 0,0 .1,.05 .5,.06 1,0";
const QByteArray symmetric = "1,0 .5,.06 .1,.05 0,0 .1,-.05 .5,-.06 1,0";

QPolygonF points(const QByteArray& text) {
    QPolygonF polygon;
    for (const QByteArray& point : text.split(' '))
        polygon.append(QPointF(point.split(',')[0].toDouble(), point.split(',')[1].toDouble()));
    return polygon;
}

QString errors(const Table& table) {
    QString text;
    for (const Finding& finding : table.findings) {
        if (finding.gravity == Gravity::error)
            text += QStringLiteral("%1: %2\n").arg(finding.line).arg(finding.text);
    }
    return text;
}

} // namespace

class tst_layouts : public QObject {
    Q_OBJECT
private slots:
    void layouts_data();
    void layouts();
    void names();
    void layout_decides();
    void elements();
    void openings_data();
    void openings();
};

void tst_layouts::layouts_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QByteArray>("outline");
    QTest::addColumn<QList<int>>("lines");

    const auto row = [](const char* name, const QByteArray& text, const char* layout,
                        const QByteArray& outline, const QList<int>& lines) {
        QTest::newRow(name) << text << QString::fromLatin1(layout) << outline << lines;
    };
    const QByteArray upper = "0 0\n.1 .05\n.5 .06\n1 0\n";
    const QByteArray lower = "0 0\n.1 -.03\n.5 -.02\n1 0\n";
    row("selig", "T\n1 0\n.5 .06\n.1 .05\n0 0\n.1 -.03\n.5 -.02\n1 0\n", "selig", upper_first,
        {2, 3, 4, 5, 6, 7, 8});
    row("selig, lower first", "1 0\n.5 -.02\n.1 -.03\n0 0\n.1 .05\n.5 .06\n1 0\n", "selig",
        lower_first, {1, 2, 3, 4, 5, 6, 7});
    row("selig, x y z", "1 0 3\n.5 .06 3\n.1 .05 3\n0 0 3\n.1 -.03 3\n.5 -.02 3\n1 0 3\n", "selig",
        upper_first, {1, 2, 3, 4, 5, 6, 7});
    row("selig, numbered", "1 1 0\n2 .5 .06\n3 .1 .05\n4 0 0\n5 .1 -.03\n6 .5 -.02\n7 1 0\n",
        "selig", upper_first, {1, 2, 3, 4, 5, 6, 7});
    row("grid extents", "T\n-2.0 3.0 -2.5 3.5\n1 0\n.5 .06\n.1 .05\n0 0\n.1 -.03\n.5 -.02\n1 0\n",
        "selig", upper_first, {3, 4, 5, 6, 7, 8, 9});
    row("blade table",
        "8 NumCoords ! with the reference\n! reference\n.333 0\n! shape\n1 0\n.5 -.02\n.1 -.03\n"
        "0 0\n.1 .05\n.5 .06\n1 0\n",
        "selig", lower_first, {5, 6, 7, 8, 9, 10, 11});
    row("loop", "0 0\n.1 .05\n.5 .06\n1 0\n.5 -.02\n.1 -.03\n0 0\n", "loop", lower_first,
        {4, 5, 6, 7, 2, 3, 4});
    row("loop, open at the nose", "0 0\n.1 .05\n.5 .06\n1 0\n.5 -.02\n.1 -.03\n", "loop",
        lower_first, {4, 5, 6, 1, 2, 3, 4});
    row("loop, two corners", "0 0\n.1 .05\n.5 .06\n1 .01\n1 0\n.5 -.02\n.1 -.03\n", "loop",
        "1,0 .5,-.02 .1,-.03 0,0 .1,.05 .5,.06 1,.01", {5, 6, 7, 1, 2, 3, 4});
    row("lednicer", "T\n4. 4.\n\n" + upper + "\n" + lower, "lednicer", upper_first,
        {7, 6, 5, 4, 10, 11, 12});
    row("lednicer, no counts", upper + lower, "lednicer", upper_first, {4, 3, 2, 1, 6, 7, 8});
    row("lednicer, lower first", lower + upper, "lednicer", lower_first, {4, 3, 2, 1, 6, 7, 8});
    row("lednicer, words", "Upper\n" + upper + "Lower\n" + lower, "lednicer", upper_first,
        {5, 4, 3, 2, 8, 9, 10});
    row("lednicer, a count each", "4\n" + upper + "4\n" + lower, "lednicer", upper_first,
        {5, 4, 3, 2, 8, 9, 10});
    row("lednicer, a count each, nose behind 0",
        "4\n.01 0\n.1 .05\n.5 .06\n1 0\n4\n.01 0\n.1 -.03\n.5 -.02\n1 0\n", "lednicer",
        "1,0 .5,.06 .1,.05 .01,0 .1,-.03 .5,-.02 1,0", {5, 4, 3, 2, 8, 9, 10});
    row("lednicer, x y z",
        "4 0\n0 0 0\n.1 .05 0\n.5 .06 0\n1 0 0\n4 0\n0 0 0\n.1 -.03 0\n"
        ".5 -.02 0\n1 0 0\n",
        "lednicer", upper_first, {5, 4, 3, 2, 8, 9, 10});
    row("twice from the trailing edge", "1 0\n.5 .06\n.1 .05\n0 0\n\n1 0\n.5 -.02\n.1 -.03\n0 0\n",
        "lednicer", upper_first, {1, 2, 3, 4, 8, 7, 6});
    row("half", "T\n\n\n4. 4.\n" + upper, "half", symmetric, {8, 7, 6, 5, 6, 7, 8});
    row("half, lower", "0 0\n.1 -.05\n.5 -.06\n1 0\n", "half",
        "1,0 .5,-.06 .1,-.05 0,0 .1,.05 .5,.06 1,0", {4, 3, 2, 1, 2, 3, 4});
    row("columns", "0 0 0\n.1 .05 -.03\n.5 .06 -.02\n1 0 0\n", "columns", upper_first,
        {4, 3, 2, 1, 2, 3, 4});
    row("columns, lower first, backwards", "1 0 0\n.5 -.02 .06\n.1 -.03 .05\n0 0 0\n", "columns",
        lower_first, {1, 2, 3, 4, 3, 2, 1});
    row("pairs", "x y x y\n0 0 0 0\n.1 .05 .1 -.03\n.5 .06 .5 -.02\n1 0 1 0\n", "pairs",
        upper_first, {5, 4, 3, 2, 3, 4, 5});
    row("pairs, one longer", "0,0,0,0\n.1,.05,.1,-.03\n.5,.06,.5,-.02\n.8,.03,1,0\n1,0,,\n",
        "pairs", "1,0 .8,.03 .5,.06 .1,.05 0,0 .1,-.03 .5,-.02 1,0", {5, 4, 3, 2, 1, 2, 3, 4});
    row("turns",
        "0 0\n.1 -.03\n.1 .05\n.3 -.03\n.3 .06\n.5 -.02\n.5 .06\n.7 -.01\n.7 .04\n.9 -.01\n"
        ".9 .02\n1 0\n",
        "turns",
        "1,0 .9,-.01 .7,-.01 .5,-.02 .3,-.03 .1,-.03 0,0 .1,.05 .3,.06 .5,.06 .7,.04 .9,.02 1,0",
        {12, 10, 8, 6, 4, 2, 1, 3, 5, 7, 9, 11, 12});
    row("lep", "profile\n7\n5\n2\n2\n1 0\n.5 .06\n.1 .05\n0 0\n.1 -.03\n.5 -.02\n1 0\n", "lep",
        upper_first, {6, 7, 8, 9, 10, 11, 12});
    row("vsp",
        "DEMO\nName\n0 Sym Flag (0 - No, 1 - Yes)\n4 Num Pnts Upper\n4 Num Pnts Lower\n" + upper +
            "\n" + lower,
        "vsp", upper_first, {9, 8, 7, 6, 12, 13, 14});
    row("vsp, symmetric", "DEMO\nName\n1 Sym Flag\n4 Upper\n4 Lower\n" + upper, "vsp", symmetric,
        {9, 8, 7, 6, 7, 8, 9});
}

void tst_layouts::layouts() {
    QFETCH(const QByteArray, text);
    QFETCH(const QString, layout);
    QFETCH(const QByteArray, outline);
    QFETCH(const QList<int>, lines);

    const Table table = read(text);

    QVERIFY2(table.readable(), qPrintable(errors(table)));
    QCOMPARE(table.layout, layout);
    QCOMPARE(table.points, points(outline));
    QCOMPARE(QList<int>(table.lines.begin(), table.lines.end()), lines);
    QVERIFY(table.candidates.isEmpty());

    ReadOptions same;
    same.layout = layout;
    QCOMPARE(read(text, same).points, table.points);
}

void tst_layouts::names() {
    for (const QString& name : layout_names()) {
        ReadOptions options;
        options.layout = name;
        QVERIFY(!read("no numbers\n", options).readable());
    }
    ReadOptions unknown;
    unknown.layout = QStringLiteral("unknown");
    QVERIFY(!read("1 0\n.5 .06\n.1 .05\n0 0\n.1 -.03\n.5 -.02\n1 0\n", unknown).readable());
}

// A third column of zeros is z, or the lower side of a section with a flat bottom.
void tst_layouts::layout_decides() {
    const QByteArray text = "0 0 0\n.1 .05 0\n.5 .06 0\n1 0 0\n";
    const Table asked = read(text);
    QVERIFY(!asked.readable());
    QCOMPARE(asked.candidates.size(), 2);
    for (const QString& name : asked.candidates)
        QVERIFY(errors(asked).contains(name));

    ReadOptions options;
    options.layout = QStringLiteral("columns");
    QCOMPARE(read(text, options).points, points("1,0 .5,.06 .1,.05 0,0 .1,0 .5,0 1,0"));
    options.layout = QStringLiteral("half");
    QCOMPARE(read(text, options).points, points(symmetric));
}

void tst_layouts::elements() {
    const QByteArray section = "1 0\n.5 .06\n.1 .05\n0 0\n.1 -.03\n.5 -.02\n1 0\n";
    const QByteArray flap = "1.3 -.1\n1.2 -.05\n1.1 0\n1.05 -.01\n1.1 -.03\n1.2 -.07\n1.3 -.1\n";
    for (const QByteArray mark : {"999.0 999.0\n", "Flap\n", "\n"}) {
        const QByteArray text = "T\n" + section + mark + flap;
        const Table both = read(text);
        QVERIFY(!both.readable());
        QVERIFY(errors(both).contains(QStringLiteral("--element")));
        ReadOptions options;
        options.element = 1;
        QCOMPARE(read(text, options).points, points(upper_first));
        options.element = 2;
        QCOMPARE(read(text, options).points.size(), 7);
        QCOMPARE(read(text, options).points.first(), QPointF(1.3, -.1));
        options.element = 3;
        QVERIFY(!read(text, options).readable());
    }
    ReadOptions first;
    first.element = 1;
    QCOMPARE(read(section, first).points, points(upper_first));
}

void tst_layouts::openings_data() {
    QTest::addColumn<QByteArray>("counts");
    QTest::addColumn<QList<double>>("openings"); // none: no openings, but read

    QTest::newRow("lower side") << QByteArray("7\n5\n2\n2\n") << QList<double>{10.0, 50.0};
    QTest::newRow("from the nose") << QByteArray("7\n4\n3\n2\n") << QList<double>{0.0, 50.0};
    QTest::newRow("closed") << QByteArray("7\n5\n1\n3\n") << QList<double>{10.0, 10.0};
    QTest::newRow("upper side") << QByteArray("7\n3\n3\n3\n") << QList<double>();
}

void tst_layouts::openings() {
    QFETCH(const QByteArray, counts);
    QFETCH(const QList<double>, openings);
    const Table table =
        read("p\n" + counts + "1 0\n.5 .06\n.1 .05\n0 0\n.1 -.03\n.5 -.02\n1 0\n 1 1A 1 47.0\n");
    QVERIFY2(table.readable(), qPrintable(errors(table)));
    QCOMPARE(table.layout, QStringLiteral("lep"));
    QCOMPARE(table.title, QStringLiteral("p"));
    QCOMPARE(table.openings.has_value(), !openings.isEmpty());
    if (table.openings) {
        QCOMPARE(table.openings->start, openings[0]);
        QCOMPARE(table.openings->end, openings[1]);
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_layouts)
#include "tst_layouts.moc"
