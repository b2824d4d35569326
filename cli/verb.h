// SPDX-FileCopyrightText: Aerolith developers
// What a verb is, and how one is added:
//
// 1. Its options become rows of the table in optiontable.cpp, and members of Options where
//    they store. A row names the verbs that take it.
// 2. cli/verb_<name>.cpp holds a class that derives from Work, and a `const Verb verb_<name>`.
// 3. `extern const Verb verb_<name>;` and its address go into verbs.cpp, the file into
//    CMakeLists.txt, a schema of its JSON into docs/schemas/<name>.json.
// 4. tests/cli gets rows for it. Help, manual page, completions and fuzz grammar follow by
//    themselves.
//
// A verb prints nothing and opens nothing: it gets bytes and gives texts, an object and perhaps
// the bytes of an output. Inputs, jobs, printing, writing and exit codes are in run.cpp.
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

/// What a verb says of one input.
struct Outcome {
    std::string text;    ///< Whole lines for people, on standard output unless with --json.
    QJsonObject json;    ///< The same for programs; "path" is put in by the caller.
    std::string notes;   ///< Whole lines, on standard error.
    bool failed = false; ///< The run ends with 1.
    std::optional<QByteArray> output{}; ///< What is to be written, for a verb that writes files.
    std::string summary_key{};          ///< Under which collect() may count it.
    std::any kept{};                    ///< What collect() may keep of it.
    std::optional<ReportRow> row{};     ///< For a report; none where there are no results.
};

struct Source;

/// The outcome of an input that was read: its findings, and the keys that most verbs share.
/// @param layout  a name of tables::layout_names(), "spl" for a spline
/// @param points  of the outline, or control points
/// @param is_done whether the verb has a result
Outcome outcome_of(const Source& source, const QString& layout, qsizetype points,
                   const QList<tables::Finding>& findings, bool is_done);

/// One input as a verb gets it.
struct Source {
    const Input& input;
    QByteArray bytes;
    std::string name;   ///< The name as it may be shown.
    std::string output; ///< Name of the output, bytes; empty for verbs that write none.
};

/// The work of one run of a verb, made from its options.
class Work {
public:
    Work() = default;
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    virtual ~Work() = default;

    /// Why the options cannot be taken together; empty when they can.
    virtual std::string refusal() const { return {}; }

    /// Why the options cannot be taken for that many inputs; empty when they can.
    virtual std::string refusal_of(std::size_t /*inputs*/) const { return {}; }

    /// Whether the first input is what the others are held against, and is not worked on itself.
    virtual bool takes_reference() const { return false; }

    /// Takes the reference, once, before any other input is worked on.
    /// @return whole lines for standard error, empty for none
    virtual std::string take_reference(const Source& /*source*/) { return {}; }

    /// Whether the reference can be used; without it the run ends with 1.
    virtual bool has_reference() const { return true; }

    /// The ending of outputs below a folder, with its point; empty for a verb that writes no
    /// file for each input.
    virtual std::string ending() const { return {}; }

    /// Whether all inputs together give one output, which finish() makes.
    virtual bool makes_one_output() const { return false; }

    /// The output of all inputs that were collected, for a verb that makes one.
    virtual Outcome finish(const std::string& /*output*/) const { return {}; }

    /// Works on one input. Called on several threads at a time; throws nothing but what memory
    /// throws.
    virtual Outcome process(const Source& source) const = 0;

    /// What is said of an input that could not be read.
    virtual Outcome unreadable(const Source& source, const std::string& error) const;

    /// Sees each outcome in the order of the inputs, before it is printed.
    virtual void collect(const Outcome& /*outcome*/) {}

    /// What its report looks like; asked only with Options::report, by which process() knows
    /// that rows are wanted.
    virtual ReportStyle report_style() const { return {}; }

    /// Whole lines on standard error when all is done, empty for none.
    virtual std::string summary() const { return {}; }
};

/// The work of the type @p T; what Verb::make asks for.
template<class T>
std::unique_ptr<Work> make_work(const Options& options) {
    return std::make_unique<T>(options);
}

/// One row of the table of verbs.
struct Verb {
    const char* name;
    const char* summary;     ///< One line, no full stop.
    const char* inputs;      ///< As the usage names them, for instance "FILE...".
    const char* description; ///< Some sentences for the help and the manual page.
    const char* example;     ///< A command line, without the name of the program.
    std::unique_ptr<Work> (*make)(const Options& options);
};

/// All verbs in the order of the help.
const std::vector<const Verb*>& verbs();

/// The verb of that name, null for none.
const Verb* verb_named(const std::string& name);

} // namespace cli
