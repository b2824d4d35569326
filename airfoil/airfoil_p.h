// SPDX-FileCopyrightText: Aerolith developers
// Shared by the sources of this folder only.
#pragma once

/// Tells in a modal box that there is no outline to analyse.
void warn_no_airfoil();
