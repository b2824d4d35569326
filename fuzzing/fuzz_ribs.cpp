// SPDX-FileCopyrightText: Aerolith developers
// Any list of ribs, drawn with random options. The bytes before the first null character choose the
// options; the rest is the list, in which @ stands for the name of a valid section file.
#include "cli/rib_list.h"
#include "fuzzing/commandlines.h"
#include "fuzzing/fuzzing.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>

namespace {

// The options of drawings are consecutive.
std::vector<Words> options_of_drawings() {
    std::vector<Words> options;
    for (const auto& [verb, lines] : verbs_of_grammar()) {
        const auto line_of = [&lines = lines](const char* name) {
            return std::find_if(lines.begin(), lines.end(),
                                [name](const Words& line) { return line[0] == name; });
        };
        if (verb == "convert")
            options.assign(line_of("--chord"), line_of("--tile"));
    }
    REQUIRE(options.size() > 10);
    return options;
}

// Whether the ribs are few enough to be drawn in time.
bool is_short(const QByteArray& list) {
    int count = 0;
    for (const cli::RibRow& row : cli::read_rib_list(list).rows)
        count += row.count;
    return count <= 3;
}

// Requires pairs of lines: a code and its value, which is a number for coordinates and lengths.
void require_dxf(const QByteArray& file) {
    REQUIRE(file.endsWith("  0\nEOF\n"));
    const QByteArrayList lines = file.split('\n');
    REQUIRE(lines.size() % 2 == 1);
    for (qsizetype i = 0; i + 1 < lines.size(); i += 2) {
        bool good = false;
        const int code = lines[i].trimmed().toInt(&good);
        REQUIRE(good);
        if (code >= 10 && code < 60)
            REQUIRE(std::isfinite(lines[i + 1].toDouble(&good)) && good);
    }
}

void require_svg(const QByteArray& file) {
    static const QRegularExpression no_number(QStringLiteral("nan|inf"));
    QXmlStreamReader reader(file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        for (const char* name : {"d", "x", "y", "cx", "cy", "r", "font-size", "viewBox"})
            REQUIRE(!reader.attributes().value(QLatin1String(name)).contains(no_number));
    }
    REQUIRE(!reader.hasError());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::vector<Words> options = options_of_drawings();
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype end = bytes.indexOf('\0');
    const QByteArray list = bytes.mid(end + 1).replace('@', GOOD_SECTION);
    if (end < 0 || !is_short(list))
        return 0;
    Choices choices(bytes.left(end));
    const bool as_dxf = choices.below(2) == 0;
    const Result result = checked_run(
        with_options({"convert", "--ribs", "-", "--output", "-", "--to", as_dxf ? "dxf" : "svg"},
                     options, choices),
        list);
    if (result.out.isEmpty()) {
        REQUIRE(result.code != 0 && !result.err.isEmpty());
        return 0;
    }
    if (as_dxf)
        require_dxf(result.out);
    else
        require_svg(result.out);
    return 0;
}
