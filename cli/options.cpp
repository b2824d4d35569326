// SPDX-FileCopyrightText: Aerolith developers
#include "cli/options.h"

#include "cli/number.h"
#include "cli/shown.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <type_traits>

namespace cli {

namespace {

template<typename Number>
std::string read_number(const Option& option, std::string_view word, Number& number) {
    const std::optional<Number> read = number_of<Number>(word);
    const std::string quoted = "'" + shown(word) + "'";
    if (!read) {
        if (word.find(',') != std::string_view::npos)
            return quoted + " is not a number; use a decimal point";
        return quoted +
               (std::is_integral_v<Number> ? " is not a whole number" : " is not a number");
    }
    if (double(*read) < option.low || double(*read) > option.high)
        return quoted + " is not between " + number_text(option.low) + " and " +
               number_text(option.high);
    number = *read;
    return {};
}

// The parts of a single word between commas, or the words if there are several.
std::vector<std::string> parts_of(const std::vector<std::string>& words) {
    if (words.size() != 1)
        return words;
    std::vector<std::string> parts;
    std::string_view rest = words.front();
    for (std::size_t comma = rest.find(','); comma != std::string_view::npos;
         comma = rest.find(',')) {
        parts.emplace_back(rest.substr(0, comma));
        rest.remove_prefix(comma + 1);
    }
    parts.emplace_back(rest);
    return parts;
}

template<typename Number>
std::string read_numbers(const Option& option, const std::vector<std::string>& words,
                         std::vector<Number>& numbers) {
    const std::vector<std::string> parts = parts_of(words);
    const std::string_view argument = option.argument;
    const auto wanted = std::size_t(std::count(argument.begin(), argument.end(), ',')) + 1;
    const bool any = argument.find("...") != std::string_view::npos;
    if (words.size() == 1 && !any && parts.size() != wanted)
        return "'" + shown(words.front()) + "' is not a list of " + std::to_string(wanted) +
               " numbers separated by commas";
    std::vector<Number> read(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        std::string refusal = read_number(option, parts[i], read[i]);
        if (!refusal.empty())
            return refusal;
    }
    numbers = read;
    return {};
}

std::string read_text(const Option& option, const std::string& word, std::string& text) {
    if (word.empty())
        return "the value is empty";
    if (option.choices) {
        const std::vector<std::string> choices = option.choices();
        if (std::find(choices.begin(), choices.end(), word) == choices.end()) {
            std::string list;
            for (const std::string& choice : choices)
                list += (list.empty() ? "" : ", ") + choice;
            return "'" + shown(word) + "' is not one of " + list;
        }
    }
    text = word;
    return {};
}

} // namespace

std::string number_text(double number) {
    char text[32];
    const std::to_chars_result result =
        std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
    return {text, result.ptr};
}

std::vector<std::string> words_of(std::string_view list) {
    std::istringstream stream{std::string(list)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

int word_count(const Option& option) {
    return int(words_of(option.argument).size());
}

std::vector<const Option*> options_of(std::string_view verb) {
    std::vector<const Option*> options;
    for (const Option& option : option_table()) {
        const std::vector<std::string> verbs = words_of(option.verbs);
        if (std::strcmp(option.verbs, "*") == 0 ||
            std::find(verbs.begin(), verbs.end(), verb) != verbs.end())
            options.push_back(&option);
    }
    return options;
}

std::string store(const Option& option, const std::vector<std::string>& words, Options& options) {
    return std::visit(
        [&](auto member) -> std::string {
            auto& value = options.*member;
            using Value = std::remove_reference_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, bool>) {
                value = true;
                return {};
            } else if constexpr (std::is_same_v<Value, std::string>) {
                return read_text(option, words.front(), value);
            } else if constexpr (std::is_arithmetic_v<Value>) {
                return read_number(option, words.front(), value);
            } else {
                return read_numbers(option, words, value);
            }
        },
        option.target);
}

} // namespace cli
