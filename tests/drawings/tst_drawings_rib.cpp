// SPDX-FileCopyrightText: Aerolith developers
// Ribs: the curve in the file, marks, mouth, text, and what is refused.
#include "drawings/dxf.h"
#include "drawings/outline_p.h"
#include "drawings/svg.h"
#include "ribs.h"
#include "sections/plane.h"
#include "support/testmain.h"

#include <QRandomGenerator>

#include <cmath>
#include <set>

using namespace drawings;
using sections::norm;

namespace {

const double chord = 2850.0;

RibOptions options_with(double allowance) {
    RibOptions options;
    options.chord = chord;
    options.allowance = allowance;
    return options;
}

sections::Section sample() {
    return spline_section(hull, 1.1, 4.25);
}

// The path of the first element of a group of an SVG file, y upwards again.
Path svg_path(const QByteArray& file, const QByteArray& group) {
    const qsizetype at = file.indexOf(" d=\"", file.indexOf("<g id=\"" + group + "\"")) + 4;
    QByteArray text = file.mid(at, file.indexOf('"', at) - at);
    Path path;
    path.closed = text.endsWith('Z');
    for (const char command : {'M', 'L', 'Q', 'C', 'Z'})
        text.replace(command, QByteArray(" ") + command + ' ');
    const QList<QByteArray> words = text.simplified().split(' ');
    char command = 'M';
    qsizetype next = 0;
    const auto point = [&] {
        const double x = words.value(next).toDouble();
        next += 2;
        return QPointF(x, -words.value(next - 1).toDouble());
    };
    while (next < words.size()) {
        if (std::isalpha(words[next][0])) {
            command = words[next++][0];
            continue;
        }
        if (command == 'M') {
            path.start = point();
            continue;
        }
        Segment segment;
        segment.degree = command == 'L' ? 1 : command == 'Q' ? 2 : 3;
        for (int i = 0; i + 1 < segment.degree; ++i)
            segment.controls[std::size_t(i)] = point();
        segment.end = point();
        path.segments.push_back(segment);
    }
    return path;
}

std::vector<QPointF> dots(const Scene& scene) {
    std::vector<QPointF> points;
    for (const Element& element : scene.elements) {
        if (const auto* dot = std::get_if<Dot>(&element.shape))
            points.push_back(dot->at);
    }
    return points;
}

const Text* text_of(const Scene& scene) {
    for (const Element& element : scene.elements) {
        if (const auto* text = std::get_if<Text>(&element.shape))
            return text;
    }
    return nullptr;
}

} // namespace

class tst_drawings_rib : public QObject {
    Q_OBJECT
private slots:
    void svg_is_the_curve_data();
    void svg_is_the_curve();
    void straight_mouth();
    void open_mouth();
    void marks_by_length();
    void marks_without_mouth();
    void marks_at_stations();
    void mark_shapes_data();
    void mark_shapes();
    void mouth_ends();
    void chord_line();
    void grain_data();
    void grain();
    void text_data();
    void text();
    void heights_of_text();
    void mirror();
    void both_orders_data();
    void both_orders();
    void refused_data();
    void refused();
    void too_much();
    void scale_bar();
};

void tst_drawings_rib::svg_is_the_curve_data() {
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<bool>("is_spline");
    QTest::newRow("spline") << hull << true;
    QTest::newRow("table") << naca(0.04, 0.4, 0.15, 40) << false;
    QRandomGenerator random(31);
    for (int i = 0; i < 10; ++i) {
        QPolygonF points = hull;
        for (qsizetype k = 1; k + 1 < points.size(); ++k)
            points[k] += QPointF(random.bounded(0.05), random.bounded(0.05));
        QTest::addRow("random spline %d", i) << points << true;
    }
}

// Each point of the path lies on the curve within 1e-9 of the chord, and the lengths agree.
void tst_drawings_rib::svg_is_the_curve() {
    QFETCH(QPolygonF, points);
    QFETCH(bool, is_spline);
    const sections::Section section = is_spline ? spline_section(points) : table_section(points);
    const RibResult result = rib(section, options_with(10.0));
    QVERIFY2(result.scene, qPrintable(result.reason));
    const Path path = svg_path(svg(*result.scene), "STITCH");
    QCOMPARE(path.segments.size(), section.curve.pieces().size());
    QVERIFY(path.closed);
    QPointF start = path.start;
    double worst = norm(start / chord - section.curve.position(section.curve.begin()));
    double length = 0.0;
    for (const Segment& segment : path.segments) {
        QPointF before = start;
        for (int i = 1; i <= 40; ++i) {
            const QPointF p = position(start, segment, i / 40.0);
            worst = std::max(worst, section.curve.nearest(p / chord).distance);
            length += norm(p - before);
            before = p;
        }
        start = segment.end;
    }
    worst = std::max(worst, norm(start / chord - section.curve.position(section.curve.end())));
    QVERIFY2(worst <= 1e-9, qPrintable(QString::number(worst)));
    QVERIFY(std::abs(length / chord - section.curve.length()) < 1e-3 * section.curve.length());
}

void tst_drawings_rib::straight_mouth() {
    RibOptions options = options_with(0.0);
    options.intake = Intake::straight;
    const sections::Section section = sample();
    const RibResult result = rib(section, options);
    QVERIFY2(result.scene, qPrintable(result.reason));
    const Path stitch = paths_of(*result.scene, Layer::stitch).front();
    const FullSize full(section, chord);
    const QPointF a = full.at(full.mouth()->from).point;
    const QPointF b = full.at(full.mouth()->to).point;
    // Both ends are at the openings, and a straight line joins them.
    QVERIFY(std::abs(a.x() - 0.011 * chord) < 1e-3);
    QVERIFY(std::abs(b.x() - 0.0425 * chord) < 1e-3);
    QVERIFY(a.y() < 0.0 && b.y() < a.y());
    QPointF start = stitch.start;
    int lines = 0;
    for (const Segment& segment : stitch.segments) {
        lines += segment.degree == 1 && norm(start - a) < 1e-6 && norm(segment.end - b) < 1e-6;
        start = segment.end;
    }
    QCOMPARE(lines, 1);
}

void tst_drawings_rib::open_mouth() {
    RibOptions options = options_with(0.0);
    options.intake = Intake::open;
    const RibResult result = rib(sample(), options);
    QVERIFY2(result.scene, qPrintable(result.reason));
    QVERIFY(paths_of(*result.scene, Layer::cut).empty());
    const std::vector<Path> pieces = paths_of(*result.scene, Layer::stitch);
    QCOMPARE(pieces.size(), std::size_t(2));
    QVERIFY(!pieces[0].closed && !pieces[1].closed);
    // The second piece ends where the first begins.
    QVERIFY(norm(pieces[1].segments.back().end - pieces[0].start) < 1e-9);
}

void tst_drawings_rib::marks_by_length() {
    RibOptions options = options_with(10.0);
    options.mark_step = 100.0;
    options.mark = MarkShape::point;
    const sections::Section section = sample();
    const RibResult result = rib(section, options);
    const FullSize full(section, chord);
    const double whole = full.curve().length();
    const double lower = whole - full.mouth()->to;
    const std::vector<QPointF> marks = dots(*result.scene);
    const auto upper_count = std::size_t(full.mouth()->from / 100.0);
    QCOMPARE(marks.size(), upper_count + std::size_t(lower / 100.0));
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const sections::Foot foot = full.curve().nearest(marks[i]);
        const double distance = full.curve().length_to(foot.place);
        const double wanted =
            i < upper_count ? 100.0 * double(i + 1) : whole - 100.0 * double(i - upper_count + 1);
        QVERIFY2(std::abs(distance - wanted) < 1e-6, qPrintable(QString::number(distance)));
        QVERIFY(std::abs(foot.distance - 5.0) < 1e-6);
    }
}

void tst_drawings_rib::marks_without_mouth() {
    RibOptions options = options_with(10.0);
    options.mark_step = 300.0;
    options.mark = MarkShape::point;
    const sections::Section section = spline_section(hull);
    const RibResult result = rib(section, options);
    const FullSize full(section, chord);
    const double nose = full.leading_edge_distance();
    const double lower = full.curve().length() - nose;
    QCOMPARE(dots(*result.scene).size(), std::size_t(nose / 300.0) + std::size_t(lower / 300.0));
    QVERIFY(paths_of(*result.scene, Layer::mouth).empty());
}

void tst_drawings_rib::marks_at_stations() {
    RibOptions options = options_with(0.0);
    options.mark_at = {{false, 9.5}, {true, 30.0}, {false, 2.0}, {false, 120.0}};
    options.mark = MarkShape::point;
    const RibResult result = rib(sample(), options);
    const std::vector<QPointF> marks = dots(*result.scene);
    QCOMPARE(marks.size(), std::size_t(3));
    QVERIFY(std::abs(marks[0].x() - 0.095 * chord) < 1e-6 && marks[0].y() < 0.0);
    QVERIFY(std::abs(marks[1].x() - 0.3 * chord) < 1e-6 && marks[1].y() > 0.0);
    QVERIFY(std::abs(marks[2].x() - 0.02 * chord) < 1e-6 && marks[2].y() < 0.0);
    QCOMPARE(result.notes,
             QStringList(QStringLiteral("no mark at lower:120: that side does not reach it")));

    options.intake = Intake::straight;
    const RibResult straight = rib(sample(), options);
    QCOMPARE(dots(*straight.scene).size(), std::size_t(2));
    QCOMPARE(straight.notes.first(), QStringLiteral("no mark at lower:2, in the mouth"));
}

void tst_drawings_rib::mark_shapes_data() {
    QTest::addColumn<int>("shape");
    QTest::addColumn<double>("allowance");
    QTest::addColumn<double>("nearest");
    QTest::addColumn<double>("farthest");
    QTest::newRow("point") << int(MarkShape::point) << 10.0 << 5.0 << 5.0;
    QTest::newRow("circle") << int(MarkShape::circle) << 8.0 << 2.0 << 6.0;
    QTest::newRow("large circle") << int(MarkShape::circle) << 20.0 << 7.5 << 12.5;
    QTest::newRow("notch") << int(MarkShape::notch) << 10.0 << 5.0 << 10.0;
    QTest::newRow("point on the curve") << int(MarkShape::point) << 0.0 << 0.0 << 0.0;
    QTest::newRow("circle on the curve") << int(MarkShape::circle) << 0.0 << -1.0 << 1.0;
    QTest::newRow("notch from the curve") << int(MarkShape::notch) << 0.0 << -3.0 << 0.0;
}

// How far a mark extends from the seam; on a straight edge its box shows this.
void tst_drawings_rib::mark_shapes() {
    QFETCH(int, shape);
    QFETCH(double, allowance);
    RibOptions options = options_with(allowance);
    options.mark = MarkShape(shape);
    options.mark_at = {{true, 50.0}};
    const QPolygonF box = {{1.0, 0.0}, {1.0, 0.2}, {0.0, 0.2}, {0.0, 0.0}, {1.0, 0.0}};
    const RibResult result = rib(polygon_section(box), options);
    QVERIFY2(result.scene, qPrintable(result.reason));
    Scene marks;
    for (const Element& element : result.scene->elements) {
        if (element.layer == Layer::marks)
            marks.elements.push_back(element);
    }
    QCOMPARE(marks.elements.size(), std::size_t(1));
    const QRectF reach = bounds(marks, 0.01);
    QTEST(reach.top() - 0.2 * chord, "nearest");
    QTEST(reach.bottom() - 0.2 * chord, "farthest");
    QCOMPARE(reach.center().x(), 0.5 * chord);
}

void tst_drawings_rib::mouth_ends() {
    const RibResult result = rib(sample(), options_with(10.0));
    const std::vector<Path> ends = paths_of(*result.scene, Layer::mouth);
    QCOMPARE(ends.size(), std::size_t(2));
    const FullSize full(sample(), chord);
    for (const Path& end : ends) {
        QVERIFY(full.curve().nearest(end.start).distance < 1e-9);
        const QPointF outer = end.segments.front().end;
        QVERIFY(std::abs(full.curve().nearest(outer).distance - 10.0) < 1e-6);
    }
}

void tst_drawings_rib::chord_line() {
    const RibResult result = rib(sample(), options_with(0.0));
    const Path line = paths_of(*result.scene, Layer::chord).front();
    const FullSize full(sample(), chord);
    QCOMPARE(line.start, full.leading_edge());
    QCOMPARE(line.segments.front().end, full.trailing_edge());
    QVERIFY(line.start.x() < 0.01 * chord);
}

void tst_drawings_rib::grain_data() {
    QTest::addColumn<double>("degrees");
    for (const double degrees : {0.0, 30.0, -45.0, 90.0, 180.0})
        QTest::addRow("%g", degrees) << degrees;
}

void tst_drawings_rib::grain() {
    QFETCH(double, degrees);
    RibOptions options = options_with(0.0);
    options.grain = degrees;
    const RibResult result = rib(table_section(naca(0.0, 0.4, 0.18, 60)), options);
    const std::vector<Path> arrow = paths_of(*result.scene, Layer::grain);
    QCOMPARE(arrow.size(), std::size_t(3));
    const QPointF along = arrow[0].segments.front().end - arrow[0].start;
    // Seen from the trailing edge, a positive angle is up.
    const double angle = std::atan2(along.y(), -along.x()) * 180.0 / pi;
    const double off = std::remainder(angle - degrees, 180.0);
    QVERIFY2(std::abs(off) < 1e-6, qPrintable(QString::number(angle)));
    const QPolygonF outline = points_of(*result.scene, Layer::stitch);
    for (const Path& path : arrow) {
        for (const QPointF& p : flattened(path, 1.0))
            QVERIFY(outline.containsPoint(p, Qt::OddEvenFill));
    }
}

void tst_drawings_rib::text_data() {
    QTest::addColumn<double>("size");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("inside");
    QTest::newRow("full size") << 2850.0 << "R7" << true;
    QTest::newRow("small") << 150.0 << "R7" << true;
    QTest::newRow("long") << 2850.0 << QString(60, u'M') << true;
    QTest::newRow("too long") << 500.0 << QString(200, u'M') << false;
    QTest::newRow("too small") << 20.0 << "R7" << false;
}

void tst_drawings_rib::text() {
    QFETCH(double, size);
    QFETCH(QString, text);
    QFETCH(bool, inside);
    RibOptions options;
    options.chord = size;
    options.text = text;
    const RibResult result = rib(sample(), options);
    const Text* line = text_of(*result.scene);
    QVERIFY(line);
    QCOMPARE(line->text, text);
    const QRectF box = text_box(*line);
    const QPolygonF outline = points_of(*result.scene, Layer::stitch);
    for (const QPointF& corner :
         {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()})
        QCOMPARE(outline.containsPoint(corner, Qt::OddEvenFill), inside);
    if (!inside)
        QVERIFY(box.bottom() < outline.boundingRect().top());
}

void tst_drawings_rib::mirror() {
    RibOptions options = options_with(10.0);
    options.text = QStringLiteral("R7");
    options.mark_step = 200.0;
    const RibResult left = rib(sample(), options);
    options.mirror = true;
    const RibResult right = rib(sample(), options);
    const QPolygonF cut = points_of(*left.scene, Layer::cut);
    const QPolygonF image = points_of(*right.scene, Layer::cut);
    QCOMPARE(image.size(), cut.size());
    for (qsizetype i = 0; i < cut.size(); ++i)
        QCOMPARE(image[i], QPointF(chord - cut[i].x(), cut[i].y()));
    QCOMPARE(text_of(*right.scene)->text, QStringLiteral("R7"));
    QCOMPARE(text_box(*text_of(*right.scene)).right(),
             chord - text_box(*text_of(*left.scene)).left());
}

void tst_drawings_rib::both_orders_data() {
    QTest::addColumn<QPolygonF>("points");
    QTest::newRow("symmetric thickness") << naca(0.02, 0.4, 0.15, 50);
    QTest::newRow("cambered") << naca(0.06, 0.3, 0.12, 33);
}

void tst_drawings_rib::both_orders() {
    QFETCH(QPolygonF, points);
    RibOptions options = options_with(12.0);
    options.allowance_trailing_edge = 25.0;
    options.allowance_mouth = 20.0;
    options.mark_step = 150.0;
    options.grain = 20.0;
    options.text = QStringLiteral("R7");
    const RibResult one = rib(table_section(points, 1.5, 5.0), options);
    std::reverse(points.begin(), points.end());
    const RibResult other = rib(table_section(points, 1.5, 5.0), options);
    QVERIFY(one.scene && other.scene);
    QCOMPARE(other.scene->elements.size(), one.scene->elements.size());
    for (std::size_t i = 0; i < one.scene->elements.size(); ++i) {
        const Element& a = one.scene->elements[i];
        const Element& b = other.scene->elements[i];
        QCOMPARE(b.layer, a.layer);
        QCOMPARE(b.shape.index(), a.shape.index());
        const auto* path = std::get_if<Path>(&a.shape);
        if (!path)
            continue;
        const QPolygonF p = flattened(*path, 0.01);
        const QPolygonF q = flattened(std::get<Path>(b.shape), 0.01);
        QCOMPARE(q.size(), p.size());
        for (qsizetype k = 0; k < p.size(); ++k)
            QVERIFY2(norm(p[k] - q[k]) < 1e-4, qPrintable(QString::number(norm(p[k] - q[k]))));
    }
    // Within a thousandth of a millimetre the files are the same.
    QCOMPARE(dxf(*other.scene).size(), dxf(*one.scene).size());
}

void tst_drawings_rib::refused_data() {
    QTest::addColumn<double>("second_opening");
    QTest::addColumn<int>("intake");
    QTest::addColumn<double>("allowance");
    QTest::addColumn<bool>("mouth_allowance");
    QTest::addColumn<QString>("reason");
    const QString none = QStringLiteral("no mouth to leave open or to cross straight");
    QTest::newRow("straight without mouth") << 0.0 << int(Intake::straight) << 0.0 << false << none;
    QTest::newRow("open without mouth") << 0.0 << int(Intake::open) << 0.0 << false << none;
    QTest::newRow("openings the wrong way") << 0.5 << int(Intake::open) << 0.0 << false << none;
    QTest::newRow("mouth allowance")
        << 0.0 << int(Intake::curve) << 10.0 << true << "no mouth for an allowance of its own";
    QTest::newRow("open with allowance")
        << 4.25 << int(Intake::open) << 10.0 << false
        << "an open mouth is for drawing only and has no allowance";
}

void tst_drawings_rib::refused() {
    QFETCH(double, second_opening);
    QFETCH(int, intake);
    QFETCH(double, allowance);
    QFETCH(bool, mouth_allowance);
    RibOptions options = options_with(allowance);
    options.intake = Intake(intake);
    if (mouth_allowance)
        options.allowance_mouth = 5.0;
    const RibResult result = rib(spline_section(hull, 1.1, second_opening), options);
    QVERIFY(!result.scene);
    QTEST(result.reason, "reason");
}

void tst_drawings_rib::too_much() {
    RibOptions options = options_with(0.0);
    options.text = QString(longest_text, u'M');
    QVERIFY(rib(sample(), options).scene);
    options.text += u'M';
    QCOMPARE(rib(sample(), options).reason, QStringLiteral("a text of more than 1000 characters"));

    options = options_with(0.0);
    const double length = FullSize(sample(), chord).curve().length();
    options.mark_step = 1.0001 * length / most_marks;
    QVERIFY(rib(sample(), options).scene);
    options.mark_step = 0.9999 * length / most_marks;
    QCOMPARE(rib(sample(), options).reason, QStringLiteral("more than 10000 marks"));
}

void tst_drawings_rib::scale_bar() {
    Scene scene = *rib(sample(), options_with(10.0)).scene;
    const QRectF before = bounds(scene, 0.01);
    add_scale_bar(scene, 0.01);
    const Path bar = paths_of(scene, Layer::scale).front();
    QCOMPARE(bar.segments.front().end - bar.start, QPointF(100.0, 0.0));
    QVERIFY(bar.start.y() < before.top());
    QCOMPARE(text_of(scene)->text, QStringLiteral("100 mm"));
}

void tst_drawings_rib::heights_of_text() {
    std::set<double> heights;
    RibOptions options = options_with(0.0);
    options.text = QStringLiteral("R7");
    for (options.chord = 40.0; options.chord < 1000.0; options.chord += 5.0) {
        const Text line = *text_of(*rib(sample(), options).scene);
        if (line.at.y() > 0.0) // inside
            heights.insert(line.height);
    }
    QCOMPARE(heights, std::set<double>({2.5, 3.0, 4.0, 5.0, 6.0, 8.0, 10.0, 12.0, 15.0}));
}

AEROLITH_GUILESS_TEST_MAIN(tst_drawings_rib)
#include "tst_drawings_rib.moc"
