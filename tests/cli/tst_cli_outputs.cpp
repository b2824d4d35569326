// SPDX-FileCopyrightText: Aerolith developers
// Where outputs go, and which are refused before the first one is written.
#include "cli/cliruns.h"
#include "support/testmain.h"

#include <QTest>

#include <cerrno>
#include <filesystem>

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

namespace {

CliRun convert(const QByteArrayList& arguments) {
    return run_cli(words_from(QByteArrayList{"convert"} + arguments), plain_table(),
                   [](cli::Streams& streams) { streams.width = 300; });
}

} // namespace

class CliOutputs : public QObject {
    Q_OBJECT

private slots:
    void names_data() {
        QTest::addColumn<QByteArrayList>("inputs");
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QByteArrayList>("outputs");
        const auto row = [](const char* name, const QByteArrayList& inputs,
                            const QByteArrayList& arguments, const QByteArrayList& outputs) {
            QTest::newRow(name) << inputs << arguments << outputs;
        };
        row("one", {"a.dat"}, {"a.dat", "-o", "b.txt"}, {"b.txt"});
        row("extension", {"a.dat"}, {"a.dat", "-d", "o"}, {"o/a.txt"});
        row("extension-of-format", {"a.txt"}, {"a.txt", "-d", "o", "-t", "csv"}, {"o/a.csv"});
        row("number-is-no-extension", {"naca.0012"}, {"naca.0012", "-d", "o"}, {"o/naca.0012.txt"});
        row("long-is-no-extension", {"a.sectional9"}, {"a.sectional9", "-d", "o"},
            {"o/a.sectional9.txt"});
        row("hidden", {".dat"}, {".dat", "-d", "o"}, {"o/.dat.txt"});
        row("point-in-folder", {"v1.x/a"}, {"v1.x/a", "-d", "o"}, {"o/a.txt"});
        row("below", {"f/a.dat", "f/s/a.dat"}, {"f", "-d", "o/deep"},
            {"o/deep/a.txt", "o/deep/s/a.txt"});
        row("bytes", {"\xff\n.dat"}, {"\xff\n.dat", "-d", "o\xfe"}, {"o\xfe/\xff\n.txt"});
        row("force", {"a.dat", "o/a.txt"}, {"a.dat", "-d", "o", "-f"}, {"o/a.txt"});
    }
    void names() {
        QFETCH(const QByteArrayList, inputs);
        QFETCH(const QByteArrayList, arguments);
        QFETCH(const QByteArrayList, outputs);
        const FreshFolder folder;
        for (const QByteArray& input : inputs)
            put_file(input.toStdString(), plain_table());
        const CliRun run = convert(arguments);
        QCOMPARE(run.err, QByteArray());
        QCOMPARE(run.code, 0);
        QCOMPARE(run.out.count('\n'), outputs.size());
        for (const QByteArray& output : outputs) {
            const QByteArray bytes = file_bytes(output.toStdString());
            QVERIFY2(bytes.contains("00000000") && bytes != plain_table(), output.constData());
        }
        Words expected = words_from(inputs + outputs);
        std::sort(expected.begin(), expected.end());
        expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
        QCOMPARE(files_here(), expected);
    }

    void refusals_data() {
        QTest::addColumn<QByteArrayList>("inputs");
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QByteArray>("reason");
        const auto row = [](const char* name, const QByteArrayList& inputs,
                            const QByteArrayList& arguments, const QByteArray& reason) {
            QTest::newRow(name) << inputs << arguments << reason;
        };
        row("nowhere", {"a"}, {"a"},
            "no output given; use --output OUT for one file, --dir FOLDER for several");
        row("both", {"a"}, {"a", "-o", "b", "-d", "c"}, "--output and --dir cannot be combined");
        row("two-for-one", {"a", "b"}, {"a", "b", "-o", "c"},
            "--output takes one input, not 2; use --dir FOLDER");
        row("json-and-output", {"a"}, {"a", "-o", "-", "--json"},
            "--json and --output - cannot be combined; both use standard output");
        row("input-below-folder", {}, {"-", "-d", "o"},
            "standard input has no name for a file in --dir; use --output OUT");
        row("folder-is-file", {"a", "o"}, {"a", "-d", "o"}, "--dir o is not a folder");
        row("output-is-folder", {"a", "o/x"}, {"a", "-o", "o"}, "o is a folder");
        row("clash", {"a.dat", "a.txt"}, {"a.dat", "a.txt", "-d", "o"},
            "a.dat and a.txt would both be written to o/a.txt");
        row("file-and-folder", {"f/a.dat", "f/a.txt/b.dat"}, {"f", "-d", "o"},
            "o/a.txt would be both a file and the folder of o/a.txt/b.txt");
        row("exists", {"a", "b", "o/b.txt"}, {"a", "b", "-d", "o"},
            "o/b.txt exists; use --force to replace it");
        row("two-exist", {"a", "b", "o/a.txt", "o/b.txt"}, {"a", "b", "-d", "o"},
            "o/a.txt and 1 more exist; use --force to replace them");
        row("is-input", {"a.txt"}, {"a.txt", "-o", "a.txt"},
            "a.txt is an input; choose another name");
        row("is-input-by-force", {"a.txt"}, {"a.txt", "-o", "a.txt", "-f"},
            "a.txt is an input; choose another name");
        row("is-another-input", {"f/a.dat", "f/a.txt"}, {"f/a.dat", "f/a.txt", "-d", "f", "-f"},
            "f/a.dat and f/a.txt would both be written to f/a.txt");
        row("is-later-input", {"f/a.dat", "f/a.txt/x", "g.txt"},
            {"f/a.dat", "g.txt", "-d", ".", "-f"}, "./g.txt is an input; choose another name");
        row("is-list", {"list.txt"}, {"--files-from", "list.txt", "-0", "-o", "list.txt", "-f"},
            "list.txt is an input; choose another name");
    }
    void refusals() {
        QFETCH(const QByteArrayList, inputs);
        QFETCH(const QByteArrayList, arguments);
        QFETCH(const QByteArray, reason);
        const FreshFolder folder;
        for (const QByteArray& input : inputs)
            put_file(input.toStdString(), plain_table());
        const Words before = files_here();
        const CliRun run = convert(arguments);
        QCOMPARE(run.err.split('\n').first(), "aerolith-cli convert: " + reason);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.code, 2);
        QCOMPARE(files_here(), before);
        for (const std::string& name : before)
            QCOMPARE(file_bytes(name), plain_table());
    }

    // Links in the folder of the outputs, some of them dangling.
    void one_file_by_two_names_data() {
        QTest::addColumn<QByteArrayList>("files");
        QTest::addColumn<QByteArray>("link");
        QTest::addColumn<QByteArray>("target");
        QTest::addColumn<QByteArray>("reason");
        const auto row = [](const char* name, const QByteArrayList& files, const QByteArray& link,
                            const QByteArray& target, const QByteArray& reason) {
            QTest::newRow(name) << files << link << target << reason;
        };
        const QByteArray same = " is the same file as another output";
        row("old-file", {"f/a.dat", "f/b.dat", "o/a.txt"}, "o/b.txt", "a.txt", "o/b.txt" + same);
        row("new-file", {"f/a.dat", "f/b.dat"}, "o/b.txt", "a.txt", "o/b.txt" + same);
        row("new-file-far", {"f/a.dat", "f/b.dat"}, "o/b.txt", "../o/.//a.txt", "o/b.txt" + same);
        row("folder", {"f/s/a.dat", "f/t/a.dat", "o/t/x"}, "o/s", "t", "o/t/a.txt" + same);
        row("deep-folder", {"f/s/n/a.dat", "f/t/n/a.dat", "o/t/x"}, "o/s", "t",
            "o/t/n/a.txt" + same);
        row("input", {"f/a.dat"}, "o/a.txt", "../f/a.dat",
            "o/a.txt is an input; choose another name");
    }
    void one_file_by_two_names() {
        QFETCH(const QByteArrayList, files);
        QFETCH(const QByteArray, link);
        QFETCH(const QByteArray, target);
        QFETCH(const QByteArray, reason);
        const FreshFolder folder;
        for (const QByteArray& file : files)
            put_file(file.toStdString(), plain_table());
        fs::create_directory("o");
        fs::create_symlink(target.toStdString(), link.toStdString());
        const Words before = files_here();
        const CliRun run = convert({"f", "-d", "o", "-f"});
        QCOMPARE(run.err.split('\n').first(), "aerolith-cli convert: " + reason);
        QCOMPARE(run.code, 2);
        QCOMPARE(files_here(), before);
    }

    // A loop of links has no place. The other files are written.
    void links_in_a_loop() {
        const FreshFolder folder;
        for (const char* name : {"f/a.dat", "f/b.dat", "f/c.dat", "f/s/d.dat", "f/t/d.dat"})
            put_file(name, plain_table());
        fs::create_directory("o");
        fs::create_symlink("b.txt", "o/a.txt");
        fs::create_symlink("a.txt", "o/b.txt");
        fs::create_symlink("s", "o/s");
        fs::create_symlink("nowhere", "o/t");
        const CliRun run = convert({"f", "-d", "o", "-f"});
        QCOMPARE(run.code, 1);
        QCOMPARE(run.err.count("cannot"), 4);
        QVERIFY(!file_bytes("o/c.txt").isEmpty());
        QVERIFY(fs::is_symlink("o/a.txt") && fs::is_symlink("o/t"));
    }

    void one_bad_file_stops_no_other() {
        const FreshFolder folder;
        put_file("f/a.dat", plain_table());
        put_file("f/b.dat", "no table");
        put_file("f/c.dat", plain_table());
        put_file("o/d/x", "in the way");
        const CliRun run = convert({"f", "missing", "-d", "o"});
        QCOMPARE(run.code, 1);
        QCOMPARE(files_here(),
                 Words({"f/a.dat", "f/b.dat", "f/c.dat", "o/a.txt", "o/c.txt", "o/d/x"}));
        QVERIFY(run.err.contains("f/b.dat"));
        QVERIFY(run.err.contains("missing: No such file or directory\n"));
    }

    void failed_outputs_data() {
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("no-folder") << QByteArray("none/x.txt");
        QTest::newRow("below-a-file") << QByteArray("a.dat/x.txt");
        QTest::newRow("full-disk") << QByteArray("/dev/full");
    }
    void failed_outputs() {
        QFETCH(const QByteArray, output);
        const FreshFolder folder;
        put_file("a.dat", plain_table());
        const CliRun run = convert({"a.dat", "-o", output, "-t", "window"});
        QCOMPARE(run.code, 1);
        QVERIFY2(run.err.startsWith(output + ": cannot be written"), run.err.constData());
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(files_here(), Words({"a.dat"}));
    }

    // The file goes to standard output, everything else to standard error.
    void file_on_standard_output() {
        const CliRun run = convert({"-", "-o", "-", "-t", "csv", "--decimals", "3"});
        QVERIFY(run.out.startsWith("# A plain section\nx,y\n1.000,0.000\n"));
        QCOMPARE(run.out.count('\n'), 13);
        QVERIFY(run.err.contains("csv"));
        QCOMPARE(run.code, 0);
    }

    void full_standard_output() {
        const FreshFolder folder;
        Words all;
        for (char name = 'a'; name <= 'z'; ++name) {
            put_file(std::string("f/") + name + ".dat", plain_table());
            all.push_back(std::string("f/") + name + ".dat");
        }
        const auto full = [](cli::Streams& streams) {
            streams.out = [](std::string_view) { return ENOSPC; };
        };
        const QByteArray message = "aerolith-cli: standard output: No space left on device\n";
        for (const Words& arguments :
             {Words{"check", "f"}, Words{"check", "f", "--json"}, Words{"--version"},
              Words{"--help"}, Words{"convert", "f", "-d", "o", "-j1"}}) {
            const CliRun run = run_cli(arguments, {}, full);
            QCOMPARE(run.code, 1);
            QCOMPARE(run.err.count(message), 1);
        }
        for (char name = 'a'; name <= 'z'; ++name)
            all.push_back(std::string("o/") + name + ".txt");
        QCOMPARE(files_here(), all);
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliOutputs)
#include "tst_cli_outputs.moc"
