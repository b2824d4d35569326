// SPDX-FileCopyrightText: Aerolith developers
// The fields of a line: numbers, places without a number, damaged numbers, words.
#include "tables/fields_p.h"

#include "tables/text_p.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace tables {

namespace {

constexpr qsizetype longest_field = 400;
// No table has larger numbers, and squares and sums of smaller ones stay finite.
constexpr double largest_number = 1e12;
constexpr double no_number = std::numeric_limits<double>::quiet_NaN();

enum class FieldKind { numbers, damaged, word };

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

class CharacterSet {
public:
    constexpr explicit CharacterSet(const char* characters) {
        for (; *characters != '\0'; ++characters)
            is_member[static_cast<unsigned char>(*characters)] = true;
    }
    bool has(char c) const { return is_member[static_cast<unsigned char>(c)]; }
    bool has_all(QByteArrayView text) const {
        return std::all_of(text.begin(), text.end(), [this](char c) { return has(c); });
    }

private:
    std::array<bool, 256> is_member = {};
};

constexpr CharacterSet blanks(" \t\f\v");
constexpr CharacterSet field_ends(" \t\f\v;,");
constexpr CharacterSet decimal_field_ends(" \t\f\v;");
constexpr CharacterSet opening_signs("([{\"'");
constexpr CharacterSet closing_signs(")]}\"'");
constexpr CharacterSet of_damaged_numbers("0123456789.,+-eEdDoOlIS?");
constexpr CharacterSet of_rows_with_points("0123456789.+-eEdD \t;");
constexpr CharacterSet of_rows_with_commas("0123456789.,+-eEdD \t;()[]{}\"%");

bool is_blank(char c) {
    return blanks.has(c);
}

bool is_sign(char c) {
    return c == '+' || c == '-';
}

bool repeats(QByteArrayView text, char c) {
    return std::count(text.begin(), text.end(), c) == text.size();
}

bool has_digit(QByteArrayView text) {
    return std::any_of(text.begin(), text.end(), is_digit);
}

QByteArrayView without_brackets(QByteArrayView field) {
    while (!field.isEmpty() && opening_signs.has(field.front()))
        field = field.sliced(1);
    while (!field.isEmpty() && closing_signs.has(field.back()))
        field.chop(1);
    return field;
}

// A placeholder instead of a number.
bool is_empty_place(QByteArrayView field) {
    return (field.size() >= 3 && repeats(field, '*')) || (field.size() >= 2 && repeats(field, '.'));
}

bool is_not_a_number(QByteArrayView field) {
    if (!field.isEmpty() && is_sign(field.front()))
        field = field.sliced(1);
    for (const char* name : {"nan", "inf", "infinity", "#inf", "1.#inf", "1.#qnan", "1.#ind"}) {
        if (field.compare(QByteArrayView(name), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool begins_like_number(QByteArrayView field) {
    while (!field.isEmpty() && is_sign(field.front()))
        field = field.sliced(1);
    if (field.isEmpty())
        return false;
    if (is_digit(field.front()) || field.front() == '.' || field.front() == ',')
        return true;
    return field.size() > 1 && QByteArrayView("OolI?").contains(field.front()) &&
           (field[1] == '.' || field[1] == ',');
}

// Whether the field was meant to be a number: digits with a letter that looks like a digit, with a
// second point, or with a sign inside. `E63` and `S1223` are names.
bool is_nearly_number(QByteArrayView field) {
    return is_not_a_number(field) ||
           (begins_like_number(field) && has_digit(field) && of_damaged_numbers.has_all(field));
}

char as_plain(char c, bool decimal_commas) {
    if (c == 'd' || c == 'D')
        return 'e';
    return c == ',' && decimal_commas ? '.' : c;
}

// Whether the text after a number begins another one that touches it. Without points it may be an
// exponent that has lost its letter.
bool is_touching(QByteArrayView number, QByteArrayView rest) {
    return rest.size() >= 2 && is_sign(rest.front()) && number.contains('.') &&
           rest.contains('.') && (is_digit(rest[1]) || rest[1] == '.');
}

bool is_in_range(double number) {
    return std::isfinite(number) && std::abs(number) <= largest_number;
}

// The end of the field that begins at c, if std::from_chars reads it as a number.
const char* read_plain_number(const char* c, const char* end, const CharacterSet& ends,
                              double& number) {
    const char* const digits = *c == '-' ? c + 1 : c;
    if (digits == end || !(is_digit(*digits) || *digits == '.'))
        return nullptr;
    const std::from_chars_result read = std::from_chars(c, end, number);
    const bool is_plain = read.ec == std::errc() && (read.ptr == end || ends.has(*read.ptr)) &&
                          read.ptr - c <= longest_field && is_in_range(number);
    return is_plain ? read.ptr : nullptr;
}

FieldKind read_numbers(QByteArrayView field, bool decimal_commas, std::vector<double>& numbers) {
    char plain[longest_field] = {};
    if (field.size() > longest_field || is_not_a_number(field))
        return field.size() > longest_field ? FieldKind::word : FieldKind::damaged;
    std::transform(field.begin(), field.end(), plain,
                   [=](char c) { return as_plain(c, decimal_commas); });
    const char* next = plain;
    const char* const end = plain + field.size();
    const std::size_t before = numbers.size();
    while (next != end) {
        const char* const begin = next;
        if (*next == '+' && end - next > 1 && (is_digit(next[1]) || next[1] == '.'))
            ++next;
        double value = 0.0;
        const std::from_chars_result read = std::from_chars(next, end, value);
        if (read.ec != std::errc() || !is_in_range(value))
            break;
        numbers.push_back(value);
        next = read.ptr;
        const QByteArrayView rest(next, end);
        if (rest.isEmpty() || rest == "%" || rest == "mm")
            return FieldKind::numbers;
        if (is_empty_place(rest)) {
            if (rest.front() == '.')
                break;
            numbers.push_back(no_number);
            return FieldKind::numbers;
        }
        if (!is_touching(QByteArrayView(begin, next), rest))
            break;
    }
    numbers.resize(before);
    return is_nearly_number(field) ? FieldKind::damaged : FieldKind::word;
}

} // namespace

void read_fields(QByteArrayView line, bool decimal_commas, Fields& fields) {
    fields.kind = LineKind::blank;
    fields.numbers.clear();
    fields.remark = false;
    fields.likenesses = 0;
    fields.damaged = {};

    const CharacterSet& ends = decimal_commas ? decimal_field_ends : field_ends;
    const char* c = line.data();
    const char* const end = c + line.size();
    bool after_separator = true;
    bool damaged = false;
    while (c != end) {
        if (is_blank(*c)) {
            ++c;
            continue;
        }
        if (ends.has(*c)) {
            // A line that begins with a semicolon is a comment.
            if (after_separator && fields.likenesses == 0 && *c == ';')
                break;
            if (after_separator) {
                fields.numbers.push_back(no_number);
                ++fields.likenesses;
            }
            after_separator = true;
            ++c;
            continue;
        }
        // Most fields are plain numbers.
        double number = 0.0;
        if (const char* const behind = read_plain_number(c, end, ends, number)) {
            fields.numbers.push_back(number);
            ++fields.likenesses;
            after_separator = false;
            c = behind;
            continue;
        }
        const char* const begin = c;
        c = std::find_if(c, end, [&](char other) { return ends.has(other); });
        QByteArrayView field = without_brackets(QByteArrayView(begin, c));
        while (decimal_commas && field.endsWith(','))
            field.chop(1);
        field = without_brackets(field);
        if (field.isEmpty())
            continue;
        FieldKind kind = FieldKind::numbers;
        if (is_empty_place(field))
            fields.numbers.push_back(no_number);
        else
            kind = read_numbers(field, decimal_commas, fields.numbers);
        if (kind == FieldKind::word) {
            c = begin;
            break;
        }
        ++fields.likenesses;
        if (kind == FieldKind::damaged && !damaged) {
            damaged = true;
            fields.damaged = field;
        }
        after_separator = false;
    }
    // One separator at the end of a row is ignored, two leave an empty place.
    if (c == end && after_separator && !fields.numbers.empty() && std::isnan(fields.numbers.back()))
        fields.numbers.push_back(no_number);
    fields.remark = c != end;
    const bool has_number = std::any_of(fields.numbers.begin(), fields.numbers.end(),
                                        [](double number) { return !std::isnan(number); });
    if (damaged)
        fields.kind = LineKind::damaged;
    else if (has_number)
        fields.kind = LineKind::numbers;
    else if (fields.remark || !fields.numbers.empty())
        fields.kind = LineKind::text;
}

bool has_decimal_commas(QByteArrayView utf8) {
    if (!utf8.contains(','))
        return false;
    qsizetype with_commas = 0;
    qsizetype with_points = 0;
    while (!utf8.isEmpty()) {
        const QByteArrayView line = take_line(utf8);
        if (!line.contains(',')) {
            with_points += line.contains('.') && of_rows_with_points.has_all(line) ? 1 : 0;
            continue;
        }
        if (!of_rows_with_commas.has_all(line))
            continue;
        if (line.contains('.')) {
            ++with_points;
            continue;
        }
        // If something else separates the fields, each has at most one comma, followed by a digit.
        int fields = 0;
        bool decimal = true;
        bool any = false;
        const char* c = line.data();
        const char* const end = c + line.size();
        while (c != end) {
            if (is_blank(*c) || *c == ';') {
                ++c;
                continue;
            }
            const char* const begin = c;
            while (c != end && !is_blank(*c) && *c != ';')
                ++c;
            QByteArrayView field = without_brackets(QByteArrayView(begin, c));
            if (field.endsWith(','))
                field.chop(1);
            field = without_brackets(field);
            const qsizetype comma = field.indexOf(',');
            if (comma >= 0) {
                any = true;
                decimal = decimal && field.lastIndexOf(',') == comma && comma + 1 < field.size() &&
                          is_digit(field[comma + 1]);
            } else if (!has_digit(field)) {
                decimal = false;
            }
            ++fields;
        }
        with_commas += decimal && any && fields >= 2 ? 1 : 0;
    }
    return with_commas > with_points;
}

} // namespace tables
