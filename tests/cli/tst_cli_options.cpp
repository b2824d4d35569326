// SPDX-FileCopyrightText: Aerolith developers
// The table of options, row by row, and the parser.
#include "cli/cliruns.h"
#include "cli/documents.h"
#include "cli/help.h"
#include "cli/options.h"
#include "cli/parse.h"
#include "cli/verb.h"
#include "support/testmain.h"

#include <QTest>

#include <algorithm>
#include <set>

using cli::Option;
using cli::Options;

namespace {

using Words = std::vector<std::string>;

const cli::Verb& verb_of(const Option& option) {
    for (const cli::Verb* verb : cli::verbs()) {
        const std::vector<const Option*> options = cli::options_of(verb->name);
        if (std::find(options.begin(), options.end(), &option) != options.end())
            return *verb;
    }
    qFatal("no verb takes --%s", option.name);
}

std::string long_name(const Option& option) {
    return std::string("--") + option.name;
}

bool is_number(const Option& option) {
    return *option.argument != 0 && !std::holds_alternative<std::string Options::*>(option.target);
}

bool is_whole(const Option& option) {
    return std::holds_alternative<int Options::*>(option.target) ||
           std::holds_alternative<std::vector<int> Options::*>(option.target);
}

// Valid values of an option. All of its numbers are equal.
Words values(const Option& option, const std::string& number) {
    if (!is_number(option))
        return {option.choices ? option.choices().front() : "name"};
    Words words;
    for (const std::string& word : cli::words_of(option.argument)) {
        std::string list = number;
        for (auto commas = std::count(word.begin(), word.end(), ','); commas > 0; --commas)
            list += "," + number;
        words.push_back(list);
    }
    return words;
}

Words values(const Option& option) {
    return values(option, cli::number_text(option.low));
}

Words operator+(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

std::string refusal(const Option& option, const Words& arguments) {
    return cli::parse(verb_of(option), arguments).refusal;
}

const Option& option_of_row() {
    return cli::option_table()[std::size_t(
        QString::fromLatin1(QTest::currentDataTag()).section(u'-', 0, 0).toInt())];
}

void add_rows(bool (*wanted)(const Option&)) {
    QTest::addColumn<int>("unused");
    const std::vector<Option>& table = cli::option_table();
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (wanted(table[i]))
            QTest::newRow((std::to_string(i) + long_name(table[i])).c_str()) << 0;
    }
}

bool any(const Option& /*option*/) {
    return true;
}

bool takes_value(const Option& option) {
    return *option.argument != 0;
}

} // namespace

class CliOptions : public QObject {
    Q_OBJECT

private slots:
    void table_is_sound() {
        for (const cli::Verb* verb : cli::verbs()) {
            std::set<std::string> names;
            std::set<char> letters;
            for (const Option* option : cli::options_of(verb->name)) {
                QVERIFY2(names.insert(option->name).second, option->name);
                QVERIFY2(option->letter == 0 || letters.insert(option->letter).second,
                         option->name);
            }
        }
    }

    void row_is_sound_data() { add_rows(any); }
    void row_is_sound() {
        const Option& option = option_of_row();
        const std::string name = option.name;
        const std::string help = option.help;
        QVERIFY(std::all_of(name.begin(), name.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
        }));
        QVERIFY(!help.empty() && help.back() != '.');
        QVERIFY(help[0] >= 'A' && help[0] <= 'Z');
        for (const std::string& verb : cli::words_of(option.verbs))
            QVERIFY2(verb == "*" || cli::verb_named(verb), verb.c_str());
        QVERIFY(!is_number(option) || option.low < option.high);
        QVERIFY(!option.choices || !option.choices().empty());
    }

    // The defaults in the table are those of the record.
    void default_is_the_records_data() { add_rows(any); }
    void default_is_the_records() {
        const Option& option = option_of_row();
        if (const auto* member = std::get_if<int Options::*>(&option.target)) {
            const int start = Options().*(*member);
            QCOMPARE(start == 0 ? std::string() : std::to_string(start),
                     std::string(option.standard));
        } else if (const auto* real = std::get_if<double Options::*>(&option.target)) {
            const double start = Options().*(*real);
            QCOMPARE(start == 0.0 ? std::string() : cli::number_text(start),
                     std::string(option.standard));
        }
    }

    void forms_data() { add_rows(any); }
    void forms() {
        const Option& option = option_of_row();
        const Words once =
            Words{long_name(option)} + (takes_value(option) ? values(option) : Words());
        QCOMPARE(refusal(option, once), std::string());
        QCOMPARE(refusal(option, Words{"file"} + once + Words{"file"}), std::string());
        QCOMPARE(refusal(option, once + once), long_name(option) + ": given twice");
        if (option.letter != 0) {
            const Words letter = Words{std::string("-") + option.letter} +
                                 (takes_value(option) ? values(option) : Words());
            QCOMPARE(refusal(option, letter), std::string());
            QCOMPARE(refusal(option, letter + once), long_name(option) + ": given twice");
        }
        if (takes_value(option) && values(option).size() == 1) {
            QCOMPARE(refusal(option, {long_name(option) + "=" + values(option)[0]}), std::string());
        }
        QCOMPARE(cli::parse(verb_of(option), {"--", long_name(option)}).options.files,
                 Words{long_name(option)});
    }

    void wrong_forms_data() { add_rows(any); }
    void wrong_forms() {
        const Option& option = option_of_row();
        const std::string name = long_name(option);
        if (!takes_value(option)) {
            QCOMPARE(refusal(option, {name + "=true"}), name + " takes no value");
            return;
        }
        QCOMPARE(refusal(option, {name}), name + " needs " + option.argument);
        QCOMPARE(refusal(option, {name + "=", "x"}), name + "= has no value");
        const Words empty(values(option).size(), std::string());
        QVERIFY(!refusal(option, Words{name} + empty).empty());
    }

    void numbers_data() { add_rows(is_number); }
    void numbers() {
        const Option& option = option_of_row();
        const auto refused = [&](const std::string& number) {
            return !refusal(option, Words{long_name(option)} + values(option, number)).empty();
        };
        const double step = is_whole(option) ? 1.0 : 1e-6;
        QVERIFY(!refused(cli::number_text(option.low)));
        QVERIFY(!refused(cli::number_text(option.high)));
        QVERIFY(refused(cli::number_text(option.low - step)));
        QVERIFY(refused(cli::number_text(option.high + step)));
        const std::string good = cli::number_text(option.high);
        for (const std::string& bad :
             {"x" + good, good + "x", good + " ", " " + good, "+-" + good, std::string("nan"),
              std::string("inf"), std::string("1e999"), good + "e", std::string("0x5")})
            QVERIFY2(refused(bad), bad.c_str());
        QVERIFY(!refused("+" + good));
    }

    void choices_data() {
        add_rows([](const Option& option) { return option.choices != nullptr; });
    }
    void choices() {
        const Option& option = option_of_row();
        for (const std::string& choice : option.choices())
            QCOMPARE(refusal(option, {long_name(option), choice}), std::string());
        QVERIFY(!refusal(option, {long_name(option), option.choices().front() + "x"}).empty());
    }

    // Everything generated from the table names every option.
    void everything_names_it_data() { add_rows(any); }
    void everything_names_it() {
        const Option& option = option_of_row();
        const auto has = [](const std::string& text, const std::string& what) {
            return text.find(what) != std::string::npos;
        };
        std::string in_manual = "\\-\\-";
        for (const char c : std::string(option.name))
            in_manual += c == '-' ? std::string("\\-") : std::string(1, c);
        QVERIFY(has(cli::verb_help(verb_of(option), 80), long_name(option)));
        QVERIFY(has(cli::manual_page(), in_manual));
        QVERIFY(has(cli::bash_completion(), long_name(option)));
        QVERIFY(has(cli::zsh_completion(), long_name(option)));
        QVERIFY(has(cli::fish_completion(), std::string(" -l ") + option.name));
        QVERIFY(has(cli::grammar(), "\n" + long_name(option)));
    }

    // A font macro joins its arguments, so arguments with a blank are quoted.
    void synopsis() {
        const std::string page = cli::manual_page();
        for (const cli::Verb* verb : cli::verbs())
            QVERIFY(page.find(std::string("\n.IR \"") + verb->inputs + "\" ") != std::string::npos);
    }

    void help_fits_data() {
        QTest::addColumn<int>("width");
        for (const int width : {40, 59, 60, 80, 200})
            QTest::newRow(std::to_string(width).c_str()) << width;
    }
    void help_fits() {
        QFETCH(const int, width);
        const auto set_width = [&](cli::Streams& streams) { streams.width = width; };
        std::vector<Words> commands = {{}, {"--help"}, {"-h"}};
        for (const cli::Verb* verb : cli::verbs())
            commands.push_back({verb->name, "--help"});
        for (const Words& command : commands) {
            const CliRun run = run_cli(command, {}, set_width);
            QCOMPARE(run.code, 0);
            QCOMPARE(run.err, QByteArray());
            for (const QByteArray& line : run.out.split('\n')) {
                QVERIFY2(line.size() <= width || !line.trimmed().contains(' '), line.constData());
                QVERIFY2(!line.endsWith(' '), line.constData());
            }
        }
        // On a narrow terminal an explanation is below its option.
        const QByteArray help = run_cli({"check", "--help"}, {}, set_width).out;
        QCOMPARE(help.contains("  -h, --help\n"), width < 60);
        QVERIFY(run_cli({}).out.count('\n') <= 24);
    }

    void refusals_data() {
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QByteArray>("message");
        const auto row = [](const char* name, const QByteArrayList& arguments,
                            const QByteArray& message) {
            QTest::newRow(name) << arguments << message;
        };
        row("verb", {"chek"}, "aerolith-cli: unknown verb 'chek'; did you mean 'check'?");
        row("far-verb", {"zzz"}, "aerolith-cli: unknown verb 'zzz'");
        row("empty-verb", {""}, "aerolith-cli: unknown verb ''");
        row("escape-in-verb", {"\x1b[2J"}, "aerolith-cli: unknown verb '\\x1B[2J'");
        row("option-first", {"--json", "check"}, "aerolith-cli: expected a verb before '--json'");
        row("option", {"check", "--jsno", "x"},
            "aerolith-cli check: unknown option '--jsno'; did you mean '--json'?");
        row("option-with-value", {"check", "--laoyut=selig"},
            "aerolith-cli check: unknown option '--laoyut'; did you mean '--layout'?");
        row("letter", {"check", "-x"}, "aerolith-cli check: unknown option '-x'");
        row("no-files", {"check"}, "aerolith-cli check: no files given");
        row("empty-name", {"check", ""}, "aerolith-cli check: a file name is empty");
        row("null-alone", {"check", "-0", "x"}, "aerolith-cli check: --null needs --files-from");
        row("comma", {"convert", "x", "-d", "y", "--openings", "9,5", "20"},
            "aerolith-cli convert: --openings: '9,5' is not a number; use a decimal point");
        row("openings-turned", {"convert", "x", "-d", "y", "--openings", "9", "3"},
            "aerolith-cli convert: --openings: A must not exceed B");
        row("counts-of-no-profile", {"convert", "x", "-d", "y", "--lep-points", "60,8,45"},
            "aerolith-cli convert: --lep-points needs --to lep");
        row("two-counts", {"convert", "x", "-d", "y", "-t", "lep", "--lep-points", "60,8"},
            "aerolith-cli convert: --lep-points: '60,8' is not a list of 3 numbers separated by "
            "commas");
        row("extension", {"convert", "x", "-o", "y.pov"},
            "aerolith-cli convert: no format has the extension .pov; choose one with --to");
        row("lep-extension", {"convert", "x", "-o", "y.dat", "--to", "lep"},
            "aerolith-cli convert: a lep file needs the extension .txt, not .dat");
    }
    void refusals() {
        QFETCH(const QByteArrayList, arguments);
        QFETCH(const QByteArray, message);
        const FreshFolder folder;
        Words words;
        for (const QByteArray& argument : arguments)
            words.push_back(argument.toStdString());
        const CliRun run = run_cli(words, {}, [](cli::Streams& streams) { streams.width = 200; });
        QCOMPARE(run.err.split('\n').first(), message);
        QVERIFY(run.err.split('\n').value(1).startsWith("Try 'aerolith-cli"));
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.code, 2);
        QCOMPARE(files_here(), Words());
    }

    void examples_parse() {
        for (const cli::Verb* verb : cli::verbs()) {
            Words words = cli::words_of(verb->example);
            QCOMPARE(words.front(), std::string(verb->name));
            words.erase(words.begin());
            QCOMPARE(cli::parse(*verb, words).refusal, std::string());
        }
    }

    void version() {
        const CliRun run = run_cli({"--version"});
        QCOMPARE(run.out, QByteArray("aerolith-cli " AEROLITH_VERSION "\n"));
        QCOMPARE(run.code, 0);
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliOptions)
#include "tst_cli_options.moc"
