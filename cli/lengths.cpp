// SPDX-FileCopyrightText: Aerolith developers
#include "cli/lengths.h"

#include <algorithm>

namespace cli {

std::string fixed(double number, int decimals) {
    std::string text = QByteArray::number(number, 'f', decimals).toStdString();
    const bool is_zero = text.find_first_of("123456789") == std::string::npos;
    if (is_zero && text.front() == '-')
        text.erase(0, 1);
    return text;
}

std::string percent(double fraction, int decimals) {
    return fixed(100.0 * fraction, decimals) + " %";
}

std::string Lengths::signed_text(double fraction) const {
    const std::string plain = text(fraction);
    const bool is_zero = plain.find_first_of("123456789") == std::string::npos;
    return is_zero || plain.front() == '-' ? plain : "+" + plain;
}

} // namespace cli
