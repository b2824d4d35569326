// SPDX-FileCopyrightText: Aerolith developers
// What the options of convert say about drawings of ribs.
#pragma once

#include "cli/options.h"
#include "drawings/output.h"
#include "drawings/pdf.h"
#include "drawings/rib.h"

#include <string>
#include <vector>

namespace cli {

/// Everything a drawing is made from but its section.
struct RibSettings {
    drawings::RibOptions rib; ///< Without its text.
    drawings::OutputSettings output;
    drawings::Tiling tiling = drawings::Tiling::none;
    QString text; ///< With {name}, {chord} and {n}.
    bool text_strokes = false;
    double gap = 0.0;    ///< mm between ribs of a sheet.
    std::string refusal; ///< Why the options cannot be taken together; empty when they can.
};

/// The settings of a run.
/// @param format "dxf", "svg" or "pdf"
RibSettings rib_settings(const Options& options, const std::string& format);

/// The first option given that is for drawings alone, with its hyphens; empty for none.
std::string drawing_option(const Options& options);

/// @name What the options take
/// @{
std::vector<std::string> intakes();
std::vector<std::string> mark_shapes();
std::vector<std::string> drawing_units();
std::vector<std::string> tilings();
/// @}

} // namespace cli
