// SPDX-FileCopyrightText: Aerolith developers
// Numbers of the command line.
#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace cli {

/// The number in @p text. It has a decimal point in every locale, and can have a sign. Nothing for
/// any other text, for numbers out of range, and for `nan` and `inf`.
template<typename Number>
std::optional<Number> number_of(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    Number number{};
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    if (text.empty() || result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    if constexpr (std::is_floating_point_v<Number>) {
        if (!std::isfinite(number))
            return std::nullopt;
    }
    return number;
}

} // namespace cli
