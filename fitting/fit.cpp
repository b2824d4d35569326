// SPDX-FileCopyrightText: Aerolith developers
#include "fitting/fit.h"

#include "document/frames.h"
#include "fitting/search_p.h"
#include "fitting/smoothness_p.h"

#include <algorithm>
#include <cmath>

namespace fitting {

namespace {

QSize editor_size() {
    return QSize(1024, 768);
}

// Rounds to a grid far finer than any use, so that coordinates can be mirrored exactly.
double on_grid(double pixels) {
    constexpr double grid = 1073741824.0; // 2^30
    return std::round(pixels * grid) / grid;
}

SplineFoil file_of(const Points& control, Ends ends, const tables::Openings& openings) {
    SplineFoil spline;
    spline.num_pnt = int(control.size());
    spline.init_knots();
    for (int i = 0; i < spline.num_pnt; ++i)
        spline.CP[i] = QPointF(control[i].x(), control[i].y());
    spline.startVent = openings.start;
    spline.endVent = openings.end;
    spline = in_pixels(spline, ChordMapping::of_size(editor_size()));
    for (int i = 0; i < spline.num_pnt; ++i)
        spline.CP[i] = QPointF(on_grid(spline.CP[i].x()), on_grid(spline.CP[i].y()));
    if (ends == Ends::symmetric) {
        const double twice_axis = spline.CP[0].y() + spline.CP[spline.num_pnt - 1].y();
        for (int i = 0, j = spline.num_pnt - 1; i < j; ++i, --j)
            spline.CP[j] = QPointF(spline.CP[i].x(), twice_axis - spline.CP[i].y());
    }
    return spline;
}

// A spline and the deviation of its file.
struct Candidate {
    Points control; // in the frame of the outline
    SplineFoil spline;
    Deviation deviation;
};

// Above this distance a longer search follows. The longest one needs many control points: with few
// of them, their number limits the distance.
constexpr double near = 1e-4;
constexpr int many_points = 25;
// Above this distance a longer search does not help.
constexpr double far = 4e-3;

bool holds(const Candidate& candidate) {
    return candidate.deviation.largest_over_tolerance <= usual_tolerance;
}

bool is_better(const Candidate& a, const Candidate& b) {
    return holds(a) != holds(b) ? holds(a) : a.deviation.largest < b.deviation.largest;
}

class Fitter {
public:
    Fitter(const QPolygonF& t, const Outline& o, const Request& r)
        : table(t), outline(o), request(r) {}

    std::optional<Candidate> with_points(int count) const;
    std::optional<Candidate> with_tolerance() const;

private:
    std::optional<Candidate> candidate(int count, bool by_tolerance, const Effort& effort) const;

    const QPolygonF& table;
    const Outline& outline;
    const Request& request;
};

std::optional<Candidate> Fitter::candidate(int count, bool by_tolerance,
                                           const Effort& effort) const {
    Candidate result;
    result.control = search(outline, count, request.ends, by_tolerance, effort).control;
    result.spline =
        file_of(outline.in_window_frame(result.control), request.ends, request.openings);
    const std::optional<Deviation> found = deviation(table, result.spline, request.tolerance);
    if (!found)
        return std::nullopt;
    result.deviation = *found;
    return result;
}

// Minimises the largest distance. If the result misses the tolerance, it also tries the fit that
// allows twice the distance behind the nose. If the distance stays large, a longer search follows.
// The longest search follows if the tolerance is still missed or there are many control points.
std::optional<Candidate> Fitter::with_points(int count) const {
    std::optional<Candidate> chosen;
    const std::vector<Effort> efforts =
        request.best ? std::vector{Effort::best()}
                     : std::vector{Effort(), Effort::thorough(), Effort::long_search()};
    bool is_longer = false;
    for (const Effort& effort : efforts) {
        for (const bool by_tolerance : {false, true}) {
            const std::optional<Candidate> next = candidate(count, by_tolerance, effort);
            if (!next)
                continue;
            if (!chosen || is_better(*next, *chosen))
                chosen = next;
            if (holds(*chosen))
                break;
        }
        if (!chosen || chosen->deviation.largest > far)
            break;
        const bool is_near = chosen->deviation.largest <= near;
        if (holds(*chosen) && (is_near || (is_longer && count < many_points)))
            break;
        is_longer = true;
    }
    return chosen;
}

// The result for a number of control points does not depend on the tolerance, so a wider tolerance
// never needs more of them. If no number holds the tolerance, the greatest gets the longest search.
std::optional<Candidate> Fitter::with_tolerance() const {
    std::optional<Candidate> chosen;
    const auto take = [&chosen](const std::optional<Candidate>& next) {
        if (next && (!chosen || next->deviation.largest_over_tolerance <
                                    chosen->deviation.largest_over_tolerance))
            chosen = next;
    };
    const auto is_held = [&] {
        return chosen && chosen->deviation.largest_over_tolerance <= request.tolerance;
    };
    const Effort effort = request.best ? Effort::thorough() : Effort::without_shakes();
    for (int count = least_points; count <= most_points; ++count) {
        take(candidate(count, true, effort));
        if (is_held())
            return chosen;
    }
    if (chosen && chosen->deviation.largest <= far)
        take(candidate(most_points, true, Effort::long_search()));
    return chosen;
}

} // namespace

Fit fit(const QPolygonF& table, const Request& request) {
    Fit result;
    const Preparation prepared = prepare(table);
    if (!prepared.reason.isEmpty()) {
        result.reason = prepared.reason;
        return result;
    }
    const Fitter fitter(table, prepared.outline, request);
    const bool by_count = request.points != 0;
    const std::optional<Candidate> chosen =
        by_count ? fitter.with_points(std::clamp(request.points, least_points, most_points))
                 : fitter.with_tolerance();
    if (!chosen) {
        result.reason = QStringLiteral("no spline for this outline settles in the window");
        return result;
    }
    result.spline = chosen->spline;
    result.deviation = chosen->deviation;
    result.holds = chosen->deviation.outside == 0;
    result.noise = prepared.outline.noise;
    result.reversals = count_reversals(chosen->control);
    result.table_reversals = prepared.outline.reversals;
    result.least_leg = least_leg(chosen->control);
    result.findings = findings(prepared.outline, chosen->control, result, request.tolerance);
    return result;
}

} // namespace fitting
