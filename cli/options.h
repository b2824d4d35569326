// SPDX-FileCopyrightText: Aerolith developers
// The options of all verbs: the record they are stored in, and the one table of them. The
// parser, the help, the manual page, the completions and the fuzz grammar are walks over it.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cli {

/// What was typed, checked one by one: numbers within their range, choices known, nothing opened.
struct Options {
    std::vector<std::string> files; ///< Names as they were given, bytes.
    std::string files_from;         ///< Name of a list of files, "-" for standard input.
    bool null_separated = false;    ///< The names in it end with a null character.
    int jobs = 0;                   ///< Files worked on at a time, 0 for one a processor.
    bool json = false;
    bool help = false;
    int width = 0; ///< Of the terminal that texts are for; 0 for no terminal.
    bool strict = false;

    std::string layout; ///< Of the inputs; empty: told from their content.
    int element = 0;    ///< Of several in a file, counted from 1; 0 for none picked.

    double chord = 0.0;           ///< Of the window's frame, mm; 0 for lengths in chords.
    std::vector<double> stations; ///< Vertical cuts wanted, percent of the chord.
    bool align = false;           ///< The other section is moved onto the reference.
    double tolerance = 0.0;       ///< The greatest distance allowed; 0 for any.

    bool best = false; ///< A longer search for the spline.
    bool symmetric = false;
    bool closed = false;

    std::string to;     ///< Format of the outputs; empty: told from the name of the one output.
    std::string output; ///< Name of the one output, "-" for standard output.
    std::string folder; ///< Folder of the outputs.
    std::string report; ///< Name of the page of all results; empty for none.
    bool force = false; ///< Existing files may be replaced.

    /// New points on the curve, 0 for those of the file; of a fit the control points, 0 for as
    /// few as hold the tolerance.
    int points = 0;
    std::string spacing = "curvature"; ///< How new points are spread.
    int decimals = 8;                  ///< Of coordinates that are written.
    bool reverse = false;
    bool close_gap = false;
    bool normalize = false;
    std::vector<double> openings; ///< None, or O-1 and O-2 in percent of the chord.
    std::vector<int> lep_points;  ///< None, or the counts of a paragliding profile.

    /// @name Pictures
    /// @{
    std::string size; ///< "WxH"; empty: as high as the content.
    bool nose = false;
    bool deviation = false;
    bool curvature = false;
    /// @}

    /// @name Drawings of ribs
    /// @{
    double allowance = 0.0;              ///< mm.
    std::vector<double> allowance_te;    ///< mm; none: as the allowance.
    std::vector<double> allowance_mouth; ///< The same.
    std::string intake = "curve";
    double marks = 0.0; ///< Step along the surface, mm; 0 for none.
    std::string mark_at;
    std::string mark = "notch";
    std::vector<double> grain; ///< Degrees; none: no grain.
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

/// What completes the value of an option in a shell.
enum class Completes { nothing, file, folder };

/// Where a value goes. An int or a double is one number, a vector several of them.
using Target =
    std::variant<bool Options::*, int Options::*, double Options::*, std::string Options::*,
                 std::vector<int> Options::*, std::vector<double> Options::*>;

/// One row of the table.
struct Option {
    const char* name; ///< Long name without its hyphens.
    char letter;      ///< Short name, 0 for none.
    /// Name of the value, empty for an option that is on or off. "A B" takes two words, "U,I,L"
    /// one word of three numbers, "X,..." one word of one number or more.
    const char* argument;
    const char* unit;     ///< Of the value, empty for none.
    const char* standard; ///< The value that it has when it is not given, empty for none.
    const char* help;     ///< One sentence or two, without a full stop behind the last.
    const char* verbs;    ///< The verbs that take it, parted by blanks; "*" for all.
    Target target;
    double low = 0.0;  ///< Least number allowed.
    double high = 0.0; ///< Greatest number allowed.
    /// The words allowed, nothing for any.
    std::vector<std::string> (*choices)() = nullptr;
    Completes completes = Completes::nothing;
};

/// All options in the order of the help.
const std::vector<Option>& option_table();

/// The options of a verb, in the order of the table.
std::vector<const Option*> options_of(std::string_view verb);

/// Stores the words given for an option: none for one that is on or off, else as many as its
/// argument has.
/// @return why they are refused, for instance "'x' is no number"; empty when they were stored
std::string store(const Option& option, const std::vector<std::string>& words, Options& options);

/// The number of words that an option takes.
int word_count(const Option& option);

/// A number of the table as people write it.
std::string number_text(double number);

/// The words of a list that is parted by blanks.
std::vector<std::string> words_of(std::string_view list);

} // namespace cli
