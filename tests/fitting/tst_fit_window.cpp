// SPDX-FileCopyrightText: Aerolith developers
// The file of a fit in the window: at any size its curve is as close to the template as printed.
#include "airfoil/airfoil.h"
#include "document/splinebytes.h"
#include "editorfixture.h"
#include "fitting/fit.h"
#include "fittingtables.h"
#include "support/testmain.h"

#include <QTest>

#include <cmath>

namespace {

QByteArray selig(const QPolygonF& table) {
    QByteArray text = "a section\n";
    for (const QPointF& point : table)
        text += QByteArray::number(point.x(), 'f', 9) + " " +
                QByteArray::number(point.y(), 'f', 9) + "\n";
    return text;
}

double distance_to_line(QPointF point, QPointF a, QPointF b) {
    const QPointF along = b - a;
    const double squared = QPointF::dotProduct(along, along);
    const double share =
        squared > 0.0 ? std::clamp(QPointF::dotProduct(point - a, along) / squared, 0.0, 1.0) : 0.0;
    const QPointF off = point - (a + share * along);
    return std::hypot(off.x(), off.y());
}

double largest_distance(const QPolygonF& points, const QPolygonF& curve) {
    double largest = 0.0;
    for (const QPointF& point : points) {
        double least = 1.0;
        for (int i = 1; i < curve.size(); ++i)
            least = std::min(least, distance_to_line(point, curve[i - 1], curve[i]));
        largest = std::max(largest, least);
    }
    return largest;
}

} // namespace

class tst_fit_window : public QObject {
    Q_OBJECT

private slots:
    void opens_within_the_deviation_data();
    void opens_within_the_deviation();
};

void tst_fit_window::opens_within_the_deviation_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("points");
    for (const QSize size : {QSize(800, 600), QSize(1024, 768), QSize(3840, 2160)}) {
        for (const int points : {10, 30})
            QTest::addRow("%dx%d-%d", size.width(), size.height(), points) << size << points;
    }
}

void tst_fit_window::opens_within_the_deviation() {
    QFETCH(QSize, size);
    QFETCH(int, points);
    const QPolygonF table = with_noise(four_digit(0.14, 0.03, 81), 5e-5, 12);
    fitting::Request request;
    request.points = points;
    request.openings = {3.25, 8.5};
    const fitting::Fit result = fitting::fit(table, request);
    ParaStruct written;
    written.spline = result.spline;
    const QByteArray file = spline_bytes(written);

    TestEditor editor(size);
    editor.show();
    QVERIFY(QTest::qWaitForWindowActive(&editor));
    QVERIFY(paint_until_idle(editor));
    ParaStruct* document = GetDataStruct();
    document->baseAirfoil = airfoil_Read_Bytes(selig(table));
    QCOMPARE(document->baseAirfoil.size(), table.size());
    read_spline_bytes(file, *document);
    QCOMPARE(document->spline.startVent, 3.25);
    QCOMPARE(document->spline.endVent, 8.5);
    editor.repaint_opened_spline();
    QVERIFY(paint_until_idle(editor));
    // The curve of the window consists of straight lines between 999 samples.
    constexpr double flatness = 3e-6;
    QPolygonF curve;
    for (const QPointF& pixel : editor.spline_poly)
        curve << QPointF(pixel.x() - editor.xc, editor.yc - pixel.y()) / editor.L_T;
    const double shown = largest_distance(document->baseAirfoil, curve);
    QVERIFY2(shown < result.deviation.largest + flatness, qPrintable(QString::number(shown)));
    QVERIFY2(shown > 0.5 * result.deviation.largest, qPrintable(QString::number(shown)));
}

AEROLITH_TEST_MAIN(tst_fit_window)
#include "tst_fit_window.moc"
