// SPDX-FileCopyrightText: Aerolith developers
#include "cli/rib_work.h"

#include "cli/findings.h"
#include "cli/lengths.h"
#include "cli/rib_drawing.h"
#include "cli/shown.h"

namespace cli {

namespace {

class DrawRibs : public Work {
public:
    DrawRibs(const Options& options, const std::string& wanted)
        : format(wanted), drawer(options, wanted) {}

    std::string refusal() const override { return drawer.refusal(); }

    std::string extension() const override { return "." + format; }

    Outcome process(const Source& source) const override {
        RibDrawing drawing = drawer.drawing(source.input, source.bytes);
        Outcome outcome = outcome_of(source, drawing.layout, drawing.points, drawing.findings,
                                     drawing.file.has_value());
        outcome.output = std::move(drawing.file);
        if (!outcome.output)
            return outcome;
        const std::string output = shown(source.output);
        outcome.text = column(drawing.layout.toStdString(), 12) + column(format, 9) +
                       right_column(std::to_string(drawing.points), 5) + "  " + source.name +
                       " -> " + output + "\n  drawing of " + fixed(drawing.size.width(), 1) +
                       " x " + fixed(drawing.size.height(), 1) + " mm\n";
        outcome.json.insert(QStringLiteral("format"), QString::fromStdString(format));
        outcome.json.insert(QStringLiteral("output"), QString::fromStdString(output));
        if (output != source.output)
            outcome.json.insert(
                QStringLiteral("output_hex"),
                QString::fromLatin1(QByteArray::fromStdString(source.output).toHex()));
        outcome.json.insert(QStringLiteral("width_mm"), drawing.size.width());
        outcome.json.insert(QStringLiteral("height_mm"), drawing.size.height());
        return outcome;
    }

private:
    const std::string format;
    const RibDrawer drawer;
};

} // namespace

std::unique_ptr<Work> rib_work(const Options& options, const std::string& format) {
    return std::make_unique<DrawRibs>(options, format);
}

} // namespace cli
