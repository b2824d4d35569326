// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/smoothness_p.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

constexpr double straight = 1e-6;
constexpr int following_points = 20; // with more, a fit can follow the noise
constexpr int bearable_points = 25;  // with more, it mostly does

QString number(double value, int digits = 2) {
    return QString::number(value, 'g', digits);
}

} // namespace

int count_reversals(const Points& control) {
    std::vector<int> signs;
    for (int i = 1; i + 1 < int(control.size()); ++i) {
        const double height = turn_height(control, i);
        signs.push_back(height > straight ? 1 : height < -straight ? -1 : 0);
    }
    return count_reversals(signs);
}

QList<tables::Finding> findings(const Outline& outline, const Points& control, const Fit& fit,
                                double tolerance) {
    using tables::Gravity;
    QList<tables::Finding> result;
    const auto say = [&result](Gravity gravity, const QString& text) {
        result.append({gravity, 0, text});
    };
    const int count = fit.spline.num_pnt;
    const Deviation& deviation = fit.deviation;
    if (!fit.holds) {
        say(Gravity::doubt,
            QStringLiteral("%1 of %2 points lie outside the tolerance of %3 (first 20 %) or %4 "
                           "(behind); the farthest is at x = %5")
                .arg(deviation.outside)
                .arg(deviation.points)
                .arg(number(tolerance), number(2.0 * tolerance),
                     QString::number(deviation.largest_at.x(), 'f', 3)));
    }
    for (const int corner : outline.corners) {
        const double distance = distance_to(control, outline.points[corner]);
        if (distance <= tolerance)
            continue;
        say(Gravity::doubt,
            QStringLiteral(
                "the corner at x = %1 is rounded; the spline passes it at a distance of %2")
                .arg(outline.points[corner].x() - outline.nose().x(), 0, 'f', 3)
                .arg(number(distance)));
    }
    if (deviation.largest_between > bearable_swing * deviation.largest &&
        deviation.largest_between > 0.5 * tolerance) {
        say(Gravity::note,
            QStringLiteral("between the points of the table the spline is %1 off the curve through "
                           "them, more than %2 times as far as at the points")
                .arg(number(deviation.largest_between), number(bearable_swing)));
    }
    if (fit.noise >= spoken_noise) {
        say(Gravity::note,
            QStringLiteral("the table is noisy: its points scatter by %1 of the chord")
                .arg(number(fit.noise)));
    }
    const bool follows = count > bearable_points ||
                         (count > following_points && deviation.root_mean_square < fit.noise);
    if (follows) {
        say(Gravity::note,
            QStringLiteral(
                "with %1 control points the spline mostly follows the noise of the table")
                .arg(count));
    }
    if (fit.reversals > fit.table_reversals) {
        say(Gravity::doubt,
            QStringLiteral("the curvature reverses %1 times, but only %2 times in the table")
                .arg(fit.reversals)
                .arg(fit.table_reversals));
    }
    if (fit.least_leg < pick_distance) {
        say(Gravity::note,
            QStringLiteral(
                "two control points are only %1 of the chord apart; the window may select "
                "the wrong one")
                .arg(number(fit.least_leg)));
    }
    return result;
}

} // namespace fitting
