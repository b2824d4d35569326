// SPDX-FileCopyrightText: Aerolith developers
// What csv and json tables written by this program hold besides their rows.
#pragma once

#include "tables/rows_p.h"
#include "tables/table.h"

namespace tables {

/// Takes the openings, and for json the title, from the lines before @p first, as Format::csv and
/// Format::json write them. Damaged items are ignored.
void take_carried(const Rows& rows, std::size_t first, Table& table);

} // namespace tables
