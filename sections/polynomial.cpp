// SPDX-FileCopyrightText: Aerolith developers
#include "sections/polynomial.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

// Newton's method within a shrinking bracket; f(low) and f(high) differ in sign.
double bracketed_root(const Polynomial& c, const Polynomial& slope, double low, double high) {
    const bool rises = value_at(c, high) > 0.0;
    double u = 0.5 * (low + high);
    // Enough even for bisection alone, which ends when the bits of a double are used up.
    for (int step = 0; step < 200; ++step) {
        const double f = value_at(c, u);
        if (f == 0.0)
            return u;
        ((f > 0.0) == rises ? high : low) = u;
        const double df = value_at(slope, u);
        double next = df != 0.0 ? u - f / df : low;
        if (!(next > low && next < high))
            next = low + 0.5 * (high - low);
        if (next == u || next <= low || next >= high)
            return next;
        u = next;
    }
    return u;
}

bool is_finite(const Polynomial& c) {
    return std::all_of(c.begin(), c.end(), [](double a) { return std::isfinite(a); });
}

} // namespace

double value_at(const Polynomial& c, double u) {
    double sum = 0.0;
    for (auto a = c.rbegin(); a != c.rend(); ++a)
        sum = sum * u + *a;
    return sum;
}

Polynomial derivative(const Polynomial& c) {
    Polynomial slope = {};
    for (std::size_t i = 1; i < c.size(); ++i)
        slope[i - 1] = double(i) * c[i];
    return slope;
}

std::vector<double> roots_in_unit_interval(const Polynomial& c, double tolerance) {
    const bool constant = std::all_of(c.begin() + 1, c.end(), [](double a) { return a == 0.0; });
    if (constant || !is_finite(c))
        return {};
    const Polynomial slope = derivative(c);
    std::vector<double> ends = roots_in_unit_interval(slope);
    ends.insert(ends.begin(), 0.0);
    ends.push_back(1.0);

    std::vector<double> roots;
    const auto add = [&roots](double u) {
        if (roots.empty() || u > roots.back())
            roots.push_back(u);
    };
    for (std::size_t i = 0; i < ends.size(); ++i) {
        const double f = value_at(c, ends[i]);
        if (i > 0) {
            const double before = value_at(c, ends[i - 1]);
            const bool crosses = (before < 0.0 && f > 0.0) || (before > 0.0 && f < 0.0);
            if (crosses && std::abs(before) > tolerance && std::abs(f) > tolerance)
                add(bracketed_root(c, slope, ends[i - 1], ends[i]));
        }
        if (std::abs(f) <= tolerance)
            add(ends[i]);
    }
    return roots;
}

} // namespace sections
