// SPDX-FileCopyrightText: Aerolith developers
// What each file is, and what the window makes of it.
#include "cli/shown.h"
#include "cli/verb.h"
#include "tables/table.h"

namespace cli {

namespace {

class Check : public Work {
public:
    Outcome process(const Source& source) const override {
        const tables::Table table = tables::read(source.bytes);
        const std::string verdict = table.readable() ? "ok" : "bad";
        Outcome outcome;
        outcome.text = column(verdict, 8) + column(shown(table.layout), 16) +
                       right_column(std::to_string(table.points.size()), 6) + "  " + source.name +
                       "\n";
        for (const tables::Finding& finding : table.findings)
            outcome.text += source.name +
                            (finding.line > 0 ? ":" + std::to_string(finding.line) : "") + ": " +
                            shown(finding.text) + "\n";
        outcome.failed = !table.readable();
        outcome.json.insert(QStringLiteral("verdict"), QString::fromStdString(verdict));
        return outcome;
    }
};

} // namespace

extern const Verb verb_check;
const Verb verb_check = {
    "check",
    "tells what each file is, and what the window makes of it",
    "FILE...",
    "Prints a line for each file.",
    "check wings/ --json",
    [](const Options& /*options*/) -> std::unique_ptr<Work> { return std::make_unique<Check>(); },
};

} // namespace cli
