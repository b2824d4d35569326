// SPDX-FileCopyrightText: Aerolith developers
#include "cli/help.h"

#include "cli/options.h"
#include "cli/shown.h"
#include "cli/verb.h"

#include <algorithm>

namespace cli {

namespace {

constexpr int widest = 100;
constexpr int narrow = 60;

// Two columns; on a narrow terminal the second is below the first.
std::string entry(const std::string& left, const std::string& right, int left_width, int width) {
    if (width < narrow)
        return "  " + left + "\n" + wrapped(right, width, 6);
    std::string text = wrapped(right, width, left_width + 4);
    const std::string start = "  " + column(left, left_width) + "  ";
    if (length_of(left) > left_width)
        return "  " + left + "\n" + text;
    return start + text.substr(std::min(start.size(), text.size()));
}

} // namespace

std::string option_form(const Option& option) {
    std::string form =
        option.letter == 0 ? std::string("    ") : std::string("-") + option.letter + ", ";
    form += std::string("--") + option.name;
    if (*option.argument != 0)
        form += std::string(" ") + option.argument;
    return form;
}

std::string option_help(const Option& option) {
    std::string text = option.help;
    if (option.choices) {
        std::string list;
        for (const std::string& choice : option.choices())
            list += (list.empty() ? "" : ", ") + choice;
        text += ": " + list;
    }
    const std::string unit = option.unit;
    const std::string standard =
        *option.standard == 0 ? std::string() : std::string("default ") + option.standard;
    const std::string both = unit + (unit.empty() || standard.empty() ? "" : ", ") + standard;
    return both.empty() ? text : text + " (" + both + ")";
}

std::string program_help(int width) {
    const int room = std::min(width, widest);
    std::string text = wrapped("Checks, converts, compares, measures, fits and draws wing "
                               "sections, one file or a hundred thousand, without a display.",
                               room, 0);
    text += "\n" + wrapped("Usage: aerolith-cli VERB FILE... [OPTION]...", room, 0) + "\n";
    for (const Verb* verb : verbs())
        text += entry(verb->name, verb->summary, 8, room);
    text += "\n" + wrapped("'aerolith-cli VERB --help' lists the options of a verb, "
                           "'aerolith-cli --version' prints the version.",
                           room, 0);
    return text;
}

std::string verb_help(const Verb& verb, int width) {
    const int room = std::min(width, widest);
    const std::string usage =
        std::string("Usage: aerolith-cli ") + verb.name + " " + verb.inputs + " [OPTION]...";
    std::string text = wrapped(usage, room, 0) + "\n" + wrapped(verb.description, room, 0) + "\n";
    for (const Option* option : options_of(verb.name))
        text += entry(option_form(*option), option_help(*option), 22, room);
    text += "\nExample:\n" + wrapped(std::string("aerolith-cli ") + verb.example, room, 2);
    return text;
}

} // namespace cli
