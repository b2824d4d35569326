// SPDX-FileCopyrightText: Aerolith developers
// First step of the reading: bytes to text.
#include "tables/text_p.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace tables {

namespace {

constexpr char dos_end_of_file = '\x1a';

// The fraction of the bytes first, first + 2, ... that are zero, at the beginning of the text.
double zeros_in_every_other_place(const QByteArray& bytes, int first) {
    const qsizetype end = std::min<qsizetype>(bytes.size(), 1024);
    int zeros = 0;
    int places = 0;
    for (qsizetype i = first; i < end; i += 2) {
        zeros += bytes[i] == '\0' ? 1 : 0;
        ++places;
    }
    return places > 0 ? double(zeros) / places : 0.0;
}

std::optional<QStringConverter::Encoding> wide_encoding(const QByteArray& bytes) {
    const auto marked = QStringConverter::encodingForData(bytes);
    if (marked && *marked != QStringConverter::Utf8)
        return marked;
    if (!bytes.contains('\0'))
        return std::nullopt;
    const double even = zeros_in_every_other_place(bytes, 0);
    const double odd = zeros_in_every_other_place(bytes, 1);
    if (odd > 0.8 && even < 0.2)
        return QStringConverter::Utf16LE;
    if (even > 0.8 && odd < 0.2)
        return QStringConverter::Utf16BE;
    return std::nullopt;
}

void make_plain(QByteArray& utf8) {
    struct Replacement {
        const char* from;
        const char* to;
    };
    constexpr std::array<Replacement, 8> replacements = {{
        {"\xEF\xBB\xBF", ""},  // byte-order mark
        {"\xC2\xA0", " "},     // no-break space
        {"\xE2\x80\x89", " "}, // thin space
        {"\xE2\x80\xAF", " "}, // narrow no-break space
        {"\xE3\x80\x80", " "}, // wide space
        {"\xE2\x88\x92", "-"}, // minus
        {"\xE2\x80\x93", "-"}, // dash
        {"\xC2\x85", "\n"},    // next line
    }};
    for (const Replacement& replacement : replacements) {
        if (utf8.contains(replacement.from[0]))
            utf8.replace(replacement.from, replacement.to);
    }
}

bool is_padding(char c) {
    return c == '\0' || c == dos_end_of_file || c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

void end_at_mark(Text& text) {
    const qsizetype mark = text.utf8.indexOf(dos_end_of_file);
    if (mark >= 0) {
        const char* const begin = text.utf8.constData();
        const char* const end = begin + text.utf8.size();
        if (!std::all_of(begin + mark, end, is_padding)) {
            const auto line = std::count(begin, begin + mark, '\n') + 1;
            text.findings.append(
                {Gravity::note, int(line),
                 QStringLiteral("end-of-file character; what follows is left out")});
        }
        text.utf8.truncate(mark);
    }
    while (text.utf8.endsWith('\0'))
        text.utf8.chop(1);
}

} // namespace

Text decoded(const QByteArray& bytes) {
    Text text;
    if (bytes.size() > most_bytes) {
        text.findings.append(
            {Gravity::error, 0,
             QStringLiteral("%1 bytes; expected at most %2").arg(bytes.size()).arg(most_bytes)});
        return text;
    }
    if (const auto encoding = wide_encoding(bytes))
        text.utf8 = QString(QStringDecoder(*encoding).decode(bytes)).toUtf8();
    else if (QByteArrayView(bytes).isValidUtf8())
        text.utf8 = bytes;
    else
        text.utf8 = QString::fromLatin1(bytes).toUtf8();
    make_plain(text.utf8);
    end_at_mark(text);
    return text;
}

QByteArrayView take_line(QByteArrayView& rest) {
    const char* const begin = rest.data();
    const char* const end = begin + rest.size();
    const char* const stop =
        std::find_if(begin, end, [](char c) { return c == '\n' || c == '\r'; });
    const char* next = stop;
    if (next != end && *next++ == '\r' && next != end && *next == '\n')
        ++next;
    rest = QByteArrayView(next, end);
    return QByteArrayView(begin, stop);
}

QString shown(QByteArrayView line) {
    QString text = QString::fromUtf8(line.first(std::min<qsizetype>(line.size(), 800)));
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char(' ');
    }
    return text.trimmed().left(200);
}

} // namespace tables
