// SPDX-FileCopyrightText: Aerolith developers
// The plain implementation of the editor.
#include "editormodel.h"

#include "baseline/spline.h"
#include "support/recordingpaintdevice.h"

#include <QFileInfo>
#include <QPainter>

#include <cmath>

namespace {

constexpr double most_drawn = 1e6;
constexpr double least_width = 1e-6;
constexpr double at_trailing_edge = 1e-5;

QString decimals(double value, int count) {
    return QStringLiteral("%1").arg(value, 0, 'f', count, QLatin1Char(' '));
}

QString joined(const QString& first, const QString& second) {
    return first + QStringLiteral(" || ") + second;
}

void circle(QPainter& painter, QPointF centre, double radius) {
    painter.drawEllipse(centre, radius, radius);
}

void set_pen(QPainter& painter, Qt::GlobalColor colour, double width,
             Qt::PenStyle style = Qt::SolidLine) {
    painter.setPen(QPen(QBrush(colour), width, style));
}

void status_line(QPainter& painter, int y, const QString& label, const QPolygonF& outline) {
    if (outline.isEmpty())
        return;
    const QStringList texts = model_thickness(outline);
    painter.drawText(QPointF(300, y), joined(label + texts.at(0), texts.at(1)));
}

void ticks(QPainter& painter, const EditorModel& m) {
    const double step = m.L_T / 100.0;
    if (!(step > 0.0))
        return;
    double x = m.xc;
    for (int i = 0; i <= 100; ++i) {
        const int at = int(x);
        if (i % 10 == 0) {
            set_pen(painter, Qt::darkRed, 0, Qt::DotLine);
            painter.drawLine(at, 0, at, m.H);
            painter.drawText(at, m.yc, decimals(i / 10 * 0.1, 1));
        }
        set_pen(painter, Qt::darkRed, 0);
        painter.drawLine(at, m.yc, at, m.yc + 10);
        if (i % 5 == 0)
            painter.drawLine(at, m.yc, at, m.yc + 15);
        x += step;
    }
}

void thickness_lines(QPainter& painter, const EditorModel& m) {
    const int step = m.L_T / 10;
    if (step <= 0)
        return;
    for (int k = -4; k <= 4; ++k) {
        const int y = m.yc - k * step;
        if (y <= -m.H)
            break;
        painter.drawText(m.xc, y, decimals(k * 0.1, 1));
        set_pen(painter, Qt::darkRed, 0, Qt::DotLine);
        painter.drawLine(m.xc, y, int(m.TE.x()), y);
    }
}

void openings(QPainter& painter, const EditorModel& m) {
    set_pen(painter, Qt::darkBlue, 1.0);
    for (const double per_cent : {m.spline.startVent, m.spline.endVent}) {
        const double x = m.L_T * per_cent / 100.0 + m.xc;
        if (std::abs(x) <= most_drawn)
            painter.drawLine(int(x), m.yc, int(x), m.H);
    }
}

void background(QPainter& painter, const EditorModel& m) {
    QPolygonF outline;
    painter.setBrush(Qt::red);
    for (const QPointF point : m.template_outline) {
        outline << m.to_pixels(point);
        circle(painter, outline.last(), 3);
    }
    painter.setBrush(Qt::NoBrush);
    set_pen(painter, Qt::blue, 2.0);
    painter.drawPolygon(outline);
}

void spline(QPainter& painter, const EditorModel& m) {
    const QPolygonF points = m.points();
    if (points.isEmpty())
        return;
    for (qsizetype i = 0; i < points.size(); ++i) {
        if (m.has_selection()) {
            set_pen(painter, Qt::red, 1.0);
            painter.setBrush(Qt::NoBrush);
            circle(painter, points.at(m.selected), 9);
        }
        painter.setBrush(Qt::white);
        circle(painter, points.at(i), 5);
        painter.setBrush(Qt::NoBrush);
        set_pen(painter, Qt::black, 0);
        if (i + 1 < points.size())
            painter.drawLine(points.at(i), points.at(i + 1));
    }
    for (qsizetype j = 0; j < m.curve.size(); j += 4)
        circle(painter, m.curve.at(j), 2);
    set_pen(painter, Qt::red, 1.0);
    painter.drawPolyline(m.curve);
}

} // namespace

EditorModel::EditorModel(QSize size) : window(QPoint(0, 0), size) {
    wr = size.width() - 1;
    H = size.height() - 1;
    xc = int(wr * 0.1);
    yc = int(H * 0.5);
    L_T = wr - 2 * xc;
    TE = QPointF(xc + L_T, yc);
}

QPointF EditorModel::to_pixels(QPointF chord) const {
    return QPointF(xc + chord.x() * L_T, yc - chord.y() * L_T);
}

QPointF EditorModel::to_chord(QPointF pixels) const {
    return QPointF((pixels.x() - xc) / L_T, -(pixels.y() - yc) / L_T);
}

void EditorModel::set_points(const QPolygonF& points) {
    spline.num_pnt = int(points.size());
    std::copy(points.begin(), points.end(), spline.CP);
    uniform_knots();
}

void EditorModel::uniform_knots() {
    spline.degree = 2;
    spline.order = 3;
    spline.num_knt = spline.num_pnt + 3;
    for (int i = 0; i < spline.num_knt; ++i) {
        spline.b_knots[i] = double(i) / (spline.num_knt - 1);
        spline.b_multi_knot[i] = 1;
    }
}

QPolygonF EditorModel::points() const {
    return QPolygonF(QList<QPointF>(spline.CP, spline.CP + qBound(0, spline.num_pnt, 30)));
}

bool EditorModel::has_selection() const {
    return selected >= 0 && selected < points().size();
}

void EditorModel::evaluate() {
    curve.clear();
    const int count = int(points().size());
    if (count == 0 || spline.degree < 0 || spline.degree > 5)
        return;
    curve = baseline::sample(count, spline.degree, spline.CP, spline.b_knots);
}

void EditorModel::normalise() {
    const int count = int(points().size());
    if (count == 0)
        return;
    double least = 10000.0;
    double greatest = -10000.0;
    for (const QPointF point : std::as_const(curve)) {
        if (point.x() < least)
            least = point.x();
        if (point.x() >= greatest)
            greatest = point.x();
    }
    const double chord = greatest - least;
    if (curve.isEmpty() || (std::isfinite(chord) && chord >= least_width)) {
        for (int i = 0; i < count; ++i)
            spline.CP[i] = QPointF(L_T * spline.CP[i].x() / chord, L_T * spline.CP[i].y() / chord);
    }
    evaluate();
}

bool EditorModel::settled() const {
    const QPointF d = TE - spline.CP[0];
    return points().isEmpty() || !(std::abs(d.x()) + std::abs(d.y()) > at_trailing_edge);
}

void EditorModel::adjust() {
    if (settled())
        return;
    const QPointF d = TE - spline.CP[0];
    for (int i = 0; i < points().size(); ++i)
        spline.CP[i] = QPointF(spline.CP[i].x() + d.x(), spline.CP[i].y() + d.y());
    normalise();
}

void EditorModel::paint(QPaintDevice* device) {
    QPainter painter(device);
    painter.setPen(QPen(QBrush(text_colour), 0));
    evaluate();
    adjust();
    status_line(painter, 20,
                QStringLiteral("Background foil: ") + QFileInfo(template_name).baseName() +
                    QStringLiteral(": "),
                template_outline);
    work.clear();
    for (const QPointF point : std::as_const(curve))
        work << to_chord(point);
    status_line(painter, 35,
                QStringLiteral("Spline ....... : ") + QFileInfo(spline.airfoilName).baseName() +
                    QStringLiteral(": "),
                work);
    if (pressed && has_selection()) {
        const QPointF c = spline.CP[selected];
        painter.drawText(last_position + QPoint(0, -20),
                         QLatin1Char('(') + decimals((c.x() - xc) / L_T, 3) + QLatin1Char(';') +
                             decimals(-((c.y() - yc) / L_T), 3) + QLatin1Char(')'));
    }
    QTransform view;
    view.translate(pan.x(), pan.y());
    view.scale(zoom, zoom);
    painter.setTransform(view, false);
    painter.drawLine(0, yc, 2 * xc + L_T, yc);
    painter.drawLine(xc, 0, xc, L_T);
    ticks(painter, *this);
    thickness_lines(painter, *this);
    openings(painter, *this);
    background(painter, *this);
    normalise();
    ::spline(painter, *this);
}

QStringList EditorModel::paint_log() {
    RecordingPaintDevice device(window.size());
    paint(&device);
    return device.log();
}

double model_area(const QPolygonF& outline) {
    float sum = 0.0F;
    for (qsizetype i = 0; i + 1 < outline.size(); ++i) {
        const auto x1 = float(outline.at(i).x());
        const auto y1 = float(outline.at(i).y());
        const auto x2 = float(outline.at(i + 1).x());
        const auto y2 = float(outline.at(i + 1).y());
        sum += x1 * y2 - y1 * x2;
    }
    return double(sum);
}

QStringList model_thickness(const QPolygonF& outline) {
    double least = 10000.0;
    double greatest = -10000.0;
    qsizetype bottom = 0;
    qsizetype top = 0;
    for (qsizetype i = 0; i < outline.size(); ++i) {
        if (outline.at(i).y() < least) {
            least = outline.at(i).y();
            bottom = i;
        }
        if (outline.at(i).y() > greatest) {
            greatest = outline.at(i).y();
            top = i;
        }
    }
    const double x_top = outline.at(top).x();
    const double x_bottom = outline.at(bottom).x();
    return {QStringLiteral(" Thickness: ") + decimals((greatest - least) * 100, 2) +
                QStringLiteral("  at  ") + decimals((x_top + x_bottom) * 100 * 0.5, 2) +
                QStringLiteral(" %"),
            QStringLiteral(" Top: at ") + decimals(100 * x_top, 2) +
                QStringLiteral("   Bottom: at: ") + decimals(100 * x_bottom, 2) +
                QStringLiteral(" ")};
}

QByteArray model_table(const QString& name, const QPolygonF& chord_curve) {
    const auto row = [](QPointF point) {
        return decimals(point.x(), 5).toLatin1().rightJustified(7, ' ') + "   " +
               decimals(point.y(), 5).toLatin1().rightJustified(7, ' ') + " \t\n";
    };
    QList<QPointF> listed;
    const qsizetype size = chord_curve.size();
    if (model_area(chord_curve) > 0.0) {
        for (qsizetype j = 1; j < size; j += 9)
            listed << chord_curve.at(j);
    } else {
        for (qsizetype j = size - 1; j > 0; j -= 9)
            listed << chord_curve.at(j);
    }
    QByteArray table = name.toUtf8() + " \t\n" + row({1.0, 0.0});
    for (const QPointF point : std::as_const(listed)) {
        if (0.99999 > point.x())
            table += row(point);
    }
    return table + row({1.0, 0.0}) + " ";
}

QPolygonF model_symmetric(const EditorModel& model) {
    constexpr double x[] = {1.0, 0.7, 0.3, 0.05, 0.0, 0.0, 0.05, 0.3, 0.7, 1.0};
    constexpr double y[] = {0.0, 0.025, 0.07, 0.08, 0.01, -0.01, -0.08, -0.07, -0.025, 0.0};
    QPolygonF points;
    for (int i = 0; i < 10; ++i)
        points << QPointF(model.xc + x[i] * model.L_T, model.yc + y[i] * model.L_T);
    return points;
}

QPolygonF sample_template(int count) {
    QPolygonF outline;
    for (int i = 0; i < count; ++i) {
        // A quarter of an eighth: binary fractions, so that all texts are exact.
        const double s = double(i) / (count - 1) * 2.0 - 1.0;
        const double x = s * s;
        const double side = s < 0 ? 0.5 : -0.25;
        outline << QPointF(x, side * std::abs(s) * (1.0 - x));
    }
    return outline;
}
