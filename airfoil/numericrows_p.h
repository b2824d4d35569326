// SPDX-FileCopyrightText: Aerolith developers
// The numeric lines of a coordinate table.
#pragma once

#include <QByteArray>
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

/// The text of a file of @p bytes as valid UTF-8. The file is taken as UTF-8 unless a byte-order
/// mark says otherwise. A damaged character becomes a replacement character; one that the end of
/// the file truncates is dropped.
QByteArray table_text(QByteArray bytes);

/// Calls @p take for each line of @p text, without its line feed and carriage returns, until @p
/// take returns false.
void for_each_line(const QByteArray& text, const std::function<bool(const QString&)>& take);

/// Calls @p take for each numeric line of @p text, in order. Lines of plain numbers are parsed
/// directly; every other line goes through clean(), isLatString(), FindNumericSubStrings() and
/// Repair_NumString(), which would give the same numbers for plain ones.
void for_each_numeric_row(const QByteArray& text, const std::function<void(NumericRow)>& take);
