// SPDX-FileCopyrightText: Aerolith developers
// Pictures of sections: their content, and that no text overlaps another.
#include "drawings/page_p.h"
#include "drawings/picture.h"
#include "drawings/picture_plots_p.h"
#include "drawings/svg.h"
#include "drawings/textwidth_p.h"
#include "ribs.h"
#include "sections/compare.h"
#include "support/testmain.h"

#include <set>
#include <tuple>

using namespace drawings;

namespace {

Pictured pictured(const sections::Section& section, const QString& name) {
    return {name, section};
}

Pictured thin_table(const QString& name) {
    return pictured(table_section(naca(0.02, 0.4, 0.12, 30)), name);
}

Pictured spline(const QString& name) {
    return pictured(spline_section(hull), name);
}

std::vector<Text> texts_of(const Scene& scene) {
    std::vector<Text> texts;
    for (const Element& element : scene.elements) {
        if (const auto* text = std::get_if<Text>(&element.shape))
            texts.push_back(*text);
    }
    return texts;
}

QStringList strings_of(const Scene& scene) {
    QStringList strings;
    for (const Text& text : texts_of(scene))
        strings << text.text;
    return strings;
}

// Elements of one kind of shape that have this colour.
template<typename Shape>
std::vector<Element> elements_of(const Scene& scene, const char* colour) {
    std::vector<Element> found;
    for (const Element& element : scene.elements) {
        if (std::holds_alternative<Shape>(element.shape) &&
            QByteArray(element.look->colour) == colour)
            found.push_back(element);
    }
    return found;
}

// Why the texts of a picture are illegible; empty if they are legible.
QString fault_of_texts(const Scene& scene) {
    const std::vector<Text> texts = texts_of(scene);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const QRectF room = room_of(texts[i]);
        if (!scene.page->contains(room))
            return QStringLiteral("leaves the page: ") + texts[i].text;
        for (std::size_t k = 0; k < i; ++k) {
            if (room.intersects(room_of(texts[k])))
                return texts[k].text + QStringLiteral(" lies on ") + texts[i].text;
        }
    }
    return {};
}

const QString awkward_names[] = {
    QStringLiteral("a"),
    QString(300, QLatin1Char('W')),
    QStringLiteral("<b>&amp;\"quoted\" & 'more'</b>"),
    QString::fromUtf8("\xd7\xa6\xd7\x95\xd7\x9c\xd7\x9c\xd7\x9f \xd7\x9b\xd7\xa0\xd7\xa3"),
    QString::fromUtf8("\xd8\xac\xd9\x86\xd8\xa7\xd8\xad 7"),
    QStringLiteral("tab\tline\nescape\x1b[31m"),
    QString::fromUtf8("\xe7\xbf\xbc\xe5\x9e\x8b\xe7\xbf\xbc\xe5\x9e\x8b \xf0\x9f\xaa\x82"),
    QStringLiteral("a long name with many words that goes on and on and on and on and on and on "
                   "until no legend could hold it in one line"),
    QString(),
    QStringLiteral("%1 %2 %n"),
    QString(QChar(0xd800)) + QStringLiteral("half a pair"),
    QStringLiteral("rib-12"),
};

} // namespace

class tst_drawings_picture : public QObject {
    Q_OBJECT
private slots:
    void texts_apart_data();
    void texts_apart();
    void looks();
    void looks_of_all();
    void exact_curve();
    void openings();
    void both_orders();
    void sizes();
    void too_small();
    void odd_sections_data();
    void odd_sections();
    void deviation();
    void farthest_in_the_legend_data();
    void farthest_in_the_legend();
    void deviation_of_a_fit();
    void far_apart();
    void curvature();
    void curvature_of_a_circle();
    void nose();
    void same_bytes();
};

void tst_drawings_picture::texts_apart_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<QSizeF>("size");
    for (int count = 1; count <= 12; ++count) {
        QTest::addRow("%d sections", count) << count << QSizeF();
        QTest::addRow("%d sections, narrow", count) << count << QSizeF(120.0, 600.0);
    }
    QTest::newRow("most") << int(most_pictured) << QSizeF();
    QTest::newRow("large") << 12 << QSizeF(2000.0, 2000.0);
}

void tst_drawings_picture::texts_apart() {
    QFETCH(int, count);
    QFETCH(QSizeF, size);
    PictureOptions options;
    if (size.isValid())
        options.size = size;
    for (int turn = 0; turn < 2; ++turn) {
        options.nose = options.curvature = options.deviation = turn == 1;
        std::vector<Pictured> all;
        for (int i = 0; i < count; ++i) {
            const QString name =
                awkward_names[std::size_t(i + 5 * turn) % std::size(awkward_names)];
            all.push_back(
                i % 2 == turn
                    ? pictured(table_section(naca(0.0, 0.4, 0.05 + 0.01 * i, 20), 1.234, 99.8765),
                               name)
                    : spline(name));
        }
        const PictureResult result = picture(all, options);
        QVERIFY2(result.scene, qPrintable(result.reason));
        QCOMPARE(fault_of_texts(*result.scene), QString());
        // There are a title, labels and the names.
        QVERIFY(int(texts_of(*result.scene).size()) > count + 6);
    }
}

void tst_drawings_picture::looks() {
    const Scene scene =
        *picture({thin_table(QStringLiteral("table")), spline(QStringLiteral("spline"))}).scene;
    // The curve and its sample in the legend.
    const std::vector<Element> blue = elements_of<Path>(scene, "#0000ff");
    const std::vector<Element> red = elements_of<Path>(scene, "#ff0000");
    QCOMPARE(blue.size(), std::size_t(2));
    QCOMPARE(red.size(), std::size_t(2));
    for (std::size_t i = 0; i < 2; ++i) {
        QVERIFY(blue[i].look->dashes.empty());
        QVERIFY(!red[i].look->dashes.empty());
    }
    const QStringList strings = strings_of(scene);
    QVERIFY(strings.contains(QStringLiteral("table, table")));
    QVERIFY(strings.contains(QStringLiteral("spline, spline")));
    for (const char* label : {"0", "0.5", "1"})
        QVERIFY2(strings.contains(QString::fromLatin1(label)), label);
}

// Even in black and white all sections differ.
void tst_drawings_picture::looks_of_all() {
    std::vector<Pictured> all;
    for (std::size_t i = 0; i < most_pictured; ++i)
        all.push_back(i % 3 == 0 ? spline(QString::number(i)) : thin_table(QString::number(i)));
    const Scene scene = *picture(all).scene;
    std::set<std::pair<double, std::vector<double>>> looks;
    int curves = 0;
    for (const Element& element : scene.elements) {
        const auto* path = std::get_if<Path>(&element.shape);
        if (path && path->segments.size() > 4) {
            ++curves;
            looks.emplace(element.look->width, element.look->dashes);
        }
    }
    QCOMPARE(curves, int(most_pictured));
    QCOMPARE(looks.size(), most_pictured);
}

// The parabolas of a spline stay parabolas, at the same scale for both axes.
void tst_drawings_picture::exact_curve() {
    const Pictured one = spline(QStringLiteral("s"));
    const Scene scene = *picture({one}).scene;
    const Path path = std::get<Path>(elements_of<Path>(scene, "#ff0000").front().shape);
    const std::vector<sections::Piece>& pieces = one.section.curve.pieces();
    QCOMPARE(path.segments.size(), pieces.size());
    QVERIFY(path.closed);
    const QRectF box = bounds(scene, 0.01);
    QCOMPARE(box, *scene.page);
    const QPointF start = pieces.front().position(0.0);
    const QPointF nose = pieces[pieces.size() / 2].position(0.0);
    const QPointF from = path.start;
    const QPointF to = path.segments[pieces.size() / 2 - 1].end;
    const double scale = (to.x() - from.x()) / (nose.x() - start.x());
    QVERIFY(scale > 150.0 && scale < 240.0);
    QVERIFY(std::abs(to.y() - from.y() - scale * (nose.y() - start.y())) < 1e-9);
    for (std::size_t i = 0; i < pieces.size(); ++i)
        QCOMPARE(path.segments[i].degree, pieces[i].degree());
}

void tst_drawings_picture::openings() {
    const Pictured open =
        pictured(table_section(naca(0.0, 0.4, 0.12, 60), 2.0, 8.0), QStringLiteral("r"));
    const Scene scene = *picture({open}).scene;
    std::vector<Circle> marks;
    for (const Element& element : elements_of<Circle>(scene, "#0000ff"))
        marks.push_back(std::get<Circle>(element.shape));
    QCOMPARE(marks.size(), std::size_t(2));
    // 6 % of the chord apart, on the lower side: below the nose, which is where x is least.
    const Path curve = std::get<Path>(elements_of<Path>(scene, "#0000ff").front().shape);
    const QPolygonF points = flattened(curve, 0.01);
    const QRectF box = points.boundingRect();
    QVERIFY(std::abs(marks[0].centre.x() - box.left() - 0.02 * box.width()) < 1e-3 * box.width());
    QVERIFY(std::abs(marks[1].centre.x() - box.left() - 0.08 * box.width()) < 1e-3 * box.width());
    for (const Circle& mark : marks)
        QVERIFY(mark.centre.y() < box.center().y());
    const std::vector<Element> ends = elements_of<Circle>(scene, "#000000");
    QCOMPARE(ends.size(), std::size_t(2));
    QCOMPARE(std::get<Circle>(ends[1].shape).centre - std::get<Circle>(ends[0].shape).centre,
             QPointF(8.0, 0.0));
    const QStringList strings = strings_of(scene);
    QVERIFY(strings.contains(QStringLiteral("r, table, intake from 2 to 8 %")));
    QVERIFY(strings.contains(QStringLiteral("start and end of the intake")));
    // The entries of the legend begin one below the other.
    std::set<double> starts;
    for (const Text& text : texts_of(scene)) {
        if (text.text.contains(QLatin1String("intake")))
            starts.insert(text.at.x());
    }
    QCOMPARE(starts.size(), std::size_t(1));
    QVERIFY(!strings_of(*picture({thin_table(QStringLiteral("r"))}).scene)
                 .contains(QStringLiteral("start and end of the intake")));
}

void tst_drawings_picture::both_orders() {
    const QPolygonF points = naca(0.03, 0.3, 0.14, 40);
    const auto drawn = [](const QPolygonF& outline) {
        return svg(*picture({pictured(table_section(outline, 1.5, 6.0), QStringLiteral("t")),
                             spline(QStringLiteral("s"))})
                        .scene);
    };
    QCOMPARE(drawn(reversed(points)), drawn(points));
}

void tst_drawings_picture::sizes() {
    for (const QSizeF size : {QSizeF(240.0, 100.0), QSizeF(120.0, 90.0), QSizeF(400.0, 60.0)}) {
        PictureOptions options;
        options.size = size;
        const PictureResult result =
            picture({thin_table(QStringLiteral("t")), spline(QStringLiteral("s"))}, options);
        QVERIFY2(result.scene, qPrintable(result.reason));
        QCOMPARE(result.scene->page->size(), size);
        QCOMPARE(bounds(*result.scene, 0.01), *result.scene->page);
    }
}

void tst_drawings_picture::too_small() {
    PictureOptions options;
    options.size = QSizeF(120.0, 40.0);
    std::vector<Pictured> all(most_pictured, thin_table(QStringLiteral("t")));
    const PictureResult result = picture(all, options);
    QVERIFY(!result.scene);
    QVERIFY2(result.reason.startsWith(QLatin1String("does not fit a height of 40 mm; it takes ")),
             qPrintable(result.reason));
}

void tst_drawings_picture::odd_sections_data() {
    QTest::addColumn<QPolygonF>("points");
    QTest::newRow("flat rib") << QPolygonF{
        {1.0, 0.0}, {0.5, 0.0}, {0.0, 0.0}, {0.5, 0.0}, {1.0, 0.0}};
    QTest::newRow("single-skin rib")
        << QPolygonF{{1.0, 0.0},   {0.6, 0.08}, {0.2, 0.1},  {0.0, 0.0},
                     {0.1, -0.02}, {0.3, 0.05}, {0.6, 0.06}, {1.0, 0.0}};
    QTest::newRow("blunt trailing edge")
        << QPolygonF{{1.0, 0.05}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, -0.05}};
    QTest::newRow("higher than wide")
        << QPolygonF{{1.0, 0.0}, {0.5, 4.0}, {0.0, 0.0}, {0.5, -4.0}, {1.0, 0.0}};
}

void tst_drawings_picture::odd_sections() {
    QFETCH(QPolygonF, points);
    const PictureResult result = picture({pictured(table_section(points), QStringLiteral("odd"))});
    QVERIFY2(result.scene, qPrintable(result.reason));
    QCOMPARE(fault_of_texts(*result.scene), QString());
    QCOMPARE(bounds(*result.scene, 0.01), *result.scene->page);
    const Path curve = std::get<Path>(elements_of<Path>(*result.scene, "#0000ff").front().shape);
    const QRectF box = flattened(curve, 0.01).boundingRect();
    QVERIFY(box.width() > 10.0 && box.width() < 240.0 && box.height() < 240.0);
}

// A box of straight lines, 0.2 high, and the same with its top 0.001 higher and its bottom 0.002
// higher.
void tst_drawings_picture::deviation() {
    const auto box = [](double top, double bottom) {
        return polygon_section({{1.0, top}, {0.0, top}, {0.0, bottom}, {1.0, bottom}});
    };
    const std::vector<Pictured> all = {pictured(box(0.1, -0.1), QStringLiteral("first")),
                                       pictured(box(0.101, -0.098), QStringLiteral("second"))};
    std::vector<Farthest> distances;
    const Plot plot = deviation_plot(all, looks_of(all), distances);
    QCOMPARE(distances.size(), std::size_t(1));
    QVERIFY(std::abs(distances[0].distance + 0.002) < 1e-9);
    QVERIFY(!distances[0].upper);
    QVERIFY(plot.title.contains(QLatin1String("Distances from first, stretched 50 times")));

    std::vector<double> heights;
    for (const Element& element : elements_of<Path>(plot.content, "#007a33")) {
        const Path& path = std::get<Path>(element.shape);
        for (const Segment& segment : path.segments) {
            if (std::abs(segment.end.x() - 0.5) < 0.01)
                heights.push_back(segment.end.y());
        }
    }
    QVERIFY(heights.size() > 30);
    for (const double height : heights)
        QVERIFY2(std::abs(height - (height > 0.05 ? 0.15 : 0.0)) < 1e-9,
                 qPrintable(QString::number(height)));

    // Measured from the other section the signs change; and the same for the upper side.
    const Pictured high = pictured(box(0.103, -0.1), QStringLiteral("high"));
    for (const auto& [first, second, wanted] :
         {std::tuple(all[1], all[0], 0.002), std::tuple(all[0], high, 0.003),
          std::tuple(high, all[0], -0.003)}) {
        const std::vector<Pictured> two = {first, second};
        distances.clear();
        deviation_plot(two, looks_of(two), distances);
        QVERIFY2(std::abs(distances[0].distance - wanted) < 1e-9,
                 qPrintable(QString::number(distances[0].distance)));
        QCOMPARE(distances[0].upper, std::abs(wanted) > 0.0025);
    }
}

void tst_drawings_picture::farthest_in_the_legend_data() {
    QTest::addColumn<double>("bottom");
    QTest::addColumn<QString>("distance");
    QTest::newRow("none") << -0.125 << "0 chord outside at 0.0 % of the upper";
    QTest::newRow("two digits") << -0.12623 << "0.0012 chord outside at 100.0 % of the lower";
    QTest::newRow("inside") << -0.123 << "0.002 chord inside at 100.0 % of the lower";
}

void tst_drawings_picture::farthest_in_the_legend() {
    QFETCH(double, bottom);
    QFETCH(QString, distance);
    std::vector<Pictured> all;
    for (const double height : {-0.125, bottom})
        all.push_back(
            pictured(polygon_section({{1.0, 0.125}, {0.0, 0.125}, {0.0, height}, {1.0, height}}),
                     QStringLiteral("b")));
    PictureOptions options;
    options.deviation = true;
    const QString text = QStringLiteral("b, table, farthest ") + distance + QStringLiteral(" side");
    const QStringList strings = strings_of(*picture(all, options).scene);
    QVERIFY2(strings.contains(text), qPrintable(strings.join(u' ')));
}

// The result of compare() for the same sections.
void tst_drawings_picture::deviation_of_a_fit() {
    const Pictured first = thin_table(QStringLiteral("table"));
    const Pictured second =
        pictured(table_section(naca(0.021, 0.4, 0.118, 30)), QStringLiteral("other"));
    PictureOptions options;
    options.deviation = true;
    const PictureResult result = picture({first, second}, options);
    const sections::Deviation wanted =
        sections::compare(first.section, second.section, false).to_reference.greatest();
    QVERIFY(wanted.greatest != 0.0);
    QVERIFY(std::abs(result.distances[0].distance - wanted.greatest) <
            1e-3 * std::abs(wanted.greatest));
    QVERIFY(std::abs(result.distances[0].station - wanted.station) < 0.005);
    bool named = false;
    for (const QString& text : strings_of(*result.scene))
        named = named || (text.startsWith(QLatin1String("other, table, farthest 0.00")) &&
                          text.contains(QLatin1String("side at ")));
    QVERIFY(named);
}

// The plot ends a quarter of the chord from the first section, and its title says so.
void tst_drawings_picture::far_apart() {
    const std::vector<Pictured> all = {
        thin_table(QStringLiteral("a")),
        pictured(table_section(naca(0.0, 0.4, 0.4, 30)), QStringLiteral("b"))};
    std::vector<Farthest> distances;
    const Plot plot = deviation_plot(all, looks_of(all), distances);
    QVERIFY(plot.range.height() < 0.8);
    QVERIFY(plot.title.endsWith(QLatin1String("; some leave the plot")));
    PictureOptions options;
    options.deviation = true;
    const Scene scene = *picture(all, options).scene;
    QCOMPARE(bounds(scene, 0.01), *scene.page);
}

// Each knot has two teeth, one for the curvature of each piece that meets there.
void tst_drawings_picture::curvature() {
    const std::vector<Pictured> all = {spline(QStringLiteral("s"))};
    const Plot plot = curvature_plot(all, looks_of(all));
    QVERIFY(plot.title.contains(QLatin1String("knots")));
    const sections::Curve& curve = all[0].section.curve;
    double scale = 0.0;
    int jumps = 0;
    for (int i = 0; i + 1 < int(curve.pieces().size()); ++i) {
        const QPointF knot = curve.position({i, 1.0});
        std::vector<double> lengths;
        for (const Element& element : elements_of<Path>(plot.content, "#ff0000")) {
            const Path& path = std::get<Path>(element.shape);
            const QPointF tooth = path.segments.back().end - path.start;
            const QPointF off = path.start - knot;
            if (path.segments.size() == 1 && std::hypot(off.x(), off.y()) < 1e-9)
                lengths.push_back(std::hypot(tooth.x(), tooth.y()));
        }
        QCOMPARE(lengths.size(), std::size_t(2));
        const double sides[] = {std::abs(curve.curvature({i, 1.0})),
                                std::abs(curve.curvature({i + 1, 0.0}))};
        for (std::size_t side : {0U, 1U}) {
            if (lengths[side] > 0.1499) // the longest one
                continue;
            if (scale == 0.0 && sides[side] > 0.0)
                scale = lengths[side] / sides[side];
            QVERIFY(std::abs(lengths[side] - scale * sides[side]) < 1e-9);
        }
        jumps += std::abs(lengths[0] - lengths[1]) > 0.005 ? 1 : 0;
    }
    QVERIFY(scale > 0.0);
    QVERIFY(jumps > 1);
    QCOMPARE(int(elements_of<Dot>(plot.content, "#ff0000").size()), 2 * int(curve.pieces().size()));
}

// A table of a circle: all teeth are outside and equally long.
void tst_drawings_picture::curvature_of_a_circle() {
    const std::vector<Pictured> all = {
        pictured(table_section(ellipse(400, 1.0)), QStringLiteral("circle"))};
    const Plot plot = curvature_plot(all, looks_of(all));
    QVERIFY(!plot.title.contains(QLatin1String("knots")));
    // Curvature 2: 0.1 in the plot is 2.5, rounded up to 5.
    QVERIFY2(plot.title.contains(QLatin1String(": 0.1 in the plot is 5 / chord")),
             qPrintable(plot.title));
    int teeth = 0;
    for (const Element& element : elements_of<Path>(plot.content, "#0000ff")) {
        const Path& path = std::get<Path>(element.shape);
        if (path.segments.size() != 1) {
            // The line over the tips has each of them once.
            for (std::size_t i = 0; i + 1 < path.segments.size(); ++i)
                QVERIFY(path.segments[i].end != path.segments[i + 1].end);
            continue;
        }
        ++teeth;
        const QPointF tip = path.segments[0].end - QPointF(0.5, 0.0);
        QVERIFY(std::abs(std::hypot(tip.x(), tip.y()) - 0.54) < 0.002);
    }
    QVERIFY(teeth > 100);
}

void tst_drawings_picture::nose() {
    const std::vector<Pictured> all = {thin_table(QStringLiteral("t"))};
    const Plot plot = nose_plot(all, looks_of(all));
    QVERIFY(plot.range.contains(QPointF(0.0, 0.0)));
    QVERIFY(plot.range.width() < 0.3);
    QVERIFY(plot.title.contains(QLatin1String("points of tables")));
    QCOMPARE(elements_of<Dot>(plot.content, "#0000ff").size(),
             std::size_t(all[0].section.points.size()));
    PictureOptions options;
    options.nose = true;
    const Scene scene = *picture(all, options).scene;
    QCOMPARE(bounds(scene, 0.01), *scene.page);
    QVERIFY(!nose_plot({spline(QStringLiteral("s"))}, looks_of(all))
                 .title.contains(QLatin1String("points of tables")));
}

void tst_drawings_picture::same_bytes() {
    const std::vector<Pictured> all = {thin_table(QStringLiteral("t")),
                                       spline(QStringLiteral("s"))};
    const QByteArray bytes = svg(*picture(all).scene);
    QCOMPARE(svg(*picture(all).scene), bytes);
    QVERIFY(bytes.contains(" width=\"240mm\""));
    QVERIFY(!bytes.contains("<g "));
}

AEROLITH_TEST_MAIN(tst_drawings_picture)
#include "tst_drawings_picture.moc"
