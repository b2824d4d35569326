// SPDX-FileCopyrightText: Aerolith developers
// Any text as an outline in memory.
#include "airfoil/airfoil.h"
#include "fuzzing/fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const QPolygonF outline = plainTextRead(text);
    REQUIRE(outline.size() <= text.size());
    REQUIRE(within_chord(outline));
    REQUIRE(identical(plainTextRead(text), outline));
    return 0;
}
