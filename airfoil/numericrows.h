// SPDX-FileCopyrightText: Aerolith developers
// The numeric lines of a coordinate table. Used by the sources of this folder only.
#pragma once

#include <QString>

#include <array>
#include <functional>

/// The first three fields of a numeric line as numbers, 0 where there is none.
using NumericRow = std::array<float, 3>;

/// Whether a cleaned line holds numbers only; all others are titles.
bool is_numeric(const QString& cleaned);

/// The number of a field: 0 for none and for one beyond double precision.
double field_value(const QString& field);

/// The number of a field: 0 for none and for one beyond single precision.
float field_number(const QString& field);

/// Calls @p take for each line of a file, without its end, until it returns false. Never
/// for what is no regular file: a pipe or a device may never answer.
void for_each_line(const QString& fileName, const std::function<bool(const QString&)>& take);

/// Calls @p row for each numeric line of a file, in order. One pass over the bytes takes
/// the lines of plain numbers; every other line goes through clean(), isLatString(),
/// FindNumericSubStrings() and Repair_NumString(), which give the same numbers.
void for_each_numeric_row(const QString& fileName, const std::function<void(NumericRow)>& row);
