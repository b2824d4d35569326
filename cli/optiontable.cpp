// SPDX-FileCopyrightText: Aerolith developers
// The table of options.
#include "cli/options.h"

namespace cli {

const std::vector<Option>& option_table() {
    static const std::vector<Option> table = {
        // Inputs and results, the same in every verb.
        {"files-from", 0, "FILE", "", "",
         "Take further names from FILE, one a line; - is standard input", "*", &Options::files_from,
         0, 0, nullptr, Completes::file},
        {"null", '0', "", "", "", "The names in that list end with null characters, not lines", "*",
         &Options::null_separated},
        {"jobs", 'j', "N", "", "", "Work on N files at a time; without it one a processor", "*",
         &Options::jobs, 1, 1024},
        {"json", 0, "", "", "", "Print the results as a JSON array, one object a line", "*",
         &Options::json},
        {"help", 'h', "", "", "", "Print this help", "*", &Options::help},
    };
    return table;
}

} // namespace cli
