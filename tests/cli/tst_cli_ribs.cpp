// SPDX-FileCopyrightText: Aerolith developers
// Drawings of ribs by convert: files, lists, refusals.
#include "cli/cliruns.h"
#include "cli/rib_list.h"
#include "support/testmain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

using cli::read_rib_list;
using cli::RibList;
using Words = std::vector<std::string>;

Q_DECLARE_METATYPE(Words)

namespace {

CliRun convert(const Words& arguments) {
    Words all = {"convert"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run_cli(all, plain_table());
}

} // namespace

class tst_cli_ribs : public QObject {
    Q_OBJECT
private slots:
    void each_format_data();
    void each_format();
    void same_bytes();
    void intake_from_the_command_line();
    void seam();
    void text_of_the_name();
    void refused_data();
    void refused();
    void bad_files_data();
    void bad_files();
    void list();
    void list_rows_data();
    void list_rows();
    void list_faults_data();
    void list_faults();
    void list_too_large();
    void output_in_the_list();
    void list_of_noise();
};

void tst_cli_ribs::each_format_data() {
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("dxf") << QByteArray("dxf") << QByteArray("  0\nSECTION\n");
    QTest::newRow("svg") << QByteArray("svg") << QByteArray("<?xml ");
    QTest::newRow("pdf") << QByteArray("pdf") << QByteArray("%PDF-1.");
}

void tst_cli_ribs::each_format() {
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, start);
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    const std::string name = "rib." + format.toStdString();
    const CliRun run = convert({"a.dat", "-o", name, "--chord", "1000", "--allowance", "10",
                                "--marks", "100", "--grain", "-30"});
    QCOMPARE(run.code, 0);
    QVERIFY2(run.out.contains("a.dat -> " + QByteArray::fromStdString(name)), run.out.constData());
    QVERIFY2(run.out.contains("\n  drawing of 1020."), run.out.constData());
    QVERIFY(file_bytes(name).startsWith(start));

    const CliRun json = convert({"a.dat", "-o", name, "-f", "--chord", "1000", "--json"});
    const QJsonObject object = QJsonDocument::fromJson(json.out).array().first().toObject();
    const double width = object.value(QStringLiteral("width_mm")).toDouble();
    QVERIFY2(width >= 1000.0 && width < 1001.0, qPrintable(QString::number(width)));
    QCOMPARE(object.value(QStringLiteral("format")).toString(), QString::fromLatin1(format));
}

// The same bytes for any number of jobs and in any folder.
void tst_cli_ribs::same_bytes() {
    for (const std::string format : {"dxf", "svg", "pdf"}) {
        QByteArray first;
        for (const std::string jobs : {"1", "4"}) {
            const FreshFolder folder;
            for (const std::string name : {"a.dat", "b.dat", "c.dat", "d.dat"})
                put_file("in/" + name, plain_table());
            QCOMPARE(convert({"in", "-d", "out", "--to", format, "--chord", "500", "--text", "R",
                              "--allowance", "8", "-j", jobs})
                         .code,
                     0);
            const QByteArray bytes = file_bytes("out/d." + format);
            QVERIFY(!bytes.isEmpty());
            QCOMPARE(file_bytes("out/a." + format), bytes);
            QVERIFY(first.isEmpty() || first == bytes);
            first = bytes;
        }
    }
}

void tst_cli_ribs::intake_from_the_command_line() {
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    const CliRun closed = convert({"a.dat", "-o", "a.svg", "--chord", "500"});
    QCOMPARE(closed.code, 0);
    QVERIFY(!file_bytes("a.svg").contains("id=\"MOUTH\""));
    const CliRun open = convert({"a.dat", "-o", "b.svg", "--chord", "500", "--openings", "2", "9"});
    QCOMPARE(open.code, 0);
    QVERIFY(file_bytes("b.svg").contains("id=\"MOUTH\""));
    const CliRun straight =
        convert({"a.dat", "-o", "c.svg", "--chord", "500", "--intake", "straight"});
    QCOMPARE(straight.code, 1);
    QCOMPARE(straight.err, QByteArray("a.dat: no mouth to leave open or to cross straight\n"));
    QCOMPARE(file_bytes("c.svg"), QByteArray());
}

void tst_cli_ribs::seam() {
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    QCOMPARE(convert({"a.dat", "-o", "a.svg", "--chord", "500", "--allowance", "7"}).code, 0);
    QCOMPARE(convert({"a.dat", "-o", "b.svg", "--chord", "500", "--seam", "7"}).code, 0);
    QCOMPARE(file_bytes("b.svg"), file_bytes("a.svg"));
}

void tst_cli_ribs::text_of_the_name() {
    const FreshFolder folder;
    put_file("in/rib 7.dat", plain_table());
    QCOMPARE(convert({"in/rib 7.dat", "-o", "a.svg", "--chord", "2850.5", "--text",
                      "{name} {chord} <{n}>"})
                 .code,
             0);
    QVERIFY(file_bytes("a.svg").contains(">rib 7 2850.5 &lt;1&gt;<"));
    const CliRun strokes =
        convert({"in/rib 7.dat", "-o", "b.svg", "--chord", "500", "--text", "{name}",
                 "--text-strokes", "--layer-names", "TEXT=Schrift,CUT=Schnitt"});
    QCOMPARE(strokes.code, 0);
    QVERIFY(!file_bytes("b.svg").contains("<text"));
    QVERIFY(file_bytes("b.svg").contains("inkscape:label=\"Schrift\""));
    const CliRun unknown = convert(
        {"in/rib 7.dat", "-o", "c.svg", "--chord", "500", "--text", "a:b", "--text-strokes"});
    QCOMPARE(unknown.code, 1);
    QVERIFY2(unknown.err.contains("--text-strokes cannot draw ':'"), unknown.err.constData());
    const CliRun lengthy =
        convert({"in/rib 7.dat", "-o", "c.dxf", "--chord", "500", "--text", std::string(300, 'x')});
    QCOMPARE(lengthy.code, 1);
    QVERIFY2(lengthy.err.contains("a text has more than 255 bytes"), lengthy.err.constData());
}

void tst_cli_ribs::refused_data() {
    QTest::addColumn<Words>("arguments");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const char* name, const Words& arguments, const char* reason) {
        QTest::newRow(name) << arguments << QByteArray(reason);
    };
    row("no chord", {"a", "-o", "a.dxf"}, "a drawing needs --chord");
    row("chord of a table", {"a", "-o", "a.csv", "--chord", "500"},
        "--chord is only for drawings; use --to dxf, svg or pdf");
    row("mirrored table", {"a", "-o", "a.csv", "--mirror"},
        "--mirror is only for drawings; use --to dxf, svg or pdf");
    row("decimals of a drawing", {"a", "-o", "a.svg", "--chord", "500", "--decimals", "3"},
        "--reverse, --close-gap, --normalize, --decimals and --points are only for tables, not for "
        "svg");
    row("open with allowance",
        {"a", "-o", "a.svg", "--chord", "500", "--intake", "open", "--seam", "5"},
        "--intake open is for drawing only and cannot have an allowance");
    row("tiles of a dxf", {"a", "-o", "a.dxf", "--chord", "500", "--tile", "a4"},
        "--tile is only for pdf, not for dxf");
    row("unit of a pdf", {"a", "-o", "a.pdf", "--chord", "500", "--unit", "cm"},
        "--unit is only for dxf and svg; a pdf is always at full size");
    row("layers of a pdf", {"a", "-o", "a.pdf", "--chord", "500", "--layer-names", "CUT=A"},
        "--layer-names is only for dxf and svg; a pdf has no layers");
    row("gap", {"a", "-o", "a.dxf", "--chord", "500", "--gap", "5"}, "--gap needs --ribs");
    row("files beside a list", {"a", "--ribs", "l.csv", "-o", "a.dxf"},
        "--ribs reads its files from the list; do not name others");
    row("side", {"a", "-o", "a.dxf", "--chord", "500", "--mark-at", "left:3"},
        "--mark-at: 'left:3' does not begin with upper: or lower:");
    row("no side", {"a", "-o", "a.dxf", "--chord", "500", "--mark-at", "lower"},
        "--mark-at: 'lower' does not begin with upper: or lower:");
    row("station", {"a", "-o", "a.dxf", "--chord", "500", "--mark-at", "lower:3,x"},
        "--mark-at: 'x' is not a number between 0 and 100");
    row("beyond", {"a", "-o", "a.dxf", "--chord", "500", "--mark-at", "upper:3;lower:101"},
        "--mark-at: '101' is not a number between 0 and 100");
    row("layer", {"a", "-o", "a.dxf", "--chord", "500", "--layer-names", "KERF=A"},
        "--layer-names: 'KERF=A' is not LAYER=NAME, where LAYER is one of CUT, STITCH, MOUTH, "
        "MARKS, GRAIN, CHORD, TEXT, SCALE");
    row("layer name", {"a", "-o", "a.dxf", "--chord", "500", "--layer-names", "CUT=A B"},
        "--layer-names: 'A B': the name of a layer has letters A to Z, digits, '$', '-' and '_'");
    row("one name", {"a", "-o", "a.dxf", "--chord", "500", "--layer-names", "CUT=stitch"},
        "--layer-names: two layers have the same name, or one is named 0");
    row("layer 0", {"a", "-o", "a.dxf", "--chord", "500", "--layer-names", "CUT=0"},
        "--layer-names: two layers have the same name, or one is named 0");
    row("allowance", {"a", "-o", "a.dxf", "--chord", "500", "--allowance", "-1"},
        "--allowance: '-1' is not between 0 and 1000");
    row("marks", {"a", "-o", "a.dxf", "--chord", "500", "--marks", "0.5"},
        "--marks: '0.5' is not between 1 and 100000");
}

void tst_cli_ribs::refused() {
    QFETCH(Words, arguments);
    QFETCH(QByteArray, reason);
    const FreshFolder folder;
    put_file("a", plain_table());
    const CliRun run = convert(arguments);
    QCOMPARE(run.code, 2);
    QCOMPARE(run.out, QByteArray());
    QByteArray said = run.err.left(run.err.indexOf("Try '")).trimmed();
    said.replace('\n', ' ');
    QCOMPARE(said, "aerolith-cli convert: " + reason);
    QCOMPARE(files_here(), Words{"a"});
}

void tst_cli_ribs::bad_files_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("words") << QByteArray("no table\nat all\n");
    QTest::newRow("nulls") << QByteArray(800, '\0');
}

void tst_cli_ribs::bad_files() {
    QFETCH(QByteArray, bytes);
    const FreshFolder folder;
    put_file("a", bytes);
    const CliRun run = convert({"a", "-o", "a.dxf", "--chord", "500"});
    QCOMPARE(run.code, 1);
    QVERIFY(run.err.startsWith("a:"));
    QCOMPARE(files_here(), Words{"a"});
}

void tst_cli_ribs::list() {
    const FreshFolder folder;
    put_file("wing/a.dat", plain_table());
    put_file("wing/b.dat", plain_table());
    put_file("wing/list.csv", "file,chord,text,count,mirror\n"
                              "a.dat,500,\"{name}, {n}\",2,\n"
                              "\n# tip\n"
                              "b.dat,,,1,yes\n");
    const CliRun run = convert({"--ribs", "wing/list.csv", "-o", "wing.svg", "--chord", "300",
                                "--text", "{name} {chord}"});
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.code, 0);
    const QByteArray sheet = file_bytes("wing.svg");
    for (const char* text : {">a, 1<", ">a, 2<", ">b 300<"})
        QVERIFY2(sheet.contains(text), text);
    QCOMPARE(sheet.count(">100 mm<"), 1);

    put_file("wing/list.csv", "a.dat,500\nmissing.dat,500\na.dat,x\n");
    const CliRun bad = convert({"--ribs", "wing/list.csv", "-o", "bad.svg"});
    QCOMPARE(bad.code, 1);
    QVERIFY2(bad.err.contains("wing/list.csv:2: missing.dat: "), bad.err.constData());
    QVERIFY2(bad.err.contains("wing/list.csv:3: 'x', expected a chord in mm"), bad.err.constData());
    QCOMPARE(file_bytes("bad.svg"), QByteArray());

    put_file("wing/list.csv", "a.dat\n");
    QVERIFY(convert({"--ribs", "wing/list.csv", "-o", "bad.svg"})
                .err.contains("wing/list.csv:1: a.dat: no chord; give it in the list or"));
}

void tst_cli_ribs::list_rows_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("rows");
    QTest::newRow("whole") << QByteArray("a,500,t,2,yes\n") << QByteArray("1|a|500|t|2|1\n");
    QTest::newRow("defaults") << QByteArray("a") << QByteArray("1|a|-|-|1|-\n");
    QTest::newRow("quotes") << QByteArray("\"a,\"\"b\",,\"x, y\"\r\nc,,,,no")
                            << QByteArray("1|a,\"b|-|x, y|1|-\n2|c|-|-|1|0\n");
    QTest::newRow("header, mark and blanks")
        << QByteArray("\xef\xbb\xbf file , chord\n a , 3.5 \n") << QByteArray("2|a|3.5|-|1|-\n");
    QTest::newRow("carriage returns")
        << QByteArray("a\rb\r") << QByteArray("1|a|-|-|1|-\n2|b|-|-|1|-\n");
}

void tst_cli_ribs::list_rows() {
    QFETCH(QByteArray, bytes);
    const RibList list = read_rib_list(bytes);
    QVERIFY(list.findings.isEmpty());
    QByteArray rows;
    for (const cli::RibRow& row : list.rows)
        rows += QByteArray::number(row.line) + '|' + QByteArray::fromStdString(row.file) + '|' +
                (row.chord ? QByteArray::number(*row.chord) : "-") + '|' +
                (row.text ? row.text->toUtf8() : "-") + '|' + QByteArray::number(row.count) + '|' +
                (row.mirror ? QByteArray::number(int(*row.mirror)) : "-") + '\n';
    QTEST(rows, "rows");
}

void tst_cli_ribs::list_faults_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QByteArray& bytes, int line, const char* text) {
        QTest::newRow(name) << bytes << line << QString::fromLatin1(text);
    };
    row("empty", "", 0, "no ribs in the list");
    row("header alone", "file,chord\n", 0, "no ribs in the list");
    row("quote", "a\n\"b,3\n", 2, "an unclosed double quote");
    row("six fields", "a,1,,1,no,x", 1,
        "6 fields, expected at most file, chord, text, count, mirror");
    row("no name", ",500", 1, "no file name");
    row("chord", "a,1e9", 1, "'1e9', expected a chord in mm, 0.001 to 100000");
    row("nan", "a,nan", 1, "'nan', expected a chord in mm, 0.001 to 100000");
    row("decimal comma", "a,\"2,5\"", 1, "'2,5', expected a chord in mm, 0.001 to 100000");
    row("count", "a,5,,0", 1, "'0', expected a count of 1 to 1000");
    row("mirror", "a,5,,1,1", 1, "'1', expected yes or no for mirror");
    row("too many", "a,5,,1000\na,5,,1000\na,5,,1\n", 3, "more than 2000 ribs");
}

void tst_cli_ribs::list_faults() {
    QFETCH(QByteArray, bytes);
    const RibList list = read_rib_list(bytes);
    QCOMPARE(list.findings.size(), 1);
    QTEST(list.findings.first().line, "line");
    QTEST(list.findings.first().text, "text");
}

// A thousand ribs with almost 10,000 marks each.
void tst_cli_ribs::list_too_large() {
    const FreshFolder folder;
    put_file("a.dat", plain_table());
    put_file("list.csv", "a.dat,4800,,1000\na.dat,4800,,1000\n");
    const CliRun run = convert({"--ribs", "list.csv", "-o", "a.svg", "--marks", "1"});
    QCOMPARE(run.code, 1);
    QCOMPARE(run.err, QByteArray("list.csv:1: a.dat: more than 4000000 lines on one sheet\n"));
}

void tst_cli_ribs::output_in_the_list() {
    const FreshFolder folder;
    put_file("f/a.dat", plain_table());
    put_file("f/ribs.csv", "a.dat,500\n");
    const CliRun run = convert({"--ribs", "f/ribs.csv", "-t", "dxf", "-f", "-o", "./f/a.dat"});
    QCOMPARE(run.err, QByteArray("f/ribs.csv:1: a.dat: the file is also the output\n"));
    QCOMPARE(run.code, 1);
    QCOMPARE(file_bytes("f/a.dat"), plain_table());
}

// Any bytes give rows within the limits, or an error.
void tst_cli_ribs::list_of_noise() {
    QRandomGenerator random(11);
    const auto alphabet = QByteArrayLiteral("a,\"\n\r0123.e-#yesno \xff\0");
    for (int i = 0; i < 3000; ++i) {
        QByteArray bytes;
        for (int n = random.bounded(80); n > 0; --n)
            bytes += alphabet[random.bounded(int(alphabet.size()))];
        const RibList list = read_rib_list(bytes);
        QVERIFY(!list.rows.empty() || !list.findings.isEmpty());
        for (const cli::RibRow& row : list.rows) {
            QVERIFY(!row.file.empty() && row.count >= 1 && row.count <= 1000);
            QVERIFY(!row.chord || (*row.chord > 0.0 && *row.chord <= 1e5));
        }
    }
}

AEROLITH_TEST_MAIN(tst_cli_ribs)
#include "tst_cli_ribs.moc"
