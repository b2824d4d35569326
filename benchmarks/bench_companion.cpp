// SPDX-FileCopyrightText: Aerolith developers
// The companion program: reading many tables, and its start.
#include "cli/inputs.h"
#include "harness.h"
#include "tables/table.h"

#include <QCoreApplication>
#include <QDir>
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

// Processor time of a run, loading included, seconds; 0 for one that failed.
double process_seconds(const QString& program) {
    const QByteArray path =
        QFile::encodeName(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program);
    QByteArray argument = "--version";
    char* const arguments[] = {const_cast<char*>(path.constData()), argument.data(), nullptr};
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        ::posix_spawn(&process, path.constData(), &actions, nullptr, arguments, environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used = {};
    if (error != 0 || ::wait4(process, &status, 0, &used) != process || status != 0)
        return 0.0;
    const auto seconds = [](const timeval& time) {
        return double(time.tv_sec) + 1e-6 * double(time.tv_usec);
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

void compare_start() {
    const QString program = QStringLiteral("../aerolith-cli");
    const QString bare = QStringLiteral("bench_start_bare");
    const auto start = [](const QString& name) {
        double sum = 0.0;
        for (int i = 0; i < 20; ++i)
            sum += process_seconds(name);
        return sum / 20;
    };
    std::vector<double> ours;
    std::vector<double> theirs;
    std::vector<double> ratios;
    for (int round = 0; round < 21; ++round) {
        const bool first = round % 2 == 0;
        const double one = start(first ? program : bare);
        const double other = start(first ? bare : program);
        ours.push_back(first ? one : other);
        theirs.push_back(first ? other : one);
        ratios.push_back(ours.back() / theirs.back());
    }
    if (!(quartiles(ours).low > 0.0) || !(quartiles(theirs).low > 0.0)) {
        print_note(QStringLiteral("14"), QStringLiteral("start of the companion"),
                   QStringLiteral("a program failed"));
        return;
    }
    print_row(QStringLiteral("14"), QStringLiteral("aerolith-cli --version : its libraries alone"),
              times_text(quartiles(ours).median, quartiles(theirs).median), {Goal::at_most, 1.15},
              quartiles(ratios));
}

} // namespace

void bench_companion() {
    compare_reading();
    compare_start();
}
