// SPDX-FileCopyrightText: Aerolith developers
// The table of options.
#include "cli/formats.h"
#include "cli/options.h"
#include "cli/rib_options.h"

namespace cli {

const std::vector<Option>& option_table() {
    static const std::vector<Option> table = {
        {"layout", 0, "NAME", "", "", "Read every file as this layout",
         "check convert measure compare fit draw", &Options::layout, 0, 0, input_layouts},
        {"element", 0, "N", "", "", "Of several elements in a file take the N-th",
         "check convert measure compare fit draw", &Options::element, 1, 1000},

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
         "End with 1 where a section is farther than T from the reference; fit: hold T over the "
         "first 20 % of the chord and twice as much behind",
         "compare fit", &Options::tolerance, 1e-12, 1e6},

        {"points", 0, "N", "", "", "Lay splines of N control points", "fit", &Options::points, 4,
         30},
        {"best", 0, "", "", "",
         "Search up to a second; with 30 control points, which may lie closer together", "fit",
         &Options::best},
        {"symmetric", 0, "", "", "", "Mirror the control points of one side to the other", "fit",
         &Options::symmetric},
        {"closed", 0, "", "", "", "End the spline where it begins", "fit", &Options::closed},

        {"output", 'o', "OUT", "", "",
         "Write to OUT, - for standard output; its ending names the format", "convert fit draw",
         &Options::output, 0, 0, nullptr, Completes::file},
        {"dir", 'd', "FOLDER", "", "",
         "Write below FOLDER, keeping the path below each folder given", "convert fit",
         &Options::folder, 0, 0, nullptr, Completes::folder},
        {"force", 'f', "", "", "", "Replace files that exist", "convert fit draw", &Options::force},
        {"to", 't', "FORMAT", "", "", "Write this format", "convert", &Options::to, 0, 0,
         output_formats},
        {"to", 't', "FORMAT", "", "", "Write this format", "draw", &Options::to, 0, 0,
         picture_formats},
        {"size", 0, "WxH", "mm, pixels in png", "",
         "Make the picture this large, for instance 180x120; without it 240 mm wide, or 1417 "
         "pixels "
         "in png, and as high as its content",
         "draw", &Options::size},
        {"points", 0, "N", "", "", "Write N new points on the curve through those of the file",
         "convert", &Options::points, 6, 1e6},
        {"spacing", 0, "NAME", "", "curvature", "Spread the new points like this", "convert",
         &Options::spacing, 0, 0, spacings},
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
         "The air intake reaches from A to B on the lower side", "convert fit", &Options::openings,
         0, 100},
        {"lep-points", 0, "U,I,L", "", "",
         "Spread new points: U to the start of the intake, I along it, L behind it", "convert",
         &Options::lep_points, 1, 500},

        // Drawings of ribs: dxf, svg and pdf.
        {"chord", 0, "MM", "mm", "", "Draw the rib at full size with a chord of MM", "convert",
         &Options::chord, 0.001, 1e5},
        {"allowance", 0, "MM", "mm", "", "Cut MM outside the stitches; without it along them",
         "convert", &Options::allowance, 0, 1000},
        {"seam", 0, "MM", "mm", "", "The same as --allowance", "convert", &Options::allowance, 0,
         1000},
        {"allowance-te", 0, "MM", "mm", "",
         "Another allowance behind the trailing edge, where it ends square", "convert",
         &Options::allowance_te, 0, 1000},
        {"allowance-mouth", 0, "MM", "mm", "", "Another allowance along the mouth", "convert",
         &Options::allowance_mouth, 0, 1000},
        {"intake", 0, "KIND", "", "curve",
         "How the rib crosses the mouth: along the curve, straight, or not at all, for drawing "
         "only",
         "convert", &Options::intake, 0, 0, intakes},
        {"marks", 0, "STEP", "mm", "",
         "Mark every STEP along the surface from the trailing edge, in the allowance", "convert",
         &Options::marks, 1, 1e5},
        {"mark-at", 0, "SIDE:X,...", "percent of the chord", "",
         "Mark these stations, for instance lower:9.5,30;upper:30", "convert", &Options::mark_at},
        {"mark", 0, "SHAPE", "", "notch", "What a mark looks like", "convert", &Options::mark, 0, 0,
         mark_shapes},
        {"grain", 0, "DEG", "degrees", "", "Draw the grain at this angle to the chord line",
         "convert", &Options::grain, -180, 180},
        {"mirror", 0, "", "", "", "Flip the rib left and right, but no text", "convert",
         &Options::mirror},
        {"text", 0, "TEXT", "", "",
         "Write TEXT on the rib; {name}, {chord} and {n} stand for the name of the file, the "
         "chord and the number of the copy",
         "convert", &Options::text},
        {"text-strokes", 0, "", "", "",
         "Draw texts as lines: digits, capitals and . - /, for plotters without fonts", "convert",
         &Options::text_strokes},
        {"flatness", 0, "MM", "mm", "0.01", "Keep straight lines within MM of the curve", "convert",
         &Options::flatness, 0.001, 1},
        {"unit", 0, "UNIT", "", "mm", "One unit of a dxf or svg file is one UNIT", "convert",
         &Options::unit, 0, 0, drawing_units},
        {"layer-names", 0, "LAYER=NAME,...", "", "",
         "Call layers otherwise, for instance CUT=Schnitt,STITCH=Naht", "convert",
         &Options::layer_names},
        {"tile", 0, "PAPER", "", "", "Spread a pdf over sheets with joining marks", "convert",
         &Options::tile, 0, 0, tilings},
        {"ribs", 0, "LIST.csv", "", "",
         "Draw the ribs of a list on one sheet; rows are file,chord,text,count,mirror", "convert",
         &Options::ribs, 0, 0, nullptr, Completes::file},
        {"gap", 0, "MM", "mm", "20", "Leave MM between the ribs of a sheet", "convert",
         &Options::gap, 0, 1000},

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
