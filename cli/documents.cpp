// SPDX-FileCopyrightText: Aerolith developers
#include "cli/documents.h"

#include "cli/help.h"
#include "cli/options.h"
#include "cli/verb.h"

#include <functional>

namespace cli {

namespace {

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t i = text.find(what); i != std::string::npos;
         i = text.find(what, i + by.size()))
        text.replace(i, what.size(), by);
    return text;
}

// Escapes text for the manual page, where no line may begin with a control character.
std::string roff(const std::string& text) {
    const std::string plain = replaced(replaced(text, "\\", "\\e"), "-", "\\-");
    return plain.empty() || (plain[0] != '.' && plain[0] != '\'') ? plain : "\\&" + plain;
}

// Quotes a word for a shell.
std::string quoted(const std::string& text) {
    return "'" + replaced(text, "'", "'\\''") + "'";
}

bool is_common(const Option& option) {
    return std::string(option.verbs) == "*";
}

std::string joined(const std::vector<std::string>& words, const std::string& between) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

std::string option_entry(const Option& option) {
    std::string text = ".TP\n.B ";
    if (option.letter != 0)
        text += std::string("\\-") + option.letter + ", ";
    text += "\\-\\-" + roff(option.name);
    if (*option.argument != 0)
        text += std::string(" \\fI") + option.argument + "\\fR";
    return text + "\n" + roff(option_help(option)) + ".\n";
}

// The words that can follow the program name.
std::vector<std::string> first_words() {
    std::vector<std::string> words;
    for (const Verb* verb : verbs())
        words.emplace_back(verb->name);
    words.insert(words.end(), {"--help", "--version"});
    return words;
}

std::string bash_value(const Option& option) {
    if (option.choices)
        return "_aerolith_cli_words " + quoted(joined(option.choices(), " "));
    if (option.completes == Completes::nothing)
        return "COMPREPLY=()";
    return option.completes == Completes::folder ? "_aerolith_cli_names -d"
                                                 : "_aerolith_cli_names -f";
}

} // namespace

std::string manual_page() {
    std::string page =
        ".\\\" SPDX-FileCopyrightText: Aerolith developers\n"
        ".TH AEROLITH-CLI 1 2026-11-22 \"Aerolith " AEROLITH_VERSION "\" \"User Commands\"\n"
        ".SH NAME\n"
        "aerolith\\-cli \\- check, convert, fit, measure and draw wing sections\n"
        ".SH SYNOPSIS\n";
    for (const Verb* verb : verbs())
        page += ".B aerolith\\-cli " + roff(verb->name) + "\n.IR \"" + verb->inputs +
                "\" \" [\" option \"]...\"\n.br\n";
    page += ".B aerolith\\-cli \\-\\-help\n.br\n.B aerolith\\-cli \\-\\-version\n"
            ".SH DESCRIPTION\n"
            "Works on coordinate tables of wing sections (Selig, Lednicer, CSV, paragliding\n"
            "profiles) and on the splines of\n.BR aerolith (1).\n"
            "Draws the ribs of ram\\-air wings and parafoils.\n"
            "It takes one file or a hundred thousand and needs no display.\n"
            "A file is either read correctly or refused, with the line and the reason.\n"
            ".PP\n"
            "A folder stands for all files below it, in the order of their names; \\- is standard\n"
            "input.\n"
            "Results go to standard output, everything else to standard error.\n"
            "Control characters and invalid UTF\\-8 in names are shown as \\exHH.\n";
    for (const Verb* verb : verbs()) {
        page += ".SH \"" + roff(verb->name) + " " + verb->inputs + "\"\n" +
                roff(verb->description) + "\n";
        for (const Option* option : options_of(verb->name)) {
            if (!is_common(*option))
                page += option_entry(*option);
        }
        page +=
            ".PP\nExample:\n.PP\n.nf\n.RS\naerolith\\-cli " + roff(verb->example) + "\n.RE\n.fi\n";
    }
    page += ".SH \"OPTIONS OF EVERY VERB\"\n";
    for (const Option& option : option_table()) {
        if (is_common(option))
            page += option_entry(option);
    }
    page +=
        ".SH \"EXIT STATUS\"\n"
        ".TP\n.B 0\nSuccess.\n"
        ".TP\n.B 1\nA file is doubtful, bad or unreadable, an output could not be written, or a\n"
        "tolerance was missed. With check \\-\\-strict also: a file needs converting.\n"
        ".TP\n.B 2\nWrong usage; nothing was written.\n"
        ".SH \"SEE ALSO\"\n.BR aerolith (1)\n"
        ".PP\nThe user guide and the file formats are in share/doc/aerolith below the prefix\n"
        "of the installation, which is /usr for the package.\n";
    return page;
}

std::string bash_completion() {
    std::string script =
        "# bash completion for aerolith-cli\n"
        "_aerolith_cli_words() { mapfile -t COMPREPLY < <(compgen -W \"$1\" -- \"$cur\"); }\n"
        "_aerolith_cli_names() {\n"
        "    compopt -o filenames\n"
        "    mapfile -t COMPREPLY < <(compgen \"$1\" -- \"$cur\")\n"
        "}\n"
        "_aerolith_cli() {\n"
        "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}\n"
        "    if [[ $COMP_CWORD -eq 1 ]]; then\n"
        "        _aerolith_cli_words " +
        quoted(joined(first_words(), " ")) +
        "\n        return\n"
        "    fi\n"
        "    case ${COMP_WORDS[1]} in\n";
    for (const Verb* verb : verbs()) {
        script += std::string("    ") + verb->name + ")\n        case $prev in\n";
        std::vector<std::string> names;
        for (const Option* option : options_of(verb->name)) {
            names.push_back(std::string("--") + option->name);
            if (word_count(*option) == 0)
                continue;
            const std::string letter =
                option->letter == 0 ? std::string() : std::string("-") + option->letter + " | ";
            script += "        " + letter + "--" + option->name + ")\n            " +
                      bash_value(*option) + "\n            return\n            ;;\n";
        }
        script += "        esac\n"
                  "        if [[ $cur == -* ]]; then\n"
                  "            _aerolith_cli_words " +
                  quoted(joined(names, " ")) +
                  "\n            return\n"
                  "        fi\n"
                  "        ;;\n";
    }
    return script + "    esac\n"
                    "    _aerolith_cli_names -f\n"
                    "}\n"
                    "complete -F _aerolith_cli aerolith-cli\n";
}

std::string zsh_completion() {
    const auto plain = [](const std::string& text) {
        return replaced(replaced(replaced(text, ":", "\\:"), "[", "\\["), "]", "\\]");
    };
    std::string script = "#compdef aerolith-cli\n"
                         "local -a verbs=(\n";
    for (const Verb* verb : verbs())
        script += "    " + quoted(verb->name + (":" + plain(verb->summary))) + "\n";
    script += ")\n"
              "if (( CURRENT == 2 )); then\n"
              "    _describe verb verbs\n"
              "    _arguments '--help[print the verbs]' '--version[print the version]'\n"
              "    return\n"
              "fi\n"
              "shift words\n"
              "(( CURRENT-- ))\n"
              "case $words[1] in\n";
    for (const Verb* verb : verbs()) {
        script += std::string(verb->name) + ")\n    _arguments -s";
        for (const Option* option : options_of(verb->name)) {
            std::string value;
            for (const std::string& word : words_of(option->argument)) {
                value += ":" + plain(word) + ":";
                if (option->choices)
                    value += "(" + joined(option->choices(), " ") + ")";
                else if (option->completes != Completes::nothing)
                    value += option->completes == Completes::folder ? "_files -/" : "_files";
            }
            const std::string name = std::string("--") + option->name;
            const std::string rest = quoted("[" + plain(option->help) + "]" + value);
            script += " \\\n        ";
            if (option->letter == 0)
                script += name + rest;
            else
                script.append("'(-")
                    .append(1, option->letter)
                    .append(" ")
                    .append(name)
                    .append(")'{-")
                    .append(1, option->letter)
                    .append(",")
                    .append(name)
                    .append("}")
                    .append(rest);
        }
        script += " \\\n        '*:file:_files'\n    ;;\n";
    }
    return script + "esac\n";
}

std::string fish_completion() {
    const auto in_fish = [](const std::string& text) {
        return "'" + replaced(replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
    };
    const std::string start = "complete -c aerolith-cli ";
    std::string script = "# fish completion for aerolith-cli\n";
    for (const Verb* verb : verbs())
        script += start + "-n __fish_is_first_token -f -a " + verb->name + " -d " +
                  in_fish(verb->summary) + "\n";
    script += start + "-n __fish_is_first_token -l help -d 'Print the verbs'\n" + start +
              "-n __fish_is_first_token -l version -d 'Print the version'\n";
    for (const Verb* verb : verbs()) {
        for (const Option* option : options_of(verb->name)) {
            // A file may have the name of a verb.
            script += start + "-n 'string match -q " + verb->name + " -- (commandline -opc)[2]'";
            if (option->letter != 0)
                script += std::string(" -s ") + option->letter;
            script += std::string(" -l ") + option->name;
            if (option->choices)
                script += " -x -a " + in_fish(joined(option->choices(), " "));
            else if (option->completes == Completes::folder)
                script += " -x -a '(__fish_complete_directories)'";
            else if (option->completes == Completes::file)
                script += " -r";
            else if (word_count(*option) > 0)
                script += " -x";
            script += " -d " + in_fish(option->help) + "\n";
        }
    }
    return script;
}

std::string grammar() {
    std::string text;
    for (const Verb* verb : verbs()) {
        text += std::string("verb ") + verb->name + "\n";
        for (const Option* option : options_of(verb->name)) {
            text += std::string("--") + option->name;
            const std::string range = number_text(option->low) + ".." + number_text(option->high);
            for (const std::string& word : words_of(option->argument)) {
                const bool is_text = std::holds_alternative<std::string Options::*>(option->target);
                const bool is_list = word.find(',') != std::string::npos;
                if (option->choices)
                    text += " {" + joined(option->choices(), "|") + "}";
                else if (is_text)
                    text += option->completes == Completes::folder ? " {folder}" : " {file}";
                else
                    text += " {" + range + (is_list ? ",..." : "") + "}";
            }
            text += "\n";
        }
    }
    return text;
}

} // namespace cli
