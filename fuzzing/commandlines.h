// SPDX-FileCopyrightText: Aerolith developers
// Command lines out of bytes, and their runs in this process.
#pragma once

#include <QByteArray>

#include <functional>
#include <string>
#include <utility>
#include <vector>

using Words = std::vector<std::string>;

/// The option lines of each verb: the option and the forms of its values.
const std::vector<std::pair<std::string, std::vector<Words>>>& verbs_of_grammar();

/// Numbers that the input chooses, 0 when they are used up.
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

/// The name of a file or folder that an option gets.
using NameOf = std::function<std::string(const std::string& option, Choices& choices)>;

/// Names by which nothing is read but standard input, and nothing is kept of what is written.
std::string name_of_nothing(const std::string& option, Choices& choices);

/// @p words with options out of @p options and values for them, as long as there are choices.
Words with_options(Words words, const std::vector<Words>& options, Choices& choices,
                   const NameOf& name_of = name_of_nothing);

struct Result {
    int code = 0;
    QByteArray out;
    QByteArray err;
};

/// The run of @p words in this process over @p input as standard input.
Result run_here(const Words& words, const QByteArray& input);

/// It ends with a code of the program, says why words are wrong, and shows no control characters.
void require_decent(const Result& result);

/// The run of @p words, which is decent and comes out the same a second time.
Result checked_run(const Words& words, const QByteArray& input);
