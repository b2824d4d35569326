// SPDX-FileCopyrightText: Aerolith developers
// Layouts that begin with counts, one per line.
#include "tables/layouts_p.h"

#include <cmath>

namespace tables {

namespace {

// The last @p count head rows, if each holds a single non-negative whole number.
std::vector<int> single_counts(const Question& question, std::size_t count) {
    constexpr double largest_count = 1e8;
    const std::vector<std::size_t>& heads = question.head.lines;
    const Rows& table = question.sheet.table();
    std::vector<int> counts;
    if (heads.size() < count)
        return counts;
    for (std::size_t i = heads.size() - count; i < heads.size(); ++i) {
        const std::vector<double> values = table.values(heads[i]);
        if (values.size() != 1 || values[0] < 0.0 || values[0] > largest_count ||
            values[0] != std::floor(values[0]))
            return {};
        counts.push_back(int(values[0]));
    }
    return counts;
}

Reading refused(int line, const QString& text) {
    Reading reading;
    reading.rank = counted_rank;
    reading.findings.append({Gravity::error, line, text});
    return reading;
}

bool runs_down_and_up(const Course& course) {
    return course.runs.size() == 2 && !course.runs[1].after_jump && !course.runs[0].rising;
}

} // namespace

std::optional<Reading> read_lep(const Question& question) {
    const std::vector<int> counts = single_counts(question, 4);
    if (counts.empty() || question.sheet.columns() != 2)
        return std::nullopt;
    const Rows& table = question.sheet.table();
    const int line = table.lines[question.head.lines[question.head.lines.size() - 4]].number;
    const int total = counts[0];
    const int upper = counts[1];
    const int intake = counts[2];
    const int lower = counts[3];
    if (upper + intake + lower != total + 2)
        return refused(line, QStringLiteral("counts %1 + %2 + %3 = %4; expected %5, two more than "
                                            "the total")
                                 .arg(upper)
                                 .arg(intake)
                                 .arg(lower)
                                 .arg(upper + intake + lower)
                                 .arg(total + 2));
    if (upper < 1 || intake < 1 || lower < 1)
        return refused(line, QStringLiteral("counts %1, %2, %3; expected each at least 1")
                                 .arg(upper)
                                 .arg(intake)
                                 .arg(lower));
    if (question.sheet.rows() < total)
        return refused(
            line,
            QStringLiteral("count %1, but %2 rows follow").arg(total).arg(question.sheet.rows()));
    const Sheet sheet = question.sheet.part(0, total);
    const Course course = course_of(sheet);
    if (!runs_down_and_up(course))
        return refused(line, QStringLiteral("x runs %1 over the %2 counted rows; expected down, up")
                                 .arg(described(course))
                                 .arg(total));
    Reading reading;
    reading.rank = counted_rank;
    reading.heads = 4;
    reading.outline = side_of(sheet, 0, total - 1, 1);
    const int nose = course.runs[0].last;
    const int start = upper - 1;
    const int end = upper + intake - 2;
    if (start < nose && sheet.at(start, 0) != sheet.at(nose, 0))
        reading.findings.append(
            {Gravity::note, sheet.line(start),
             QStringLiteral("the intake begins on the first side; no openings taken")});
    else
        reading.openings = Openings{100.0 * sheet.at(start, 0), 100.0 * sheet.at(end, 0)};
    if (question.sheet.rows() > total)
        reading.findings.append({Gravity::note, question.sheet.line(total),
                                 QStringLiteral("%1 rows behind the counted ones left out")
                                     .arg(question.sheet.rows() - total)});
    return reading;
}

std::optional<Reading> read_vsp(const Question& question) {
    const std::vector<int> counts = single_counts(question, 3);
    const Sheet& sheet = question.sheet;
    if (counts.empty() || counts[0] > 1 || sheet.columns() != 2 || question.course.runs.empty() ||
        question.head.lines.size() != 3)
        return std::nullopt;
    const Rows& table = sheet.table();
    const int line = table.lines[question.head.lines[1]].number;
    const std::vector<Run>& runs = question.course.runs;
    const bool symmetric = counts[0] == 1;
    Reading reading;
    reading.rank = counted_rank;
    reading.heads = 3;
    if (symmetric && runs.size() == 1 && sheet.rows() == counts[1]) {
        reading.outline = mirrored(side_of(sheet, 0, sheet.rows() - 1, runs[0].rising ? -1 : 1));
        reading.findings.append({Gravity::note, sheet.line(0),
                                 QStringLiteral("flag 1, symmetric: one side, mirrored")});
        return reading;
    }
    if (runs.size() != 2 || !runs[1].after_jump || runs[0].rows() != counts[1] ||
        runs[1].rows() != counts[2])
        return refused(line,
                       QStringLiteral("flag %1 and counts %2 and %3, but x runs %4 in %5 rows")
                           .arg(counts[0])
                           .arg(counts[1])
                           .arg(counts[2])
                           .arg(described(question.course))
                           .arg(sheet.rows()));
    reading.outline = joined(side_of(sheet, runs[0].first, runs[0].last, runs[0].rising ? -1 : 1),
                             side_of(sheet, runs[1].first, runs[1].last, runs[1].rising ? 1 : -1));
    return reading;
}

} // namespace tables
