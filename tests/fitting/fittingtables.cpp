// SPDX-FileCopyrightText: Aerolith developers
#include "fittingtables.h"

#include "sections/curve.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

constexpr double pi = 3.14159265358979323846;

// The upper side up to half a turn, then the lower side.
QPointF four_digit_point(double turn, double thickness, double camber) {
    constexpr double crest = 0.4;
    const double x = 0.5 * (1.0 + std::cos(turn));
    const double half = 5.0 * thickness *
                        (0.2969 * std::sqrt(x) - 0.1260 * x - 0.3516 * x * x + 0.2843 * x * x * x -
                         0.1036 * x * x * x * x);
    const double ahead = 2.0 * crest * x - x * x;
    const double line =
        x < crest ? camber / (crest * crest) * ahead
                  : camber / ((1.0 - crest) * (1.0 - crest)) * (1.0 - 2.0 * crest + ahead);
    return QPointF(x, line + (turn <= pi ? half : -half));
}

class Random {
public:
    explicit Random(unsigned seed) : engine(seed) {}
    double between(double low, double high) {
        return low + (high - low) * double(engine()) / double(std::mt19937::max());
    }

private:
    std::mt19937 engine;
};

} // namespace

QPolygonF four_digit(double thickness, double camber, int points) {
    QPolygonF table;
    for (int i = 0; i < points; ++i)
        table << four_digit_point(2.0 * pi * i / (points - 1), thickness, camber);
    table.first() = QPointF(1.0, 0.0);
    table.last() = table.first();
    table[points / 2] = QPointF(0.0, 0.0);
    return table;
}

QPolygonF with_noise(QPolygonF table, double deviation, unsigned seed) {
    Random random(seed);
    for (int i = 1; i + 1 < table.size(); ++i) {
        double sum = -6.0;
        for (int k = 0; k < 12; ++k)
            sum += random.between(0.0, 1.0);
        table[i].ry() += deviation * sum;
    }
    return table;
}

QPolygonF coarse_flat_bottom() {
    return {{100, 0.1}, {95, 0.1},   {90, 0.3},  {80, 1.1},  {70, 2.5},   {60, 4},    {50, 5.7},
            {40, 7.2},  {30, 8},     {20, 7.8},  {15, 6.9},  {10, 5.6},   {7.5, 4.7}, {5, 3.6},
            {2.5, 2.4}, {1.25, 1.5}, {0, 0},     {1.25, -1}, {2.5, -1.2}, {5, -1.2},  {7.5, -1.2},
            {10, -1.2}, {15, -1.2},  {20, -1.2}, {30, -1.2}, {40, -1.2},  {50, -1.2}, {60, -1.2},
            {70, -1.7}, {80, -1.7},  {90, -1.4}, {95, -0.9}, {100, -0.1}};
}

SplineAndTable random_spline(unsigned seed) {
    Random random(seed);
    SplineAndTable result;
    SplineFoil& spline = result.spline;
    spline.num_pnt = int(random.between(8.0, 21.0));
    const double thickness = random.between(0.06, 0.2);
    const double camber = random.between(0.0, 0.05);
    const double step = 2.0 * pi / (spline.num_pnt - 1);
    for (int i = 1; i + 1 < spline.num_pnt; ++i)
        spline.CP[i] = four_digit_point(step * (i + random.between(-0.2, 0.2)), thickness, camber);
    spline.CP[0] = spline.CP[spline.num_pnt - 1] = QPointF(1.0, 0.0);
    spline.init_knots();

    const QPolygonF samples = spline.make_SplinePoly();
    const auto ahead = [](QPointF a, QPointF b) { return a.x() < b.x(); };
    const QPointF nose = *std::min_element(samples.begin(), samples.end(), ahead);
    const sections::Curve curve = sections::spline_curve(spline).curve;
    for (int i = 0; i < 400; ++i) {
        const QPointF point = curve.position(curve.place_at(curve.length() * i / 399.0));
        result.table << (point.x() > nose.x() ? point : nose);
    }
    const auto nearer = [nose](QPointF a, QPointF b) {
        const QPointF from_a = a - nose;
        const QPointF from_b = b - nose;
        return QPointF::dotProduct(from_a, from_a) < QPointF::dotProduct(from_b, from_b);
    };
    *std::min_element(result.table.begin(), result.table.end(), nearer) = nose;
    return result;
}

QPolygonF copy_of(const QPolygonF& table, int kind) {
    QPolygonF result = table;
    if (kind & 1) {
        for (QPointF& point : result)
            point.ry() = -point.y();
    }
    if (kind & 2)
        std::reverse(result.begin(), result.end());
    if (kind & 4) {
        for (QPointF& point : result)
            point *= 137.0;
    }
    if (kind & 8)
        result.translate(0.3, -12.0);
    return result;
}
