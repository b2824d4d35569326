// SPDX-FileCopyrightText: Aerolith developers
// What looks like a section and what does not; kinds; the same section.
#include "support/testmain.h"
#include "tables/outline_p.h"

#include <QTest>

#include <cmath>

using namespace tables;

Q_DECLARE_METATYPE(Kind)

namespace {

using Points = QList<QPointF>;

const Points plain = {{1, 0},     {.7, .06},  {.3, .08},  {.1, .05}, {0, 0},
                      {.1, -.04}, {.3, -.05}, {.7, -.02}, {1, 0}};

Outline outline_of(const Points& points) {
    Outline outline;
    for (const QPointF& point : points)
        outline.append(point, int(outline.points.size()) + 1);
    return outline;
}

Points changed(Points points, int at, QPointF to) {
    points[at] = to;
    return points;
}

template<typename Change>
Points each(Points points, Change change) {
    for (QPointF& point : points)
        point = change(point);
    return points;
}

Points reversed(Points points) {
    std::reverse(points.begin(), points.end());
    return points;
}

} // namespace

class tst_outline : public QObject {
    Q_OBJECT
private slots:
    void faults_data();
    void faults();
    void kinds_data();
    void kinds();
    void same();
};

void tst_outline::faults_data() {
    QTest::addColumn<Points>("points");
    QTest::addColumn<QString>("fault"); // the text begins so

    QTest::newRow("section") << plain << "";
    QTest::newRow("reversed") << reversed(plain) << "";
    const Points long_chord = each(plain, [](QPointF p) { return 10.0 * p; });
    QTest::newRow("ends a tenth short") << changed(long_chord, 0, {9, 0.1}) << "";
    QTest::newRow("ends shorter") << changed(long_chord, 0, {8.99, 0.1})
                                  << "a side ends at x = 8.99";
    QTest::newRow("higher trailing edge")
        << each(plain, [](QPointF p) { return QPointF(p.x(), p.y() + 0.3 * p.x()); }) << "";
    Points circle;
    for (int i = 0; i <= 40; ++i)
        circle.append({.5 + .5 * std::cos(i * M_PI / 20), .5 * std::sin(i * M_PI / 20)});
    QTest::newRow("circle") << circle << "";
    QTest::newRow("five") << plain.mid(0, 5) << "5 points";
    QTest::newRow("no chord") << each(plain, [](QPointF p) { return QPointF(1, p.y()); })
                              << "all x are 1";
    QTest::newRow("open") << plain.mid(0, 7) << "a side ends at x = 0.3";
    QTest::newRow("pressures") << each(plain, [](QPointF p) {
        return QPointF(p.x(), 12.0 * p.y());
    }) << "y runs from";
    QTest::newRow("sides swap") << each(plain, [](QPointF p) {
        return QPointF(p.x(), p.x() > .5 ? -p.y() : p.y());
    }) << "the sides change places";
    QTest::newRow("one side twice")
        << Points{{1, 0}, {.5, .06}, {.1, .05}, {0, 0}, {.1, .05}, {.5, .06}, {1, 0}}
        << "both sides are the same";
    const Points fine = {{1, 0},        {.5, .06}, {.0125, .021}, {0, 0},
                         {.0125, .016}, {.5, .04}, {1, 0}};
    QTest::newRow("signs lost") << fine << "both sides rise from the nose; expected";
    const Points wedge = {{1, .1}, {.5, .05}, {0, 0}, {.5, -.05}, {.9, -.09}, {1, -.1}};
    QTest::newRow("wedge") << wedge << "thickest at the trailing";
    Points zigzag;
    for (int i = 20; i >= -20; --i)
        zigzag.append({std::abs(i) / 20.0, i % 2 ? .05 : -.05});
    QTest::newRow("zigzag") << zigzag << "y jumps up and down";
}

void tst_outline::faults() {
    QFETCH(const Points, points);
    QFETCH(const QString, fault);
    const auto found = fault_of(outline_of(points));
    if (fault.isEmpty()) {
        QVERIFY2(!found, found ? qPrintable(found->text) : "");
    } else {
        QVERIFY(found);
        QVERIFY2(found->text.startsWith(fault), qPrintable(found->text));
        QCOMPARE(found->gravity, Gravity::error);
        QVERIFY(found->line > 0);
    }
    for (const double scale : {1.0 / 1024.0, 1024.0}) {
        const auto scaled =
            fault_of(outline_of(each(points, [=](QPointF p) { return scale * p; })));
        QCOMPARE(scaled.has_value(), found.has_value());
    }
}

void tst_outline::kinds_data() {
    QTest::addColumn<Points>("points");
    QTest::addColumn<Kind>("kind");

    QTest::newRow("section") << plain << Kind::section;
    QTest::newRow("flat") << each(plain, [](QPointF p) { return QPointF(p.x(), 0); }) << Kind::flat;
    const Points arches = {{1, 0},      {.5, .14},   {.1, .1},    {0, 0},     {.05, -.04},
                           {.1, -.044}, {.2, .09},   {.3, -.026}, {.4, .083}, {.5, -.037},
                           {.65, .05},  {.75, -.05}, {1, 0}};
    QTest::newRow("arches") << arches << Kind::single_skin;
    QTest::newRow("arches first") << reversed(arches) << Kind::single_skin;
    const Points curved = {{1, 0},     {.5, .07},        {.1, .06},  {0, 0}, {.02, .002},
                           {.1, .033}, {.35, .074 * .8}, {.7, .039}, {1, 0}};
    QTest::newRow("a curved plate") << curved << Kind::section;
}

void tst_outline::kinds() {
    QFETCH(const Points, points);
    QFETCH(const Kind, kind);
    QCOMPARE(kind_of(outline_of(points)), kind);
}

void tst_outline::same() {
    const Outline section = outline_of(plain);
    const auto placed = [](double size, QPointF place) {
        return outline_of(each(plain, [=](QPointF p) { return place + size * p; }));
    };
    QVERIFY(same_section(section, placed(1.0, {1.5, 2.0})));
    QVERIFY(same_section(section, placed(2.5, {0.0, 0.0})));
    QVERIFY(!same_section(section, placed(0.3, {1.02, -0.05})));
    QVERIFY(same_section(section, outline_of(reversed(plain))));
    QVERIFY(!same_section(section, outline_of(changed(plain, 7, {.7, -.03}))));
}

AEROLITH_GUILESS_TEST_MAIN(tst_outline)
#include "tst_outline.moc"
