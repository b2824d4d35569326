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

/// Collects the outcomes of a run. Its memory grows only with the page.
class Report {
public:
    explicit Report(ReportStyle given) : style(std::move(given)), page(style.settings) {}

    /// Appends a row for an input.
    /// @param name escaped for display
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
    std::map<QString, int> counts; // By state.
    std::vector<double> numbers;   // Of the main column.
    Main worst;
    int files = 0;
    int doubtful = 0;
};

/// Why the report cannot be written to Options::report; empty if it can. Refuses standard output,
/// folders, files in missing folders, inputs, other outputs, and existing files without
/// Options::force.
/// @param read    all files that the run reads
/// @param outputs names of the other outputs
std::string report_refusal(const Options& options, const std::vector<std::string>& read,
                           const std::vector<std::string>& outputs);

} // namespace cli
