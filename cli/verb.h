// SPDX-FileCopyrightText: Aerolith developers
// The interface of a verb. To add one:
//
// 1. Add its options to the table in optiontable.cpp, and their values to Options. Each row names
//    the verbs that take the option.
// 2. Add cli/verb_<name>.cpp with a class that derives from Work, and a `const Verb verb_<name>`.
// 3. Add `extern const Verb verb_<name>;` and its address to verbs.cpp, the file to CMakeLists.txt,
//    and a schema of its JSON as docs/schemas/<name>.json.
// 4. Add rows to tests/cli. Help, manual page, completions and fuzz grammar follow automatically.
//
// A verb prints nothing and opens nothing. It takes the bytes of a file, and returns texts, a JSON
// object and possibly the bytes of an output. Inputs, jobs, printing, writing and exit codes are in
// run.cpp.
#pragma once

#include "cli/inputs.h"
#include "cli/options.h"
#include "cli/report_row.h"
#include "tables/table.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <any>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// The result of a verb for one input.
struct Outcome {
    std::string text;    ///< Whole lines for people; printed on standard output without --json.
    QJsonObject json;    ///< The same for programs; the caller adds "path".
    std::string notes;   ///< Whole lines for standard error.
    bool failed = false; ///< Whether the exit code is 1.
    std::optional<QByteArray> output{}; ///< The bytes to write, for a verb that writes files.
    std::string summary_key{};          ///< A key for the counts of collect().
    std::any kept{};                    ///< Data for collect().
    std::optional<ReportRow> row{};     ///< The row in a report, if there are results.
};

struct Source;

/// The outcome of a readable input, with its findings and the JSON keys that most verbs share.
/// @param layout  a name of tables::layout_names(), "spl" for a spline
/// @param points  number of points of the outline, or of control points
/// @param is_done whether the verb has a result
Outcome outcome_of(const Source& source, const QString& layout, qsizetype points,
                   const QList<tables::Finding>& findings, bool is_done);

/// One input for a verb.
struct Source {
    const Input& input;
    QByteArray bytes;
    std::string name;   ///< The name, escaped for display.
    std::string output; ///< Name of the output, bytes; empty for verbs without outputs.
};

/// The work of one run of a verb with its options.
class Work {
public:
    Work() = default;
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    virtual ~Work() = default;

    /// Why the options cannot be combined; empty if they can.
    virtual std::string refusal() const { return {}; }

    /// Why the options do not suit this number of inputs; empty if they do.
    virtual std::string refusal_of(std::size_t /*inputs*/) const { return {}; }

    /// Whether the first input is a reference for the others, with no result of its own.
    virtual bool takes_reference() const { return false; }

    /// Takes the reference; called once, before process().
    /// @return whole lines for standard error; empty for none
    virtual std::string take_reference(const Source& /*source*/) { return {}; }

    /// Whether the reference can be used. If not, the run ends with exit code 1.
    virtual bool has_reference() const { return true; }

    /// The extension of the outputs, with its point. Empty for a verb that does not write one file
    /// for each input.
    virtual std::string extension() const { return {}; }

    /// Whether finish() makes one output from all inputs.
    virtual bool makes_one_output() const { return false; }

    /// The output of all collected inputs, for a verb that makes one output.
    virtual Outcome finish(const std::string& /*output*/) const { return {}; }

    /// Works on one input. Called on several threads at the same time. Throws only if memory runs
    /// out.
    virtual Outcome process(const Source& source) const = 0;

    /// The outcome of an input that could not be read.
    virtual Outcome unreadable(const Source& source, const std::string& error) const;

    /// Collects each outcome, in the order of the inputs, before it is printed.
    virtual void collect(const Outcome& /*outcome*/) {}

    /// The style of the report. Called only with Options::report; then process() also fills the
    /// rows.
    virtual ReportStyle report_style() const { return {}; }

    /// Whole lines for standard error at the end of the run; empty for none.
    virtual std::string summary() const { return {}; }
};

/// Creates the work of the class @p T, as a value for Verb::make.
template<class T>
std::unique_ptr<Work> make_work(const Options& options) {
    return std::make_unique<T>(options);
}

/// One row of the table of verbs.
struct Verb {
    const char* name;
    const char* summary;     ///< One line, no full stop.
    const char* inputs;      ///< For the usage, for example "FILE...".
    const char* description; ///< Sentences for the help and the manual page.
    const char* example;     ///< A command line without the program name.
    std::unique_ptr<Work> (*make)(const Options& options);
};

/// All verbs in the order of the help.
const std::vector<const Verb*>& verbs();

/// The verb with this name; null if there is none.
const Verb* verb_named(const std::string& name);

} // namespace cli
