// SPDX-FileCopyrightText: Aerolith developers
#include "sections/curve.h"

#include "sections/plane.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sections {

namespace {

double distance_to(const QRectF& box, QPointF q) {
    const double dx = std::max({box.left() - q.x(), 0.0, q.x() - box.right()});
    const double dy = std::max({box.top() - q.y(), 0.0, q.y() - box.bottom()});
    return std::hypot(dx, dy);
}

// Whether the Bernstein coefficients of a cubic show that it stays on one side of 0.
bool is_beyond(const Polynomial& c, double tolerance) {
    const double b[] = {c[0], c[0] + c[1] / 3.0, c[0] + (2.0 * c[1] + c[2]) / 3.0,
                        c[0] + c[1] + c[2] + c[3]};
    const auto [least, greatest] = std::minmax_element(std::begin(b), std::end(b));
    return *least > tolerance || *greatest < -tolerance;
}

// Calls consider(u) for the ends and for each root.
template<typename Function>
void for_candidates(const Polynomial& polynomial, const Function& consider) {
    consider(0.0);
    for (const double u : roots_in_unit_interval(polynomial))
        consider(u);
    consider(1.0);
}

} // namespace

Curve::Curve(std::vector<Piece> pieces, std::vector<bool> corners)
    : curve_pieces(std::move(pieces)), joint_corners(std::move(corners)) {
    joint_corners.resize(curve_pieces.empty() ? 0 : curve_pieces.size() - 1, false);
    starts.reserve(curve_pieces.size() + 1);
    double sum = 0.0;
    starts.push_back(sum);
    for (const Piece& piece : curve_pieces) {
        sum += piece.length();
        starts.push_back(sum);
        boxes.push_back(piece.bounds());
    }
}

bool Curve::has_corner_after(int i) const {
    return i >= 0 && std::size_t(i) < joint_corners.size() && joint_corners[std::size_t(i)];
}

QPointF Curve::position(Place place) const {
    return curve_pieces[std::size_t(place.piece)].position(place.u);
}

QPointF Curve::tangent(Place place) const {
    return curve_pieces[std::size_t(place.piece)].tangent(place.u);
}

double Curve::curvature(Place place) const {
    return curve_pieces[std::size_t(place.piece)].curvature(place.u);
}

double Curve::length() const {
    return starts.empty() ? 0.0 : starts.back();
}

double Curve::length_to(Place place) const {
    const std::size_t i = std::size_t(place.piece);
    return starts[i] + curve_pieces[i].length(0.0, place.u);
}

Place Curve::place_at(double distance) const {
    if (!(distance > 0.0))
        return begin();
    if (distance >= length())
        return end();
    const auto after = std::upper_bound(starts.begin(), starts.end(), distance);
    const std::size_t i = std::size_t(after - starts.begin()) - 1;
    return {int(i), curve_pieces[i].parameter_at(distance - starts[i])};
}

Foot Curve::nearest(QPointF q) const {
    Foot foot;
    // The starts of the pieces first: a near one excludes most of the pieces.
    foot.distance = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < curve_pieces.size(); ++i) {
        const QPointF start = curve_pieces[i].position(0.0);
        const double distance = norm(start - q);
        if (distance < foot.distance)
            foot = {{int(i), 0.0}, start, distance};
    }
    for (std::size_t i = 0; i < curve_pieces.size(); ++i) {
        const Piece& piece = curve_pieces[i];
        if (distance_to(boxes[i], q) >= foot.distance)
            continue;
        for_candidates(piece.approach(q), [&](double u) {
            const QPointF point = piece.position(u);
            const double distance = norm(point - q);
            if (distance < foot.distance)
                foot = {{int(i), u}, point, distance};
        });
    }
    return foot;
}

Place Curve::farthest(QPointF q) const {
    Place best;
    double greatest = -1.0;
    for (std::size_t i = 0; i < curve_pieces.size(); ++i) {
        const Piece& piece = curve_pieces[i];
        for_candidates(piece.approach(q), [&](double u) {
            const double distance = norm(piece.position(u) - q);
            if (distance > greatest) {
                greatest = distance;
                best = {int(i), u};
            }
        });
    }
    return best;
}

Place Curve::extreme(QPointF direction) const {
    Place best;
    double greatest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < curve_pieces.size(); ++i) {
        const Polynomial along = curve_pieces[i].along(direction);
        for_candidates(derivative(along), [&](double u) {
            const double value = value_at(along, u);
            if (value > greatest) {
                greatest = value;
                best = {int(i), u};
            }
        });
    }
    return best;
}

std::vector<Place> Curve::crossings(QPointF direction, double value, double tolerance) const {
    std::vector<Place> places;
    for (std::size_t i = 0; i < curve_pieces.size(); ++i) {
        Polynomial off = curve_pieces[i].along(direction);
        off[0] -= value;
        if (is_beyond(off, tolerance))
            continue;
        for (const double u : roots_in_unit_interval(off, tolerance)) {
            const Place place = {int(i), u};
            // The end of one piece is the start of the next.
            const bool repeats =
                !places.empty() && norm(position(places.back()) - position(place)) <= tolerance;
            if (!repeats)
                places.push_back(place);
        }
    }
    return places;
}

double Curve::signed_area() const {
    if (is_empty())
        return 0.0;
    // About the first point, which keeps the products small.
    const QPointF origin = position(begin());
    double twice = 0.0;
    for (const Piece& piece : curve_pieces) {
        twice += gauss_legendre(
            [&](double u) { return cross(piece.position(u) - origin, piece.derivative(u)); }, 0.0,
            1.0);
    }
    return 0.5 * twice;
}

QPointF Curve::centroid() const {
    if (is_empty())
        return QPointF();
    // Green's theorem on triangles with one vertex at the first point.
    const QPointF origin = position(begin());
    const auto moment = [&](QPointF axis) {
        double sum = 0.0;
        for (const Piece& piece : curve_pieces) {
            sum += gauss_legendre(
                [&](double u) {
                    const QPointF r = piece.position(u) - origin;
                    return dot(r, axis) * cross(r, piece.derivative(u));
                },
                0.0, 1.0);
        }
        return sum / 3.0;
    };
    const double area = signed_area();
    return origin + QPointF(moment({1.0, 0.0}) / area, moment({0.0, 1.0}) / area);
}

Curve Curve::reversed() const {
    std::vector<Piece> pieces;
    pieces.reserve(curve_pieces.size());
    for (auto piece = curve_pieces.rbegin(); piece != curve_pieces.rend(); ++piece)
        pieces.push_back(piece->part(1.0, 0.0));
    return Curve(std::move(pieces), {joint_corners.rbegin(), joint_corners.rend()});
}

Curve Curve::part(Place from, Place to) const {
    std::vector<Piece> pieces;
    std::vector<bool> corners;
    for (int i = from.piece; i <= to.piece; ++i) {
        const double start = i == from.piece ? from.u : 0.0;
        const double stop = i == to.piece ? to.u : 1.0;
        // A stretch that begins where a piece ends begins with the next piece.
        if (start >= stop && from.piece != to.piece)
            continue;
        if (!pieces.empty())
            corners.push_back(has_corner_after(i - 1));
        pieces.push_back(curve_pieces[std::size_t(i)].part(start, stop));
    }
    return Curve(std::move(pieces), std::move(corners));
}

Curve Curve::mapped(QPointF rotation, QPointF shift) const {
    std::vector<Piece> pieces;
    pieces.reserve(curve_pieces.size());
    for (const Piece& piece : curve_pieces)
        pieces.push_back(piece.mapped(rotation, shift));
    return Curve(std::move(pieces), joint_corners);
}

QPolygonF Curve::polyline(double flatness) const {
    QPolygonF line;
    if (is_empty())
        return line;
    line << position(begin());
    for (const Piece& piece : curve_pieces) {
        // Over a parameter step h the curve is at most h^2 / 8 |P''| off its chord.
        const double bend =
            std::max(norm(piece.second_derivative(0.0)), norm(piece.second_derivative(1.0)));
        const double wanted = std::ceil(std::sqrt(bend / (8.0 * flatness)));
        const int steps = piece.degree() == 1 ? 1 : int(std::clamp(wanted, 1.0, 1e5));
        for (int i = 1; i <= steps; ++i)
            line << piece.position(double(i) / steps);
    }
    return line;
}

} // namespace sections
