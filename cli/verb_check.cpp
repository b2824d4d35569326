// SPDX-FileCopyrightText: Aerolith developers
// The verb check: what each file is and how the window shows it.
#include "cli/findings.h"
#include "cli/report_rows.h"
#include "cli/section_file.h"
#include "cli/shown.h"
#include "cli/verb.h"
#include "sections/verdict.h"

#include <QJsonArray>

#include <map>

namespace cli {

namespace {

using sections::Verdict;

constexpr int reason_width = 40;

std::string name_of(Verdict verdict) {
    return sections::verdict_name(verdict).toStdString();
}

// The text cut to its column; the findings below repeat it in full.
std::string shortened(const std::string& text) {
    if (length_of(text) <= reason_width)
        return text;
    const QString whole = QString::fromStdString(text);
    return (whole.left(reason_width - 3) + QStringLiteral("...")).toStdString();
}

class Check : public Work {
public:
    explicit Check(const Options& given) : options(given) {
        reading.layout = QString::fromStdString(given.layout);
        reading.element = given.element;
    }

    Outcome process(const Source& source) const override {
        return outcome_of(source, read_section_file(source.bytes, reading));
    }

    Outcome unreadable(const Source& source, const std::string& error) const override {
        SectionFile file;
        file.judgement.reason = QString::fromStdString(error);
        file.judgement.findings = {{tables::Gravity::error, 0, file.judgement.reason}};
        return outcome_of(source, file);
    }

    void collect(const Outcome& outcome) override {
        ++files;
        ++counts[outcome.summary_key];
        doubtful += outcome.json[QStringLiteral("doubtful")].toBool() ? 1 : 0;
    }

    ReportStyle report_style() const override { return check_style(); }

    std::string summary() const override {
        std::string text = std::to_string(files) + (files == 1 ? " file: " : " files: ");
        bool first = true;
        for (const Verdict verdict : {Verdict::ok, Verdict::convert, Verdict::ask, Verdict::bad}) {
            const auto count = counts.find(name_of(verdict));
            text += (first ? "" : ", ") +
                    std::to_string(count == counts.end() ? 0 : count->second) + " " +
                    name_of(verdict);
            first = false;
        }
        return text + "; " + std::to_string(doubtful) + " doubtful\n";
    }

private:
    Outcome outcome_of(const Source& source, const SectionFile& file) const {
        const sections::Judgement& judged = file.judgement;
        const bool is_doubtful = has_doubt(judged.findings);
        const std::string verdict = name_of(judged.verdict);
        const std::string reason = shown(judged.reason);
        Outcome outcome;
        outcome.summary_key = verdict;
        outcome.failed = is_doubtful || judged.verdict == Verdict::ask ||
                         judged.verdict == Verdict::bad ||
                         (options.strict && judged.verdict == Verdict::convert);
        outcome.text = column(verdict, 8) + column(shown(file.layout), 12) +
                       right_column(std::to_string(file.points), 5) + "  ";
        // On a narrow terminal the reason goes below the line.
        const int whole_line = 27 + reason_width + 2 + length_of(source.name);
        const bool is_narrow = options.width > 0 && whole_line > options.width;
        if (is_narrow)
            outcome.text += source.name + "\n" + wrapped(reason, options.width, 8);
        else
            outcome.text += column(shortened(reason), reason_width) + "  " + source.name + "\n";
        outcome.text += finding_lines(source.name, judged.findings);
        outcome.json = json_of(file);
        outcome.json.insert(QStringLiteral("doubtful"), is_doubtful);
        if (!options.report.empty())
            outcome.row = check_row(file, source.bytes);
        return outcome;
    }

    static QJsonObject json_of(const SectionFile& file) {
        QJsonObject object = {
            {QStringLiteral("verdict"), QString::fromStdString(name_of(file.judgement.verdict))},
            {QStringLiteral("layout"), file.layout},
            {QStringLiteral("kind"), file.kind},
            {QStringLiteral("points"), file.points},
            {QStringLiteral("reason"), file.judgement.reason},
            {QStringLiteral("candidates"), QJsonArray::fromStringList(file.candidates)},
            {QStringLiteral("findings"), finding_array(file.judgement.findings)}};
        if (file.openings)
            object.insert(QStringLiteral("openings"),
                          QJsonArray{file.openings->start, file.openings->end});
        return object;
    }

    const Options options;
    tables::ReadOptions reading;
    std::map<std::string, int> counts;
    int files = 0;
    int doubtful = 0;
};

} // namespace

extern const Verb verb_check;
const Verb verb_check = {
    "check",
    "says what each file is and how the window shows it",
    "FILE...",
    "Prints one line for each file: the verdict, the layout, the number of points, the reason and "
    "the name. The findings follow, each with its line number. The verdict is ok if the Aerolith "
    "window shows what the file means, convert if it does so only after conversion, ask if two "
    "layouts fit and --layout must decide, and bad if the file holds no section.",
    "check wings/ --strict",
    make_work<Check>,
};

} // namespace cli
