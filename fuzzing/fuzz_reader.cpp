// SPDX-FileCopyrightText: Aerolith developers
// Any bytes as a coordinate table of one layout. FUZZED_READER names the reader.
#include "airfoil/airfoil.h"
#include "fuzzing/fuzzing.h"

#include <cmath>
#include <string_view>

namespace {

bool has_single_precision(double value) {
    return std::isfinite(value) && double(float(value)) == value;
}

void require_layout(std::string_view reader, const QPolygonF& outline) {
    const qsizetype n = outline.size();
    if (reader == "Read_Eppler") {
        REQUIRE(n % 2 == 0);
        for (qsizetype i = 0; i < n / 2; ++i)
            REQUIRE(outline[i].x() == outline[n - 1 - i].x());
    } else if (reader == "Read_Symetric") {
        REQUIRE(n == 0 || n % 2 == 1);
        for (qsizetype i = 0; i < n / 2; ++i) {
            REQUIRE(outline[i].x() == outline[n - 1 - i].x());
            REQUIRE(outline[i].y() == -outline[n - 1 - i].y());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const MemoryFile file(bytes);
    const QPolygonF outline = FUZZED_READER(file.name());
    for (const QPointF& point : outline)
        REQUIRE(has_single_precision(point.x()) && has_single_precision(point.y()));
    require_layout(FUZZED_READER_NAME, outline);
    REQUIRE(identical(FUZZED_READER(file.name()), outline));
    // A line feed at the end adds no line.
    if (!bytes.isEmpty() && bytes.back() == '\n' && uint8_t(bytes.front()) < 0x80) {
        const MemoryFile without(bytes.chopped(1));
        if (bytes.size() < 2 || bytes.at(bytes.size() - 2) >= 0)
            REQUIRE(identical(FUZZED_READER(without.name()), outline));
    }
    return 0;
}
