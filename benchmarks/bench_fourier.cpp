// SPDX-FileCopyrightText: Aerolith developers
// The Fourier fit and its evaluation.
#include "baseline/fourier.h"
#include "harness.h"
#include "numerics/fourier.h"

#include <algorithm>
#include <cmath>
#include <vector>

void bench_fourier() {
    constexpr int order = 500;
    std::vector<double> samples(2 * order);
    for (int k = 0; k < 2 * order; ++k)
        samples[std::size_t(k)] =
            std::cos(0.00314 * k) + 0.2 * std::sin(0.05 * k) + 0.001 * (k % 7);
    std::vector<double> expected(1000);
    std::vector<double> actual(1000);
    const Work plain = {[&] { baseline::Fourier_Proc(order, samples.data(), expected.data()); }, 1};
    const Work ours = {[&] { Fourier_Proc(order, samples.data(), actual.data()); }, 10};

    const Comparison result = compare(15, plain, ours);
    print_row(QStringLiteral("11"), QStringLiteral("Fourier_Proc of order 500, plain : ours"),
              times_text(result.first, result.second), {Goal::at_least, 18.0}, result.ratio);

    double error = 0.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < actual.size(); ++i)
        error = std::max(error, std::abs(actual[i] - expected[i]));
    for (const double sample : samples)
        largest = std::max(largest, std::abs(sample));
    const double relative = error / largest;
    print_row(QStringLiteral("11"), QStringLiteral("its largest difference / largest sample"),
              QStringLiteral("%1").arg(relative, 0, 'g', 2), {Goal::at_most, 1e-12},
              {relative, relative, relative});
}
