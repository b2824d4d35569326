// SPDX-FileCopyrightText: Aerolith developers
// Numbers in the form in which the writers put them into files.
#pragma once

#include <QByteArray>

#include <array>
#include <charconv>
#include <limits>

namespace drawings {

/// A number with a decimal point and a limited number of decimals, without trailing zeros and
/// without a negative zero, in every locale.
class Decimal {
public:
    /// @param value    finite
    /// @param decimals 0..15
    Decimal(double value, int decimals) {
        char* const begin = digits.data();
        const auto written =
            std::to_chars(begin, begin + digits.size(), value, std::chars_format::fixed, decimals);
        end = written.ptr;
        if (decimals > 0) {
            while (end[-1] == '0')
                --end;
            if (end[-1] == '.')
                --end;
        }
        if (text() == "-0") {
            digits[0] = '0';
            --end;
        }
    }
    Decimal(const Decimal&) = delete;
    Decimal& operator=(const Decimal&) = delete;

    QByteArrayView text() const { return {digits.data(), end}; }

private:
    // Sign, point, the digits of the largest number, and its decimals.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 20> digits;
    char* end = nullptr;
};

/// The same as bytes.
inline QByteArray decimal(double value, int decimals) {
    return Decimal(value, decimals).text().toByteArray();
}

} // namespace drawings
