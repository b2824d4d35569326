// SPDX-FileCopyrightText: Aerolith developers
// The recording engine and the text of its log.
#include "support/recordingpaintdevice.h"

#include <QDir>
#include <QFile>
#include <QPaintEngine>
#include <QPainterPath>
#include <QTextStream>

#include <cmath>

namespace {

constexpr int vertices_per_line = 8;
constexpr int lines_of_context = 6;

QString number_text(double value) {
    if (!std::isfinite(value))
        return QString::number(value);
    QString text = QString::number(value, 'f', 4);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QStringLiteral("-0") ? QStringLiteral("0") : text;
}

QString point_text(QPointF point) {
    return number_text(point.x()) + QLatin1Char(',') + number_text(point.y());
}

QString style_name(Qt::PenStyle style) {
    switch (style) {
    case Qt::NoPen:
        return QStringLiteral("none");
    case Qt::SolidLine:
        return QStringLiteral("solid");
    case Qt::DashLine:
        return QStringLiteral("dash");
    case Qt::DotLine:
        return QStringLiteral("dot");
    default:
        return QStringLiteral("style%1").arg(int(style));
    }
}

QString cap_name(Qt::PenCapStyle cap) {
    switch (cap) {
    case Qt::FlatCap:
        return QStringLiteral("flat");
    case Qt::SquareCap:
        return QStringLiteral("square");
    default:
        return QStringLiteral("round");
    }
}

QString join_name(Qt::PenJoinStyle join) {
    switch (join) {
    case Qt::MiterJoin:
        return QStringLiteral("miter");
    case Qt::BevelJoin:
        return QStringLiteral("bevel");
    default:
        return QStringLiteral("round");
    }
}

QString brush_text(const QBrush& brush) {
    if (brush.style() == Qt::NoBrush)
        return QStringLiteral("brush none");
    const QString style = brush.style() == Qt::SolidPattern
                              ? QStringLiteral("solid")
                              : QStringLiteral("pattern%1").arg(int(brush.style()));
    return QStringLiteral("brush ") + brush.color().name() + QLatin1Char(' ') + style;
}

QString view_text(const QTransform& view) {
    return QStringLiteral("view scale %1 %2 shear %3 %4 shift %5 %6")
        .arg(number_text(view.m11()), number_text(view.m22()), number_text(view.m12()),
             number_text(view.m21()), number_text(view.dx()), number_text(view.dy()));
}

void append_vertices(QStringList& lines, const QString& head, const QPolygonF& points) {
    lines << head + QStringLiteral(" of %1:").arg(points.size());
    for (qsizetype first = 0; first < points.size(); first += vertices_per_line) {
        QStringList texts;
        for (const QPointF point : points.mid(first, vertices_per_line))
            texts << point_text(point);
        lines << QStringLiteral("  ") + texts.join(QLatin1Char(' '));
    }
}

bool has_outline(PaintOperation::Kind kind) {
    return kind != PaintOperation::Image;
}

bool has_filling(PaintOperation::Kind kind) {
    return kind == PaintOperation::Ellipse || kind == PaintOperation::Polygon ||
           kind == PaintOperation::Rectangle || kind == PaintOperation::Path;
}

void append_operation(QStringList& lines, const PaintOperation& op) {
    const QString extent = point_text(op.rect.topLeft()) + QStringLiteral(" size ") +
                           number_text(op.rect.width()) + QLatin1Char('x') +
                           number_text(op.rect.height());
    switch (op.kind) {
    case PaintOperation::Line:
        lines << QStringLiteral("line ") + point_text(op.points.value(0)) + QLatin1Char(' ') +
                     point_text(op.points.value(1));
        break;
    case PaintOperation::Ellipse:
        lines << QStringLiteral("ellipse ") + point_text(op.centre()) + QStringLiteral(" radii ") +
                     number_text(op.rect.width() / 2.0) + QLatin1Char(' ') +
                     number_text(op.rect.height() / 2.0);
        break;
    case PaintOperation::Polygon:
        append_vertices(lines,
                        op.fill == Qt::OddEvenFill ? QStringLiteral("polygon odd-even")
                                                   : QStringLiteral("polygon winding"),
                        op.points);
        break;
    case PaintOperation::Polyline:
        append_vertices(lines, QStringLiteral("polyline"), op.points);
        break;
    case PaintOperation::Points:
        append_vertices(lines, QStringLiteral("points"), op.points);
        break;
    case PaintOperation::Rectangle:
        lines << QStringLiteral("rectangle ") + extent;
        break;
    case PaintOperation::Path:
        lines << QStringLiteral("path ") + extent;
        break;
    case PaintOperation::Image:
        lines << QStringLiteral("image ") + extent;
        break;
    case PaintOperation::Text:
        lines << QStringLiteral("text ") + point_text(op.position) + QStringLiteral(" \"") +
                     op.text + QLatin1Char('"');
        break;
    }
}

} // namespace

class RecordingPaintDevice::Engine : public QPaintEngine {
public:
    Engine() : QPaintEngine(QPaintEngine::AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return QPaintEngine::User; }
    void updateState(const QPaintEngineState&) override {}

    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPoints;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

    void drawLines(const QLineF* lines, int count) override {
        for (int i = 0; i < count; ++i)
            add(PaintOperation::Line).points = {lines[i].p1(), lines[i].p2()};
    }

    void drawEllipse(const QRectF& rect) override { add(PaintOperation::Ellipse).rect = rect; }

    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i)
            add(PaintOperation::Rectangle).rect = rects[i];
    }

    void drawPoints(const QPointF* points, int count) override {
        add(PaintOperation::Points).points = QPolygonF(QList<QPointF>(points, points + count));
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        PaintOperation& op =
            add(mode == PolylineMode ? PaintOperation::Polyline : PaintOperation::Polygon);
        op.points = QPolygonF(QList<QPointF>(points, points + count));
        op.fill = mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill;
    }

    void drawPath(const QPainterPath& path) override {
        add(PaintOperation::Path).rect = path.controlPointRect();
    }

    // A text of several scripts arrives in pieces, consecutive on one baseline.
    void drawTextItem(const QPointF& position, const QTextItem& item) override {
        PaintOperation& op = add(PaintOperation::Text);
        op.position = position;
        op.text = item.text();
    }

    void drawPixmap(const QRectF& rect, const QPixmap&, const QRectF&) override {
        add(PaintOperation::Image).rect = rect;
    }

    void drawImage(const QRectF& rect, const QImage&, const QRectF&,
                   Qt::ImageConversionFlags) override {
        add(PaintOperation::Image).rect = rect;
    }

    void drawTiledPixmap(const QRectF& rect, const QPixmap&, const QPointF&) override {
        add(PaintOperation::Image).rect = rect;
    }

    QList<PaintOperation> operations;

private:
    PaintOperation& add(PaintOperation::Kind kind) {
        PaintOperation op;
        op.kind = kind;
        op.pen = state->pen();
        op.brush = state->brush();
        op.font = state->font();
        op.view = state->transform();
        operations << op;
        return operations.last();
    }
};

QPolygonF PaintOperation::device_points() const {
    QPolygonF all = points;
    if (kind == Text)
        all << position;
    else if (points.isEmpty())
        all << rect.topLeft() << rect.topRight() << rect.bottomRight() << rect.bottomLeft();
    for (QPointF& point : all)
        point = view.map(point);
    return all;
}

RecordingPaintDevice::RecordingPaintDevice(QSize size)
    : device_size(size), engine(std::make_unique<Engine>()) {}

RecordingPaintDevice::~RecordingPaintDevice() = default;

QPaintEngine* RecordingPaintDevice::paintEngine() const {
    return engine.get();
}

const QList<PaintOperation>& RecordingPaintDevice::operations() const {
    return engine->operations;
}

QList<PaintOperation> RecordingPaintDevice::operations(PaintOperation::Kind kind) const {
    QList<PaintOperation> found;
    for (const PaintOperation& op : engine->operations) {
        if (op.kind == kind)
            found << op;
    }
    return found;
}

void RecordingPaintDevice::clear() {
    engine->operations.clear();
}

QStringList RecordingPaintDevice::log() const {
    return paint_log(engine->operations);
}

QStringList RecordingPaintDevice::out_of_bounds(double limit) const {
    QStringList found;
    for (const PaintOperation& op : engine->operations) {
        for (const QPointF point : op.device_points()) {
            // Negated, so that NaN is found too.
            if (!(std::abs(point.x()) <= limit && std::abs(point.y()) <= limit)) {
                found << paint_log({op});
                break;
            }
        }
    }
    return found;
}

int RecordingPaintDevice::metric(PaintDeviceMetric metric) const {
    constexpr int dots_per_inch = 96;
    constexpr double millimetres_per_inch = 25.4;
    switch (metric) {
    case PdmWidth:
        return device_size.width();
    case PdmHeight:
        return device_size.height();
    case PdmWidthMM:
        return int(device_size.width() * millimetres_per_inch / dots_per_inch);
    case PdmHeightMM:
        return int(device_size.height() * millimetres_per_inch / dots_per_inch);
    case PdmNumColors:
        return 0;
    case PdmDepth:
        return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return dots_per_inch;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    }
    return 0;
}

QStringList paint_log(const QList<PaintOperation>& operations) {
    QStringList lines;
    QString pen;
    QString brush;
    QString view;
    const auto state = [&lines](QString& known, const QString& present) {
        if (known != present)
            lines << present;
        known = present;
    };
    for (const PaintOperation& op : operations) {
        state(view, view_text(op.view));
        if (has_outline(op.kind))
            state(pen, pen_text(op.pen));
        if (has_filling(op.kind))
            state(brush, brush_text(op.brush));
        append_operation(lines, op);
    }
    return lines;
}

QString pen_text(const QPen& pen) {
    if (pen.style() == Qt::NoPen)
        return QStringLiteral("pen none");
    // Width 0 is drawn like a cosmetic pen of one pixel.
    const bool one_pixel = pen.isCosmetic() && pen.widthF() <= 1.0;
    QString width = one_pixel ? QStringLiteral("cosmetic") : number_text(pen.widthF());
    if (pen.isCosmetic() && !one_pixel)
        width += QStringLiteral(" cosmetic");
    return QStringList{
        QStringLiteral("pen"),   pen.color().name(),       width,
        style_name(pen.style()), cap_name(pen.capStyle()), join_name(pen.joinStyle())}
        .join(QLatin1Char(' '));
}

QString first_log_difference(const QStringList& actual, const QStringList& expected) {
    if (actual == expected)
        return QString();
    qsizetype at = 0;
    while (at < actual.size() && at < expected.size() && actual.at(at) == expected.at(at))
        ++at;
    const qsizetype first = qMax(qsizetype(0), at - lines_of_context);
    QStringList message{QStringLiteral("The logs (%1 and %2 lines) differ at line %3:")
                            .arg(actual.size())
                            .arg(expected.size())
                            .arg(at + 1)};
    for (qsizetype i = first; i < at; ++i)
        message << QStringLiteral("   ") + actual.at(i);
    message << QStringLiteral("is ") + actual.value(at, QStringLiteral("(end)"))
            << QStringLiteral("not ") + expected.value(at, QStringLiteral("(end)"));
    return message.join(QLatin1Char('\n'));
}

QString golden_difference(const QString& folder, const QString& name, const QStringList& log) {
    const QString path = QDir(folder).filePath(name);
    QFile file(path);
    if (qEnvironmentVariableIsSet("AEROLITH_UPDATE_GOLDEN")) {
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return QStringLiteral("Cannot write ") + path;
        QTextStream(&file) << log.join(QLatin1Char('\n')) << QLatin1Char('\n');
        return QString();
    }
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("Missing: ") + path;
    QStringList expected = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    expected.removeLast();
    return first_log_difference(log, expected);
}
