// SPDX-FileCopyrightText: Aerolith developers
// Reading coordinate tables: lines, fields, layouts, awkward files.
#include "airfoil/airfoil.h"
#include "support/awkwardtables.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Characters in tables that are decoration without meaning.
const QString decoration = QStringLiteral("?!'`_@#$%^&*(){}[]|;:/><~=+\u00AB\u00BB");

QPolygonF single_precision(QPolygonF poly) {
    for (QPointF& point : poly)
        point = QPointF(double(float(point.x())), double(float(point.y())));
    return poly;
}

} // namespace

class tst_reader : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void clean_data();
    void clean();
    void every_decoration_is_removed();
    void isLatString_data();
    void isLatString();
    void Repair_NumString_data();
    void Repair_NumString();
    void FindNumericSubStrings_data();
    void FindNumericSubStrings();
    void outline_data();
    void outline();
    void number_of_points_data();
    void number_of_points();
    void endless_data();
    void endless();
    void layouts_of_one_file();
    void shared_text_is_one_text();
    void normalised_twice();
    void FoilText_Read_data();
    void FoilText_Read();
    void plainTextRead_data();
    void plainTextRead();
    void plainTextRead_of_one_place();
    void no_readable_file_data();
    void no_readable_file();
    void fifo_is_not_waited_for();
    void calls_keep_no_state();

private:
    QString stored(const QByteArray& bytes);

    QTemporaryDir m_folder;
    int m_files = 0;
};

void tst_reader::initTestCase() {
    QVERIFY(m_folder.isValid());
}

QString tst_reader::stored(const QByteArray& bytes) {
    QFile file(m_folder.filePath(QString::number(++m_files)));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    return file.fileName();
}

void tst_reader::clean_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    QTest::newRow("semicolon-and-commas")
        << QStringLiteral("1,0000;  0,0012") << QStringLiteral("1.0000  0.0012");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("blanks-alone") << QStringLiteral(" \t \v\f\r ") << QString();
    QTest::newRow("tab-inside") << QStringLiteral("1\t2") << QStringLiteral("1 2");
    QTest::newRow("ends-trimmed") << QStringLiteral("\t 1 2 \t") << QStringLiteral("1 2");
    QTest::newRow("spaces-of-other-scripts-trimmed")
        << QStringLiteral("\u00A01\u3000") << QStringLiteral("1");
    QTest::newRow("decoration-before-blanks") << QStringLiteral("( 1 )") << QStringLiteral("1");
    QTest::newRow("decoration-alone") << decoration << QString();
    QTest::newRow("removed-without-a-gap") << QStringLiteral("1;2") << QStringLiteral("12");
    QTest::newRow("kept") << QStringLiteral("-.\"\\09azAZ \u2212")
                          << QStringLiteral("-.\"\\09azAZ \u2212");
    QTest::newRow("nul-kept") << QString(QChar(0)) << QString(QChar(0));
    QTest::newRow("decoration-on-both-sides-of-a-comma")
        << QStringLiteral("[0,5]") << QStringLiteral("0.5");
}

void tst_reader::clean() {
    QFETCH(QString, line);
    QFETCH(QString, expected);
    QCOMPARE(::clean(line), expected);
}

void tst_reader::every_decoration_is_removed() {
    QCOMPARE(decoration.size(), 29);
    for (const QChar c : decoration)
        QCOMPARE(::clean(QStringLiteral("1") + c + QStringLiteral(" ") + c + QStringLiteral("2")),
                 QStringLiteral("1 2"));
    for (char16_t c = 0x20; c < 0x180; ++c) {
        const QString text = QStringLiteral("1") + QChar(c) + QStringLiteral("2");
        if (c != u',' && !decoration.contains(QChar(c)))
            QCOMPARE(::clean(text), text);
    }
}

void tst_reader::isLatString_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("numbers") << QStringLiteral("1.0 -0.5 \"\\") << 0;
    QTest::newRow("name") << QStringLiteral("NACA 0012") << 1;
    QTest::newRow("heading") << QStringLiteral("x y") << 1;
    QTest::newRow("exponent") << QStringLiteral("1.0e-3") << 1;
    QTest::newRow("last-character") << QStringLiteral("1.0 0.0 x") << 1;
    QTest::newRow("umlaut") << QStringLiteral("\u00E4") << 1;
    QTest::newRow("greek") << QStringLiteral("\u03B1") << 1;
    QTest::newRow("ideograph") << QStringLiteral("\u7FFC") << 1;
    QTest::newRow("modifier-letter") << QStringLiteral("\u02B0") << 1;
    QTest::newRow("degree-sign") << QStringLiteral("\u00B0") << 0;
    QTest::newRow("replacement-character") << QStringLiteral("\uFFFD") << 0;
    QTest::newRow("roman-numeral") << QStringLiteral("\u2167") << 0;
    QTest::newRow("combining-mark") << QStringLiteral("\u0301") << 0;
    QTest::newRow("half-of-a-letter-beyond-16-bits") << QString(QChar(0xD835)) << 0;
}

void tst_reader::isLatString() {
    QFETCH(QString, text);
    QFETCH(int, expected);
    QCOMPARE(::isLatString(text), expected);
}

void tst_reader::Repair_NumString_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("bare-point") << QStringLiteral(".5") << QStringLiteral("0.5");
    QTest::newRow("negative-bare-point") << QStringLiteral("-.5") << QStringLiteral("-0.5");
    QTest::newRow("whole") << QStringLiteral("1.5") << QStringLiteral("1.5");
    QTest::newRow("negative-whole") << QStringLiteral("-1.5") << QStringLiteral("-1.5");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("point-alone") << QStringLiteral(".") << QStringLiteral("0.");
    QTest::newRow("every-point-of-a-line-that-starts-with-one")
        << QStringLiteral(".5 1.5 -.5") << QStringLiteral("0.5 10.5 -0.5");
    QTest::newRow("later-points-of-other-lines")
        << QStringLiteral("1.5 .5 -.5") << QStringLiteral("1.5 .5 -0.5");
    QTest::newRow("blank-first") << QStringLiteral(" .5") << QStringLiteral(" .5");
    QTest::newRow("two-points") << QStringLiteral("..5") << QStringLiteral("0.0.5");
    QTest::newRow("two-signs") << QStringLiteral("-.-.5") << QStringLiteral("-0.-0.5");
}

void tst_reader::Repair_NumString() {
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(::Repair_NumString(text), expected);
}

void tst_reader::FindNumericSubStrings_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("fields");

    QTest::newRow("two") << QStringLiteral("1.0 -0.5") << QStringLiteral("1.0|-0.5|");
    QTest::newRow("three") << QStringLiteral("1 2  3") << QStringLiteral("1|2|3");
    QTest::newRow("fourth-is-dropped") << QStringLiteral("1 2 3 4 5") << QStringLiteral("1|2|3");
    QTest::newRow("empty-line") << QString() << QStringLiteral("||");
    QTest::newRow("other-characters-separate")
        << QStringLiteral("1\"x\"2\u22123") << QStringLiteral("1|2|3");
    QTest::newRow("leading-quote") << QStringLiteral("\"1.0 0.5\"") << QStringLiteral("|1.0|0.5");
    QTest::newRow("leading-blank") << QStringLiteral(" 1.0") << QStringLiteral("|1.0|");
    QTest::newRow("leading-blanks-and-quote")
        << QStringLiteral(" \" 1.0") << QStringLiteral("|1.0|");
    QTest::newRow("trailing-blank") << QStringLiteral("1.0 ") << QStringLiteral("1.0||");
    QTest::newRow("no-number") << QStringLiteral("xyz") << QStringLiteral("||");
    QTest::newRow("signs-and-points-stay")
        << QStringLiteral("--5 1.2.3 5-") << QStringLiteral("--5|1.2.3|5-");
    QTest::newRow("plus-separates") << QStringLiteral("1+2") << QStringLiteral("1|2|");
    QTest::newRow("nul-separates")
        << QString(QStringLiteral("1") + QChar(0) + QStringLiteral("2")) << QStringLiteral("1|2|");
}

void tst_reader::FindNumericSubStrings() {
    QFETCH(QString, line);
    QFETCH(QString, fields);
    QString S[3] = {QStringLiteral("old"), QStringLiteral("old"), QStringLiteral("old")};
    ::FindNumericSubStrings(line, S);
    QCOMPARE(QStringList({S[0], S[1], S[2]}).join(QLatin1Char('|')), fields);
}

void tst_reader::outline_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QPolygonF>("points");
    const auto row = [](const char* name, const QPolygonF& points) {
        QTest::newRow(name) << awkward_table(name).bytes << points;
    };

    row("decimal-commas", {{1.0, 0.0012}, {0.5, 0.1}, {0.0, 0.0}});
    row("semicolon-alone-between-fields", {{1.0, 0.0012}, {0.0, 0.0}, {0.0, 0.0}});
    row("no-final-newline", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}});
    row("byte-order-mark", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}});
    row("crlf", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}});
    row("utf-16-crlf", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}});
    row("utf-32-big", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}});
    row("latin-1-bytes", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.0, 0.5}});
    row("end-of-file-character",
        {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}, {0.0, 0.0}});
    row("nul-between-fields", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("lone-return-after-one-row", {{1.0, 0.0}});
    row("tabs", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("brackets", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("guillemets", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("quotes", {{0.0, 1.0}, {0.0, 0.5}, {0.0, 0.0}});
    row("comment-with-number", {{12.0, 0.0}, {1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("ruled-line", {{1.0, 0.0}, {0.0, 0.0}, {0.0, 0.0}, {0.5, 0.1}});
    row("letters-in-rows", {{1.0, 0.0}, {0.0, 0.0}, {0.5, -0.1}});
    row("letters-beyond-16-bits", {{0.0, 1.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("exponents", {{1.0, 0.0}, {0.25, 0.1}, {0.0, 0.0}});
    row("plus-signs", {{1.0, 0.0}, {0.5, 0.1}, {0.0, -0.0}});
    row("four-fields-of-three-points",
        {{1.0, 0.0}, {0.5, -0.1}, {0.0, 0.0}, {0.0, 0.0}, {0.5, 0.1}, {1.0, 0.0}});
    row("four-fields-of-two-points", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("bare-points", {{1.0, 0.0}, {0.5, -0.5}, {-0.25, 0.75}, {0.0, 0.0}});
    row("broken-numbers",
        {{1.0, 0.0}, {0.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.0, 0.0}, {-0.0, 0.0}});
    row("one-field-of-two-points", {{0.0, 0.0}, {0.0, 0.0}, {0.0, 0.0}});
    row("form-feeds", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("minus-of-typesetters", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("whole-of-39-digits", {{0.0, 0.1}, {0.5, 0.1}, {0.0, 0.0}});
    row("whole-of-60-digits", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("whole-of-300-digits", {{0.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("whole-of-401-digits", {{0.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("fraction-of-300-digits", {{1.0 / 3.0, -1.0 / 3.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("greatest-single", {{3.4028234663852886e38, 0.1}, {0.5, 0.1}, {0.0, 0.0}});
    row("beyond-greatest-single", {{0.0, 0.1}, {0.5, 0.1}, {0.0, 0.0}});
    row("least-single", {{1.0, 1.401298464324817e-45}, {0.5, 0.1}, {0.0, 0.0}});
    row("below-least-single", {{1.0, -0.0}, {0.5, 0.1}, {0.0, 0.0}});
    row("middles-of-singles", {{0.757981210947036792, -0.613587290048599304},
                               {0.142895244061946856, 0.155786506831645940},
                               {0.59991344809532156, -0.99795833230018620}});
    row("nineteen-decimals-and-more", {{1.0, 1.2e-18}, {0.5, -3e-20}, {0.25, 4e-21}});
    row("whole-of-twenty-digits",
        {{18446744073709551616.0, 0.1}, {18446744073709551616.0, 0.2}, {1.0, 0.0}});
    row("negative-zero", {{1.0, -0.0}, {0.5, 0.1}, {-0.0, -0.0}});
    row("two-rows", {{1.0, 0.0}, {0.5, 0.1}});
    row("one-separator-in-the-third-line",
        {{0.5, -0.1}, {0.0, 0.0}, {0.5, 0.1}, {0.0, -0.0}, {0.5, 0.1}});
    row("half-contour", {{1.0, 0.0},
                         {0.6, 0.04},
                         {0.2, 0.05},
                         {0.0, 0.0},
                         {0.2, -0.05},
                         {0.6, -0.04},
                         {1.0, -0.0}});
    row("half-contour-nose-in-fifth-line", {{1.0, 0.0},
                                            {0.6, 0.04},
                                            {0.2, 0.05},
                                            {0.0, 0.0},
                                            {0.2, -0.05},
                                            {0.6, -0.04},
                                            {1.0, -0.0}});
    row("half-contour-nose-in-fourth-line",
        {{61.0, 61.0}, {0.0, 0.0}, {0.2, 0.05}, {0.6, 0.04}, {1.0, 0.0}});
    row("half-contour-without-blank-lines",
        {{61.0, 61.0}, {0.0, 0.0}, {0.2, 0.05}, {0.6, 0.04}, {1.0, 0.0}});
    row("half-contour-header-below-one",
        {{0.9, 0.9}, {0.0, 0.0}, {0.2, 0.05}, {0.6, 0.04}, {1.0, 0.0}});
    row("half-contour-nose-right-of-zero", {{61.0, 61.0}, {0.001, 0.0}, {0.2, 0.05}, {1.0, 0.0}});
    row("half-contour-third-row-at-zero", {{61.0, 61.0}, {0.0, 0.0}, {0.0, 0.05}, {1.0, 0.0}});
    row("two-rows-of-a-half-contour", {{61.0, 61.0}, {0.0, 0.0}});
    row("three-columns", {{1.0, 0.0}, {0.5, -0.1}, {0.0, 0.0}, {0.0, 0.0}, {0.5, 0.1}, {1.0, 0.0}});
    row("three-columns-with-gaps", {{1.0, 0.0},
                                    {0.7, -0.08},
                                    {0.5, 0.0},
                                    {0.0, 0.0},
                                    {0.0, 0.0},
                                    {0.5, 0.1},
                                    {0.7, 0.08},
                                    {1.0, 0.0}});
    row("title-with-number", {{1.0, 0.0}, {0.5, 0.1}, {0.0, 0.0}, {0.5, -0.1}, {1.0, 0.0}});
}

// Coordinates have single precision, so 0.1 in a table is not 0.1.
void tst_reader::outline() {
    QFETCH(QByteArray, bytes);
    QFETCH(QPolygonF, points);
    QVERIFY(!bytes.isEmpty());
    const QPolygonF outline = airfoil_Read_All(stored(bytes));
    const QString difference = first_difference(outline, single_precision(points));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_reader::number_of_points_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("points");

    for (const AwkwardTable& table : awkward_tables())
        QTest::newRow(table.name) << table.bytes << table.points;
}

void tst_reader::number_of_points() {
    QFETCH(QByteArray, bytes);
    QFETCH(int, points);
    QCOMPARE(airfoil_Read_All(stored(bytes)).size(), points);
}

void tst_reader::endless_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("points");

    for (const AwkwardTable& table : endless_tables())
        QTest::newRow(table.name) << table.bytes << table.points;
}

void tst_reader::endless() {
    QFETCH(QByteArray, bytes);
    QFETCH(int, points);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(airfoil_Read_All(stored(bytes)).size(), points);
    // Ample for a slow machine, too short for time that grows with the square of the rows.
    QVERIFY2(timer.elapsed() < 30000, qPrintable(QString::number(timer.elapsed())));
}

// Each reader assumes its layout and does not check it.
void tst_reader::layouts_of_one_file() {
    const QString name = stored("a\n2.0 0.5 7.0\n0.25 0.5 -0.5\n0.75 1.0 -1.0\n1.0 2.0 -2.0\n");
    const QPolygonF normal = {{2.0, 0.5}, {0.25, 0.5}, {0.75, 1.0}, {1.0, 2.0}};
    const QPolygonF symmetric = {{1.0, 2.0}, {0.75, 1.0}, {0.25, 0.5}, {0.75, -1.0}, {1.0, -2.0}};
    const QPolygonF columns = {{1.0, -2.0}, {0.75, -1.0}, {0.25, -0.5}, {2.0, 7.0},
                               {2.0, 0.5},  {0.25, 0.5},  {0.75, 1.0},  {1.0, 2.0}};
    QCOMPARE(first_difference(Read_Normal(name), normal), QString());
    QCOMPARE(first_difference(Read_Symetric(name), symmetric), QString());
    QCOMPARE(first_difference(Read_Eppler(name), columns), QString());
    QCOMPARE(first_difference(airfoil_Read_All(name), columns), QString());
    const QString one_row = stored("2.0 0.5 7.0\n");
    QVERIFY(Read_Symetric(one_row).isEmpty());
    QCOMPARE(first_difference(Read_Eppler(one_row), {{2.0, 7.0}, {2.0, 0.5}}), QString());
}

// The same section in three layouts and with commas gives the same outline.
void tst_reader::shared_text_is_one_text() {
    const auto sample = [](const char* name) {
        return airfoil_Read(QStringLiteral(SAMPLES "/naca-0012-") + QLatin1String(name));
    };
    const QPolygonF outline = sample("outline.dat");
    QCOMPARE(outline.size(), 121);
    COMPARE_BITS(outline.first(), QPointF(1.0, 0.0));
    COMPARE_BITS(outline.last(), QPointF(1.0, 0.0));
    QCOMPARE(first_difference(sample("decimal-commas.txt"), outline), QString());
    QPolygonF half = sample("half-contour.dat");
    QCOMPARE(half.size(), 121);
    for (qsizetype i = 0; i < half.size(); ++i)
        QCOMPARE(QPointF(half[i].x(), half[i].y() + 0.0), outline[i]);
    QPolygonF columns = sample("three-columns.txt");
    QCOMPARE(columns.size(), 122);
    columns.removeAt(60);
    for (qsizetype i = 0; i < columns.size(); ++i)
        QCOMPARE(columns[columns.size() - 1 - i], outline[i]);
}

// The second pass decides: points beyond the chord affect only the first one.
void tst_reader::normalised_twice() {
    const QString name = stored("1.0 0.0\n0.5 0.25\n0.0 0.0\n1.0 -0.25\n2.0 0.0\n");
    const QPolygonF once = Normalize_airfoil2(airfoil_Read_All(name), 1);
    const QPolygonF twice = {{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}, {1.0, -0.25}};
    QCOMPARE(first_difference(once, {{1.0, 0.0}, {0.75, 0.125}, {0.5, 0.0}, {1.0, -0.125}}),
             QString());
    QCOMPARE(first_difference(airfoil_Read(name), twice), QString());
}

void tst_reader::FoilText_Read_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("every-line") << QByteArray("NACA 0012; (thick)\r\n\r\n 1,0\t0,0 \n")
                                << QStringLiteral("NACA 0012 thick\n\n1.0 0.0\n");
    QTest::newRow("line-feed-is-added") << QByteArray("1.0 0.0") << QStringLiteral("1.0 0.0\n");
    QTest::newRow("repaired-by-the-line") << QByteArray(".5 1.5\n1.5 .5 -.5\n-.5\n")
                                          << QStringLiteral("0.5 10.5\n1.5 .5 -0.5\n-0.5\n");
    QTest::newRow("umlaut") << QByteArray("R\xc3\xbc"
                                          "cken\n")
                            << QStringLiteral("R\u00FCcken\n");
}

void tst_reader::FoilText_Read() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(::FoilText_Read(stored(bytes)), text);
}

void tst_reader::plainTextRead_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QPolygonF>("points");

    QTest::newRow("empty") << QString() << QPolygonF();
    QTest::newRow("line-feeds-alone") << QStringLiteral("\n\n\n") << QPolygonF();
    // The last character of a line is not read, so it is a blank here.
    QTest::newRow("rows") << QStringLiteral("2 0 \n1 0.5 \n\n0 0 \n")
                          << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}};
    QTest::newRow("last-character-is-lost") << QStringLiteral("1 0 \n0.5 0.253\n0.00 07\n")
                                            << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}};
    QTest::newRow("title-is-a-point") << QStringLiteral("1 0 \nNACA\n0.5 0.25 \n")
                                      << QPolygonF{{1.0, 0.0}, {0.0, 0.0}, {0.5, 0.25}};
    QTest::newRow("commas") << QStringLiteral("1,0 0,0 \n0,5 0,25 \n0 0 \n")
                            << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}};
    QTest::newRow("one-blank-may-lead") << QStringLiteral(" 1 0 \n 0.5 0.25 \n 0 0 \n")
                                        << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}};
    QTest::newRow("two-blanks-lose-the-first") << QStringLiteral("1 0 \n  0.5 0.25 \n0.5 0 \n")
                                               << QPolygonF{{1.0, 0.0}, {0.0, 0.0}, {0.5, 0.0}};
    QTest::newRow("further-fields-join-the-second")
        << QStringLiteral("1 0 \n0.5 0.2 5 \n0 0 \n")
        << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}};
    QTest::newRow("bare-points") << QStringLiteral("1 0 \n.5 -.25 \n0 0 \n")
                                 << QPolygonF{{1.0, 0.0}, {0.5, -0.25}, {0.0, 0.0}};
    // 22 characters, then the rest as a line of its own.
    QTest::newRow("long-line-is-two")
        << QStringLiteral("1 0 \n0.5000000000 0.25000 00 0.125 \n0 0 \n")
        << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.125}, {0.0, 0.0}};
    QTest::newRow("line-of-22-characters") << QStringLiteral("1 0 \n0.5000000000 0.250000 \n0 0 \n")
                                           << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}};
    QTest::newRow("return-is-the-last-character") << QStringLiteral("1 0\r\n0.5 0.253\r\n0 0\r\n")
                                                  << QPolygonF{{1.0, 0.0}, {0.5, 0.25}, {0.0, 0.0}};
}

void tst_reader::plainTextRead() {
    QFETCH(QString, text);
    QFETCH(QPolygonF, points);
    const QPolygonF outline = ::plainTextRead(text);
    const QString difference = first_difference(outline, points);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

// Lines of one character give equal points, and an extent of 0 to divide by.
void tst_reader::plainTextRead_of_one_place() {
    const QPolygonF outline = ::plainTextRead(QStringLiteral("1\n2\n"));
    QCOMPARE(outline.size(), 2);
    for (const QPointF& point : outline)
        QVERIFY(qIsNaN(point.x()) && qIsNaN(point.y()));
}

void tst_reader::no_readable_file_data() {
    QTest::addColumn<QString>("name");

    QTest::newRow("missing") << m_folder.filePath(QStringLiteral("missing.dat"));
    QTest::newRow("missing-folder") << m_folder.filePath(QStringLiteral("none/missing.dat"));
    QTest::newRow("folder") << m_folder.path();
    QTest::newRow("null-name") << QString();
    QTest::newRow("device") << QStringLiteral("/dev/zero");
    const QString dangling = m_folder.filePath(QStringLiteral("dangling"));
    QFile::link(m_folder.filePath(QStringLiteral("nowhere")), dangling);
    QTest::newRow("dangling-link") << dangling;
}

// Without a message, as the caller decides what to show.
void tst_reader::no_readable_file() {
    QFETCH(QString, name);
    QVERIFY(airfoil_Read(name).isEmpty());
    QVERIFY(airfoil_Read_All(name).isEmpty());
    QVERIFY(Read_Normal(name).isEmpty());
    QVERIFY(Read_Symetric(name).isEmpty());
    QVERIFY(Read_Eppler(name).isEmpty());
    QVERIFY(::FoilText_Read(name).isEmpty());
}

void tst_reader::fifo_is_not_waited_for() {
    const QString name = m_folder.filePath(QStringLiteral("fifo"));
    QCOMPARE(::mkfifo(QFile::encodeName(name).constData(), 0600), 0);
    QVERIFY(airfoil_Read(name).isEmpty());
    QVERIFY(::FoilText_Read(name).isEmpty());
}

void tst_reader::calls_keep_no_state() {
    const QString half = stored(awkward_table("half-contour").bytes);
    const QString columns = stored(awkward_table("three-columns").bytes);
    const QPolygonF first = airfoil_Read(half);
    QVERIFY(airfoil_Read(stored(awkward_table("integers").bytes)).isEmpty());
    QCOMPARE(airfoil_Read(columns).size(), 6);
    QCOMPARE(first_difference(airfoil_Read(half), first), QString());
}

AEROLITH_GUILESS_TEST_MAIN(tst_reader)
#include "tst_reader.moc"
