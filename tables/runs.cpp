// SPDX-FileCopyrightText: Aerolith developers
// The course of x through the rows: up, down, back to the start.
#include "tables/runs_p.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

constexpr double least_turn = 0.02; // of the width
constexpr double least_jump = 0.7;

bool same_sign(double a, double b) {
    return (a > 0.0 && b > 0.0) || (a < 0.0 && b < 0.0);
}

// Whether the x of the row is off a course that its neighbours on both sides continue. At an end of
// the table one side is enough.
bool is_slip(const std::vector<double>& all, int row, double tolerance) {
    const int rows = int(all.size());
    if (row < 1 || row + 1 >= rows || rows < 5)
        return false;
    const double* const here = all.data() + row;
    const auto x = [=](int offset) { return here[offset]; };
    const double low = std::min(x(-1), x(1));
    const double high = std::max(x(-1), x(1));
    if (!(x(0) < low - tolerance || x(0) > high + tolerance))
        return false;
    const double through = x(1) - x(-1);
    return (row < 2 || same_sign(x(-1) - x(-2), through)) &&
           (row + 2 >= rows || same_sign(x(2) - x(1), through));
}

// Follows x from the first row and ends a run whenever x has come back far enough.
class Follower {
public:
    Follower(const std::vector<double>& all_, double tolerance_)
        : all(all_), tolerance(tolerance_) {}

    void begin(int row, bool after_jump) {
        start = lowest = highest = previous = row;
        jumped = after_jump;
        known = false;
    }

    void go_on(int row) {
        previous = row;
        if (x(row) < x(lowest))
            lowest = row;
        if (x(row) > x(highest))
            highest = row;
        if (!known) {
            rising = x(row) - x(lowest) > tolerance;
            known = rising || x(highest) - x(row) > tolerance;
        } else if (rising && x(highest) - x(row) > tolerance) {
            turn(highest);
            lowest = row;
        } else if (!rising && x(row) - x(lowest) > tolerance) {
            turn(lowest);
            highest = row;
        }
    }

    void end(std::vector<Run>& to) {
        runs.push_back({start, previous, rising, jumped});
        to.insert(to.end(), runs.begin(), runs.end());
        runs.clear();
    }

    double x(int row) const { return all[std::size_t(row)]; }
    int last_row() const { return previous; }

private:
    void turn(int row) {
        runs.push_back({start, row, rising, jumped});
        start = row;
        jumped = false;
        rising = !rising;
    }

    const std::vector<double>& all;
    double tolerance;
    std::vector<Run> runs;
    int start = 0;
    int lowest = 0;
    int highest = 0;
    int previous = 0;
    bool rising = false;
    bool known = false;
    bool jumped = false;
};

} // namespace

Course course_of(const Sheet& sheet, int column) {
    Course course;
    const double width = range_of(sheet, column).width();
    if (!(width > 0.0))
        return course;
    std::vector<double> all(std::size_t(sheet.rows()));
    for (int row = 0; row < sheet.rows(); ++row)
        all[std::size_t(row)] = sheet.at(row, column);
    Follower follower(all, least_turn * width);
    follower.begin(0, false);
    for (int row = 1; row < sheet.rows(); ++row) {
        if (is_slip(all, row, least_turn * width)) {
            course.slips.push_back(row);
            continue;
        }
        const double step = follower.x(row) - follower.x(follower.last_row());
        if (std::abs(step) > least_jump * width) {
            follower.end(course.runs);
            follower.begin(row, true);
        } else {
            follower.go_on(row);
        }
    }
    follower.end(course.runs);
    return course;
}

QString described(const Course& course) {
    constexpr std::size_t most_told = 6;
    QStringList words;
    for (std::size_t i = 0; i < std::min(course.runs.size(), most_told); ++i)
        words.append(course.runs[i].rising ? QStringLiteral("up") : QStringLiteral("down"));
    if (course.runs.size() > most_told)
        words.append(QStringLiteral("..."));
    return words.join(QStringLiteral(", "));
}

} // namespace tables
