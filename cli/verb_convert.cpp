// SPDX-FileCopyrightText: Aerolith developers
// From any section file to any other.
#include "cli/findings.h"
#include "cli/formats.h"
#include "cli/shown.h"
#include "cli/verb.h"
#include "tables/table.h"
#include "tables/write.h"

namespace cli {

namespace {

class Convert : public Work {
public:
    explicit Convert(const Options& given)
        : options(given), chosen(choose_format(given.to, given.output == "-" ? "" : given.output)) {
        reading.layout = QString::fromStdString(given.layout);
        reading.element = given.element;
        writing.close_gap = given.close_gap;
        writing.normalize = given.normalize;
        writing.reverse = given.reverse;
        writing.decimals = given.decimals;
        if (!given.openings.empty())
            writing.openings = tables::Openings{given.openings[0], given.openings[1]};
    }

    std::string refusal() const override {
        if (!chosen.refusal.empty())
            return chosen.refusal;
        if (writing.openings && writing.openings->start > writing.openings->end)
            return "--openings: the intake begins behind its end";
        return {};
    }

    std::string ending() const override { return ending_of_format(chosen.name); }

    Outcome process(const Source& source) const override {
        Outcome outcome;
        tables::Table table = tables::read(source.bytes, reading);
        QList<tables::Finding> findings = table.findings;
        if (table.readable())
            outcome.output = converted(source, table, findings);
        outcome.failed = !outcome.output || has_doubt(findings);
        outcome.notes = finding_lines(source.name, findings);
        outcome.json = {{QStringLiteral("layout"), table.layout},
                        {QStringLiteral("points"), table.points.size()},
                        {QStringLiteral("findings"), finding_array(findings)}};
        if (!outcome.output)
            return outcome;
        outcome.text = result_line(source, table);
        outcome.json.insert(QStringLiteral("format"), QString::fromStdString(chosen.name));
        outcome.json.insert(QStringLiteral("output"), QString::fromStdString(shown(source.output)));
        if (shown(source.output) != source.output)
            outcome.json.insert(
                QStringLiteral("output_hex"),
                QString::fromLatin1(QByteArray::fromStdString(source.output).toHex()));
        return outcome;
    }

private:
    // None where the findings say why.
    std::optional<QByteArray> converted(const Source& source, tables::Table& table,
                                        QList<tables::Finding>& findings) const {
        const std::optional<tables::Format> format = table_format(chosen.name);
        if (!format) {
            findings.append({tables::Gravity::error, 0,
                             QStringLiteral("a table; only spline files are written as splines")});
            return std::nullopt;
        }
        if (table.title.isEmpty())
            table.title = QString::fromStdString(shown(title_of_name(source.input)));
        const tables::Written written = tables::write(table, *format, writing);
        findings += written.findings;
        return written.ok() ? std::optional(written.bytes) : std::nullopt;
    }

    static std::string title_of_name(const Input& input) {
        if (input.is_standard_input())
            return {};
        const std::string name = input.path.substr(input.path.rfind('/') + 1);
        return name.substr(0, name.rfind('.'));
    }

    std::string result_line(const Source& source, const tables::Table& table) const {
        std::string line = column(table.layout.toStdString(), 16) + " " + column(chosen.name, 9) +
                           right_column(std::to_string(table.points.size()), 6) + "  ";
        return line + source.name + " -> " + shown(source.output) + "\n";
    }

    const Options options;
    const Chosen chosen;
    tables::ReadOptions reading;
    tables::WriteOptions writing;
};

} // namespace

extern const Verb verb_convert;
const Verb verb_convert = {
    "convert",
    "writes section files in another format",
    "FILE...",
    "Writes each file in another format. The default is a table that the window of aerolith shows "
    "as the file means it. Prints for each file its layout, the format written, the number of "
    "points and the names; what was put right on the way is said on standard error.",
    "convert wings/ --dir readable --to selig --decimals 6",
    [](const Options& options) -> std::unique_ptr<Work> {
        return std::make_unique<Convert>(options);
    },
};

} // namespace cli
