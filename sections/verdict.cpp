// SPDX-FileCopyrightText: Aerolith developers
// Tables: what the window's reader shows against what the table means.
#include "sections/verdict.h"

#include "airfoil/airfoil.h"
#include "sections/plane.h"
#include "sections/shape.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

using tables::Finding;
using tables::Gravity;
using tables::Table;

// An outline in the window's frame, without points that repeat the previous one.
struct Trace {
    std::vector<QPointF> points;
    std::vector<int> lines;

    void add(QPointF point, int line, double tolerance) {
        if (!points.empty() && is_near(points.back(), point, tolerance))
            return;
        points.push_back(point);
        lines.push_back(line);
    }

    static bool is_near(QPointF a, QPointF b, double tolerance) {
        return std::abs(a.x() - b.x()) <= tolerance && std::abs(a.y() - b.y()) <= tolerance;
    }
};

struct Width {
    double width = 0.0;
    double farthest = 0.0; // greatest absolute coordinate

    explicit Width(const QPolygonF& outline) {
        double least = outline.first().x();
        double greatest = least;
        for (const QPointF& point : outline) {
            least = std::min(least, point.x());
            greatest = std::max(greatest, point.x());
            farthest = std::max({farthest, std::abs(point.x()), std::abs(point.y())});
        }
        width = greatest - least;
    }
};

Trace meant_trace(const Table& table, bool backwards, double width, double tolerance) {
    Trace trace;
    const qsizetype count = table.points.size();
    const QPointF first = backwards ? table.points.last() : table.points.first();
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype j = backwards ? count - 1 - i : i;
        const int line = std::size_t(j) < table.lines.size() ? table.lines[std::size_t(j)] : 0;
        trace.add((table.points[j] - first) / width + QPointF(1.0, 0.0), line, tolerance);
    }
    return trace;
}

Trace shown_trace(const QPolygonF& shown, double tolerance) {
    Trace trace;
    for (const QPointF& point : shown)
        trace.add(point, 0, tolerance);
    return trace;
}

// How far two traces match: the points of each that the other lacks.
struct Alignment {
    bool is_aligned = false;
    int lost = 0;
    int added = 0;
    int first_line = 0; // of the first point lost

    int missing() const { return lost + added; }
};

Alignment align(const Trace& meant, const Trace& shown, double tolerance) {
    // More consecutive missing points than this make another shape.
    constexpr std::size_t longest_gap = 8;
    Alignment alignment;
    const std::size_t m = meant.points.size();
    const std::size_t s = shown.points.size();
    const auto fits = [&](std::size_t i, std::size_t j) {
        return i < m && j < s && Trace::is_near(meant.points[i], shown.points[j], tolerance);
    };
    std::size_t i = 0;
    std::size_t j = 0;
    std::size_t together = 0;
    while (i < m || j < s) {
        if (fits(i, j)) {
            ++i;
            ++j;
            ++together;
            continue;
        }
        if (alignment.first_line == 0)
            alignment.first_line = meant.lines[std::min(i, m - 1)];
        std::size_t gap = 1;
        while (gap <= longest_gap && !fits(i + gap, j) && !fits(i, j + gap))
            ++gap;
        const bool is_tail = gap > longest_gap && (m - i) + (s - j) <= longest_gap;
        if (gap > longest_gap && !is_tail)
            return alignment;
        const std::size_t lost = is_tail ? m - i : fits(i + gap, j) ? gap : 0;
        const std::size_t added = is_tail ? s - j : lost == 0 ? gap : 0;
        alignment.lost += int(lost);
        alignment.added += int(added);
        i += lost;
        j += added;
    }
    alignment.is_aligned = together > 0;
    return alignment;
}

double longest_edge(const std::vector<QPointF>& points) {
    double longest = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        longest = std::max(longest, norm(points[i] - points[i - 1]));
    return longest;
}

double distance_to_line(QPointF q, const std::vector<QPointF>& line) {
    double nearest = norm(q - line.front());
    for (std::size_t i = 1; i < line.size(); ++i) {
        const QPointF along = line[i] - line[i - 1];
        const double share = std::clamp(dot(q - line[i - 1], along) / dot(along, along), 0.0, 1.0);
        nearest = std::min(nearest, norm(q - line[i - 1] - share * along));
    }
    return nearest;
}

// The greatest distance of some points of a trace from the lines between those of another.
double distance_off(const Trace& trace, const Trace& line) {
    constexpr std::size_t most_probes = 300;
    const std::size_t step = trace.points.size() / most_probes + 1;
    double greatest = 0.0;
    for (std::size_t i = 0; i < trace.points.size(); i += step)
        greatest = std::max(greatest, distance_to_line(trace.points[i], line.points));
    return greatest;
}

QString points_text(int count) {
    return count == 1 ? QStringLiteral("1 point") : QStringLiteral("%1 points").arg(count);
}

const Finding* first_error(const QList<Finding>& findings) {
    const auto error = std::find_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.gravity == Gravity::error;
    });
    return error == findings.end() ? nullptr : &*error;
}

} // namespace

QString verdict_name(Verdict verdict) {
    switch (verdict) {
    case Verdict::ok:
        return QStringLiteral("ok");
    case Verdict::convert:
        return QStringLiteral("convert");
    case Verdict::ask:
        return QStringLiteral("ask");
    case Verdict::bad:
        break;
    }
    return QStringLiteral("bad");
}

QString difference_shown(const Table& table, const QPolygonF& shown, int* line) {
    *line = 0;
    if (shown.isEmpty())
        return QStringLiteral("the window shows nothing");
    if (std::any_of(shown.begin(), shown.end(), [](const QPointF& point) {
            return !std::isfinite(point.x()) || !std::isfinite(point.y());
        }))
        return QStringLiteral("the window shows nan");
    constexpr double single_precision = 2.5e-7;
    const Width width(table.points);
    const double tolerance = 1e-6 + single_precision * width.farthest / width.width;
    const Trace seen = shown_trace(shown, tolerance);
    const Trace meant = meant_trace(table, false, width.width, tolerance);

    const Trace backwards = meant_trace(table, true, width.width, tolerance);
    const auto aligned = [&](double within) {
        const Alignment one = align(meant, seen, within);
        const Alignment other = align(backwards, seen, within);
        return other.is_aligned && (!one.is_aligned || other.missing() < one.missing()) ? other
                                                                                        : one;
    };
    const Alignment exact = aligned(tolerance);
    if (exact.is_aligned && exact.missing() == 0)
        return QString();
    constexpr double diagonal = 0.5;
    if (longest_edge(seen.points) > std::max(diagonal, 1.5 * longest_edge(meant.points)))
        return QStringLiteral("the window draws a diagonal");
    // Points lost at an end change the scale of the others.
    constexpr double other_scale = 5e-3;
    const Alignment alignment = exact.is_aligned ? exact : aligned(other_scale);
    const auto off = [](double distance) { return QString::number(distance, 'g', 2); };
    if (!alignment.is_aligned || (alignment.lost > 0) == (alignment.added > 0)) {
        return QStringLiteral("the window shows another shape, up to %1 off")
            .arg(off(std::max(distance_off(meant, seen), distance_off(seen, meant))));
    }
    const bool is_loss = alignment.lost > 0;
    if (is_loss)
        *line = alignment.first_line;
    QString text = is_loss ? QStringLiteral("the window loses %1").arg(points_text(alignment.lost))
                           : QStringLiteral("the window adds %1").arg(points_text(alignment.added));
    if (!exact.is_aligned) {
        text += QStringLiteral(", the others are up to %1 off")
                    .arg(off(is_loss ? distance_off(seen, meant) : distance_off(meant, seen)));
    }
    return text;
}

Judgement judge_table(const QByteArray& bytes, const Table& table) {
    Judgement judgement;
    judgement.findings = table.findings;
    if (table.readable())
        judgement.findings += shape_findings(table);
    if (const Finding* error = first_error(judgement.findings)) {
        const bool is_open = !table.candidates.isEmpty() ||
                             (!table.readable() && error->text.contains(QLatin1String("--")));
        judgement.verdict = is_open ? Verdict::ask : Verdict::bad;
        judgement.reason = error->text;
        judgement.line = error->line;
        return judgement;
    }
    judgement.reason = difference_shown(table, airfoil_Read_Bytes(bytes), &judgement.line);
    judgement.verdict = judgement.reason.isEmpty() ? Verdict::ok : Verdict::convert;
    return judgement;
}

} // namespace sections
