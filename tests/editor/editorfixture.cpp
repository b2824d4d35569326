// SPDX-FileCopyrightText: Aerolith developers
// The editor under test.
#include "editorfixture.h"

#include "support/exactcompare.h"

#include <QCoreApplication>

namespace {

QWidget* emptied_document(QWidget* parent) {
    *GetDataStruct() = ParaStruct();
    return parent;
}

} // namespace

TestEditor::TestEditor(QSize size, QWidget* parent) : EditSpline(emptied_document(parent)) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::CustomContextMenu);
    resize(size);
    Init_widget();
}

void TestEditor::paintEvent(QPaintEvent* event) {
    ++paints;
    EditSpline::paintEvent(event);
}

void TestEditor::set_points(const QPolygonF& points) {
    p->spline.num_pnt = int(points.size());
    std::copy(points.begin(), points.end(), p->spline.CP);
    p->spline.init_knots();
}

void TestEditor::set_settled_section() {
    Generate_symetric_spline();
    for (int i = 0; i < 3; ++i)
        recorded();
}

QPolygonF TestEditor::points() const {
    return spline_points(p->spline);
}

EditorModel TestEditor::model() const {
    EditorModel m(MyRect.size());
    m.zoom = f_scale;
    m.pan = p_D;
    m.last_position = lastPos;
    m.pressed = mousepressed;
    m.selected = pnt_selected;
    m.text_colour = palette().color(foregroundRole());
    m.spline = p->spline;
    m.template_name = p->baseAirfoilName;
    m.template_outline = p->baseAirfoil;
    m.curve = spline_poly;
    m.work = p->workAirfoil;
    return m;
}

QList<PaintOperation> TestEditor::recorded() {
    RecordingPaintDevice device(size());
    render(&device, {}, {}, QWidget::DrawChildren);
    return device.operations();
}

QPolygonF spline_points(const SplineFoil& spline) {
    return QPolygonF(
        QList<QPointF>(spline.CP, spline.CP + qBound(0, spline.num_pnt, MAXNUMPOINTS)));
}

bool paint_until_idle(TestEditor& editor) {
    constexpr int most_rounds = 100;
    for (int i = 0; i < most_rounds; ++i) {
        const int before = editor.paints;
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        if (editor.paints == before)
            return true;
    }
    return false;
}

QList<PaintOperation> of_kind(const QList<PaintOperation>& all, PaintOperation::Kind kind) {
    QList<PaintOperation> found;
    for (const PaintOperation& op : all) {
        if (op.kind == kind)
            found << op;
    }
    return found;
}

QStringList texts_of(const QList<PaintOperation>& all) {
    QStringList texts;
    for (const PaintOperation& op : of_kind(all, PaintOperation::Text))
        texts << op.text;
    return texts;
}

QPolygonF numbered(int count) {
    QPolygonF points;
    for (int i = 0; i < count; ++i)
        points << QPointF(1000 + i, 2000 + i);
    return points;
}

void number_store(SplineFoil& spline) {
    for (int i = 0; i < MAXNUMPOINTS; ++i) {
        spline.CP[i] = QPointF(1000 + i, 2000 + i);
        spline.rd_CP[i] = QPointF(-1000 - i, -2000 - i);
    }
}

QPolygonF store(const SplineFoil& spline) {
    return QPolygonF(QList<QPointF>(spline.CP, spline.CP + MAXNUMPOINTS));
}

QPolygonF second_store(const SplineFoil& spline) {
    return QPolygonF(QList<QPointF>(spline.rd_CP, spline.rd_CP + MAXNUMPOINTS));
}

QString knot_difference(const SplineFoil& spline) {
    if (spline.degree != 2 || spline.order != 3 || spline.num_knt != spline.num_pnt + 3)
        return QStringLiteral("degree %1, order %2, %3 knots")
            .arg(spline.degree)
            .arg(spline.order)
            .arg(spline.num_knt);
    for (int i = 0; i < spline.num_knt; ++i) {
        if (!same_bits(spline.b_knots[i], double(i) / (spline.num_knt - 1)))
            return QStringLiteral("knot %1 is ").arg(i) + exact_text(spline.b_knots[i]);
    }
    return QString();
}

QList<QLineF> lines_of(const QList<PaintOperation>& all, const QPen& pen) {
    QList<QLineF> found;
    for (const PaintOperation& op : of_kind(all, PaintOperation::Line)) {
        if (pen_text(op.pen) == pen_text(pen))
            found << QLineF(op.points.at(0), op.points.at(1));
    }
    return found;
}
