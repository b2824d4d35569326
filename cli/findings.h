// SPDX-FileCopyrightText: Aerolith developers
// Findings as text and as JSON.
#pragma once

#include "tables/table.h"

#include <QJsonArray>
#include <QList>

#include <string>

namespace cli {

/// One line "name:line: text" for each finding. The line number is omitted if the finding concerns
/// the whole file. Doubts begin with "doubtful: ".
std::string finding_lines(const std::string& name, const QList<tables::Finding>& findings);

/// An array of {"gravity", "line", "text"}; "line" is omitted if the finding concerns the whole
/// file.
QJsonArray finding_array(const QList<tables::Finding>& findings);

/// Whether one of the findings is a doubt.
bool has_doubt(const QList<tables::Finding>& findings);

/// Whether one of the findings is an error.
bool has_error(const QList<tables::Finding>& findings);

} // namespace cli
