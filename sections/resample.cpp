// SPDX-FileCopyrightText: Aerolith developers
#include "sections/resample.h"

#include "sections/plane.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace sections {

namespace {

constexpr int most_points = 1000000;
constexpr int least_between = 3;
// Stops closer together than this fraction of the length count as one: the two ends of a sharpened
// point.
constexpr double same_stop = 1e-3;
constexpr double half_turn = 3.14159265358979323846;
// Radii of curvature, as fractions of half the length, between which the spacing follows the
// curvature. Beyond them it would follow the noise of a table.
constexpr double largest_radius = 1.0;
constexpr double smallest_radius = 1e-3;
constexpr int samples_of_piece = 16;

// Lengths along the curve where there must be a point.
std::vector<double> fixed_stops(const Curve& curve) {
    std::vector<double> stops = {0.0, curve.length_to(curve.extreme({-1.0, 0.0})), curve.length()};
    for (int i = 0; i + 1 < int(curve.pieces().size()); ++i) {
        if (curve.has_corner_after(i))
            stops.push_back(curve.length_to({i, 1.0}));
    }
    std::sort(stops.begin(), stops.end());
    const double nearest = same_stop * curve.length();
    std::vector<double> apart = {0.0};
    for (const double stop : stops) {
        if (stop - apart.back() > nearest && curve.length() - stop > nearest)
            apart.push_back(stop);
    }
    apart.push_back(curve.length());
    return apart;
}

// A measure along the curve that is divided equally among the steps, as pairs of length and sum.
class Measure {
public:
    Measure(const Curve& curve, Spacing spacing);

    double at(double length) const { return interpolated(lengths, sums, length); }
    double length_at(double sum) const { return interpolated(sums, lengths, sum); }

private:
    static double interpolated(const std::vector<double>& from, const std::vector<double>& to,
                               double value);

    std::vector<double> lengths = {0.0};
    std::vector<double> sums = {0.0};
};

Measure::Measure(const Curve& curve, Spacing spacing) {
    const double half = 0.5 * curve.length();
    for (const Piece& piece : curve.pieces()) {
        for (int i = 0; i < samples_of_piece; ++i) {
            const double from = double(i) / samples_of_piece;
            const double to = double(i + 1) / samples_of_piece;
            const double length = piece.length(from, to);
            if (!(length > 0.0))
                continue;
            const double bend = half * std::abs(piece.curvature(0.5 * (from + to)));
            const double density =
                std::sqrt(std::clamp(bend, 1.0 / largest_radius, 1.0 / smallest_radius));
            lengths.push_back(lengths.back() + length);
            sums.push_back(sums.back() +
                           (spacing == Spacing::curvature ? density * length : length));
        }
    }
}

double Measure::interpolated(const std::vector<double>& from, const std::vector<double>& to,
                             double value) {
    const auto after = std::upper_bound(from.begin() + 1, from.end() - 1, value);
    const std::size_t i = std::size_t(after - from.begin());
    const double share = (value - from[i - 1]) / (from[i] - from[i - 1]);
    return to[i - 1] + share * (to[i] - to[i - 1]);
}

// The number of steps of each stretch: at least one, the rest by the largest-remainder method.
std::vector<int> shared_steps(const std::vector<double>& weights, int steps) {
    const double whole = std::accumulate(weights.begin(), weights.end(), 0.0);
    const int spare = steps - int(weights.size());
    std::vector<int> counts;
    std::vector<std::pair<double, std::size_t>> remainders;
    int given = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const double share = spare * weights[i] / whole;
        counts.push_back(1 + int(share));
        given += int(share);
        remainders.emplace_back(share - std::floor(share), i);
    }
    std::stable_sort(remainders.begin(), remainders.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (std::size_t i = 0; given < spare; ++i, ++given)
        ++counts[remainders[i % remainders.size()].second];
    return counts;
}

} // namespace

double distance_of_chords(const Curve& curve, const std::vector<double>& stops) {
    double greatest = 0.0;
    for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
        const Place from = curve.place_at(stops[i]);
        const Place to = curve.place_at(stops[i + 1]);
        const QPointF start = curve.position(from);
        const QPointF across = turned_left(unit(curve.position(to) - start));
        const Curve stretch = curve.part(from, to);
        if (stretch.is_empty())
            continue;
        for (const QPointF side : {across, -across}) {
            const QPointF farthest = stretch.position(stretch.extreme(side));
            greatest = std::max(greatest, dot(farthest - start, side));
        }
    }
    return greatest;
}

Resampled resample(const Curve& curve, int count, Spacing spacing) {
    Resampled result;
    if (curve.is_empty() || !(curve.length() > 0.0)) {
        result.reason = QStringLiteral("no curve");
        return result;
    }
    const std::vector<double> fixed = fixed_stops(curve);
    const int least = int(fixed.size()) + least_between;
    if (count < least || count > most_points) {
        result.reason =
            QStringLiteral("%1 points, expected %2 to %3").arg(count).arg(least).arg(most_points);
        return result;
    }
    const Measure measure(curve, spacing);
    std::vector<double> weights;
    for (std::size_t i = 0; i + 1 < fixed.size(); ++i)
        weights.push_back(measure.at(fixed[i + 1]) - measure.at(fixed[i]));
    const std::vector<int> steps = shared_steps(weights, count - 1);

    std::vector<double> stops;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const double start = measure.at(fixed[i]);
        stops.push_back(fixed[i]);
        for (int k = 1; k < steps[i]; ++k) {
            const double even = double(k) / steps[i];
            const double share =
                spacing == Spacing::cosine ? 0.5 * (1.0 - std::cos(half_turn * even)) : even;
            stops.push_back(measure.length_at(start + share * weights[i]));
        }
    }
    stops.push_back(fixed.back());
    result.points.reserve(count);
    for (const double stop : stops)
        result.points << curve.position(curve.place_at(stop));
    result.off = distance_of_chords(curve, stops);
    return result;
}

} // namespace sections
