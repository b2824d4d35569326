// SPDX-FileCopyrightText: Aerolith developers
#include "cli/profile_points.h"

#include "sections/resample.h"
#include "tables/arrange.h"

#include <optional>

namespace cli {

namespace {

using sections::Curve;
using sections::Place;

bool is_behind(Place a, Place b) {
    return a.piece != b.piece ? a.piece > b.piece : a.u > b.u;
}

// Where the vertical cut at an opening meets the side behind the nose.
std::optional<Place> place_of(const Curve& curve, Place nose, double x) {
    if (x <= curve.position(nose).x())
        return nose;
    for (const Place place : curve.crossings(QPointF(1.0, 0.0), x)) {
        if (is_behind(place, nose))
            return place;
    }
    return std::nullopt;
}

} // namespace

CountedProfile with_counts(const tables::Table& table, const Curve& curve,
                           const std::vector<int>& counts) {
    CountedProfile result;
    const auto refused = [&](const QString& reason) {
        result.reason = reason;
        return result;
    };
    if (!table.openings)
        return refused(QStringLiteral("no openings to count the points by; --openings gives them"));
    const Curve upper_first = tables::is_upper_first(table.points) ? curve : curve.reversed();
    const Place nose = upper_first.extreme(QPointF(-1.0, 0.0));
    const tables::Extent extent(table.points);
    const std::optional<Place> begin =
        place_of(upper_first, nose, extent.x_at(table.openings->start));
    const std::optional<Place> end = place_of(upper_first, nose, extent.x_at(table.openings->end));
    if (!begin || !end || is_behind(*begin, *end))
        return refused(QStringLiteral("the openings are not on the lower side"));
    const bool is_closed = !is_behind(*end, *begin);
    if (is_closed != (counts[1] == 1))
        return refused(is_closed ? QStringLiteral("both openings are one point; expected 1 as the "
                                                  "second count")
                                 : QStringLiteral("the openings are two points; expected 2 or more "
                                                  "as the second count"));

    const Place stops[] = {upper_first.begin(), *begin, *end, upper_first.end()};
    result.table = table;
    result.table.lines.clear();
    result.table.points.clear();
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (i == 1 && is_closed)
            continue;
        const sections::Resampled part = sections::resample(
            upper_first.part(stops[i], stops[i + 1]), counts[i], sections::Spacing::curvature);
        if (!part.reason.isEmpty())
            return refused(part.reason);
        // The stretches share their ends.
        if (!result.table.points.isEmpty())
            result.table.points.removeLast();
        result.table.points += part.points;
    }
    // The width of the new points is not quite that of the old ones.
    const tables::Extent now(result.table.points);
    result.table.openings = tables::Openings{now.percent_at(upper_first.position(*begin).x()),
                                             now.percent_at(upper_first.position(*end).x())};
    return result;
}

} // namespace cli
