// SPDX-FileCopyrightText: Aerolith developers
// Two halves one after the other, and one half to be mirrored.
#include "tables/layouts_p.h"

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

bool is_count(double number) {
    return number >= 1.0 && number == std::floor(number);
}

// Checks two counts in the head against the rows of the halves.
void compare_counts(const Question& question, Reading& reading) {
    if (question.head.lines.empty())
        return;
    const Rows& table = question.sheet.table();
    const std::size_t head = question.head.lines.back();
    const std::vector<double> counts = table.values(head);
    if (counts.size() != 2 || !is_count(counts[0]) || !is_count(counts[1]))
        return;
    reading.heads = 1;
    const int first = question.course.runs[0].rows();
    const int second = question.course.runs[1].rows();
    if (counts[0] != first || counts[1] != second)
        reading.findings.append(
            {Gravity::doubt, table.lines[head].number,
             QStringLiteral("counts %1 and %2, but the halves have %3 and %4 rows")
                 .arg(counts[0])
                 .arg(counts[1])
                 .arg(first)
                 .arg(second)});
}

// A mean line leaves the nose at an acute angle, a thickness distribution at a right angle.
bool has_blunt_nose(const Outline& to_nose, double height) {
    const QPointF nose = to_nose.points.last();
    for (int i = int(to_nose.points.size()) - 1; i > 0; --i) {
        const QPointF a = to_nose.points[i];
        const QPointF b = to_nose.points[i - 1];
        const double x = nose.x() + 0.0125;
        if (a.x() <= x && b.x() >= x && b.x() > a.x()) {
            const double y = a.y() + (x - a.x()) / (b.x() - a.x()) * (b.y() - a.y());
            // A straight line across a wide first step is less steep than the real curve.
            return std::abs(y) >= 0.2 * height || b.x() > nose.x() + 0.03;
        }
    }
    return true;
}

bool is_one_side(const Outline& side) {
    double least = 0.0;
    double greatest = 0.0;
    for (const QPointF& point : side.points) {
        least = std::min(least, point.y());
        greatest = std::max(greatest, point.y());
    }
    const double height = std::max(greatest, -least);
    return std::min(greatest, -least) <= 0.01 * height;
}

} // namespace

std::optional<Reading> read_halves(const Question& question) {
    const Sheet& sheet = question.sheet;
    const std::vector<Run>& runs = question.course.runs;
    if (sheet.columns() != 2 || runs.size() != 2 || !runs[1].after_jump)
        return std::nullopt;
    Reading reading;
    reading.outline = joined(side_of(sheet, runs[0].first, runs[0].last, runs[0].rising ? -1 : 1),
                             side_of(sheet, runs[1].first, runs[1].last, runs[1].rising ? 1 : -1));
    compare_counts(question, reading);
    return reading;
}

std::optional<Reading> read_half(const Question& question) {
    const Sheet& sheet = question.sheet;
    // Columns beside angles of attack or blade radii rise and fall like this, too.
    if (question.course.runs.size() != 1 || sheet.columns() > 4 || !begins_at_nose(sheet))
        return std::nullopt;
    std::optional<Reading> reading;
    for (int y = 1; y < sheet.columns(); ++y) {
        Outline side =
            side_of(sheet, 0, sheet.rows() - 1, question.course.runs[0].rising ? -1 : 1, y);
        if (side.points.size() < 3 || !is_one_side(side))
            continue;
        double height = 0.0;
        for (const QPointF& point : side.points)
            height = std::max(height, std::abs(point.y()));
        const double nose = std::abs(side.points.last().y());
        if (nose > 0.02 || nose > 0.4 * height)
            continue;
        const bool is_blunt = has_blunt_nose(side, height);
        Outline whole = mirrored(std::move(side));
        if (is_refused(whole))
            continue;
        if (reading)
            return std::nullopt;
        reading.emplace();
        reading->outline = std::move(whole);
        reading->findings.append(
            {Gravity::note, sheet.line(0), QStringLiteral("one side, mirrored")});
        if (!question.course.runs[0].rising)
            reading->findings.append({Gravity::doubt, sheet.line(0),
                                      QStringLiteral("only one side from the trailing edge: half a "
                                                     "section, or the rest is missing")});
        if (!is_blunt)
            reading->findings.append(
                {Gravity::doubt, sheet.line(0),
                 QStringLiteral("sharp at the nose: half a section, or a mean line")});
    }
    if (reading && sheet.columns() > 2) {
        reading->rank = leftover_rank;
        reading->findings.append({Gravity::note, sheet.line(0),
                                  QStringLiteral("%1 columns; one of them is a side of a section")
                                      .arg(sheet.columns())});
    }
    return reading;
}

} // namespace tables
