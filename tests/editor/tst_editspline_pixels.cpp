// SPDX-FileCopyrightText: Aerolith developers
// The picture on a raster device, where parts of it may come from cached images: every pixel equals
// that of a fresh drawing, whatever has changed since the last frame.
#include "editorfixture.h"
#include "support/testmain.h"

#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

class tst_editspline_pixels : public QObject {
    Q_OBJECT

private slots:
    void views_data();
    void views();
    void shifts_over_the_edges_data();
    void shifts_over_the_edges();
    void template_changes();
    void mapping_changes();
    void pen_changes();
    void image_and_recording_in_turn();
    void random_changes_data();
    void random_changes();
};

namespace {

constexpr QSize editor_size(620, 420);

QImage blank(QSize size, double ratio) {
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(QColor(230, 230, 200));
    return image;
}

// Where the editor's frame and the model's differ; empty if they do not.
QString difference_of_frames(TestEditor& editor, double ratio) {
    EditorModel model = editor.model();
    QImage actual = blank(editor.size(), ratio);
    QImage expected = actual.copy();
    editor.render(&actual, {}, {}, QWidget::DrawChildren);
    model.paint(&expected);
    if (actual == expected)
        return QString();
    int count = 0;
    QRect where;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (actual.pixel(x, y) != expected.pixel(x, y)) {
                ++count;
                where |= QRect(x, y, 1, 1);
            }
        }
    }
    return QStringLiteral("%1 pixels differ within (%2, %3) size %4 x %5")
        .arg(count)
        .arg(where.x())
        .arg(where.y())
        .arg(where.width())
        .arg(where.height());
}

void change(TestEditor& editor, QRandomGenerator& random) {
    switch (random.bounded(13)) {
    case 0:
        editor.f_scale = std::pow(2.0, random.bounded(-9, 19) / 9.0);
        break;
    case 1:
        editor.f_scale = 1.0;
        break;
    case 2:
        editor.p_D += QPointF(random.bounded(-40, 41), random.bounded(-40, 41));
        break;
    case 3:
        editor.p_D += QPointF(random.bounded(2.0) - 1.0, random.bounded(2.0) - 1.0);
        break;
    case 4:
        editor.p_D = QPointF(0, 0);
        break;
    case 5:
        editor.p->baseAirfoil = sample_template(random.bounded(2, 120));
        break;
    case 6:
        if (!editor.p->baseAirfoil.isEmpty())
            editor.p->baseAirfoil[0].ry() += 0.03125;
        break;
    case 7:
        editor.p->baseAirfoil.clear();
        break;
    case 8:
        editor.pnt_selected = random.bounded(-1, 10);
        break;
    case 9:
        editor.mousepressed = !editor.mousepressed;
        break;
    case 10:
        editor.p->spline.startVent = random.bounded(100.0);
        break;
    default:
        editor.p->spline.CP[random.bounded(1, 9)].ry() += random.bounded(-9, 10);
        break;
    }
}

} // namespace

#define VERIFY_SAME_PIXELS(editor, ratio)                                                          \
    do {                                                                                           \
        const QString difference = difference_of_frames(editor, ratio);                            \
        QVERIFY2(difference.isEmpty(), qPrintable(difference));                                    \
    } while (false)

void tst_editspline_pixels::views_data() {
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("pan");
    QTest::addColumn<double>("ratio");

    QTest::newRow("reset-view") << 1.0 << QPointF(0, 0) << 1.0;
    QTest::newRow("panned") << 1.0 << QPointF(13, -7) << 1.0;
    QTest::newRow("panned-by-fractions") << 1.0 << QPointF(0.3, -7.6) << 1.0;
    QTest::newRow("panned-off-the-left") << 1.0 << QPointF(-300, 20) << 1.0;
    QTest::newRow("panned-off-the-right") << 1.0 << QPointF(400, -150) << 1.0;
    QTest::newRow("zoomed-in") << 4.0 << QPointF(0, 0) << 1.0;
    QTest::newRow("zoomed-in-and-panned") << 2.5 << QPointF(-400.5, -310) << 1.0;
    QTest::newRow("zoomed-out") << 0.5 << QPointF(100, 50) << 1.0;
    QTest::newRow("double-density") << 1.0 << QPointF(3, 4) << 2.0;
    QTest::newRow("double-density-zoomed-out") << 0.5 << QPointF(3, 4) << 2.0;
    QTest::newRow("density-of-one-and-a-half") << 1.0 << QPointF(3, 4) << 1.5;
}

void tst_editspline_pixels::views() {
    QFETCH(double, zoom);
    QFETCH(QPointF, pan);
    QFETCH(double, ratio);

    TestEditor editor(editor_size);
    editor.p->baseAirfoil = sample_template(60);
    editor.set_settled_section();
    editor.f_scale = zoom;
    editor.p_D = pan;
    for (int frame = 0; frame < 4; ++frame)
        VERIFY_SAME_PIXELS(editor, ratio);
    for (const QPointF step : {QPointF(5, -3), QPointF(-20, 0), QPointF(0.5, 0), QPointF(0.25, 0),
                               QPointF(0, 0.5), QPointF(0, -0.75), QPointF(1, 1)}) {
        editor.p_D += step;
        for (int frame = 0; frame < 2; ++frame)
            VERIFY_SAME_PIXELS(editor, ratio);
    }
}

void tst_editspline_pixels::shifts_over_the_edges_data() {
    QTest::addColumn<QPointF>("step");
    QTest::addColumn<double>("zoom");

    for (const double zoom : {1.0, 1.3}) {
        const int per_cent = qRound(zoom * 100);
        QTest::addRow("left-at-%d-per-cent", per_cent) << QPointF(-17, 0) << zoom;
        QTest::addRow("right-at-%d-per-cent", per_cent) << QPointF(17, 0) << zoom;
        QTest::addRow("up-at-%d-per-cent", per_cent) << QPointF(0, -17) << zoom;
        QTest::addRow("down-at-%d-per-cent", per_cent) << QPointF(0, 17) << zoom;
    }
}

void tst_editspline_pixels::shifts_over_the_edges() {
    QFETCH(QPointF, step);
    QFETCH(double, zoom);

    TestEditor editor(editor_size);
    editor.p->baseAirfoil = sample_template(60);
    editor.f_scale = zoom;
    for (int frame = 0; frame < 3; ++frame)
        VERIFY_SAME_PIXELS(editor, 1.0);
    for (int i = 0; i < 20; ++i) {
        editor.p_D += step;
        VERIFY_SAME_PIXELS(editor, 1.0);
    }
}

void tst_editspline_pixels::template_changes() {
    TestEditor editor(editor_size);
    editor.set_settled_section();
    const auto three_frames = [&editor] {
        for (int frame = 0; frame < 3; ++frame)
            VERIFY_SAME_PIXELS(editor, 1.0);
    };
    editor.p->baseAirfoil = sample_template(60);
    three_frames();
    editor.p->baseAirfoil[30].ry() += 0.125;
    three_frames();
    editor.p->baseAirfoil = sample_template(61);
    three_frames();
    editor.p->baseAirfoil.removeLast();
    three_frames();
    editor.p->baseAirfoil.clear();
    three_frames();
    editor.p->baseAirfoil = sample_template(60);
    three_frames();
    *editor.p = ParaStruct();
    three_frames();
}

void tst_editspline_pixels::mapping_changes() {
    TestEditor editor(editor_size);
    editor.p->baseAirfoil = sample_template(60);
    for (const QSize size : {editor_size, QSize(700, 420), QSize(700, 500), editor_size}) {
        editor.resize(size);
        editor.Init_widget();
        for (int frame = 0; frame < 3; ++frame)
            VERIFY_SAME_PIXELS(editor, 1.0);
    }
}

// The points are outlined with the painter's pen.
void tst_editspline_pixels::pen_changes() {
    TestEditor editor(editor_size);
    editor.p->baseAirfoil = sample_template(60);
    for (const Qt::GlobalColor colour : {Qt::green, Qt::green, Qt::green, Qt::magenta, Qt::black}) {
        QImage image = blank(editor_size, 1.0);
        QPainter painter(&image);
        painter.setPen(QPen(QBrush(colour), 1.0));
        editor.Paint_BackgroundPoly(&painter);
        painter.end();
        const QPointF place = editor.model().to_pixels(editor.p->baseAirfoil.at(20));
        bool outlined = false;
        for (int dx = 2; dx <= 4; ++dx)
            outlined =
                outlined || image.pixelColor(place.toPoint() + QPoint(dx, 0)) == QColor(colour);
        QVERIFY(outlined);
    }
}

// A frame on another device, for a print or a picture, does not affect the window's frames.
void tst_editspline_pixels::image_and_recording_in_turn() {
    TestEditor editor(editor_size);
    editor.p->baseAirfoil = sample_template(60);
    editor.set_settled_section();
    for (int turn = 0; turn < 4; ++turn) {
        VERIFY_SAME_PIXELS(editor, turn % 2 == 0 ? 1.0 : 2.0);
        EditorModel model = editor.model();
        const QStringList expected = model.paint_log();
        const QString drawn = first_log_difference(paint_log(editor.recorded()), expected);
        QVERIFY2(drawn.isEmpty(), qPrintable(drawn));
    }
}

void tst_editspline_pixels::random_changes_data() {
    QTest::addColumn<quint32>("seed");

    for (const quint32 seed : {1U, 2U, 3U})
        QTest::addRow("seed-%u", seed) << seed;
}

void tst_editspline_pixels::random_changes() {
    QFETCH(quint32, seed);

    QRandomGenerator random(seed);
    TestEditor editor(editor_size);
    editor.p->baseAirfoil = sample_template(60);
    editor.set_settled_section();
    for (int step = 0; step < 80; ++step) {
        change(editor, random);
        const int frames = random.bounded(1, 4);
        for (int frame = 0; frame < frames; ++frame) {
            const QString difference = difference_of_frames(editor, 1.0);
            QVERIFY2(difference.isEmpty(),
                     qPrintable(QStringLiteral("step %1: ").arg(step) + difference));
        }
    }
}

AEROLITH_TEST_MAIN(tst_editspline_pixels)
#include "tst_editspline_pixels.moc"
