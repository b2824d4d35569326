// SPDX-FileCopyrightText: Aerolith developers
// Scenes: flattening, boxes, mirroring.
#include "drawings/scene.h"
#include "support/testmain.h"

#include <cmath>

using namespace drawings;

namespace {

Path arch() {
    return {{0.0, 0.0}, {{2, {QPointF(50.0, 100.0)}, {100.0, 0.0}}}, false};
}

double distance_to_line(QPointF p, QPointF a, QPointF b) {
    const QPointF d = b - a;
    const double u =
        std::clamp(QPointF::dotProduct(p - a, d) / QPointF::dotProduct(d, d), 0.0, 1.0);
    const QPointF r = p - a - u * d;
    return std::hypot(r.x(), r.y());
}

} // namespace

class tst_drawings_scene : public QObject {
    Q_OBJECT
private slots:
    void flattening_data();
    void flattening();
    void cubics_as_fine_as_parabolas();
    void flattened_ends();
    void bezier_points();
    void boxes();
    void mirror();
    void printable_data();
    void printable();
};

void tst_drawings_scene::flattening_data() {
    QTest::addColumn<int>("degree");
    QTest::addColumn<double>("flatness");
    for (const double flatness : {1.0, 0.1, 0.01, 0.001}) {
        QTest::addRow("parabola %g", flatness) << 2 << flatness;
        QTest::addRow("cubic %g", flatness) << 3 << flatness;
    }
}

// Every point of the curve lies within the flatness of the polyline, and the polyline is not
// needlessly fine: half as many lines would not be enough.
void tst_drawings_scene::flattening() {
    QFETCH(int, degree);
    QFETCH(double, flatness);
    const Segment segment = {degree, {QPointF(30.0, 120.0), QPointF(90.0, -80.0)}, {100.0, 0.0}};
    const QPolygonF points = flattened({{0.0, 0.0}, {segment}, false}, flatness);
    double farthest = 0.0;
    for (int i = 0; i <= 20000; ++i) {
        const QPointF p = position({0.0, 0.0}, segment, i / 20000.0);
        double nearest = 1e9;
        for (qsizetype k = 1; k < points.size(); ++k)
            nearest = std::min(nearest, distance_to_line(p, points[k - 1], points[k]));
        farthest = std::max(farthest, nearest);
    }
    QVERIFY2(farthest <= flatness, qPrintable(QString::number(farthest)));
    QVERIFY2(farthest > flatness / 4.0, qPrintable(QString::number(farthest)));
}

void tst_drawings_scene::cubics_as_fine_as_parabolas() {
    const QPointF end(100.0, 0.0);
    const QPointF middle(30.0, 120.0);
    const Segment parabola = {2, {middle, {}}, end};
    const Segment cubic = {3, {middle * 2.0 / 3.0, (2.0 * middle + end) / 3.0}, end};
    QCOMPARE(flattened({{0.0, 0.0}, {cubic}, false}, 0.0101).size(),
             flattened({{0.0, 0.0}, {parabola}, false}, 0.0101).size());
}

void tst_drawings_scene::flattened_ends() {
    const QPolygonF points = flattened(arch(), 0.01);
    QCOMPARE(points.first(), QPointF(0.0, 0.0));
    QCOMPARE(points.last(), QPointF(100.0, 0.0));
    const QPolygonF square = {{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 0.0}};
    QCOMPARE(flattened(path_through(square, true), 0.01).size(), 3);
    QCOMPARE(flattened(path_through(square, false), 0.01).size(), 4);
    QCOMPARE(flattened({{5.0, 6.0}, {}, true}, 0.01), QPolygonF({{5.0, 6.0}}));
    // Values that are not finite give a bounded number of lines.
    const Path wild = {{0.0, 0.0}, {{2, {QPointF(qInf(), 0.0)}, {1.0, 0.0}}}, false};
    QVERIFY(flattened(wild, 0.01).size() <= 10001);
    const Path torn = {{0.0, 0.0}, {{3, {QPointF(qQNaN(), 0.0), QPointF()}, {1.0, 0.0}}}, false};
    QVERIFY(flattened(torn, 0.01).size() <= 10001);
}

void tst_drawings_scene::bezier_points() {
    const Segment parabola = {2, {QPointF(1.0, 2.0)}, {2.0, 0.0}};
    QCOMPARE(position({0.0, 0.0}, parabola, 0.5), QPointF(1.0, 1.0));
    QCOMPARE(position({0.0, 0.0}, parabola, 0.25), QPointF(0.5, 0.75));
    const Segment cubic = {3, {QPointF(1.0, 3.0), QPointF(2.0, 3.0)}, {3.0, 0.0}};
    QCOMPARE(position({0.0, 0.0}, cubic, 0.5), QPointF(1.5, 2.25));
    QCOMPARE(position({2.0, 4.0}, {1, {}, {4.0, 8.0}}, 0.25), QPointF(2.5, 5.0));
}

void tst_drawings_scene::boxes() {
    Scene scene;
    QVERIFY(bounds(scene, 0.01).isNull());
    scene.add(Layer::stitch, arch());
    QRectF box = bounds(scene, 0.01);
    QCOMPARE(box.left(), 0.0);
    QCOMPARE(box.right(), 100.0);
    QVERIFY(std::abs(box.bottom() - 50.0) <= 0.01);
    scene.add(Layer::marks, Circle{{-10.0, 0.0}, 5.0});
    scene.add(Layer::marks, Dot{{0.0, -7.0}});
    scene.add(Layer::text, Text{{90.0, 60.0}, 10.0, QStringLiteral("ABC")});
    box = bounds(scene, 0.01);
    QCOMPARE(box.left(), -15.0);
    QCOMPARE(box.top(), -7.0);
    QCOMPARE(box.right(), 90.0 + 3 * 8.0);
    QCOMPARE(box.bottom(), 70.0);

    Scene moved;
    moved.add(scene, {1000.0, -50.0});
    QCOMPARE(bounds(moved, 0.01), box.translated(1000.0, -50.0));
}

void tst_drawings_scene::mirror() {
    Scene scene;
    scene.add(Layer::stitch, arch());
    scene.add(Layer::marks, Circle{{10.0, 1.0}, 2.0});
    scene.add(Layer::marks, Dot{{20.0, 1.0}});
    scene.add(Layer::text, Text{{30.0, 1.0}, 10.0, QStringLiteral("AB")});
    const Scene image = mirrored(scene, 50.0);
    const Path path = std::get<Path>(image.elements[0].shape);
    QCOMPARE(path.start, QPointF(100.0, 0.0));
    QCOMPARE(path.segments[0].controls[0], QPointF(50.0, 100.0));
    QCOMPARE(path.segments[0].end, QPointF(0.0, 0.0));
    QCOMPARE(std::get<Circle>(image.elements[1].shape).centre, QPointF(90.0, 1.0));
    QCOMPARE(std::get<Dot>(image.elements[2].shape).at, QPointF(80.0, 1.0));
    // The box 30..46 becomes 54..70, and the text begins at its left.
    QCOMPARE(std::get<Text>(image.elements[3].shape).at, QPointF(54.0, 1.0));
}

void tst_drawings_scene::printable_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "Rib 12/A"
                           << "Rib 12/A";
    QTest::newRow("umlaut") << QStringLiteral(u"Flügel") << QStringLiteral(u"Flügel");
    QTest::newRow("beyond 16 bits")
        << QStringLiteral(u"\U0001FA82") << QStringLiteral(u"\U0001FA82");
    QTest::newRow("line feed") << "a\nb\x7f"
                               << "a b ";
    QTest::newRow("half pair") << QString(QChar(0xd83e)) + u'x' << QStringLiteral(u"\ufffdx");
    QTest::newRow("noncharacter") << QString(QChar(0xfffe)) << QStringLiteral(u"\ufffd");
}

void tst_drawings_scene::printable() {
    QFETCH(QString, text);
    QTEST(drawings::printable(text), "expected");
}

AEROLITH_GUILESS_TEST_MAIN(tst_drawings_scene)
#include "tst_drawings_scene.moc"
