// SPDX-FileCopyrightText: Aerolith developers
// The verb convert: from any section file to any other.
#include "cli/findings.h"
#include "cli/formats.h"
#include "cli/rib_options.h"
#include "cli/rib_work.h"
#include "cli/shown.h"
#include "cli/spline_table.h"
#include "cli/verb.h"
#include "sections/lep_points.h"
#include "sections/shape.h"
#include "sections/verdict.h"
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
            return "--openings: A must not exceed B";
        if (!options.lep_points.empty() && chosen.name != "lep")
            return "--lep-points needs --to lep";
        const std::string drawing = drawing_option(options);
        if (!drawing.empty())
            return drawing + " is only for drawings; use --to dxf, svg or pdf";
        if (options.points > 0 && !options.lep_points.empty())
            return "--points and --lep-points cannot be combined";
        if (options.points > 0 && chosen.name == spline_format)
            return "--points is only for tables, not for --to spl";
        return {};
    }

    std::string extension() const override { return extension_of_format(chosen.name); }

    Outcome process(const Source& source) const override {
        Reading read = reading_of(source.bytes);
        const qsizetype points_read = read.table.points.size();
        if (options.points > 0 && read.table.readable())
            respace(read);
        QList<tables::Finding> findings = read.table.findings;
        std::optional<QByteArray> output;
        if (read.table.readable())
            output = converted(source, read, findings);
        Outcome outcome =
            outcome_of(source, read.table.layout, points_read, findings, output.has_value());
        outcome.output = std::move(output);
        if (!outcome.output)
            return outcome;
        outcome.text = result_line(source, read);
        outcome.json.insert(QStringLiteral("format"), QString::fromStdString(chosen.name));
        outcome.json.insert(QStringLiteral("output"), QString::fromStdString(shown(source.output)));
        if (shown(source.output) != source.output)
            outcome.json.insert(
                QStringLiteral("output_hex"),
                QString::fromLatin1(QByteArray::fromStdString(source.output).toHex()));
        if (read.is_spline || options.points > 0)
            outcome.json.insert(QStringLiteral("off_curve"), read.off_curve);
        return outcome;
    }

private:
    // A file as a table. The points of a spline file are computed.
    struct Reading {
        tables::Table table;
        bool is_spline = false;
        sections::Curve curve; // Of a spline.
        double off_curve = 0.0;
    };

    Reading reading_of(const QByteArray& bytes) const {
        Reading read;
        read.is_spline = sections::is_spline_file(bytes);
        if (!read.is_spline) {
            read.table = tables::read(bytes, reading);
            if (read.table.readable())
                read.table.findings += sections::shape_findings(read.table);
            return read;
        }
        const sections::Judgement judgement = sections::judge_spline(bytes);
        if (judgement.verdict != sections::Verdict::bad) {
            SplineTable spline = table_of_spline(bytes);
            read.table = std::move(spline.table);
            read.curve = std::move(spline.curve);
            read.off_curve = spline.off_curve;
            if (!spline.reason.isEmpty())
                read.table.findings.append({tables::Gravity::error, 0, spline.reason});
        }
        read.table.layout = QString::fromLatin1(spline_format);
        read.table.findings = judgement.findings + read.table.findings;
        return read;
    }

    // The curve for new points, or why there is none.
    static sections::CurveResult curve_of(const Reading& read) {
        return read.is_spline ? sections::CurveResult{read.curve, {}}
                              : sections::table_curve(read.table.points);
    }

    // Replaces the points of the file by new ones. On failure it adds an error to the findings.
    void respace(Reading& read) const {
        const sections::CurveResult curve = curve_of(read);
        const sections::Resampled resampled =
            sections::resample(curve.curve, options.points, spacing_of(options.spacing));
        const QString reason = curve.reason.isEmpty() ? resampled.reason : curve.reason;
        if (!reason.isEmpty()) {
            read.table.findings.append(
                {tables::Gravity::error, 0, QStringLiteral("--points: ") + reason});
            return;
        }
        read.table.points = resampled.points;
        read.table.lines.assign(std::size_t(resampled.points.size()), 0);
        read.off_curve = resampled.off;
    }

    // Nothing if the conversion fails; the findings then say why.
    std::optional<QByteArray> converted(const Source& source, const Reading& read,
                                        QList<tables::Finding>& findings) const {
        const auto refuse = [&](const QString& reason) {
            findings.append({tables::Gravity::error, 0, reason});
            return std::nullopt;
        };
        const std::optional<tables::Format> format = table_format(chosen.name);
        if (!format && !read.is_spline)
            return refuse(
                QStringLiteral("only a spline file can be written as spl; fit a table instead"));
        if (!format) {
            if (options.reverse || options.close_gap || options.normalize)
                return refuse(QStringLiteral("only the openings of a spline file can be changed"));
            return writing.openings ? with_openings(source.bytes, *writing.openings) : source.bytes;
        }
        tables::Table table = read.table;
        if (table.title.isEmpty())
            table.title = QString::fromStdString(shown(title_of_name(source.input)));
        tables::WriteOptions steps = writing;
        if (!options.lep_points.empty()) {
            const std::vector<int>& counts = options.lep_points;
            table.findings.clear();
            table = sections::with_lep_points(tables::arranged(table, steps),
                                              {counts[0], counts[1], counts[2]}, steps.decimals);
            findings += table.findings;
            if (!table.readable())
                return std::nullopt;
            steps = tables::WriteOptions();
            steps.decimals = writing.decimals;
        }
        const tables::Written written = tables::write(table, *format, steps);
        findings += written.findings;
        if (!written.ok())
            return std::nullopt;
        // A spline need not form a section, and rounding to few decimals can destroy a thin one.
        tables::Table again = tables::read(written.bytes);
        if (again.readable())
            again.findings += sections::shape_findings(again);
        for (const tables::Finding& finding : again.findings) {
            if (finding.gravity == tables::Gravity::error)
                return refuse(QStringLiteral("the written rows would not form a section: ") +
                              finding.text);
        }
        return written.bytes;
    }

    static std::string title_of_name(const Input& input) {
        if (input.is_standard_input())
            return {};
        const std::string name = input.path.substr(input.path.rfind('/') + 1);
        return name.substr(0, name.rfind('.'));
    }

    std::string result_line(const Source& source, const Reading& read) const {
        std::string line = column(read.table.layout.toStdString(), 12) + column(chosen.name, 9) +
                           right_column(std::to_string(read.table.points.size()), 5) + "  " +
                           source.name + " -> " + shown(source.output) + "\n";
        if ((read.is_spline && chosen.name != spline_format) || options.points > 0)
            line += "  straight lines between the points are off the curve by at most " +
                    QByteArray::number(read.off_curve, 'e', 1).toStdString() + " chord\n";
        return line;
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
    "Writes each file in another format. The default is a table that the Aerolith window shows as "
    "the file means it. dxf, svg and pdf are ribs at full size for the cutter. Prints one line for "
    "each file: its layout, the format written, the number of points and both names. Reports "
    "corrections on standard error.",
    "convert wings/ --dir readable --to selig --decimals 6",
    [](const Options& options) -> std::unique_ptr<Work> {
        const Chosen chosen =
            choose_format(options.to, options.output == "-" ? "" : options.output);
        if (is_drawing(chosen.name))
            return rib_work(options, chosen.name);
        return std::make_unique<Convert>(options);
    },
};

} // namespace cli
