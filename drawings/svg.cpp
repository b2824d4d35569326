// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/svg.h"

#include "drawings/numbers.h"
#include "drawings/page.h"

namespace drawings {

namespace {

// Of most sans-serif fonts.
constexpr double em_of_capital = 1.0 / 0.72;

class Svg {
public:
    Svg(const Scene& whole, const OutputSettings& given)
        : scene(whole), settings(given), scale(units_per_mm(given.unit)) {}

    QByteArray file() {
        put_head();
        for (int layer = 0; layer < layer_count; ++layer)
            put_layer(Layer(layer));
        out += "</svg>\n";
        return out;
    }

private:
    QByteArray number(double mm) const { return decimal(mm * scale, 9); }
    QByteArray pair(QPointF p) const { return number(p.x()) + ' ' + number(-p.y()); }

    void put_head() {
        const QRectF box = page_box(scene, settings.flatness);
        const QByteArray unit = settings.unit == Unit::cm ? "cm" : "mm";
        out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<svg xmlns=\"http://www.w3.org/2000/svg\" "
               "xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" version=\"1.1\" ";
        out += "width=\"" + number(box.width()) + unit + "\" height=\"" + number(box.height()) +
               unit + "\" viewBox=\"" + pair(box.bottomLeft()) + ' ' + number(box.width()) + ' ' +
               number(box.height()) + "\" fill=\"none\" stroke-width=\"" + number(line_width) +
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
                       "\" inkscape:groupmode=\"layer\" inkscape:label=\"" +
                       settings.layer_names[index].toUtf8() + "\" stroke=\"" +
                       layer_colours[int(layer)] + "\">\n";
                open = true;
            }
            std::visit([this, layer](const auto& shape) { put(layer, shape); }, element.shape);
        }
        if (open)
            out += "</g>\n";
    }

    void put(Layer, const Path& path) {
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
        out += path.closed ? "Z\"/>\n" : "\"/>\n";
    }

    void put(Layer, const Circle& circle) {
        out += "<circle cx=\"" + number(circle.centre.x()) + "\" cy=\"" +
               number(-circle.centre.y()) + "\" r=\"" + number(circle.radius) + "\"/>\n";
    }

    void put(Layer, const Dot& dot) {
        out += "<path d=\"M" + pair(dot.at) + "h0\" stroke-width=\"" + number(dot_width) + "\"/>\n";
    }

    void put(Layer layer, const Text& text) {
        out += "<text x=\"" + number(text.at.x()) + "\" y=\"" + number(-text.at.y()) +
               "\" font-family=\"sans-serif\" font-size=\"" + number(text.height * em_of_capital) +
               "\" xml:space=\"preserve\" stroke=\"none\" fill=\"" + layer_colours[int(layer)] +
               "\">" + printable(text.text).toHtmlEscaped().toUtf8() + "</text>\n";
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
