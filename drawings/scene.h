// SPDX-FileCopyrightText: Aerolith developers
// A drawing as plain records, which the writers replay.
#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>

#include <array>
#include <optional>
#include <variant>
#include <vector>

namespace drawings {

/// The meaning of an element.
enum class Layer { cut, stitch, mouth, marks, grain, chord, text, scale };

inline constexpr int layer_count = 8;

/// Names of the layers in a file, in the order of Layer.
using LayerNames = std::array<QString, layer_count>;

/// CUT, STITCH, MOUTH, MARKS, GRAIN, CHORD, TEXT, SCALE.
LayerNames standard_layer_names();

/// A Bezier segment that begins where the previous one ends.
struct Segment {
    int degree = 1;                    ///< 1: straight line, 2: parabola, 3: cubic.
    std::array<QPointF, 2> controls{}; ///< The first degree - 1 are used.
    QPointF end;
};

/// A chain of segments.
struct Path {
    QPointF start;
    std::vector<Segment> segments;
    bool closed = false; ///< A straight line joins the end to the start.
};

/// A circle, not filled.
struct Circle {
    QPointF centre;
    double radius = 0.0;
};

/// A point for a machine to punch.
struct Dot {
    QPointF at;
};

/// One line of text, never rotated and never mirrored.
struct Text {
    QPointF at;          ///< Left end of the baseline.
    double height = 5.0; ///< Of a capital letter.
    QString text;
};

/// How an element of a picture looks. DXF ignores it.
struct Look {
    const char* colour = "#000000"; ///< As #rrggbb.
    double width = 0.2;             ///< Of lines, mm.
    std::vector<double> dashes;     ///< Dash, gap, dash, gap..., mm; empty for a solid line.
    bool filled = false;            ///< Paths and circles are filled areas without an edge.
};

struct Element {
    Layer layer = Layer::cut;
    std::variant<Path, Circle, Dot, Text> shape;
    std::optional<Look> look{}; ///< None: that of the layer.
};

/// Coordinates and lengths in millimetres, y upwards.
struct Scene {
    std::vector<Element> elements;

    /// For a picture: its size; later elements cover earlier ones. None for a drawing, which is as
    /// large as its elements and ordered by layers.
    std::optional<QRectF> page{};

    void add(Layer layer, Path path) { elements.push_back({layer, std::move(path)}); }
    void add(Layer layer, Circle circle) { elements.push_back({layer, circle}); }
    void add(Layer layer, Dot dot) { elements.push_back({layer, dot}); }
    void add(Layer layer, Text text) { elements.push_back({layer, std::move(text)}); }

    /// Adds an element of a picture.
    template<typename Shape>
    void draw(const Look& look, Shape shape) {
        elements.push_back({Layer::marks, std::move(shape), look});
    }

    /// Adds the elements of @p other, moved by @p shift.
    void add(const Scene& other, QPointF shift);
};

/// The path through @p points; without segments for fewer than two.
Path path_through(const QPolygonF& points, bool closed);

/// The straight line from @p a to @p b.
Path line(QPointF a, QPointF b);

/// The point of a segment that begins at @p start, at the parameter @p u from 0 to 1.
QPointF position(QPointF start, const Segment& segment, double u);

/// The vertices of a polyline that deviates from the path by at most @p flatness: all lie on the
/// path and include its joints. The start of a closed path is not repeated.
/// @param flatness mm, above 0; a segment becomes at most 10,000 lines
QPolygonF flattened(const Path& path, double flatness);

/// An estimate of the box of a text: 0.8 of the height wide for each character, the height of a
/// capital above the baseline and a quarter of that below it.
QRectF text_box(const Text& text);

/// The smallest box (mm) around all elements, with paths flattened by @p flatness and texts as in
/// text_box(). Its top() is the least y. Empty for a scene without elements.
QRectF bounds(const Scene& scene, double flatness);

/// @p scene mirrored about the vertical line at @p x. Texts stay readable and are moved so that
/// their boxes are mirrored.
Scene mirrored(const Scene& scene, double x);

/// @p scene with its coordinates scaled, then moved. Radii, letter heights and looks stay.
Scene placed(const Scene& scene, double scale, QPointF shift);

/// @p text without characters that no file can hold: control characters become blanks, halves of
/// surrogate pairs and noncharacters become U+FFFD.
QString printable(const QString& text);

} // namespace drawings
