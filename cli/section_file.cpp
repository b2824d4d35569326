// SPDX-FileCopyrightText: Aerolith developers
#include "cli/section_file.h"

#include "cli/formats.h"
#include "document/splinebytes.h"

namespace cli {

namespace {

QString kind_name(tables::Kind kind) {
    switch (kind) {
    case tables::Kind::section:
        return QStringLiteral("section");
    case tables::Kind::single_skin:
        return QStringLiteral("single-skin");
    case tables::Kind::flat:
        return QStringLiteral("flat");
    }
    return {};
}

SectionFile spline_file(const QByteArray& bytes) {
    SectionFile file;
    file.judgement = sections::judge_spline(bytes);
    file.layout = QString::fromLatin1(spline_format);
    if (file.judgement.verdict == sections::Verdict::bad)
        return file;
    ParaStruct record;
    read_spline_bytes(bytes, record);
    file.kind = kind_name(tables::Kind::section);
    file.points = record.spline.point_count();
    file.openings = tables::Openings{record.spline.startVent, record.spline.endVent};
    return file;
}

} // namespace

SectionFile read_section_file(const QByteArray& bytes, const tables::ReadOptions& options) {
    if (sections::is_spline_file(bytes))
        return spline_file(bytes);
    const tables::Table table = tables::read(bytes, options);
    SectionFile file;
    file.judgement = sections::judge_table(bytes, table);
    file.layout = table.layout;
    file.candidates = table.candidates;
    if (!table.readable())
        return file;
    file.kind = kind_name(table.kind);
    file.points = int(table.points.size());
    file.openings = table.openings;
    file.outline = table.points;
    return file;
}

} // namespace cli
