// SPDX-FileCopyrightText: Aerolith developers
// The verb compare: how far sections lie from a reference.
#include "cli/findings.h"
#include "cli/given_section.h"
#include "cli/lengths.h"
#include "cli/report_rows.h"
#include "cli/shown.h"
#include "cli/verb.h"
#include "sections/compare.h"

#include <QJsonArray>

#include <cmath>

namespace cli {

namespace {

using sections::Comparison;
using sections::Deviation;
using sections::OneWay;
using sections::SideDeviation;

class Compare : public Work {
public:
    explicit Compare(const Options& given) : options(given), lengths(given.chord) {
        reading.layout = QString::fromStdString(given.layout);
        reading.element = given.element;
    }

    bool takes_reference() const override { return true; }

    std::string take_reference(const Source& source) override {
        reference = given_section(source.bytes, reading);
        return finding_lines(source.name, reference.findings);
    }

    bool has_reference() const override { return reference.section.has_value(); }

    ReportStyle report_style() const override { return compare_style(lengths, options.tolerance); }

    Outcome process(const Source& source) const override {
        const GivenSection given = given_section(source.bytes, reading);
        Outcome outcome;
        outcome.failed = !given.section || has_doubt(given.findings);
        outcome.notes = finding_lines(source.name, given.findings);
        outcome.json = {{QStringLiteral("layout"), given.layout},
                        {QStringLiteral("findings"), finding_array(given.findings)}};
        if (!given.section)
            return outcome;
        const Comparison c = sections::compare(*reference.section, *given.section, options.align);
        const bool missed =
            options.tolerance > 0.0 && lengths.length(c.greatest()) > options.tolerance;
        outcome.failed = outcome.failed || missed;
        outcome.text = text_of(c, missed, source.name);
        put_numbers(c, missed, outcome.json);
        if (!options.report.empty())
            outcome.row =
                compare_row(c, *reference.section, *given.section, lengths, options.tolerance);
        return outcome;
    }

private:
    std::string text_of(const Comparison& c, bool missed, const std::string& name) const;
    void put_numbers(const Comparison& c, bool missed, QJsonObject& object) const;

    static std::string range_name(std::size_t range) {
        const auto end = [](double x) { return std::to_string(std::lround(100.0 * x)); };
        return end(sections::range_ends[range]) + "-" + end(sections::range_ends[range + 1]) + " %";
    }

    std::string fields_of(const Deviation& d) const {
        if (!(d.length > 0.0))
            return right_column("-", 12) + right_column("", 11) + right_column("-", 11);
        return right_column(lengths.signed_text(d.greatest), 12) +
               right_column(percent(d.station), 11) +
               right_column(lengths.text(d.root_mean_square()), 11);
    }

    std::string row(const std::string& label, const Deviation& to, const Deviation& from) const {
        return "  " + column(label, 14) + fields_of(to) + "  " + fields_of(from) + "\n";
    }

    QJsonObject json_of(const Deviation& d) const {
        return {{QStringLiteral("greatest"), lengths.length(d.greatest)},
                {QStringLiteral("station"), 100.0 * d.station},
                {QStringLiteral("rms"), lengths.length(d.root_mean_square())},
                {QStringLiteral("length"), lengths.length(d.length)}};
    }

    QJsonObject json_of(const SideDeviation& side) const {
        QJsonObject object = json_of(side.whole);
        QJsonArray ranges;
        for (std::size_t i = 0; i < side.ranges.size(); ++i) {
            QJsonObject range = json_of(side.ranges[i]);
            range.insert(QStringLiteral("from"), 100.0 * sections::range_ends[i]);
            range.insert(QStringLiteral("to"), 100.0 * sections::range_ends[i + 1]);
            ranges.append(range);
        }
        object.insert(QStringLiteral("ranges"), ranges);
        return object;
    }

    QJsonObject json_of(const OneWay& way) const {
        return {{QStringLiteral("upper"), json_of(way.upper)},
                {QStringLiteral("lower"), json_of(way.lower)}};
    }

    const Options options;
    const Lengths lengths;
    tables::ReadOptions reading;
    GivenSection reference;
};

std::string Compare::text_of(const Comparison& c, bool missed, const std::string& name) const {
    const std::string unit = lengths.unit();
    std::string text = "farthest " + lengths.text(c.greatest()) + " " + unit +
                       (missed ? ", beyond the tolerance" : "") + "  " + name + "\n";
    if (options.align)
        text += "  aligned: scaled by " + fixed(c.scale, 6) + ", turned by " + fixed(c.angle, 4) +
                " deg\n";
    text += "  " + column(unit, 14) + right_column("to the reference", 34) + "  " +
            right_column("from the reference", 34) + "\n";
    const std::string heads =
        right_column("greatest", 12) + right_column("at", 11) + right_column("rms", 11);
    text += "  " + column("+ is outside", 14) + heads + "  " + heads + "\n";
    const auto side_rows = [&](const std::string& side, const SideDeviation& to,
                               const SideDeviation& from) {
        text += row(side + " side", to.whole, from.whole);
        for (std::size_t i = 0; i < to.ranges.size(); ++i)
            text += row("  " + range_name(i), to.ranges[i], from.ranges[i]);
    };
    side_rows("upper", c.to_reference.upper, c.from_reference.upper);
    side_rows("lower", c.to_reference.lower, c.from_reference.lower);
    text += "  surface longer by " + lengths.signed_text(c.length) + ", upper side " +
            lengths.signed_text(c.upper_length) + ", lower side " +
            lengths.signed_text(c.lower_length) + " " + unit + "\n";
    return text;
}

void Compare::put_numbers(const Comparison& c, bool missed, QJsonObject& object) const {
    object.insert(QStringLiteral("length_unit"), QString::fromLatin1(lengths.unit()));
    object.insert(QStringLiteral("greatest"), lengths.length(c.greatest()));
    object.insert(QStringLiteral("to_reference"), json_of(c.to_reference));
    object.insert(QStringLiteral("from_reference"), json_of(c.from_reference));
    object.insert(QStringLiteral("length_difference"), lengths.length(c.length));
    object.insert(QStringLiteral("upper_length_difference"), lengths.length(c.upper_length));
    object.insert(QStringLiteral("lower_length_difference"), lengths.length(c.lower_length));
    if (options.align)
        object.insert(QStringLiteral("aligned"), QJsonObject{{QStringLiteral("scale"), c.scale},
                                                             {QStringLiteral("angle"), c.angle}});
    if (options.tolerance > 0.0)
        object.insert(QStringLiteral("within_tolerance"), !missed);
}

} // namespace

extern const Verb verb_compare;
const Verb verb_compare = {
    "compare",
    "says how far sections lie from a reference",
    "REFERENCE OTHER...",
    "Compares each further file with the first one, the reference. Their formats may differ. "
    "Prints the greatest distance, its station and the root mean square, in both directions, for "
    "each side and for ranges of the chord. Prints how much longer the surface is than that of the "
    "reference. Sections are compared as the Aerolith window shows them, unless --align is given.",
    "compare rib.txt rib.spl --chord 2850 --tolerance 2",
    make_work<Compare>,
};

} // namespace cli
