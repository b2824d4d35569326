// SPDX-FileCopyrightText: Aerolith developers
// Ratios of the processor times of two tasks, and a table of them.
#pragma once

#include <QString>

#include <functional>
#include <vector>

/// Quartiles of the measurements of several rounds.
struct Quartiles {
    double low = 0.0;
    double median = 0.0;
    double high = 0.0;
};

/// Two tasks measured alternately.
struct Comparison {
    Quartiles ratio;     ///< Time of the first over that of the second, round by round.
    double first = 0.0;  ///< Median time of one run of the first, seconds.
    double second = 0.0; ///< Median time of one run of the second, seconds.
};

/// One of the two tasks of a comparison.
struct Work {
    std::function<void()> run;
    int repetitions = 1; ///< Runs in one round; enough for some milliseconds.
};

/// Processor time of this process so far, seconds.
double processor_seconds();

/// Processor time that @p run takes, seconds.
double timed(const std::function<void()>& run);

/// The quartiles of @p values, which may be in any order; not empty.
Quartiles quartiles(std::vector<double> values);

/// Runs both tasks once to warm up, then alternately. The order changes with every round, so that a
/// slow phase of the machine affects both.
Comparison compare(int rounds, const Work& first, const Work& second);

/// The goal for a ratio.
struct Goal {
    enum Kind { at_least, at_most };
    Kind kind;
    double bound;
};

/// Prints the head of the table.
void print_head();

/// Prints one row: what was compared, both times, the goal, the ratio, its spread, the
/// verdict.
/// @param number the row's name
/// @param times  both times as text
void print_row(const QString& number, const QString& work, const QString& times, Goal goal,
               const Quartiles& ratio);

/// Prints a row that has no figure.
void print_note(const QString& number, const QString& work, const QString& note);

/// "1.53 ms : 5.60 us"
QString times_text(double first, double second);

/// Keeps the compiler from dropping a task whose result is not used.
void keep(double value);

/// @name Rows of the table
/// @{
void bench_sampling();
void bench_painting();
void bench_reading();
void bench_table();
void bench_fourier();
void bench_start();
void bench_companion();
/// @}
