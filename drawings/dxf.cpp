// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/dxf.h"

#include "drawings/numbers_p.h"

namespace drawings {

namespace {

// Colour numbers of the standard palette.
constexpr int colours[layer_count] = {1, 7, 6, 3, 8, 5, 7, 5};

class Dxf {
public:
    Dxf(const Scene& whole, const OutputSettings& given)
        : scene(whole), settings(given), scale(units_per_mm(given.unit)) {}

    QByteArray file() {
        put_header();
        put_tables();
        group(0, "SECTION");
        group(2, "ENTITIES");
        for (const Element& element : scene.elements) {
            layer = settings.layer_names[std::size_t(element.layer)].toLatin1();
            std::visit([this](const auto& shape) { put(shape); }, element.shape);
        }
        group(0, "ENDSEC");
        group(0, "EOF");
        return out;
    }

private:
    // Codes, which are below 100, are right-aligned in three columns, as most programs write them.
    void group(int code, QByteArrayView value) {
        const char tens = char(code < 10 ? ' ' : '0' + code / 10);
        const char line[] = {' ', tens, char('0' + code % 10), '\n'};
        out.append(line, sizeof line).append(value).append('\n');
    }
    void group(int code, int value) { group(code, QByteArray::number(value)); }
    void number(int code, double mm) { group(code, Decimal(mm * scale, 6).text()); }
    void point(int code, QPointF p) {
        number(code, p.x());
        number(code + 10, p.y());
    }

    void variable(const char* name) { group(9, name); }

    void put_header() {
        const QRectF box = bounds(scene, settings.flatness);
        group(0, "SECTION");
        group(2, "HEADER");
        variable("$ACADVER");
        group(1, "AC1009");
        // Newer than R12: readers that know it take the unit from it, others ignore it.
        variable("$INSUNITS");
        group(70, settings.unit == Unit::cm ? 5 : 4);
        variable("$EXTMIN");
        point(10, box.topLeft());
        variable("$EXTMAX");
        point(10, box.bottomRight());
        variable("$LIMMIN");
        point(10, box.topLeft());
        variable("$LIMMAX");
        point(10, box.bottomRight());
        group(0, "ENDSEC");
    }

    void start_table(const char* name, int rows) {
        group(0, "TABLE");
        group(2, name);
        group(70, rows);
    }

    void put_tables() {
        group(0, "SECTION");
        group(2, "TABLES");
        start_table("LTYPE", 1);
        group(0, "LTYPE");
        group(2, "CONTINUOUS");
        group(70, 0);
        group(3, "Solid line");
        group(72, 65);
        group(73, 0);
        group(40, "0");
        group(0, "ENDTAB");

        start_table("LAYER", layer_count + 1);
        put_layer("0", 7);
        for (int i = 0; i < layer_count; ++i)
            put_layer(settings.layer_names[std::size_t(i)].toLatin1(), colours[i]);
        group(0, "ENDTAB");

        start_table("STYLE", 1);
        group(0, "STYLE");
        group(2, "STANDARD");
        group(70, 0);
        group(40, "0");
        group(41, "1");
        group(50, "0");
        group(71, 0);
        group(42, "2.5");
        group(3, "txt");
        group(4, "");
        group(0, "ENDTAB");
        group(0, "ENDSEC");
    }

    void put_layer(const QByteArray& name, int colour) {
        group(0, "LAYER");
        group(2, name);
        group(70, 0);
        group(62, colour);
        group(6, "CONTINUOUS");
    }

    void start_entity(const char* kind) {
        group(0, kind);
        group(8, layer);
    }

    void put(const Path& path) {
        const QPolygonF points = flattened(path, settings.flatness);
        if (points.size() < 2)
            return;
        if (points.size() == 2) {
            start_entity("LINE");
            point(10, points[0]);
            point(11, points[1]);
            return;
        }
        start_entity("POLYLINE");
        group(66, 1);
        point(10, {0.0, 0.0});
        group(70, path.closed ? 1 : 0);
        const QByteArray vertex = "  0\nVERTEX\n  8\n" + layer + '\n';
        for (const QPointF& p : points) {
            out += vertex;
            point(10, p);
        }
        group(0, "SEQEND");
        group(8, layer);
    }

    void put(const Circle& circle) {
        start_entity("CIRCLE");
        point(10, circle.centre);
        number(40, circle.radius);
    }

    void put(const Dot& dot) {
        start_entity("POINT");
        point(10, dot.at);
    }

    void put(const Text& text) {
        start_entity("TEXT");
        point(10, text.at);
        number(40, text.height);
        group(1, dxf_text(text.text));
    }

    const Scene& scene;
    const OutputSettings& settings;
    const double scale;
    QByteArray layer;
    QByteArray out;
};

} // namespace

QString layer_name_fault(const QString& name) {
    if (name.isEmpty() || name.size() > 31)
        return QStringLiteral("the name of a layer has 1 to 31 characters");
    for (const QChar c : name) {
        const bool letter = (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
        if (!letter && !(c >= u'0' && c <= u'9') && c != u'$' && c != u'-' && c != u'_')
            return QStringLiteral(
                "the name of a layer has letters A to Z, digits, '$', '-' and '_'");
    }
    return {};
}

QByteArray dxf_text(const QString& text) {
    QByteArray out;
    const QString line = printable(text);
    for (qsizetype i = 0; i < line.size(); ++i) {
        const ushort c = line[i].unicode();
        const bool doubled = c == '%' && ((i > 0 && line[i - 1] == u'%') ||
                                          (i + 1 < line.size() && line[i + 1] == u'%'));
        if (c == '\\' || c > 0x7e)
            out += "\\U+" + QByteArray::number(c, 16).toUpper().rightJustified(4, '0');
        else if (c == '^')
            out += "^ ";
        else if (doubled)
            out += "%%%";
        else
            out += char(c);
    }
    return out;
}

QByteArray dxf(const Scene& scene, const OutputSettings& settings) {
    return Dxf(scene, settings).file();
}

} // namespace drawings
