// SPDX-FileCopyrightText: Aerolith developers
// The files of a small scene, byte for byte where that is readable.
#include "drawings/dxf.h"
#include "drawings/numbers_p.h"
#include "drawings/svg.h"
#include "support/testmain.h"

#include <QLocale>
#include <QXmlStreamReader>

#include <cmath>

using namespace drawings;

namespace {

Scene small_scene() {
    Scene scene;
    Path rib = {{0.0, 0.0}, {{2, {QPointF(50.0, 100.0)}, {100.0, 0.0}}}, true};
    rib.segments.push_back({3, {QPointF(70.0, -10.0), QPointF(30.0, -10.0)}, {0.0, 0.0}});
    scene.add(Layer::stitch, rib);
    scene.add(Layer::cut, path_through({{-10.0, -20.0}, {110.5, -20.0}, {50.0, 80.25}}, true));
    scene.add(Layer::chord, line({0.0, 0.0}, {100.0, 0.0}));
    scene.add(Layer::marks, Circle{{25.0, 10.0}, 2.5});
    scene.add(Layer::marks, Dot{{75.0, 10.0}});
    scene.add(Layer::text, Text{{20.0, 5.0}, 10.0, QStringLiteral("R<1> & \"2\"")});
    return scene;
}

struct Group {
    int code = 0;
    QByteArray value;
};

QList<Group> groups_of(const QByteArray& file) {
    const QList<QByteArray> lines = file.split('\n');
    QList<Group> groups;
    for (qsizetype i = 0; i + 1 < lines.size(); i += 2)
        groups.append({lines[i].trimmed().toInt(), lines[i + 1]});
    return groups;
}

QByteArray value_after(const QList<Group>& groups, const QByteArray& variable, int code) {
    bool found = false;
    for (const Group& group : groups) {
        if (found && group.code == code)
            return group.value;
        found = found || (group.code == 9 && group.value == variable);
    }
    return "none";
}

QList<QByteArray> entities(const QList<Group>& groups) {
    QList<QByteArray> kinds;
    bool inside = false;
    for (const Group& group : groups) {
        inside = inside || (group.code == 2 && group.value == "ENTITIES");
        if (inside && group.code == 0 && group.value != "VERTEX")
            kinds += group.value;
    }
    return kinds;
}

QList<int> codes_of(const QList<Group>& groups, const QByteArray& entry) {
    QList<int> codes;
    bool inside = false;
    for (const Group& group : groups) {
        if (group.code == 0)
            inside = group.value == entry;
        else if (inside)
            codes += group.code;
    }
    return codes;
}

} // namespace

class tst_drawings_files : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void numbers_data();
    void numbers();
    void layer_names_data();
    void layer_names();
    void svg_file();
    void svg_is_xml();
    void centimetres();
    void dxf_structure();
    void dxf_texts_data();
    void dxf_texts();
    void empty_scene();
    void locale();
};

void tst_drawings_files::numbers_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("whole") << 10.0 << 6 << QByteArray("10");
    QTest::newRow("hundred") << 100.0 << 0 << QByteArray("100");
    QTest::newRow("rounded") << 1.23456789 << 6 << QByteArray("1.234568");
    QTest::newRow("zeros") << 1.5 << 9 << QByteArray("1.5");
    QTest::newRow("negative zero") << -1e-12 << 6 << QByteArray("0");
    QTest::newRow("large") << 123456789.25 << 6 << QByteArray("123456789.25");
    QTest::newRow("largest") << -std::ldexp(1.0, 1023) << 15
                             << QByteArray("-" + QByteArray::number(std::ldexp(1.0, 1023), 'f', 0));
}

void tst_drawings_files::numbers() {
    QFETCH(double, value);
    QFETCH(int, decimals);
    QTEST(decimal(value, decimals), "expected");
}

void tst_drawings_files::layer_names_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("good");
    QTest::newRow("standard") << "CUT" << true;
    QTest::newRow("all kinds") << "Schnitt_1-a$" << true;
    QTest::newRow("31") << QString(31, u'A') << true;
    QTest::newRow("32") << QString(32, u'A') << false;
    QTest::newRow("none") << QString() << false;
    QTest::newRow("blank") << "A B" << false;
    QTest::newRow("quote") << "A\"" << false;
    QTest::newRow("umlaut") << QStringLiteral(u"Nähte") << false;
}

void tst_drawings_files::layer_names() {
    QFETCH(QString, name);
    QFETCH(bool, good);
    QCOMPARE(layer_name_fault(name).isEmpty(), good);
}

void tst_drawings_files::svg_file() {
    OutputSettings settings;
    settings.layer_names[std::size_t(Layer::stitch)] = QStringLiteral("NAHT");
    const QByteArray expected =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" "
        "xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" version=\"1.1\" "
        "width=\"131mm\" height=\"111mm\" viewBox=\"-15 -86 131 111\" fill=\"none\" "
        "stroke-width=\"0.2\" stroke-linejoin=\"round\" stroke-linecap=\"round\">\n"
        "<g id=\"CUT\" inkscape:groupmode=\"layer\" inkscape:label=\"CUT\" stroke=\"#c00000\">\n"
        "<path d=\"M-10 20L110.5 20 50 -80.25Z\"/>\n"
        "</g>\n"
        "<g id=\"STITCH\" inkscape:groupmode=\"layer\" inkscape:label=\"NAHT\" "
        "stroke=\"#000000\">\n"
        "<path d=\"M0 0Q50 -100 100 0C70 10 30 10 0 0Z\"/>\n"
        "</g>\n"
        "<g id=\"MARKS\" inkscape:groupmode=\"layer\" inkscape:label=\"MARKS\" "
        "stroke=\"#007000\">\n"
        "<circle cx=\"25\" cy=\"-10\" r=\"2.5\"/>\n"
        "<path d=\"M75 -10h0\" stroke-width=\"1\"/>\n"
        "</g>\n"
        "<g id=\"CHORD\" inkscape:groupmode=\"layer\" inkscape:label=\"CHORD\" "
        "stroke=\"#0050a0\">\n"
        "<path d=\"M0 0L100 0\"/>\n"
        "</g>\n"
        "<g id=\"TEXT\" inkscape:groupmode=\"layer\" inkscape:label=\"TEXT\" stroke=\"#000000\">\n"
        "<text x=\"20\" y=\"-5\" font-family=\"sans-serif\" font-size=\"13.888888889\" "
        "xml:space=\"preserve\" stroke=\"none\" fill=\"#000000\">R&lt;1&gt; &amp; "
        "&quot;2&quot;</text>\n"
        "</g>\n"
        "</svg>\n";
    QCOMPARE(svg(small_scene(), settings), expected);
}

void tst_drawings_files::svg_is_xml() {
    Scene scene;
    QString every;
    for (char32_t c = 0; c < 0x11000; ++c)
        every += QChar::fromUcs4(c);
    scene.add(Layer::text, Text{{0.0, 0.0}, 5.0, every});
    QXmlStreamReader reader(svg(scene));
    QString read;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters && !reader.isWhitespace())
            read += reader.text();
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QCOMPARE(read, printable(every));
}

void tst_drawings_files::centimetres() {
    OutputSettings settings;
    settings.unit = Unit::cm;
    const QByteArray picture = svg(small_scene(), settings);
    QVERIFY(picture.contains("width=\"13.1cm\" height=\"11.1cm\" viewBox=\"-1.5 -8.6 13.1 11.1\""));
    QVERIFY(picture.contains("M-1 2L11.05 2 5 -8.025Z"));
    const QList<Group> groups = groups_of(dxf(small_scene(), settings));
    QCOMPARE(value_after(groups, "$INSUNITS", 70), QByteArray("5"));
    QCOMPARE(value_after(groups, "$EXTMAX", 10), QByteArray("11.05"));
}

void tst_drawings_files::dxf_structure() {
    const QByteArray file = dxf(small_scene());
    QVERIFY(file.endsWith("  0\nEOF\n"));
    const QList<Group> groups = groups_of(file);
    QCOMPARE(value_after(groups, "$ACADVER", 1), QByteArray("AC1009"));
    QCOMPARE(value_after(groups, "$INSUNITS", 70), QByteArray("4"));
    QCOMPARE(value_after(groups, "$EXTMIN", 10), QByteArray("-10"));
    QCOMPARE(value_after(groups, "$EXTMIN", 20), QByteArray("-20"));
    QCOMPARE(value_after(groups, "$EXTMAX", 10), QByteArray("110.5"));
    QCOMPARE(value_after(groups, "$EXTMAX", 20), QByteArray("80.25"));
    // R12 has no defaults for the items of its tables.
    QCOMPARE(codes_of(groups, "LTYPE"), QList<int>({2, 70, 3, 72, 73, 40}));
    QCOMPARE(codes_of(groups, "STYLE"), QList<int>({2, 70, 40, 41, 50, 71, 42, 3, 4}));
    const QList<QByteArray> expected = {"POLYLINE", "SEQEND", "POLYLINE", "SEQEND", "LINE",
                                        "CIRCLE",   "POINT",  "TEXT",     "ENDSEC", "EOF"};
    QCOMPARE(entities(groups), expected);
}

void tst_drawings_files::dxf_texts_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("ascii") << "Rib 12/A 50%" << QByteArray("Rib 12/A 50%");
    QTest::newRow("umlaut") << QStringLiteral(u"Flügel") << QByteArray("Fl\\U+00FCgel");
    QTest::newRow("beyond 16 bits")
        << QStringLiteral(u"\U0001FA82") << QByteArray("\\U+D83E\\U+DE82");
    QTest::newRow("code") << "\\U+0041" << QByteArray("\\U+005CU+0041");
    QTest::newRow("caret") << "a^b" << QByteArray("a^ b");
    QTest::newRow("percent code") << "5%%d" << QByteArray("5%%%%%%d");
    QTest::newRow("line feed") << "a\r\nb" << QByteArray("a  b");
}

void tst_drawings_files::dxf_texts() {
    QFETCH(QString, text);
    QTEST(dxf_text(text), "expected");
}

void tst_drawings_files::empty_scene() {
    QVERIFY(svg({}).contains("viewBox=\"-5 -5 10 10\""));
    QCOMPARE(entities(groups_of(dxf({}))), QList<QByteArray>({"ENDSEC", "EOF"}));
}

void tst_drawings_files::locale() {
    const QByteArray picture = svg(small_scene());
    const QByteArray drawing = dxf(small_scene());
    QLocale::setDefault(QLocale(QLocale::German));
    QCOMPARE(svg(small_scene()), picture);
    QCOMPARE(dxf(small_scene()), drawing);
}

AEROLITH_GUILESS_TEST_MAIN(tst_drawings_files)
#include "tst_drawings_files.moc"
