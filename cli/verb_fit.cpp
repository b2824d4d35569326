// SPDX-FileCopyrightText: Aerolith developers
// The verb fit: the best spline for each table.
#include "cli/findings.h"
#include "cli/report_rows.h"
#include "cli/shown.h"
#include "cli/verb.h"
#include "document/splinebytes.h"
#include "fitting/fit.h"
#include "sections/shape.h"
#include "sections/verdict.h"

#include <QJsonArray>

namespace cli {

namespace {

std::string short_number(double number) {
    return QByteArray::number(number, 'e', 2).toStdString();
}

// The base name of an input, as the file name of its spline.
QString name_of(const Input& input) {
    if (input.is_standard_input())
        return {};
    const std::string name = input.path.substr(input.path.rfind('/') + 1);
    return QString::fromStdString(shown(name.substr(0, name.rfind('.'))));
}

class FitTables : public Work {
public:
    explicit FitTables(const Options& given) : options(given) {
        reading.layout = QString::fromStdString(given.layout);
        reading.element = given.element;
        request.points = given.points;
        if (given.best && given.points == 0 && given.tolerance <= 0.0)
            request.points = fitting::most_points;
        if (given.tolerance > 0.0)
            request.tolerance = given.tolerance;
        request.best = given.best;
        if (given.symmetric)
            request.ends = fitting::Ends::symmetric;
        else if (given.closed)
            request.ends = fitting::Ends::closed;
    }

    std::string refusal() const override {
        if (options.points > 0 && options.tolerance > 0.0)
            return "--points and --tolerance cannot be combined";
        if (options.symmetric && options.closed)
            return "--symmetric and --closed cannot be combined";
        if (!options.openings.empty() && options.openings[0] > options.openings[1])
            return "--openings: A must not exceed B";
        return {};
    }

    std::string extension() const override { return ".spl"; }

    ReportStyle report_style() const override { return fit_style(request.tolerance); }

    Outcome process(const Source& source) const override {
        const tables::Table table = table_of(source.bytes);
        QList<tables::Finding> findings = table.findings;
        fitting::Fit fit;
        if (table.readable()) {
            fitting::Request wanted = request;
            wanted.openings = openings_of(table);
            fit = fitting::fit(table.points, wanted);
            findings += fit.findings;
            if (!fit.reason.isEmpty())
                findings.append({tables::Gravity::error, 0, fit.reason});
        }
        const bool is_fitted = table.readable() && fit.reason.isEmpty();
        Outcome outcome =
            outcome_of(source, table.layout, table.points.size(), findings, is_fitted);
        if (!is_fitted)
            return outcome;
        ParaStruct record;
        record.spline = fit.spline;
        record.spline.airfoilName = name_of(source.input);
        outcome.output = spline_bytes(record);
        outcome.text = text_of(source, fit);
        put_numbers(fit, outcome.json);
        if (!options.report.empty())
            outcome.row = fit_row(fit, table.points, request.tolerance);
        outcome.json.insert(QStringLiteral("output"), QString::fromStdString(shown(source.output)));
        if (shown(source.output) != source.output)
            outcome.json.insert(
                QStringLiteral("output_hex"),
                QString::fromLatin1(QByteArray::fromStdString(source.output).toHex()));
        return outcome;
    }

private:
    tables::Table table_of(const QByteArray& bytes) const {
        tables::Table table;
        if (sections::is_spline_file(bytes)) {
            table.layout = QStringLiteral("spl");
            table.findings.append({tables::Gravity::error, 0,
                                   QStringLiteral("a spline file, expected a table of points")});
            return table;
        }
        table = tables::read(bytes, reading);
        if (table.readable())
            table.findings += sections::shape_findings(table);
        if (table.readable() && table.kind == tables::Kind::flat)
            table.findings.append(
                {tables::Gravity::error, 0,
                 QStringLiteral("a flat rib has no thickness; no spline can be fitted")});
        return table;
    }

    tables::Openings openings_of(const tables::Table& table) const {
        if (!options.openings.empty())
            return {options.openings[0], options.openings[1]};
        return table.openings.value_or(tables::Openings{});
    }

    std::string text_of(const Source& source, const fitting::Fit& fit) const {
        const fitting::Deviation& d = fit.deviation;
        return right_column(std::to_string(fit.spline.num_pnt), 2) + " points" +
               (fit.holds ? "  " : " !") + "largest " + short_number(d.largest) + " at x " +
               QByteArray::number(d.largest_at.x(), 'f', 3).toStdString() + ", rms " +
               short_number(d.root_mean_square) + ", upper " + short_number(d.largest_upper) +
               ", lower " + short_number(d.largest_lower) + ", outside " +
               std::to_string(d.outside) + " of " + std::to_string(d.points) + "  " + source.name +
               " -> " + shown(source.output) + "\n";
    }

    void put_numbers(const fitting::Fit& fit, QJsonObject& object) const {
        const fitting::Deviation& d = fit.deviation;
        const auto put = [&object](const char* name, const QJsonValue& value) {
            object.insert(QString::fromLatin1(name), value);
        };
        put("control_points", fit.spline.num_pnt);
        put("tolerance", request.tolerance);
        put("within_tolerance", fit.holds);
        put("largest", d.largest);
        put("largest_at", QJsonArray{d.largest_at.x(), d.largest_at.y()});
        put("root_mean_square", d.root_mean_square);
        put("largest_upper", d.largest_upper);
        put("largest_lower", d.largest_lower);
        put("largest_between", d.largest_between);
        put("outside", d.outside);
        put("noise", fit.noise);
        put("reversals", fit.reversals);
        put("table_reversals", fit.table_reversals);
        put("least_distance", fit.least_leg);
        put("openings", QJsonArray{fit.spline.startVent, fit.spline.endVent});
    }

    const Options options;
    tables::ReadOptions reading;
    fitting::Request request;
};

} // namespace

extern const Verb verb_fit;
const Verb verb_fit = {
    "fit",
    "fits a spline to each table",
    "FILE...",
    "Fits a spline to each table and writes it to a file. By default it uses as few control points "
    "as keep every point of the table within 4e-4 of the chord over the first 20 % of the chord "
    "and within 8e-4 beyond that; --points, --tolerance and --best change this. Prints how far the "
    "points of the table lie from the written spline, as the window shows both: the largest "
    "distance and where it is, the root mean square, the largest distance on each side, and the "
    "number of points outside the tolerance.",
    "fit wings/ --dir splines --points 20",
    make_work<FitTables>,
};

} // namespace cli
