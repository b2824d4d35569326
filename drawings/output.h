// SPDX-FileCopyrightText: Aerolith developers
// What all writers of drawings are told.
#pragma once

#include "drawings/scene.h"

namespace drawings {

/// What one unit of a file stands for.
enum class Unit { mm, cm };

struct OutputSettings {
    LayerNames layer_names = standard_layer_names(); ///< See layer_name_fault().
    Unit unit = Unit::mm;   ///< Of files that have coordinates of their own.
    double flatness = 0.01; ///< mm, above 0: greatest distance of polylines from the curve.
};

/// Units of the file in a millimetre.
inline double units_per_mm(Unit unit) {
    return unit == Unit::cm ? 0.1 : 1.0;
}

/// Why @p name cannot be the name of a layer, empty when it can: DXF R12 takes 1 to 31 of
/// A-Z, a-z, 0-9, '$', '-' and '_'.
QString layer_name_fault(const QString& name);

} // namespace drawings
