// SPDX-FileCopyrightText: Aerolith developers
// Writing coordinate tables: the texts, and how the window's reader reads its own format.
#include "airfoil/airfoil.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "tables/write.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>

using tables::Format;
using tables::Gravity;
using tables::Table;
using tables::WriteOptions;
using tables::Written;

namespace {

Table table_of(const QPolygonF& points, const QString& title = QStringLiteral("AG 1")) {
    Table table;
    table.title = title;
    table.layout = QStringLiteral("selig");
    table.points = points;
    for (int i = 0; i < points.size(); ++i)
        table.lines.push_back(i + 2);
    return table;
}

const QPolygonF section = {{1.0, 0.0},   {0.5, 0.1},    {0.1, 0.05}, {0.0, 0.0},
                           {0.3, -0.03}, {0.5, -0.045}, {1.0, 0.0}};

QPolygonF backwards(QPolygonF points) {
    std::reverse(points.begin(), points.end());
    return points;
}

QPolygonF moved(QPolygonF points, double scale, QPointF shift) {
    for (QPointF& point : points)
        point = point * scale + shift;
    return points;
}

// Points on a random ellipse-like section with another frame and open ends.
QPolygonF random_section(std::mt19937& chance) {
    const auto between = [&chance](double least, double greatest) {
        return std::uniform_real_distribution<double>(least, greatest)(chance);
    };
    const int half = int(between(3.0, 90.0));
    const double chord = between(0.5, 1200.0);
    const QPointF shift(between(-5.0, 5.0), between(-5.0, 5.0));
    const double height = between(0.001, 0.4);
    QPolygonF points;
    for (int i = -half; i <= half; ++i) {
        const double x = double(i) / half * (double(i) / half);
        const double y = (i < 0 ? height : -0.6 * height) * (std::sqrt(x) - x);
        points << QPointF(x, y + 0.002 * (i < 0 ? x : -x)) * chord + shift;
    }
    // Sometimes the last end, not the first, is farther aft.
    points.last().rx() += between(-0.01, 0.01) * chord;
    return between(0.0, 1.0) < 0.5 ? points : backwards(points);
}

} // namespace

class tst_write : public QObject {
    Q_OBJECT
private slots:
    void text_data();
    void text();
    void title_data();
    void title();
    void refused_data();
    void refused();
    void names();
    void json();
    void window_reads_what_was_meant();
    void options();
};

void tst_write::text_data() {
    QTest::addColumn<Table>("table");
    QTest::addColumn<int>("format");
    QTest::addColumn<QByteArray>("expected");

    const Table plain = table_of(section);
    const QByteArray rows = " 1.000  0.000\n 0.500  0.100\n 0.100  0.050\n 0.000  0.000\n"
                            " 0.300 -0.030\n 0.500 -0.045\n 1.000  0.000\n";
    const QByteArray sides = "AG 1\n 4.0  4.0\n\n"
                             " 0.000  0.000\n 0.100  0.050\n 0.500  0.100\n 1.000  0.000\n\n"
                             " 0.000  0.000\n 0.300 -0.030\n 0.500 -0.045\n 1.000  0.000\n";
    const QByteArray columns = "AG 1\n 0.000  0.000  0.000\n 0.100  0.050 -0.010\n"
                               " 0.300  0.075 -0.030\n 0.500  0.100 -0.045\n"
                               " 1.000  0.000  0.000\n";
    const QByteArray list = "1.000,0.000\n0.500,0.100\n0.100,0.050\n0.000,0.000\n0.300,-0.030\n"
                            "0.500,-0.045\n1.000,0.000\n";
    const auto row = [](const char* name, const Table& table, Format format,
                        const QByteArray& expected) {
        QTest::newRow(name) << table << int(format) << expected;
    };
    row("window", plain, Format::window, "AG 1\n" + rows);
    row("window, another frame", table_of(moved(section, 250.0, {3.0, 7.0})), Format::window,
        "AG 1\n" + rows);
    row("selig", plain, Format::selig, "AG 1\n" + rows);
    row("lednicer", plain, Format::lednicer, sides);
    row("lednicer, lower side first", table_of(backwards(section)), Format::lednicer, sides);
    row("columns", plain, Format::columns, columns);
    row("columns, lower side first", table_of(backwards(section)), Format::columns, columns);
    row("csv", plain, Format::csv, "# AG 1\nx,y\n" + list);
    Table opened = table_of(section, QString());
    opened.openings = tables::Openings{100.0 / 3.0, 7.5};
    row("csv with openings", opened, Format::csv,
        "# openings: 33.333333333333336 7.5\nx,y\n" + list);

    QPolygonF blunt = section;
    blunt.insert(3, QPointF(0.0, 0.01));
    row("lednicer, blunt nose", table_of(blunt), Format::lednicer,
        QByteArray(sides).replace(" 0.000  0.000\n 0.100", " 0.000  0.010\n 0.100"));
    row("no sign before a zero",
        table_of({{1.0, -0.0}, {0.5, 0.1}, {0.1, 0.05}, {-0.0, -1e-9}, {0.5, -1e-4}, {1.0, -0.0}}),
        Format::csv,
        "# AG 1\nx,y\n1.000,0.000\n0.500,0.100\n0.100,0.050\n0.000,0.000\n0.500,0.000\n"
        "1.000,0.000\n");
}

void tst_write::text() {
    QFETCH(Table, table);
    QFETCH(int, format);
    QFETCH(QByteArray, expected);

    WriteOptions options;
    options.decimals = 3;
    const Written written = tables::write(table, Format(format), options);
    QVERIFY(written.ok());
    QCOMPARE(written.bytes, expected);
}

void tst_write::title_data() {
    QTest::addColumn<QString>("title");
    QTest::addColumn<QByteArray>("window");
    QTest::addColumn<QByteArray>("others");

    const auto row = [](const char* title, const char* window, const char* others) {
        QTest::newRow(title) << QString::fromUtf8(title) << QByteArray(window)
                             << QByteArray(others);
    };
    row("NACA 0012", "NACA 0012", "NACA 0012");
    row("Eppler 387", "Eppler 387", "Eppler 387");
    row("", "section", "section");
    row("2412", "section 2412", "_2412");
    row("00 12 NACA", "section 00 12 NACA", "_00 12 NACA");
    row("1.0-.3 A", "section 1.0-.3 A", "_1.0-.3 A");
    row("1 ) 1 A", "section 1 ) 1 A", "_1 ) 1 A");
    row("1; +1.0 A", "section 1; +1.0 A", "_1; +1.0 A");
    row("63-215", "section 63-215", "_63-215");
    row("-1 a", "-1 a", "_-1 a");
    row(".5 a", ".5 a", "_.5 a");
    row("T", "T", "_T");
    row("f", "f", "_f");
    row("true", "true", "_true");
    row("FX 63-137", "FX 63-137", "_FX 63-137");
    row("NaN", "NaN", "_NaN");
    row("Infinity", "Infinity", "_Infinity");
    row(", a", ", a", "_, a");
    row("/a", "/a", "_/a");
    row(" some\nlines\tand \x1b[1m ", "some lines and [1m", "some lines and [1m");
    row("Gö 387", "Gö 387", "Gö 387");
    row("Крыло", "Крыло", "Крыло");
}

void tst_write::title() {
    QFETCH(QString, title);
    QFETCH(QByteArray, window);
    QFETCH(QByteArray, others);

    const Table table = table_of(section, title);
    const auto first_line = [&table](Format format) {
        const QByteArray bytes = tables::write(table, format).bytes;
        return bytes.left(bytes.indexOf('\n'));
    };
    QCOMPARE(first_line(Format::window), window);
    for (const Format format : {Format::selig, Format::lednicer, Format::columns})
        QCOMPARE(first_line(format), others);
}

void tst_write::refused_data() {
    QTest::addColumn<Table>("table");
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* name, const QPolygonF& points, Format format, int decimals,
                        int line, const QString& reason) {
        QTest::newRow(name) << table_of(points) << int(format) << decimals << line << reason;
    };
    QPolygonF bulge = section;
    bulge[5] = QPointF(1.01, -0.045);
    row("a point behind both ends", bulge, Format::window, 8, 7,
        QStringLiteral(
            "x = 1.01 lies behind both ends (x = 1 and 1); the window would cut it off"));
    row("a lower side that runs back", bulge, Format::columns, 8, 0,
        QStringLiteral("the lower side has no single height at x = 1; expected an x that grows "
                       "from the nose to the trailing edge"));
    row("no width", QPolygonF(6, QPointF(1.0, 1.0)), Format::window, 8, 0,
        QStringLiteral("all points have the same x"));
    row("five points", section.mid(0, 5), Format::csv, 8, 0,
        QStringLiteral("5 points; expected at least 6"));
    row("no decimals", section, Format::window, 0, 0,
        QStringLiteral("0 decimals; expected 1 to 15"));
    row("too many decimals", section, Format::csv, 16, 0,
        QStringLiteral("16 decimals; expected 1 to 15"));
    QPolygonF infinite = section;
    infinite[2].setY(std::numeric_limits<double>::infinity());
    row("infinite", infinite, Format::selig, 8, 0, QStringLiteral("a point is not finite"));
}

void tst_write::refused() {
    QFETCH(Table, table);
    QFETCH(int, format);
    QFETCH(int, decimals);
    QFETCH(int, line);
    QFETCH(QString, reason);

    WriteOptions options;
    options.decimals = decimals;
    const Written written = tables::write(table, Format(format), options);
    QVERIFY(!written.ok());
    QVERIFY(written.bytes.isEmpty());
    QCOMPARE(written.findings.last().text, reason);
    QCOMPARE(written.findings.last().line, line);
}

void tst_write::names() {
    for (const QString& name : tables::format_names()) {
        const auto format = tables::format_from_name(name);
        QVERIFY(format.has_value());
        QCOMPARE(tables::format_names().at(int(*format)), name);
    }
    QCOMPARE(int(*tables::format_from_name(QStringLiteral("json"))), int(Format::json));
    QVERIFY(!tables::format_from_name(QStringLiteral("Selig")).has_value());
}

void tst_write::json() {
    Table table = table_of(section, QStringLiteral("a \"b\" \\ \n c\u00e9"));
    table.openings = tables::Openings{0.1, 200.0 / 3.0};
    WriteOptions options;
    options.decimals = 15;
    QJsonParseError error;
    const QByteArray bytes = tables::write(table, Format::json, options).bytes;
    const QJsonObject object = QJsonDocument::fromJson(bytes, &error).object();
    QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
    QCOMPARE(object.keys(), QStringList({QStringLiteral("layout"), QStringLiteral("openings"),
                                         QStringLiteral("points"), QStringLiteral("title")}));
    QCOMPARE(object[QStringLiteral("title")].toString(), table.title);
    QCOMPARE(object[QStringLiteral("layout")].toString(), table.layout);
    const QJsonObject openings = object[QStringLiteral("openings")].toObject();
    COMPARE_BITS(openings[QStringLiteral("start")].toDouble(), 0.1);
    COMPARE_BITS(openings[QStringLiteral("end")].toDouble(), 200.0 / 3.0);
    const QJsonArray points = object[QStringLiteral("points")].toArray();
    QCOMPARE(points.size(), section.size());
    for (qsizetype i = 0; i < points.size(); ++i) {
        COMPARE_BITS(points[i].toArray()[0].toDouble(), section[i].x());
        COMPARE_BITS(points[i].toArray()[1].toDouble(), section[i].y());
    }
    QVERIFY(tables::write(table_of(section), Format::json).bytes.contains("\"openings\": null"));
}

// For random outlines, decimals and titles the window shows each point at its intended place: the
// first at (1, 0), the width 1, in the order written.
void tst_write::window_reads_what_was_meant() {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("table.dat"));
    const QStringList titles = {QString(),
                                QStringLiteral("12"),
                                QStringLiteral("1 2 3"),
                                QStringLiteral("1.0 0.0"),
                                QStringLiteral("naca"),
                                QStringLiteral("=\u00ab.\u00bb"),
                                QStringLiteral("\ufeff1.5")};
    std::mt19937 chance(7);
    for (int run = 0; run < 400; ++run) {
        const Table table = table_of(random_section(chance), titles[run % titles.size()]);
        WriteOptions options;
        options.decimals = 1 + int(chance() % 15);
        const Written written = tables::write(table, Format::window, options);
        QVERIFY(written.ok());
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(written.bytes);
        file.close();

        QPolygonF expected = table.points;
        if (expected.last().x() > expected.first().x())
            expected = backwards(expected);
        double least = 1e9;
        for (const QPointF& point : std::as_const(expected))
            least = std::min(least, point.x());
        const double width = expected.first().x() - least;
        const QPolygonF shown = airfoil_Read(name);
        QCOMPARE(shown.size(), expected.size());
        COMPARE_BITS(shown.first(), QPointF(1.0, 0.0));
        const double tolerance = 0.5000001 * std::pow(10.0, -options.decimals) + 6e-8;
        double least_shown = 1.0;
        for (qsizetype i = 0; i < shown.size(); ++i) {
            const QPointF meant = (expected[i] - expected.first()) / width + QPointF(1.0, 0.0);
            COMPARE_NEAR(shown[i].x(), meant.x(), tolerance);
            COMPARE_NEAR(shown[i].y(), meant.y(), tolerance);
            least_shown = std::min(least_shown, shown[i].x());
        }
        COMPARE_BITS(least_shown, 0.0);
    }
}

void tst_write::options() {
    QPolygonF open = section;
    open.first().setY(0.01);
    Table table = table_of(moved(open, 2.0, {1.0, 1.0}));
    table.openings = tables::Openings{10.0, 20.0};
    WriteOptions options;
    options.openings = tables::Openings{5.0, 20.0};
    options.close_gap = true;
    options.normalize = true;
    options.reverse = true;
    options.decimals = 4;
    const Written written = tables::write(table, Format::csv, options);
    const QByteArrayList lines = written.bytes.split('\n');
    // The chord line slopes by atan(0.005), so the stations of the mouth are nearly the same.
    QVERIFY2(lines[1].startsWith("# openings: 4.99"), lines[1].constData());
    QCOMPARE(lines[3], QByteArray("1.0000,0.0000"));
    QCOMPARE(lines[4].left(7), QByteArray("0.4998,"));
    QCOMPARE(lines[6], QByteArray("0.0000,0.0000"));
    QCOMPARE(lines[9], QByteArray("1.0000,0.0000"));
    QCOMPARE(lines.size(), 11);
    QStringList texts;
    for (const tables::Finding& finding : written.findings) {
        QCOMPARE(int(finding.gravity), int(Gravity::note));
        texts << finding.text;
    }
    QCOMPARE(texts.size(), 3);
    QCOMPARE(texts[0], QStringLiteral("the gap of 0.02 at the trailing edge was closed"));
    QVERIFY2(texts[1].startsWith(QLatin1String("turned by -0.286")), qPrintable(texts[1]));
    QVERIFY2(texts[2].startsWith(QLatin1String("openings 5 20 become 4.99")), qPrintable(texts[2]));
}

AEROLITH_GUILESS_TEST_MAIN(tst_write)
#include "tst_write.moc"
