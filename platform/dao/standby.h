// Asks a database's server for its standby.
#pragma once

#include "platform/dao/server/standby_state.h"

namespace qk::dao {

/// Looks on a connection of its own, so it may run in any thread, beside whatever is open; a server that is
/// silent for `patience` seconds is 3043, and whatever else opening it fails with. Nothing for a file, and
/// for a server that is the only one its file names, has no standby, and waits for none.
std::optional<StandbyState> standbyOf(const QString& path, int patience = 3);

}  // namespace qk::dao
