// SPDX-FileCopyrightText: Aerolith developers
// The smooth line through four rows of an outline.
#pragma once

#include <QPointF>

#include <array>
#include <cmath>
#include <cstddef>

namespace tables {

/// The cubic through four distinct points, parametrised by the length of the straight lines between
/// them (Lagrange's form).
class Cubic {
public:
    explicit Cubic(const std::array<QPointF, 4>& through) : points(through) {
        for (std::size_t i = 1; i < points.size(); ++i) {
            const QPointF edge = points[i] - points[i - 1];
            knots[i] = knots[i - 1] + std::hypot(edge.x(), edge.y());
        }
    }

    /// The parameter of one of the points.
    double knot(std::size_t point) const { return knots[point]; }

    QPointF at(double t) const {
        QPointF sum;
        for (std::size_t i = 0; i < points.size(); ++i) {
            double weight = 1.0;
            for (std::size_t j = 0; j < points.size(); ++j) {
                if (j != i)
                    weight *= (t - knots[j]) / (knots[i] - knots[j]);
            }
            sum += points[i] * weight;
        }
        return sum;
    }

private:
    std::array<QPointF, 4> points;
    std::array<double, 4> knots = {};
};

} // namespace tables
