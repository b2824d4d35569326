// SPDX-FileCopyrightText: Aerolith developers
// Texts that several formats share.
#pragma once

#include "tables/write.h"

namespace tables {

/// Half of the last digit of numbers with this many decimals.
double half_unit(int decimals);

/// Appends a number with this many decimals, right-aligned in a field for numbers below 10.
void append_aligned(QByteArray& text, double value, int decimals);

/// Appends one aligned row of x and y.
void append_row(QByteArray& text, QPointF point, int decimals);

/// The title on one line, without control characters; @p otherwise if nothing is left.
QString plain_title(const QString& title, QLatin1String otherwise);

/// A title that no program takes for numbers or a logical value, with its line feed.
QByteArray safe_title_line(const QString& title);

/// A note if neither side is higher than the other.
QList<Finding> notes_on_sides(const QPolygonF& outline);

/// Whether one of @p findings is an error.
bool has_error(const QList<Finding>& findings);

/// An error about the whole table.
Finding refusal(const QString& text);

Written write_lep(const Table& table, int decimals);
Written write_columns(const Table& table, int decimals);

} // namespace tables
