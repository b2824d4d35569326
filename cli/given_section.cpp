// SPDX-FileCopyrightText: Aerolith developers
#include "cli/given_section.h"

#include "cli/findings.h"
#include "cli/formats.h"
#include "document/frames.h"
#include "document/splinebytes.h"
#include "sections/shape.h"
#include "sections/verdict.h"

namespace cli {

namespace {

void take(GivenSection& given, const sections::SectionResult& result) {
    given.section = result.section;
    if (!result.section)
        given.findings.append({tables::Gravity::error, 0, result.reason});
}

GivenSection given_spline(const QByteArray& bytes) {
    GivenSection given;
    given.layout = QString::fromLatin1(spline_format);
    const sections::Judgement judgement = sections::judge_spline(bytes);
    given.findings = judgement.findings;
    if (has_error(given.findings))
        return given;
    ParaStruct file;
    read_spline_bytes(bytes, file);
    given.points = file.spline.point_count();
    if (const std::optional<SplineFoil> spline = in_chord_units(file.spline))
        take(given, sections::section_of_spline(*spline));
    else
        take(given, {std::nullopt, QStringLiteral("the spline never settles on the chord")});
    return given;
}

} // namespace

GivenSection given_section(const QByteArray& bytes, const tables::ReadOptions& options) {
    if (sections::is_spline_file(bytes))
        return given_spline(bytes);
    GivenSection given;
    const tables::Table table = tables::read(bytes, options);
    given.layout = table.layout;
    given.findings = table.findings;
    if (!table.readable())
        return given;
    given.points = int(table.points.size());
    given.findings += sections::shape_findings(table);
    if (!has_error(given.findings))
        take(given, sections::section_of_table(table));
    return given;
}

} // namespace cli
