// SPDX-FileCopyrightText: Aerolith developers
#include "sections/lep_points.h"

#include "sections/curve.h"
#include "tables/profile.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sections {

namespace {

using tables::Gravity;
using tables::Profile;
using tables::Table;

// A piece of the outline between two rows, and the number of edges it will get.
struct Stretch {
    qsizetype first;
    qsizetype last;
    int edges;

    bool fits() const { return (last > first) == (edges > 0); }
};

// The rows before and after the nose share the edges of the upper side in the ratio of the table.
std::array<Stretch, 4> stretches(const Profile& profile, const LepPoints& counts) {
    const qsizetype end = profile.table.points.size() - 1;
    int before_nose = counts.upper - 1;
    if (profile.begin > profile.nose && counts.upper > 2) {
        const double share = double(profile.nose) / double(profile.begin);
        before_nose = std::clamp(int(std::lround(before_nose * share)), 1, counts.upper - 2);
    }
    return {Stretch{0, profile.nose, before_nose},
            Stretch{profile.nose, profile.begin, counts.upper - 1 - before_nose},
            Stretch{profile.begin, profile.end, counts.intake - 1},
            Stretch{profile.end, end, counts.lower - 1}};
}

Table refused(Table table, const QString& text) {
    table.findings.append({Gravity::error, 0, text});
    return table;
}

// A repeated row has no edge.
Table without_repeats(Table table) {
    const QPolygonF all = table.points;
    const std::vector<int> lines = table.lines;
    table.points.clear();
    table.lines.clear();
    for (qsizetype i = 0; i < all.size(); ++i) {
        if (i > 0 && all[i] == all[i - 1])
            continue;
        table.points.append(all[i]);
        table.lines.push_back(std::size_t(i) < lines.size() ? lines[std::size_t(i)] : 0);
    }
    return table;
}

} // namespace

Table with_lep_points(const Table& table, const LepPoints& counts, int decimals) {
    constexpr int most_rows = 500;
    const QString wanted =
        QStringLiteral("%1,%2,%3 rows").arg(counts.upper).arg(counts.intake).arg(counts.lower);
    for (const int count : {counts.upper, counts.intake, counts.lower}) {
        if (count < 1 || count > most_rows)
            return refused(table, wanted + QStringLiteral("; expected 1 to %1").arg(most_rows));
    }
    if (counts.upper + counts.intake + counts.lower - 2 > most_rows)
        return refused(table, wanted + QStringLiteral("; a profile has at most %1").arg(most_rows));
    const Profile profile = tables::profile_of(without_repeats(table), decimals);
    if (!profile.ok()) {
        Table result = table;
        result.findings += profile.findings;
        return result;
    }
    const std::array<Stretch, 4> all = stretches(profile, counts);
    if (!std::all_of(all.begin(), all.end(),
                     [](const Stretch& stretch) { return stretch.fits(); })) {
        return refused(table, wanted + QStringLiteral("; expected enough for the upper side, the "
                                                      "nose, the intake and the lower side"));
    }
    const CurveResult through = table_curve(profile.table.points);
    if (through.curve.pieces().size() + 1 != std::size_t(profile.table.points.size()))
        return refused(table, QStringLiteral("no curve through the points: ") + through.reason);

    Table result = profile.table;
    result.findings = table.findings + profile.findings;
    result.points.clear();
    result.lines.clear();
    const auto add = [&](qsizetype row, double u) {
        const QPolygonF& rows = profile.table.points;
        result.points << (u == 0.0 ? rows[row] : through.curve.position({int(row), u}));
        result.lines.push_back(profile.table.lines[std::size_t(row)]);
    };
    for (const Stretch& stretch : all) {
        for (int i = 0; i < stretch.edges; ++i) {
            const double row = double(stretch.first) +
                               double(i) * double(stretch.last - stretch.first) / stretch.edges;
            const double whole = std::floor(row);
            add(qsizetype(whole), row - whole);
        }
    }
    add(profile.table.points.size() - 1, 0.0);
    return result;
}

} // namespace sections
