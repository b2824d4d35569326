// SPDX-FileCopyrightText: Aerolith developers
#include "cli/section_file.h"

#include "cli/findings.h"

namespace cli {

std::string name_of(Verdict verdict) {
    switch (verdict) {
    case Verdict::ok:
        return "ok";
    case Verdict::convert:
        return "convert";
    case Verdict::ask:
        return "ask";
    case Verdict::bad:
        return "bad";
    }
    return {};
}

namespace {

QString name_of(tables::Kind kind) {
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

} // namespace

SectionFile read_section_file(const QByteArray& bytes, const tables::ReadOptions& options) {
    const tables::Table table = tables::read(bytes, options);
    SectionFile file;
    file.layout = table.layout;
    file.findings = table.findings;
    file.candidates = table.candidates;
    if (!table.readable()) {
        file.verdict = table.candidates.isEmpty() ? Verdict::bad : Verdict::ask;
        file.reason = first_error(file.findings);
        return file;
    }
    file.kind = name_of(table.kind);
    file.points = int(table.points.size());
    file.openings = table.openings;
    file.verdict = Verdict::ok;
    return file;
}

} // namespace cli
