// SPDX-FileCopyrightText: Aerolith developers
#include "cli/parse.h"

#include "cli/shown.h"
#include "cli/verb.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <numeric>
#include <utility>

namespace cli {

namespace {

// Gives access to the remaining words. As an option of the parser, a file "[a,b]" would count as a
// list.
class Parser : public CLI::App {
public:
    // File names have the kind NONE, unknown options their own.
    const std::vector<std::pair<CLI::detail::Classifier, std::string>>& others() const {
        return missing_;
    }
};

std::string flags_of(const Option& option) {
    const std::string name = std::string("--") + option.name;
    return option.letter == 0 ? name : std::string{'-', option.letter, ','} + name;
}

// The least number of letters to insert, drop, change or swap between the two words.
int edit_distance(std::string_view a, std::string_view b) {
    std::vector<std::vector<int>> steps(a.size() + 1, std::vector<int>(b.size() + 1));
    std::iota(steps[0].begin(), steps[0].end(), 0);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        steps[i][0] = int(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const int changed = steps[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, changed});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    }
    return steps[a.size()][b.size()];
}

std::string unknown_option(const std::string& typed, const std::vector<const Option*>& options) {
    std::vector<std::string> known;
    known.reserve(options.size());
    for (const Option* option : options)
        known.push_back(std::string("--") + option->name);
    const std::string name = typed.substr(0, typed.find('='));
    return "unknown option '" + shown(name) + "'" + suggestion(name, known);
}

// Refuses two forms that the parser would misread: "--name=", which would take the next argument as
// its value, and a value for a flag.
std::string odd_equals_sign(const std::vector<std::string>& arguments,
                            const std::vector<const Option*>& options) {
    for (const std::string& argument : arguments) {
        if (argument == "--")
            break;
        for (const Option* option : options) {
            const std::string start = std::string("--") + option->name + "=";
            if (argument == start)
                return argument + " has no value";
            if (argument.compare(0, start.size(), start) == 0 && word_count(*option) == 0)
                return "--" + std::string(option->name) + " takes no value";
        }
    }
    return {};
}

// Only the last option can lack its value.
std::string missing_value(const std::vector<std::string>& arguments,
                          const std::vector<const Option*>& options) {
    for (std::size_t i = arguments.size(); i-- > 0;) {
        for (const Option* option : options) {
            const std::string name = std::string("--") + option->name;
            const bool is_letter = option->letter != 0 && arguments[i].size() > 1 &&
                                   arguments[i][0] == '-' && arguments[i][1] != '-' &&
                                   arguments[i].back() == option->letter;
            const bool is_name = arguments[i].substr(0, arguments[i].find('=')) == name;
            if (word_count(*option) > 0 && (is_letter || is_name))
                return name + " needs " + option->argument;
        }
    }
    return "the value of an option is missing";
}

} // namespace

std::string suggestion(std::string_view typed, const std::vector<std::string>& known) {
    constexpr std::size_t longest = 40;
    int least = 4;
    std::string nearest;
    if (typed.size() > longest)
        return {};
    for (const std::string& word : known) {
        const int distance = edit_distance(typed, word);
        const auto letters = int(word.size() - std::min(word.find_first_not_of('-'), word.size()));
        if (distance < least && distance < letters) {
            least = distance;
            nearest = word;
        }
    }
    return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

Parsed parse(const Verb& verb, const std::vector<std::string>& arguments) {
    const std::vector<const Option*> options = options_of(verb.name);
    Parsed parsed;
    parsed.refusal = odd_equals_sign(arguments, options);
    if (!parsed.refusal.empty())
        return parsed;

    Parser parser;
    parser.set_help_flag();
    parser.allow_extras();
    std::vector<CLI::Option*> found;
    for (const Option* option : options) {
        const int words = word_count(*option);
        CLI::Option* added =
            words == 0 ? parser.add_flag(flags_of(*option))->disable_flag_override()
                       : parser.add_option(flags_of(*option))->type_size(words)->expected(1);
        found.push_back(added->multi_option_policy(CLI::MultiOptionPolicy::TakeAll));
    }

    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        parser.parse(reversed);
    } catch (const CLI::ArgumentMismatch&) {
        parsed.refusal = missing_value(arguments, options);
        return parsed;
    } catch (const CLI::ParseError& error) {
        parsed.refusal = error.what();
        return parsed;
    }

    for (const auto& [kind, word] : parser.others()) {
        if (kind == CLI::detail::Classifier::NONE)
            parsed.options.files.push_back(word);
        else if (kind != CLI::detail::Classifier::POSITIONAL_MARK)
            parsed.refusal = unknown_option(word, options);
        if (!parsed.refusal.empty())
            return parsed;
    }
    for (std::size_t i = 0; i < options.size(); ++i) {
        const std::vector<std::string>& words = found[i]->results();
        if (words.empty())
            continue;
        const auto wanted = std::size_t(std::max(word_count(*options[i]), 1));
        const std::string name = std::string("--") + options[i]->name;
        const std::string refusal = words.size() > wanted
                                        ? std::string("given twice")
                                        : store(*options[i], words, parsed.options);
        if (!refusal.empty()) {
            parsed.refusal = name;
            parsed.refusal += ": ";
            parsed.refusal += refusal;
            return parsed;
        }
    }
    return parsed;
}

} // namespace cli
