// SPDX-FileCopyrightText: Aerolith developers
// The application object. Only fonts need it.
#pragma once

namespace cli {

/// Creates an application object without a display, unless there is one.
void make_application();

} // namespace cli
