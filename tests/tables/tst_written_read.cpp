// SPDX-FileCopyrightText: Aerolith developers
// Written tables read back equal: all formats, random sections, both orders.
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "tables/arrange.h"
#include "tables/write.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>

using tables::Format;
using tables::Openings;
using tables::Table;
using tables::WriteOptions;
using tables::Written;

namespace {

// A section in fractions of the chord, its sides at the same stations, upper side first.
struct Maker {
    std::mt19937 chance;

    explicit Maker(unsigned seed) : chance(seed) {}

    double between(double least, double greatest) {
        return std::uniform_real_distribution<double>(least, greatest)(chance);
    }

    Table section() {
        const int half = int(between(12.0, 80.0));
        const double height = between(0.03, 0.2);
        const double rise = between(-0.02, 0.3);
        const double gap = between(0.0, 1.0) < 0.5 ? 0.0 : between(0.0005, 0.01);
        Table table;
        table.title = QStringLiteral("Section %1").arg(half);
        for (int i = -half; i <= half; ++i) {
            const double x = 0.5 - 0.5 * std::cos(3.141592653589793 * i / half);
            const double up = height * (1.5 * std::sqrt(x) - x - 0.5 * x * x) + 0.5 * gap * x;
            table.points << QPointF(x, rise * x * (1.0 - x) * x + (i < 0 ? up : -up));
        }
        for (qsizetype i = 0; i < table.points.size(); ++i)
            table.lines.push_back(int(i) + 2);
        return table;
    }
};

// The greatest difference of the points, in x or y, from those expected; infinite if the counts
// differ.
double distance(const QPolygonF& points, const QPolygonF& expected) {
    if (points.size() != expected.size())
        return qInf();
    double worst = 0.0;
    for (qsizetype i = 0; i < points.size(); ++i) {
        const QPointF off = points[i] - expected[i];
        worst = std::max({worst, std::abs(off.x()), std::abs(off.y())});
    }
    return worst;
}

// The findings of the reading, and the beginning of the text.
QString story(const Table& table, const QByteArray& bytes) {
    QString text = QString::fromUtf8(bytes.left(300));
    for (const tables::Finding& finding : table.findings)
        text += QStringLiteral(" %1: %2;").arg(finding.line).arg(finding.text);
    return text;
}

} // namespace

class tst_written_read : public QObject {
    Q_OBJECT
private slots:
    void same_points_data();
    void same_points();
    void profile_again();
    void carried_data();
    void carried();
    void damaged_openings_data();
    void damaged_openings();
};

void tst_written_read::same_points_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("keeps_order");
    QTest::addColumn<QString>("layout");

    const auto row = [](Format format, bool keeps_order, const char* layout) {
        QTest::newRow(qPrintable(tables::format_names().at(int(format))))
            << int(format) << keeps_order << QString::fromLatin1(layout);
    };
    row(Format::window, true, "selig");
    row(Format::selig, true, "selig");
    row(Format::lednicer, false, "lednicer");
    row(Format::lep, false, "lep");
    row(Format::columns, false, "columns");
    row(Format::csv, true, "selig");
    row(Format::json, true, "selig");
}

void tst_written_read::same_points() {
    QFETCH(int, format);
    QFETCH(bool, keeps_order);
    QFETCH(QString, layout);

    Maker maker(unsigned(11 + format));
    for (int run = 0; run < 200; ++run) {
        Table table = maker.section();
        table.openings = Openings{0.0, 0.0};
        const bool is_turned = run % 2 == 1;
        if (is_turned)
            table = tables::reversed(table);
        WriteOptions options;
        options.decimals = 5 + run % 10;
        const Written written = tables::write(table, Format(format), options);
        QVERIFY(written.ok());
        const Table read = tables::read(written.bytes);
        QVERIFY2(read.readable(), qPrintable(story(read, written.bytes)));
        QCOMPARE(read.layout, layout);
        const QPolygonF expected =
            keeps_order ? table.points : tables::with_upper_first(table.points);
        QPolygonF points = keeps_order ? read.points : tables::with_upper_first(read.points);
        if (Format(format) == Format::window)
            points.translate(0.0, expected.first().y());
        const double worst = distance(points, expected);
        QVERIFY2(
            worst <= 0.50001 * std::pow(10.0, -options.decimals) + 1e-15,
            qPrintable(QStringLiteral("%1 with %2 decimals: ").arg(worst).arg(options.decimals) +
                       story(read, written.bytes)));
    }
}

// A profile with openings reads back with its openings. Written again it has the same bytes, even
// from the reversed order of its rows.
void tst_written_read::profile_again() {
    Maker maker(5);
    for (int run = 0; run < 200; ++run) {
        Table table = maker.section();
        const double start = maker.between(0.0, 5.0);
        table.openings = Openings{run % 5 == 0 ? 0.0 : start, start + maker.between(0.5, 10.0)};
        const QByteArray bytes = tables::write(table, Format::lep).bytes;
        const Table read = tables::read(bytes);
        QVERIFY2(read.readable(), qPrintable(story(read, bytes)));
        QVERIFY(read.openings.has_value());
        QVERIFY(std::abs(read.openings->start - table.openings->start) <= 0.51e-6);
        QVERIFY(std::abs(read.openings->end - table.openings->end) <= 0.51e-6);
        QCOMPARE(tables::write(read, Format::lep).bytes, bytes);
        QCOMPARE(tables::write(tables::reversed(read), Format::lep).bytes, bytes);
    }
}

void tst_written_read::carried_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("title");

    for (const Format format : {Format::csv, Format::json}) {
        for (const char* const title : {"NACA 2412", "", "Rib \"7\", left", "\u00d6"}) {
            QTest::addRow("%s, %s", qPrintable(tables::format_names().at(int(format))), title)
                << int(format) << QString::fromUtf8(title);
        }
    }
}

// Title and openings are preserved to the last bit.
void tst_written_read::carried() {
    QFETCH(int, format);
    QFETCH(QString, title);

    Maker maker(17);
    for (const bool has_openings : {false, true}) {
        Table table = maker.section();
        table.title = title;
        table.layout = QStringLiteral("selig");
        if (has_openings)
            table.openings = Openings{7.0 / 3.0, 1e-7 + 1000.0 / 97.0};
        const QByteArray bytes = tables::write(table, Format(format)).bytes;
        const Table read = tables::read(bytes);
        QVERIFY2(read.readable(), qPrintable(story(read, bytes)));
        QCOMPARE(read.title, title);
        QCOMPARE(read.openings.has_value(), has_openings);
        if (has_openings) {
            COMPARE_BITS(read.openings->start, table.openings->start);
            COMPARE_BITS(read.openings->end, table.openings->end);
        }
        QCOMPARE(tables::write(read, Format(format)).bytes, bytes);
    }
}

void tst_written_read::damaged_openings_data() {
    QTest::addColumn<QByteArray>("line");

    for (const char* const line :
         {"# openings:", "# openings: 2.5", "# openings: 2.5 x", "# openings: 2.5 7.5 1",
          "# openings: nan 7.5", "# openings: 1e999 7.5", " \"openings\": null,",
          " \"openings\": {\"start\": 2.5},", " \"openings\": {\"start\": 2.5, \"end\": \"7\"},",
          " \"openings\": {\"start\": 2.5, \"end\": 7"})
        QTest::newRow(line) << QByteArray(line);
}

void tst_written_read::damaged_openings() {
    QFETCH(QByteArray, line);

    Maker maker(17);
    const QByteArray bytes = tables::write(maker.section(), Format::csv).bytes;
    const Table read = tables::read("# Rib\n" + line + '\n' + bytes.mid(bytes.indexOf('\n') + 1));
    QVERIFY2(read.readable(), qPrintable(story(read, bytes)));
    QVERIFY(!read.openings.has_value());
}

AEROLITH_GUILESS_TEST_MAIN(tst_written_read)
#include "tst_written_read.moc"
