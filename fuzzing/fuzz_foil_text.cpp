// SPDX-FileCopyrightText: Aerolith developers
// Any bytes as a text file that is cleaned line by line and split into fields.
#include "airfoil/airfoil.h"
#include "fuzzing/fuzzing.h"

#include <QStringList>

namespace {

void require_sound_line(const QString& line) {
    const QString cleaned = clean(line);
    REQUIRE(clean(cleaned) == cleaned);
    REQUIRE(cleaned.size() <= line.size());
    REQUIRE(!cleaned.contains(QLatin1Char('\t')) && !cleaned.contains(QLatin1Char(',')));
    REQUIRE(cleaned == cleaned.trimmed());
    REQUIRE(Repair_NumString(cleaned).size() <= 2 * cleaned.size());

    QString fields[3];
    FindNumericSubStrings(cleaned, fields);
    for (const QString& field : fields) {
        for (const QChar c : field)
            REQUIRE(c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char('-'));
    }
    REQUIRE(fields[0].size() + fields[1].size() + fields[2].size() <= cleaned.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const MemoryFile file(bytes);
    const QString text = FoilText_Read(file.name());
    REQUIRE(text.isEmpty() || text.endsWith(QLatin1Char('\n')));
    REQUIRE(!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('\t')));
    REQUIRE(text.count(QLatin1Char('\n')) <= bytes.count('\n') + 1);
    REQUIRE(FoilText_Read(file.name()) == text);
    for (const QString& line : QString::fromUtf8(bytes).split(QLatin1Char('\n')))
        require_sound_line(line);
    return 0;
}
