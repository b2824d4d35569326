// SPDX-FileCopyrightText: Aerolith developers
// The verb fit: options, exit codes, findings, and the written file.
#include "cli/cliruns.h"
#include "document/parastruct.h"
#include "support/testmain.h"

#include <QDataStream>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

namespace {

// A section of 81 rows from the trailing edge over the top. The rows scatter across the curve by
// uniform noise, `noise` in fractions of the chord.
QByteArray section(double noise = 0.0) {
    constexpr double pi = 3.14159265358979323846;
    constexpr int rows = 81;
    std::mt19937 engine(7);
    QByteArray text = "a section\n";
    for (int i = 0; i < rows; ++i) {
        const double turn = 2.0 * pi * i / (rows - 1);
        const double x = 0.5 + 0.5 * std::cos(turn);
        const double off = std::sqrt(3.0) * noise * (double(engine()) / 2147483648.0 - 1.0);
        const double y = 0.07 * std::sin(turn) * (1.3 - std::cos(turn)) * 0.5 + 0.05 * x * (1 - x);
        text += QByteArray::number(x, 'f', 7) + ' ' +
                QByteArray::number(i % (rows - 1) == 0 ? 0.0 : y + off, 'f', 7) + '\n';
    }
    return text;
}

QByteArray flat_rib() {
    return "flat\n1 0\n0.75 0\n0.5 0\n0.25 0\n0 0\n0.25 0\n0.5 0\n0.75 0\n1 0\n";
}

// A section with an intake. The counts behind the title are: all rows, rows up to O-1, rows of the
// mouth, rows behind O-2.
QByteArray rib() {
    return "a_rib\n17\n9\n4\n6\n"
           "1.0 0.0\n0.8 0.05\n0.5 0.11\n0.25 0.12\n0.1 0.09\n0.02 0.04\n0.0 0.0\n0.01 -0.02\n"
           "0.02 -0.03\n0.04 -0.04\n0.06 -0.046\n0.08 -0.05\n0.2 -0.06\n0.4 -0.05\n0.6 -0.035\n"
           "0.8 -0.018\n1.0 0.0\n";
}

std::vector<std::string> fit_with(const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"fit", "a.dat", "-o", "a.spl", "-f"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

// The result of a run with --json, and the spline in its file.
struct Fitted {
    CliRun run;
    QJsonObject figures;
    SplineFoil spline;
};

Fitted fitted(const QByteArray& table, std::vector<std::string> options) {
    put_file("a.dat", table);
    options.emplace_back("--json");
    Fitted result;
    result.run = run_cli(fit_with(options));
    result.figures = QJsonDocument::fromJson(result.run.out).array().at(0).toObject();
    ParaStruct record;
    QDataStream stream(file_bytes("a.spl"));
    stream >> record;
    result.spline = record.spline;
    return result;
}

} // namespace

class CliFit : public QObject {
    Q_OBJECT

private slots:
    void rows_of_options_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("points"); // 0 if not given
        QTest::addColumn<double>("largest");
        QTest::newRow("none") << QStringList() << 0 << 8e-4;
        QTest::newRow("points-4") << QStringList{u"--points"_s, u"4"_s} << 4 << 1.0;
        QTest::newRow("points-12") << QStringList{u"--points"_s, u"12"_s} << 12 << 3e-4;
        QTest::newRow("points-30") << QStringList{u"--points"_s, u"30"_s} << 30 << 2e-4;
        QTest::newRow("tolerance") << QStringList{u"--tolerance"_s, u"1e-4"_s} << 0 << 2e-4;
        QTest::newRow("best") << QStringList{u"--best"_s} << 30 << 2e-4;
        QTest::newRow("best-10") << QStringList{u"--best"_s, u"--points"_s, u"10"_s} << 10 << 5e-4;
    }
    void rows_of_options() {
        QFETCH(const QStringList, options);
        QFETCH(const int, points);
        QFETCH(const double, largest);
        const FreshFolder folder;
        std::vector<std::string> given;
        for (const QString& option : options)
            given.push_back(option.toStdString());
        const Fitted result = fitted(section(), given);
        const bool within = result.figures["within_tolerance"_L1].toBool();
        QVERIFY2(result.run.code == (within ? 0 : 1), result.run.err.constData());
        QCOMPARE(result.figures["control_points"_L1].toInt(), result.spline.num_pnt);
        QVERIFY(points == 0 || result.spline.num_pnt == points);
        QVERIFY2(result.figures["largest"_L1].toDouble(1.0) < largest,
                 qPrintable(QString::number(result.figures["largest"_L1].toDouble(1.0))));
        QCOMPARE(result.figures["points"_L1].toInt(), 81);
    }

    void bad_usage_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("words");
        const auto row = [](const char* name, const QString& options, const char* words) {
            QTest::newRow(name) << options.split(u' ') << QByteArray(words);
        };
        row("few-points", u"--points 3"_s, "--points");
        row("many-points", u"--points 31"_s, "--points");
        row("half-points", u"--points 7.5"_s, "--points");
        row("no-tolerance", u"--tolerance 0"_s, "--tolerance");
        row("nan", u"--tolerance nan"_s, "--tolerance");
        row("comma", u"--tolerance 1,5"_s, "--tolerance");
        row("both", u"--points 9 --tolerance 1e-3"_s, "cannot be combined");
        row("ends", u"--symmetric --closed"_s, "cannot be combined");
        row("one-opening", u"--openings 3"_s, "--openings");
        row("openings", u"--openings 9 3"_s, "A must not exceed B");
    }
    void bad_usage() {
        QFETCH(const QStringList, options);
        QFETCH(const QByteArray, words);
        const FreshFolder folder;
        put_file("a.dat", section());
        std::vector<std::string> given;
        for (const QString& option : options)
            given.push_back(option.toStdString());
        const CliRun run = run_cli(fit_with(given));
        QCOMPARE(run.code, 2);
        QVERIFY2(run.err.contains(words), run.err.constData());
        QVERIFY(file_bytes("a.spl").isNull());
    }

    void symmetric_and_closed() {
        const FreshFolder folder;
        const SplineFoil mirrored = fitted(section(), {"--points", "12", "--symmetric"}).spline;
        QCOMPARE(mirrored.num_pnt, 12);
        const double axis = mirrored.CP[0].y() + mirrored.CP[11].y();
        for (int i = 0; i < 12; ++i) {
            QCOMPARE(mirrored.CP[i].x(), mirrored.CP[11 - i].x());
            QVERIFY(mirrored.CP[i].y() + mirrored.CP[11 - i].y() == axis);
        }
        const QByteArray blunt =
            section().replace("1.0000000 0.0000000\n0.99", "1.0000000 0.0020000\n0.99");
        QVERIFY(blunt != section());
        const SplineFoil open = fitted(blunt, {"--points", "12"}).spline;
        QVERIFY(open.CP[0] != open.CP[11]);
        const SplineFoil closed = fitted(blunt, {"--points", "12", "--closed"}).spline;
        QVERIFY(closed.CP[0] == closed.CP[11]);
    }

    // The mouth of the rib reaches from 2 to 8 % of the chord.
    void openings() {
        const FreshFolder folder;
        const Fitted of_table = fitted(rib(), {});
        QVERIFY(std::abs(of_table.spline.startVent - 2.0) < 1e-9);
        QVERIFY(std::abs(of_table.spline.endVent - 8.0) < 1e-9);
        const Fitted given = fitted(rib(), {"--openings", "3.125", "7.1"});
        QCOMPARE(given.spline.startVent, 3.125);
        QCOMPARE(given.spline.endVent, 7.1);
        QCOMPARE(given.figures["openings"_L1].toArray(), QJsonArray({3.125, 7.1}));
    }

    // Two layouts fit these rows: one side, or a flat lower side.
    void chosen_layout() {
        const FreshFolder folder;
        const QByteArray table = file_bytes(SAMPLES "/../docs/old/column-of-zeros.dat");
        QVERIFY(fitted(table, {}).run.err.contains("chosen by --layout"));
        for (const char* const layout : {"half", "columns"})
            QCOMPARE(fitted(table, {"--layout", layout}).figures["layout"_L1].toString(),
                     QLatin1String(layout));
    }

    void name_in_the_file() {
        const FreshFolder folder;
        QCOMPARE(fitted(section(), {}).spline.airfoilName, u"a"_s);
    }

    void refused_data() {
        QTest::addColumn<QByteArray>("table");
        QTest::addColumn<QByteArray>("words");
        QTest::newRow("flat") << flat_rib() << QByteArray("no thickness");
        QTest::newRow("spline") << file_bytes(SAMPLES "/symmetric.spl")
                                << QByteArray("a spline file");
        QTest::newRow("text") << QByteArray("no numbers here\n") << QByteArray("a.dat:");
        QTest::newRow("empty") << QByteArray("") << QByteArray("a.dat");
    }
    void refused() {
        QFETCH(const QByteArray, table);
        QFETCH(const QByteArray, words);
        const FreshFolder folder;
        put_file("a.dat", table);
        const CliRun run = run_cli(fit_with({}));
        QCOMPARE(run.code, 1);
        QVERIFY2(run.err.contains(words), run.err.constData());
        QVERIFY(file_bytes("a.spl").isNull());
    }

    void reports_a_noisy_table() {
        const FreshFolder folder;
        const Fitted noisy = fitted(section(3e-4), {"--points", "28"});
        const double level = noisy.figures["noise"_L1].toDouble();
        QVERIFY2(level > 2e-4 && level < 4.5e-4, qPrintable(QString::number(level)));
        QVERIFY2(noisy.run.err.contains("the table is noisy: its points scatter by " +
                                        QByteArray::number(level, 'g', 2)),
                 noisy.run.err.constData());
        QVERIFY(noisy.run.err.contains("follows the noise"));
        QVERIFY(!fitted(section(), {}).run.err.contains("noisy"));
    }

    void reports_a_missed_tolerance() {
        const FreshFolder folder;
        const Fitted missed = fitted(section(), {"--points", "4"});
        QCOMPARE(missed.run.code, 1);
        QVERIFY(missed.run.err.contains("points lie outside"));
        QVERIFY(missed.figures["outside"_L1].toInt() > 0);
    }

    void jobs_do_not_matter() {
        const FreshFolder folder;
        for (int i = 0; i < 6; ++i)
            put_file("in/" + std::to_string(i) + ".dat", section(1e-5 * i));
        const std::vector<std::string> common = {"fit", "in", "--points", "14", "-d"};
        std::vector<QByteArray> before;
        for (const char* jobs : {"1", "2", "5"}) {
            std::vector<std::string> arguments = common;
            const std::string out = std::string("out") + jobs;
            arguments.insert(arguments.end(), {out, "-j", jobs});
            const CliRun run = run_cli(arguments);
            QVERIFY2(run.code == 0, run.err.constData());
            std::vector<QByteArray> files;
            for (int i = 0; i < 6; ++i)
                files.push_back(file_bytes(out + "/" + std::to_string(i) + ".spl"));
            QVERIFY(!files[0].isEmpty() && files[0] != files[5]);
            QVERIFY(before.empty() || before == files);
            before = files;
        }
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliFit)
#include "tst_cli_fit.moc"
