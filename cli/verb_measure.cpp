// SPDX-FileCopyrightText: Aerolith developers
// The verb measure: the measures of a section.
#include "cli/findings.h"
#include "cli/given_section.h"
#include "cli/lengths.h"
#include "cli/shown.h"
#include "cli/verb.h"
#include "sections/measure.h"

#include <QJsonArray>

namespace cli {

namespace {

using sections::Measures;
using sections::Peak;

constexpr int label_width = 26;
constexpr int value_width = 12;

// Lines of a label, a value with its unit, and details.
class Lines {
public:
    void add(const std::string& label, const std::string& value, const std::string& unit,
             const std::string& more = {}) {
        std::string line = "  " + column(label, label_width) + right_column(value, value_width);
        if (!more.empty())
            line += " " + column(unit, 8) + more;
        else if (!unit.empty())
            line += " " + unit;
        text += line + "\n";
    }

    std::string text;
};

std::string counted(int count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

QJsonArray pair_of(double a, double b) {
    return QJsonArray{a, b};
}

class Measure : public Work {
public:
    explicit Measure(const Options& given) : lengths(given.chord) {
        reading.layout = QString::fromStdString(given.layout);
        reading.element = given.element;
        for (const double station : given.stations)
            stations.push_back(station / 100.0);
    }

    Outcome process(const Source& source) const override {
        const GivenSection given = given_section(source.bytes, reading);
        Outcome outcome = outcome_of(source, given.layout, given.points, given.findings,
                                     given.section.has_value());
        if (!given.section)
            return outcome;
        const Measures m = sections::measure(*given.section, stations);
        for (const QString& note : m.notes)
            outcome.notes += source.name + ": " + note.toStdString() + "\n";
        outcome.text = column(given.layout.toStdString(), 12) +
                       right_column(std::to_string(given.points), 5) + " points, " +
                       counted(given.section->corners, "corner", "corners") + ", " +
                       counted(given.section->straight_edges, "straight edge", "straight edges") +
                       "  " + source.name + "\n" + text_of(*given.section, m);
        put_numbers(*given.section, m, outcome.json);
        return outcome;
    }

private:
    std::string text_of(const sections::Section& section, const Measures& m) const;
    void put_numbers(const sections::Section& section, const Measures& m,
                     QJsonObject& object) const;
    void add_shape(Lines& lines, const sections::Section& section, const Measures& m) const;
    void add_mouth(Lines& lines, const Measures& m) const;
    void add_stations(Lines& lines, const Measures& m) const;

    std::string at(QPointF point) const {
        return "at " + percent(point.x()) + ", height " + lengths.text(point.y());
    }
    QJsonArray point_of(QPointF point) const {
        return pair_of(lengths.length(point.x()), lengths.length(point.y()));
    }

    const Lengths lengths;
    tables::ReadOptions reading;
    std::vector<double> stations;
};

void Measure::add_shape(Lines& lines, const sections::Section& section, const Measures& m) const {
    const auto peak = [&lines](const char* label, const std::optional<Peak>& across,
                               const std::optional<Peak>& upright) {
        if (!across || !upright)
            return;
        lines.add(label, fixed(100.0 * across->size, 3), "%",
                  "at " + percent(across->station) + "; upright " + percent(upright->size, 3) +
                      " at " + percent(upright->station));
    };
    peak("thickness", m.thickness, m.thickness_upright);
    peak("camber", m.camber, m.camber_upright);
    lines.add("height in the window", fixed(100.0 * m.height, 2), "%");
    lines.add("highest point", lengths.text(m.highest.y()), lengths.unit(),
              "at " + percent(m.highest.x()));
    lines.add("lowest point", lengths.text(m.lowest.y()), lengths.unit(),
              "at " + percent(m.lowest.x()));
    if (m.nose) {
        std::string more;
        if (section.is_spline)
            more = "upper " + lengths.text(m.nose->upper) + ", lower " +
                   lengths.text(m.nose->lower) + "; mean over 0.5 % either side";
        lines.add("nose radius", lengths.text(m.nose->radius), lengths.unit(), more);
        if (m.nose->over_thickness_squared)
            lines.add("over thickness squared", fixed(*m.nose->over_thickness_squared, 4), "");
    }
    lines.add("trailing-edge gap", lengths.text(m.trailing_edge_gap), lengths.unit());
    if (m.trailing_edge_angle)
        lines.add("trailing-edge angle", fixed(*m.trailing_edge_angle, 3), "deg");
    if (m.area && m.centroid)
        lines.add("area", lengths.area_text(*m.area), lengths.area_unit(),
                  "centroid " + at(*m.centroid));
}

void Measure::add_mouth(Lines& lines, const Measures& m) const {
    if (!m.mouth)
        return;
    lines.add("panel, over the top", lengths.text(m.mouth->panel_over_top), lengths.unit(),
              "trailing edge to O-1");
    lines.add("panel, behind the mouth", lengths.text(m.mouth->panel_behind), lengths.unit(),
              "O-2 to trailing edge");
    lines.add("mouth along the curve", lengths.text(m.mouth->along), lengths.unit(),
              "O-1 " + at(m.mouth->start));
    lines.add("mouth straight", lengths.text(m.mouth->straight), lengths.unit(),
              "O-2 " + at(m.mouth->end));
    lines.add("mouth to chord line", fixed(m.mouth->angle, 3), "deg");
}

void Measure::add_stations(Lines& lines, const Measures& m) const {
    if (m.stations.empty())
        return;
    const auto row = [&lines](const std::vector<std::string>& fields) {
        std::string line = "  " + right_column(fields.front(), 8);
        for (std::size_t i = 1; i < fields.size(); ++i)
            line += right_column(fields[i], 11);
        lines.text += line + "\n";
    };
    lines.text += "  stations; surface lengths from the trailing edge (TE) and the nose (LE), " +
                  std::string(lengths.unit()) + "\n";
    row({"%", "upper", "lower", "thick", "upper-TE", "upper-LE", "lower-TE", "lower-LE"});
    for (const sections::Station& s : m.stations)
        row({fixed(100.0 * s.x, 2), lengths.text(s.upper), lengths.text(s.lower),
             lengths.text(s.thickness), lengths.text(s.upper_from_trailing_edge),
             lengths.text(s.upper_from_nose), lengths.text(s.lower_from_trailing_edge),
             lengths.text(s.lower_from_nose)});
}

std::string Measure::text_of(const sections::Section& section, const Measures& m) const {
    Lines lines;
    lines.add("chord line", lengths.text(m.chord), lengths.unit(),
              "angle " + fixed(m.chord_angle, 3) + " deg; nose " + at(m.leading_edge));
    add_shape(lines, section, m);
    lines.add("length, whole", lengths.text(m.length), lengths.unit());
    lines.add("length, upper side", lengths.text(m.upper_length), lengths.unit());
    lines.add("length, lower side", lengths.text(m.lower_length), lengths.unit());
    add_mouth(lines, m);
    add_stations(lines, m);
    return lines.text;
}

void Measure::put_numbers(const sections::Section& section, const Measures& m,
                          QJsonObject& object) const {
    const auto put = [&object](const char* name, const QJsonValue& value) {
        object.insert(QString::fromLatin1(name), value);
    };
    const auto put_peak = [&put](const char* name, const std::optional<Peak>& peak) {
        if (peak)
            put(name, QJsonObject{{QStringLiteral("size"), peak->size},
                                  {QStringLiteral("station"), 100.0 * peak->station}});
    };
    put("kind", section.kind == tables::Kind::single_skin
                    ? QStringLiteral("single-skin")
                    : (section.kind == tables::Kind::flat ? QStringLiteral("flat")
                                                          : QStringLiteral("section")));
    put("corners", section.corners);
    put("straight_edges", section.straight_edges);
    put("length_unit", QString::fromLatin1(lengths.unit()));
    put("area_unit", QString::fromLatin1(lengths.area_unit()));
    put("leading_edge", point_of(m.leading_edge));
    put("trailing_edge", point_of(m.trailing_edge));
    put("chord", lengths.length(m.chord));
    put("chord_angle", m.chord_angle);
    put_peak("thickness", m.thickness);
    put_peak("camber", m.camber);
    put_peak("thickness_upright", m.thickness_upright);
    put_peak("camber_upright", m.camber_upright);
    put("height", m.height);
    put("highest", point_of(m.highest));
    put("lowest", point_of(m.lowest));
    if (m.nose) {
        QJsonObject nose = {{QStringLiteral("radius"), lengths.length(m.nose->radius)},
                            {QStringLiteral("upper"), lengths.length(m.nose->upper)},
                            {QStringLiteral("lower"), lengths.length(m.nose->lower)}};
        if (m.nose->over_thickness_squared)
            nose.insert(QStringLiteral("over_thickness_squared"), *m.nose->over_thickness_squared);
        put("nose", nose);
    }
    put("trailing_edge_gap", lengths.length(m.trailing_edge_gap));
    if (m.trailing_edge_angle)
        put("trailing_edge_angle", *m.trailing_edge_angle);
    if (m.area && m.centroid) {
        put("area", lengths.area(*m.area));
        put("centroid", point_of(*m.centroid));
    }
    put("length", lengths.length(m.length));
    put("upper_length", lengths.length(m.upper_length));
    put("lower_length", lengths.length(m.lower_length));
    if (m.mouth)
        put("mouth",
            QJsonObject{{QStringLiteral("start"), point_of(m.mouth->start)},
                        {QStringLiteral("end"), point_of(m.mouth->end)},
                        {QStringLiteral("straight"), lengths.length(m.mouth->straight)},
                        {QStringLiteral("along"), lengths.length(m.mouth->along)},
                        {QStringLiteral("angle"), m.mouth->angle},
                        {QStringLiteral("panel_over_top"), lengths.length(m.mouth->panel_over_top)},
                        {QStringLiteral("panel_behind"), lengths.length(m.mouth->panel_behind)}});
    if (!m.stations.empty()) {
        QJsonArray array;
        for (const sections::Station& s : m.stations)
            array.append(QJsonObject{
                {QStringLiteral("station"), 100.0 * s.x},
                {QStringLiteral("upper"), lengths.length(s.upper)},
                {QStringLiteral("lower"), lengths.length(s.lower)},
                {QStringLiteral("thickness"), lengths.length(s.thickness)},
                {QStringLiteral("upper_from_trailing_edge"),
                 lengths.length(s.upper_from_trailing_edge)},
                {QStringLiteral("upper_from_nose"), lengths.length(s.upper_from_nose)},
                {QStringLiteral("lower_from_trailing_edge"),
                 lengths.length(s.lower_from_trailing_edge)},
                {QStringLiteral("lower_from_nose"), lengths.length(s.lower_from_nose)}});
        put("stations", array);
    }
    put("notes", QJsonArray::fromStringList(m.notes));
}

} // namespace

extern const Verb verb_measure;
const Verb verb_measure = {
    "measure",
    "prints the measures of a section, with the lengths along its surface",
    "FILE...",
    "Prints thickness and camber, both across the true chord line and upright in the frame of the "
    "file. Prints the nose, the trailing edge, the area, and the lengths along the surface: sides, "
    "panels and the mouth of the intake. Lengths are fractions of the chord, or millimetres with "
    "--chord. Measures that make no sense for a section are left out, with the reason on standard "
    "error.",
    "measure rib.txt --chord 2850 --at 9.5,30,55",
    make_work<Measure>,
};

} // namespace cli
