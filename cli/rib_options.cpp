// SPDX-FileCopyrightText: Aerolith developers
#include "cli/rib_options.h"

#include "cli/number.h"
#include "cli/shown.h"

#include <QStringList>

#include <algorithm>
#include <set>

namespace cli {

namespace {

const Options& untouched() {
    static const Options options;
    return options;
}

std::vector<std::string> parts(const std::string& text, char separator) {
    std::vector<std::string> result;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         end = text.find(separator, start)) {
        result.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    result.push_back(text.substr(start));
    return result;
}

int index_in(const std::vector<std::string>& names, const std::string& name) {
    return int(std::find(names.begin(), names.end(), name) - names.begin());
}

// Reads "lower:9.5,30,55", or several such lists separated by semicolons.
std::string read_stations(const std::string& text, std::vector<drawings::StationMark>& marks) {
    if (text.empty())
        return {};
    for (const std::string& list : parts(text, ';')) {
        const std::string side = list.substr(0, list.find(':'));
        if ((side != "upper" && side != "lower") || side.size() == list.size())
            return "--mark-at: '" + shown(list) + "' does not begin with upper: or lower:";
        for (const std::string& word : parts(list.substr(side.size() + 1), ',')) {
            const std::optional<double> percent = number_of<double>(word);
            if (!percent || *percent < 0.0 || *percent > 100.0)
                return "--mark-at: '" + shown(word) + "' is not a number between 0 and 100";
            marks.push_back({side == "upper", *percent});
        }
    }
    return {};
}

// Reads "CUT=Schnitt,STITCH=Naht".
std::string read_layer_names(const std::string& text, drawings::LayerNames& names) {
    if (text.empty())
        return {};
    const drawings::LayerNames standard = drawings::standard_layer_names();
    for (const std::string& pair : parts(text, ',')) {
        const std::size_t equals = pair.find('=');
        const QString layer = QString::fromStdString(pair.substr(0, equals));
        const auto found = std::find(standard.begin(), standard.end(), layer);
        if (equals == std::string::npos || found == standard.end())
            return "--layer-names: '" + shown(pair) +
                   "' is not LAYER=NAME, where LAYER is one of CUT, STITCH, MOUTH, MARKS, GRAIN, "
                   "CHORD, TEXT, SCALE";
        const QString name = QString::fromStdString(pair.substr(equals + 1));
        const QString fault = drawings::layer_name_fault(name);
        if (!fault.isEmpty())
            return "--layer-names: '" + shown(name) + "': " + fault.toStdString();
        names[std::size_t(found - standard.begin())] = name;
    }
    std::set<QString> different = {QStringLiteral("0")};
    for (const QString& name : names)
        different.insert(name.toUpper());
    if (different.size() != std::size_t(drawings::layer_count) + 1)
        return "--layer-names: two layers have the same name, or one is named 0";
    return {};
}

std::optional<double> when_given(const std::vector<double>& value) {
    return value.empty() ? std::nullopt : std::optional(value.front());
}

} // namespace

std::vector<std::string> intakes() {
    return {"curve", "straight", "open"};
}

std::vector<std::string> mark_shapes() {
    return {"point", "circle", "notch"};
}

std::vector<std::string> drawing_units() {
    return {"mm", "cm"};
}

std::vector<std::string> tilings() {
    return {"a4"};
}

std::string drawing_option(const Options& options) {
    const Options& unset = untouched();
    const std::pair<bool, const char*> given[] = {
        {options.chord != unset.chord, "--chord"},
        {options.allowance != unset.allowance, "--allowance"},
        {options.allowance_te != unset.allowance_te, "--allowance-te"},
        {options.allowance_mouth != unset.allowance_mouth, "--allowance-mouth"},
        {options.intake != unset.intake, "--intake"},
        {options.marks != unset.marks, "--marks"},
        {options.mark_at != unset.mark_at, "--mark-at"},
        {options.mark != unset.mark, "--mark"},
        {options.grain != unset.grain, "--grain"},
        {options.mirror, "--mirror"},
        {options.text != unset.text, "--text"},
        {options.text_strokes, "--text-strokes"},
        {options.flatness != unset.flatness, "--flatness"},
        {options.unit != unset.unit, "--unit"},
        {options.layer_names != unset.layer_names, "--layer-names"},
        {options.tile != unset.tile, "--tile"},
        {options.ribs != unset.ribs, "--ribs"},
        {options.gap != unset.gap, "--gap"},
    };
    for (const auto& [is_given, name] : given) {
        if (is_given)
            return name;
    }
    return {};
}

RibSettings rib_settings(const Options& options, const std::string& format) {
    const Options& unset = untouched();
    RibSettings settings;
    drawings::RibOptions& rib = settings.rib;
    rib.chord = options.chord;
    rib.allowance = options.allowance;
    rib.allowance_trailing_edge = when_given(options.allowance_te);
    rib.allowance_mouth = when_given(options.allowance_mouth);
    rib.intake = drawings::Intake(index_in(intakes(), options.intake));
    rib.mark_step = options.marks;
    rib.mark = drawings::MarkShape(index_in(mark_shapes(), options.mark));
    rib.grain = when_given(options.grain);
    rib.mirror = options.mirror;
    rib.flatness = options.flatness;
    settings.output.flatness = options.flatness;
    settings.output.unit = drawings::Unit(index_in(drawing_units(), options.unit));
    settings.tiling = options.tile.empty() ? drawings::Tiling::none : drawings::Tiling::a4;
    settings.text = QString::fromStdString(shown(options.text));
    settings.text_strokes = options.text_strokes;
    settings.gap = options.gap;

    std::string& refusal = settings.refusal;
    refusal = read_stations(options.mark_at, rib.mark_at);
    if (refusal.empty())
        refusal = read_layer_names(options.layer_names, settings.output.layer_names);
    if (!refusal.empty())
        return settings;
    const bool is_pdf = format == "pdf";
    if (options.reverse || options.close_gap || options.normalize ||
        options.decimals != unset.decimals || options.points != unset.points)
        refusal =
            "--reverse, --close-gap, --normalize, --decimals and --points are only for tables, "
            "not for " +
            format;
    else if (!options.lep_points.empty())
        refusal = "--lep-points needs --to lep";
    else if (options.chord == unset.chord && options.ribs.empty())
        refusal = "a drawing needs --chord";
    else if (options.intake == "open" && (rib.allowance > 0.0 || !options.allowance_te.empty() ||
                                          !options.allowance_mouth.empty()))
        refusal = "--intake open is for drawing only and cannot have an allowance";
    else if (!options.tile.empty() && !is_pdf)
        refusal = "--tile is only for pdf, not for " + format;
    else if (is_pdf && options.unit != unset.unit)
        refusal = "--unit is only for dxf and svg; a pdf is always at full size";
    else if (is_pdf && !options.layer_names.empty())
        refusal = "--layer-names is only for dxf and svg; a pdf has no layers";
    else if (options.gap != unset.gap && options.ribs.empty())
        refusal = "--gap needs --ribs";
    return settings;
}

} // namespace cli
