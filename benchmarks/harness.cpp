// SPDX-FileCopyrightText: Aerolith developers
// Ratios of the processor times of two tasks, and a table of them.
#include "harness.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

double sink = 0.0;

double time_per_run(const Work& work) {
    const double start = processor_seconds();
    for (int i = 0; i < work.repetitions; ++i)
        work.run();
    return (processor_seconds() - start) / work.repetitions;
}

QString time_text(double seconds) {
    if (seconds >= 1.0)
        return QStringLiteral("%1 s").arg(seconds, 0, 'g', 3);
    if (seconds >= 1e-3)
        return QStringLiteral("%1 ms").arg(seconds * 1e3, 0, 'g', 3);
    return QStringLiteral("%1 us").arg(seconds * 1e6, 0, 'g', 3);
}

void print_columns(const QString& number, const QString& work, const QString& times,
                   const QString& goal, const QString& figure, const QString& spread,
                   const QString& verdict) {
    std::printf("%-3s %-46s %-22s %9s %8s %15s  %s\n", qPrintable(number), qPrintable(work),
                qPrintable(times), qPrintable(goal), qPrintable(figure), qPrintable(spread),
                qPrintable(verdict));
    std::fflush(stdout);
}

QString figure_text(double value) {
    return QString::number(value, 'f', value >= 10.0 ? 0 : value >= 2.0 ? 1 : 3);
}

} // namespace

double processor_seconds() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

double timed(const std::function<void()>& run) {
    return time_per_run({run, 1});
}

Quartiles quartiles(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const auto at = [&](double part) {
        return values[std::size_t(part * double(values.size() - 1) + 0.5)];
    };
    return {at(0.25), at(0.5), at(0.75)};
}

Comparison compare(int rounds, const Work& first, const Work& second) {
    time_per_run(first);
    time_per_run(second);
    std::vector<double> ratios;
    std::vector<double> first_times;
    std::vector<double> second_times;
    for (int round = 0; round < rounds; ++round) {
        double times[2];
        if (round % 2 == 0) {
            times[0] = time_per_run(first);
            times[1] = time_per_run(second);
        } else {
            times[1] = time_per_run(second);
            times[0] = time_per_run(first);
        }
        ratios.push_back(times[0] / times[1]);
        first_times.push_back(times[0]);
        second_times.push_back(times[1]);
    }
    return {quartiles(ratios), quartiles(first_times).median, quartiles(second_times).median};
}

void print_head() {
    print_columns(QStringLiteral("#"), QStringLiteral("work"), QStringLiteral("times"),
                  QStringLiteral("goal"), QStringLiteral("ratio"), QStringLiteral("quartiles"),
                  QStringLiteral("verdict"));
}

void print_row(const QString& number, const QString& work, const QString& times, Goal goal,
               const Quartiles& ratio) {
    const bool at_least = goal.kind == Goal::at_least;
    const bool met = at_least ? ratio.median >= goal.bound : ratio.median <= goal.bound;
    print_columns(number, work, times,
                  QLatin1String(at_least ? ">= " : "<= ") + QString::number(goal.bound),
                  figure_text(ratio.median),
                  figure_text(ratio.low) + QLatin1String(" .. ") + figure_text(ratio.high),
                  met ? QStringLiteral("met") : QStringLiteral("MISSED"));
}

void print_note(const QString& number, const QString& work, const QString& note) {
    print_columns(number, work, QString(), QString(), QString(), QString(), note);
}

QString times_text(double first, double second) {
    return time_text(first) + QLatin1String(" : ") + time_text(second);
}

void keep(double value) {
    sink += value;
}
