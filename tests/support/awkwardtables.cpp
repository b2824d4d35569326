// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables that may break a reader.
#include "support/awkwardtables.h"

#include "support/tablegenerator.h"

#include <QFile>
#include <QStringConverter>

namespace {

constexpr int limit = 1000;  // rows in the fixed arrays of old programs
constexpr int many = 100000; // rows of a table that no designer writes

// Keeps NUL bytes, which end a plain literal.
template<std::size_t N>
QByteArray bytes(const char (&literal)[N]) {
    return QByteArray(literal, qsizetype(N) - 1);
}

const QByteArray five_rows = "1.0 0.0\n0.5 0.1\n0.0 0.0\n0.5 -0.1\n1.0 0.0\n";
const QByteArray half_rows = "0.0 0.0\n0.2 0.05\n0.6 0.04\n1.0 0.0\n";

QByteArray with_ends(QByteArray table, const QByteArray& end) {
    return table.replace("\n", end);
}

QByteArray encoded(QStringConverter::Encoding encoding, const QByteArray& table) {
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder.encode(QString::fromUtf8(table));
}

QByteArray rising_rows(int count, const QByteArray& columns) {
    QByteArray table;
    for (int i = 0; i < count; ++i)
        table += QByteArray::number(double(i) / count, 'f', 6) + columns + '\n';
    return table;
}

// A number of this many digits before the decimal point.
QByteArray whole(int digits) {
    return QByteArray(digits, '9') + ".0";
}

QByteArray long_fraction(const QByteArray& start, int digits) {
    return start + QByteArray(digits, '3');
}

QList<AwkwardTable> line_ends_and_encodings() {
    return {
        {"no-final-newline", five_rows.chopped(1), 5},
        {"crlf", with_ends("SECTION\n" + five_rows, "\r\n"), 5},
        {"mixed-line-ends", "1.0 0.0\r\n0.5 0.1\n0.0 0.0\r\r\n0.5 -0.1\n\r1.0 0.0\n", 5},
        {"lone-returns", with_ends(five_rows, "\r"), 0},
        {"lone-returns-and-a-title", with_ends("SECTION\n" + five_rows, "\r"), 0},
        {"lone-return-after-one-row", "1.0 0.0\r", 1},
        {"byte-order-mark", "\xef\xbb\xbf" + five_rows, 5},
        {"byte-order-mark-twice", "\xef\xbb\xbf\xef\xbb\xbf" + five_rows, 5},
        {"utf-16-little", encoded(QStringConverter::Utf16LE, five_rows), 5},
        {"utf-16-big", encoded(QStringConverter::Utf16BE, "\xc3\x84\n" + five_rows), 5},
        {"utf-16-crlf", encoded(QStringConverter::Utf16LE, with_ends(five_rows, "\r\n")), 5},
        // Each line but the first starts with a NUL, and one of a NUL alone follows.
        {"utf-16-without-mark", encoded(QStringConverter::Utf16LE, five_rows).mid(2), 6},
        {"utf-32-little", encoded(QStringConverter::Utf32LE, five_rows), 5},
        {"utf-32-big", encoded(QStringConverter::Utf32BE, five_rows), 5},
        {"latin-1-bytes",
         "Fl\xfcgel\n1.0\xb7"
         "0.0\n0.5 \xb0 0.1\n0.0 0.0 \xe9\n\xe9 0.5 0.1\n",
         4},
        {"end-of-file-character", five_rows + "\x1a", 6},
        {"nul-between-fields",
         bytes("1.0\0"
               "0.0\n0.5\0\0"
               "0.1\n0.0\0"
               "0.0\n"),
         3},
        {"nul-bytes-alone", QByteArray(40, '\0'), 0},
        {"noise", generated_table(TableKind::Noise, 4, 64), 0},
    };
}

QList<AwkwardTable> rows_and_fields() {
    return {
        {"tabs", QByteArray("\t1.0\t\t0.0\n0.5 \t 0.1\t\n0.0\t0.0\n"), 3},
        {"decimal-commas", "1,0000;  0,0012\n0,5 ;0,1\n0,0;\t0,0\n", 3},
        {"semicolon-alone-between-fields", "1,0000; 0,0012\n0,5;0,1\n0,0;\t0,0\n", 3},
        {"comma-separated", "1.0,0.0\n0.5,0.1\n0.0,0.0\n", 6},
        {"brackets", "[1.0 0.0]\n[0.5 {0.1}]\n<0.0> (0.0)\n", 3},
        {"guillemets",
         "\xc2\xab"
         "1.0\xc2\xbb \xc2\xab"
         "0.0\xc2\xbb\n0.5 0.1\n0.0 0.0\n",
         3},
        {"quotes", "\"1.0 0.0\"\n\"0.5 0.1\"\n0.0 0.0\n", 3},
        {"comment-with-number", "# 0012\n1.0 0.0\n0.5 0.1\n0.0 0.0\n", 4},
        {"comment-with-letter", "# NACA 0012\n1.0 0.0\n0.5 0.1\n0.0 0.0\n", 3},
        {"ruled-line", "1.0 0.0\n-------\n0.0 0.0\n0.5 0.1\n", 4},
        {"title-with-number", "NACA 0012 12.0 0.3\n" + five_rows, 5},
        {"letters-in-rows", "1.0 0.0\n0.5 0.1 TE\nx y\n0.0 0.0\n0.5 -0.1\n", 3},
        {"greek-title", "\xce\xb1 = 0.5\n" + five_rows, 5},
        {"letters-beyond-16-bits", "\xf0\x9d\x90\x80 1.0 0.0\n0.5 0.1\n0.0 0.0\n", 3},
        {"exponents", "1.0 0.0\n5.0e-1 1.0e-1\n0.25 0.1\n1.0E-3 0.0\n0.0 0.0\n", 3},
        {"not-a-number-names", "1.0 0.0\nnan 0.1\ninf 0.1\n0.5 0.1\n0.0 0.0\n", 3},
        {"plus-signs", "+1.0 +0.0\n+0.5 +0.1\n0.0 -0.0\n", 3},
        {"four-fields", "1.0 0.0 0.5 0.5\n0.5 0.1 0.5 0.5\n0.0 0.0 0.5 0.5\n", 0},
        {"four-fields-of-three-points", "0.0 0.0 0.0 7\n0.5 0.1 -0.1 7\n1.0 0.0 0.0 7\n", 6},
        {"four-fields-of-two-points", "1.0 0.0 3 7\n0.5 0.1 3 7\n0.0 0.0 3 7\n", 3},
        {"bare-points", "1. .0\n.5 -.5\n-.25 .75\n.0 .0\n", 4},
        {"broken-numbers", "1.0 0.0\n--5 1.2.3\n0.5 0.1\n5- 1-2\n- .\n-. ..\n", 6},
        {"one-field", "1.0\n0.5\n0.25\n", 3},
        {"one-field-of-two-points", "1.2.3\n0.5.1\n0.2.5\n", 3},
        {"spaces-of-other-scripts",
         "\xc2\xa0"
         "1.0\xc2\xa0"
         "0.0\n0.5\xe3\x80\x80"
         "0.1\n0.0\xe2\x80\x83"
         "0.0\xe2\x80\xa8\n",
         3},
        {"form-feeds", "\f1.0 0.0\n0.5\v0.1\n\f\n0.0\f0.0\n", 3},
        {"minus-of-typesetters",
         "1.0 0.0\n0.5 \xe2\x88\x92"
         "0.1\n0.0 0.0\n",
         3},
        {"digits-of-other-scripts", "1.0 0.0\n\xd9\xa0.\xd9\xa5 0.1\n1\xd9\xa3.5 0.1\n0.5 0.1\n",
         4},
    };
}

QList<AwkwardTable> numbers() {
    const QByteArray rest = "\n0.5 0.1\n0.0 0.0\n";
    return {
        {"whole-of-39-digits", whole(39) + " 0.1" + rest, 3},
        {"whole-of-60-digits", "1.0 " + whole(60) + rest, 3},
        {"whole-of-300-digits", whole(300) + ' ' + whole(300) + rest, 3},
        {"whole-of-401-digits",
         '1' + QByteArray(400, '0') + ".0 -1" + QByteArray(400, '0') + ".0" + rest, 3},
        {"fraction-of-300-digits",
         long_fraction("0.", 300) + ' ' + long_fraction("-0.", 300) + rest, 3},
        {"fraction-of-2000-digits", long_fraction("1.", 2000) + " 0.1" + rest, 3},
        {"greatest-single", "340282346638528859811704183484516925440.0 0.1" + rest, 3},
        {"beyond-greatest-single", "340282346638528900000000000000000000000.0 0.1" + rest, 3},
        {"least-single", "1.0 0." + QByteArray(44, '0') + "14" + rest, 3},
        {"below-least-single", "1.0 -0." + QByteArray(45, '0') + "1" + rest, 3},
        {"below-least-double", "1.0 -0." + QByteArray(400, '0') + "1" + rest, 3},
        {"sixteen-decimals",
         "1.0000000000000000 0.0\n0.3333333333333333 0.1234567890123456\n0.0 0.0\n", 3},
        // Close to the midpoint of two single-precision numbers: the last bit of the double
        // decides.
        {"middles-of-singles",
         "0.757981210947036792 -0.613587290048599304\n0.142895244061946856 "
         "0.155786506831645940\n0.59991344809532156 -0.99795833230018620\n",
         3},
        {"nineteen-decimals-and-more",
         "1.0 0.0000000000000000012\n0.5 -0.00000000000000000003\n0.25 0.000000000000000000004\n",
         3},
        {"whole-of-twenty-digits",
         "18446744073709551617.0 0.1\n18446744073709551616.0 0.2\n1.0 0.0\n", 3},
        {"negative-zero", "1.0 -0.0\n0.5 0.1\n-0.0 -0.0\n", 3},
        {"zero-width", "0.5 0.0\n0.5 0.1\n0.5 0.2\n", 3},
        {"all-zero", "0.0 0.0\n0.0 0.0\n0.0 0.0\n", 3},
        {"nose-first", "0.0 0.0\n0.5 0.1\n1.0 0.0\n0.5 -0.1\n", 4},
        {"percent", "100.0 0.0\n50.0 10.0\n0.0 0.0\n50.0 -10.0\n100.0 0.0\n", 5},
        {"beyond-ten-thousand", "20000.0 0.0\n15000.0 10.0\n10001.0 0.0\n", 3},
    };
}

QList<AwkwardTable> layouts() {
    const QByteArray counts = "61. 61.\n";
    return {
        {"empty", "", 0},
        {"title-alone", "NACA 0012\n", 0},
        {"blank-lines-alone", "\n\n \t \n\r\n", 0},
        {"one-row", "1.0 0.0\n", 1},
        {"two-rows", "1.0 0.0\n0.5 0.1\n", 2},
        {"two-rows-and-an-empty-line", "1.0 0.0\n0.5 0.1\n\n", 0},
        {"two-rows-of-a-half-contour", "\n\n\n\n61. 61.\n0.0 0.0\n", 2},
        {"integers", "1 0\n0 1\n0 0\n", 0},
        {"integers-in-the-third-line", "1.0 0.0\n0.5 0.1\n1 0\n0.5 -0.1\n", 0},
        {"integers-after-the-third-line", "1.0 0.0\n0.5 0.1\n0.0 0.0\n1 0\n", 4},
        // One separator in the third line is the code of the half contour.
        {"one-separator-in-the-third-line", "1.0 0.0\n0.5 0.1\n0.0 0\n0.5 -0.1\n", 5},
        {"point-at-the-end-of-the-third-line", "1. 0.\n0.5 0.1\n0. 0.\n0.5 -0.1\n", 5},
        {"two-separators-and-a-point-at-the-end", "1. 0.0\n0.5 0.1\n0.0 0.0.\n0.5 -0.1\n", 4},
        {"half-contour", "SECTION\n\n\n" + counts + half_rows, 7},
        {"half-contour-of-negative-nose",
         "SECTION\n\n\n" + counts + "-0.001 0.0\n0.2 0.05\n1.0 0.0\n", 5},
        {"half-contour-nose-in-fifth-line", "\n\n\n" + counts + half_rows, 7},
        {"half-contour-nose-in-fourth-line", "\n\n" + counts + half_rows, 5},
        {"half-contour-without-blank-lines", "SECTION\n" + counts + half_rows, 5},
        {"half-contour-header-below-one", "SECTION\n\n\n0.9 0.9\n" + half_rows, 5},
        {"half-contour-header-of-one", "SECTION\n\n\n1.0 1.0\n" + half_rows, 7},
        {"half-contour-nose-right-of-zero",
         "SECTION\n\n\n" + counts + "0.001 0.0\n0.2 0.05\n1.0 0.0\n", 4},
        {"half-contour-third-row-at-zero",
         "SECTION\n\n\n" + counts + "0.0 0.0\n0.0 0.05\n1.0 0.0\n", 4},
        {"three-columns", "0.0 0.0 0.0\n0.5 0.1 -0.1\n1.0 0.0 0.0\n", 6},
        {"three-columns-with-gaps", "0.0 0.0 0.0\n0.5 0.1\n0.7 0.08 -0.08\n\n1.0\n", 8},
        {"half-contour-of-1001-rows", "SECTION\n\n\n" + counts + rising_rows(limit, " 0.05"),
         2 * limit - 1},
        {"three-columns-of-1001-rows", rising_rows(limit + 1, " 0.05 -0.05"), 2 * limit + 2},
        {"line-of-200000-characters", "1.0 0.0\n0.5" + QByteArray(200000, ' ') + "0.1\n0.0 0.0\n",
         3},
        {"title-of-200000-characters", QByteArray(200000, 'x') + '\n' + five_rows, 5},
        {"line-of-100000-fields",
         "1.0 0.0\n0.5 0.1" + QByteArray(" 7").repeated(100000) + "\n0.0 0.0\n", 3},
    };
}

} // namespace

QList<AwkwardTable> endless_tables() {
    const QByteArray header = "SECTION\n\n\n61. 61.\n";
    return {
        {"outline", rising_rows(many, " 0.05"), many},
        {"half-contour", header + rising_rows(many - 1, " 0.05"), 2 * many - 3},
        {"three-columns", rising_rows(many, " 0.05 -0.05"), 2 * many},
    };
}

const QList<AwkwardTable>& awkward_tables() {
    static const QList<AwkwardTable> tables =
        line_ends_and_encodings() + rows_and_fields() + numbers() + layouts();
    return tables;
}

AwkwardTable awkward_table(const QByteArray& name) {
    for (const AwkwardTable& table : awkward_tables()) {
        if (name == table.name)
            return table;
    }
    return {"", {}, 0};
}

bool write_awkward_tables(const QString& folder) {
    for (const AwkwardTable& table : awkward_tables()) {
        QFile file(folder + QLatin1Char('/') + QLatin1String(table.name) + QStringLiteral(".dat"));
        if (!file.open(QIODevice::WriteOnly) || file.write(table.bytes) != table.bytes.size())
            return false;
    }
    return true;
}
