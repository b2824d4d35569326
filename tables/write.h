// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables as text, each in a form that its readers accept as it is.
#pragma once

#include "tables/table.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tables {

/// The tables that can be written. All are UTF-8 with line feeds; numbers have a decimal point, no
/// exponent and no sign before a zero.
enum class Format {
    /// For the window's reader, which then shows the outline correctly: a title with a letter, then
    /// x and y from the end of greatest x, which is (1, 0), to the other end. Scaled but not
    /// rotated; the width is exactly 1 and the least x exactly 0.
    window,
    /// Title, then x and y in the frame and order of the table. Titles that other programs would
    /// take for numbers or logical values are prefixed with an underscore.
    selig,
    /// Title (as for selig), counts, then the upper and the lower side from the nose, after blank
    /// lines. The row of least x belongs to both sides.
    lednicer,
    /// Paragliding profile: title without blanks; the counts of all rows N, upper rows U, intake
    /// rows I and lower rows L, one per line; N rows from the trailing edge (1, 0) over the upper
    /// side round the nose (0, 0) and back. The opening O-1 is row U, O-2 is row U + I - 1 and U +
    /// I + L = N + 2. Needs openings. Rotated and scaled where the table has another frame; a row
    /// is inserted at a station that has none. At most 500 rows.
    lep,
    /// x, upper y and lower y from the nose on. Where only one side has a row, the height of the
    /// other side lies on the straight line between its rows. Title as for selig.
    columns,
    /// The header "x,y" and the rows. Before it, where there is one, the title as "# title" and
    /// the openings as "# openings: O-1 O-2".
    csv,
    /// One object of title, layout, openings ({"start", "end"} or null) and points ([[x, y]...]).
    json
};

/// The names of the formats, in the order of Format.
QStringList format_names();

/// The format of a name; none for an unknown one.
std::optional<Format> format_from_name(const QString& name);

/// Options of writing. The steps run in the order of the members.
struct WriteOptions {
    std::optional<Openings> openings; ///< Replace those of the table.
    bool close_gap = false;           ///< with_closed_gap()
    bool normalize = false;           ///< normalized()
    bool reverse = false;             ///< reversed(); no effect where the format has an order.
    int decimals = 8;                 ///< 1 to 15
};

/// @p table with the openings of the options, after the steps of the options; the notes of the
/// steps are added to its findings. write() does the same.
Table arranged(Table table, const WriteOptions& options);

/// The result of writing a table.
struct Written {
    QByteArray bytes;        ///< Empty after an error.
    QList<Finding> findings; ///< Notes on what was changed, or the error with the reason.

    bool ok() const; ///< Whether no finding is an error.
};

/// @p table in the format, or the reason why it cannot be written. Only its points, title, layout
/// and openings are used; points that are not finite are refused.
Written write(const Table& table, Format format, const WriteOptions& options = {});

} // namespace tables
