// SPDX-FileCopyrightText: Aerolith developers
// The verb draw: several sections in one picture.
#include "cli/application.h"
#include "cli/findings.h"
#include "cli/formats.h"
#include "cli/given_section.h"
#include "cli/lengths.h"
#include "cli/number.h"
#include "cli/shown.h"
#include "cli/verb.h"
#include "drawings/pdf.h"
#include "drawings/picture.h"
#include "drawings/png.h"
#include "drawings/svg.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <map>

namespace cli {

namespace {

// The limits of `--size`, in mm or pixels.
struct Sizes {
    const char* unit;
    double least_width;
    double least_height;
    double greatest;
};

constexpr Sizes mm_sizes = {"mm", 120.0, 40.0, 2000.0};
constexpr Sizes png_sizes = {"pixels", 720.0, 240.0, double(drawings::png_limit)};

// What is kept of one input.
struct Drawn {
    std::string path;
    sections::Section section;
};

// Reads "WxH"; nothing for any other text.
std::optional<QSizeF> size_of(std::string_view text) {
    const std::size_t x = text.find('x');
    if (x == std::string_view::npos)
        return std::nullopt;
    const std::optional<double> width = number_of<double>(text.substr(0, x));
    const std::optional<double> height = number_of<double>(text.substr(x + 1));
    if (!width || !height)
        return std::nullopt;
    return QSizeF(*width, *height);
}

class Draw : public Work {
public:
    explicit Draw(const Options& given)
        : options(given), format(choose_picture_format(
                              given.to, given.output == "-" ? std::string() : given.output)),
          sizes(format.name == "png" ? png_sizes : mm_sizes), size(size_of(given.size)) {
        reading.layout = QString::fromStdString(given.layout);
        reading.element = given.element;
    }

    std::string refusal() const override {
        if (!format.refusal.empty())
            return format.refusal;
        if (!options.size.empty() && !size)
            return "--size: '" + shown(options.size) + "', expected WxH, for example 180x120";
        if (size && (size->width() < sizes.least_width || size->height() < sizes.least_height ||
                     std::max(size->width(), size->height()) > sizes.greatest))
            return "--size: " + shown(options.size) + " is not between " +
                   size_text({sizes.least_width, sizes.least_height}) + " and " +
                   size_text({sizes.greatest, sizes.greatest}) + " " + sizes.unit;
        return {};
    }

    std::string refusal_of(std::size_t inputs) const override {
        if (options.deviation && inputs < 2)
            return "--deviation needs at least two files";
        if (inputs > drawings::most_pictured)
            return std::to_string(inputs) + " files; one picture holds at most " +
                   std::to_string(drawings::most_pictured);
        return {};
    }

    bool makes_one_output() const override { return true; }

    Outcome process(const Source& source) const override {
        GivenSection given = given_section(source.bytes, reading);
        Outcome outcome = outcome_of(source, given.layout, given.points, given.findings,
                                     given.section.has_value());
        if (!given.section)
            return outcome;
        outcome.text = column(given.layout.toStdString(), 12) +
                       right_column(std::to_string(given.points), 5) + "  " + source.name + "\n";
        outcome.kept = Drawn{source.input.path, std::move(*given.section)};
        return outcome;
    }

    void collect(const Outcome& outcome) override {
        if (const auto* one = std::any_cast<Drawn>(&outcome.kept))
            drawn.push_back(*one);
        else if (drawn.empty())
            first_missing = true;
    }

    Outcome finish(const std::string& output) const override {
        const std::string name = shown(output);
        Outcome outcome;
        outcome.json.insert(QStringLiteral("output"), QString::fromStdString(name));
        if (name != output)
            outcome.json.insert(QStringLiteral("output_hex"),
                                QString::fromLatin1(QByteArray::fromStdString(output).toHex()));
        const auto refuse = [&](const std::string& reason) {
            outcome.failed = true;
            outcome.output.reset();
            outcome.notes = name + ": " + reason + "\n";
            outcome.json.insert(QStringLiteral("error"), QString::fromStdString(reason));
            return outcome;
        };
        if (drawn.empty())
            return refuse("no section to draw");
        if (options.deviation && (first_missing || drawn.size() < 2))
            return refuse("--deviation needs a section in the first file and in one more");
        drawings::PictureOptions wanted;
        if (size)
            wanted.size = *size / unit();
        wanted.nose = options.nose;
        wanted.deviation = options.deviation;
        wanted.curvature = options.curvature;
        const drawings::PictureResult picture = drawings::picture(pictured(), wanted);
        if (!picture.scene)
            return refuse(picture.reason.toStdString());
        const std::string reason = write(*picture.scene, outcome);
        if (!reason.empty())
            return refuse(reason);
        const QSizeF made = picture.scene->page->size() * unit();
        outcome.text = "picture of " + size_text(made) + " " + sizes.unit + " -> " + name + "\n";
        outcome.json.insert(QStringLiteral("format"), QString::fromStdString(format.name));
        outcome.json.insert(QStringLiteral("width"), std::round(made.width()));
        outcome.json.insert(QStringLiteral("height"), std::round(made.height()));
        outcome.json.insert(QStringLiteral("unit"), QString::fromLatin1(sizes.unit));
        outcome.json.insert(QStringLiteral("sections"), int(drawn.size()));
        if (options.deviation)
            put_distances(picture.distances, outcome);
        return outcome;
    }

private:
    // Units of the size per millimetre.
    double unit() const { return format.name == "png" ? drawings::png_pixels : 1.0; }

    static std::string size_text(QSizeF given) {
        return fixed(given.width(), 0) + "x" + fixed(given.height(), 0);
    }

    // Returns why there is no file; empty on success.
    std::string write(const drawings::Scene& scene, Outcome& outcome) const {
        if (format.name == "svg") {
            outcome.output = drawings::svg(scene);
            return {};
        }
        make_application();
        if (format.name == "pdf") {
            const drawings::PdfResult result = drawings::pdf(scene);
            outcome.output = result.bytes;
            return result.reason.toStdString();
        }
        const drawings::PngResult result = drawings::png(scene);
        outcome.output = result.bytes;
        return result.reason.toStdString();
    }

    void put_distances(const std::vector<drawings::Farthest>& distances, Outcome& outcome) const {
        QJsonArray array;
        for (std::size_t i = 0; i < distances.size(); ++i) {
            const drawings::Farthest& farthest = distances[i];
            const std::string path = shown(drawn[i + 1].path);
            const QString side = farthest.upper ? QStringLiteral("upper") : QStringLiteral("lower");
            outcome.text += "  farthest " + right_column(fixed(farthest.distance, 6), 9) +
                            " chord at " + right_column(percent(farthest.station), 8) + " of the " +
                            side.toStdString() + " side  " + path + "\n";
            array.append(QJsonObject{{QStringLiteral("path"), QString::fromStdString(path)},
                                     {QStringLiteral("farthest"), farthest.distance},
                                     {QStringLiteral("station"), 100.0 * farthest.station},
                                     {QStringLiteral("side"), side}});
        }
        outcome.json.insert(QStringLiteral("distances"), array);
    }

    // Sections are named by their base names, or by their paths if base names are equal.
    std::vector<drawings::Pictured> pictured() const {
        std::map<std::string, int> counts;
        for (const Drawn& each : drawn)
            ++counts[base_name(each.path)];
        std::vector<drawings::Pictured> all;
        for (const Drawn& each : drawn) {
            const std::string base = base_name(each.path);
            std::string name = counts[base] > 1 ? each.path : base;
            if (each.path == "-")
                name = "standard input";
            all.push_back({QString::fromStdString(shown(name)), each.section});
        }
        return all;
    }

    const Options options;
    const Chosen format;
    const Sizes sizes;
    const std::optional<QSizeF> size;
    tables::ReadOptions reading;
    std::vector<Drawn> drawn;
    bool first_missing = false;
};

} // namespace

extern const Verb verb_draw;
const Verb verb_draw = {
    "draw",
    "draws sections in one picture as svg, pdf or png",
    "FILE...",
    "Draws up to 24 files into one picture, on top of each other, in units of the chord. The first "
    "table is blue and the first spline red, as in the window. The others have other colours, and "
    "no two have the same dashes and width. The picture also shows the ends of each intake and a "
    "legend. One pixel of a png is 1/150 inch.",
    "draw wing.dat wing.spl --deviation --output wing.svg",
    make_work<Draw>,
};

} // namespace cli
