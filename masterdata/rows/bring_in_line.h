// Results bear the class, club and team that their shooter had when they were stored. After a change they can
// be brought in line. Payments can't: `VereinIDBasis` and `MannIDBasis` are money, and stay.
#pragma once

#include <QString>

#include "platform/dao/changes.h"
#include "platform/dao/database.h"

namespace qk {

/// Keys, 0 for none.
struct Standing {
  qint32 shooterClass = 0, club = 0, team = 0;
  bool operator==(const Standing&) const = default;
};

/// What stands with the shooter now; 3167 when he is gone.
Standing standingOf(dao::Database& database, qint64 shooter);

/// How many results of the number bear another class, club or team.
qint64 resultsOutOfLine(dao::Database& database, const QString& number, const Standing& standing);

/// Gives them this one when `changes` are written.
void bringInLine(dao::Changes& changes, const QString& number, const Standing& standing);

}  // namespace qk
