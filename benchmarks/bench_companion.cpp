// SPDX-FileCopyrightText: Aerolith developers
// aerolith-cli: reading, measuring and fitting many tables, its start, a rib, a report.
#include "cli/inputs.h"
#include "harness.h"
#include "sections/measure.h"
#include "sections/section.h"
#include "tables/table.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int table_count = 1000;

void write_tables(const QDir& folder) {
    constexpr int rows = 161;
    for (int t = 0; t < table_count; ++t) {
        QFile file(folder.filePath(QString::number(t)));
        if (!file.open(QIODevice::WriteOnly))
            return;
        for (int i = 0; i < rows; ++i) {
            const double turn = 2.0 * 3.14159265 * i / (rows - 1);
            const double x = 0.5 + 0.5 * std::cos(turn);
            const double y = (0.04 + 2e-5 * t) * std::sin(turn) * (1.2 - std::cos(turn));
            file.write("  " + QByteArray::number(x, 'f', 6) + "  " + QByteArray::number(y, 'f', 6) +
                       "\n");
        }
    }
}

qsizetype read_tables(const QDir& folder) {
    qsizetype points = 0;
    for (int t = 0; t < table_count; ++t) {
        const cli::Input file = {folder.filePath(QString::number(t)).toStdString(), {}, {}};
        points += tables::read(cli::read_input(file, -1).bytes).points.size();
    }
    return points;
}

void compare_reading() {
    const QString work = QStringLiteral("reading 1,000 tables, ours : numpy.loadtxt");
    const QTemporaryDir temporary;
    const QDir folder(temporary.path());
    write_tables(folder);
    QProcess script;
    script.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral(BENCH_LOADTXT), folder.path(), QStringLiteral("15")});
    std::vector<double> ours;
    std::vector<double> theirs;
    std::vector<double> ratios;
    for (;;) {
        while (!script.canReadLine() && script.waitForReadyRead(120000)) {
        }
        if (!script.canReadLine())
            break;
        theirs.push_back(script.readLine().trimmed().toDouble());
        ours.push_back(timed([&] { keep(double(read_tables(folder))); }));
        ratios.push_back(ours.back() / theirs.back());
        script.write("\n");
    }
    script.closeWriteChannel();
    script.waitForFinished(-1);
    if (ratios.empty()) {
        print_note(QStringLiteral("13"), work, QStringLiteral("no python3 with numpy"));
        return;
    }
    print_row(QStringLiteral("13"), work,
              times_text(quartiles(ours).median, quartiles(theirs).median), {Goal::at_most, 0.25},
              quartiles(ratios));
}

struct Spent {
    double processor = 0.0;
    double wall = 0.0;
};

// Seconds of a run, including loading; 0 for a failed run.
Spent spent_by(const QString& program, const QByteArrayList& arguments) {
    QElapsedTimer clock;
    clock.start();
    const QByteArray path =
        QFile::encodeName(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program);
    std::vector<char*> words = {const_cast<char*>(path.constData())};
    for (const QByteArray& argument : arguments)
        words.push_back(const_cast<char*>(argument.constData()));
    words.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        ::posix_spawn(&process, path.constData(), &actions, nullptr, words.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used = {};
    if (error != 0 || ::wait4(process, &status, 0, &used) != process || status != 0)
        return {};
    const auto seconds = [](const timeval& time) {
        return double(time.tv_sec) + 1e-6 * double(time.tv_usec);
    };
    return {seconds(used.ru_utime) + seconds(used.ru_stime), 1e-9 * double(clock.nsecsElapsed())};
}

// Compares a run of the companion with the bare start of a program with the same libraries.
void compare_run(const char* number, const QString& work, const QByteArrayList& arguments,
                 double goal) {
    const auto mean = [](const QString& program, const QByteArrayList& words) {
        double sum = 0.0;
        for (int i = 0; i < 20; ++i)
            sum += spent_by(program, words).processor;
        return sum / 20;
    };
    std::vector<double> ours;
    std::vector<double> theirs;
    std::vector<double> ratios;
    for (int round = 0; round < 21; ++round) {
        const auto run = [&] {
            ours.push_back(mean(QStringLiteral("../aerolith-cli"), arguments));
        };
        if (round % 2 == 0)
            run();
        theirs.push_back(mean(QStringLiteral("bench_start_bare"), {}));
        if (round % 2 != 0)
            run();
        ratios.push_back(ours.back() / theirs.back());
    }
    if (!(quartiles(ours).low > 0.0) || !(quartiles(theirs).low > 0.0)) {
        print_note(QString::fromLatin1(number), work, QStringLiteral("a program failed"));
        return;
    }
    print_row(QString::fromLatin1(number), work,
              times_text(quartiles(ours).median, quartiles(theirs).median), {Goal::at_most, goal},
              quartiles(ratios));
}

void compare_starts() {
    compare_run("14", QStringLiteral("aerolith-cli --version : its libraries alone"), {"--version"},
                1.15);
    const QTemporaryDir folder;
    for (const QByteArray format : {"dxf", "svg"}) {
        compare_run(
            "15",
            QStringLiteral("a rib as %1 : its libraries alone").arg(QString::fromLatin1(format)),
            {"convert", BENCH_RIB, "--force", "--chord", "2850", "--allowance", "10", "--text",
             "{name} {chord}", "--output",
             QFile::encodeName(folder.filePath(QStringLiteral("rib."))) + format},
            1.3);
    }
}

// From the points of a table to its measures.
void measure_tables() {
    const QTemporaryDir temporary;
    const QDir folder(temporary.path());
    write_tables(folder);
    std::vector<tables::Table> outlines;
    for (int t = 0; t < table_count; ++t) {
        QFile file(folder.filePath(QString::number(t)));
        if (file.open(QIODevice::ReadOnly))
            outlines.push_back(tables::read(file.readAll()));
    }
    std::vector<double> rates;
    for (int round = 0; round < 5; ++round) {
        const double seconds = timed([&] {
            for (const tables::Table& table : outlines)
                keep(sections::measure(*sections::section_of_table(table).section).length);
        });
        rates.push_back(double(outlines.size()) / seconds);
    }
    print_note(
        QStringLiteral("16"), QStringLiteral("measuring tables of 161 rows"),
        QStringLiteral("%1 per second of processor time").arg(std::round(quartiles(rates).median)));
}

// Ideally two processors are twice as fast as one.
void compare_jobs() {
    constexpr int fits = 200;
    const QTemporaryDir temporary;
    const QDir folder(temporary.path());
    write_tables(folder);
    QByteArrayList words = {"fit", "--force", "--dir",
                            QFile::encodeName(folder.filePath(QStringLiteral("splines")))};
    for (int t = 0; t < fits; ++t)
        words << QFile::encodeName(folder.filePath(QString::number(t)));
    std::vector<double> one;
    std::vector<double> two;
    std::vector<double> ratios;
    for (int round = 0; round < 7; ++round) {
        const auto wall = [&](const char* jobs) {
            return spent_by(QStringLiteral("../aerolith-cli"),
                            words + QByteArrayList{"--jobs", jobs})
                .wall;
        };
        one.push_back(wall("1"));
        two.push_back(wall("2"));
        ratios.push_back(one.back() / two.back());
    }
    print_row(QStringLiteral("17"), QStringLiteral("200 fits, one job : two"),
              times_text(quartiles(one).median, quartiles(two).median), {Goal::at_least, 1.8},
              quartiles(ratios));
}

void time_report() {
    const QTemporaryDir temporary;
    const QDir folder(temporary.path());
    write_tables(folder);
    const QTemporaryDir pages;
    const QByteArrayList words = {"check",
                                  QFile::encodeName(folder.path()),
                                  "--jobs",
                                  "1",
                                  "--force",
                                  "--report",
                                  QFile::encodeName(pages.filePath(QStringLiteral("page.html")))};
    std::vector<double> rates;
    for (int round = 0; round < 5; ++round)
        rates.push_back(table_count / spent_by(QStringLiteral("../aerolith-cli"), words).processor);
    print_note(
        QStringLiteral("18"), QStringLiteral("sections of a report of check"),
        QStringLiteral("%1 per second of processor time").arg(std::round(quartiles(rates).median)));
}

} // namespace

void bench_companion() {
    compare_reading();
    compare_starts();
    measure_tables();
    compare_jobs();
    time_report();
}
