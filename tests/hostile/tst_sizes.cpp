// SPDX-FileCopyrightText: Aerolith developers
// The editor alone at any size: the grid is finite and the picture is painted.
#include "editor/editspline.h"
#include "support/testmain.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <ctime>

class tst_sizes : public QObject {
    Q_OBJECT

private slots:
    void painted_data();
    void painted();
};

void tst_sizes::painted_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    const int sides[] = {0, 1, 2, 3, 10, 11, 12, 13, 100, 555, 16384};
    for (const int width : sides) {
        for (const int height : sides)
            QTest::addRow("%d-by-%d", width, height) << width << height;
    }
}

void tst_sizes::painted() {
    QFETCH(int, width);
    QFETCH(int, height);
    EditSpline editor;
    editor.resize(width, height);
    editor.Init_widget();
    // One bit per pixel, because the largest picture would otherwise take a gigabyte.
    QImage image(std::max(width, 1), std::max(height, 1), QImage::Format_Mono);
    image.fill(0);
    const std::clock_t begin = std::clock();
    editor.p->baseAirfoil = {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}};
    editor.p->spline.startVent = 20.0;
    editor.Generate_symetric_spline();
    for (const double zoom : {1.0, 0.5, 4.0}) {
        editor.f_scale = zoom;
        editor.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    }
    const double seconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    QVERIFY2(seconds < 20.0, qPrintable(QString::number(seconds)));
    QCOMPARE(editor.p->spline.num_pnt, 10);
    if (width < 100)
        return;
    // If there is room, the first control point is at the trailing edge.
    QVERIFY(std::abs(editor.p->spline.CP[0].x() - editor.TE.x()) < 1.0);
    for (const QPointF& point : std::as_const(editor.spline_poly))
        QVERIFY(std::isfinite(point.x()) && std::isfinite(point.y()));
}

AEROLITH_TEST_MAIN(tst_sizes)

#include "tst_sizes.moc"
