// SPDX-FileCopyrightText: Aerolith developers
#include "cli/findings.h"

#include "cli/shown.h"

#include <QJsonObject>

#include <algorithm>

namespace cli {

namespace {

bool has_gravity(const QList<tables::Finding>& findings, tables::Gravity gravity) {
    return std::any_of(findings.begin(), findings.end(), [gravity](const tables::Finding& finding) {
        return finding.gravity == gravity;
    });
}

} // namespace

std::string finding_lines(const std::string& name, const QList<tables::Finding>& findings) {
    std::string lines;
    for (const tables::Finding& finding : findings) {
        lines += name;
        if (finding.line > 0)
            lines += ":" + std::to_string(finding.line);
        lines += finding.gravity == tables::Gravity::doubt ? ": doubtful: " : ": ";
        lines += shown(finding.text) + "\n";
    }
    return lines;
}

QJsonArray finding_array(const QList<tables::Finding>& findings) {
    const auto name_of = [](tables::Gravity gravity) {
        switch (gravity) {
        case tables::Gravity::note:
            return QStringLiteral("note");
        case tables::Gravity::doubt:
            return QStringLiteral("doubt");
        case tables::Gravity::error:
            return QStringLiteral("error");
        }
        return QString();
    };
    QJsonArray array;
    for (const tables::Finding& finding : findings) {
        QJsonObject object = {
            {QStringLiteral("gravity"), name_of(finding.gravity)},
            {QStringLiteral("text"), QString::fromStdString(shown(finding.text))}};
        if (finding.line > 0)
            object.insert(QStringLiteral("line"), finding.line);
        array.append(object);
    }
    return array;
}

bool has_doubt(const QList<tables::Finding>& findings) {
    return has_gravity(findings, tables::Gravity::doubt);
}

bool has_error(const QList<tables::Finding>& findings) {
    return has_gravity(findings, tables::Gravity::error);
}

} // namespace cli
