// SPDX-FileCopyrightText: Aerolith developers
// The numeric lines of a coordinate table: their characters, fields and numbers.
#include "airfoil/numericrows_p.h"

#include "airfoil/airfoil.h"

#include <QByteArray>
#include <QStringDecoder>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <utility>

namespace {

using RowTaker = std::function<void(NumericRow)>;

bool is_field(char c) {
    return (c >= '0' && c <= '9') || c == '.' || c == '-';
}

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

double parsed(const char* begin, const char* end, bool* ok) {
    double value = 0.0;
    const std::from_chars_result result = std::from_chars(begin, end, value);
    *ok = result.ec == std::errc() && result.ptr == end;
    return *ok ? value : 0.0;
}

float in_single_precision(double value) {
    constexpr double largest = double(std::numeric_limits<float>::max());
    return value > largest || value < -largest ? 0.0F : float(value);
}

// Reads a line that holds nothing but plain fields, blanks and a carriage return at its end, and
// moves @p next past it. For any other line, and where a field has to be repaired before it is a
// number, returns false and leaves @p next.
bool read_plain_line(const char*& next, const char* end, const RowTaker& take) {
    const char* c = next;
    NumericRow numbers = {};
    std::size_t fields = 0;
    for (;;) {
        while (c != end && is_blank(*c))
            ++c;
        const char* const begin = c;
        while (c != end && is_field(*c))
            ++c;
        if (c == begin)
            break;
        if (fields < numbers.size()) {
            bool ok = false;
            numbers[fields] = in_single_precision(parsed(begin, c, &ok));
            if (!ok)
                return false;
        }
        ++fields;
    }
    if (c != end && *c == '\r')
        ++c;
    if (c != end && *c != '\n')
        return false;
    if (fields > 0)
        take(numbers);
    next = c == end ? end : c + 1;
    return true;
}

// Returns the line that begins at @p next and moves @p next past it.
QString take_line(const char*& next, const char* end) {
    const char* const begin = next;
    const char* const feed = std::find(begin, end, '\n');
    next = feed == end ? end : feed + 1;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString line = decoder.decode(QByteArrayView(begin, feed));
    return line.remove(QLatin1Char('\r'));
}

void read_line(const QString& text, const RowTaker& take) {
    const QString line = clean(text);
    if (!is_numeric(line))
        return;
    QString S[3];
    FindNumericSubStrings(line, S);
    NumericRow numbers = {};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = field_number(Repair_NumString(S[i]));
    take(numbers);
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
    const QByteArray characters = field.toLatin1();
    bool ok = false;
    return parsed(characters.begin(), characters.end(), &ok);
}

float field_number(const QString& field) {
    return in_single_precision(field_value(field));
}

QByteArray table_text(QByteArray bytes) {
    const auto encoding = QStringConverter::encodingForData(bytes);
    if (encoding || !bytes.isValidUtf8()) {
        QStringDecoder decoder(encoding.value_or(QStringConverter::Utf8));
        bytes = QString(decoder.decode(bytes)).toUtf8();
    }
    // A last line of carriage returns alone is not a line.
    while (bytes.endsWith('\r'))
        bytes.chop(1);
    return bytes;
}

void for_each_line(const QByteArray& text, const std::function<bool(const QString&)>& take) {
    const char* next = text.begin();
    while (next != text.end() && take(take_line(next, text.end()))) {
    }
}

void for_each_numeric_row(const QByteArray& text, const RowTaker& take) {
    const char* next = text.begin();
    while (next != text.end()) {
        if (!read_plain_line(next, text.end(), take))
            read_line(take_line(next, text.end()), take);
    }
}
