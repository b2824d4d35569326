// SPDX-FileCopyrightText: Aerolith developers
// The normal equations of a step, for the sources of Problem.
#pragma once

#include "fitting/problem.h"

namespace fitting {

/// Vectors shorter than this (chord units) have no direction.
constexpr double nothing = 1e-12;

/// A linearised residual: its value, and its derivatives by up to eight coordinates of control
/// points.
struct Problem::Row {
    int size = 0;
    int coordinate[8] = {};
    double slope[8] = {};
    double value = 0.0;

    void add(int point, int axis, double s) {
        coordinate[size] = 2 * point + axis;
        slope[size] = s;
        ++size;
    }
};

/// The normal equations. Only the lower triangle is stored.
struct Problem::Normal {
    const Freedom& freedom;
    Eigen::MatrixXd matrix;
    Eigen::VectorXd gradient;
    Eigen::VectorXd damping;

    explicit Normal(const Freedom& f)
        : freedom(f), matrix(f.variables, f.variables), gradient(f.variables),
          damping(f.variables) {}

    void clear() {
        matrix.setZero();
        gradient.setZero();
        damping.setZero();
    }

    void add(const Row& row, double curvature, double slope, double scale) {
        for (int a = 0; a < row.size; ++a) {
            const int i = freedom.variable[row.coordinate[a]];
            if (i < 0)
                continue;
            const double s = row.slope[a] * freedom.sign[row.coordinate[a]];
            gradient[i] += slope * row.value * s;
            damping[i] += scale * s * s;
            for (int b = 0; b < row.size; ++b) {
                const int j = freedom.variable[row.coordinate[b]];
                if (j >= 0 && j <= i)
                    matrix(i, j) += curvature * s * row.slope[b] * freedom.sign[row.coordinate[b]];
            }
        }
    }
};

} // namespace fitting
