// SPDX-FileCopyrightText: Aerolith developers
// Sheets of several pieces, and texts as lines.
#include "drawings/sheet.h"
#include "drawings/strokes.h"
#include "support/testmain.h"

#include <QRandomGenerator>

#include <set>

using namespace drawings;

namespace {

Scene box(double width, double height) {
    Scene scene;
    scene.add(
        Layer::cut,
        path_through(
            {{5.0, -3.0}, {5.0 + width, -3.0}, {5.0 + width, height - 3.0}, {5.0, height - 3.0}},
            true));
    return scene;
}

QRectF box_of(const Element& element) {
    Scene scene;
    scene.elements = {element};
    return bounds(scene, 0.01);
}

Scene text_scene(const QString& text) {
    Scene scene;
    scene.add(Layer::text, Text{{100.0, 50.0}, 12.0, text});
    return scene;
}

} // namespace

class tst_drawings_sheet : public QObject {
    Q_OBJECT
private slots:
    void rows();
    void nothing_overlaps();
    void no_pieces();
    void stroked_data();
    void stroked();
    void strokes_differ();
    void strokes_stay_in_their_box();
};

void tst_drawings_sheet::rows() {
    const Scene sheet = on_one_sheet(
        {box(100.0, 30.0), box(40.0, 10.0), box(50.0, 20.0), box(60.0, 5.0)}, 10.0, 0.01);
    QCOMPARE(sheet.elements.size(), std::size_t(4));
    QCOMPARE(box_of(sheet.elements[0]), QRectF(0.0, -30.0, 100.0, 30.0));
    QCOMPARE(box_of(sheet.elements[1]), QRectF(0.0, -50.0, 40.0, 10.0));
    QCOMPARE(box_of(sheet.elements[2]), QRectF(50.0, -60.0, 50.0, 20.0));
    QCOMPARE(box_of(sheet.elements[3]), QRectF(0.0, -75.0, 60.0, 5.0));
}

void tst_drawings_sheet::nothing_overlaps() {
    QRandomGenerator random(5);
    std::vector<Scene> pieces;
    for (int i = 0; i < 60; ++i)
        pieces.push_back(box(20.0 + random.bounded(300.0), 5.0 + random.bounded(80.0)));
    const Scene sheet = on_one_sheet(pieces, 4.0, 0.01);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const QRectF grown = box_of(sheet.elements[i]).adjusted(-3.9, -3.9, 3.9, 3.9);
        for (std::size_t k = 0; k < i; ++k)
            QVERIFY(!grown.intersects(box_of(sheet.elements[k])));
    }
}

void tst_drawings_sheet::no_pieces() {
    QVERIFY(on_one_sheet({}, 10.0, 0.01).elements.empty());
    QCOMPARE(line_count({}), std::size_t(0));
    QCOMPARE(line_count(text_scene(QStringLiteral("1"))), std::size_t(1));
}

void tst_drawings_sheet::stroked_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("paths");
    QTest::addColumn<QString>("unknown");
    QTest::newRow("none") << "" << 0 << "";
    QTest::newRow("blank") << "  " << 0 << "";
    QTest::newRow("one stroke each") << "./-L" << 4 << "";
    QTest::newRow("two strokes") << "A" << 2 << "";
    QTest::newRow("small letters") << "ah" << 5 << "";
    QTest::newRow("unknown") << QStringLiteral(u"LäLä:") << 2 << QStringLiteral(u"ä:");
}

void tst_drawings_sheet::stroked() {
    QFETCH(QString, text);
    QFETCH(int, paths);
    Scene scene = text_scene(text);
    QTEST(stroke_texts(scene), "unknown");
    QCOMPARE(scene.elements.size(), std::size_t(paths));
    for (const Element& element : scene.elements) {
        QCOMPARE(element.layer, Layer::text);
        QVERIFY(std::get_if<Path>(&element.shape));
    }
}

void tst_drawings_sheet::strokes_differ() {
    const QString characters = QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ.-/");
    std::set<QString> pictures;
    for (const QChar character : characters) {
        Scene scene = text_scene(character);
        QCOMPARE(stroke_texts(scene), QString());
        QString picture;
        for (const Element& element : scene.elements) {
            for (const QPointF& p : flattened(std::get<Path>(element.shape), 0.01))
                picture += QStringLiteral("%1,%2 ").arg(p.x()).arg(p.y());
            picture += u'|';
        }
        pictures.insert(picture);
    }
    QCOMPARE(qsizetype(pictures.size()), characters.size());
}

void tst_drawings_sheet::strokes_stay_in_their_box() {
    for (const QChar character : QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ")) {
        Scene scene = text_scene(character);
        const QRectF whole = bounds(scene, 0.01);
        stroke_texts(scene);
        const QRectF lines = bounds(scene, 0.01);
        QVERIFY2(whole.contains(lines), qPrintable(QString(character)));
        // As high as a capital.
        QCOMPARE(lines.top(), 50.0);
        QCOMPARE(lines.bottom(), 62.0);
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_drawings_sheet)
#include "tst_drawings_sheet.moc"
