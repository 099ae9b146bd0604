// Who the rows of a list are, all rows against all others and against the competition.
#pragma once

#include <vector>

#include "masterdata/lists/shooter_cells.h"
#include "masterdata/lists/shooter_index.h"

namespace qk::lists {

inline constexpr int kNobody = -1;

/// For each row a position in the index, or kNobody for a new shooter. What keeps a row from being anybody
/// becomes a fault of it, what is worth a look a remark.
std::vector<int> matchShooters(std::vector<SaidOfShooter>& rows, const ShooterReader& reader,
                               const ShooterIndex& index);

/// The whole name that a row says as the table has it; empty when it says none.
QString saidName(const SaidOfShooter& said, const ShooterIndex& index);

}  // namespace qk::lists
