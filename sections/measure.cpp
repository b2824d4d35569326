// SPDX-FileCopyrightText: Aerolith developers
#include "sections/measure.h"

#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

constexpr double degree = 3.14159265358979323846 / 180.0;
constexpr int scanned_stations = 256;
constexpr double no_camber = 1e-7;
constexpr std::size_t refined_peaks = 6;
constexpr double nearly_one_size = 1e-4;

const QPointF upwards(0.0, 1.0);

// The upper height at x minus the lower one (-1: the thickness) or plus it (1: twice the camber).
std::optional<double> height_at(const Sides& sides, double x, double sign_of_lower) {
    const std::optional<Place> upper = cut_at(sides.upper, x, 1.0);
    const std::optional<Place> lower = cut_at(sides.lower, x, -1.0);
    if (!upper || !lower)
        return std::nullopt;
    return sides.upper.position(*upper).y() + sign_of_lower * sides.lower.position(*lower).y();
}

double scanned_station(int i) {
    return 0.5 * (1.0 - std::cos(180.0 * degree * i / scanned_stations));
}

// Golden-section search between the neighbours of a scanned station.
template<typename Function>
Peak refined(const Function& f, int scanned, double value) {
    Peak peak = {value, scanned_station(scanned)};
    double low = scanned_station(std::max(scanned - 1, 0));
    double high = scanned_station(std::min(scanned + 1, scanned_stations));
    const double golden = 0.5 * (std::sqrt(5.0) - 1.0);
    for (int step = 0; step < 60; ++step) {
        const double inner_low = high - golden * (high - low);
        const double inner_high = low + golden * (high - low);
        const std::optional<double> at_low = f(inner_low);
        const std::optional<double> at_high = f(inner_high);
        if (!at_low || !at_high)
            break;
        if (*at_low > peak.size)
            peak = {*at_low, inner_low};
        if (*at_high > peak.size)
            peak = {*at_high, inner_high};
        (*at_low < *at_high ? low : high) = *at_low < *at_high ? inner_low : inner_high;
    }
    return peak;
}

// The station of the greatest f over [0, 1]: the best of a cosine-spaced scan, refined. The curve
// through a rough table has several peaks of nearly the same size, so the next best are refined
// too.
template<typename Function>
std::optional<Peak> peak_of(const Function& f) {
    std::vector<std::pair<double, int>> found;
    for (int i = 0; i <= scanned_stations; ++i) {
        if (const std::optional<double> value = f(scanned_station(i)))
            found.emplace_back(*value, i);
    }
    if (found.empty())
        return std::nullopt;
    std::vector<std::pair<double, int>> peaks;
    for (std::size_t i = 0; i < found.size(); ++i) {
        const bool falls_before = i == 0 || found[i - 1].first <= found[i].first;
        const bool falls_behind = i + 1 == found.size() || found[i + 1].first <= found[i].first;
        if (falls_before && falls_behind)
            peaks.push_back(found[i]);
    }
    std::stable_sort(peaks.begin(), peaks.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    std::optional<Peak> best;
    for (std::size_t i = 0; i < std::min(peaks.size(), refined_peaks); ++i) {
        if (best && peaks[i].first < peaks[0].first - nearly_one_size)
            break;
        const Peak peak = refined(f, peaks[i].second, peaks[i].first);
        if (!best || peak.size > best->size)
            best = peak;
    }
    return best;
}

std::optional<Peak> thickness_of(const Sides& sides) {
    return peak_of([&](double x) { return height_at(sides, x, -1.0); });
}

// Camber relative to the height zero: the extreme of greater magnitude, with its sign.
std::optional<Peak> camber_of(const Sides& sides, double zero) {
    const auto signed_peak = [&](double sign) {
        return peak_of([&](double x) -> std::optional<double> {
            const std::optional<double> sum = height_at(sides, x, 1.0);
            return sum ? std::optional<double>(sign * (0.5 * *sum - zero)) : std::nullopt;
        });
    };
    const std::optional<Peak> up = signed_peak(1.0);
    const std::optional<Peak> down = signed_peak(-1.0);
    if (!up || !down)
        return std::nullopt;
    if (up->size < no_camber && down->size < no_camber)
        return Peak{};
    return down->size > up->size ? Peak{-down->size, down->station} : *up;
}

class Measuring {
public:
    Measuring(const Section& measured, Measures& results);

    void thickness_and_camber();
    void nose();
    void trailing_edge();
    void area();
    void mouth(const tables::Openings& openings);
    void station(double x);

private:
    void note(const QString& text) { m.notes << text; }
    double mean_curvature(double from, double to) const;

    const Section& section;
    const Curve& curve;
    Measures& m;
    Place leading;  // where the sides of the chord line meet
    Place leftmost; // where the sides of vertical cuts meet
    Sides upright;  // of vertical cuts
    Sides across;   // the same in the frame of the chord line, whose length is 1
};

Measuring::Measuring(const Section& measured, Measures& results)
    : section(measured), curve(measured.curve), m(results), leading(leading_edge_of(curve)),
      leftmost(curve.extreme({-1.0, 0.0})), upright(sides_at(curve, leftmost)) {
    m.leading_edge = curve.position(leading);
    m.trailing_edge = trailing_edge_of(curve);
    const QPointF line = m.trailing_edge - m.leading_edge;
    m.chord = norm(line);
    m.chord_angle = turning({1.0, 0.0}, line) / degree;
    // Complex division by the chord line.
    const double squared = dot(line, line);
    const QPointF rotation(line.x() / squared, -line.y() / squared);
    const QPointF nose = m.leading_edge;
    const QPointF shift(-(nose.x() * rotation.x() - nose.y() * rotation.y()),
                        -(nose.x() * rotation.y() + nose.y() * rotation.x()));
    across = sides_at(curve.mapped(rotation, shift), leading);

    m.length = curve.length();
    m.upper_length = curve.length_to(leading);
    m.lower_length = m.length - m.upper_length;
    m.highest = curve.position(curve.extreme(upwards));
    m.lowest = curve.position(curve.extreme(-upwards));
    const auto [low, high] =
        std::minmax_element(section.points.begin(), section.points.end(),
                            [](QPointF a, QPointF b) { return a.y() < b.y(); });
    m.height = high->y() - low->y();
    m.trailing_edge_gap = norm(curve.position(curve.end()) - curve.position(curve.begin()));
}

void Measuring::thickness_and_camber() {
    m.thickness = thickness_of(across);
    m.camber = camber_of(across, 0.0);
    m.thickness_upright = thickness_of(upright);
    m.camber_upright = camber_of(upright, section.zero_line);
}

double Measuring::mean_curvature(double from, double to) const {
    const Curve stretch = curve.part(curve.place_at(from), curve.place_at(to));
    double turned = 0.0;
    const std::vector<Piece>& pieces = stretch.pieces();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        turned += turning(pieces[i].tangent(0.0), pieces[i].tangent(1.0));
        if (i + 1 < pieces.size())
            turned += turning(pieces[i].tangent(1.0), pieces[i + 1].tangent(0.0));
    }
    return turned / (to - from);
}

void Measuring::nose() {
    double whole = 0.0;
    double upper = 0.0;
    double lower = 0.0;
    if (section.is_spline) {
        const double at = m.upper_length;
        const double reach = nose_stretch * m.chord;
        if (at < reach || m.lower_length < reach) {
            note(QStringLiteral("no nose radius: the leading edge is an end of the curve"));
            return;
        }
        whole = mean_curvature(at - reach, at + reach);
        upper = mean_curvature(at - reach, at);
        lower = mean_curvature(at, at + reach);
    } else {
        const bool at_end = leading.u == 1.0;
        const bool at_start = leading.u == 0.0;
        if ((at_end && curve.has_corner_after(leading.piece)) ||
            (at_start && curve.has_corner_after(leading.piece - 1))) {
            note(QStringLiteral("no nose radius: the leading edge is a corner"));
            return;
        }
        whole = upper = lower = curve.curvature(leading);
    }
    if (!(whole > 0.0 && upper > 0.0 && lower > 0.0)) {
        note(QStringLiteral("no nose radius: the leading edge is not round"));
        return;
    }
    Nose nose = {1.0 / whole, 1.0 / upper, 1.0 / lower, std::nullopt};
    const double thickness = m.thickness ? m.thickness->size : 0.0;
    // The square of a thickness of 1e-200 is 0.
    const double over_square = nose.radius / m.chord / (thickness * thickness);
    if (std::isfinite(over_square))
        nose.over_thickness_squared = over_square;
    m.nose = nose;
}

void Measuring::trailing_edge() {
    const std::optional<Place> upper = cut_at(across.upper, 1.0 - tail_share, 1.0);
    const std::optional<Place> lower = cut_at(across.lower, 1.0 - tail_share, -1.0);
    if (!upper || !lower)
        return;
    const QPointF along_upper =
        across.upper.position(across.upper.begin()) - across.upper.position(*upper);
    const QPointF along_lower =
        across.lower.position(across.lower.begin()) - across.lower.position(*lower);
    m.trailing_edge_angle = turning(along_upper, along_lower) / degree;
}

void Measuring::area() {
    m.area = curve.signed_area();
    m.centroid = curve.centroid();
}

void Measuring::mouth(const tables::Openings& openings) {
    const double first = openings.start / 100.0;
    const double second = openings.end / 100.0;
    const auto openings_text = [&] {
        return QStringLiteral("openings %1 and %2 percent").arg(openings.start).arg(openings.end);
    };
    if (!(first >= 0.0 && second <= 1.0 && first < second)) {
        note(QStringLiteral("no mouth: ") + openings_text());
        return;
    }
    // From the nose on, where the first opening is 0.
    const std::optional<Place> start =
        first > 0.0 ? cut_at(upright.lower, first, -1.0) : upright.lower.end();
    const std::optional<Place> end = cut_at(upright.lower, second, -1.0);
    if (!start || !end) {
        note(QStringLiteral("no mouth: the lower side is not met by the ") + openings_text());
        return;
    }
    Mouth mouth;
    mouth.start = upright.lower.position(*start);
    mouth.end = upright.lower.position(*end);
    const QPointF line = mouth.end - mouth.start;
    mouth.straight = norm(line);
    mouth.angle = turning(m.trailing_edge - m.leading_edge, line) / degree;
    // Lengths on the lower side count from the trailing edge.
    const double to_start = upright.lower.length_to(*start);
    mouth.panel_behind = upright.lower.length_to(*end);
    mouth.along = to_start - mouth.panel_behind;
    mouth.panel_over_top = m.length - to_start;
    m.mouth = mouth;
}

void Measuring::station(double x) {
    const std::optional<Place> upper = cut_at(upright.upper, x, 1.0);
    const std::optional<Place> lower = cut_at(upright.lower, x, -1.0);
    if (!upper || !lower) {
        note(QStringLiteral("no station %1: a vertical cut does not meet both sides")
                 .arg(100.0 * x));
        return;
    }
    Station station;
    station.x = x;
    station.upper = upright.upper.position(*upper).y();
    station.lower = upright.lower.position(*lower).y();
    station.thickness = station.upper - station.lower;
    station.upper_from_trailing_edge = upright.upper.length_to(*upper);
    station.lower_from_trailing_edge = upright.lower.length_to(*lower);
    station.upper_from_nose = std::abs(m.upper_length - station.upper_from_trailing_edge);
    station.lower_from_nose = std::abs(m.lower_length - station.lower_from_trailing_edge);
    m.stations.push_back(station);
}

} // namespace

Measures measure(const Section& section, const std::vector<double>& stations) {
    Measures m;
    Measuring measuring(section, m);
    if (section.equal_sides)
        m.notes << QStringLiteral("both sides have the same mean height: the first one counts as "
                                  "the upper one");
    switch (section.kind) {
    case tables::Kind::section:
        measuring.thickness_and_camber();
        break;
    case tables::Kind::single_skin:
        m.notes << QStringLiteral("a single-skin rib: no thickness, no camber");
        break;
    case tables::Kind::flat:
        m.notes << QStringLiteral("a flat rib: no thickness, no camber, no nose, no area");
        break;
    }
    if (section.kind != tables::Kind::flat) {
        measuring.nose();
        measuring.trailing_edge();
        if (!section.equal_sides)
            measuring.area();
    }
    if (section.openings)
        measuring.mouth(*section.openings);
    for (const double x : stations)
        measuring.station(x);
    return m;
}

} // namespace sections
