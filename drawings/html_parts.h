// SPDX-FileCopyrightText: Aerolith developers
// What every page holds.
#pragma once

namespace drawings {

extern const char page_style[];
extern const char page_script[];

} // namespace drawings
