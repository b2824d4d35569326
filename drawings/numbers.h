// SPDX-FileCopyrightText: Aerolith developers
// Numbers as the writers put them into files.
#pragma once

#include <QByteArray>

#include <array>
#include <charconv>
#include <limits>

namespace drawings {

/// @p value with a decimal point and at most @p decimals digits behind it, without trailing
/// zeros and without a negative zero, in every locale.
/// @param value    finite
/// @param decimals 0..15
inline QByteArray decimal(double value, int decimals) {
    // Sign, point, and the digits of the largest number and behind it.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 20> digits;
    char* const begin = digits.data();
    char* end =
        std::to_chars(begin, begin + digits.size(), value, std::chars_format::fixed, decimals).ptr;
    if (decimals > 0) {
        while (end[-1] == '0')
            --end;
        if (end[-1] == '.')
            --end;
    }
    if (end - begin == 2 && begin[0] == '-' && begin[1] == '0')
        return QByteArrayLiteral("0");
    return QByteArray(begin, end - begin);
}

} // namespace drawings
