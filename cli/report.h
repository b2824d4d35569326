// SPDX-FileCopyrightText: Aerolith developers
// The page of `--report`.
#pragma once

#include "cli/report_row.h"
#include "cli/verb.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// Gathers the outcomes of a run. What it keeps grows with the page alone.
class Report {
public:
    explicit Report(ReportStyle given) : style(std::move(given)), page(style.settings) {}

    /// Adds an input after those before.
    /// @param name as it may be shown
    void add(const std::string& name, const Outcome& outcome);

    /// The whole page.
    QByteArray bytes() const;

private:
    struct Main {
        double number = 0.0;
        QString name;
    };

    std::vector<drawings::Fact> facts() const;

    const ReportStyle style;
    drawings::HtmlPage page;
    std::map<QString, int> counts; // By the state.
    std::vector<double> numbers;   // Of the main column.
    Main worst;
    int files = 0;
    int doubtful = 0;
};

/// Why the report cannot be written to Options::report, empty when it can: it is standard output,
/// a folder, in no folder, an input or another output, or exists without Options::force.
/// @param read    all files that the run reads
/// @param outputs names of its other outputs
std::string report_refusal(const Options& options, const std::vector<std::string>& read,
                           const std::vector<std::string>& outputs);

} // namespace cli
