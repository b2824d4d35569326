// SPDX-FileCopyrightText: Aerolith developers
// The table of options.
#include "cli/formats.h"
#include "cli/options.h"

namespace cli {

const std::vector<Option>& option_table() {
    static const std::vector<Option> table = {
        {"layout", 0, "NAME", "", "", "Read every file as this layout",
         "check convert measure compare", &Options::layout, 0, 0, input_layouts},
        {"element", 0, "N", "", "", "Of several elements in a file take the N-th",
         "check convert measure compare", &Options::element, 1, 1000},

        {"strict", 0, "", "", "", "End with 1 also for files whose verdict is convert", "check",
         &Options::strict},

        {"chord", 0, "MM", "mm", "", "Print lengths in mm and areas in m2 for a chord of MM",
         "measure compare", &Options::chord, 0.001, 1e6},
        {"at", 0, "X,...", "percent of the chord", "",
         "Print heights and surface lengths at these stations too", "measure", &Options::stations,
         0, 100},
        {"align", 0, "", "", "",
         "Move each section onto the reference first, chord line onto chord line", "compare",
         &Options::align},
        {"tolerance", 0, "T", "chord, mm with --chord", "",
         "End with 1 where a section is farther than T from the reference", "compare",
         &Options::tolerance, 1e-12, 1e6},

        {"output", 'o', "OUT", "", "",
         "Write to OUT, - for standard output; its ending names the format", "convert",
         &Options::output, 0, 0, nullptr, Completes::file},
        {"dir", 'd', "FOLDER", "", "",
         "Write below FOLDER, keeping the path below each folder given", "convert",
         &Options::folder, 0, 0, nullptr, Completes::folder},
        {"force", 'f', "", "", "", "Replace files that exist", "convert", &Options::force},
        {"to", 't', "FORMAT", "", "", "Write this format", "convert", &Options::to, 0, 0,
         output_formats},
        {"decimals", 0, "N", "", "8", "Write coordinates with N decimals", "convert",
         &Options::decimals, 1, 15},
        {"reverse", 0, "", "", "", "Write the points from the last to the first", "convert",
         &Options::reverse},
        {"close-gap", 0, "", "", "", "Close the trailing edge at the middle of its gap", "convert",
         &Options::close_gap},
        {"normalize", 0, "", "", "",
         "Turn and scale so that the chord runs from the true leading edge to the trailing edge",
         "convert", &Options::normalize},
        {"openings", 0, "A B", "percent of the chord", "",
         "The air intake reaches from A to B on the lower side", "convert", &Options::openings, 0,
         100},
        {"lep-points", 0, "U,I,L", "", "",
         "Spread new points: U to the start of the intake, I along it, L behind it", "convert",
         &Options::lep_points, 1, 500},

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
