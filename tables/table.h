// SPDX-FileCopyrightText: Aerolith developers
// A coordinate table as it was read: the outline, the line of each point, and the findings.
#pragma once

#include <QByteArray>
#include <QList>
#include <QPolygonF>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tables {

/// note: unusual, but read, or corrected on the way. doubt: read, to be checked by eye. error:
/// refused.
enum class Gravity { note, doubt, error };

/// One result of a step of the reading, or of a check of the outline.
struct Finding {
    Gravity gravity = Gravity::note;
    int line = 0; ///< Counted from 1; 0 stands for the whole file.
    QString text; ///< What was read and, for an error, what was expected.
};

/// A single-skin rib has a lower edge that rises above the chord; a flat one has no thickness.
enum class Kind { section, single_skin, flat };

/// The stations where the intake begins and ends, in percent of the chord, not rounded.
struct Openings {
    double start = 0.0;
    double end = 0.0;
};

/// The content of one file. Points are valid only if readable().
struct Table {
    QString title;  ///< Empty for none.
    QString layout; ///< A name of layout_names(), empty when none was found.
    /// The outline in fractions of the chord, in the frame of the file: from the trailing edge
    /// round the nose and back, in the order of the file. The first side is the upper or the
    /// lower one; a half contour is mirrored. Closed or open, at least 6 points, all finite.
    QPolygonF points;
    std::vector<int> lines; ///< The line number of each point; as many as points.
    Kind kind = Kind::section;
    std::optional<Openings> openings; ///< Where the layout has them.
    QList<Finding> findings;          ///< In the order of the steps that found them.
    QStringList candidates;           ///< Two layouts that fit equally well, otherwise empty.

    bool readable() const; ///< Whether no finding is an error.
};

struct ReadOptions {
    QString layout;  ///< A name of layout_names(); empty: determined by the numbers.
    int element = 0; ///< Which of several elements, counted from 1; 0: none picked.
};

/// Reads @p bytes as a coordinate table. Whatever they hold, the result is either readable or has
/// an error with the reason. More than 64 MiB are refused; memory use stays below 16 MiB plus
/// twenty times the size of @p bytes.
Table read(const QByteArray& bytes, const ReadOptions& options = {});

/// The names that ReadOptions::layout takes, in the order in which they are tried.
QStringList layout_names();

} // namespace tables
