// SPDX-FileCopyrightText: Aerolith developers
// The page of --report: when it is written, its content, refusals.
#include "cli/cliruns.h"
#include "support/testmain.h"

#include <QPolygonF>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <filesystem>

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

namespace {

CliRun run(const QByteArrayList& arguments) {
    return run_cli(words_from(arguments), {}, [](cli::Streams& streams) { streams.width = 300; });
}

// A cambered section. Camber and thickness are fractions of the chord.
QByteArray section(int rows, double camber = 0.04, double thickness = 0.12) {
    QByteArray table = "A section\n";
    for (int i = 0; i < rows; ++i) {
        const double angle = 2.0 * 3.14159265358979 * i / (rows - 1);
        const double x = 0.5 * (1.0 + std::cos(angle));
        const double half = 5.0 * thickness *
                            (0.2969 * std::sqrt(x) - 0.126 * x - 0.3516 * x * x +
                             0.2843 * x * x * x - 0.1036 * x * x * x * x);
        const double y = 4.0 * camber * x * (1.0 - x) + (angle < 3.14159265358979 ? half : -half);
        table += QByteArray::number(x, 'f', 6) + ' ' + QByteArray::number(y, 'f', 6) + '\n';
    }
    return table;
}

// The texts between <tag> and </tag> in their order, without inner tags.
QByteArrayList texts_between(const QByteArray& page, const QByteArray& start,
                             const QByteArray& end) {
    QByteArrayList texts;
    for (qsizetype at = page.indexOf(start); at >= 0; at = page.indexOf(start, at)) {
        at += start.size();
        QByteArray text;
        bool is_tag = false;
        for (const char c : page.mid(at, page.indexOf(end, at) - at)) {
            is_tag = is_tag || c == '<';
            if (!is_tag)
                text += c;
            is_tag = is_tag && c != '>';
        }
        texts << text;
    }
    return texts;
}

QByteArrayList names_in(const QByteArray& page) {
    return texts_between(page, "<th scope=\"row\">", "</th>");
}

QByteArrayList states_in(const QByteArray& page) {
    return texts_between(page.mid(page.indexOf("<tbody>")), "<span class=\"tag ", "</span>");
}

QByteArrayList facts_in(const QByteArray& page) {
    const QByteArrayList labels = texts_between(page, "<dt>", "</dt>");
    const QByteArrayList values = texts_between(page, "<dd>", "</dd>");
    QByteArrayList facts;
    for (qsizetype i = 0; i < labels.size(); ++i)
        facts << values.value(i) + ' ' + labels[i];
    return facts;
}

// The corners of the first line with this class in the table of the page.
QPolygonF corners_of(const QByteArray& page, const QByteArray& kind) {
    static const QRegularExpression number(QStringLiteral("-?[0-9]+"));
    const QByteArray start = "<path class=\"" + kind + "\" d=\"";
    const qsizetype at = page.indexOf(start, page.indexOf("<tbody>")) + start.size();
    auto found = number.globalMatch(QString::fromLatin1(page.mid(at, page.indexOf('"', at) - at)));
    QPolygonF corners;
    while (found.hasNext()) {
        const int x = found.next().captured().toInt();
        const QPointF step(x, found.next().captured().toInt());
        corners << (corners.isEmpty() ? step : corners.last() + step);
    }
    return corners;
}

} // namespace

class CliReport : public QObject {
    Q_OBJECT

private slots:
    // A report does not change the other results.
    void verbs_data() {
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QByteArrayList>("states");
        QTest::addColumn<QByteArrayList>("facts");
        const auto row = [](const QByteArrayList& arguments, const QByteArrayList& states,
                            const QByteArrayList& facts) {
            QTest::newRow(arguments.join(' ').constData()) << arguments << states << facts;
        };
        row({"check"}, {"good\">ok", "good\">ok", "bad\">bad", "bad\">bad"},
            {"4 files", "2 ok", "0 convert", "0 ask", "2 bad"});
        row({"compare", "a.dat"},
            {"plain\">compared", "plain\">compared", "bad\">not compared", "bad\">not compared"},
            {"4 files", "2 compared", "2 not compared"});
        row({"compare", "a.dat", "--tolerance", "2", "--chord", "1000"},
            {"good\">within", "odd\">beyond", "bad\">not compared", "bad\">not compared"},
            {"4 files", "1 within tolerance", "1 beyond tolerance", "2 not compared"});
        row({"fit", "--dir", "splines"},
            {"good\">within", "good\">within", "bad\">no spline", "bad\">no spline"},
            {"4 files", "2 within tolerance", "0 beyond tolerance", "2 no spline"});
        row({"fit", "--dir", "splines", "--points", "5"},
            {"odd\">beyond", "odd\">beyond", "bad\">no spline", "bad\">no spline"},
            {"4 files", "0 within tolerance", "2 beyond tolerance", "2 no spline"});
    }
    void verbs() {
        QFETCH(const QByteArrayList, arguments);
        QFETCH(const QByteArrayList, facts);
        const QByteArrayList files = {"a.dat", "b.dat", "bad.dat", "none.dat"};
        const FreshFolder folder;
        put_file("a.dat", section(81));
        put_file("b.dat", section(61, 0.02));
        put_file("bad.dat", "no numbers here\n");
        const CliRun plain = run(arguments + files);
        QCOMPARE(plain.code, 1);
        fs::remove_all("splines");
        const CliRun told = run(arguments + files + QByteArrayList{"--report", "page.html"});
        QCOMPARE(told.err, plain.err);
        QCOMPARE(told.out, plain.out);
        QCOMPARE(told.code, plain.code);
        const QByteArray page = file_bytes("page.html");
        QVERIFY(page.startsWith("<!DOCTYPE html>\n") && page.endsWith("</html>\n"));
        QCOMPARE(names_in(page), files);
        QTEST(states_in(page), "states");
        QCOMPARE(facts_in(page).mid(0, facts.size()), facts);
        QVERIFY(page.contains("<li>No such file or directory</li>"));
        QVERIFY(page.contains("no rows of numbers"));
    }

    // The summary has the worst value with its name, and the median.
    void figures() {
        const FreshFolder folder;
        put_file("a.dat", section(81));
        for (int i = 1; i < 5; ++i)
            put_file("other" + std::to_string(i), section(81, 0.04, 0.12 + 0.004 * i));
        QCOMPARE(run({"compare", "a.dat", "other2", "other4", "other1", "other3", "--chord", "1000",
                      "--report", "page.html"})
                     .code,
                 0);
        const QByteArrayList facts = facts_in(file_bytes("page.html"));
        QCOMPARE(facts.size(), 5);
        const auto number = [](const QByteArray& fact) {
            return fact.split(' ').first().toDouble();
        };
        // Half of the added thickness, a little less because the surface is inclined.
        QVERIFY2(facts[3].endsWith(" mm worst: other4"), facts[3].constData());
        QVERIFY2(std::abs(number(facts[3]) - 8.0) < 0.1, facts[3].constData());
        QVERIFY2(facts[4].endsWith(" mm median"), facts[4].constData());
        QVERIFY2(std::abs(number(facts[4]) - 5.0) < 0.1, facts[4].constData());
    }

    // The same section, turned: aligned, both lines of the picture lie on each other.
    void aligned() {
        const FreshFolder folder;
        const QByteArray table = section(81);
        put_file("a.dat", table);
        QByteArray turned = "turned\n";
        for (const QByteArray& row : table.split('\n').mid(1, 81)) {
            const double x = row.split(' ')[0].toDouble();
            const double y = row.split(' ')[1].toDouble();
            turned += QByteArray::number(0.992 * x - 0.126 * y, 'f', 7) + ' ' +
                      QByteArray::number(0.126 * x + 0.992 * y, 'f', 7) + '\n';
        }
        put_file("b.dat", turned);
        QCOMPARE(run({"compare", "a.dat", "b.dat", "--align", "--report", "page.html"}).code, 0);
        const QByteArray page = file_bytes("page.html");
        QCOMPARE(page.count("<th scope=\"col\" class=\"num\""), 8);
        const QPolygonF reference = corners_of(page, "t");
        const QPolygonF line = corners_of(page, "s");
        QCOMPARE(line.size(), reference.size());
        QVERIFY(reference.size() > 40);
        for (qsizetype i = 0; i < line.size(); ++i) {
            const QPointF off = line[i] - reference[i];
            QVERIFY2(std::hypot(off.x(), off.y()) < 30.0, QByteArray::number(i).constData());
        }
    }

    // Otherwise each section stays where it is, whatever its nose.
    void not_aligned() {
        const FreshFolder folder;
        put_file("a.dat", section(81));
        put_file("b.dat", section(81, 0.3));
        QCOMPARE(run({"compare", "a.dat", "b.dat", "--report", "page.html"}).code, 0);
        const QByteArray page = file_bytes("page.html");
        QCOMPARE(corners_of(page, "s").constFirst(), corners_of(page, "t").constFirst());
    }

    void names() {
        const FreshFolder folder;
        const QByteArrayList files = {"<script>alert(1)<.dat", "a\"b'&amp;.dat", "c\xff\n\x1b.dat",
                                      "\xef\xbf\xbe%1<!--.dat"};
        for (const QByteArray& file : files)
            put_file(file.toStdString(), section(41));
        QCOMPARE(run(QByteArrayList{"check", "--report", "page.html", "--"} + files).code, 0);
        const QByteArray page = file_bytes("page.html");
        const QByteArrayList expected = {"&lt;script&gt;alert(1)&lt;.dat", "a&quot;b'&amp;amp;.dat",
                                         "c\\xFF\\x0A\\x1B.dat", "\xef\xbf\xbd%1&lt;!--.dat"};
        QCOMPARE(names_in(page), expected);
        for (const QByteArray& name : expected)
            QCOMPARE(page.count("aria-label=\"Enlarge Section: " + name + '"'), 1);
        QCOMPARE(page.count("<script"), 1);
        QCOMPARE(page.count("<!"), 1);
    }

    void refusals_data() {
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QByteArray>("reason");
        const auto row = [](const QByteArrayList& arguments, const QByteArray& reason) {
            QTest::newRow(arguments.join(' ').constData()) << arguments << reason;
        };
        row({"check", "a.dat", "--report", "-"}, "standard output is for the results");
        row({"check", "a.dat", "--report", "old.html"},
            "old.html exists; use --force to replace it");
        row({"check", "a.dat", "-f", "--report", "a.dat"}, "is an input; choose another name");
        row({"check", "a.dat", "-f", "--report", "linked.html"},
            "is an input; choose another name");
        row({"check", "--files-from", "list", "-f", "--report", "list"},
            "is an input; choose another name");
        row({"compare", "a.dat", "b.dat", "-f", "--report", "a.dat"},
            "is an input; choose another name");
        row({"check", "a.dat", "--report", "folder"}, "is a folder");
        row({"check", "a.dat", "--report", "new/"}, "is a folder");
        row({"check", "a.dat", "--report", "new/page.html"}, "there is no such folder");
        row({"fit", "a.dat", "-d", "x", "--report", "new/page.html"}, "there is no such folder");
        row({"check", "a.dat", "-f"}, "--force needs --report");
        row({"fit", "a.dat", "-o", "x", "--report", "x"}, "is also another output");
        row({"fit", "a.dat", "-o", "x", "--report", "./folder/../x"}, "is also another output");
        row({"fit", "a.dat", "-o", "x", "--report", "dangling"}, "is also another output");
        row({"fit", "a.dat", "-d", "x", "--report", "x/a.spl"}, "is also another output");
        row({"fit", "a.dat", "-d", "x", "--report", "x"}, "is also another output");
        row({"fit", "a.dat", "-d", "x", "--report", "x/a.spl/page.html"}, "is also another output");
        row({"fit", "a.dat", "-f", "-o", "old.spl", "--report", "old.html"},
            "is the same file as another output");
    }
    void refusals() {
        QFETCH(const QByteArrayList, arguments);
        QFETCH(const QByteArray, reason);
        const FreshFolder folder;
        put_file("a.dat", section(41));
        put_file("b.dat", section(41));
        put_file("list", "a.dat\n");
        put_file("old.html", "old");
        put_file("folder/file", "");
        fs::create_hard_link("a.dat", "linked.html");
        fs::create_hard_link("old.html", "old.spl");
        fs::create_symlink("x", "dangling");
        const Words before = files_here();
        const CliRun told = run(arguments);
        QCOMPARE(told.code, 2);
        QVERIFY2(told.err.contains(reason), told.err.constData());
        QCOMPARE(told.out, QByteArray());
        QCOMPARE(files_here(), before);
        QCOMPARE(file_bytes("a.dat"), section(41));
        QCOMPARE(file_bytes("old.html"), QByteArray("old"));
    }

    void below_the_folder_of_the_splines() {
        const FreshFolder folder;
        put_file("a.dat", section(41));
        QCOMPARE(run({"fit", "a.dat", "-d", "new", "--report", "new/page.html"}).code, 0);
        QCOMPARE(files_here(), (Words{"a.dat", "new/a.spl", "new/page.html"}));
        QCOMPARE(run({"fit", "a.dat", "-f", "-d", "new", "--report", "page.html"}).code, 0);
        QVERIFY(!file_bytes("page.html").isEmpty());
    }

    void failed_writes() {
        const FreshFolder folder;
        put_file("a.dat", section(41));
        CliRun told = run({"check", "a.dat", "--report", "/dev/full"});
        QCOMPARE(told.code, 1);
        QVERIFY2(told.err.contains("/dev/full: cannot be written: No space left"),
                 told.err.constData());

        told = run({"fit", "a.dat", "-o", "/dev/full", "--report", "page.html"});
        QCOMPARE(told.code, 1);
        const QByteArray page = file_bytes("page.html");
        QCOMPARE(states_in(page), (QByteArrayList{"bad\">not written"}));
        QVERIFY(page.contains("<li>cannot be written: No space left on device</li>"));
        QVERIFY(facts_in(page).contains("1 not written"));

        // All files are processed even if standard output has failed.
        put_file("b.dat", section(41));
        told = run_cli({"check", "a.dat", "b.dat", "-j", "1", "-f", "--report", "page.html"}, {},
                       [](cli::Streams& streams) { streams.out = [](auto) { return ENOSPC; }; });
        QCOMPARE(told.code, 1);
        QCOMPARE(states_in(file_bytes("page.html")), (QByteArrayList{"good\">ok", "good\">ok"}));
    }

    // Many sections, each with 200 different points.
    void many() {
        const FreshFolder folder;
        for (int i = 0; i < 1600; ++i)
            put_file("wing/" + std::to_string(i), section(200, 0.00003 * i, 0.1 + 0.00002 * i));
        QCOMPARE(run({"check", "wing", "--report", "page.html", "-j", "2"}).code, 0);
        const QByteArray page = file_bytes("page.html");
        QCOMPARE(names_in(page).size(), 1600);
        QVERIFY2(page.size() < 20000000, QByteArray::number(page.size()).constData());
    }

    void jobs() {
        const FreshFolder folder;
        for (int i = 0; i < 12; ++i)
            put_file("wing/" + std::to_string(i), i == 5 ? "bad" : section(60, 0.003 * i));
        const QByteArrayList each[] = {
            {"check", "wing"}, {"compare", "wing/3", "wing"}, {"fit", "wing", "-d", "splines"}};
        for (const QByteArrayList& arguments : each) {
            QByteArray pages[2];
            for (int i = 0; i < 2; ++i) {
                const QByteArray threads = i == 0 ? "1" : "4";
                const QByteArrayList more = {"-f", "--report", "page.html", "-j", threads};
                QCOMPARE(run(arguments + more).code, 1);
                pages[i] = file_bytes("page.html");
            }
            QCOMPARE(pages[1], pages[0]);
        }
    }
};

AEROLITH_TEST_MAIN(CliReport)
#include "tst_cli_report.moc"
