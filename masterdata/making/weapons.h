// The weapons of a competition. Disciplines and profiles name them by number, and competitions of other
// programs have no table that says what stands behind it.
#pragma once

#include "platform/dao/database.h"

namespace qk {

/// Makes the table `Waffen` where it is missing, and gives it a row for each weapon that a discipline or
/// profile names and the table lacks, with the short key that the disciplines use. What stands there stays.
/// Errors of the store, such as 3027 and 3112 without the right to do so.
void ensureWeapons(dao::Database& database);

}  // namespace qk
