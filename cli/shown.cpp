// SPDX-FileCopyrightText: Aerolith developers
#include "cli/shown.h"

#include <QChar>

#include <algorithm>

namespace cli {

namespace {

// The character at the start of some bytes. Its length is 0 if they are not UTF-8.
struct Character {
    char32_t code = 0;
    std::size_t length = 0;
};

Character first_character(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc2 || lead > 0xf4 || bytes.size() < length)
        return {};
    char32_t code = lead & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xc0U) != 0x80U)
            return {};
        code = (code << 6U) | (byte & 0x3fU);
    }
    constexpr char32_t shortest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool overlong = code < shortest[length];
    if (overlong || code > 0x10ffff || (code >= 0xd800 && code <= 0xdfff))
        return {};
    return {code, length};
}

bool steers(char32_t code) {
    const QChar::Category category = QChar::category(code);
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph || (code >= 0x202a && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069);
}

} // namespace

std::string shown(std::string_view bytes) {
    constexpr const char* digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Character character = first_character(bytes);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        if (character.length > 0 && !steers(character.code)) {
            text += bytes.substr(0, length);
        } else {
            for (const char c : bytes.substr(0, length)) {
                const auto byte = static_cast<unsigned char>(c);
                text += "\\x";
                text += digits[byte >> 4U];
                text += digits[byte & 15U];
            }
        }
        bytes.remove_prefix(length);
    }
    return text;
}

std::string shown(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return shown(std::string_view(bytes.constData(), std::size_t(bytes.size())));
}

int length_of(std::string_view text) {
    return int(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xc0U) != 0x80U;
    }));
}

std::string column(std::string_view text, int width) {
    std::string padded(text);
    padded.append(std::size_t(std::max(0, width - length_of(text))), ' ');
    return padded;
}

std::string right_column(std::string_view text, int width) {
    return std::string(std::size_t(std::max(0, width - length_of(text))), ' ').append(text);
}

std::string wrapped(std::string_view text, int width, int indent) {
    const int room = std::max(10, width - indent);
    const std::string blanks(std::size_t(indent), ' ');
    std::string lines;
    std::string line;
    const auto end_line = [&] {
        lines += line.empty() ? "\n" : blanks + line + "\n";
        line.clear();
    };
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(" \n"), text.size());
        const std::string_view word = text.substr(0, end);
        if (!line.empty() && length_of(line) + 1 + length_of(word) > room)
            end_line();
        if (!line.empty() && !word.empty())
            line += ' ';
        line += word;
        if (end < text.size() && text[end] == '\n')
            end_line();
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (!line.empty())
        end_line();
    return lines;
}

} // namespace cli
