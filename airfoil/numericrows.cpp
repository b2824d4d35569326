// SPDX-FileCopyrightText: Aerolith developers
// The numeric lines of a coordinate table: their characters, fields and numbers.
#include "airfoil/numericrows.h"

#include "airfoil/airfoil.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QTextStream>

#include <algorithm>
#include <limits>

namespace {

using Row = std::function<void(NumericRow)>;

// The largest integer up to which every integer is a double.
constexpr quint64 largest_mantissa = quint64(1) << 53;

constexpr double powers_of_ten[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                                    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};
constexpr int most_digits = 18;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_point(char c) {
    return c == '.' || c == ',';
}

bool is_field(char c) {
    return is_digit(c) || is_point(c) || c == '-';
}

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

float repaired_number(const QString& field) {
    return field_number(Repair_NumString(field));
}

// The number of a field of digits, points and minus signs. Mantissa and power of ten are
// exact in the usual case, so one division rounds correctly, as the toolkit does.
float plain_number(const char* begin, const char* end) {
    const bool negative = *begin == '-';
    quint64 mantissa = 0;
    int digits = 0;
    int decimals = -1;
    for (const char* c = begin + (negative ? 1 : 0); c != end; ++c) {
        if (is_digit(*c) && digits < most_digits) {
            mantissa = 10 * mantissa + quint64(*c - '0');
            ++digits;
            decimals += decimals >= 0 ? 1 : 0;
        } else if (is_point(*c) && decimals < 0) {
            decimals = 0;
        } else {
            digits = 0;
            break;
        }
    }
    if (digits == 0 || mantissa > largest_mantissa) {
        QString field = QString::fromLatin1(begin, end - begin);
        return repaired_number(field.replace(QLatin1Char(','), QLatin1Char('.')));
    }
    const double value = double(mantissa) / powers_of_ten[decimals > 0 ? decimals : 0];
    return float(negative ? -value : value);
}

// Reads a line that holds nothing but plain fields, blanks and a carriage return at its
// end. Moves @p next past the line; false, and @p next stays, for any other line.
bool read_plain_line(const char*& next, const char* end, const Row& row) {
    const char* c = next;
    NumericRow numbers = {};
    std::size_t fields = 0;
    for (;;) {
        while (c != end && is_blank(*c))
            ++c;
        const char* begin = c;
        while (c != end && is_field(*c))
            ++c;
        if (c == begin)
            break;
        if (fields < numbers.size())
            numbers[fields] = plain_number(begin, c);
        ++fields;
    }
    if (c != end && *c == '\r')
        ++c;
    if (c != end && *c != '\n')
        return false;
    if (fields > 0)
        row(numbers);
    next = c == end ? end : c + 1;
    return true;
}

void read_text_line(const QString& text, const Row& row) {
    const QString line = clean(text);
    if (!is_numeric(line))
        return;
    QString S[3];
    FindNumericSubStrings(line, S);
    row({repaired_number(S[0]), repaired_number(S[1]), repaired_number(S[2])});
}

// Decodes a line together with its line feed: a sequence that the line feed cuts off
// becomes a replacement character, one that the end of the file cuts off vanishes.
QString decoded(QByteArrayView line, bool is_first) {
    QStringDecoder decoder(QStringDecoder::Utf8, is_first
                                                     ? QStringDecoder::Flag::Default
                                                     : QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder.decode(line);
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.remove(QLatin1Char('\r'));
}

// The line that begins at @p next, which moves past it.
QString take_line(const QByteArray& bytes, const char*& next) {
    const char* const line = next;
    const char* const end = bytes.constData() + bytes.size();
    const char* const feed = std::find(line, end, '\n');
    next = feed == end ? end : feed + 1;
    return decoded(QByteArrayView(line, next), line == bytes.constData());
}

void read_bytes(const QByteArray& bytes, const Row& row) {
    const char* const end = bytes.constData() + bytes.size();
    const char* next = bytes.constData();
    while (next != end) {
        if (!read_plain_line(next, end, row))
            read_text_line(take_line(bytes, next), row);
    }
}

// Text of two or four bytes a character, told by its byte-order mark.
bool is_wide_text(const QByteArray& bytes) {
    const auto encoding = QStringConverter::encodingForData(bytes);
    return encoding && *encoding != QStringConverter::Utf8;
}

bool is_beyond_ascii(char c) {
    return uchar(c) >= 0x80;
}

// Whether it shows that the toolkit's stream decodes in pieces: a damaged character that
// is cut reads otherwise than a whole one, and a last line of which nothing is left
// counts or not.
bool is_read_in_pieces(const QByteArray& bytes) {
    constexpr qsizetype piece = 16384;
    constexpr qsizetype longest_beginning = 3;
    for (qsizetype end = piece; end <= bytes.size(); end += piece) {
        const auto tail = QByteArrayView(bytes).sliced(end - longest_beginning, longest_beginning);
        if (std::any_of(tail.begin(), tail.end(), is_beyond_ascii))
            return true;
    }
    return bytes.endsWith('\r') || (!bytes.isEmpty() && is_beyond_ascii(bytes.back()));
}

// Takes the whole file where its lines can be told from its bytes. The toolkit's stream,
// which is for the others, lets its buffer grow by little steps in a long line.
bool read_all(QFile& file, QByteArray* bytes) {
    file.setTextModeEnabled(false);
    *bytes = file.readAll();
    if (!is_wide_text(*bytes) && !is_read_in_pieces(*bytes))
        return true;
    bytes->clear();
    file.seek(0);
    file.setTextModeEnabled(true);
    return false;
}

bool open_table(QFile& file) {
    return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly | QIODevice::Text);
}

// A field of millions of digits as one of the same value: the toolkit takes seconds for them.
// Empty for one that is no number or beyond the range. Decimals that far behind the point
// tell only whether a number is above the middle of its neighbours.
QString shortened(const QString& field) {
    constexpr qsizetype long_field = 4096;
    constexpr qsizetype most_digits_before_point = 400;
    constexpr qsizetype telling_decimals = 1200;
    if (field.size() <= long_field)
        return field;
    const QStringView text(field);
    const qsizetype begin = text.startsWith(QLatin1Char('-')) ? 1 : 0;
    const qsizetype found = text.indexOf(QLatin1Char('.'));
    const qsizetype point = found < 0 ? text.size() : found;
    const auto digit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    const QStringView whole = text.mid(begin, point - begin);
    const QStringView decimals = text.mid(point + 1);
    const auto nonzero = [](QChar c) { return c != QLatin1Char('0'); };
    const auto first = std::find_if(whole.begin(), whole.end(), nonzero);
    if (!std::all_of(whole.begin(), whole.end(), digit) ||
        !std::all_of(decimals.begin(), decimals.end(), digit) ||
        whole.end() - first > most_digits_before_point)
        return QString();
    const QStringView rest = decimals.mid(telling_decimals);
    QString number = begin == 1 ? QStringLiteral("-0") : QStringLiteral("0");
    number += whole.right(whole.end() - first);
    number += QLatin1Char('.');
    number += decimals.left(telling_decimals);
    if (std::any_of(rest.begin(), rest.end(), nonzero))
        number += QLatin1Char('1');
    return number;
}

} // namespace

QString clean(QString s) {
    static const QString removed =
        QStringLiteral("?!'`_@#$%^&*(){}[]|;:/><~=+") + QChar(0x00AB) + QChar(0x00BB);
    s.replace(QLatin1Char('\t'), QLatin1Char(' '));
    s.replace(QLatin1Char(','), QLatin1Char('.'));
    s.removeIf([](QChar c) { return removed.contains(c); });
    return s.trimmed();
}

int isLatString(QString s) {
    for (const QChar c : std::as_const(s)) {
        if (c.isLetter())
            return 1;
    }
    return 0;
}

QString Repair_NumString(QString s) {
    if (s.startsWith(QLatin1Char('.')))
        return s.replace(QLatin1Char('.'), QLatin1String("0."));
    return s.replace(QLatin1String("-."), QLatin1String("-0."));
}

void FindNumericSubStrings(QString line, QString* S) {
    for (int i = 0; i < 3; ++i)
        S[i] = QString::fromLatin1("");
    int index = 0;
    bool separated = false;
    for (const QChar c : std::as_const(line)) {
        if (c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char('-')) {
            S[index] += c;
            separated = false;
        } else if (!separated) {
            if (++index == 3)
                return;
            separated = true;
        }
    }
}

bool is_numeric(const QString& cleaned) {
    return !cleaned.isEmpty() && isLatString(cleaned) == 0;
}

double field_value(const QString& field) {
    bool ok = false;
    const double value = shortened(field).toDouble(&ok);
    return ok ? value : 0.0;
}

float field_number(const QString& field) {
    const double value = field_value(field);
    constexpr double largest = double(std::numeric_limits<float>::max());
    return value > largest || value < -largest ? 0.0F : float(value);
}

void for_each_line(const QString& fileName, const std::function<bool(const QString&)>& take) {
    QFile file(fileName);
    if (!open_table(file))
        return;
    QByteArray bytes;
    if (read_all(file, &bytes)) {
        const char* const end = bytes.constData() + bytes.size();
        const char* next = bytes.constData();
        while (next != end && take(take_line(bytes, next))) {
        }
        return;
    }
    QTextStream stream(&file);
    while (!stream.atEnd() && take(stream.readLine())) {
    }
}

void for_each_numeric_row(const QString& fileName, const Row& row) {
    QFile file(fileName);
    if (!open_table(file))
        return;
    QByteArray bytes;
    if (read_all(file, &bytes)) {
        read_bytes(bytes, row);
        return;
    }
    QTextStream stream(&file);
    while (!stream.atEnd())
        read_text_line(stream.readLine(), row);
}
