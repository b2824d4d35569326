// SPDX-FileCopyrightText: Aerolith developers
// The files that a verb works on, and those that it refuses.
#include "cli/cliruns.h"
#include "cli/inputs.h"
#include "support/testmain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <filesystem>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace fs = std::filesystem;

using Words = std::vector<std::string>;
using namespace Qt::StringLiterals;

namespace {

// Standard input: a list, or nothing.
int input_holding(const QByteArray& bytes) {
    put_file("list", bytes);
    return ::open("list", O_RDONLY | O_CLOEXEC);
}

struct Found {
    Words paths;
    Words below;
    std::string refusal;
};

Found expand(const cli::Options& options, int in = -1) {
    const cli::Inputs inputs = cli::expand_inputs(options, in);
    Found found;
    for (const cli::Input& input : inputs.all) {
        found.paths.push_back(input.path);
        found.below.push_back(input.below);
    }
    found.refusal = inputs.refusal;
    return found;
}

Found expand_names(const Words& names) {
    cli::Options options;
    options.files = names;
    return expand(options);
}

} // namespace

class CliInputs : public QObject {
    Q_OBJECT

private slots:
    void folders_are_sorted_and_deep() {
        const FreshFolder folder;
        for (const char* name : {"f/b.dat", "f/a.dat", "f/B.dat", "f/sub/c.dat", "f/.hidden",
                                 "f/sub/deep/d.dat", "f/su.dat", "alone.dat"})
            put_file(name, "x");
        fs::create_directory("f/empty");
        const Found found = expand_names({"alone.dat", "f/", "missing"});
        QCOMPARE(found.refusal, std::string());
        QCOMPARE(found.paths, Words({"alone.dat", "f/.hidden", "f/B.dat", "f/a.dat", "f/b.dat",
                                     "f/su.dat", "f/sub/c.dat", "f/sub/deep/d.dat", "missing"}));
        QCOMPARE(found.below, Words({"alone.dat", ".hidden", "B.dat", "a.dat", "b.dat", "su.dat",
                                     "sub/c.dat", "sub/deep/d.dat", "missing"}));
        QCOMPARE(expand_names({"f"}).paths, expand_names({"f/"}).paths);
        QCOMPARE(expand_names({"f/sub"}).below, Words({"c.dat", "deep/d.dat"}));
    }

    void links_to_folders_are_followed_where_given() {
        const FreshFolder folder;
        put_file("f/a.dat", "x");
        fs::create_symlink(".", "f/loop");
        fs::create_symlink("a.dat", "f/link.dat");
        fs::create_symlink("nowhere", "f/broken.dat");
        fs::create_directory_symlink("f", "g");
        QCOMPARE(expand_names({"f"}).paths, Words({"f/a.dat", "f/broken.dat", "f/link.dat"}));
        QCOMPARE(expand_names({"g"}).paths, Words({"g/a.dat", "g/broken.dat", "g/link.dat"}));
    }

    void raw_names() {
        const FreshFolder folder;
        const Words names = {"f/\n", "f/\x1b[2J", "f/[a,b]", "f/\xff\xfe", "f/ "};
        for (const std::string& name : names)
            put_file(name, "x");
        QCOMPARE(expand_names({"f"}).paths,
                 Words({"f/\n", "f/\x1b[2J", "f/ ", "f/[a,b]", "f/\xff\xfe"}));
        const CliRun run = run_cli({"check", "--json", "f/[a,b]", "f/\xff\xfe"});
        const QJsonArray array = QJsonDocument::fromJson(run.out).array();
        QCOMPARE(array.size(), 2);
        QCOMPARE(array[0][u"path"], QJsonValue(u"f/[a,b]"_s));
        QVERIFY(array[0][u"path_hex"].isUndefined());
        QCOMPARE(array[1][u"path"], QJsonValue(u"f/\\xFF\\xFE"_s));
        QCOMPARE(array[1][u"path_hex"], QJsonValue(u"662ffffe"_s));
    }

    void lists_data() {
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<bool>("null");
        QTest::addColumn<QByteArrayList>("expected");
        QTest::newRow("lines") << QByteArray("a\nb c\n") << false << QByteArrayList{"a", "b c"};
        QTest::newRow("no-last-end") << QByteArray("a\nb") << false << QByteArrayList{"a", "b"};
        QTest::newRow("cr-lf") << QByteArray("a\r\nb\r\n") << false << QByteArrayList{"a", "b"};
        QTest::newRow("blank-lines") << QByteArray("\n\na\n\n") << false << QByteArrayList{"a"};
        QTest::newRow("empty") << QByteArray() << false << QByteArrayList();
        QTest::newRow("nulls") << QByteArray("a\n\0b\0", 5) << true << QByteArrayList{"a\n", "b"};
        QTest::newRow("hyphens") << QByteArray("--json\n") << false << QByteArrayList{"--json"};
    }
    void lists() {
        QFETCH(const QByteArray, list);
        QFETCH(const bool, null);
        QFETCH(const QByteArrayList, expected);
        const FreshFolder folder;
        Words words = {"first"};
        for (const QByteArray& name : expected)
            words.push_back(name.toStdString());
        cli::Options options;
        options.files = {"first"};
        options.files_from = "-";
        options.null_separated = null;
        const int in = input_holding(list);
        QCOMPARE(expand(options, in).paths, words);
        ::close(in);
        options.files_from = "list";
        QCOMPARE(expand(options).paths, words);
    }

    void refusals_data() {
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<QByteArray>("reason");
        const auto row = [](const char* name, const QByteArrayList& arguments,
                            const QByteArray& list, const QByteArray& reason) {
            QTest::newRow(name) << arguments << list << reason;
        };
        const QByteArray once = "standard input can be read only once";
        row("input-twice", {"-", "-"}, "", once);
        row("list-and-input", {"--files-from", "-", "-"}, "", once);
        row("input-in-list", {"--files-from", "-"}, "-\n", once);
        row("null-in-lines", {"--files-from", "-"}, QByteArray("a\0b", 3),
            "the list - contains null characters; read it with --null");
        row("missing-list", {"--files-from", "nowhere"}, "",
            "the list nowhere: No such file or directory");
        row("folder-as-list", {"--files-from", "."}, "",
            "the list .: not a regular file but a folder");
        row("empty-list", {"--files-from", "-"}, "\n", "no files found");
    }
    void refusals() {
        QFETCH(const QByteArrayList, arguments);
        QFETCH(const QByteArray, list);
        QFETCH(const QByteArray, reason);
        const FreshFolder folder;
        Words words = {"check"};
        for (const QByteArray& argument : arguments)
            words.push_back(argument.toStdString());
        const CliRun run = run_cli(words, list, [](cli::Streams& streams) { streams.width = 200; });
        QCOMPARE(run.err.split('\n').first(), "aerolith-cli check: " + reason);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.code, 2);
    }

    void unreadable_inputs_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("missing") << u"missing"_s << QByteArray("No such file or directory");
        QTest::newRow("pipe") << u"pipe"_s << QByteArray("not a regular file but a pipe");
        QTest::newRow("device") << u"/dev/zero"_s << QByteArray("not a regular file but a device");
        QTest::newRow("socket") << u"socket"_s << QByteArray("No such device or address");
        QTest::newRow("large") << u"large"_s << QByteArray("larger than 64 MiB");
        QTest::newRow("below-a-file") << u"good.dat/x"_s << QByteArray("Not a directory");
        QTest::newRow("long-name") << QString(5000, u'a') << QByteArray("File name too long");
    }
    void unreadable_inputs() {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, reason);
        const FreshFolder folder;
        put_file("good.dat", plain_table());
        QCOMPARE(::mkfifo("pipe", 0600), 0);
        put_file("large", {});
        QCOMPARE(::truncate("large", cli::largest_input + 1), 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrcpy(address.sun_path, "socket");
        const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

        // The good file after it is still read.
        const std::string path = name.toStdString();
        const CliRun run = run_cli({"check", "--json", path, "good.dat"});
        ::close(server);
        const QJsonArray array = QJsonDocument::fromJson(run.out).array();
        QCOMPARE(array.size(), 2);
        QVERIFY2(run.out.contains(reason), run.out.constData());
        QVERIFY(array[1][u"points"].toInt() == 11);
        QCOMPARE(run.code, 1);
    }

    void largest_input_is_read() {
        const FreshFolder folder;
        put_file("large", {});
        QCOMPARE(::truncate("large", cli::largest_input), 0);
        const cli::Content content = cli::read_input({"large", "large", {}}, -1);
        QCOMPARE(content.error, std::string());
        QCOMPARE(content.bytes.size(), qsizetype(cli::largest_input));
    }

    void standard_input_has_a_limit() {
        const FreshFolder folder;
        put_file("large", {});
        QCOMPARE(::truncate("large", cli::largest_input + 1), 0);
        const int in = ::open("large", O_RDONLY | O_CLOEXEC);
        const cli::Content content = cli::read_input({"-", "-", {}}, in);
        ::close(in);
        QCOMPARE(content.error, std::string("larger than 64 MiB"));
        QVERIFY(content.bytes.isEmpty());
    }

    void standard_input() {
        const CliRun run = run_cli({"check", "--json", "-"}, plain_table());
        const QJsonArray array = QJsonDocument::fromJson(run.out).array();
        QCOMPARE(array.size(), 1);
        QCOMPARE(array[0][u"path"], QJsonValue(u"-"_s));
        QCOMPARE(array[0][u"points"].toInt(), 11);
    }

    // Results are in the order of the arguments for any number of jobs.
    void same_results_for_all_jobs() {
        const FreshFolder folder;
        for (int i = 0; i < 60; ++i)
            put_file("f/" + std::to_string(i) + ".dat", i % 7 == 0 ? "no table" : plain_table());
        const CliRun one = run_cli({"check", "f", "-j1"});
        QCOMPARE(one.code, 1);
        for (const char* jobs : {"-j2", "-j5", "-j64"}) {
            const CliRun many = run_cli({"check", "f", jobs});
            QCOMPARE(many.out, one.out);
            QCOMPARE(many.err, one.err);
            QCOMPARE(many.code, one.code);
        }
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliInputs)
#include "tst_cli_inputs.moc"
