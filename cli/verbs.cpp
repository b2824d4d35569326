// SPDX-FileCopyrightText: Aerolith developers
// The table of verbs.
#include "cli/findings.h"
#include "cli/verb.h"

namespace cli {

extern const Verb verb_check;
extern const Verb verb_compare;
extern const Verb verb_convert;
extern const Verb verb_draw;
extern const Verb verb_fit;
extern const Verb verb_measure;

const std::vector<const Verb*>& verbs() {
    static const std::vector<const Verb*> table = {&verb_check,   &verb_convert, &verb_compare,
                                                   &verb_measure, &verb_fit,     &verb_draw};
    return table;
}

const Verb* verb_named(const std::string& name) {
    for (const Verb* verb : verbs()) {
        if (name == verb->name)
            return verb;
    }
    return nullptr;
}

Outcome outcome_of(const Source& source, const QString& layout, qsizetype points,
                   const QList<tables::Finding>& findings, bool is_done) {
    Outcome outcome;
    outcome.failed = !is_done || has_doubt(findings);
    outcome.notes = finding_lines(source.name, findings);
    outcome.json = {{QStringLiteral("layout"), layout},
                    {QStringLiteral("points"), points},
                    {QStringLiteral("findings"), finding_array(findings)}};
    return outcome;
}

Outcome Work::unreadable(const Source& source, const std::string& error) const {
    Outcome outcome;
    outcome.notes = source.name + ": " + error + "\n";
    outcome.json.insert(QStringLiteral("error"), QString::fromStdString(error));
    outcome.failed = true;
    return outcome;
}

} // namespace cli
