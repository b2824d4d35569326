// SPDX-FileCopyrightText: Aerolith developers
// One line round the section: from the trailing edge, or from the nose.
#include "tables/layouts_p.h"

#include <cmath>

namespace tables {

namespace {

bool is_loop(const Course& course, bool rises_first) {
    return course.runs.size() == 2 && !course.runs[1].after_jump &&
           course.runs[0].rising == rises_first && course.runs[1].rising != rises_first;
}

// The loop by its only column of y. Of several columns, one is y if no other gives an outline.
template<typename Trace>
std::optional<Reading> read_by_y(const Sheet& sheet, Trace trace) {
    if (sheet.columns() == 2)
        return Reading{trace(1), {}, std::nullopt};
    std::optional<Reading> reading;
    for (int y = 1; y < sheet.columns(); ++y) {
        Outline outline = trace(y);
        if (is_refused(outline))
            continue;
        if (reading)
            return std::nullopt;
        reading = Reading{std::move(outline), {}, std::nullopt};
        reading->rank = leftover_rank;
        reading->findings.append(
            {Gravity::doubt, sheet.line(0),
             QStringLiteral("%1 columns; taken as coordinates: 1 and %2 of them")
                 .arg(sheet.columns())
                 .arg(y + 1)});
    }
    return reading;
}

// Where the trailing edge ends the first side and begins the second.
struct Edge {
    int end;
    int begin;
};

// Two rows at the trailing edge are its corners if they are closer together than their neighbours
// are; a single row ends both sides.
Edge edge_of(const Sheet& sheet, int rightmost) {
    const auto step = [&](int row) { return std::abs(sheet.at(row, 0) - sheet.at(row - 1, 0)); };
    const auto are_corners = [&](int row) {
        return row > 1 && row + 1 < sheet.rows() && step(row) <= 0.2 * step(row - 1) &&
               step(row) <= 0.2 * step(row + 1) && sheet.at(row, 1) != sheet.at(row - 1, 1);
    };
    if (are_corners(rightmost + 1))
        return {rightmost, rightmost + 1};
    if (are_corners(rightmost))
        return {rightmost - 1, rightmost};
    return {rightmost, rightmost};
}

} // namespace

std::optional<Reading> read_selig(const Question& question) {
    if (!is_loop(question.course, false))
        return std::nullopt;
    const Sheet& sheet = question.sheet;
    return read_by_y(sheet, [&](int y) { return side_of(sheet, 0, sheet.rows() - 1, 1, y); });
}

std::optional<Reading> read_loop(const Question& question) {
    if (!is_loop(question.course, true))
        return std::nullopt;
    const Sheet& sheet = question.sheet;
    const Edge edge = edge_of(sheet, question.course.runs[0].last);
    auto reading = read_by_y(sheet, [&](int y) {
        return joined(side_of(sheet, edge.begin, sheet.rows() - 1, 1, y),
                      side_of(sheet, 0, edge.end, 1, y));
    });
    if (reading)
        reading->findings.append(
            {Gravity::note, sheet.line(0),
             QStringLiteral("begins at the nose; reordered to begin at the trailing edge")});
    return reading;
}

} // namespace tables
