// SPDX-FileCopyrightText: Aerolith developers
// Settings of all writers of drawings.
#pragma once

#include "drawings/scene.h"

namespace drawings {

/// The unit of length of a file.
enum class Unit { mm, cm };

struct OutputSettings {
    LayerNames layer_names = standard_layer_names(); ///< See layer_name_fault().
    Unit unit = Unit::mm;                            ///< For formats whose coordinates have a unit.
    double flatness = 0.01; ///< mm, above 0: greatest deviation of polylines from the curve.
};

/// Units of the file per millimetre.
inline double units_per_mm(Unit unit) {
    return unit == Unit::cm ? 0.1 : 1.0;
}

/// Why @p name cannot be the name of a layer; empty when it can. DXF R12 allows 1 to 31 of the
/// characters A-Z, a-z, 0-9, '$', '-' and '_'.
QString layer_name_fault(const QString& name);

} // namespace drawings
