// Gives every payment its owning club and team, whichever way it was paid.
#pragma once

#include "platform/dao/database.h"

namespace qk {

/// `VereinIDBasis` and `MannIDBasis` of all payments, anew. The later statement wins: a direct club beats the
/// team's, which beats the shooter's; the shooter's team beats a direct one. A value that nothing gives
/// stays. Errors of the store pass; what was done stays.
void KasseBasisAktualisieren(dao::Database& database);

}  // namespace qk
