// SPDX-FileCopyrightText: Aerolith developers
// The verbs measure and compare: units, exit codes, missing measures.
#include "cli/cliruns.h"
#include "cli/lengths.h"
#include "support/testmain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const std::string samples = SAMPLES;
const std::string outline = samples + "/naca-0012-outline.dat";
const std::string cambered = samples + "/naca-4412-cambered.dat";
const std::string spline = samples + "/symmetric.spl";

QJsonObject only(const CliRun& run) {
    const QJsonArray array = QJsonDocument::fromJson(run.out).array();
    return array.size() == 1 ? array[0].toObject() : QJsonObject();
}

double number(const QJsonObject& object, const char* name) {
    return object[QString::fromLatin1(name)].toDouble(std::nan(""));
}

// A rib with an intake, from the trailing edge over the top; O-1 is row 9, O-2 row 12.
QByteArray rib() {
    return "a_rib\n17\n9\n4\n6\n"
           "1.0 0.0\n0.8 0.05\n0.5 0.11\n0.25 0.12\n0.1 0.09\n0.02 0.04\n0.0 0.0\n0.01 -0.02\n"
           "0.02 -0.03\n0.04 -0.04\n0.06 -0.046\n0.08 -0.05\n0.2 -0.06\n0.4 -0.05\n0.6 -0.035\n"
           "0.8 -0.018\n1.0 0.0\n";
}

} // namespace

class CliMeasure : public QObject {
    Q_OBJECT

private slots:
    void numbers_data() {
        QTest::addColumn<double>("number");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("plain") << 1.25 << 1 << QByteArray("1.3");
        QTest::newRow("minus-zero") << -0.0004 << 3 << QByteArray("0.000");
        QTest::newRow("minus") << -0.0006 << 3 << QByteArray("-0.001");
        QTest::newRow("no-decimals") << -0.4 << 0 << QByteArray("0");
        QTest::newRow("large") << 123456.789 << 2 << QByteArray("123456.79");
    }
    void numbers() {
        QFETCH(double, number);
        QFETCH(int, decimals);
        QFETCH(QByteArray, text);
        QCOMPARE(QByteArray::fromStdString(cli::fixed(number, decimals)), text);
    }

    void units() {
        const QJsonObject plain = only(run_cli({"measure", "--json", "--at", "30", cambered}));
        const QJsonObject in_mm =
            only(run_cli({"measure", "--json", "--at", "30", "--chord", "2000", cambered}));
        QCOMPARE(plain["length_unit"_L1].toString(), "chord"_L1);
        QCOMPARE(in_mm["length_unit"_L1].toString(), "mm"_L1);
        QCOMPARE(in_mm["area_unit"_L1].toString(), "m2"_L1);
        for (const char* name : {"length", "upper_length", "chord", "trailing_edge_gap"})
            QCOMPARE(number(in_mm, name), 2000.0 * number(plain, name));
        QCOMPARE(number(in_mm, "area"), 4.0 * number(plain, "area"));
        QCOMPARE(in_mm["thickness"_L1], plain["thickness"_L1]);
        const QJsonObject station = plain["stations"_L1][0].toObject();
        QCOMPARE(number(station, "station"), 30.0);
        QVERIFY(std::abs(number(station, "thickness") - 0.12) < 0.001);
    }

    void text_has_the_name_last() {
        const CliRun run = run_cli({"measure", outline, "--chord", "1000"});
        QCOMPARE(run.code, 0);
        QCOMPARE(run.err, QByteArray());
        const QList<QByteArray> lines = run.out.split('\n');
        QVERIFY(lines[0].startsWith("selig ") &&
                lines[0].endsWith(QByteArray::fromStdString(outline)));
        QVERIFY(run.out.contains("  thickness                       12.00"));
        QVERIFY(run.out.contains(" mm"));
    }

    void mouth() {
        const FreshFolder folder;
        put_file("rib.txt", rib());
        const CliRun run = run_cli({"measure", "--json", "rib.txt"});
        const QJsonObject object = only(run);
        QCOMPARE(object["layout"_L1].toString(), "lep"_L1);
        const QJsonObject mouth = object["mouth"_L1].toObject();
        QVERIFY(std::abs(mouth["start"_L1][0].toDouble() - 0.02) < 1e-12);
        QVERIFY(std::abs(mouth["end"_L1][0].toDouble() - 0.08) < 1e-12);
        QVERIFY(std::abs(mouth["start"_L1][1].toDouble() + 0.03) < 1e-9);
        const double whole = number(mouth, "panel_over_top") + number(mouth, "along") +
                             number(mouth, "panel_behind");
        QVERIFY(std::abs(whole - number(object, "length")) < 1e-12);
        QVERIFY(run_cli({"measure", "rib.txt"}).out.contains("panel, over the top"));
    }

    void station_beside_the_section() {
        const CliRun run = run_cli({"measure", "--at", "50,0", outline});
        QCOMPARE(run.code, 0);
        QCOMPARE(run_cli({"measure", "--at", "-1", outline}).code, 2);
        QCOMPARE(run_cli({"measure", "--at", "5o", outline}).code, 2);
        QCOMPARE(run_cli({"measure", "--chord", "0", outline}).code, 2);
        QCOMPARE(run_cli({"measure", "--chord", "nan", outline}).code, 2);
    }

    void bad_files() {
        const FreshFolder folder;
        put_file("text.dat", "no section\n");
        put_file("empty.dat", "");
        for (const char* verb : {"measure", "compare"}) {
            const CliRun run =
                run_cli({verb, outline, "text.dat", "missing", "empty.dat", cambered});
            QCOMPARE(run.code, 1);
            QVERIFY(run.err.contains("text.dat:1: "));
            QVERIFY(run.err.contains("missing: "));
            QVERIFY(run.err.contains("empty.dat: "));
            QVERIFY(run.out.contains("4412"));
        }
    }

    void spline() {
        const QJsonObject object = only(run_cli({"measure", "--json", ::spline}));
        QCOMPARE(object["layout"_L1].toString(), "spl"_L1);
        QCOMPARE(number(object, "points"), 10.0);
        QVERIFY(std::abs(object["camber"_L1]["size"_L1].toDouble()) < 1e-9);
        const QJsonObject nose = object["nose"_L1].toObject();
        QVERIFY(std::abs(number(nose, "upper") - number(nose, "lower")) < 1e-9);
        QVERIFY(run_cli({"measure", ::spline}).out.contains("mean over 0.5 % either side"));
    }

    void new_points_data() {
        QTest::addColumn<QByteArray>("spacing");
        QTest::addColumn<QByteArray>("input");
        for (const char* spacing : {"curvature", "cosine", "uniform"}) {
            QTest::addRow("table-%s", spacing)
                << QByteArray(spacing) << QByteArray::fromStdString(cambered);
            QTest::addRow("spline-%s", spacing)
                << QByteArray(spacing) << QByteArray::fromStdString(::spline);
        }
    }
    // The new table lies on the old curve. The output gives the distance of straight lines from it.
    void new_points() {
        QFETCH(QByteArray, spacing);
        QFETCH(QByteArray, input);
        const FreshFolder folder;
        const CliRun run =
            run_cli({"convert", "--json", input.toStdString(), "-o", "new.dat", "--to", "selig",
                     "--points", "60", "--spacing", spacing.toStdString(), "--decimals", "12"});
        QCOMPARE(run.code, 0);
        const double off = number(only(run), "off_curve");
        QVERIFY(off > 1e-5 && off < 2e-2);
        QCOMPARE(file_bytes("new.dat").count('\n'), 61);
        const CliRun comparison = run_cli({"compare", "--json", input.toStdString(), "new.dat"});
        const double apart = number(only(comparison), "greatest");
        QVERIFY2(apart < 0.5 * off && apart < 2e-3, QByteArray::number(apart).constData());
    }

    void refused_points_data() {
        QTest::addColumn<QByteArrayList>("words");
        QTest::addColumn<int>("code");
        const auto row = [](const char* name, const QByteArrayList& words, int code) {
            QTest::newRow(name) << words << code;
        };
        row("too-few", {"--points", "5"}, 2);
        row("no-number", {"--points", "many"}, 2);
        row("unknown-spacing", {"--points", "50", "--spacing", "even"}, 2);
        row("with-counts", {"--points", "50", "--to", "lep", "--lep-points", "20,5,20"}, 2);
        row("spline", {"--points", "50", "--to", "spl"}, 2);
    }
    void refused_points() {
        QFETCH(QByteArrayList, words);
        QFETCH(int, code);
        const FreshFolder folder;
        std::vector<std::string> arguments = {"convert", cambered, "-d", "out"};
        for (const QByteArray& word : words)
            arguments.push_back(word.toStdString());
        const CliRun run = run_cli(arguments);
        QCOMPARE(run.code, code);
        QVERIFY(!run.err.isEmpty() && files_here().empty());
    }

    void comparison() {
        const QJsonObject object = only(run_cli({"compare", "--json", outline, cambered}));
        QVERIFY(std::abs(number(object, "greatest") - 0.04) < 0.005);
        QVERIFY(number(object["to_reference"_L1]["upper"_L1].toObject(), "greatest") > 0.03);
        QVERIFY(number(object["to_reference"_L1]["lower"_L1].toObject(), "greatest") < -0.03);
        const QJsonObject in_mm =
            only(run_cli({"compare", "--json", "--chord", "500", outline, cambered}));
        QCOMPARE(number(in_mm, "greatest"), 500.0 * number(object, "greatest"));
    }

    void several_others() {
        const CliRun run = run_cli({"compare", outline, ::spline, outline, "-j4"});
        QCOMPARE(run.code, 0);
        QCOMPARE(run.out.count("farthest "), 2);
        QVERIFY(run.out.indexOf("symmetric") < run.out.indexOf("farthest 0.000000 chord"));
    }

    void tolerance_data() {
        QTest::addColumn<QByteArray>("tolerance");
        QTest::addColumn<QByteArray>("chord");
        QTest::addColumn<int>("code");
        QTest::newRow("held") << QByteArray("0.05") << QByteArray() << 0;
        QTest::newRow("missed") << QByteArray("0.03") << QByteArray() << 1;
        QTest::newRow("held-mm") << QByteArray("50") << QByteArray("1000") << 0;
        QTest::newRow("missed-mm") << QByteArray("30") << QByteArray("1000") << 1;
        QTest::newRow("zero") << QByteArray("0") << QByteArray() << 2;
    }
    void tolerance() {
        QFETCH(QByteArray, tolerance);
        QFETCH(QByteArray, chord);
        QFETCH(int, code);
        std::vector<std::string> words = {"compare", "--tolerance", tolerance.toStdString()};
        if (!chord.isEmpty())
            words.insert(words.end(), {"--chord", chord.toStdString()});
        words.insert(words.end(), {outline, cambered});
        const CliRun run = run_cli(words);
        QCOMPARE(run.code, code);
        QCOMPARE(run.out.contains("beyond the tolerance"), code == 1);
    }

    void reference_data() {
        QTest::addColumn<QByteArrayList>("words");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("message");
        const QByteArray expected = "expected a reference file and at least one more file";
        QTest::newRow("alone") << QByteArrayList{"a.dat"} << 2 << expected;
        QTest::newRow("folder") << QByteArrayList{"f", "a.dat"} << 2 << expected;
        QTest::newRow("list-alone") << QByteArrayList{"--files-from", "list"} << 2 << expected;
        QTest::newRow("none") << QByteArrayList{} << 2 << QByteArray("no files given");
        QTest::newRow("bad") << QByteArrayList{"text.dat", "a.dat"} << 1
                             << QByteArray("text.dat:1: ");
        QTest::newRow("missing") << QByteArrayList{"gone", "a.dat"} << 1 << QByteArray("gone: ");
        QTest::newRow("from-a-list")
            << QByteArrayList{"--files-from", "list", "a.dat"} << 0 << QByteArray();
    }
    void reference() {
        QFETCH(QByteArrayList, words);
        QFETCH(int, code);
        QFETCH(QByteArray, message);
        const FreshFolder folder;
        put_file("a.dat", plain_table());
        put_file("f/b.dat", plain_table());
        put_file("text.dat", "no section\n");
        put_file("list", "f/b.dat\na.dat\n");
        std::vector<std::string> arguments = {"compare"};
        for (const QByteArray& word : words)
            arguments.push_back(word.toStdString());
        const CliRun run = run_cli(arguments);
        QCOMPARE(run.code, code);
        QVERIFY2(run.err.contains(message), run.err.constData());
        QCOMPARE(run.out.isEmpty(), code != 0);
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliMeasure)
#include "tst_cli_measure.moc"
