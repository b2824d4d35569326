// SPDX-FileCopyrightText: Aerolith developers
// The part of convert that draws ribs.
#pragma once

#include "cli/verb.h"

namespace cli {

/// The work of convert for one of drawing_formats().
std::unique_ptr<Work> rib_work(const Options& options, const std::string& format);

} // namespace cli
