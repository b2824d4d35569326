// SPDX-FileCopyrightText: Aerolith developers
// Whether the window shows what a file means.
#pragma once

#include "tables/table.h"

#include <QByteArray>
#include <QList>
#include <QPolygonF>
#include <QString>

namespace sections {

enum class Verdict {
    ok,      ///< The window shows what the file means.
    convert, ///< The file can be read, but the window shows something else.
    ask,     ///< Two readings fit; the reason names the option that decides between them.
    bad      ///< The file cannot be read, or holds no section.
};

/// A verdict with its reason.
struct Judgement {
    Verdict verdict = Verdict::bad;
    QString reason; ///< Empty for ok.
    int line = 0;   ///< Of the reason, counted from 1; 0 stands for the whole file.
    /// All findings: those of the reading, then those on the shape of the outline.
    QList<tables::Finding> findings;
};

/// "ok", "convert", "ask" or "bad".
QString verdict_name(Verdict verdict);

/// Judges a coordinate table.
/// @param table the result of tables::read() for @p bytes
Judgement judge_table(const QByteArray& bytes, const tables::Table& table);

/// How the window's outline @p shown differs from the one that @p table means; empty if it does
/// not. Both orders of the points are the same outline, and repeated points count once. The
/// outlines are compared point by point in the window's frame, within 1e-6 of the width and the
/// rounding of single precision. Where points are lost, @p line receives the line of the first,
/// otherwise 0.
QString difference_shown(const tables::Table& table, const QPolygonF& shown, int* line);

/// Whether @p bytes begin like a spline file: with the length of a name in four bytes.
bool is_spline_file(const QByteArray& bytes);

/// Judges a spline file: its length and counts, a curve of degree 2 with knots that do not
/// decrease, finite values, openings within the chord. Sharpened points are noted. The verdict is
/// never convert or ask.
Judgement judge_spline(const QByteArray& bytes);

} // namespace sections
