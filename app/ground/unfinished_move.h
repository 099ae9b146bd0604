// The mark of a competition whose move into its store isn't finished: a table of this name stands there from
// before the first row until everything is copied and verified.
#pragma once

#include "platform/dao/database.h"
#include "platform/runtime/error_numbers.h"

namespace qk {

/// The mark's table, with the column `Quelle`: where the competition came from.
inline const QString kUnfinishedMove = "Umzug_unfertig";

/// The classic number for a database that somebody else holds alone; nothing else here uses it.
inline constexpr int kUnfinishedMoveError = errors::kOpenedExclusively;

bool isUnfinishedMove(const dao::Database& store);

/// kUnfinishedMoveError, with a text for the user, when the store bears the mark.
void refuseUnfinishedMove(dao::Database& store);

}  // namespace qk
