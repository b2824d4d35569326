// SPDX-FileCopyrightText: Aerolith developers
#include "cli/formats.h"

#include "cli/shown.h"

#include <algorithm>

namespace cli {

namespace {

std::vector<std::string> texts_of(const QStringList& names) {
    std::vector<std::string> texts;
    for (const QString& name : names)
        texts.push_back(name.toStdString());
    return texts;
}

// The extension in lower case, with its point; empty for none.
std::string extension_of_name(const std::string& name) {
    const std::size_t point = name.rfind('.');
    const std::size_t base = name.rfind('/') + 1;
    if (point == std::string::npos || point <= base)
        return {};
    return QString::fromStdString(name.substr(point)).toLower().toStdString();
}

// The known format with this extension.
Chosen chosen_of(const std::vector<std::string>& known, const std::string& extension) {
    const std::string name = extension.substr(1);
    if (std::find(known.begin(), known.end(), name) != known.end())
        return {name, {}};
    return {{}, "no format has the extension " + shown(extension) + "; choose one with --to"};
}

} // namespace

std::vector<std::string> drawing_formats() {
    return {"dxf", "svg", "pdf"};
}

bool is_drawing(const std::string& name) {
    const std::vector<std::string> names = drawing_formats();
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<std::string> output_formats() {
    std::vector<std::string> names = texts_of(tables::format_names());
    names.emplace_back(spline_format);
    for (const std::string& name : drawing_formats())
        names.push_back(name);
    return names;
}

std::vector<std::string> picture_formats() {
    return {"svg", "pdf", "png"};
}

std::vector<std::string> input_layouts() {
    return texts_of(tables::layout_names());
}

std::vector<std::string> spacings() {
    return {"curvature", "cosine", "uniform"};
}

sections::Spacing spacing_of(const std::string& name) {
    if (name == "cosine")
        return sections::Spacing::cosine;
    return name == "uniform" ? sections::Spacing::uniform : sections::Spacing::curvature;
}

Chosen choose_format(const std::string& to, const std::string& output) {
    const std::string extension = extension_of_name(output);
    if (!to.empty()) {
        // Programs for profiles read the counts as points if the extension is .dat.
        if (to == "lep" && !extension.empty() && extension != ".txt")
            return {to, "a lep file needs the extension .txt, not " + shown(extension)};
        return {to, {}};
    }
    if (extension.empty() || extension == ".txt" || extension == ".dat")
        return {output_formats().front(), {}};
    std::vector<std::string> known = drawing_formats();
    known.insert(known.end(), {"csv", "json", spline_format});
    return chosen_of(known, extension);
}

Chosen choose_picture_format(const std::string& to, const std::string& output) {
    const std::string extension = extension_of_name(output);
    if (to.empty() && !extension.empty())
        return chosen_of(picture_formats(), extension);
    return {to.empty() ? picture_formats().front() : to, {}};
}

std::string extension_of_format(const std::string& name) {
    if (name == "selig" || name == "lednicer")
        return ".dat";
    if (name == "csv" || name == "json" || name == spline_format || is_drawing(name))
        return "." + name;
    return ".txt";
}

std::optional<tables::Format> table_format(const std::string& name) {
    return tables::format_from_name(QString::fromStdString(name));
}

} // namespace cli
