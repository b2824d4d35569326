// SPDX-FileCopyrightText: Aerolith developers
// What csv and json tables of this program say beside their rows.
#pragma once

#include "tables/rows.h"
#include "tables/table.h"

namespace tables {

/// Takes the openings, and the title of json, from the lines before @p first, as Format::csv and
/// Format::json have them. What is damaged is left alone.
void take_carried(const Rows& rows, std::size_t first, Table& table);

} // namespace tables
