// SPDX-FileCopyrightText: Aerolith developers
// What the window shows of a file, and whether that is what the file means.
#include "document/splinebytes.h"
#include "sections/verdict.h"
#include "support/testmain.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <limits>

using sections::Judgement;
using sections::Verdict;
using tables::Table;

namespace {

// The outline of the tables below, the title being line 1.
const QPolygonF section = {{1.0, 0.001},  {0.7, 0.06},   {0.5, 0.09},   {0.3, 0.1},
                           {0.15, 0.08},  {0.05, 0.05},  {0.01, 0.02},  {0.0, 0.0},
                           {0.01, -0.02}, {0.05, -0.03}, {0.15, -0.04}, {0.4, -0.045},
                           {0.7, -0.025}, {1.0, -0.001}};

Table table_of(const QPolygonF& points) {
    Table table;
    table.points = points;
    for (int i = 0; i < points.size(); ++i)
        table.lines.push_back(i + 2);
    return table;
}

QByteArray text_of(const QPolygonF& points, const QByteArray& title = "Section") {
    QByteArray text = title + '\n';
    for (const QPointF& point : points)
        text += QByteArray::number(point.x(), 'f', 6) + ' ' +
                QByteArray::number(point.y(), 'f', 6) + '\n';
    return text;
}

QPolygonF backwards(QPolygonF points) {
    std::reverse(points.begin(), points.end());
    return points;
}

QPolygonF without(QPolygonF points, int row) {
    points.remove(row);
    return points;
}

QPolygonF with(QPolygonF points, int row, QPointF point) {
    points.insert(row, point);
    return points;
}

QPolygonF moved(QPolygonF points, double scale, QPointF shift) {
    for (QPointF& point : points)
        point = point * scale + shift;
    return points;
}

// The outline as the window shows it: its first point at (1, 0).
QPolygonF framed(const QPolygonF& points) {
    return moved(points, 1.0, QPointF(1.0, 0.0) - points.first());
}

SplineFoil sound_spline() {
    SplineFoil spline;
    const QPointF points[] = {{900.0, 380.0}, {600.0, 300.0}, {200.0, 290.0}, {100.0, 380.0},
                              {200.0, 430.0}, {600.0, 420.0}, {900.0, 380.0}};
    std::copy(std::begin(points), std::end(points), spline.CP);
    spline.num_pnt = int(std::size(points));
    spline.init_knots();
    spline.startVent = 2.5;
    spline.endVent = 7.5;
    return spline;
}

QByteArray file_of(const SplineFoil& spline) {
    ParaStruct record;
    record.spline = spline;
    return spline_bytes(record);
}

QStringList texts(const QList<tables::Finding>& findings) {
    QStringList list;
    for (const tables::Finding& finding : findings)
        list << finding.text;
    return list;
}

constexpr double no_number = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_verdict : public QObject {
    Q_OBJECT
private slots:
    void difference_data();
    void difference();
    void tables_data();
    void tables();
    void names();
    void kinds_data();
    void kinds();
    void splines_data();
    void splines();
    void samples();
};

void tst_verdict::difference_data() {
    QTest::addColumn<Table>("table");
    QTest::addColumn<QPolygonF>("shown");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("line");

    const QPolygonF shown = framed(section);
    const auto row = [](const char* name, const QPolygonF& meant, const QPolygonF& seen,
                        const char* expected, int line = 0) {
        QTest::newRow(name) << table_of(meant) << seen << QString::fromLatin1(expected) << line;
    };
    row("same", section, shown, "");
    row("same in another frame", moved(section, 250.0, {10.0, 20.0}), shown, "");
    row("same the other way round", section, framed(backwards(section)), "");
    row(
        "single precision", section,
        [&] {
            QPolygonF rounded = shown;
            for (QPointF& point : rounded)
                point = QPointF(double(float(point.x())), double(float(point.y())));
            return rounded;
        }(),
        "");
    row("far from the origin", moved(section, 1.0, {100.0, 0.0}), moved(shown, 1.0, {2e-6, 0.0}),
        "");
    row("nose twice", section, with(shown, 7, shown[7]), "");
    row("row repeated in the table", with(section, 3, section[3]), shown, "");
    row("nothing", section, {}, "the window shows nothing");
    row("nan", section, QPolygonF(14, QPointF(no_number, 0.0)), "the window shows nan");
    row("one point nan", section, with(shown, 5, QPointF(0.0, no_number)), "the window shows nan");
    row("a point lost", section, without(shown, 4), "the window loses 1 point", 6);
    row("the first point lost", section, without(shown, 0), "the window loses 1 point", 2);
    row("the last points lost", section, without(without(shown, 13), 12),
        "the window loses 2 points", 14);
    row("a point added", section, with(shown, 4, QPointF(0.2, 0.09)), "the window adds 1 point");
    row("a point added in front", section, with(shown, 0, QPointF(1.0, 0.2)),
        "the window adds 1 point");
    row("one lost, all scaled", section, moved(without(shown, 13), 1.002, {-0.002, 0.0}),
        "the window loses 1 point, the others are up to 0.002 off", 15);
    row("mirrored", section, moved(shown, 1.0, {}), "");
    row(
        "lower side wrong", section,
        [&] {
            QPolygonF wrong = shown;
            wrong[10].ry() += 0.01;
            return wrong;
        }(),
        "the window shows another shape, up to 0.01 off");
    row(
        "upside down", section,
        [&] {
            QPolygonF mirrored;
            for (const QPointF& point : shown)
                mirrored << QPointF(point.x(), -point.y());
            return mirrored;
        }(),
        "the window shows another shape, up to 0.055 off");
    row("both halves from the nose", section, backwards(shown.mid(0, 8)) + shown.mid(7),
        "the window draws a diagonal");
    row("one point for all", section, QPolygonF(1, QPointF(1.0, 0.0)),
        "the window shows another shape, up to 1 off");
    row("a hair more than the rounding", section, moved(shown, 1.0, {3e-6, 0.0}),
        "the window shows another shape, up to 3e-06 off");
}

void tst_verdict::difference() {
    QFETCH(Table, table);
    QFETCH(QPolygonF, shown);
    QFETCH(QString, expected);
    QFETCH(int, line);

    int told = -1;
    QCOMPARE(sections::difference_shown(table, shown, &told), expected);
    QCOMPARE(told, line);
}

void tst_verdict::tables_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("verdict");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const QByteArray& bytes, Verdict verdict,
                        const char* reason) {
        QTest::newRow(name) << bytes << int(verdict) << QString::fromLatin1(reason);
    };
    const QByteArray plain = text_of(section);
    row("plain", plain, Verdict::ok, "");
    row("lower side first", text_of(backwards(section)), Verdict::ok, "");
    row("exponents", QByteArray(plain).replace("0.100000", "1.00E-01"), Verdict::convert,
        "the window loses 1 point");
    row("halves from the nose",
        text_of(backwards(section.mid(0, 8)), "Section\n 8. 7.\n") + '\n' +
            text_of(section.mid(7), ""),
        Verdict::convert, "the window draws a diagonal");
    row("title of numbers", text_of(section, "63 2"), Verdict::convert,
        "the window draws a diagonal");
    row("last end farther behind", text_of(with(without(section, 13), 13, {1.002, -0.001})),
        Verdict::convert, "the window loses 1 point, the others are up to 0.002 off");
    row("no numbers", "Section\nnothing\n", Verdict::bad,
        "no rows of numbers; expected x and y in each");
    row("empty", "", Verdict::bad, "no rows of numbers; expected x and y in each");
}

void tst_verdict::tables() {
    QFETCH(QByteArray, bytes);
    QFETCH(int, verdict);
    QFETCH(QString, reason);

    const Judgement judgement = sections::judge_table(bytes, tables::read(bytes));
    QCOMPARE(judgement.reason, reason);
    QCOMPARE(int(judgement.verdict), verdict);
}

void tst_verdict::names() {
    QCOMPARE(sections::verdict_name(Verdict::ok), QStringLiteral("ok"));
    QCOMPARE(sections::verdict_name(Verdict::convert), QStringLiteral("convert"));
    QCOMPARE(sections::verdict_name(Verdict::ask), QStringLiteral("ask"));
    QCOMPARE(sections::verdict_name(Verdict::bad), QStringLiteral("bad"));

    // An error of the reading that names an option is a question, with its line.
    Table table = table_of(section);
    table.findings = {{tables::Gravity::note, 3, QStringLiteral("a note")},
                      {tables::Gravity::error, 5, QStringLiteral("two; picked by --element")}};
    const Judgement judgement = sections::judge_table(text_of(section), table);
    QCOMPARE(int(judgement.verdict), int(Verdict::ask));
    QCOMPARE(judgement.reason, QStringLiteral("two; picked by --element"));
    QCOMPARE(judgement.line, 5);
    QCOMPARE(judgement.findings.size(), 2);
}

void tst_verdict::kinds_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("is_spline");

    SplineFoil named = sound_spline();
    named.airfoilName = QStringLiteral("a name");
    const auto row = [](const char* name, const QByteArray& bytes, bool is_spline) {
        QTest::newRow(name) << bytes << is_spline;
    };
    row("spline", file_of(sound_spline()), true);
    row("spline with a name", file_of(named), true);
    row("cut off spline", file_of(named).left(100), true);
    row("empty", "", false);
    row("three zeros", QByteArray(3, '\0'), false);
    row("table", text_of(section), false);
    row("UTF-8 with a mark", "\xef\xbb\xbf" + text_of(section), false);
    row("UTF-16, big end first", QByteArray("\xfe\xff\0N\0A", 6), false);
    row("UTF-16, little end first", QByteArray("\xff\xfeN\0A\0", 6), false);
    row("UTF-16 without a mark", QByteArray("\0N\0A\0C", 6), false);
    row("UTF-32, big end first", QByteArray("\0\0\xfe\xff\0\0\0N", 8), false);
}

void tst_verdict::kinds() {
    QFETCH(QByteArray, bytes);
    QFETCH(bool, is_spline);

    QCOMPARE(sections::is_spline_file(bytes), is_spline);
}

void tst_verdict::splines_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason"); // of a bad one
    QTest::addColumn<QStringList>("findings");

    const auto changed = [](auto change) {
        SplineFoil spline = sound_spline();
        change(spline);
        return file_of(spline);
    };
    const auto good = [&](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << QString() << findings;
    };
    const auto bad = [&](const char* name, const QByteArray& bytes, const QString& reason) {
        QTest::newRow(name) << bytes << reason << QStringList(reason);
    };
    good("sound", file_of(sound_spline()), {});
    good("closed rib", changed([](SplineFoil& s) { s.startVent = s.endVent = 0.0; }), {});
    good("named", changed([](SplineFoil& s) { s.airfoilName = QStringLiteral("name"); }), {});
    good("too long", file_of(sound_spline()) + "tail",
         {QStringLiteral("4 bytes after the last item")});
    good("sharpened", changed([](SplineFoil& s) { s.b_knots[4] = s.b_knots[5] - 0.0001; }),
         {QStringLiteral("control point 4 is sharpened")});
    good("knots miscounted", changed([](SplineFoil& s) { s.num_knt = 9; }),
         {QStringLiteral("order 3 and 9 knots, expected 3 and 10")});
    good("second point nan", changed([](SplineFoil& s) { s.rd_CP[3].setX(no_number); }),
         {QStringLiteral("a carried value that is not finite")});
    const QString expected = QStringLiteral(", expected O-1 not below 0, O-2 not below O-1 and not "
                                            "above 100");
    good("openings exchanged", changed([](SplineFoil& s) { std::swap(s.startVent, s.endVent); }),
         {QStringLiteral("openings 7.5 2.5") + expected});
    good("opening behind", changed([](SplineFoil& s) { s.endVent = 101.0; }),
         {QStringLiteral("openings 2.5 101") + expected});
    bad("opening nan", changed([](SplineFoil& s) { s.endVent = no_number; }),
        QStringLiteral("openings 2.5 nan") + expected);
    bad("cut off", file_of(sound_spline()).chopped(1), QStringLiteral("3403 bytes, expected 3404"));
    bad("name cut off",
        QByteArray("\0\0\0\x04"
                   "a",
                   5) +
            file_of(sound_spline()).mid(4),
        QStringLiteral("3405 bytes, expected 3408"));
    bad("31 points", changed([](SplineFoil& s) { s.num_pnt = 31; }),
        QStringLiteral("31 control points, expected at most 30"));
    bad("-1 points", changed([](SplineFoil& s) { s.num_pnt = -1; }),
        QStringLiteral("-1 control points, expected at most 30"));
    bad("no points", changed([](SplineFoil& s) { s.num_pnt = 0; }),
        QStringLiteral("0 control points, expected at least 2"));
    bad("degree", changed([](SplineFoil& s) { s.degree = 3; }),
        QStringLiteral("degree 3, expected 2"));
    bad("decreasing", changed([](SplineFoil& s) { std::swap(s.b_knots[4], s.b_knots[5]); }),
        QStringLiteral("decreasing knots"));
    bad("knot nan", changed([](SplineFoil& s) { s.b_knots[4] = no_number; }),
        QStringLiteral("a knot that is not finite"));
    bad("point nan", changed([](SplineFoil& s) { s.CP[4].setY(no_number); }),
        QStringLiteral("a control point that is not finite"));
    bad("no width", changed([](SplineFoil& s) {
            for (QPointF& point : s.CP)
                point.setX(500.0);
        }),
        QStringLiteral("the curve has no width"));
}

void tst_verdict::splines() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    QFETCH(QStringList, findings);

    const Judgement judgement = sections::judge_spline(bytes);
    QCOMPARE(judgement.reason, reason);
    QCOMPARE(int(judgement.verdict), int(reason.isEmpty() ? Verdict::ok : Verdict::bad));
    // Items that were cut off count as zeros, which have further faults.
    QCOMPARE(texts(judgement.findings).mid(0, 1), findings.mid(0, 1));
    if (judgement.verdict == Verdict::ok)
        QCOMPARE(texts(judgement.findings), findings);
}

// The samples of the window are ok.
void tst_verdict::samples() {
    const QStringList names = {
        QStringLiteral("naca-0006-thin.dat"),    QStringLiteral("naca-0012-decimal-commas.txt"),
        QStringLiteral("naca-0012-outline.dat"), QStringLiteral("naca-0012-three-columns.txt"),
        QStringLiteral("naca-0021-thick.dat"),   QStringLiteral("naca-4412-cambered.dat"),
        QStringLiteral("symmetric.spl")};
    for (const QString& name : names) {
        QFile file(QStringLiteral(SAMPLES "/") + name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const Judgement judgement = sections::is_spline_file(bytes)
                                        ? sections::judge_spline(bytes)
                                        : sections::judge_table(bytes, tables::read(bytes));
        QVERIFY2(judgement.verdict == Verdict::ok, qPrintable(name + judgement.reason));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_verdict)
#include "tst_verdict.moc"
