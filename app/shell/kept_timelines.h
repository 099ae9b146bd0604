// The timelines of the servers that this workstation has met stay in its settings: a server that was given up
// is known for one after the next start, too.
#pragma once

#include <QString>

#include "platform/dao/server/server_memory.h"

namespace qk {

/// settingsFile: of the store that all programs of the workstation share.
dao::ServerMemory::Keeper timelinesIn(const QString& settingsFile);

}  // namespace qk
