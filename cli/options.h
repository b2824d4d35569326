// SPDX-FileCopyrightText: Aerolith developers
// The options of all verbs: the record of their values, and their table. The parser, the help, the
// manual page, the completions and the fuzz grammar are generated from the table.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cli {

/// The values of the options. Each is valid by itself: numbers are in range and choices are known.
/// No file has been opened.
struct Options {
    std::vector<std::string> files; ///< Names as given, bytes.
    std::string files_from;         ///< Name of a list of files, "-" for standard input.
    bool null_separated = false;    ///< The names in the list end with null characters.
    int jobs = 0;                   ///< Files worked on at a time; 0 for one per processor.
    bool json = false;
    bool help = false;
    int width = 0; ///< Of the terminal; 0 if standard output is not a terminal.
    bool strict = false;

    std::string layout; ///< Of the inputs; empty: determined by their content.
    int element = 0;    ///< The element to use, counted from 1; 0 for none.

    double chord = 0.0; ///< In the window's frame, mm; 0 for lengths in fractions of the chord.
    std::vector<double> stations; ///< Stations to measure, percent of the chord.
    bool align = false;           ///< Align the chord lines of the sections.
    double tolerance = 0.0;       ///< The greatest allowed distance; 0 for none.

    bool best = false; ///< Search longer for the spline.
    bool symmetric = false;
    bool closed = false;

    std::string to;     ///< Format of the outputs; empty: determined by the name of the output.
    std::string output; ///< Name of the only output, "-" for standard output.
    std::string folder; ///< Folder of the outputs.
    std::string report; ///< Name of the report; empty for none.
    bool force = false; ///< Replace existing files.

    /// Number of new points on the curve, 0 to keep the points. For fit: number of control points,
    /// 0 for as few as hold the tolerance.
    int points = 0;
    std::string spacing = "curvature"; ///< Of the new points.
    int decimals = 8;                  ///< Of the written coordinates.
    bool reverse = false;
    bool close_gap = false;
    bool normalize = false;
    std::vector<double> openings; ///< Empty, or O-1 and O-2 in percent of the chord.
    std::vector<int> lep_points;  ///< Empty, or the counts of a paragliding profile.

    /// @name Pictures
    /// @{
    std::string size; ///< "WxH"; empty for the default width and the height of the content.
    bool nose = false;
    bool deviation = false;
    bool curvature = false;
    /// @}

    /// @name Drawings of ribs
    /// @{
    double allowance = 0.0;              ///< mm.
    std::vector<double> allowance_te;    ///< mm; empty: as the allowance.
    std::vector<double> allowance_mouth; ///< The same.
    std::string intake = "curve";
    double marks = 0.0; ///< Step along the surface, mm; 0 for none.
    std::string mark_at;
    std::string mark = "notch";
    std::vector<double> grain; ///< Degrees; empty: no grain.
    bool mirror = false;
    std::string text;
    bool text_strokes = false;
    double flatness = 0.01; ///< mm.
    std::string unit = "mm";
    std::string layer_names;
    std::string tile;
    std::string ribs;  ///< Name of a list of ribs.
    double gap = 20.0; ///< mm.
    /// @}
};

/// How a shell completes the value of an option.
enum class Completes { nothing, file, folder };

/// Where a value is stored. An int or a double is one number, a vector several.
using Target =
    std::variant<bool Options::*, int Options::*, double Options::*, std::string Options::*,
                 std::vector<int> Options::*, std::vector<double> Options::*>;

/// One row of the table.
struct Option {
    const char* name; ///< Long name without hyphens.
    char letter;      ///< Short name; 0 for none.
    /// Name of the value; empty for a flag. "A B" takes two words, "U,I,L" one word of three
    /// numbers, "X,..." one word of one or more numbers.
    const char* argument;
    const char* unit;     ///< Of the value; empty for none.
    const char* standard; ///< The default value; empty for none.
    const char* help;     ///< One or two sentences, without the last full stop.
    const char* verbs;    ///< The verbs that take the option, separated by blanks; "*" for all.
    Target target;
    double low = 0.0;  ///< Least allowed number.
    double high = 0.0; ///< Greatest allowed number.
    /// The allowed words; null for any.
    std::vector<std::string> (*choices)() = nullptr;
    Completes completes = Completes::nothing;
};

/// All options in the order of the help.
const std::vector<Option>& option_table();

/// The options of a verb, in the order of the table.
std::vector<const Option*> options_of(std::string_view verb);

/// Stores the words given for an option: none for a flag, else as many as its argument has.
/// @return why the words are refused, for example "'x' is not a number"; empty if they were stored
std::string store(const Option& option, const std::vector<std::string>& words, Options& options);

/// The number of words that the option takes.
int word_count(const Option& option);

/// A number of the table in the usual notation.
std::string number_text(double number);

/// The words of a list separated by blanks.
std::vector<std::string> words_of(std::string_view list);

} // namespace cli
