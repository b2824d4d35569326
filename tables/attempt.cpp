// SPDX-FileCopyrightText: Aerolith developers
// One group of rows, tried with every layout.
#include "tables/attempt_p.h"

#include "tables/columns_p.h"
#include "tables/strays_p.h"

#include <algorithm>

namespace tables {

namespace {

bool has_error(const QList<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.gravity == Gravity::error; });
}

void report_slips(const Choice& choice, const Course& course, QList<Finding>& findings) {
    constexpr std::size_t most_told = 8;
    for (std::size_t i = 0; i < std::min(course.slips.size(), most_told); ++i) {
        const int row = course.slips[i];
        findings.append({Gravity::doubt, choice.sheet.line(row),
                         QStringLiteral("x = %1 between %2 and %3; expected a number between them")
                             .arg(choice.sheet.at(row, 0))
                             .arg(choice.sheet.at(row - 1, 0))
                             .arg(choice.sheet.at(row + 1, 0))});
    }
}

Finding no_layout(const Sheet& sheet, const Course& course) {
    const int first = sheet.line(0);
    if (sheet.rows() < least_points)
        return {Gravity::error, first,
                QStringLiteral("%1 rows of numbers; expected a section of at least %2 points")
                    .arg(sheet.rows())
                    .arg(least_points)};
    const int line =
        course.runs.size() > 1
            ? sheet.line(course.runs[std::min<std::size_t>(course.runs.size(), 3) - 1].first)
            : first;
    return {Gravity::error, line,
            QStringLiteral("%1 columns, x runs %2; expected one outline, two halves, one half, or "
                           "x with both sides")
                .arg(sheet.columns())
                .arg(course.runs.empty() ? QStringLiteral("nowhere") : described(course))};
}

// Keeps the best reading so far, and a second one that fits equally well.
class Contest {
public:
    void add(const Layout& layout, Success entry) {
        const int rank = entry.reading.rank;
        if (excludes(rank))
            return;
        if (best && rank == best->reading.rank) {
            if (entry.reading.outline.points != best->reading.outline.points)
                rival = &layout;
            return;
        }
        best = std::move(entry);
        winner = &layout;
        rival = nullptr;
    }

    Attempt result() {
        Attempt attempt;
        if (rival) {
            const auto name = [](const Layout* layout) {
                return QString::fromLatin1(layout->name);
            };
            attempt.candidates = {name(winner), name(rival)};
            attempt.errors.append(
                {Gravity::error, best->line,
                 QStringLiteral("reads as %1 (%2) and as %3 (%4); expected one of them, chosen by "
                                "--layout")
                     .arg(name(winner), QString::fromLatin1(winner->shape), name(rival),
                          QString::fromLatin1(rival->shape))});
        } else if (has_error(best->reading.findings)) {
            for (const Finding& finding : std::as_const(best->reading.findings)) {
                if (finding.gravity == Gravity::error)
                    attempt.errors.append(finding);
            }
        } else {
            attempt.success = std::move(best);
        }
        return attempt;
    }

    bool is_empty() const { return !best; }
    bool excludes(int rank) const { return best && rank < best->reading.rank; }

private:
    std::optional<Success> best;
    const Layout* winner = nullptr;
    const Layout* rival = nullptr;
};

} // namespace

Attempt attempt(const Sheet& rows, const Sheet* scope, const Head& head, const QString& layout,
                bool whole) {
    Contest contest;
    Attempt failed;
    for (Choice& choice : column_choices(rows)) {
        if (choice.sheet.columns() < 4)
            remove_incomplete_rows(choice.sheet, 0, choice.findings);
        if (choice.sheet.columns() == 2)
            remove_incomplete_rows(choice.sheet, 1, choice.findings);
        if (choice.sheet.rows() < 2)
            continue;
        Head counts = head;
        take_counts(choice.sheet, counts);
        remove_strays(choice.sheet, choice.findings);
        if (const auto fault = find_unit(choice, scope ? *scope : choice.sheet)) {
            failed.errors.append(*fault);
            continue;
        }
        const Course course = course_of(choice.sheet);
        const Question question = {choice.sheet, course, counts};
        QList<Finding> faults;
        bool any = false;
        for (const Layout& candidate : layouts()) {
            if (!layout.isEmpty() && layout != QLatin1String(candidate.name))
                continue;
            if (candidate.read == read_half &&
                (choice.sheet.columns() == 2 ? !whole : contest.excludes(leftover_rank)))
                continue;
            std::optional<Reading> reading = candidate.read(question);
            if (!reading)
                continue;
            any = true;
            if (!has_error(reading->findings)) {
                const std::optional<Finding> fault = fault_of(reading->outline);
                if (fault && fault->gravity == Gravity::error) {
                    faults.append(*fault);
                    continue;
                }
                if (fault)
                    reading->findings.append(*fault);
            }
            reading->findings = choice.findings + reading->findings;
            report_slips(choice, course, reading->findings);
            Success success = {QString::fromLatin1(candidate.name),
                               std::move(*reading),
                               choice.sheet.line(0),
                               rows.place(0),
                               rows.place(rows.rows() - 1),
                               counts.lines};
            contest.add(candidate, std::move(success));
        }
        if (!any)
            failed.errors.append(no_layout(choice.sheet, course));
        failed.errors += faults;
    }
    if (!contest.is_empty())
        return contest.result();
    if (failed.errors.isEmpty())
        failed.errors.append({Gravity::error, rows.rows() > 0 ? rows.line(0) : 0,
                              QStringLiteral("rows without two numbers; expected x and y")});
    failed.errors = {failed.errors.first()};
    return failed;
}

} // namespace tables
