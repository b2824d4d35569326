// SPDX-FileCopyrightText: Aerolith developers
// Findings as text and as JSON.
#pragma once

#include "tables/table.h"

#include <QJsonArray>
#include <QList>

#include <string>

namespace cli {

/// A line "name:line: text" for each finding, without the line where it is the whole file.
/// Doubts begin with "doubtful: ", errors and notes with nothing.
std::string finding_lines(const std::string& name, const QList<tables::Finding>& findings);

/// An array of {"gravity", "line", "text"}, without "line" where it is the whole file.
QJsonArray finding_array(const QList<tables::Finding>& findings);

/// Whether one of the findings is a doubt.
bool has_doubt(const QList<tables::Finding>& findings);

/// Whether one of them is an error.
bool has_error(const QList<tables::Finding>& findings);

} // namespace cli
