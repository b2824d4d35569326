// SPDX-FileCopyrightText: Aerolith developers
// The style and script of every page.
#pragma once

namespace drawings {

extern const char page_style[];
extern const char page_script[];

} // namespace drawings
