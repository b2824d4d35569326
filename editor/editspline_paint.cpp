// SPDX-FileCopyrightText: Aerolith developers
// Painting of the editor.
#include "editor/editspline.h"

#include "airfoil/airfoil.h"
#include "editor/templateimage_p.h"

#include <QFileInfo>
#include <QPaintEvent>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace {

// Coordinates beyond this (pixels), or not finite, are not drawn.
constexpr double drawable_limit = 1e6;

// A spline is in its place after two paints. The bound keeps one that never settles from repainting
// for ever.
constexpr int most_settling_paints = 4;

// File names have at most 255 characters; a damaged file may hold a longer one.
constexpr qsizetype longest_name = 255;

// Whether two polygons share their points, so that neither has changed.
bool same_data(const QPolygonF& a, const QPolygonF& b) {
    return a.constData() == b.constData() && a.size() == b.size();
}

bool drawable(double coordinate) {
    return std::abs(coordinate) <= drawable_limit;
}

bool drawable(QPointF point) {
    return drawable(point.x()) && drawable(point.y());
}

QPen pen(Qt::GlobalColor colour, double width, Qt::PenStyle style = Qt::SolidLine) {
    return QPen(QBrush(colour), width, style);
}

QString base_name(const QString& path) {
    return QFileInfo(path.right(4096)).baseName().left(longest_name);
}

void draw_circle(QPainter* painter, QPointF centre, double radius) {
    if (drawable(centre))
        painter->drawEllipse(centre, radius, radius);
}

// The lines of the grid and their labels lie on whole pixels.
void draw_line(QPainter* painter, double x1, double y1, double x2, double y2) {
    painter->drawLine(int(x1), int(y1), int(x2), int(y2));
}

} // namespace

void EditSpline::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setWindow(MyRect);
    // Qt's first pen would grow with the zoom.
    painter.setPen(QPen(painter.pen().brush(), 0));

    spline_poly = p->spline.make_SplinePoly();
    AdjustSpline_TE();
    Paint_thickness(&p->baseAirfoil, QPointF(300, 20),
                    QLatin1String("Background foil: ") + base_name(p->baseAirfoilName) +
                        QLatin1String(": "),
                    &painter);
    p->workAirfoil = normalize_FromScreen(spline_poly);
    Paint_thickness(&p->workAirfoil, QPointF(300, 35),
                    QLatin1String("Spline ....... : ") + base_name(p->spline.airfoilName) +
                        QLatin1String(": "),
                    &painter);
    paint_cursor_position(&painter);
    ShowKnotString(&painter);

    transformPainter(painter);
    painter.save();
    Coor_System(&painter);
    Paint_BackgroundPoly(&painter);
    Paint_Spline(&painter);
    painter.restore();
    settle();
}

// One paint scales the spline about the pixel origin and only the next one moves it to its place,
// so a paint that is not settled requests another one.
void EditSpline::settle() {
    const double away = (TE - p->spline.CP[0]).manhattanLength();
    const bool settled =
        p->spline.point_count() == 0 || !std::isfinite(away) || away <= settled_distance;
    if (settled || settling_paints >= most_settling_paints) {
        settling_paints = 0;
        return;
    }
    ++settling_paints;
    update();
}

void EditSpline::paint_cursor_position(QPainter* painter) {
    const int selected = selected_point();
    if (!mousepressed || selected < 0)
        return;
    const QPointF c = mapping().to_chord(p->spline.CP[selected]);
    painter->drawText(lastPos + QPoint(0, -20), QStringLiteral("(%1;%2)")
                                                    .arg(c.x(), 0, 'f', 3, QLatin1Char(' '))
                                                    .arg(c.y(), 0, 'f', 3, QLatin1Char(' ')));
}

void EditSpline::Paint_thickness(QPolygonF* poly, QPointF pos, QString label, QPainter* painter) {
    if (poly->isEmpty())
        return;
    QString results[2];
    if (poly == &p->baseAirfoil) {
        if (!same_data(measured_template, *poly)) {
            FindThickness(poly, template_results);
            measured_template = *poly;
        }
        std::copy(std::begin(template_results), std::end(template_results), results);
    } else {
        FindThickness(poly, results);
    }
    // Not QString::arg(): the label holds a file name, which may contain "%1".
    painter->drawText(pos, label + results[0] + QLatin1String(" || ") + results[1]);
}

void EditSpline::ShowKnotString(QPainter*) {}

void EditSpline::Coor_System(QPainter* painter) {
    painter->drawLine(0, yc, 2 * xc + L_T, yc);
    painter->drawLine(xc, 0, xc, L_T);
    paint_chord_ticks(painter);
    paint_thickness_lines(painter);
    paint_openings(painter);
}

void EditSpline::paint_chord_ticks(QPainter* painter) {
    const double step = L_T / 100.0;
    if (!(step > 0.0))
        return;
    // Counted, because an accumulated x misses the trailing edge at about half of all widths.
    double x = xc;
    for (int i = 0; i <= 100; ++i) {
        if (i % 10 == 0) {
            const double v = std::round((x - xc) / step) * 0.01;
            painter->setPen(pen(Qt::darkRed, 0, Qt::DotLine));
            draw_line(painter, x, 0, x, H);
            painter->drawText(int(x), yc, QStringLiteral("%1").arg(v, 0, 'f', 1, QLatin1Char(' ')));
        }
        painter->setPen(pen(Qt::darkRed, 0));
        draw_line(painter, x, yc, x, yc + 10);
        if (i % 5 == 0)
            draw_line(painter, x, yc, x, yc + 15);
        x += step;
    }
}

void EditSpline::paint_thickness_lines(QPainter* painter) {
    const int whole_step = L_T / 10;
    const double step = whole_step;
    if (whole_step <= 0)
        return;
    for (double y = yc + 10 * step; y > -H; y -= step) {
        const double v = std::round((yc - y) / step) * 0.1;
        if (std::abs(v) > 0.4)
            continue;
        painter->drawText(xc, int(y), QStringLiteral("%1").arg(v, 0, 'f', 1, QLatin1Char(' ')));
        painter->setPen(pen(Qt::darkRed, 0, Qt::DotLine));
        draw_line(painter, xc, y, TE.x(), y);
    }
}

void EditSpline::paint_openings(QPainter* painter) {
    painter->setPen(pen(Qt::darkBlue, 1.0));
    for (const double vent : {p->spline.startVent, p->spline.endVent}) {
        const double x = L_T * vent / 100.0 + xc;
        if (drawable(x))
            draw_line(painter, x, yc, x, H);
    }
}

void EditSpline::Paint_BackgroundPoly(QPainter* painter) {
    template_image->paint(painter, template_outline());
}

// The drawable points of the template in logical pixels. Kept until the template or the mapping
// changes.
const QPolygonF& EditSpline::template_outline() {
    const QRect place(xc, yc, L_T, 0);
    if (same_data(mapped_template, p->baseAirfoil) && place == template_mapping)
        return template_pixels;
    mapped_template = p->baseAirfoil;
    template_mapping = place;
    template_pixels.clear();
    for (const QPointF& point : std::as_const(p->baseAirfoil)) {
        const QPointF pixel = mapping().to_pixels(point);
        if (drawable(pixel))
            template_pixels << pixel;
    }
    return template_pixels;
}

void EditSpline::Paint_Spline(QPainter* painter) {
    Normalize_Spline_Poly();
    SplineFoil spline = p->spline;
    const int count = spline.point_count();
    if (count < 1)
        return;
    const int selected = selected_point();
    for (int i = 0; i < count; ++i)
        Paint_Spline_Aux(painter, count, i, spline.CP, selected);

    painter->setPen(pen(Qt::black, 0));
    for (qsizetype j = 0; j < spline_poly.size(); j += 4)
        draw_circle(painter, spline_poly[j], 2.0);

    painter->setBrush(Qt::NoBrush);
    painter->setPen(pen(Qt::red, 1.0));
    paint_curve(painter);
}

void EditSpline::paint_curve(QPainter* painter) {
    QPolygonF run;
    for (const QPointF& sample : std::as_const(spline_poly)) {
        if (drawable(sample)) {
            run << sample;
            continue;
        }
        painter->drawPolyline(run);
        run.clear();
    }
    painter->drawPolyline(run);
}

void Paint_Spline_Aux(QPainter* painter, int num, int i, QPointF* CP, int selected) {
    if (selected >= 0 && selected < num) {
        painter->setPen(pen(Qt::red, 1.0));
        painter->setBrush(Qt::NoBrush);
        draw_circle(painter, CP[selected], 9.0);
    }
    painter->setBrush(QBrush(Qt::white));
    draw_circle(painter, CP[i], 5.0);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(pen(Qt::black, 0));
    if (num - 1 > i && drawable(CP[i]) && drawable(CP[i + 1]))
        painter->drawLine(CP[i], CP[i + 1]);
}
