// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/paint_p.h"

#include "drawings/page_p.h"

#include <QFontDatabase>
#include <QPainter>
#include <QPainterPath>

namespace drawings {

namespace {

// Glyphs are drawn at this size and scaled, because font sizes in pixels are integers.
constexpr int font_size = 1000;
constexpr double capital = 729.0; // of the font at that size

QString font_file() {
    return QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
}

QPainterPath painter_path(const Path& path) {
    QPainterPath result(path.start);
    for (const Segment& segment : path.segments) {
        if (segment.degree == 1)
            result.lineTo(segment.end);
        else if (segment.degree == 2)
            result.quadTo(segment.controls[0], segment.end);
        else
            result.cubicTo(segment.controls[0], segment.controls[1], segment.end);
    }
    if (path.closed)
        result.closeSubpath();
    return result;
}

QPen pen_of(const Look& look) {
    const QColor colour{QLatin1String(look.colour)};
    if (look.dashes.empty())
        return QPen(colour, look.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    QPen pen(colour, look.width, Qt::CustomDashLine, Qt::FlatCap, Qt::RoundJoin);
    QList<qreal> pattern; // in widths of the pen
    for (const double dash : look.dashes)
        pattern << dash / look.width;
    pen.setDashPattern(pattern);
    return pen;
}

void put(QPainter& painter, const Path& path, const Look&, const QFont&) {
    painter.drawPath(painter_path(path));
}

void put(QPainter& painter, const Circle& circle, const Look&, const QFont&) {
    painter.drawEllipse(circle.centre, circle.radius, circle.radius);
}

void put(QPainter& painter, const Dot& dot, const Look& look, const QFont&) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(QLatin1String(look.colour)));
    painter.drawEllipse(dot.at, 0.5 * look.width, 0.5 * look.width);
}

void put(QPainter& painter, const Text& text, const Look& look, const QFont& font) {
    painter.save();
    painter.translate(text.at);
    const double scale = text.height / capital;
    painter.scale(scale, -scale);
    painter.setFont(font);
    painter.setPen(QColor(QLatin1String(look.colour)));
    painter.drawText(QPointF(0.0, 0.0), printable(text.text));
    painter.restore();
}

} // namespace

std::optional<QFont> fixed_font() {
    static const int id = QFontDatabase::addApplicationFont(font_file());
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (families.isEmpty())
        return std::nullopt;
    QFont font(families.first());
    font.setPixelSize(font_size);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoFontMerging);
    return font;
}

QString missing_font() {
    return QStringLiteral("no font ") + font_file();
}

QMutex& font_turn() {
    static QMutex turn;
    return turn;
}

void paint(QPainter& painter, const Scene& scene, const QFont& font) {
    // As in SVG, whatever character a text begins with.
    painter.setLayoutDirection(Qt::LeftToRight);
    for (const Element& element : scene.elements) {
        const Look look = look_of(element);
        painter.setPen(look.filled ? QPen(Qt::NoPen) : pen_of(look));
        painter.setBrush(look.filled ? QBrush(QColor(QLatin1String(look.colour)))
                                     : QBrush(Qt::NoBrush));
        std::visit([&](const auto& shape) { put(painter, shape, look, font); }, element.shape);
    }
}

} // namespace drawings
