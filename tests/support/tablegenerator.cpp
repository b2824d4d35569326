// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables from a seed.
#include "support/tablegenerator.h"

#include <QRandomGenerator>
#include <QString>
#include <QStringConverter>

#include <cmath>
#include <iterator>

namespace {

// What may occur between two line ends, valid and damaged.
const QByteArray pieces[] = {
    "0.5",
    "1",
    "1.0",
    "-0.25",
    ".5",
    "-.5",
    "--5",
    "1.2.3",
    "5-",
    "1-2",
    "-",
    ".",
    "..",
    "-.-.",
    "0.3333333333333333",
    "12345678901234567890123456789012345678901234567890",
    "0,25",
    ",5",
    "-,5",
    "1.0e-3",
    "x",
    "NACA",
    "nan",
    "inf",
    "0x1",
    "1.0000;",
    "(0.1)",
    "[0.2]",
    "<0.3>",
    "~",
    "+0.5",
    " ",
    "  ",
    "\t",
    "\t\t",
    " \t ",
    "\v",
    "\f",
    "\"",
    "\"0.5",
    "\\",
    "\r",
    "\r\r",
    "\x1a",
    "\x7f",
    "?!'`_@#$%^&*(){}[]|;:/><~=+",
    "\xc2\xab",
    "\xc2\xbb",
    "\xc2\xab"
    "0.5"
    "\xc2\xbb",
    "\xc2\xa0",
    "\xc2\x85",
    "\xe2\x80\x83",
    "\xe2\x80\xa8",
    "\xe3\x80\x80",
    "\xc3\xa9",
    "\xce\xb1",
    "\xd0\x96",
    "\xe2\x88\x92"
    "0.5",
    "\xe2\x82\xac",
    "\xf0\x9f\x9b\xa9",
    "\xf0\x9d\x90\x80",
    "\xd9\xa3",
    "1\xd9\xa3.5",
    "\xef\xbc\x95",
    "\xc2\xb2",
    "\xe2\x85\xa7",
    "\xef\xbb\xbf",
    "\xef\xbf\xbd",
    "\xe9",
    "\xb7",
    "\xc2",
    "\xe2\x82",
    "\xf0\x9f",
    "\xc0\xaf",
    "\xed\xa0\x80",
    "\xff",
    "\xfe",
    "\xf8\x88\x80\x80\x80",
    "\xf4\x90\x80\x80",
    "\x80",
};

int pick(QRandomGenerator& random, int bound) {
    return int(random.bounded(bound));
}

QByteArray number(QRandomGenerator& random, double value) {
    QByteArray text = QByteArray::number(value, 'f', 3 + pick(random, 6));
    if (pick(random, 8) == 0)
        text.replace("0.", ".");
    return text;
}

QByteArray separator(QRandomGenerator& random, bool decorated) {
    static const QByteArray plain[] = {" ", "  ", "   ", "\t"};
    static const QByteArray odd[] = {";  ", " \t", " ; ", ") (", "\" \"", "  |  "};
    if (decorated && pick(random, 4) == 0)
        return odd[pick(random, int(std::size(odd)))];
    return plain[pick(random, int(std::size(plain)))];
}

QByteArray line_end(QRandomGenerator& random, bool decorated) {
    if (decorated && pick(random, 3) == 0)
        return pick(random, 6) == 0 ? "\r\r\n" : "\r\n";
    return "\n";
}

QByteArray valid_row(QRandomGenerator& random, int layout, double t, bool decorated) {
    const double x = layout == 2 ? 0.5 * (1.0 + std::cos(2.0 * M_PI * t)) : t;
    const double y = (random.generateDouble() - 0.5) * 0.3;
    QByteArray row = decorated && pick(random, 4) == 0 ? "  " : "";
    row += number(random, x) + separator(random, decorated) + number(random, y);
    if (layout == 3)
        row += separator(random, decorated) + number(random, -y);
    if (decorated && pick(random, 10) == 0)
        row.replace('.', ',');
    return row;
}

QByteArray laid_out(QRandomGenerator& random, int rows, bool decorated) {
    const int layout = 1 + pick(random, 3);
    QByteArray table =
        "SECTION " + QByteArray::number(pick(random, 100)) + line_end(random, decorated);
    if (layout == 1) {
        for (int i = pick(random, 5); i > 0; --i)
            table += line_end(random, decorated);
        table += "61. 61." + line_end(random, decorated);
    }
    for (int i = 0; i < rows; ++i) {
        table +=
            valid_row(random, layout, double(i) / rows, decorated) + line_end(random, decorated);
        if (decorated && pick(random, 30) == 0)
            table += line_end(random, decorated);
    }
    if (decorated && pick(random, 2) == 0)
        table.chop(1 + pick(random, 4));
    if (decorated && pick(random, 6) == 0)
        table.prepend("\xef\xbb\xbf");
    return table;
}

QByteArray dirty(QRandomGenerator& random, int rows) {
    QByteArray table;
    for (int i = 0; i < rows; ++i) {
        table += pick(random, 3) == 0
                     ? valid_row(random, 2 + pick(random, 2), double(i) / rows, true)
                     : generated_pieces(random, 8);
        if (pick(random, 12) == 0)
            table += char(0);
        table += line_end(random, true);
    }
    if (pick(random, 2) == 0)
        table.chop(1 + pick(random, 6));
    return table;
}

QByteArray noise(QRandomGenerator& random, int rows) {
    QByteArray table;
    for (int i = 0; i < rows * 16; ++i)
        table += pick(random, 20) == 0 ? '\n' : char(pick(random, 256));
    return table;
}

QByteArray wide(QRandomGenerator& random, int rows) {
    static const QStringConverter::Encoding encodings[] = {
        QStringConverter::Utf16LE, QStringConverter::Utf16BE, QStringConverter::Utf32LE,
        QStringConverter::Utf32BE};
    QByteArray table = laid_out(random, rows, true);
    if (pick(random, 2) == 0)
        table.replace('\r', "");
    QStringEncoder encoder(encodings[pick(random, int(std::size(encodings)))],
                           QStringConverter::Flag::WriteBom);
    QByteArray bytes = encoder.encode(QString::fromUtf8(table));
    if (pick(random, 4) == 0)
        bytes.chop(1 + pick(random, 3));
    return bytes;
}

} // namespace

QByteArray generated_pieces(QRandomGenerator& random, int most) {
    QByteArray line;
    for (int i = pick(random, most + 1); i > 0; --i)
        line += pieces[pick(random, int(std::size(pieces)))];
    return line;
}

QByteArray generated_table(TableKind kind, quint32 seed, int rows) {
    QRandomGenerator random(seed);
    switch (kind) {
    case TableKind::Clean:
        return laid_out(random, rows, false);
    case TableKind::Decorated:
        return laid_out(random, rows, true);
    case TableKind::Dirty:
        return dirty(random, rows);
    case TableKind::Noise:
        return noise(random, rows);
    case TableKind::Wide:
        return wide(random, rows);
    }
    return {};
}
