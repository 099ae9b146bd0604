// Opening a competition to work on its master data. The office program may have it open at the same time.
#pragma once

#include <QString>
#include <memory>

#include "platform/dao/database.h"

namespace qk {

/// The competition, fit for work: Error 53 for a path without a file, 3078 for a store that is no
/// competition, 3356 for one whose move isn't finished, 3027 for one that can only be read, and whatever the
/// engine says.
std::unique_ptr<dao::Database> openForMasterData(const QString& path);

/// What the window says of it: its name, and the path.
QString titleOf(dao::Database& database, const QString& path);

}  // namespace qk
