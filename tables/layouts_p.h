// SPDX-FileCopyrightText: Aerolith developers
// Fourth step of the reading: the layouts of outlines. Each is recognised by its numbers alone.
#pragma once

#include "tables/outline_p.h"
#include "tables/runs_p.h"
#include "tables/sheet_p.h"

#include <optional>
#include <vector>

namespace tables {

/// What comes before the rows of a section.
struct Head {
    std::vector<std::size_t> lines; ///< Places in Rows::lines of rows with numbers, in order.
};

constexpr int counted_rank = 3; ///< Counts in the head agree with the rows.
constexpr int usual_rank = 2;
constexpr int leftover_rank = 1; ///< A column is left out.

struct Question {
    const Sheet& sheet;   ///< In fractions of the chord; the first column is x.
    const Course& course; ///< Of x.
    const Head& head;
};

/// How one layout reads the rows.
struct Reading {
    Outline outline;
    QList<Finding> findings;
    std::optional<Openings> openings;
    int heads = 0; ///< How many of the last head rows the layout explains.
    /// How much of the file the layout explains. A reading of lower rank counts only where none of
    /// higher rank fits; readings of equal rank compete.
    int rank = usual_rank;
};

using Recogniser = std::optional<Reading> (*)(const Question& question);

struct Layout {
    const char* name;
    const char* shape; ///< A description for messages: what such a table holds.
    Recogniser read;
};

/// All layouts, in the order in which they are tried.
const std::vector<Layout>& layouts();

/// Counts N, U, I, L and N rows. A sum other than U + I + L = N + 2 is an error.
std::optional<Reading> read_lep(const Question& question);
/// A flag, 1 for a symmetric section, the counts of both halves, and the halves.
std::optional<Reading> read_vsp(const Question& question);
/// x runs down and up.
std::optional<Reading> read_selig(const Question& question);
/// x runs up and down.
std::optional<Reading> read_loop(const Question& question);
/// x runs up twice or down twice, with a jump between.
std::optional<Reading> read_halves(const Question& question);
/// x runs once, with two columns of y.
std::optional<Reading> read_columns(const Question& question);
/// Two columns of x run once, each with its y.
std::optional<Reading> read_pairs(const Question& question);
/// x runs once, y changes from side to side.
std::optional<Reading> read_turns(const Question& question);
/// x runs once, with one side of a symmetric section.
std::optional<Reading> read_half(const Question& question);

/// The rows [@p first, @p last] of a side in the direction of @p step, 1 or -1. Rows that lack
/// a number are left out.
Outline side_of(const Sheet& sheet, int first, int last, int step, int y = 1);
/// Whether the least x is the origin, as it is in tables of one run.
bool begins_at_nose(const Sheet& sheet);
/// A side from the trailing edge to the nose, and a side back. A nose that both have counts once.
Outline joined(Outline to_nose, const Outline& from_nose);
/// A side from the trailing edge to the nose, and its mirror image back.
Outline mirrored(Outline to_nose);

} // namespace tables
