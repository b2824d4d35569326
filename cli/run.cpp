// SPDX-FileCopyrightText: Aerolith developers
#include "cli/run.h"

#include "cli/console.h"
#include "cli/help.h"
#include "cli/inputs.h"
#include "cli/jobs.h"
#include "cli/outputs.h"
#include "cli/parse.h"
#include "cli/report.h"
#include "cli/shown.h"
#include "cli/verb.h"

#include <QJsonDocument>

#include <algorithm>
#include <memory>
#include <new>
#include <optional>

namespace cli {

namespace {

ExitCode refuse(Console& console, const std::string& where, const std::string& reason) {
    const std::string program = "aerolith-cli" + (where.empty() ? "" : " " + where);
    console.err(wrapped(program + ": " + reason, console.streams().width, 0));
    console.err(wrapped("Try '" + program + " --help'.", console.streams().width, 0));
    return ExitCode::usage;
}

QByteArray json_line(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray json_line(const Input& input, const QJsonObject& results) {
    QJsonObject object = results;
    const std::string name = shown(input.path);
    object.insert(QStringLiteral("path"), QString::fromStdString(name));
    if (name != input.path)
        object.insert(QStringLiteral("path_hex"),
                      QString::fromLatin1(QByteArray::fromStdString(input.path).toHex()));
    return json_line(object);
}

// One run of a verb over all its inputs.
class Run {
public:
    Run(const Verb& verb, const Options& given, Console& out)
        : options(given), console(out), work(verb.make(given)) {}

    // Checks everything that can be wrong before the first file is read. Returns why the run is
    // refused; empty if it is not.
    std::string plan() {
        std::string refusal = work->refusal();
        if (!refusal.empty())
            return refusal;
        if (options.null_separated && options.files_from.empty())
            return "--null needs --files-from";
        Inputs found = expand_inputs(options, console.streams().in);
        if (!found.refusal.empty())
            return found.refusal;
        if (found.all.empty())
            return options.files.empty() && options.files_from.empty() ? "no files given"
                                                                       : "no files found";
        inputs = std::move(found.all);
        refusal = work->refusal_of(inputs.size());
        if (!refusal.empty())
            return refusal;
        if (work->takes_reference()) {
            if (inputs.size() < 2 || options.files.empty() ||
                inputs.front().path != options.files.front())
                return "expected a reference file and at least one more file";
            reference = inputs.front();
            inputs.erase(inputs.begin());
        }
        if (!work->extension().empty() || work->makes_one_output()) {
            Outputs planned = work->makes_one_output()
                                  ? plan_one_output(options, inputs)
                                  : plan_outputs(options, inputs, work->extension());
            if (!planned.refusal.empty())
                return planned.refusal;
            outputs = std::move(planned.names);
        }
        return plan_report();
    }

    ExitCode execute() {
        const int jobs = options.jobs > 0 ? options.jobs : console.streams().processors;
        if (reference && !take_reference())
            return ExitCode::failure;
        if (options.json)
            console.out("[");
        run_in_order<Outcome>(
            inputs.size(), jobs, [&](std::size_t i) { return outcome_of(i); },
            [&](std::size_t i, Outcome& outcome) { return take(i, outcome); });
        if (work->makes_one_output())
            finish();
        if (options.json)
            console.out("\n]\n");
        write_report();
        console.err(wrapped(work->summary(), console.streams().width, 0));
        return failed || console.failed() ? ExitCode::failure : ExitCode::success;
    }

private:
    std::string plan_report() {
        if (options.report.empty())
            return options.force && outputs.empty() ? "--force needs --report" : "";
        std::vector<std::string> read = {options.files_from};
        for (const Input& input : inputs)
            read.push_back(input.path);
        if (reference)
            read.push_back(reference->path);
        report.emplace(work->report_style());
        return report_refusal(options, read, outputs);
    }

    void write_report() {
        if (!report)
            return;
        // Folders inside --dir may not exist yet: if no output was written, none was created.
        const bool makes_folder =
            !options.folder.empty() && options.report.find('/') != std::string::npos;
        std::string error;
        try {
            error = write_output(options.report, report->bytes(), makes_folder);
        } catch (const std::bad_alloc&) {
            error = "not enough memory";
        }
        if (error.empty())
            return;
        failed = true;
        console.err(shown(options.report) + ": " + error + "\n");
    }

    // Reads the reference. Returns whether it can be used.
    bool take_reference() {
        const std::string name = shown(reference->path);
        const Content content = read_input(*reference, console.streams().in);
        if (!content.error.empty()) {
            console.err(name + ": " + content.error + "\n");
            return false;
        }
        console.err(work->take_reference({*reference, content.bytes, name, {}}));
        return work->has_reference();
    }

    Outcome outcome_of(std::size_t i) const {
        const Input& input = inputs[i];
        Source source{input, {}, shown(input.path), output_of(i)};
        try {
            Content content = read_input(input, console.streams().in);
            if (!content.error.empty())
                return work->unreadable(source, content.error);
            source.bytes = content.bytes;
            Outcome outcome = work->process(source);
            write(source.output, outcome);
            return outcome;
        } catch (const std::bad_alloc&) {
            return work->unreadable(source, "not enough memory");
        }
    }

    // Name of the output of input @p i; empty for none.
    std::string output_of(std::size_t i) const {
        return outputs.empty() || work->makes_one_output() ? std::string() : outputs[i];
    }

    void write(const std::string& output, Outcome& outcome) const {
        if (!outcome.output || output == "-")
            return;
        const std::string error = write_output(output, *outcome.output, !options.folder.empty());
        outcome.output.reset();
        if (error.empty())
            return;
        outcome.failed = true;
        outcome.text.clear();
        outcome.notes += shown(output) + ": " + error + "\n";
        outcome.json.insert(QStringLiteral("error"), QString::fromStdString(error));
    }

    bool take(std::size_t i, Outcome& outcome) {
        work->collect(outcome);
        if (report)
            report->add(shown(inputs[i].path), outcome);
        print(outcome, i == 0, json_line(inputs[i], outcome.json));
        console.progress(i + 1, inputs.size());
        // Files are still written after standard output has failed.
        return !console.failed() || !outputs.empty() || report;
    }

    void finish() {
        Outcome outcome;
        try {
            outcome = work->finish(outputs.front());
            write(outputs.front(), outcome);
        } catch (const std::bad_alloc&) {
            outcome = {};
            outcome.failed = true;
            outcome.notes = shown(outputs.front()) + ": not enough memory\n";
        }
        print(outcome, false, json_line(outcome.json));
    }

    void print(const Outcome& outcome, bool is_first, const QByteArray& json) {
        failed = failed || outcome.failed;
        console.err(outcome.notes);
        if (outcome.output)
            console.out({outcome.output->constData(), std::size_t(outcome.output->size())});
        const bool is_file_on_out = outcome.output || (!outputs.empty() && outputs.front() == "-");
        if (options.json)
            console.out((is_first ? "\n" : ",\n") + json.toStdString());
        else if (is_file_on_out)
            console.err(outcome.text);
        else
            console.out(outcome.text);
    }

    const Options& options;
    Console& console;
    std::unique_ptr<Work> work;
    std::optional<Input> reference;
    std::vector<Input> inputs;
    std::vector<std::string> outputs;
    std::optional<Report> report;
    bool failed = false;
};

ExitCode run_verb(const Verb& verb, const std::vector<std::string>& arguments, Console& console) {
    Parsed parsed = parse(verb, arguments);
    if (!parsed.refusal.empty())
        return refuse(console, verb.name, parsed.refusal);
    if (parsed.options.help) {
        console.out(verb_help(verb, console.streams().width));
        return console.failed() ? ExitCode::failure : ExitCode::success;
    }
    parsed.options.width = console.streams().out_is_terminal ? console.streams().width : 0;
    if (!parsed.options.ribs.empty()) {
        if (!parsed.options.files.empty() || !parsed.options.files_from.empty())
            return refuse(console, verb.name,
                          "--ribs reads its files from the list; do not name others");
        parsed.options.files = {parsed.options.ribs};
    }
    Run whole(verb, parsed.options, console);
    const std::string refusal = whole.plan();
    return refusal.empty() ? whole.execute() : refuse(console, verb.name, refusal);
}

} // namespace

ExitCode run(const std::vector<std::string>& arguments, const Streams& streams) {
    Console console(streams);
    const std::string first = arguments.empty() ? "--help" : arguments.front();
    if (first == "--version") {
        console.out("aerolith-cli " AEROLITH_VERSION "\n");
        return console.failed() ? ExitCode::failure : ExitCode::success;
    }
    if (first == "--help" || first == "-h") {
        console.out(program_help(streams.width));
        return console.failed() ? ExitCode::failure : ExitCode::success;
    }
    if (const Verb* verb = verb_named(first))
        return run_verb(*verb, {arguments.begin() + 1, arguments.end()}, console);

    std::vector<std::string> known;
    for (const Verb* verb : verbs())
        known.emplace_back(verb->name);
    if (first[0] == '-')
        return refuse(console, {}, "expected a verb before '" + shown(first) + "'");
    return refuse(console, {}, "unknown verb '" + shown(first) + "'" + suggestion(first, known));
}

} // namespace cli
