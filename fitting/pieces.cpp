// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/pieces_p.h"

#include <Eigen/SVD>

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

constexpr int coefficients = 6;
constexpr int least_run = coefficients + 1;
constexpr int shared_points = 2;

// Finds the conic of the run by the least singular value, in a frame along the chord of the run in
// which both coordinates have the magnitude 1.
bool is_conic(const Points& points, Run& run, double tolerance) {
    const Point& origin = points[run.first];
    const Point chord = points[run.last] - origin;
    const double length = chord.norm();
    if (!(length > 0.0))
        return false;
    const Point along = chord / length;
    Eigen::ArrayXd x(run.size());
    Eigen::ArrayXd y(run.size());
    for (int i = 0; i < run.size(); ++i) {
        const Point away = points[run.first + i] - origin;
        x[i] = away.dot(along) / length;
        y[i] = cross(along, away);
    }
    run.even = along;
    const double height = y.abs().maxCoeff();
    if (height < tolerance)
        return true;
    y /= height;
    Eigen::MatrixXd terms(run.size(), coefficients);
    terms << x * x, x * y, y * y, x, y, Eigen::ArrayXd::Ones(run.size());
    const Eigen::JacobiSVD<Eigen::MatrixXd> values(terms, Eigen::ComputeThinV);
    const Eigen::VectorXd conic = values.matrixV().col(coefficients - 1);
    // A line along the axis of a parabola meets it only once. The chord meets it twice, so it is
    // not along the axis, and the coefficient of x squared is not 0.
    const double lean = 0.5 * conic[1] / conic[0] * length / height;
    if (!std::isfinite(lean))
        return false;
    run.even += lean * Point(-along.y(), along.x());
    const Eigen::ArrayXd off = (terms * conic).array();
    const Eigen::ArrayXd slope_x = (2.0 * conic[0] * x + conic[1] * y + conic[3]) / length;
    const Eigen::ArrayXd slope_y = (conic[1] * x + 2.0 * conic[2] * y + conic[4]) / height;
    const Eigen::ArrayXd slope = (slope_x * slope_x + slope_y * slope_y).sqrt();
    return (off.abs() < tolerance * slope).all();
}

// A piece of the spline: its run, if one was found, and the arc at which the piece begins.
struct Piece {
    const Run* run;
    double from;
};

// Pieces without a run are put into the gaps between the runs. The ends come first, because their
// lines may be short. Then each piece goes to the gap with the longest pieces. The last entry is
// the end of the outline.
std::vector<Piece> pieces_of(const Outline& outline, const std::vector<Run>& runs, int count) {
    struct Gap {
        double from;
        double size;
        int pieces;
    };
    std::vector<Gap> gaps;
    for (std::size_t i = 0; i <= runs.size(); ++i) {
        const double from = i == 0 ? 0.0 : outline.arcs[runs[i - 1].last];
        const double to = i == runs.size() ? outline.length() : outline.arcs[runs[i].first];
        gaps.push_back({from, to - from, 0});
    }
    int missing = count - int(runs.size());
    for (Gap* gap : {&gaps.front(), &gaps.back()}) {
        if (missing > 0 && gap->size > 0.0) {
            ++gap->pieces;
            --missing;
        }
    }
    const auto is_denser = [](const Gap& a, const Gap& b) {
        return a.size / (a.pieces + 1) < b.size / (b.pieces + 1);
    };
    for (; missing > 0; --missing)
        ++std::max_element(gaps.begin(), gaps.end(), is_denser)->pieces;
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i <= runs.size(); ++i) {
        const Gap& gap = gaps[i];
        for (int k = 0; k < gap.pieces; ++k)
            pieces.push_back({nullptr, gap.from + gap.size * k / gap.pieces});
        // Two runs meet somewhere between their points.
        const double joint = gap.pieces > 0 ? gap.from + gap.size : gap.from + 0.5 * gap.size;
        if (i < runs.size())
            pieces.push_back({&runs[i], i == 0 && gap.pieces == 0 ? 0.0 : joint});
    }
    pieces.push_back({nullptr, outline.length()});
    return pieces;
}

// The parameter of a point, 0..1, on a piece that ends at the arc `to`.
double place_on(const Piece& piece, double to, const Outline& outline, std::size_t point) {
    const double size = to - piece.from;
    if (!(size > 0.0))
        return 0.0;
    const double by_arc = (outline.arcs[point] - piece.from) / size;
    if (!piece.run)
        return by_arc;
    const Run& run = *piece.run;
    const auto at = [&](int i) { return outline.points[i].dot(run.even); };
    const auto rate = [&](int i) {
        return (at(i + 1) - at(i)) / (outline.arcs[i + 1] - outline.arcs[i]);
    };
    const double start = at(run.first) + rate(run.first) * (piece.from - outline.arcs[run.first]);
    const double end = at(run.last) + rate(run.last - 1) * (to - outline.arcs[run.last]);
    return end > start ? (at(int(point)) - start) / (end - start) : by_arc;
}

} // namespace

std::vector<Run> conic_runs(const Points& points, double tolerance) {
    const int count = int(points.size());
    std::vector<Run> longest;
    Run run;
    for (; run.first + least_run <= count; ++run.first) {
        run.last = std::max(run.last, run.first + least_run - 2);
        const int before = run.last;
        for (Run next = run; run.last + 1 < count; run = next) {
            ++next.last;
            if (!is_conic(points, next, tolerance))
                break;
        }
        if (run.last > before)
            longest.push_back(run);
    }
    std::stable_sort(longest.begin(), longest.end(),
                     [](const Run& a, const Run& b) { return a.size() > b.size(); });
    std::vector<Run> result;
    for (const Run& candidate : longest) {
        const bool is_free = std::all_of(result.begin(), result.end(), [&](const Run& other) {
            return std::min(candidate.last, other.last) - std::max(candidate.first, other.first) +
                       1 <=
                   shared_points;
        });
        if (is_free)
            result.push_back(candidate);
    }
    std::sort(result.begin(), result.end(),
              [](const Run& a, const Run& b) { return a.first < b.first; });
    return result;
}

std::vector<double> spread_by_pieces(const Outline& outline, const std::vector<Target>& targets,
                                     int count, double tolerance) {
    const std::vector<Run> runs = conic_runs(outline.points, tolerance);
    const int known = int(runs.size());
    if (known > count || 2 * known < count)
        return {};
    const std::vector<Piece> pieces = pieces_of(outline, runs, count);
    std::vector<double> at_points;
    int piece = 0;
    for (std::size_t j = 0; j < outline.points.size(); ++j) {
        while (piece + 1 < count && outline.arcs[j] > pieces[piece + 1].from)
            ++piece;
        const double place = place_on(pieces[piece], pieces[piece + 1].from, outline, j);
        const double share = std::clamp(place, 0.0, 1.0);
        // Each line at the ends counts as half a piece.
        const double before = piece == 0 ? 0.0 : piece - 0.5;
        const double own = piece == 0 || piece + 1 == count ? 0.5 : 1.0;
        at_points.push_back((before + own * share) / (count - 1));
    }
    std::vector<double> result;
    std::size_t j = 0;
    for (const Target& target : targets) {
        while (j + 2 < outline.points.size() && outline.arcs[j + 1] <= target.arc)
            ++j;
        const double edge = outline.arcs[j + 1] - outline.arcs[j];
        const double share = std::clamp((target.arc - outline.arcs[j]) / edge, 0.0, 1.0);
        result.push_back(at_points[j] + share * (at_points[j + 1] - at_points[j]));
    }
    return result;
}

} // namespace fitting
