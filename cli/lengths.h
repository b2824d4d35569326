// SPDX-FileCopyrightText: Aerolith developers
// Lengths and areas as text and as numbers, in fractions of the chord or in millimetres.
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QPointF>

#include <string>

namespace cli {

/// @p number with @p decimals; a rounded 0 has no minus sign.
std::string fixed(double number, int decimals);

/// @p fraction in percent with @p decimals, for example "12.02 %".
std::string percent(double fraction, int decimals = 2);

/// The unit of all lengths in a run.
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

    /// The same with a plus sign before positive lengths.
    std::string signed_text(double fraction) const;

    /// An area without its unit, 6 decimals.
    std::string area_text(double fraction) const { return fixed(area(fraction), 6); }

private:
    double scale;
    bool in_mm;
};

} // namespace cli
