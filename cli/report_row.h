// SPDX-FileCopyrightText: Aerolith developers
// What a verb puts into a report.
#pragma once

#include "drawings/html.h"

#include <functional>
#include <vector>

namespace cli {

/// One input in the report. Its name and what was found come from the caller.
struct ReportRow {
    drawings::Tag state;
    std::vector<drawings::Cell> cells;
    std::vector<drawings::Picture> pictures;
    QString reason; ///< First of the remarks; empty for none.
};

/// A result that a verb gives.
struct ReportState {
    drawings::Tag tag;
    QString label; ///< In the summary.
};

/// What the report of a verb looks like.
struct ReportStyle {
    drawings::HtmlSettings settings;
    std::vector<ReportState> states; ///< In the order of the summary.
    drawings::Tag failure;           ///< Of an input without a row; one of the states.
    int main_column = -1; ///< The one whose worst number and median the summary gives; -1 for none.
    std::function<QString(double)> main_text; ///< The text of its numbers.
};

} // namespace cli
