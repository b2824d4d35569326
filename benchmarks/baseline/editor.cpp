// SPDX-FileCopyrightText: Aerolith developers
// The editor with a paint that caches nothing between frames.
#include "baseline/editor.h"

#include "airfoil/airfoil.h"
#include "baseline/spline.h"

#include <QFileInfo>
#include <QPainter>

#include <cmath>

namespace baseline {

namespace {

bool drawable(QPointF point) {
    return std::abs(point.x()) <= 1e6 && std::abs(point.y()) <= 1e6;
}

QPen pen(Qt::GlobalColor colour, double width, Qt::PenStyle style = Qt::SolidLine) {
    return QPen(QBrush(colour), width, style);
}

void circle(QPainter* painter, QPointF centre, double radius) {
    if (drawable(centre))
        painter->drawEllipse(centre, radius, radius);
}

QString fixed(double value, int decimals) {
    return QStringLiteral("%1").arg(value, 0, 'f', decimals, QLatin1Char(' '));
}

} // namespace

void Editor::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setWindow(MyRect);
    painter.setPen(QPen(painter.pen().brush(), 0));
    spline_poly = make_SplinePoly(p->spline);
    adjust();
    paint_thickness(&painter, p->baseAirfoil, QPointF(300, 20),
                    QLatin1String("Background foil: ") + QFileInfo(p->baseAirfoilName).baseName() +
                        QLatin1String(": "));
    p->workAirfoil = normalize_FromScreen(spline_poly);
    paint_thickness(&painter, p->workAirfoil, QPointF(300, 35),
                    QLatin1String("Spline ....... : ") +
                        QFileInfo(p->spline.airfoilName).baseName() + QLatin1String(": "));
    paint_cursor(&painter);
    transformPainter(painter);
    painter.save();
    paint_grid(&painter);
    paint_template(&painter);
    paint_spline(&painter);
    painter.restore();
    settle();
}

void Editor::normalize() {
    const int count = p->spline.point_count();
    if (count <= 0)
        return;
    double x_min = 10000.0;
    double x_max = -10000.0;
    for (const QPointF& point : std::as_const(spline_poly)) {
        if (point.x() < x_min)
            x_min = point.x();
        if (point.x() >= x_max)
            x_max = point.x();
    }
    const double chord = x_max - x_min;
    if (spline_poly.isEmpty() || (std::isfinite(chord) && chord >= 1e-6)) {
        for (int i = 0; i < count; ++i) {
            const QPointF c = p->spline.CP[i];
            p->spline.CP[i] = QPointF(L_T * c.x() / chord, L_T * c.y() / chord);
        }
    }
    spline_poly = make_SplinePoly(p->spline);
}

void Editor::adjust() {
    const int count = p->spline.point_count();
    if (count <= 0)
        return;
    const QPointF d = TE - p->spline.CP[0];
    if (std::abs(d.x()) + std::abs(d.y()) > 0.00001) {
        for (int i = 0; i < count; ++i)
            p->spline.CP[i] += d;
        normalize();
    }
}

void Editor::paint_thickness(QPainter* painter, const QPolygonF& poly, QPointF pos,
                             const QString& label) {
    if (poly.isEmpty())
        return;
    QPolygonF outline = poly;
    QString results[2];
    FindThickness(&outline, results);
    painter->drawText(pos, label + results[0] + QLatin1String(" || ") + results[1]);
}

void Editor::paint_cursor(QPainter* painter) {
    if (!mousepressed || pnt_selected < 0 || pnt_selected >= p->spline.point_count())
        return;
    const QPointF c = p->spline.CP[pnt_selected];
    const double x = (c.x() - xc) / L_T;
    const double y = (c.y() - yc) / L_T;
    painter->drawText(lastPos + QPoint(0, -20), QLatin1Char('(') + fixed(x, 3) + QLatin1Char(';') +
                                                    fixed(-y, 3) + QLatin1Char(')'));
}

void Editor::paint_grid(QPainter* painter) {
    painter->drawLine(0, yc, 2 * xc + L_T, yc);
    painter->drawLine(xc, 0, xc, L_T);

    double step = L_T / 100.0;
    double x = xc;
    for (int i = 0; i <= 100 && step > 0.0; ++i) {
        if (i % 10 == 0) {
            const double v = std::round((x - xc) / step) * 0.01;
            painter->setPen(pen(Qt::darkRed, 0, Qt::DotLine));
            painter->drawLine(int(x), 0, int(x), H);
            painter->drawText(int(x), yc, fixed(v, 1));
        }
        painter->setPen(pen(Qt::darkRed, 0));
        painter->drawLine(int(x), yc, int(x), yc + 10);
        if (i % 5 == 0)
            painter->drawLine(int(x), yc, int(x), yc + 15);
        x += step;
    }

    step = L_T / 10;
    for (double y = yc + 10 * step; y > -H && step > 0.0; y -= step) {
        const double v = std::round((yc - y) / step) * 0.1;
        if (std::abs(v) <= 0.4) {
            painter->drawText(xc, int(y), fixed(v, 1));
            painter->setPen(pen(Qt::darkRed, 0, Qt::DotLine));
            painter->drawLine(xc, int(y), int(TE.x()), int(y));
        }
    }

    painter->setPen(pen(Qt::darkBlue, 1.0));
    const double x1 = L_T * p->spline.startVent / 100.0 + xc;
    if (std::abs(x1) <= 1e6)
        painter->drawLine(int(x1), yc, int(x1), H);
    const double x2 = L_T * p->spline.endVent / 100.0 + xc;
    if (std::abs(x2) <= 1e6)
        painter->drawLine(int(x2), yc, int(x2), H);
}

void Editor::paint_template(QPainter* painter) {
    QPolygonF poly;
    for (const QPointF& point : std::as_const(p->baseAirfoil)) {
        const QPointF pixel(xc + point.x() * L_T, yc - point.y() * L_T);
        if (!drawable(pixel))
            continue;
        poly << pixel;
        painter->setBrush(QBrush(Qt::red));
        circle(painter, pixel, 3.0);
    }
    painter->setBrush(Qt::NoBrush);
    painter->setPen(pen(Qt::blue, 2.0));
    painter->drawPolygon(poly);
}

void Editor::paint_spline(QPainter* painter) {
    normalize();
    const SplineFoil spline = p->spline;
    const int num = spline.point_count();
    if (num < 1)
        return;
    const int selected = pnt_selected < num ? pnt_selected : -1;
    for (int i = 0; i < num; ++i) {
        if (selected >= 0) {
            painter->setPen(pen(Qt::red, 1.0));
            painter->setBrush(Qt::NoBrush);
            circle(painter, spline.CP[selected], 9.0);
        }
        painter->setBrush(QBrush(Qt::white));
        circle(painter, spline.CP[i], 5.0);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(pen(Qt::black, 0));
        if (num - 1 > i && drawable(spline.CP[i]) && drawable(spline.CP[i + 1]))
            painter->drawLine(spline.CP[i], spline.CP[i + 1]);
    }
    painter->setPen(pen(Qt::black, 0));
    for (qsizetype j = 0; j < spline_poly.size(); j += 4)
        circle(painter, spline_poly[j], 2.0);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(pen(Qt::red, 1.0));
    QPolygonF run;
    for (const QPointF& point : std::as_const(spline_poly)) {
        if (drawable(point)) {
            run << point;
        } else {
            painter->drawPolyline(run);
            run.clear();
        }
    }
    painter->drawPolyline(run);
}

void Editor::settle() {
    const double away = (TE - p->spline.CP[0]).manhattanLength();
    if (p->spline.point_count() == 0 || !std::isfinite(away) || away <= 0.00001 ||
        extra_paints >= 4) {
        extra_paints = 0;
        return;
    }
    ++extra_paints;
    update();
}

} // namespace baseline
