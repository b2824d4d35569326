// SPDX-FileCopyrightText: Aerolith developers
#include "cli/spline_table.h"

#include "document/frames.h"
#include "document/splinebytes.h"
#include "sections/curve.h"
#include "sections/plane.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

constexpr double flatness = 2e-5;

double distance_from_line(QPointF p, QPointF a, QPointF b) {
    const QPointF along = b - a;
    const double length = sections::dot(along, along);
    const double t =
        length > 0.0 ? std::clamp(sections::dot(p - a, along) / length, 0.0, 1.0) : 0.0;
    return sections::norm(p - a - t * along);
}

double greatest_distance(const QPolygonF& samples, const QPolygonF& lines) {
    double greatest = 0.0;
    for (const QPointF& sample : samples) {
        double least = std::numeric_limits<double>::infinity();
        for (qsizetype i = 1; i < lines.size(); ++i)
            least = std::min(least, distance_from_line(sample, lines[i - 1], lines[i]));
        greatest = std::max(greatest, least);
    }
    return greatest;
}

} // namespace

SplineTable table_of_spline(const QByteArray& bytes) {
    SplineTable result;
    ParaStruct file;
    read_spline_bytes(bytes, file);
    const std::optional<SplineFoil> spline = in_chord_units(file.spline);
    if (!spline) {
        result.reason = QStringLiteral("a spline that never comes to rest on the chord");
        return result;
    }
    const sections::CurveResult curve = sections::spline_curve(*spline);
    result.reason = curve.reason;
    if (!result.reason.isEmpty())
        return result;
    result.table.layout = QStringLiteral("spl");
    result.table.points = curve.curve.polyline(flatness);
    if (spline->startVent != 0.0 || spline->endVent != 0.0)
        result.table.openings = tables::Openings{spline->startVent, spline->endVent};
    result.off_curve = greatest_distance(spline->make_SplinePoly(), result.table.points);
    return result;
}

QByteArray with_openings(QByteArray bytes, tables::Openings openings) {
    constexpr qsizetype behind_name = 3380;
    const auto length = qFromBigEndian<quint32>(bytes.constData());
    const qsizetype name = length == 0xffffffffU ? 0 : qsizetype(length);
    qToBigEndian(openings.start, bytes.data() + behind_name + name);
    qToBigEndian(openings.end, bytes.data() + behind_name + name + qsizetype(sizeof(double)));
    return bytes;
}

} // namespace cli
