// SPDX-FileCopyrightText: Aerolith developers
// The quadratic spline as polynomial pieces.
#include "sections/curve.h"

#include "document/parastruct.h"
#include "sections/plane.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

// "Set hull" leaves 0.0001 between two knots, up to rounding.
constexpr double sharp_span = 0.0002;

// A joint that turns by more is a corner: coincident control points make one.
constexpr double smooth_turn = 1e-3;

// The end of a piece and the start of the next may differ by this much through rounding.
constexpr double torn = 1e-9;

bool is_finite(QPointF point) {
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

// Why the knots t[0] .. t[n + 2] of n control points give no curve; otherwise empty.
QString objection(const SplineFoil& spline) {
    const int n = spline.point_count();
    const double* t = spline.b_knots;
    if (spline.degree != DEGREE2)
        return QStringLiteral("degree %1, expected 2").arg(spline.degree);
    if (n < 2)
        return QStringLiteral("%1 control points, expected at least 2").arg(n);
    if (!std::all_of(spline.CP, spline.CP + n, is_finite))
        return QStringLiteral("a control point that is not finite");
    if (!std::all_of(t, t + n + 3, [](double knot) { return std::isfinite(knot); }))
        return QStringLiteral("a knot that is not finite");
    if (!std::is_sorted(t, t + n + 3))
        return QStringLiteral("decreasing knots");
    if (t[1] < 0.0 || t[n + 1] > 1.0)
        return QStringLiteral("knots outside of 0..1");
    return QString();
}

} // namespace

CurveResult spline_curve(const SplineFoil& spline) {
    CurveResult result;
    result.reason = objection(spline);
    if (!result.reason.isEmpty())
        return result;
    const int n = spline.point_count();
    const double* t = spline.b_knots;
    const QPointF* P = spline.CP;

    // The curve at knot j as approached from the span after it or before it.
    const auto at_knot = [&](int j) {
        const double share = (t[j] - t[j - 1]) / (t[j + 1] - t[j - 1]);
        return P[j - 2] + share * (P[j - 1] - P[j - 2]);
    };
    double extent = 0.0;
    for (int i = 1; i < n; ++i)
        extent = std::max(extent, norm(P[i] - P[0]));
    const double least = nothing * extent;

    std::vector<Piece> pieces;
    std::vector<bool> corners;
    bool after_sharp = false;
    for (int j = 1; j <= n; ++j) {
        if (!(t[j] < t[j + 1]))
            continue;
        const QPointF from = flushed(j == 1 ? P[0] : at_knot(j), least);
        const QPointF to = flushed(j == n ? P[n - 1] : at_knot(j + 1), least);
        const bool inner = j >= 2 && j <= n - 1;
        const Piece piece =
            inner ? Piece::parabola(from, flushed(P[j - 1], least), to) : Piece::line(from, to);
        if (!pieces.empty() && norm(pieces.back().position(1.0) - from) > torn * extent) {
            result.reason = QStringLiteral("knot %1 tears the curve").arg(j);
            return result;
        }
        if (!(piece.length() > 0.0))
            continue;
        const bool sharp = inner && t[j + 1] - t[j] <= sharp_span;
        if (!pieces.empty()) {
            const double turn = turning(pieces.back().tangent(1.0), piece.tangent(0.0));
            const bool bent = std::abs(turn) > smooth_turn;
            corners.push_back(sharp || after_sharp || bent);
            // The two ends of a sharpened point count as one corner.
            result.corners += sharp || (bent && !after_sharp);
        }
        after_sharp = sharp;
        pieces.push_back(piece);
    }
    if (pieces.empty()) {
        result.reason = QStringLiteral("all control points are one");
        return result;
    }
    result.curve = Curve(std::move(pieces), std::move(corners));
    return result;
}

} // namespace sections
