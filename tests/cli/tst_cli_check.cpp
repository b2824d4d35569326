// SPDX-FileCopyrightText: Aerolith developers
// The verb check.
#include "cli/cliruns.h"
#include "support/testmain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QJsonObject checked(const QByteArray& bytes, const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments = {"check", "--json", "-"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const CliRun run = run_cli(arguments, bytes);
    return QJsonDocument::fromJson(run.out).array().at(0).toObject();
}

// A section with the upper or the lower side first.
QByteArray turned_round(const QByteArray& table) {
    QByteArrayList rows = table.trimmed().split('\n');
    const QByteArray title = rows.takeFirst();
    std::reverse(rows.begin(), rows.end());
    return title + '\n' + rows.join('\n') + '\n';
}

} // namespace

class CliCheck : public QObject {
    Q_OBJECT

private slots:
    void verdicts_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("verdict");
        QTest::addColumn<QString>("layout");
        QTest::addColumn<int>("points");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("strict_code");
        const auto row = [](const char* name, const QByteArray& bytes, const QString& verdict,
                            const QString& layout, int points, int code, int strict_code) {
            QTest::newRow(name) << bytes << verdict << layout << points << code << strict_code;
        };
        const QByteArray plain = plain_table();
        const QByteArray spline = file_bytes(SAMPLES "/symmetric.spl");
        row("plain", plain, u"ok"_s, u"selig"_s, 11, 0, 0);
        row("turned-round", turned_round(plain), u"ok"_s, u"selig"_s, 11, 0, 0);
        row("exponents", QByteArray(plain).replace("0.08000", "8.0e-02"), u"convert"_s, u"selig"_s,
            11, 0, 1);
        row("spline", spline, u"ok"_s, u"spl"_s, 10, 0, 0);
        row("cut-spline", spline.chopped(9), u"bad"_s, u"spl"_s, 0, 1, 1);
        row("two-points", QByteArray(plain).replace("0.08000", "O.123"), u"bad"_s, u""_s, 0, 1, 1);
        row("text", "no numbers here\n", u"bad"_s, u""_s, 0, 1, 1);
        row("empty", "", u"bad"_s, u""_s, 0, 1, 1);
    }
    void verdicts() {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, verdict);
        QFETCH(const int, code);
        QFETCH(const int, strict_code);
        const QJsonObject object = checked(bytes);
        QCOMPARE(object[u"verdict"].toString(), verdict);
        QTEST(object[u"layout"].toString(), "layout");
        QTEST(object[u"points"].toInt(), "points");
        QCOMPARE(object[u"reason"].toString().isEmpty(), verdict == u"ok"_s);
        QCOMPARE(object[u"kind"].toString(), verdict == u"bad"_s ? u""_s : u"section"_s);

        const CliRun run = run_cli({"check", "-"}, bytes);
        QCOMPARE(run.code, code);
        QVERIFY2(run.out.startsWith(verdict.toUtf8() + ' '), run.out.constData());
        QVERIFY2(run.out.split('\n').first().endsWith("  -"), run.out.constData());
        QCOMPARE(run_cli({"check", "--strict", "-"}, bytes).code, strict_code);
        const QByteArray count = "1 " + verdict.toUtf8();
        QVERIFY2(run.err.startsWith("1 file: ") && run.err.contains(count), run.err.constData());
    }

    // Findings go to standard output, with name, line and text.
    void findings_are_lines() {
        const QByteArray bad = QByteArray(plain_table()).replace("0.08000", "1.234.5");
        const QJsonArray findings = checked(bad)[u"findings"].toArray();
        QCOMPARE(findings[0][u"line"].toInt(), 4);
        QCOMPARE(findings[0][u"gravity"].toString(), u"error"_s);
        const CliRun run = run_cli({"check", "-"}, bad);
        const QByteArray line = "-:4: " + findings[0][u"text"].toString().toUtf8() + "\n";
        QVERIFY2(run.out.endsWith(line), run.out.constData());
    }

    void doubtful_files_end_with_1() {
        const QByteArray spike = file_bytes(SAMPLES "/naca-0012-outline.dat")
                                     .replace("0.750000  0.031204", "0.750000  0.037204");
        const QJsonObject object = checked(spike);
        QCOMPARE(object[u"doubtful"].toBool(), true);
        const CliRun run = run_cli({"check", "-"}, spike);
        QCOMPARE(run.code, 1);
        QVERIFY(run.out.contains(": doubtful: "));
        QVERIFY(run.err.contains("; 1 doubtful"));
    }

    void layout_decides() {
        QCOMPARE(checked(plain_table(), {"--layout", "selig"})[u"verdict"].toString(), u"ok"_s);
        QCOMPARE(checked(plain_table(), {"--layout", "lednicer"})[u"verdict"].toString(), u"bad"_s);
    }

    // The content of a file cannot control the terminal.
    void texts_of_files_are_shown() {
        const QByteArray bad = QByteArray(plain_table()).replace("0.08000", "\x1b[2J\x9b");
        const CliRun run = run_cli({"check", "-"}, bad);
        QVERIFY(!run.out.contains('\x1b'));
        QCOMPARE(run_cli({"check", "--json", "-"}, bad).out.count('\x1b'), 0);
    }

    void narrow_terminal() {
        const CliRun run = run_cli({"check", "-"}, "no numbers\n", [](cli::Streams& streams) {
            streams.out_is_terminal = true;
            streams.width = 40;
        });
        const QByteArrayList lines = run.out.split('\n');
        QVERIFY2(lines[0].startsWith("bad ") && lines[0].endsWith("  -"), lines[0].constData());
        QVERIFY2(lines[1].startsWith("        ") && lines[1].size() <= 40, lines[1].constData());
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliCheck)
#include "tst_cli_check.moc"
