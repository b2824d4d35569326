// SPDX-FileCopyrightText: Aerolith developers
#include "cli/spline_table.h"

#include "document/frames.h"
#include "document/splinebytes.h"
#include "sections/resample.h"

#include <QtEndian>

#include <optional>

namespace cli {

namespace {

constexpr int point_count = 201;

} // namespace

SplineTable table_of_spline(const QByteArray& bytes) {
    SplineTable result;
    ParaStruct file;
    read_spline_bytes(bytes, file);
    const std::optional<SplineFoil> spline = in_chord_units(file.spline);
    if (!spline) {
        result.reason = QStringLiteral("the spline never settles on the chord");
        return result;
    }
    const sections::CurveResult curve = sections::spline_curve(*spline);
    result.reason = curve.reason;
    if (!result.reason.isEmpty())
        return result;
    result.table.layout = QStringLiteral("spl");
    const sections::Resampled resampled =
        sections::resample(curve.curve, point_count, sections::Spacing::curvature);
    result.reason = resampled.reason;
    result.table.points = resampled.points;
    result.off_curve = resampled.off;
    result.curve = curve.curve;
    if (spline->startVent != 0.0 || spline->endVent != 0.0)
        result.table.openings = tables::Openings{spline->startVent, spline->endVent};
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
