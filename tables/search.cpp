// SPDX-FileCopyrightText: Aerolith developers
// The sections of a file, and the choice of one.
#include "tables/search_p.h"

#include <algorithm>

namespace tables {

namespace {

bool contains_any(const QByteArray& words, std::initializer_list<const char*> names) {
    return std::any_of(names.begin(), names.end(),
                       [&](const char* name) { return words.contains(name); });
}

// The stretches of a group, separated by blanks, words or marks; with more than two columns also
// where the first column starts again.
std::vector<Sheet> parts_of(const Sheet& sheet) {
    constexpr std::size_t most_parts = 64;
    std::vector<int> starts;
    for (int row = 1; row < sheet.rows(); ++row) {
        if (sheet.breaks(row))
            starts.push_back(row);
    }
    if (starts.empty() && sheet.columns() > 2) {
        for (const Run& run : course_of(sheet).runs) {
            if (run.after_jump)
                starts.push_back(run.first);
        }
    }
    starts.push_back(sheet.rows());
    std::vector<Sheet> parts;
    int first = 0;
    for (const int start : starts) {
        if (start - first >= least_points && start - first < sheet.rows() &&
            parts.size() < most_parts)
            parts.push_back(sheet.part(first, start));
        first = start;
    }
    return parts;
}

void search_group(const Rows& rows, const std::vector<Group>& groups, std::size_t number,
                  const QString& layout, Search& result) {
    const auto add = [&](Success success) {
        QByteArray words = words_above(rows, success.first);
        result.found.push_back({std::move(success), std::move(words)});
    };
    const Group& group = groups[number];
    const Sheet sheet(rows, group.first, group.last, group.columns);
    const Head head = head_of(rows, groups, number);
    Attempt whole = attempt(sheet, nullptr, head, layout, true);
    if (whole.success) {
        add(std::move(*whole.success));
        return;
    }
    const std::size_t before = result.found.size();
    bool all = true;
    for (const Sheet& part : parts_of(sheet)) {
        Attempt one = attempt(part, part.columns() == 2 ? &sheet : nullptr, head, layout, false);
        if (one.success)
            add(std::move(*one.success));
        all = all && one.success;
    }
    if (result.found.size() > before && all)
        return;
    result.unread.push_back(number);
    result.errors += whole.errors;
    if (result.candidates.isEmpty())
        result.candidates = whole.candidates;
}

} // namespace

Search search(const Rows& rows, const std::vector<Group>& groups, const QString& layout) {
    Search result;
    for (std::size_t group = 0; group < groups.size(); ++group)
        search_group(rows, groups, group, layout, result);
    return result;
}

void choose_table(std::vector<Found>& found, QList<Finding>& findings) {
    if (found.size() < 2)
        return;
    // A rule that would remove all sections removes none.
    const auto remove = [&](auto unwanted) {
        const auto end = std::remove_if(found.begin(), found.end(), unwanted);
        if (end != found.begin())
            found.erase(end, found.end());
    };
    remove([](const Found& one) { return is_mean_line(one.words); });
    const auto is_combined = [](const Found& one) { return one.words.contains("combined"); };
    if (std::any_of(found.begin(), found.end(), is_combined))
        remove([&](const Found& one) { return !is_combined(one); });
    const auto is_first = [&](const Found& one) {
        return same_section(one.success.reading.outline, found.front().success.reading.outline);
    };
    if (std::all_of(found.begin(), found.end(), is_first))
        found.erase(found.begin() + 1, found.end());
    if (found.size() == 1)
        findings.append({Gravity::note, found.front().success.line,
                         QStringLiteral("several tables; this one was read")});
}

bool is_mean_line(const QByteArray& words) {
    return contains_any(words, {"mean line", "meanline", "camber line", "camberline"}) &&
           !contains_any(words, {"symmetric", "upper", "lower", "combined"});
}

QByteArray other_quantity(const QByteArray& words) {
    QByteArray names = words.trimmed().split('\n').last();
    for (const char c : {',', ';', '\t', '#', '!', '%', '"'})
        names.replace(c, ' ');
    names = names.simplified();
    // Prose may contain these words too.
    if (!names.startsWith('x') && !names.startsWith("alpha") && !names.startsWith("alfa"))
        return QByteArray();
    QByteArray quantity;
    for (const QByteArray& name : names.split(' ')) {
        if (name.startsWith('y') || name.startsWith('z') || name.contains("upper"))
            return QByteArray();
        for (const char* other :
             {"cp", "-cp", "cpi", "cpv", "cl", "cd", "cm", "cf", "alpha", "alfa", "mach", "v/v",
              "ue/vinf", "v/vinf", "u/uinf", "twist", "chord", "camber", "thickness"}) {
            if (name == other)
                quantity = name;
        }
    }
    return quantity;
}

bool is_accident(const Rows& rows, const std::vector<Found>& found) {
    constexpr std::size_t most_others = 4; // for each row of the sections
    std::size_t within = 0;
    std::size_t all = 0;
    for (const Found& one : found)
        within += one.success.last - one.success.first + 1;
    for (std::size_t line = 0; line < rows.lines.size(); ++line)
        all += rows.is_numbers(line) && rows.lines[line].count > 1 ? 1 : 0;
    return found.front().success.reading.rank < counted_rank && all > (most_others + 1) * within;
}

} // namespace tables
