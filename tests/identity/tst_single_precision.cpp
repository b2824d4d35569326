// SPDX-FileCopyrightText: Aerolith developers
// Coordinates that pass through single precision are rounded. The build flags must keep the
// compiler from omitting this.
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QPolygonF>
#include <QTest>
#include <QVector2D>
#include <QVector3D>

namespace {

constexpr double tenth = 0.100000001490116119384765625; // 0.1 in single precision
const QPointF given(0.1, -0.1);
const QPointF rounded(tenth, -tenth);

// Not inlined, because the compiler knows the constants above.
[[gnu::noinline]] void round_polygon(QPolygonF& polygon) {
    for (QPointF& point : polygon)
        point = QPointF(double(float(point.x())), double(float(point.y())));
}

[[gnu::noinline]] QPointF through_plane(QPointF point) {
    return QVector2D(point).toPointF();
}

[[gnu::noinline]] QPointF through_space(QPointF point) {
    const QVector3D v(float(point.x()), float(point.y()), 0.0F);
    return QPointF(double(v.x()), double(v.y()));
}

} // namespace

class tst_single_precision : public QObject {
    Q_OBJECT
private slots:
    void polygon_data();
    void polygon();
    void vectors();
};

void tst_single_precision::polygon_data() {
    QTest::addColumn<int>("points");

    for (int points = 1; points <= 9; ++points)
        QTest::addRow("%d", points) << points;
}

// Loops are unrolled and have remainders, so the number of points matters.
void tst_single_precision::polygon() {
    QFETCH(int, points);
    QPolygonF polygon(points, given);
    round_polygon(polygon);
    QCOMPARE(first_difference(polygon, QPolygonF(points, rounded)), QString());
}

void tst_single_precision::vectors() {
    COMPARE_BITS(through_plane(given), rounded);
    COMPARE_BITS(through_space(given), rounded);
}

AEROLITH_GUILESS_TEST_MAIN(tst_single_precision)
#include "tst_single_precision.moc"
