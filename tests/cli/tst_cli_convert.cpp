// SPDX-FileCopyrightText: Aerolith developers
// The verb convert.
#include "airfoil/airfoil.h"
#include "cli/cliruns.h"
#include "cli/formats.h"
#include "support/testmain.h"
#include "tables/table.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QtEndian>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Words = std::vector<std::string>;

// The output of convert for standard input.
CliRun converted(const QByteArray& bytes, const Words& more) {
    Words arguments = {"convert", "-", "-o", "-"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run_cli(arguments, bytes);
}

double farthest(const QPolygonF& a, const QPolygonF& b) {
    if (a.size() != b.size() || a.isEmpty())
        return std::numeric_limits<double>::infinity();
    double distance = 0.0;
    for (qsizetype i = 0; i < a.size(); ++i)
        distance = std::max(distance, std::hypot(a[i].x() - b[i].x(), a[i].y() - b[i].y()));
    return distance;
}

// The points from the trailing edge, upper side first.
QPolygonF upper_first(QPolygonF points) {
    if (points[points.size() / 4].y() < points[3 * points.size() / 4].y())
        std::reverse(points.begin(), points.end());
    return points;
}

QByteArray sample(const char* name) {
    return file_bytes(std::string(SAMPLES "/") + name);
}

const QByteArray openings = "# openings: ";

} // namespace

class CliConvert : public QObject {
    Q_OBJECT

private slots:
    // Converting there and back gives the points to the printed decimals, upper side first.
    void formats_data() {
        QTest::addColumn<QString>("format");
        for (const std::string& format : cli::output_formats()) {
            if (cli::table_format(format))
                QTest::newRow(format.c_str()) << QString::fromStdString(format);
        }
    }
    void formats() {
        QFETCH(const QString, format);
        const QByteArray bytes = sample("naca-0012-outline.dat");
        Words arguments = {"--to", format.toStdString(), "--decimals", "7"};
        if (format == u"lep"_s)
            arguments.insert(arguments.end(), {"--openings", "9.5", "20"});
        const CliRun run = converted(bytes, arguments);
        QCOMPARE(run.code, 0);
        QVERIFY(!run.out.isEmpty());
        // json keeps the exact points.
        if (format == u"json"_s) {
            const QJsonObject object = QJsonDocument::fromJson(run.out).object();
            QCOMPARE(object[u"points"].toArray().size(), tables::read(bytes).points.size());
            return;
        }
        const tables::Table table = tables::read(run.out);
        QVERIFY(table.readable());
        const tables::Table meant = tables::read(bytes);
        // lep inserts rows at the ends of the mouth.
        if (format == u"lep"_s) {
            QVERIFY(table.openings);
            QVERIFY(std::abs(table.openings->start - 9.5) < 1e-4);
            QVERIFY(std::abs(table.openings->end - 20.0) < 1e-4);
            return;
        }
        // Half a unit of the last decimal, both in x and in y.
        QVERIFY(farthest(upper_first(table.points), upper_first(meant.points)) < 0.8e-7);
    }

    // The window shows the default format as the file means it.
    void default_opens_in_the_window_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("outline") << sample("naca-0012-outline.dat");
        QTest::newRow("columns") << sample("naca-0012-three-columns.txt");
        QTest::newRow("half") << sample("naca-0012-half-contour.dat");
        QTest::newRow("commas") << sample("naca-0012-decimal-commas.txt");
        QTest::newRow("percent") << QByteArray(
            "wing\n100 0\n50 8\n10 5\n0 0\n10 -3\n50 -4\n100 0\n");
        QTest::newRow("from-the-nose")
            << QByteArray("wing\n0 0\n0.1 0.05\n0.5 0.08\n1 0\n\n0 0\n0.1 -0.03\n0.5 -0.04\n1 0\n");
        QTest::newRow("spline") << sample("symmetric.spl");
    }
    void default_opens_in_the_window() {
        QFETCH(const QByteArray, bytes);
        const CliRun run = converted(bytes, {});
        QCOMPARE(run.code, 0);
        const QPolygonF shown = airfoil_Read_Bytes(run.out);
        const QPolygonF written = tables::read(run.out).points;
        QVERIFY(farthest(shown, written) < 1e-6);
        const CliRun check = run_cli({"check", "-"}, run.out);
        QVERIFY2(check.out.startsWith("ok "), check.out.constData());
    }

    void both_orders_give_the_same_sides() {
        const QByteArray bytes = sample("naca-4412-cambered.dat");
        const QByteArray reversed = converted(bytes, {"--to", "selig", "--reverse"}).out;
        QVERIFY(reversed != bytes);
        for (const char* format : {"lednicer", "columns"})
            QCOMPARE(converted(reversed, {"--to", format}).out,
                     converted(bytes, {"--to", format}).out);
        const Words lep = {"--to", "lep", "--openings", "9.5", "20"};
        QCOMPARE(converted(reversed, lep).out, converted(bytes, lep).out);
    }

    void profile_keeps_its_rows() {
        const QByteArray profile =
            converted(sample("naca-4412-cambered.dat"), {"--to", "lep", "--openings", "9.5", "20"})
                .out;
        QCOMPARE(converted(profile, {"--to", "lep"}).out, profile);
    }

    // All profiles of a wing get the same counts, whatever points they had.
    void profiles_of_the_same_counts_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("normalized");
        for (const bool normalized : {false, true}) {
            for (const char* name :
                 {"naca-4412-cambered.dat", "naca-0021-thick.dat", "naca-0012-half-contour.dat",
                  "naca-0012-three-columns.txt", "symmetric.spl"})
                QTest::addRow("%s-%d", name, int(normalized)) << sample(name) << normalized;
        }
    }
    void profiles_of_the_same_counts() {
        QFETCH(const QByteArray, bytes);
        QFETCH(const bool, normalized);
        Words arguments = {"--to", "lep", "--lep-points", "60,8,45", "--openings", "3.25", "9"};
        if (normalized)
            arguments.emplace_back("--normalize");
        const CliRun run = converted(bytes, arguments);
        QVERIFY2(run.code == 0, run.err.constData());
        QCOMPARE(run.out.split('\n').sliced(1, 4), QByteArrayList({"111", "60", "8", "45"}));
        const tables::Table profile = tables::read(run.out);
        QVERIFY(profile.readable());
        QCOMPARE(profile.points.size(), qsizetype(111));
        // The new points lie on the curve through the points of the plain profile. The frames of
        // reversed rows differ a little, because each frame refers to the nose among its own rows.
        if (run.err.contains("turned"))
            return;
        Words plain = {"--to", "lep", "--openings", "3.25", "9"};
        if (normalized)
            plain.emplace_back("--normalize");
        const QPolygonF outline = tables::read(converted(bytes, plain).out).points;
        for (const QPointF& point : profile.points) {
            double nearest = 1.0;
            for (qsizetype i = 1; i < outline.size(); ++i) {
                const QPointF along = outline[i] - outline[i - 1];
                const QPointF from = point - outline[i - 1];
                const double t = std::clamp(
                    QPointF::dotProduct(from, along) / QPointF::dotProduct(along, along), 0.0, 1.0);
                const QPointF off = from - t * along;
                nearest = std::min(nearest, std::hypot(off.x(), off.y()));
            }
            QVERIFY(nearest < 3e-4);
        }
    }

    void openings_travel() {
        const QByteArray csv =
            converted(plain_table(), {"--to", "csv", "--openings", "9.1234567890123", "20"}).out;
        QVERIFY2(csv.contains(openings + "9.1234567890123 20\n"), csv.constData());
        QCOMPARE(converted(plain_table(), {"--to", "csv", "--openings", "9", "9"}).code, 0);
        const QByteArray spline = converted(sample("symmetric.spl"),
                                            {"--to", "spl", "--openings", "9.1234567890123", "20"})
                                      .out;
        QVERIFY(converted(spline, {"--to", "csv"}).out.contains(openings + "9.1234567890123 20\n"));
    }

    void spline_to_spline() {
        const QByteArray bytes = sample("symmetric.spl");
        QCOMPARE(converted(bytes, {"--to", "spl"}).out, bytes);
        const QByteArray opened =
            converted(bytes, {"--to", "spl", "--openings", "9.5", "20.25"}).out;
        QCOMPARE(opened.size(), bytes.size());
        QCOMPARE(opened.chopped(24), bytes.chopped(24));
        QCOMPARE(opened.last(8), bytes.last(8));
        const char* const end = opened.constData() + opened.size();
        QCOMPARE(qFromBigEndian<double>(end - 24), 9.5);
        QCOMPARE(qFromBigEndian<double>(end - 16), 20.25);
        for (const char* other : {"--reverse", "--close-gap", "--normalize"})
            QCOMPARE(converted(bytes, {"--to", "spl", other}).code, 1);
    }

    // Points lie on the curve. The output gives the distance of the lines between them from it.
    void spline_to_table() {
        const FreshFolder folder;
        put_file("a.spl", sample("symmetric.spl"));
        const CliRun run = run_cli({"convert", "a.spl", "-o", "a.txt"});
        QVERIFY2(run.out.contains("  straight lines between the points are off the curve by at "
                                  "most "),
                 run.out.constData());
        const CliRun json = run_cli({"convert", "--json", "a.spl", "-o", "a.csv"});
        const QJsonObject object = QJsonDocument::fromJson(json.out).array().at(0).toObject();
        const double off = object[u"off_curve"].toDouble();
        QVERIFY(off > 1e-7 && off < 5e-5);
        const QPolygonF points = tables::read(file_bytes("a.txt")).points;
        QCOMPARE(points.first(), QPointF(1.0, 0.0));
        QCOMPARE(points.size(), qsizetype(object[u"points"].toInt()));
    }

    void refusals_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<QByteArray>("reason");
        const auto row = [](const char* name, const QByteArray& bytes, const QByteArray& format,
                            const QByteArray& reason) {
            QTest::newRow(name) << bytes << format << reason;
        };
        row("table-as-spline", plain_table(), "spl",
            "-: only a spline file can be written as spl; fit a table instead\n");
        row("no-openings", plain_table(), "lep", "--openings");
        row("cut-spline", sample("symmetric.spl").chopped(9), "window", "-: ");
        row("no-number", plain_table().replace("0.08000", "O.123"), "window", "-:4: ");
        row("crossing", plain_table().replace("0.50000 -0.04000", "0.50000 0.10000"), "window",
            "-:4: the sides cross");
        const QByteArray one_side = sample("../fuzzing/corpus/spline/side-of-no-length");
        for (const char* format : {"window", "selig", "lednicer", "csv", "json"})
            row(QByteArray("one-side-as-").append(format).constData(), one_side, format,
                "would not form a section");
    }
    void refusals() {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, format);
        QFETCH(const QByteArray, reason);
        const CliRun run = converted(bytes, {"--to", format.toStdString()});
        QCOMPARE(run.code, 1);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.contains(reason), run.err.constData());
        // Closing the gap does not turn one side into a section.
        QCOMPARE(converted(bytes, {"--to", format.toStdString(), "--close-gap"}).code, 1);
    }

    // Corrections are reported on standard error, with the line.
    void notes() {
        const CliRun run =
            converted("wing\n100 0\n50 8\n10 5\n0 0\n10 -3\n50 -4\n100 0\n", {"--to", "selig"});
        QCOMPARE(run.code, 0);
        QVERIFY2(run.err.startsWith("-:2: "), run.err.constData());
        QVERIFY(run.err.contains("percent"));
    }

    void title_is_the_name_without_one() {
        const FreshFolder folder;
        const QByteArray rows = plain_table().mid(plain_table().indexOf('\n') + 1);
        put_file("a wing\n.dat", rows);
        QCOMPARE(run_cli({"convert", "a wing\n.dat", "-o", "b.txt"}).code, 0);
        QCOMPARE(file_bytes("b.txt").split('\n').first(), QByteArray("a wing\\x0A"));
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliConvert)
#include "tst_cli_convert.moc"
