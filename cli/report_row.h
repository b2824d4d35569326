// SPDX-FileCopyrightText: Aerolith developers
// What a verb puts into a report.
#pragma once

#include "drawings/html.h"

#include <functional>
#include <vector>

namespace cli {

/// One input in the report. The caller adds its name and its findings.
struct ReportRow {
    drawings::Tag state;
    std::vector<drawings::Cell> cells;
    std::vector<drawings::Picture> pictures;
    QString reason; ///< The first remark; empty for none.
};

/// A result that an input can have.
struct ReportState {
    drawings::Tag tag;
    QString label; ///< In the summary.
};

/// What the report of a verb looks like.
struct ReportStyle {
    drawings::HtmlSettings settings;
    std::vector<ReportState> states; ///< In the order of the summary.
    drawings::Tag failure;           ///< For inputs without a row; one of the states.
    int main_column = -1; ///< The summary gives its worst value and its median; -1 for none.
    std::function<QString(double)> main_text; ///< Formats the numbers of the main column.
};

} // namespace cli
