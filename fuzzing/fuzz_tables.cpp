// SPDX-FileCopyrightText: Aerolith developers
// Any bytes as a coordinate table, with any options; what was read is written and read again.
#include "fuzzing/fuzzing.h"
#include "sections/shape.h"
#include "tables/write.h"

#include <algorithm>
#include <cmath>

namespace {

using tables::Finding;
using tables::Table;

// The last byte chooses the options; a line feed chooses none.
tables::ReadOptions options_of(const QByteArray& bytes) {
    tables::ReadOptions options;
    if (bytes.isEmpty() || bytes.back() == '\n')
        return options;
    const QStringList names = tables::layout_names();
    const int choice = static_cast<unsigned char>(bytes.back());
    options.layout = names.value(choice % (2 * int(names.size())));
    options.element = choice / 64;
    return options;
}

void require_sound(const Table& table, int lines) {
    for (const Finding& finding : table.findings) {
        REQUIRE(!finding.text.isEmpty());
        REQUIRE(finding.line >= 0 && finding.line <= lines);
    }
    REQUIRE(table.candidates.size() == (table.candidates.isEmpty() ? 0 : 2));
    REQUIRE(std::size_t(table.points.size()) == table.lines.size());
    if (!table.readable())
        return;
    REQUIRE(table.candidates.isEmpty());
    REQUIRE(tables::layout_names().contains(table.layout));
    REQUIRE(table.points.size() >= 6);
    for (const QPointF& point : table.points)
        REQUIRE(std::isfinite(point.x()) && std::isfinite(point.y()));
    for (const int line : table.lines)
        REQUIRE(line >= 1 && line <= lines);
    if (table.openings)
        REQUIRE(std::isfinite(table.openings->start) && std::isfinite(table.openings->end));
}

// Requires that the window reads what is written for it to within a billionth, or that writing is
// refused with a reason.
void require_written_is_read(const Table& table) {
    tables::WriteOptions options;
    options.decimals = 12;
    const tables::Written written = tables::write(table, tables::Format::window, options);
    REQUIRE(written.ok() || !written.findings.isEmpty());
    if (!written.ok())
        return;
    const Table again = tables::read(written.bytes);
    if (!again.readable())
        return;
    const tables::Written twice = tables::write(again, tables::Format::window, options);
    REQUIRE(twice.ok());
    REQUIRE(again.points.size() == table.points.size());
    // The title is not compared: "200 points ! of one side" reads back as a count with a remark.
    const auto rows_of = [](const QByteArray& bytes) { return bytes.mid(bytes.indexOf('\n')); };
    REQUIRE(rows_of(twice.bytes) == rows_of(written.bytes));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const tables::ReadOptions options = options_of(bytes);
    const Table table = tables::read(bytes, options);
    require_sound(table, int(bytes.size()) + 1);
    const Table again = tables::read(bytes, options);
    REQUIRE(again.findings.size() == table.findings.size());
    REQUIRE(identical(again.points, table.points));
    if (!table.readable())
        return 0;
    // If there is a doubt, a second reading may drop another row.
    const QList<Finding> findings = table.findings + sections::shape_findings(table);
    if (std::all_of(findings.begin(), findings.end(),
                    [](const Finding& each) { return each.gravity == tables::Gravity::note; }))
        require_written_is_read(table);
    return 0;
}
