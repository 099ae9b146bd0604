// Whether a competition may be changed from here.
#pragma once

#include "platform/dao/database.h"

namespace qk {

/// Error 3027, with a text for the user, for a store in which nothing could be stored. Whatever else is wrong
/// with it passes: it shows where it is needed.
void refuseReadOnly(dao::Database& store, const QString& sWettkampf);

}  // namespace qk
