// SPDX-FileCopyrightText: Aerolith developers
// Sampling of a whole B-spline curve.
//
// At any parameter of a quadratic curve at most three basis functions differ from 0. The recursion
// computes the same values by the same operations and adds products with 0, which changes no bit as
// long as points and knots are finite.
#include "numerics/splinebasis.h"

#include "numerics/b_spline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace {

// Beyond this, differences and products of knots might overflow.
constexpr double largest_regular_knot = 1e100;

constexpr auto make_parameters() {
    std::array<double, SplineBasis::sample_count> parameters = {};
    double u = 1.0 / F_DIV;
    for (double& parameter : parameters) {
        parameter = u;
        u += 1.0 / F_DIV;
    }
    return parameters;
}

constexpr auto parameters = make_parameters();

static_assert(parameters.back() < 1.0 && parameters.back() + 1.0 / F_DIV >= 1.0,
              "the parameters must end with the last one below 1");

bool is_finite(QPointF point) {
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

// The first sample whose parameter is not below the knot.
int first_sample_from(double knot) {
    return int(std::lower_bound(parameters.begin(), parameters.end(), knot) - parameters.begin());
}

} // namespace

void SplineBasis::set_knots(int point_count, int degree, const double* knots) {
    const int knot_count = point_count + degree + 1;
    if (point_count == count && degree == curve_degree &&
        std::equal(knots, knots + knot_count, knot))
        return;
    count = point_count;
    curve_degree = degree;
    std::copy(knots, knots + knot_count, knot);
    tabulated = can_be_tabulated();
    if (tabulated)
        tabulate();
}

bool SplineBasis::can_be_tabulated() const {
    if (curve_degree != DEGREE2)
        return false;
    const int last = count + DEGREE2;
    for (int i = 0; i < last; ++i) {
        if (!(knot[i] < knot[i + 1]))
            return false;
    }
    return std::abs(knot[0]) < largest_regular_knot && std::abs(knot[last]) < largest_regular_knot;
}

void SplineBasis::tabulate() {
    const int last = count + DEGREE2;
    const int begin = first_sample_from(knot[0]);
    const int end = first_sample_from(knot[last]);
    span_count = 0;
    // Outside the knots every basis function is 0, and the point is 0/0.
    const auto add_empty = [this](int from, int to) {
        for (auto& values : basis)
            std::fill(values + from, values + to, 0.0);
        std::fill(basis_sum + from, basis_sum + to, 0.0);
        spans[span_count++] = {0, from, to};
    };
    add_empty(0, begin);
    for (int span = 0, from = begin; span < last; ++span) {
        const int to = first_sample_from(knot[span + 1]);
        if (from < to)
            tabulate_span(span, from, to);
        from = to;
    }
    add_empty(end, sample_count);
}

// Cox-de Boor for the samples of one knot span [k1, k2). The functions that end in it,
// cover it and begin in it belong to the control points span - 2, span - 1 and span.
void SplineBasis::tabulate_span(int span, int begin, int end) {
    const bool has_ending = span >= 2;
    const bool has_covering = span >= 1 && span <= count;
    const bool has_beginning = span < count;
    const double k1 = knot[span];
    const double k2 = knot[span + 1];
    const double k0 = span >= 1 ? knot[span - 1] : k1 - 1.0;
    const double k3 = span <= count ? knot[span + 2] : k2 + 1.0;
    const double h = k2 - k1;
    const double h02 = k2 - k0;
    const double h13 = k3 - k1;
    const double ending = has_ending ? 1.0 : 0.0;
    const double covering = has_covering ? 1.0 : 0.0;
    const double beginning = has_beginning ? 1.0 : 0.0;
    const auto tabulate_sample = [&](int s) {
        const double t = parameters.data()[s];
        const double falling = (k2 - t) / h;
        const double rising = (t - k1) / h;
        const double n0 = falling * (k2 - t) / h02 * ending;
        const double n1 = (falling * (t - k0) / h02 + rising * (k3 - t) / h13) * covering;
        const double n2 = rising * (t - k1) / h13 * beginning;
        basis[0][s] = n0;
        basis[1][s] = n1;
        basis[2][s] = n2;
        basis_sum[s] = n0 + n1 + n2;
    };
    // In pairs, which the compiler vectorises: the divisions take most of the time.
    int s = begin;
    for (; s + 1 < end; s += 2) {
        tabulate_sample(s);
        tabulate_sample(s + 1);
    }
    if (s < end)
        tabulate_sample(s);
    spans[span_count++] = {span - 2, begin, end};
}

QPolygonF SplineBasis::sample(const QPointF* points) const {
    if (!tabulated || !std::all_of(points, points + count, is_finite))
        return sample_generally(points);
    // Two extra points at either end, for the first and last knot spans.
    QPointF padded[MAXNUMPOINTS + 4];
    std::copy(points, points + count, padded + 2);
    QPolygonF curve(sample_count);
    QPointF* samples = curve.data();
    for (int i = 0; i < span_count; ++i) {
        const Span& span = spans[i];
        const QPointF* P = padded + (span.first_point + 2);
        const double x0 = P[0].x(), x1 = P[1].x(), x2 = P[2].x();
        const double y0 = P[0].y(), y1 = P[1].y(), y2 = P[2].y();
        for (int s = span.begin; s < span.end; ++s) {
            const double n0 = basis[0][s], n1 = basis[1][s], n2 = basis[2][s];
            const double sum = basis_sum[s];
            // The sum starts at 0, which makes a negative zero positive.
            const double x = 0.0 + n0 * x0 + n1 * x1 + n2 * x2;
            const double y = 0.0 + n0 * y0 + n1 * y1 + n2 * y2;
            samples[s] = QPointF(x / sum, y / sum);
        }
    }
    return curve;
}

QPolygonF SplineBasis::sample_generally(const QPointF* points) const {
    std::array<QPointF, MAXNUMPOINTS> Cp = {};
    std::copy(points, points + count, Cp.begin());
    double knots[MAXNUMKNOTS];
    std::copy(std::begin(knot), std::end(knot), knots);
    QPolygonF curve;
    curve.reserve(sample_count);
    for (const double u : parameters)
        curve << B_spline_point(count, curve_degree, Cp.data(), knots, u);
    return curve;
}
