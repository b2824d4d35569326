// SPDX-FileCopyrightText: Aerolith developers
#include "sections/compare.h"

#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

constexpr double step_length = 0.002;
constexpr double samples_of_piece = 8.0;
constexpr double samples_at_most = 1000.0;
constexpr double beyond_the_nose = 0.05;
constexpr double degree = 3.14159265358979323846 / 180.0;

std::size_t range_of(double x) {
    const auto after = std::upper_bound(range_ends.begin() + 1, range_ends.end() - 1, x);
    return std::size_t(after - range_ends.begin()) - 1;
}

struct ChordLine {
    Place leading;
    QPointF nose;
    QPointF line; // from the leading edge to the middle of the trailing edge

    explicit ChordLine(const Curve& curve)
        : leading(leading_edge_of(curve)), nose(curve.position(leading)),
          line(trailing_edge_of(curve) - nose) {}
};

// The sides of a curve, from the trailing edge on; the targets extend round the nose.
struct Halves {
    Sides sides;
    Sides targets;

    explicit Halves(const Curve& curve) {
        const Place leading = leading_edge_of(curve);
        const double at = curve.length_to(leading);
        sides = sides_at(curve, leading);
        targets = {curve.part(curve.begin(), curve.place_at(at + beyond_the_nose)),
                   curve.part(curve.place_at(at - beyond_the_nose), curve.end()).reversed()};
    }
};

// Distances of one side of a section from the same side of another section.
class OneSide {
public:
    // outside is 1 where the left of the measured side is outside its section, otherwise -1.
    // Distances are then positive where the target is outside that section; the negated value
    // reverses their sign.
    OneSide(const Curve& measured, const Curve& aimed_at, double outside)
        : side(measured), target(aimed_at), sign(outside) {}

    SideDeviation deviation() const;

private:
    double distance(Place place) const { return target.nearest(side.position(place)).distance; }
    double signed_distance(Place place) const;
    void refine(Deviation& best, Place around, double step) const;

    const Curve& side;
    const Curve& target;
    double sign;
};

double OneSide::signed_distance(Place place) const {
    const QPointF at = side.position(place);
    const Foot foot = target.nearest(at);
    const double left = cross(side.tangent(place), foot.point - at);
    return left * sign < 0.0 ? -foot.distance : foot.distance;
}

// Golden-section search around the best sample of a piece.
void OneSide::refine(Deviation& best, Place around, double step) const {
    double low = std::max(around.u - step, 0.0);
    double high = std::min(around.u + step, 1.0);
    const std::size_t range = range_of(side.position(around).x());
    double greatest = distance(around);
    const double golden = 0.5 * (std::sqrt(5.0) - 1.0);
    for (int i = 0; i < 40; ++i) {
        const Place inner_low = {around.piece, high - golden * (high - low)};
        const Place inner_high = {around.piece, low + golden * (high - low)};
        const double at_low = distance(inner_low);
        const double at_high = distance(inner_high);
        const bool rises = at_low < at_high;
        const double greater = rises ? at_high : at_low;
        const Place better = rises ? inner_high : inner_low;
        if (greater > greatest && range_of(side.position(better).x()) == range) {
            greatest = greater;
            around = better;
        }
        (rises ? low : high) = rises ? inner_low.u : inner_high.u;
    }
    best.greatest = signed_distance(around);
    best.station = side.position(around).x();
}

SideDeviation OneSide::deviation() const {
    SideDeviation result;
    struct Best {
        Place place;
        double distance = -1.0;
        double step = 0.0;
    };
    std::array<Best, range_ends.size() - 1> best;
    for (int i = 0; i < int(side.pieces().size()); ++i) {
        const Piece& piece = side.pieces()[std::size_t(i)];
        const double wanted = std::ceil(piece.length() / step_length);
        const int count = int(std::clamp(wanted, samples_of_piece, samples_at_most));
        const double step = 1.0 / count;
        // The ends of each step serve the greatest distance, its middle the integral.
        for (int k = 0; k <= 2 * count; ++k) {
            const Place place = {i, 0.5 * k * step};
            const double off = distance(place);
            const std::size_t range = range_of(side.position(place).x());
            if (off > best[range].distance)
                best[range] = {place, off, step};
            if (k % 2 == 1) {
                const double ds = piece.length(place.u - 0.5 * step, place.u + 0.5 * step);
                // A piece that is a single point has no usable length.
                if (!(ds > 0.0))
                    continue;
                result.ranges[range].squares += off * off * ds;
                result.ranges[range].length += ds;
            }
        }
    }
    for (std::size_t range = 0; range < best.size(); ++range) {
        Deviation& each = result.ranges[range];
        if (best[range].distance < 0.0)
            continue;
        refine(each, best[range].place, best[range].step);
        if (std::abs(each.greatest) >= std::abs(result.whole.greatest)) {
            result.whole.greatest = each.greatest;
            result.whole.station = each.station;
        }
        result.whole.squares += each.squares;
        result.whole.length += each.length;
    }
    return result;
}

// Outlines run counter-clockwise, so outside is to the right; the lower side was reversed.
OneWay one_way(const Halves& measured, const Halves& target, double from_reference) {
    return {OneSide(measured.sides.upper, target.targets.upper, -from_reference).deviation(),
            OneSide(measured.sides.lower, target.targets.lower, from_reference).deviation()};
}

} // namespace

Deviation OneWay::greatest() const {
    const bool below = std::abs(lower.whole.greatest) > std::abs(upper.whole.greatest);
    return below ? lower.whole : upper.whole;
}

double Comparison::greatest() const {
    return std::max(std::abs(to_reference.greatest().greatest),
                    std::abs(from_reference.greatest().greatest));
}

Comparison compare(const Section& reference, const Section& other, bool align) {
    Comparison result;
    Curve moved = other.curve;
    if (align) {
        const ChordLine to(reference.curve);
        const ChordLine from(other.curve);
        const double squared = dot(from.line, from.line);
        const QPointF rotation(dot(from.line, to.line) / squared,
                               cross(from.line, to.line) / squared);
        const Curve turned = other.curve.mapped(rotation, QPointF());
        moved = turned.mapped({1.0, 0.0}, to.nose - turned.position(from.leading));
        result.scale = norm(rotation);
        result.angle = turning({1.0, 0.0}, rotation) / degree;
    }
    const Halves here(reference.curve);
    const Halves there(moved);
    result.to_reference = one_way(there, here, -1.0);
    result.from_reference = one_way(here, there, 1.0);
    result.upper_length = there.sides.upper.length() - here.sides.upper.length();
    result.lower_length = there.sides.lower.length() - here.sides.lower.length();
    result.length = moved.length() - reference.curve.length();
    return result;
}

} // namespace sections
