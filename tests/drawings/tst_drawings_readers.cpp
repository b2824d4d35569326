// SPDX-FileCopyrightText: Aerolith developers
// Drawings as other programs read them: ezdxf, librsvg, Chromium and poppler. If one is missing its
// tests are skipped, unless AEROLITH_READERS is set.
#include "drawings/dxf.h"
#include "drawings/outline_p.h"
#include "drawings/pdf.h"
#include "drawings/picture.h"
#include "drawings/png.h"
#include "drawings/svg.h"
#include "ribs.h"
#include "support/testmain.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cmath>

using namespace drawings;

namespace {

const double allowance = 10.0;
const QString text = QStringLiteral(u"Flügel 7 50% a^b\\U+0041");

sections::Section section() {
    return spline_section(hull, 1.1, 4.25);
}

Scene full_rib(double chord) {
    RibOptions options;
    options.chord = chord;
    options.allowance = allowance;
    options.allowance_trailing_edge = 20.0;
    options.allowance_mouth = 15.0;
    options.mark_step = 100.0;
    options.mark = MarkShape::circle;
    options.grain = 30.0;
    options.text = text;
    Scene scene = *rib(section(), options).scene;
    add_scale_bar(scene, 0.01);
    return scene;
}

// A table, a spline and awkward names.
Scene full_picture() {
    PictureOptions options;
    options.nose = options.deviation = options.curvature = true;
    const sections::Section table = table_section(naca(0.02, 0.4, 0.12, 40), 2.0, 8.0);
    return *picture({{QStringLiteral(u"Flügel <b>&amp;"), table},
                     {QStringLiteral("spline"), section()},
                     {QString::fromUtf8("\xd7\xa6\xd7\x95\xd7\x9c\xd7\x9c\xd7\x9f"), table},
                     {QString(200, QLatin1Char('W')), table},
                     {QStringLiteral("tab\tescape\x1b[31m"), table}},
                    options)
                .scene;
}

// The rectangle of pixels that are not white.
QRect inked(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 200)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

struct Run {
    int code = -1;
    QByteArray out;
    QByteArray errors;
};

Run run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    Run result;
    if (!process.waitForFinished(120000))
        return result;
    result.code = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

bool has_ezdxf() {
    return run(QStringLiteral(PYTHON), {QStringLiteral("-c"), QStringLiteral("import ezdxf")})
               .code == 0;
}

bool has_program(const char* name) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(name)).isEmpty();
}

#define NEED(there, package)                                                                       \
    do {                                                                                           \
        if (!(there)) {                                                                            \
            QVERIFY2(!qEnvironmentVariableIsSet("AEROLITH_READERS"), package " is missing");       \
            QSKIP(package " is missing");                                                          \
        }                                                                                          \
    } while (false)

// The columns of an image between which a row of pixels has the colour of the scale bar.
struct Bar {
    int first = -1;
    int last = -1;
    int row = -1;
};

// The longest horizontal run of bluish pixels.
Bar longest_bar(const QImage& image) {
    Bar best;
    for (int y = 0; y < image.height(); ++y) {
        int start = -1;
        for (int x = 0; x <= image.width(); ++x) {
            const bool blue =
                x < image.width() && qBlue(image.pixel(x, y)) > qRed(image.pixel(x, y)) + 60;
            if (blue && start < 0)
                start = x;
            if (!blue && start >= 0) {
                if (x - start > best.last - best.first + 1)
                    best = {start, x - 1, y};
                start = -1;
            }
        }
    }
    return best;
}

// Checks that the scale bar at the bottom is 100 mm long at 10 pixels per millimetre.
void check_bar(const QImage& image) {
    const Bar bar = longest_bar(
        image.copy(0, int(0.9 * image.height()), image.width(), int(0.1 * image.height())));
    QVERIFY2(std::abs(bar.last - bar.first - 1001) <= 2,
             qPrintable(QString::number(bar.last - bar.first)));
}

} // namespace

class tst_drawings_readers : public QObject {
    Q_OBJECT
private slots:
    void ezdxf_data();
    void ezdxf();
    void rsvg();
    void chromium();
    void poppler();
    void poppler_sheets();
    void picture_by_rsvg();
    void picture_by_poppler();

private:
    QString written(const char* name, const QByteArray& bytes) {
        const QString path = folder.filePath(QString::fromLatin1(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return {};
        return path;
    }

    QTemporaryDir folder;
};

void tst_drawings_readers::ezdxf_data() {
    QTest::addColumn<double>("chord");
    QTest::addColumn<double>("flatness");
    QTest::addColumn<bool>("centimetres");
    QTest::newRow("full size") << 2850.0 << 0.01 << false;
    QTest::newRow("coarse") << 2850.0 << 0.5 << false;
    QTest::newRow("centimetres") << 500.0 << 0.01 << true;
}

void tst_drawings_readers::ezdxf() {
    NEED(has_ezdxf(), "python3-ezdxf");
    QFETCH(double, chord);
    QFETCH(double, flatness);
    QFETCH(bool, centimetres);
    const double unit = centimetres ? 10.0 : 1.0;
    OutputSettings settings;
    settings.flatness = flatness;
    settings.unit = centimetres ? Unit::cm : Unit::mm;
    settings.layer_names[std::size_t(Layer::stitch)] = QStringLiteral("Naht_1");
    const QString path = written("rib.dxf", dxf(full_rib(chord), settings));
    const Run read = run(QStringLiteral(PYTHON), {QStringLiteral(READ_DXF), path});
    QCOMPARE(read.errors, QByteArray());
    QCOMPARE(read.code, 0);

    const FullSize full(section(), chord);
    QStringList layers;
    QStringList texts;
    QList<QPointF> extents;
    QPointF low(1e9, 1e9);
    QPointF high(-1e9, -1e9);
    QString layer;
    int stitches = 0;
    int cut = 0;
    for (const QString& line : QString::fromUtf8(read.out).split(u'\n', Qt::SkipEmptyParts)) {
        const QString kind = line.section(u' ', 0, 0);
        const QString rest = line.section(u' ', 1);
        const QPointF point(rest.section(u' ', 0, 0).toDouble() * unit,
                            rest.section(u' ', 1, 1).toDouble() * unit);
        QVERIFY2(kind != QLatin1String("finding"), qPrintable(line));
        if (kind == QLatin1String("version"))
            QCOMPARE(rest, QStringLiteral("AC1009"));
        else if (kind == QLatin1String("unit"))
            QCOMPARE(rest, centimetres ? QStringLiteral("5") : QStringLiteral("4"));
        else if (kind == QLatin1String("extent"))
            extents << point;
        else if (kind == QLatin1String("layer") && rest != QLatin1String("Defpoints"))
            layers << rest;
        else if (kind == QLatin1String("text"))
            texts << rest;
        else if (kind == QLatin1String("entity"))
            layer = rest;
        if (kind != QLatin1String("vertex"))
            continue;
        low = QPointF(std::min(low.x(), point.x()), std::min(low.y(), point.y()));
        high = QPointF(std::max(high.x(), point.x()), std::max(high.y(), point.y()));
        const double distance = full.curve().nearest(point).distance;
        if (layer == QLatin1String("Naht_1 closed")) {
            ++stitches;
            QVERIFY2(distance <= flatness, qPrintable(line));
        } else if (layer == QLatin1String("CUT closed")) {
            ++cut;
            QVERIFY2(distance >= allowance - flatness, qPrintable(line));
        }
    }
    QVERIFY(stitches > 50 && cut > 50);
    QCOMPARE(
        layers,
        QStringList({QStringLiteral("0"), QStringLiteral("CUT"), QStringLiteral("Naht_1"),
                     QStringLiteral("MOUTH"), QStringLiteral("MARKS"), QStringLiteral("GRAIN"),
                     QStringLiteral("CHORD"), QStringLiteral("TEXT"), QStringLiteral("SCALE")}));
    QCOMPARE(texts, QStringList({text, QStringLiteral("100 mm")}));
    // The texts lie within the lines, except the one beside the scale bar, which is lowest.
    QCOMPARE(extents.size(), 2);
    QVERIFY(std::abs(extents[0].x() - low.x()) < 1e-4);
    QVERIFY(std::abs(extents[1].x() - high.x()) < 1e-4);
    QVERIFY(std::abs(extents[1].y() - high.y()) < 1e-4);
    QVERIFY(extents[0].y() <= low.y() + 1e-4 && extents[0].y() > low.y() - 3.0);
}

// At 254 dpi a millimetre is 10 pixels.
void tst_drawings_readers::rsvg() {
    NEED(has_program("rsvg-convert"), "librsvg2-bin");
    const Scene scene = full_rib(500.0);
    const QString path = written("rib.svg", svg(scene));
    const QString picture = folder.filePath(QStringLiteral("rsvg.png"));
    const Run read = run(QStringLiteral("rsvg-convert"),
                         {QStringLiteral("-d254"), QStringLiteral("-p254"), QStringLiteral("-b"),
                          QStringLiteral("white"), path, QStringLiteral("-o"), picture});
    QCOMPARE(read.errors, QByteArray());
    QCOMPARE(read.code, 0);
    const QImage image(picture);
    const QRectF box = bounds(scene, 0.01);
    QVERIFY(std::abs(image.width() - 10.0 * (box.width() + 10.0)) <= 20.0);
    check_bar(image);
}

// A window of the size of the drawing, at 96 units per inch.
void tst_drawings_readers::chromium() {
    NEED(has_program("chromium"), "chromium");
    const Scene scene = full_rib(500.0);
    const QString path = written("browser.svg", svg(scene));
    const QString picture = folder.filePath(QStringLiteral("chromium.png"));
    const QSizeF size = 96.0 / 25.4 * (bounds(scene, 0.01).size() + QSizeF(12.0, 12.0));
    const Run shown =
        run(QStringLiteral("chromium"),
            {QStringLiteral("--headless"), QStringLiteral("--no-sandbox"),
             QStringLiteral("--disable-gpu"), QStringLiteral("--hide-scrollbars"),
             QStringLiteral("--force-device-scale-factor=%1").arg(254.0 / 96.0),
             QStringLiteral("--user-data-dir=") + folder.filePath(QStringLiteral("profile")),
             QStringLiteral("--window-size=%1,%2").arg(int(size.width())).arg(int(size.height())),
             QStringLiteral("--screenshot=") + picture, QStringLiteral("file://") + path});
    QCOMPARE(shown.code, 0);
    check_bar(QImage(picture));
}

void tst_drawings_readers::poppler() {
    NEED(has_program("pdftoppm"), "poppler-utils");
    const Scene scene = full_rib(500.0);
    const QString path = written("rib.pdf", pdf(scene).bytes);
    const Run information = run(QStringLiteral("pdfinfo"), {path});
    QCOMPARE(information.errors, QByteArray());
    QVERIFY(information.out.contains("Pages:           1\n"));
    QVERIFY(!information.out.contains("Producer"));
    QVERIFY(!information.out.contains("CreationDate"));
    const double width = information.out.mid(information.out.indexOf("Page size:") + 10)
                             .trimmed()
                             .split(' ')
                             .first()
                             .toDouble();
    QVERIFY(std::abs(width / 72.0 * 25.4 - bounds(scene, 0.01).width() - 10.0) < 2.0);

    // Vectors and real text, not pixels.
    QCOMPARE(run(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path}).out.count('\n'), 2);
    const QString read =
        QString::fromUtf8(run(QStringLiteral("pdftotext"), {path, QStringLiteral("-")}).out);
    QVERIFY2(read.contains(text), qPrintable(read));

    const QString picture = folder.filePath(QStringLiteral("poppler"));
    const Run painted = run(QStringLiteral("pdftoppm"),
                            {QStringLiteral("-r"), QStringLiteral("254"),
                             QStringLiteral("-singlefile"), QStringLiteral("-png"), path, picture});
    QCOMPARE(painted.code, 0);
    check_bar(QImage(picture + QStringLiteral(".png")));
}

// Two sheets superimposed at their crosses give the drawing at full size.
void tst_drawings_readers::poppler_sheets() {
    NEED(has_program("pdftoppm"), "poppler-utils");
    Scene scene;
    scene.add(Layer::scale, line({0.0, 100.0}, {400.0, 100.0}));
    scene.add(Layer::cut, path_through({{0.0, 0.0}, {400.0, 0.0}, {400.0, 150.0}}, false));
    const QString path = written("sheets.pdf", pdf(scene, {}, Tiling::a4).bytes);
    QVERIFY(run(QStringLiteral("pdfinfo"), {path}).out.contains("Pages:           2\n"));
    const QString picture = folder.filePath(QStringLiteral("sheet"));
    const Run painted =
        run(QStringLiteral("pdftoppm"),
            {QStringLiteral("-r"), QStringLiteral("254"), QStringLiteral("-png"), path, picture});
    QCOMPARE(painted.code, 0);
    const Bar left = longest_bar(QImage(picture + QStringLiteral("-1.png")));
    const Bar right = longest_bar(QImage(picture + QStringLiteral("-2.png")));
    // The first sheet shows 277 mm from x = 10 mm and the overlap, the second the rest.
    QVERIFY2(std::abs(left.first - 100) <= 2, qPrintable(QString::number(left.first)));
    QVERIFY2(std::abs(left.last - 2910) <= 2, qPrintable(QString::number(left.last)));
    QVERIFY2(std::abs(right.first - 60) <= 2, qPrintable(QString::number(right.first)));
    QVERIFY2(std::abs(right.last - (100 + 1230)) <= 2, qPrintable(QString::number(right.last)));
    QCOMPARE(left.row, right.row);
}

// SVG and PNG show the same picture, except for the letters.
void tst_drawings_readers::picture_by_rsvg() {
    NEED(has_program("rsvg-convert"), "librsvg2-bin");
    const Scene scene = full_picture();
    const QString path = written("picture.svg", svg(scene));
    const QString rendered = folder.filePath(QStringLiteral("picture.png"));
    const Run read =
        run(QStringLiteral("rsvg-convert"), {QStringLiteral("-d150"), QStringLiteral("-p150"), path,
                                             QStringLiteral("-o"), rendered});
    QCOMPARE(read.errors, QByteArray());
    QCOMPARE(read.code, 0);
    const QImage image = QImage(rendered).convertToFormat(QImage::Format_RGB32);
    const QImage own = QImage::fromData(png(scene).bytes);
    QVERIFY(std::abs(image.width() - own.width()) <= 1);
    QVERIFY(std::abs(image.height() - own.height()) <= 1);
    const QRect there = inked(image);
    const QRect here = inked(own);
    QVERIFY(here.left() > 10 && here.top() > 10);
    QVERIFY(std::abs(there.left() - here.left()) < 12);
    QVERIFY(std::abs(there.top() - here.top()) < 12);
    QVERIFY(std::abs(there.right() - here.right()) < 12);
    QVERIFY(std::abs(there.bottom() - here.bottom()) < 12);
    const auto share = [](const QImage& picture) {
        double ink = 0.0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                ink += 255 - qGray(picture.pixel(x, y));
        }
        return ink / (255.0 * picture.width() * picture.height());
    };
    QVERIFY2(std::abs(share(image) / share(own) - 1.0) < 0.1,
             qPrintable(QString::number(share(image) / share(own))));
}

// One page of lines and texts; no text overlaps another.
void tst_drawings_readers::picture_by_poppler() {
    NEED(has_program("pdftotext"), "poppler-utils");
    const Scene scene = full_picture();
    const QString path = written("picture.pdf", pdf(scene).bytes);
    const Run information = run(QStringLiteral("pdfinfo"), {path});
    QCOMPARE(information.errors, QByteArray());
    QVERIFY(information.out.contains("Pages:           1\n"));
    QVERIFY(!information.out.contains("CreationDate"));
    QVERIFY2(information.out.contains(" 681 x "), information.out.constData()); // 240 mm in points
    QCOMPARE(run(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path}).out.count('\n'), 2);

    const QString read = QString::fromUtf8(
        run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")})
            .out);
    for (const QString& wanted :
         {QStringLiteral(u"Flügel <b>&amp;, table, intake from 2 to 8 %"),
          QStringLiteral("spline, spline, intake from 1.1 to 4.25 %"),
          QStringLiteral("tab escape [31m, table"), QStringLiteral("start and end of the intake")})
        QVERIFY2(read.contains(wanted), qPrintable(read));

    const QString boxes = QString::fromUtf8(
        run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), path, QStringLiteral("-")}).out);
    const QRegularExpression word(QStringLiteral(
        "<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"([0-9.]+)\">(.*)<"));
    std::vector<std::pair<QRectF, QString>> words;
    auto found = word.globalMatch(boxes);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        const auto number = [&match](int i) { return match.captured(i).toDouble(); };
        words.emplace_back(QRectF(QPointF(number(1), number(2)), QPointF(number(3), number(4)))
                               .adjusted(0.2, 0.2, -0.2, -0.2),
                           match.captured(5));
    }
    QVERIFY2(words.size() > 80, qPrintable(boxes));
    for (std::size_t i = 0; i < words.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k)
            QVERIFY2(!words[i].first.intersects(words[k].first),
                     qPrintable(words[i].second + QStringLiteral(" lies on ") + words[k].second));
    }
}

AEROLITH_TEST_MAIN(tst_drawings_readers)
#include "tst_drawings_readers.moc"
