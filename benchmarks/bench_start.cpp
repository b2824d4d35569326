// SPDX-FileCopyrightText: Aerolith developers
// The start of the program, from its execution to the first finished paint.
#include "harness.h"

#include <QCoreApplication>
#include <QProcess>

namespace {

struct Start {
    double seconds = 0.0;
    double kilobytes = 0.0;
};

Start started(const QString& program) {
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program, {});
    process.waitForFinished(-1);
    const QList<QByteArray> words = process.readAllStandardOutput().trimmed().split(' ');
    if (words.size() != 2)
        return {};
    return {words[0].toDouble(), words[1].toDouble()};
}

} // namespace

void bench_start() {
    const QString program = QStringLiteral("bench_start_program");
    const QString form = QStringLiteral("bench_start_form");
    started(program);
    started(form);
    std::vector<double> seconds[2];
    std::vector<double> kilobytes[2];
    std::vector<double> time_ratios;
    std::vector<double> memory_ratios;
    for (int round = 0; round < 21; ++round) {
        Start ours;
        Start bare;
        if (round % 2 == 0) {
            ours = started(program);
            bare = started(form);
        } else {
            bare = started(form);
            ours = started(program);
        }
        if (!(ours.seconds > 0.0) || !(bare.seconds > 0.0)) {
            print_note(QStringLiteral("12"), QStringLiteral("start"),
                       QStringLiteral("a program did not paint"));
            return;
        }
        seconds[0].push_back(ours.seconds);
        seconds[1].push_back(bare.seconds);
        kilobytes[0].push_back(ours.kilobytes);
        kilobytes[1].push_back(bare.kilobytes);
        time_ratios.push_back(ours.seconds / bare.seconds);
        memory_ratios.push_back(ours.kilobytes / bare.kilobytes);
    }
    print_row(QStringLiteral("12"),
              QStringLiteral("start to first paint, program : its form alone"),
              times_text(quartiles(seconds[0]).median, quartiles(seconds[1]).median),
              {Goal::at_most, 1.10}, quartiles(time_ratios));
    print_row(QStringLiteral("12"), QStringLiteral("the same, peak memory"),
              QStringLiteral("%1 MB : %2 MB")
                  .arg(quartiles(kilobytes[0]).median / 1024.0, 0, 'f', 1)
                  .arg(quartiles(kilobytes[1]).median / 1024.0, 0, 'f', 1),
              {Goal::at_most, 1.05}, quartiles(memory_ratios));
}
