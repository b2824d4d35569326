// SPDX-FileCopyrightText: Aerolith developers
// Random command lines, made from the grammar of the option table, with any bytes as standard
// input. The bytes before the first null character choose the words; the rest is the input.
#include "fuzzing/commandlines.h"
#include "fuzzing/fuzzing.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

bool has(const Words& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype end = bytes.indexOf('\0');
    Choices choices(end < 0 ? bytes : bytes.left(end));
    const auto& verbs = verbs_of_grammar();
    const auto& [verb, options] = verbs[choices.below(verbs.size())];
    const Words words = with_options({verb, "-"}, options, choices);

    const Result result = checked_run(words, end < 0 ? QByteArray() : bytes.mid(end + 1));
    // These words can also be values; the check is skipped then.
    if (result.code != 2 && has(words, "--json") && !has(words, "--help") &&
        result.out.startsWith('['))
        REQUIRE(QJsonDocument::fromJson(result.out).isArray());
    return 0;
}
