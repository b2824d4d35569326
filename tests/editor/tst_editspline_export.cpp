// SPDX-FileCopyrightText: Aerolith developers
// The coordinate table of the curve, byte by byte.
#include "editorfixture.h"
#include "support/exactcompare.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

class tst_editspline_export : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void curves_data();
    void curves();
    void written_indices_data();
    void written_indices();
    void rows_at_the_trailing_edge();
    void row_format_data();
    void row_format();
    void empty_curve();
    void header_data();
    void header();
    void second_save_replaces();
    void empty_name();
    void unwritable_data();
    void unwritable();
    void saves_what_was_evaluated();
    void not_finite();
    void changes_nothing();

private:
    QByteArray saved(TestEditor& editor, const QString& name);

    QTemporaryDir* folder = nullptr;
};

namespace {

// A closed curve of @p count samples in editor pixels; sample j is at
// x = xc + j * L_T / 4096, so that every sample has a distinct x and most are exact.
QPolygonF marked_curve(const EditorModel& model, int count, bool rising) {
    QPolygonF curve;
    for (int j = 0; j < count; ++j) {
        const double side = 2 * j < count ? -1.0 : 1.0;
        const double bulge = double(j) * (count - j) / count / count;
        curve << model.to_pixels(QPointF(j / 4096.0, (rising ? side : -side) * bulge));
    }
    return curve;
}

QPolygonF in_chord_units(const EditorModel& model, const QPolygonF& curve) {
    QPolygonF chord;
    for (const QPointF point : curve)
        chord << model.to_chord(point);
    return chord;
}

QPolygonF mirrored(const EditorModel& model, QPolygonF points) {
    for (QPointF& point : points)
        point.setY(2 * model.yc - point.y());
    return points;
}

} // namespace

void tst_editspline_export::init() {
    folder = new QTemporaryDir;
    QVERIFY(folder->isValid());
}

void tst_editspline_export::cleanup() {
    delete folder;
    folder = nullptr;
}

QByteArray tst_editspline_export::saved(TestEditor& editor, const QString& name) {
    editor.Save_airfoil_table(name);
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void tst_editspline_export::curves_data() {
    QTest::addColumn<bool>("mirror");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("flag");

    QTest::newRow("lower-side-first") << false << usual_size << false;
    QTest::newRow("upper-side-first") << true << usual_size << true;
    QTest::newRow("minimum-size") << false << QSize(555, 400) << false;
    QTest::newRow("minimum-size-mirrored") << true << QSize(555, 400) << true;
}

void tst_editspline_export::curves() {
    QFETCH(bool, mirror);
    QFETCH(QSize, size);
    QFETCH(bool, flag);

    TestEditor editor(size);
    EditorModel model(size);
    const QPolygonF section = model_symmetric(model);
    editor.set_points(mirror ? mirrored(model, section) : section);
    for (int i = 0; i < 3; ++i)
        editor.recorded();
    const QPolygonF chord = in_chord_units(model, editor.spline_poly);
    QCOMPARE(chord.size(), 999);
    QCOMPARE(model_area(chord) > 0.0, flag);
    const QString name = folder->filePath(QStringLiteral("section.dat"));
    const QByteArray table = saved(editor, name);
    QCOMPARE(table, model_table(name, chord));
    QVERIFY(editor.table_saved());
    // The listing runs in the same direction whichever side the spline starts on.
    const QList<QByteArray> lines = table.split('\n');
    QVERIFY(lines.at(20).mid(10).trimmed().toDouble() > 0.0);
    QVERIFY(lines.size() > 80 && lines.size() < 116);
}

void tst_editspline_export::written_indices_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<QList<int>>("ends");

    QTest::newRow("999-forwards") << 999 << true << QList<int>{111, 1, 10, 982, 991};
    QTest::newRow("999-backwards") << 999 << false << QList<int>{111, 998, 989, 17, 8};
    QTest::newRow("1000-forwards") << 1000 << true << QList<int>{111, 1, 10, 982, 991};
    QTest::newRow("1000-backwards") << 1000 << false << QList<int>{111, 999, 990, 18, 9};
    QTest::newRow("1001-forwards") << 1001 << true << QList<int>{112, 1, 10, 991, 1000};
    QTest::newRow("1001-backwards") << 1001 << false << QList<int>{112, 1000, 991, 10, 1};
    QTest::newRow("12-forwards") << 12 << true << QList<int>{2, 1, 10, 1, 10};
    QTest::newRow("11-backwards") << 11 << false << QList<int>{2, 10, 1, 10, 1};
}

void tst_editspline_export::written_indices() {
    QFETCH(int, count);
    QFETCH(bool, flag);
    QFETCH(QList<int>, ends);

    TestEditor editor;
    const EditorModel model = editor.model();
    editor.spline_poly = marked_curve(model, count, !flag);
    if ((model_area(in_chord_units(model, editor.spline_poly)) > 0.0) != flag)
        editor.spline_poly = marked_curve(model, count, flag);
    const QPolygonF chord = in_chord_units(model, editor.spline_poly);
    QCOMPARE(model_area(chord) > 0.0, flag);

    const QString name = folder->filePath(QStringLiteral("marked.txt"));
    const QByteArray table = saved(editor, name);
    QList<int> indices;
    const QList<QByteArray> lines = table.split('\n');
    for (const QByteArray& line : lines.mid(2, lines.size() - 4))
        indices << qRound(line.left(7).trimmed().toDouble() * 4096.0);
    QCOMPARE(indices.size(), ends.at(0));
    QCOMPARE(indices.first(), ends.at(1));
    QCOMPARE(indices.at(1), ends.at(2));
    QCOMPARE(indices.at(indices.size() - 2), ends.at(3));
    QCOMPARE(indices.last(), ends.at(4));
    QCOMPARE(table, model_table(name, chord));
}

// The two exact rows replace all points at the trailing edge or behind it.
void tst_editspline_export::rows_at_the_trailing_edge() {
    TestEditor editor;
    const EditorModel model = editor.model();
    const double x[] = {0.5, 0.999989, 0.99999, 0.999991, 1.0, 1.5, -0.25};
    for (const double station : x) {
        for (int copy = 0; copy < 9; ++copy)
            editor.spline_poly << model.to_pixels(QPointF(station, 0.125));
    }
    const QPolygonF chord = in_chord_units(model, editor.spline_poly);
    const QString name = folder->filePath(QStringLiteral("edge.txt"));
    const QByteArray table = saved(editor, name);
    QCOMPARE(table, model_table(name, chord));
    QVERIFY(table.contains("0.99999   0.12500 \t\n"));
    QVERIFY(!table.contains("1.00000   0.12500"));
    QVERIFY(!table.contains("1.50000"));
    QVERIFY(table.contains("-0.25000   0.12500 \t\n"));
}

void tst_editspline_export::row_format_data() {
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QByteArray>("row");

    QTest::newRow("plain") << QPointF(0.5, 0.25) << QByteArray("0.50000   0.25000 \t\n");
    QTest::newRow("negative") << QPointF(0.5, -0.25) << QByteArray("0.50000   -0.25000 \t\n");
    QTest::newRow("five-decimals")
        << QPointF(0.123456, 0.1) << QByteArray("0.12346   0.10000 \t\n");
    QTest::newRow("small-negative") << QPointF(0.5, -1e-7) << QByteArray("0.50000   -0.00000 \t\n");
    QTest::newRow("wide") << QPointF(-1234.5, 99.5) << QByteArray("-1234.50000   99.50000 \t\n");
}

void tst_editspline_export::row_format() {
    QFETCH(QPointF, point);
    QFETCH(QByteArray, row);

    TestEditor editor;
    const EditorModel model = editor.model();
    editor.spline_poly = QPolygonF(2, model.to_pixels(point));
    const QString name = folder->filePath(QStringLiteral("row.txt"));
    const QByteArray edge = "1.00000   0.00000 \t\n";
    QCOMPARE(saved(editor, name), name.toUtf8() + " \t\n" + edge + row + edge + " ");
}

void tst_editspline_export::empty_curve() {
    TestEditor editor;
    const QString name = folder->filePath(QStringLiteral("empty.dat"));
    QCOMPARE(saved(editor, name),
             name.toUtf8() + " \t\n1.00000   0.00000 \t\n1.00000   0.00000 \t\n ");
    QVERIFY(editor.table_saved());
}

void tst_editspline_export::header_data() {
    QTest::addColumn<QString>("name");

    QTest::newRow("plain") << QStringLiteral("a.dat");
    QTest::newRow("place-markers") << QStringLiteral("a %1 %2 %L1 %%.txt");
    QTest::newRow("markup") << QStringLiteral("<b>wing<br>&amp;.txt");
    QTest::newRow("not-latin") << QString::fromUtf8("\u043a\u0440\u044b\u043b\u043e \u00e4.txt");
    QTest::newRow("no-suffix") << QStringLiteral("wing");
    QTest::newRow("blanks") << QStringLiteral(" wing  two .txt ");
}

void tst_editspline_export::header() {
    QFETCH(QString, name);

    TestEditor editor;
    editor.set_settled_section();
    const QString path = folder->filePath(name);
    const QByteArray table = saved(editor, path);
    QVERIFY(table.startsWith(path.toUtf8() + " \t\n1.00000   0.00000 \t\n"));
    QVERIFY(table.endsWith("1.00000   0.00000 \t\n "));
    QVERIFY(!table.contains('\r'));
    QVERIFY(editor.table_saved());
    QCOMPARE(QDir(folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{name});
}

void tst_editspline_export::second_save_replaces() {
    TestEditor editor;
    editor.set_settled_section();
    const QString name = folder->filePath(QStringLiteral("twice.txt"));
    QVERIFY(saved(editor, name).size() > 1000);
    editor.spline_poly.clear();
    QCOMPARE(saved(editor, name),
             name.toUtf8() + " \t\n1.00000   0.00000 \t\n1.00000   0.00000 \t\n ");
    editor.set_settled_section();
    QCOMPARE(saved(editor, name),
             model_table(name, in_chord_units(editor.model(), editor.spline_poly)));
}

void tst_editspline_export::empty_name() {
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder->path()));
    TestEditor editor;
    editor.set_settled_section();
    const ModalGuard guard;
    editor.Save_airfoil_table(QString());
    editor.Save_airfoil_table(QStringLiteral(""));
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(QDir(folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList());
    QCOMPARE(guard.count(), 0);

    // Without a name nothing is saved, and the outcome stays.
    editor.Save_airfoil_table(folder->filePath(QStringLiteral("good.txt")));
    editor.Save_airfoil_table(QString());
    QVERIFY(editor.table_saved());
    editor.Save_airfoil_table(folder->filePath(QStringLiteral("missing/a.txt")));
    editor.Save_airfoil_table(QString());
    QVERIFY(!editor.table_saved());
}

void tst_editspline_export::unwritable_data() {
    QTest::addColumn<QString>("name");

    QTest::newRow("missing-folder") << QStringLiteral("missing/a.txt");
    QTest::newRow("a-folder") << QStringLiteral("folder");
    QTest::newRow("below-a-file") << QStringLiteral("file/a.txt");
    QTest::newRow("name-too-long") << QString(300, QLatin1Char('a'));
}

void tst_editspline_export::unwritable() {
    QFETCH(QString, name);

    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("folder")));
    QFile file(folder->filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    const QStringList before = QDir(folder->path()).entryList(all);
    TestEditor editor;
    editor.set_settled_section();
    const ModalGuard guard;
    editor.Save_airfoil_table(folder->filePath(name));
    QVERIFY(!editor.table_saved());
    QCOMPARE(guard.count(), 0);
    QCOMPARE(QDir(folder->path()).entryList(all), before);
    QCOMPARE(QFileInfo(file.fileName()).size(), 0);

    editor.Save_airfoil_table(folder->filePath(QStringLiteral("good.txt")));
    QVERIFY(editor.table_saved());
}

// The table holds the curve as it was last evaluated, not as the points are now.
void tst_editspline_export::saves_what_was_evaluated() {
    TestEditor editor;
    editor.set_settled_section();
    const QString name = folder->filePath(QStringLiteral("curve.txt"));
    const QByteArray before = saved(editor, name);
    editor.p->spline.CP[3] += QPointF(50, 50);
    editor.p->workAirfoil.clear();
    QCOMPARE(saved(editor, name), before);
}

void tst_editspline_export::not_finite() {
    TestEditor editor;
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, 1e300, -1e308})
        editor.spline_poly << QPolygonF(9, QPointF(bad, bad));
    const QString name = folder->filePath(QStringLiteral("bad.txt"));
    const QByteArray table = saved(editor, name);
    QVERIFY(editor.table_saved());
    QVERIFY(table.startsWith(name.toUtf8() + " \t\n1.00000   0.00000 \t\n"));
    QVERIFY(table.endsWith("1.00000   0.00000 \t\n "));

    TestEditor narrow(QSize(1, 1));
    narrow.spline_poly = QPolygonF(30, QPointF(1, 1));
    QVERIFY(saved(narrow, name).endsWith("1.00000   0.00000 \t\n "));
}

void tst_editspline_export::changes_nothing() {
    TestEditor editor;
    editor.set_settled_section();
    editor.p->spline.airfoilName = QStringLiteral("spline.spl");
    const QPolygonF curve = editor.spline_poly;
    const QPolygonF points = editor.points();
    const QPolygonF work = editor.p->workAirfoil;
    saved(editor, folder->filePath(QStringLiteral("a.txt")));
    COMPARE_POLYGON_BITS(editor.spline_poly, curve);
    COMPARE_POLYGON_BITS(editor.points(), points);
    COMPARE_POLYGON_BITS(editor.p->workAirfoil, work);
    QCOMPARE(editor.p->spline.airfoilName, QStringLiteral("spline.spl"));
}

AEROLITH_TEST_MAIN(tst_editspline_export)
#include "tst_editspline_export.moc"
