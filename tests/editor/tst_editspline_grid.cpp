// SPDX-FileCopyrightText: Aerolith developers
// Grid, axes, labels and openings, at every width.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>

class tst_editspline_grid : public QObject {
    Q_OBJECT

private slots:
    void grid_of_any_width();
    void grid_of_the_usual_size();
    void thickness_lines_data();
    void thickness_lines();
    void openings_data();
    void openings();
};

namespace {

const double not_a_number = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

const QPen axis_pen(QBrush(Qt::black), 0);
const QPen tick_pen(QBrush(Qt::darkRed), 0);
const QPen grid_pen(QBrush(Qt::darkRed), 0, Qt::DotLine);
const QPen opening_pen(QBrush(Qt::darkBlue), 1.0);

QList<PaintOperation> grid_of(TestEditor& editor) {
    RecordingPaintDevice device(editor.size());
    QPainter painter(&device);
    painter.setPen(axis_pen);
    editor.Coor_System(&painter);
    painter.end();
    return device.operations();
}

} // namespace

void tst_editspline_grid::grid_of_any_width() {
    for (int width = 555; width <= 2000; ++width) {
        TestEditor editor(QSize(width, 800));
        const QList<PaintOperation> all = grid_of(editor);
        const QByteArray label = "width " + QByteArray::number(width);
        const char* const message = label.constData();
        const int right = editor.xc + editor.L_T;
        QList<int> short_ticks;
        QList<int> long_ticks;
        for (const QLineF& line : lines_of(all, tick_pen)) {
            QVERIFY2(line.x1() == line.x2() && line.y1() == editor.yc, message);
            if (line.dy() == 10)
                short_ticks << int(line.x1());
            else if (line.dy() == 15)
                long_ticks << int(line.x1());
            else
                QFAIL(message);
        }
        QVERIFY2(short_ticks.size() == 101 && long_ticks.size() == 21, message);
        for (int i = 0; i <= 100; ++i) {
            const double exact = editor.xc + editor.L_T * i / 100.0;
            QVERIFY2(std::abs(short_ticks.at(i) + 0.5 - exact) < 0.5 + 1e-9, message);
            QVERIFY2(i % 5 != 0 || long_ticks.at(i / 5) == short_ticks.at(i), message);
        }
        QVERIFY2(short_ticks.first() == editor.xc && short_ticks.last() <= right, message);

        QList<int> verticals;
        int horizontals = 0;
        for (const QLineF& line : lines_of(all, grid_pen)) {
            if (line.y1() == line.y2()) {
                QVERIFY2(line.x1() == editor.xc && line.x2() == right, message);
                ++horizontals;
            } else {
                QVERIFY2(line.y1() == 0 && line.y2() == editor.H, message);
                verticals << int(line.x1());
            }
        }
        QVERIFY2(verticals.size() == 11 && horizontals == 9, message);
        for (int i = 0; i <= 10; ++i)
            QVERIFY2(verticals.at(i) == short_ticks.at(10 * i), message);
        QStringList labels;
        for (int i = 0; i <= 10; ++i)
            labels << QString::number(i / 10.0, 'f', 1);
        for (int i = -4; i <= 4; ++i)
            labels << QString::number(i / 10.0, 'f', 1);
        QVERIFY2(texts_of(all) == labels, message);
        const QList<PaintOperation> texts = of_kind(all, PaintOperation::Text);
        for (int i = 0; i <= 10; ++i)
            QVERIFY2(texts.at(i).position == QPointF(verticals.at(i), editor.yc), message);
    }
}

void tst_editspline_grid::grid_of_the_usual_size() {
    TestEditor editor;
    const QList<PaintOperation> all = grid_of(editor);
    QCOMPARE(lines_of(all, axis_pen),
             (QList<QLineF>{QLineF(0, 383, 1023, 383), QLineF(102, 0, 102, 819)}));
    const QList<QLineF> ticks = lines_of(all, tick_pen);
    QCOMPARE(ticks.at(0), QLineF(102, 383, 102, 393));
    QCOMPARE(ticks.at(1), QLineF(102, 383, 102, 398));
    QCOMPARE(ticks.at(2), QLineF(110, 383, 110, 393));
    QCOMPARE(ticks.at(3), QLineF(118, 383, 118, 393));
    QList<QLineF> horizontals = lines_of(all, grid_pen).mid(11);
    for (int k = -4; k <= 4; ++k)
        QCOMPARE(horizontals.at(k + 4), QLineF(102, 383 - k * 81, 921, 383 - k * 81));
    const QList<PaintOperation> texts = of_kind(all, PaintOperation::Text);
    for (int k = -4; k <= 4; ++k) {
        const PaintOperation& label = texts.at(11 + k + 4);
        QCOMPARE(label.position, QPointF(102, 383 - k * 81));
        // The pen then current: of the last tick, then of the line before.
        QCOMPARE(pen_text(label.pen), pen_text(k == -4 ? tick_pen : grid_pen));
    }
    for (int i = 0; i <= 10; ++i)
        QCOMPARE(pen_text(texts.at(i).pen), pen_text(grid_pen));
}

void tst_editspline_grid::thickness_lines_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QStringList>("labels");

    const QStringList nine = {
        QStringLiteral("-0.4"), QStringLiteral("-0.3"), QStringLiteral("-0.2"),
        QStringLiteral("-0.1"), QStringLiteral("0.0"),  QStringLiteral("0.1"),
        QStringLiteral("0.2"),  QStringLiteral("0.3"),  QStringLiteral("0.4")};
    QTest::newRow("usual") << usual_size << nine;
    QTest::newRow("minimum") << QSize(555, 400) << nine;
    QTest::newRow("shallow-loses-the-upper-ones") << QSize(2000, 400) << nine.mid(0, 8);
    QTest::newRow("very-shallow") << QSize(2000, 50) << nine.mid(0, 5);
    QTest::newRow("last-one-before-the-end") << QSize(1251, 266) << nine.mid(0, 8);
    QTest::newRow("step-of-one") << QSize(13, 100) << nine;
    QTest::newRow("step-of-nothing") << QSize(11, 100) << QStringList();
}

void tst_editspline_grid::thickness_lines() {
    QFETCH(QSize, size);
    QFETCH(QStringList, labels);

    TestEditor editor(size);
    const QList<PaintOperation> all = grid_of(editor);
    QCOMPARE(texts_of(all).mid(11), labels);
    QCOMPARE(lines_of(all, grid_pen).size(), 11 + labels.size());
}

void tst_editspline_grid::openings_data() {
    QTest::addColumn<double>("opening");
    QTest::addColumn<QList<int>>("x");

    // 102 + 819 * opening / 100, cut.
    QTest::newRow("none-on-the-leading-edge-axis") << 0.0 << QList<int>{102};
    QTest::newRow("quarter") << 25.0 << QList<int>{306};
    QTest::newRow("trailing-edge") << 100.0 << QList<int>{921};
    QTest::newRow("before-the-leading-edge") << -10.0 << QList<int>{20};
    QTest::newRow("left-of-the-widget") << -20.0 << QList<int>{-61};
    QTest::newRow("behind-the-trailing-edge") << 150.0 << QList<int>{1330};
    QTest::newRow("far-but-within") << 100000.0 << QList<int>{819102};
    QTest::newRow("beyond-a-million-pixels") << 130000.0 << QList<int>();
    QTest::newRow("1e300") << 1e300 << QList<int>();
    QTest::newRow("-1e300") << -1e300 << QList<int>();
    QTest::newRow("inf") << infinity << QList<int>();
    QTest::newRow("minus-inf") << -infinity << QList<int>();
    QTest::newRow("nan") << not_a_number << QList<int>();
}

void tst_editspline_grid::openings() {
    QFETCH(double, opening);
    QFETCH(QList<int>, x);

    for (const bool first : {true, false}) {
        TestEditor editor;
        editor.p->spline.startVent = first ? opening : 50.0;
        editor.p->spline.endVent = first ? 50.0 : opening;
        const QList<PaintOperation> all = editor.recorded();
        QList<QLineF> expected = {QLineF(511, 383, 511, 767)};
        for (const int at : x)
            expected.insert(first ? 0 : 1, QLineF(at, 383, at, 767));
        QCOMPARE(lines_of(all, opening_pen), expected);
        COMPARE_BITS(editor.p->spline.startVent, first ? opening : 50.0);
    }
}

AEROLITH_TEST_MAIN(tst_editspline_grid)
#include "tst_editspline_grid.moc"
