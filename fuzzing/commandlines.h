// SPDX-FileCopyrightText: Aerolith developers
// Makes command lines from bytes and runs them in this process.
#pragma once

#include <QByteArray>

#include <functional>
#include <string>
#include <utility>
#include <vector>

using Words = std::vector<std::string>;

/// The options of each verb. Each option is followed by the forms of its values.
const std::vector<std::pair<std::string, std::vector<Words>>>& verbs_of_grammar();

/// Numbers chosen by the input; 0 after its end.
class Choices {
public:
    explicit Choices(const QByteArray& given) : bytes(given) {}

    std::size_t below(std::size_t count) {
        const std::size_t choice =
            next < bytes.size() ? static_cast<unsigned char>(bytes[next]) : 0;
        ++next;
        return count == 0 ? 0 : choice % count;
    }
    bool more() const { return next < bytes.size(); }

private:
    const QByteArray bytes;
    qsizetype next = 0;
};

/// Chooses the file or folder for an option.
using NameOf = std::function<std::string(const std::string& option, Choices& choices)>;

/// Chooses names that read only standard input and discard all output.
std::string name_of_nothing(const std::string& option, Choices& choices);

/// Adds options with their values to @p words as long as there are choices.
Words with_options(Words words, const std::vector<Words>& options, Choices& choices,
                   const NameOf& name_of = name_of_nothing);

struct Result {
    int code = 0;
    QByteArray out;
    QByteArray err;
};

/// Runs @p words in this process with @p input as standard input.
Result run_here(const Words& words, const QByteArray& input);

/// Requires an exit code of the program, a reason for wrong words, and no control characters.
void require_decent(const Result& result);

/// Runs @p words twice. Requires equal results that require_decent() accepts.
Result checked_run(const Words& words, const QByteArray& input);
