// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/deviation.h"

#include "document/frames.h"
#include "fitting/outline.h"
#include "sections/curve.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

// Index of the point with the least x, where the sides meet.
int nose_of(const QPolygonF& points) {
    const auto ahead = [](QPointF a, QPointF b) { return a.x() < b.x(); };
    return int(std::min_element(points.begin(), points.end(), ahead) - points.begin());
}

double mean_height(QPolygonF::const_iterator from, QPolygonF::const_iterator to) {
    double sum = 0.0;
    for (auto point = from; point != to; ++point)
        sum += point->y();
    return sum / std::max(1.0, double(to - from));
}

} // namespace

std::optional<Deviation> deviation(const QPolygonF& table, const SplineFoil& spline,
                                   double tolerance) {
    const std::optional<SplineFoil> settled = in_chord_units(spline);
    if (!settled || !prepare(table).reason.isEmpty())
        return std::nullopt;
    const sections::CurveResult found = sections::spline_curve(*settled);
    if (found.curve.is_empty())
        return std::nullopt;
    const QPolygonF points = in_window_frame(table);
    const int nose = nose_of(points);
    const bool upper_first = mean_height(points.begin(), points.begin() + nose + 1) >=
                             mean_height(points.begin() + nose, points.end());
    Deviation result;
    result.points = int(points.size());
    double squares = 0.0;
    for (int i = 0; i < points.size(); ++i) {
        const double distance = found.curve.nearest(points[i]).distance;
        const bool at_nose = points[i].x() - points[nose].x() <= nose_share;
        squares += distance * distance;
        if (distance > result.largest) {
            result.largest = distance;
            result.largest_at = points[i];
        }
        double& of_side = (i <= nose) == upper_first ? result.largest_upper : result.largest_lower;
        of_side = std::max(of_side, distance);
        const double relative = at_nose ? distance : 0.5 * distance;
        result.largest_over_tolerance = std::max(result.largest_over_tolerance, relative);
        result.outside += relative > tolerance;
    }
    result.root_mean_square = std::sqrt(squares / result.points);
    constexpr int places = 8;
    const sections::CurveResult between = sections::table_curve(points);
    for (const sections::Piece& piece : between.curve.pieces()) {
        for (int k = 1; k < places; ++k) {
            const double distance =
                found.curve.nearest(piece.position(k / double(places))).distance;
            result.largest_between = std::max(result.largest_between, distance);
        }
    }
    return result;
}

} // namespace fitting
