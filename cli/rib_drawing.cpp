// SPDX-FileCopyrightText: Aerolith developers
#include "cli/rib_drawing.h"

#include "cli/application.h"
#include "cli/findings.h"
#include "cli/given_section.h"
#include "cli/outputs.h"
#include "cli/shown.h"
#include "drawings/dxf.h"
#include "drawings/sheet.h"
#include "drawings/strokes.h"
#include "drawings/svg.h"

namespace cli {

namespace {

using tables::Finding;
using tables::Gravity;

// Names in a list are relative to the folder of the list.
std::string beside(const std::string& list, const std::string& name) {
    const std::size_t slash = list.rfind('/');
    return name.front() == '/' || slash == std::string::npos ? name
                                                             : list.substr(0, slash + 1) + name;
}

void add_error(RibDrawing& drawing, const QString& reason) {
    drawing.findings.append({Gravity::error, 0, reason});
}

} // namespace

RibDrawer::RibDrawer(const Options& options, const std::string& wanted)
    : settings(rib_settings(options, wanted)), format(wanted), is_list(!options.ribs.empty()),
      output(options.output) {
    reading.layout = QString::fromStdString(options.layout);
    reading.element = options.element;
    if (!options.openings.empty())
        openings = tables::Openings{options.openings[0], options.openings[1]};
    if (format == "pdf" && settings.refusal.empty())
        make_application();
}

RibDrawing RibDrawer::drawing(const Input& input, const QByteArray& bytes) const {
    return is_list ? sheet_of_list(input, bytes) : rib_of_file(input, bytes);
}

std::optional<sections::Section> RibDrawer::section_of(const QByteArray& bytes,
                                                       RibDrawing& drawing) const {
    GivenSection given = given_section(bytes, reading);
    drawing.layout = given.layout;
    drawing.points = given.points;
    drawing.findings += given.findings;
    if (given.section && openings)
        given.section->openings = openings;
    return given.section;
}

std::optional<drawings::Scene> RibDrawer::scene_of(const sections::Section& section,
                                                   const drawings::RibOptions& rib,
                                                   RibDrawing& drawing) const {
    drawings::RibResult result = drawings::rib(section, rib);
    for (const QString& note : result.notes)
        drawing.findings.append({Gravity::note, 0, note});
    if (!result.scene)
        add_error(drawing, result.reason);
    return std::move(result.scene);
}

RibDrawing RibDrawer::rib_of_file(const Input& input, const QByteArray& bytes) const {
    RibDrawing drawing;
    drawings::RibOptions rib = settings.rib;
    rib.text = drawings::filled_text(
        settings.text, QString::fromStdString(shown(base_name(input.path))), rib.chord, 1);
    if (const std::optional<sections::Section> section = section_of(bytes, drawing)) {
        if (std::optional<drawings::Scene> scene = scene_of(*section, rib, drawing))
            write(*scene, drawing);
    }
    return drawing;
}

// Findings of a row are reported once, even if it has several copies.
QList<Finding> RibDrawer::add_row(const RibRow& row, const std::string& list,
                                  Pieces& pieces) const {
    RibDrawing drawing;
    Input input;
    input.path = beside(list, row.file);
    // Standard input can only be the list itself.
    const Content content = read_input(input, -1);
    drawings::RibOptions rib = settings.rib;
    rib.chord = row.chord.value_or(rib.chord);
    rib.mirror = row.mirror.value_or(rib.mirror);
    if (!content.error.empty())
        add_error(drawing, QString::fromStdString(content.error));
    else if (is_same_file(input.path, output))
        add_error(drawing, QStringLiteral("the file is also the output"));
    else if (!(rib.chord > 0.0))
        add_error(drawing, QStringLiteral("no chord; give it in the list or with --chord"));
    if (!drawing.findings.isEmpty())
        return drawing.findings;
    const std::optional<sections::Section> section = section_of(content.bytes, drawing);
    RibDrawing copy;
    std::optional<drawings::Scene> scene;
    for (int n = 1; section && n <= row.count; ++n) {
        const QString text =
            drawings::filled_text(row.text.value_or(settings.text),
                                  QString::fromStdString(shown(base_name(row.file))), rib.chord, n);
        if (n == 1 || text != rib.text) {
            rib.text = text;
            scene = scene_of(*section, rib, n == 1 ? drawing : copy);
        }
        if (!scene)
            break;
        pieces.lines += drawings::line_count(*scene);
        if (pieces.lines > most_lines) {
            add_error(drawing, QStringLiteral("more than %1 lines on one sheet").arg(most_lines));
            break;
        }
        pieces.scenes.push_back(*scene);
    }
    return drawing.findings;
}

RibDrawing RibDrawer::sheet_of_list(const Input& list, const QByteArray& bytes) const {
    RibDrawing drawing;
    drawing.layout = QStringLiteral("ribs");
    const RibList ribs = read_rib_list(bytes);
    drawing.findings = ribs.findings;
    Pieces pieces;
    for (const RibRow& row : ribs.rows) {
        for (const Finding& finding : add_row(row, list.path, pieces))
            drawing.findings.append(
                {finding.gravity, row.line,
                 QString::fromStdString(shown(row.file)) + QStringLiteral(": ") + finding.text});
        if (pieces.lines > most_lines)
            break;
    }
    if (has_error(drawing.findings))
        return drawing;
    drawing.points = int(pieces.scenes.size());
    drawings::Scene sheet =
        drawings::on_one_sheet(pieces.scenes, settings.gap, settings.output.flatness);
    write(sheet, drawing);
    return drawing;
}

void RibDrawer::write(drawings::Scene& scene, RibDrawing& drawing) const {
    const double flatness = settings.output.flatness;
    drawings::add_scale_bar(scene, flatness);
    drawing.size = drawings::bounds(scene, flatness).size();
    if (settings.text_strokes) {
        const QString unknown = drawings::stroke_texts(scene);
        if (!unknown.isEmpty())
            return add_error(drawing, QStringLiteral("--text-strokes cannot draw '") +
                                          QString::fromStdString(shown(unknown)) +
                                          QLatin1Char('\''));
    }
    if (format == "svg") {
        drawing.file = drawings::svg(scene, settings.output);
    } else if (format == "dxf") {
        for (const drawings::Element& element : scene.elements) {
            const auto* text = std::get_if<drawings::Text>(&element.shape);
            if (text && drawings::dxf_text(text->text).size() > drawings::dxf_text_limit)
                return add_error(drawing,
                                 QStringLiteral("a text has more than %1 bytes, the limit of dxf")
                                     .arg(drawings::dxf_text_limit));
        }
        drawing.file = drawings::dxf(scene, settings.output);
    } else {
        const drawings::PdfResult result = drawings::pdf(scene, settings.output, settings.tiling);
        if (!result.reason.isEmpty())
            return add_error(drawing, result.reason);
        drawing.file = result.bytes;
    }
}

} // namespace cli
