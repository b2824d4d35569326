// SPDX-FileCopyrightText: Aerolith developers
// The options of convert for drawings of ribs.
#pragma once

#include "cli/options.h"
#include "drawings/output.h"
#include "drawings/pdf.h"
#include "drawings/rib.h"

#include <string>
#include <vector>

namespace cli {

/// Everything that a drawing needs except its section.
struct RibSettings {
    drawings::RibOptions rib; ///< All but the text.
    drawings::OutputSettings output;
    drawings::Tiling tiling = drawings::Tiling::none;
    QString text; ///< Can hold {name}, {chord} and {n}.
    bool text_strokes = false;
    double gap = 0.0;    ///< Between the ribs of a sheet, mm.
    std::string refusal; ///< Why the options cannot be combined; empty if they can.
};

/// The settings of a run.
/// @param format "dxf", "svg" or "pdf"
RibSettings rib_settings(const Options& options, const std::string& format);

/// The first given option that is only for drawings, with its hyphens; empty for none.
std::string drawing_option(const Options& options);

/// @name Values of the options
/// @{
std::vector<std::string> intakes();
std::vector<std::string> mark_shapes();
std::vector<std::string> drawing_units();
std::vector<std::string> tilings();
/// @}

} // namespace cli
