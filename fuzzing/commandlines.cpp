// SPDX-FileCopyrightText: Aerolith developers
#include "fuzzing/commandlines.h"

#include "cli/documents.h"
#include "cli/options.h"
#include "cli/run.h"
#include "fuzzing/fuzzing.h"

#include <algorithm>
#include <map>

#include <sys/mman.h>
#include <unistd.h>

namespace {

std::string value_of(const std::string& option, const std::string& form, Choices& choices,
                     const NameOf& name_of) {
    const std::string inside = form.substr(1, form.size() - 2);
    static const std::map<std::string, Words> texts = {
        {"--text", {"{name} {chord} {n}", "R/7-.", "\xff<&>\xc3\xa4"}},
        {"--layer-names", {"CUT=Schnitt,STITCH=Naht", "CUT=STITCH", "TEXT="}},
        {"--mark-at", {"lower:9.5,30", "upper:0,100;lower:2,1.1,4.25", "lower:"}},
        {"--size", {"180x120", "720x240", "1x1", "x"}},
    };
    const auto text = texts.find(option);
    if (text == texts.end() && (inside == "file" || inside == "folder"))
        return name_of(option, choices);
    static const Words odd = {"", "-1", "nan", "1e999", "\x1b[2J", "0.5.5", "x", "--"};
    if (choices.below(16) == 15)
        return odd[choices.below(odd.size())];
    if (text != texts.end())
        return text->second[choices.below(text->second.size())];
    const std::size_t dots = inside.find("..");
    if (dots == std::string::npos) {
        Words words = {""};
        for (const char c : inside) {
            if (c == '|')
                words.emplace_back();
            else
                words.back().push_back(c);
        }
        const std::string word = words[choices.below(words.size())];
        // These formats need an application object.
        return word == "pdf" || word == "png" ? words.front() : word;
    }
    const Words numbers = {inside.substr(0, dots), "1", "2", "5", "9.5", "20", "60", "200"};
    std::string list = numbers[choices.below(numbers.size())];
    if (inside.find(',') != std::string::npos) {
        for (std::size_t i = choices.below(4); i > 0; --i)
            list += "," + numbers[choices.below(numbers.size())];
    }
    return list;
}

} // namespace

const std::vector<std::pair<std::string, std::vector<Words>>>& verbs_of_grammar() {
    static const auto verbs = [] {
        std::vector<std::pair<std::string, std::vector<Words>>> read;
        std::string text = cli::grammar();
        for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
            const Words words = cli::words_of(text.substr(0, end));
            text.erase(0, end + 1);
            if (words[0] == "verb")
                read.push_back({words[1], {}});
            else
                read.back().second.push_back(words);
        }
        return read;
    }();
    return verbs;
}

std::string name_of_nothing(const std::string& option, Choices& choices) {
    return choices.below(4) == 0  ? "/proc/none/x"
           : option == "--output" ? "-"
           : option == "--report" ? "/dev/null"
                                  : "/proc/none/x";
}

Words with_options(Words words, const std::vector<Words>& options, Choices& choices,
                   const NameOf& name_of) {
    while (choices.more() && words.size() < 20) {
        const Words& option = options[choices.below(options.size())];
        words.push_back(option[0]);
        for (std::size_t i = 1; i < option.size(); ++i)
            words.push_back(value_of(option[0], option[i], choices, name_of));
    }
    return words;
}

Result run_here(const Words& words, const QByteArray& input) {
    Result result;
    cli::Streams streams;
    streams.in = ::memfd_create("input", MFD_CLOEXEC);
    REQUIRE(::write(streams.in, input.constData(), std::size_t(input.size())) == input.size());
    ::lseek(streams.in, 0, SEEK_SET);
    const auto into = [](QByteArray& bytes) {
        return [&bytes](std::string_view text) {
            bytes.append(text.data(), qsizetype(text.size()));
            return 0;
        };
    };
    streams.out = into(result.out);
    streams.err = into(result.err);
    result.code = int(cli::run(words, streams));
    ::close(streams.in);
    return result;
}

void require_decent(const Result& result) {
    REQUIRE(result.code >= 0 && result.code <= 2);
    REQUIRE(result.code != 2 || (result.out.isEmpty() && !result.err.isEmpty()));
    REQUIRE(std::none_of(result.err.begin(), result.err.end(),
                         [](char c) { return static_cast<unsigned char>(c) < ' ' && c != '\n'; }));
}

Result checked_run(const Words& words, const QByteArray& input) {
    Result result = run_here(words, input);
    require_decent(result);
    const Result again = run_here(words, input);
    REQUIRE(again.code == result.code && again.out == result.out && again.err == result.err);
    return result;
}
