// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/svg.h"

#include "drawings/numbers_p.h"
#include "drawings/page_p.h"

namespace drawings {

namespace {

// For most sans-serif fonts.
constexpr double em_of_capital = 1.0 / 0.72;

class Svg {
public:
    Svg(const Scene& whole, const OutputSettings& given)
        : scene(whole), settings(given), scale(units_per_mm(given.unit)) {}

    QByteArray file() {
        put_head();
        if (scene.page) {
            for (const Element& element : scene.elements)
                put(element);
        } else {
            for (int layer = 0; layer < layer_count; ++layer)
                put_layer(Layer(layer));
        }
        out += "</svg>\n";
        return out;
    }

private:
    // Nobody can see a micrometre in a picture.
    QByteArray number(double mm) const { return decimal(mm * scale, scene.page ? 3 : 9); }
    QByteArray pair(QPointF p) const { return number(p.x()) + ' ' + number(-p.y()); }

    void put_head() {
        const QRectF box = page_box(scene, settings.flatness);
        const QByteArray unit = settings.unit == Unit::cm ? "cm" : "mm";
        out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<svg xmlns=\"http://www.w3.org/2000/svg\" "
               "xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" version=\"1.1\" ";
        out += "width=\"" + number(box.width()) + unit + "\" height=\"" + number(box.height()) +
               unit + "\" viewBox=\"" + pair(box.bottomLeft()) + ' ' + number(box.width()) + ' ' +
               number(box.height()) + R"(" fill="none" stroke-width=")" + number(line_width) +
               "\" stroke-linejoin=\"round\" stroke-linecap=\"round\">\n";
    }

    void put_layer(Layer layer) {
        bool open = false;
        for (const Element& element : scene.elements) {
            if (element.layer != layer)
                continue;
            if (!open) {
                const auto index = std::size_t(layer);
                out += "<g id=\"" + standard_layer_names()[index].toUtf8() +
                       R"(" inkscape:groupmode="layer" inkscape:label=")" +
                       settings.layer_names[index].toUtf8() + "\" stroke=\"" +
                       layer_colours[int(layer)] + "\">\n";
                open = true;
            }
            put(element);
        }
        if (open)
            out += "</g>\n";
    }

    void put(const Element& element) {
        const Look look = look_of(element);
        std::visit([&](const auto& shape) { put(shape, look, style_of(element)); }, element.shape);
    }

    // The attributes that the group of a layer does not set.
    QByteArray style_of(const Element& element) const {
        if (!element.look)
            return {};
        const Look& look = *element.look;
        if (look.filled)
            return QByteArray(R"( stroke="none" fill=")") + look.colour + '"';
        QByteArray style = QByteArray(" stroke=\"") + look.colour + "\" stroke-width=\"" +
                           number(look.width) + '"';
        if (look.dashes.empty())
            return style;
        style += R"( stroke-linecap="butt" stroke-dasharray=")";
        for (std::size_t i = 0; i < look.dashes.size(); ++i)
            style += (i == 0 ? "" : " ") + number(look.dashes[i]);
        return style + '"';
    }

    void put(const Path& path, const Look&, const QByteArray& style) {
        out += "<path d=\"M" + pair(path.start);
        char command = 'M';
        for (const Segment& segment : path.segments) {
            const char wanted = segment.degree == 1 ? 'L' : segment.degree == 2 ? 'Q' : 'C';
            out += command == wanted ? ' ' : wanted;
            command = wanted;
            for (int i = 0; i + 1 < segment.degree; ++i)
                out += pair(segment.controls[std::size_t(i)]) + ' ';
            out += pair(segment.end);
        }
        out += (path.closed ? "Z\"" : "\"") + style + "/>\n";
    }

    void put(const Circle& circle, const Look&, const QByteArray& style) {
        out += "<circle cx=\"" + number(circle.centre.x()) + "\" cy=\"" +
               number(-circle.centre.y()) + "\" r=\"" + number(circle.radius) + '"' + style +
               "/>\n";
    }

    void put(const Dot& dot, const Look& look, const QByteArray& style) {
        out += "<path d=\"M" + pair(dot.at) + "h0\"" +
               (style.isEmpty() ? " stroke-width=\"" + number(look.width) + '"' : style) + "/>\n";
    }

    void put(const Text& text, const Look& look, const QByteArray&) {
        out += "<text x=\"" + number(text.at.x()) + "\" y=\"" + number(-text.at.y()) +
               "\" font-family=\"" + font_family() + "\" font-size=\"" +
               number(text.height * em_of_capital) +
               R"(" xml:space="preserve" stroke="none" fill=")" + look.colour + "\">" +
               printable(text.text).toHtmlEscaped().toUtf8() + "</text>\n";
    }

    // Texts in a picture are placed for the first two fonts, which have the same widths.
    const char* font_family() const {
        return scene.page ? "DejaVu Sans, Verdana, sans-serif" : "sans-serif";
    }

    const Scene& scene;
    const OutputSettings& settings;
    const double scale;
    QByteArray out;
};

} // namespace

QByteArray svg(const Scene& scene, const OutputSettings& settings) {
    return Svg(scene, settings).file();
}

} // namespace drawings
