// SPDX-FileCopyrightText: Aerolith developers
// Roots of real polynomials of low degree.
#pragma once

#include <array>
#include <vector>

namespace sections {

/// Highest degree of a Polynomial.
inline constexpr int highest_degree = 5;

/// The polynomial c[0] + c[1] u + ... + c[5] u^5.
using Polynomial = std::array<double, highest_degree + 1>;

/// Value of @p c at @p u.
double value_at(const Polynomial& c, double u);

/// Derivative of @p c with respect to u.
Polynomial derivative(const Polynomial& c);

/// All real roots of @p c within [0, 1], ascending, each to the last bits: between two
/// zeros of its derivative a polynomial is monotone, so a change of sign brackets exactly
/// one root.
/// @param tolerance an end of the range, or a zero of the derivative, where the polynomial comes
///                  this close to 0 without a change of sign counts as a root too
/// @return empty for a polynomial that is not finite or is constant
std::vector<double> roots_in_unit_interval(const Polynomial& c, double tolerance = 0.0);

} // namespace sections
