// SPDX-FileCopyrightText: Aerolith developers
// Lengths, areas and angles as texts and in JSON: fractions of the chord, or millimetres.
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QPointF>

#include <string>

namespace cli {

/// @p number with @p decimals, without a minus before a rounded 0.
std::string fixed(double number, int decimals);

/// @p fraction as percent with @p decimals, "12.02 %".
std::string percent(double fraction, int decimals = 2);

/// The unit of lengths of a run.
class Lengths {
public:
    /// @param chord of the window's frame, mm; 0 for fractions of the chord
    explicit Lengths(double chord) : scale(chord > 0.0 ? chord : 1.0), in_mm(chord > 0.0) {}

    const char* unit() const { return in_mm ? "mm" : "chord"; }
    const char* area_unit() const { return in_mm ? "m2" : "chord2"; }

    double length(double fraction) const { return fraction * scale; }
    double area(double fraction) const { return fraction * scale * scale / (in_mm ? 1e6 : 1.0); }

    /// A length without its unit: 2 decimals of mm, 6 of the chord.
    std::string text(double fraction) const { return fixed(length(fraction), in_mm ? 2 : 6); }

    /// The same with a sign before a positive one.
    std::string signed_text(double fraction) const;

    /// An area without its unit, 6 decimals.
    std::string area_text(double fraction) const { return fixed(area(fraction), 6); }

private:
    double scale;
    bool in_mm;
};

} // namespace cli
