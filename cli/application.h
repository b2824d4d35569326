// SPDX-FileCopyrightText: Aerolith developers
// The application object, which only fonts need.
#pragma once

namespace cli {

/// Makes an application object without a display where there is none yet.
void make_application();

} // namespace cli
