// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/textwidth_p.h"

#include <QStringList>

namespace drawings {

namespace {

// Advance widths of the characters from the blank on, in thousandths of the em.
constexpr int widths[] = {
    318, 401, 460, 838, 636, 950, 780, 275, 390, 390, 500, 838, 318, 361,  318, 337, 636, 636, 636,
    636, 636, 636, 636, 636, 636, 636, 337, 337, 838, 838, 838, 531, 1000, 684, 686, 698, 770, 632,
    575, 775, 752, 295, 295, 656, 557, 863, 748, 787, 603, 787, 695, 635,  611, 732, 684, 989, 685,
    611, 685, 390, 337, 390, 838, 500, 500, 613, 635, 550, 635, 615, 352,  635, 634, 278, 278, 579,
    278, 974, 634, 612, 635, 635, 411, 521, 392, 634, 592, 818, 592, 592,  525, 636, 337, 636, 838};
constexpr int alphabet_width = 1450; // of the characters below U+0700
constexpr int symbol_width = 1750;
constexpr double capital_height = 729.0;
constexpr double ascent = 1.4; // of a capital letter
constexpr double descent = 0.35;

int width_of(uint character) {
    if (character >= 0x20 && character < 0x7f)
        return widths[character - 0x20];
    return character < 0x700 ? alphabet_width : symbol_width;
}

QString joined(const QList<uint>& characters, qsizetype front, qsizetype back) {
    const auto text = [&characters](qsizetype from, qsizetype count) {
        QString part;
        for (qsizetype i = from; i < from + count; ++i)
            part += QChar::fromUcs4(characters[i]);
        return part;
    };
    return text(0, front) + QChar(u'…') + text(characters.size() - back, back);
}

} // namespace

double width_of(const QString& text, double height) {
    double width = 0.0;
    const QList<uint> characters = printable(text).toUcs4();
    for (const uint character : characters)
        width += width_of(character);
    return width / capital_height * height;
}

QRectF room_of(const Text& text) {
    return QRectF(text.at.x(), text.at.y() - descent * text.height,
                  width_of(text.text, text.height), (ascent + descent) * text.height);
}

QString shortened(const QString& text, double height, double width) {
    if (width_of(text, height) <= width)
        return text;
    const QList<uint> characters = printable(text).toUcs4();
    QString longest = QString(QChar(u'…'));
    // Both ends grow alternately.
    for (qsizetype kept = 1; kept < characters.size(); ++kept) {
        const QString longer = joined(characters, kept - kept / 2, kept / 2);
        if (width_of(longer, height) > width)
            break;
        longest = longer;
    }
    return longest;
}

QStringList lines_of(const QString& text, double height, double width) {
    QStringList lines;
    const QStringList words = text.split(u' ');
    for (const QString& word : words) {
        const QString longer = lines.isEmpty() ? word : lines.last() + u' ' + word;
        if (!lines.isEmpty() && width_of(longer, height) <= width)
            lines.last() = longer;
        else
            lines << shortened(word, height, width);
    }
    return lines;
}

} // namespace drawings
