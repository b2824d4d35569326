// SPDX-FileCopyrightText: Aerolith developers
// PDF files: bytes that stay the same, pages, painted curves, refusals.
#include "drawings/paint_p.h"
#include "drawings/pdf.h"
#include "ribs.h"
#include "support/testmain.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QThread>

#include <ctime>

using namespace drawings;

namespace {

Scene full_rib(double chord) {
    RibOptions options;
    options.chord = chord;
    options.allowance = 10.0;
    options.mark_step = 100.0;
    options.grain = 30.0;
    options.text = QStringLiteral(u"Flügel 7");
    Scene scene = *rib(spline_section(hull, 1.1, 4.25), options).scene;
    add_scale_bar(scene, 0.01);
    return scene;
}

QList<QSizeF> page_sizes(const QByteArray& file) {
    const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]"));
    QList<QSizeF> sizes;
    auto found = box.globalMatch(QString::fromLatin1(file));
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        sizes << QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble());
    }
    return sizes;
}

} // namespace

class tst_drawings_pdf : public QObject {
    Q_OBJECT
private slots:
    void same_bytes();
    void time_zones();
    void names_nothing();
    void one_page();
    void sheets();
    void empty_sheets();
    void too_large();
    void curves_data();
    void curves();
    void off_the_main_thread();
};

void tst_drawings_pdf::same_bytes() {
    const PdfResult first = pdf(full_rib(2850.0));
    QVERIFY2(first.reason.isEmpty(), qPrintable(first.reason));
    QVERIFY(first.bytes.startsWith("%PDF-"));
    QTest::qSleep(1100); // a date in the file would differ
    QCOMPARE(pdf(full_rib(2850.0)).bytes, first.bytes);
}

// The writer's date has another length in each, and the table of offsets follows it.
void tst_drawings_pdf::time_zones() {
    const QByteArray zone = qgetenv("TZ");
    QByteArray first;
    for (const char* other : {"UTC", "Asia/Tokyo", "America/St_Johns"}) {
        qputenv("TZ", other);
        ::tzset();
        const QByteArray bytes = pdf(full_rib(500.0)).bytes;
        QVERIFY2(first.isEmpty() || bytes == first, other);
        first = bytes;
    }
    qputenv("TZ", zone);
    ::tzset();
    const qsizetype table = first.lastIndexOf("\nxref\n") + 1;
    QVERIFY(first.endsWith("startxref\n" + QByteArray::number(table) + "\n%%EOF\n"));
    const QList<QByteArray> lines = first.mid(table).split('\n');
    int objects = 0;
    for (qsizetype i = 3; lines[i].contains(" n"); ++i) {
        ++objects;
        QVERIFY(first.mid(lines[i].left(10).toLongLong())
                    .startsWith(QByteArray::number(objects) + " 0 obj\n"));
    }
    QVERIFY(objects > 5);
}

void tst_drawings_pdf::names_nothing() {
    const QByteArray bytes = pdf(full_rib(500.0)).bytes;
    for (const char* word : {"CreationDate", "ModDate", "Producer", "Creator", "/ID"})
        QVERIFY2(!bytes.contains(word), word);
    const QByteArray name("\0Q\0t", 4);
    QVERIFY(!bytes.contains(name));
}

void tst_drawings_pdf::one_page() {
    const Scene scene = full_rib(2850.0);
    const QList<QSizeF> sizes = page_sizes(pdf(scene).bytes);
    QCOMPARE(sizes.size(), 1);
    // The drawing with a margin of 5 mm, rounded up to millimetres and then to points.
    const double wanted = (bounds(scene, 0.01).width() + 10.0) * 72.0 / 25.4;
    QVERIFY2(sizes[0].width() >= wanted && sizes[0].width() < wanted + 7.0,
             qPrintable(QString::number(sizes[0].width())));
}

void tst_drawings_pdf::sheets() {
    Scene scene;
    scene.add(Layer::cut,
              path_through({{0.0, 0.0}, {400.0, 0.0}, {400.0, 250.0}, {0.0, 250.0}}, true));
    const PdfResult result = pdf(scene, {}, Tiling::a4);
    QVERIFY2(result.reason.isEmpty(), qPrintable(result.reason));
    const QList<QSizeF> sizes = page_sizes(result.bytes);
    QCOMPARE(sizes.size(), 4);
    for (const QSizeF& size : sizes)
        QCOMPARE(size, QSizeF(842.0, 595.0));
}

void tst_drawings_pdf::empty_sheets() {
    Scene scene;
    scene.add(Layer::cut, line({0.0, 0.0}, {10.0, 0.0}));
    scene.add(Layer::cut, Circle{{1000.0, 0.0}, 5.0});
    QCOMPARE(page_sizes(pdf(scene, {}, Tiling::a4).bytes).size(), 2);
    QCOMPARE(page_sizes(pdf({}, {}, Tiling::a4).bytes).size(), 1);
}

void tst_drawings_pdf::too_large() {
    const PdfResult page = pdf(full_rib(5100.0));
    QVERIFY(page.bytes.isEmpty());
    QVERIFY2(page.reason.contains(QLatin1String("pages of PDF end at 5080 mm")),
             qPrintable(page.reason));
    const PdfResult many = pdf(full_rib(100000.0), {}, Tiling::a4);
    QVERIFY(many.bytes.isEmpty());
    QVERIFY2(many.reason.contains(QLatin1String("the most are 2000")), qPrintable(many.reason));
}

void tst_drawings_pdf::curves_data() {
    QTest::addColumn<int>("degree");
    QTest::addColumn<int>("height"); // of the curve at its middle
    QTest::newRow("line") << 1 << 0;
    QTest::newRow("quadratic") << 2 << 40;
    QTest::newRow("cubic") << 3 << 60;
}

// A painted curve passes where a Bezier curve of its degree has its middle.
void tst_drawings_pdf::curves() {
    QFETCH(int, degree);
    QFETCH(int, height);
    QImage image(100, 100, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    Segment segment;
    segment.degree = degree;
    segment.controls[0] = degree == 2 ? QPointF(50.0, 80.0) : QPointF(10.0, 80.0);
    segment.controls[1] = QPointF(90.0, 80.0);
    segment.end = QPointF(90.0, 0.0);
    Scene scene;
    scene.draw(Look{"#000000", 4.0, {}, false}, Path{QPointF(10.0, 0.0), {segment}, false});
    paint(painter, scene, QFont());
    painter.end();
    for (const int y : {0, 40, 60})
        QCOMPARE(qGray(image.pixel(50, y)) < 128, y == height);
}

void tst_drawings_pdf::off_the_main_thread() {
    const QByteArray here = pdf(full_rib(500.0)).bytes;
    QByteArray there;
    const std::unique_ptr<QThread> thread(
        QThread::create([&there] { there = pdf(full_rib(500.0)).bytes; }));
    thread->start();
    QVERIFY(thread->wait(60000));
    QCOMPARE(there, here);
}

AEROLITH_TEST_MAIN(tst_drawings_pdf)
#include "tst_drawings_pdf.moc"
