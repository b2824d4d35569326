// SPDX-FileCopyrightText: Aerolith developers
// The verb draw: several files in one picture, formats, sizes, refusals.
#include "cli/cliruns.h"
#include "support/testmain.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

using Words = std::vector<std::string>;

Q_DECLARE_METATYPE(Words)

namespace {

CliRun draw(const Words& arguments, const QByteArray& input = plain_table()) {
    Words all = {"draw"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run_cli(all, input);
}

QJsonArray json_of(const CliRun& run) {
    return QJsonDocument::fromJson(run.out).array();
}

} // namespace

class tst_cli_draw : public QObject {
    Q_OBJECT
private slots:
    void each_format_data();
    void each_format();
    void several_files();
    void names();
    void standard_streams();
    void sizes_data();
    void sizes();
    void refused_data();
    void refused();
    void bad_files();
    void no_section();
    void too_many();
    void deviation();
    void further_plots();
    void jobs();
};

void tst_cli_draw::each_format_data() {
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("svg") << QByteArray("svg") << QByteArray("<?xml ")
                         << QByteArray("picture of 240x65 mm -> p.svg\n");
    QTest::newRow("pdf") << QByteArray("pdf") << QByteArray("%PDF-1.")
                         << QByteArray("picture of 240x65 mm -> p.pdf\n");
    QTest::newRow("png") << QByteArray("png") << QByteArray("\x89PNG")
                         << QByteArray("picture of 1417x384 pixels -> p.png\n");
}

void tst_cli_draw::each_format() {
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, text);
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    put_file("b.dat", plain_table());
    const std::string name = "p." + format.toStdString();
    const CliRun run = draw({"a.dat", "b.dat", "-o", name});
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.out, "selig          11  a.dat\nselig          11  b.dat\n" + text);
    QCOMPARE(run.code, 0);
    const QByteArray bytes = file_bytes(name);
    QVERIFY(bytes.startsWith(start));

    // --to and the extension give the same bytes, in every run.
    QCOMPARE(draw({"a.dat", "b.dat", "-o", "other", "--to", format.toStdString()}).code, 0);
    QCOMPARE(file_bytes("other"), bytes);
    put_file("other", "old");
    QCOMPARE(draw({"a.dat", "b.dat", "-f", "-o", "other", "-t", format.toStdString()}).code, 0);
    QCOMPARE(file_bytes("other"), bytes);
    QCOMPARE(files_here(), Words({"a.dat", "b.dat", "other", name}));
}

void tst_cli_draw::several_files() {
    const FreshFolder folder;
    put_file("in/a.dat", plain_table());
    put_file("in/sub/b.dat", plain_table());
    const CliRun run = draw({"in", "-o", "p.svg", "--json"});
    QCOMPARE(run.code, 0);
    const QJsonArray results = json_of(run);
    QCOMPARE(results.size(), 3);
    QCOMPARE(results[0].toObject().value(QStringLiteral("path")).toString(),
             QStringLiteral("in/a.dat"));
    QCOMPARE(results[1].toObject().value(QStringLiteral("path")).toString(),
             QStringLiteral("in/sub/b.dat"));
    const QJsonObject last = results[2].toObject();
    QCOMPARE(last.value(QStringLiteral("sections")).toInt(), 2);
    QCOMPARE(last.value(QStringLiteral("format")).toString(), QStringLiteral("svg"));
    QCOMPARE(last.value(QStringLiteral("unit")).toString(), QStringLiteral("mm"));
    QCOMPARE(last.value(QStringLiteral("width")).toDouble(), 240.0);
}

void tst_cli_draw::names() {
    const FreshFolder folder;
    put_file("in/<a> & b.dat", plain_table());
    put_file("in/\x1b[31m\xe2\x80\xae.dat", plain_table());
    put_file("in/one/rib.dat", plain_table());
    put_file("in/two/rib.dat", plain_table());
    const CliRun run = draw({"in", "-o", "p.svg"});
    QCOMPARE(run.code, 0);
    const QByteArray bytes = file_bytes("p.svg");
    for (const char* name : {">&lt;a&gt; &amp; b, table<", ">\\x1B[31m\\xE2\\x80\\xAE, table<",
                             ">in/one/rib.dat, table<", ">in/two/rib.dat, table<"})
        QVERIFY2(bytes.contains(name), name);
    QVERIFY(!bytes.contains('\x1b'));
}

void tst_cli_draw::standard_streams() {
    const FreshFolder folder;
    const CliRun run = draw({"-", "-o", "-"});
    QCOMPARE(run.code, 0);
    QVERIFY(run.out.startsWith("<?xml "));
    QVERIFY(run.out.endsWith("</svg>\n"));
    QVERIFY(run.out.contains(">standard input, table<"));
    QCOMPARE(run.err, QByteArray("selig          11  -\npicture of 240x65 mm -> -\n"));
    QVERIFY(draw({"-", "-o", "-", "-t", "pdf"}).out.startsWith("%PDF-"));
    QCOMPARE(files_here(), Words());
}

void tst_cli_draw::sizes_data() {
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("size");
    QTest::addColumn<QByteArray>("found");
    QTest::newRow("svg") << QByteArray("svg") << QByteArray("180x120")
                         << QByteArray("width=\"180mm\" height=\"120mm\"");
    QTest::newRow("fraction") << QByteArray("svg") << QByteArray("180.5x120.25")
                              << QByteArray("width=\"180.5mm\" height=\"120.25mm\"");
    QTest::newRow("pdf") << QByteArray("pdf") << QByteArray("254x127")
                         << QByteArray("/MediaBox [0 0 720.000000 360.000000]");
    QTest::newRow("png") << QByteArray("png") << QByteArray("801x333") << QByteArray();
}

void tst_cli_draw::sizes() {
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, size);
    QFETCH(QByteArray, found);
    const FreshFolder folder;
    const std::string name = "p." + format.toStdString();
    const CliRun run = draw({"-", "-o", name, "--size", size.toStdString()});
    QCOMPARE(run.code, 0);
    const QByteArray bytes = file_bytes(name);
    QVERIFY2(bytes.contains(found), bytes.left(300).constData());
    if (format != "png")
        return;
    const QImage image = QImage::fromData(bytes);
    QCOMPARE(image.size(), QSize(801, 333));
    QCOMPARE(image.dotsPerMeterX(), 5906); // 150 per inch
}

void tst_cli_draw::refused_data() {
    QTest::addColumn<Words>("arguments");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const char* name, const Words& arguments, const char* reason) {
        QTest::newRow(name) << arguments << QByteArray(reason);
    };
    row("no output", {"a.dat"}, "no output given; use --output OUT");
    row("extension", {"a.dat", "-o", "p.dxf"},
        "no format has the extension .dxf; choose one with --to");
    row("format", {"a.dat", "-o", "p", "--to", "dxf"}, "--to: 'dxf' is not one of svg, pdf, png");
    row("exists", {"a.dat", "-o", "old.svg"}, "old.svg exists; use --force to replace it");
    row("is an input", {"a.dat", "old.svg", "-fo", "old.svg"},
        "old.svg is an input; choose another name");
    row("is a folder", {"a.dat", "-fo", "folder", "-t", "svg"}, "folder is a folder");
    row("two on standard output", {"a.dat", "-o", "-", "--json"},
        "--json and --output - cannot be combined; both use standard output");
    row("size", {"a.dat", "-o", "p.svg", "--size", "100"},
        "--size: '100', expected WxH, for example 180x120");
    row("size with a comma", {"a.dat", "-o", "p.svg", "--size", "120,5x100"},
        "--size: '120,5x100', expected WxH, for example 180x120");
    row("size of nan", {"a.dat", "-o", "p.svg", "--size", "nanx100"},
        "--size: 'nanx100', expected WxH, for example 180x120");
    row("small", {"a.dat", "-o", "p.svg", "--size", "119.9x40"},
        "--size: 119.9x40 is not between 120x40 and 2000x2000 mm");
    row("large", {"a.dat", "-o", "p.png", "--size", "8001x400"},
        "--size: 8001x400 is not between 720x240 and 8000x8000 pixels");
}

void tst_cli_draw::refused() {
    QFETCH(Words, arguments);
    QFETCH(QByteArray, reason);
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    put_file("old.svg", "old");
    put_file("folder/x", "x");
    const CliRun run = draw(arguments);
    QCOMPARE(run.code, 2);
    QCOMPARE(run.out, QByteArray());
    const QByteArray line = QByteArray(run.err).replace("\n", " ");
    QVERIFY2(line.startsWith("aerolith-cli draw: " + reason + " Try "), run.err.constData());
    QCOMPARE(files_here(), Words({"a.dat", "folder/x", "old.svg"}));
    QCOMPARE(file_bytes("old.svg"), QByteArray("old"));
}

// One bad file never stops the others.
void tst_cli_draw::bad_files() {
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    put_file("bad.dat", "nothing");
    put_file("empty.dat", "");
    const CliRun run = draw({"bad.dat", "a.dat", "empty.dat", "missing.dat", "-o", "p.svg"});
    QCOMPARE(run.code, 1);
    for (const char* name : {"bad.dat:1: ", "empty.dat: ", "missing.dat: "})
        QVERIFY2(run.err.contains(name), run.err.constData());
    QVERIFY(file_bytes("p.svg").contains(">a, table<"));
}

void tst_cli_draw::no_section() {
    const FreshFolder folder;
    put_file("bad.dat", "nothing");
    const CliRun run = draw({"bad.dat", "-o", "p.svg", "--json"});
    QCOMPARE(run.code, 1);
    QVERIFY2(run.err.endsWith("p.svg: no section to draw\n"), run.err.constData());
    QCOMPARE(json_of(run).last().toObject().value(QStringLiteral("error")).toString(),
             QStringLiteral("no section to draw"));
    QCOMPARE(files_here(), Words({"bad.dat"}));
}

void tst_cli_draw::too_many() {
    const FreshFolder folder;
    for (int i = 0; i < 24; ++i)
        put_file("in/" + std::to_string(i) + ".dat", plain_table());
    QCOMPARE(draw({"in", "-o", "p.svg"}).code, 0);
    const CliRun run = draw({"in", "-", "-o", "q.svg"});
    QCOMPARE(run.code, 2);
    QVERIFY2(run.err.startsWith("aerolith-cli draw: 25 files; one picture holds at most 24\n"),
             run.err.constData());
    QCOMPARE(file_bytes("q.svg"), QByteArray());
}

void tst_cli_draw::deviation() {
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    put_file("b.dat", plain_table().replace("0.50000  0.08000", "0.50000  0.08200"));
    const CliRun run = draw({"a.dat", "b.dat", "-o", "p.svg", "--deviation"});
    QCOMPARE(run.code, 0);
    QVERIFY2(run.out.contains("\n  farthest  0.0020"), run.out.constData());
    QVERIFY2(run.out.endsWith(" of the upper side  b.dat\n"), run.out.constData());
    const QJsonObject picture =
        json_of(draw({"b.dat", "a.dat", "-o", "q.svg", "--deviation", "--json"})).last().toObject();
    const QJsonObject distance =
        picture.value(QStringLiteral("distances")).toArray().first().toObject();
    QVERIFY(std::abs(distance.value(QStringLiteral("farthest")).toDouble() + 0.002) < 2e-5);
    QVERIFY(std::abs(distance.value(QStringLiteral("station")).toDouble() - 50.0) < 1.0);
    QCOMPARE(distance.value(QStringLiteral("path")).toString(), QStringLiteral("a.dat"));

    QCOMPARE(draw({"a.dat", "-o", "r.svg", "--deviation"}).code, 2);
    QCOMPARE(draw({"a.dat", "-o", "r.svg", "--size", "120x40", "--nose", "--curvature"}).code, 1);
    put_file("bad.dat", "nothing");
    const CliRun bad = draw({"bad.dat", "a.dat", "b.dat", "-o", "r.svg", "--deviation"});
    QCOMPARE(bad.code, 1);
    QVERIFY2(bad.err.endsWith("r.svg: --deviation needs a section in the first file and in one "
                              "more\n"),
             bad.err.constData());
    QCOMPARE(draw({"a.dat", "bad.dat", "-o", "r.svg", "--deviation"}).code, 1);
    QCOMPARE(file_bytes("r.svg"), QByteArray());
    QCOMPARE(draw({"a.dat", "bad.dat", "b.dat", "-o", "r.svg", "--deviation"}).code, 1);
    QVERIFY(!file_bytes("r.svg").isEmpty());
}

void tst_cli_draw::further_plots() {
    const FreshFolder folder;
    const QByteArray plain = draw({"-", "-o", "-"}).out;
    for (const char* option : {"--nose", "--curvature"}) {
        const CliRun run = draw({"-", "-o", "-", option});
        QCOMPARE(run.code, 0);
        QVERIFY2(run.out.size() > plain.size() + 1000, option);
    }
}

void tst_cli_draw::jobs() {
    const FreshFolder folder;
    for (const char* name : {"in/a.dat", "in/b.dat", "in/c.dat", "in/d.dat"})
        put_file(name, plain_table());
    const QByteArray one = draw({"in", "-o", "-", "-j", "1"}).out;
    QVERIFY(!one.isEmpty());
    QCOMPARE(draw({"in", "-o", "-", "-j", "4"}).out, one);
}

AEROLITH_TEST_MAIN(tst_cli_draw)
#include "tst_cli_draw.moc"
