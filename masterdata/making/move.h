// Moves a competition from one store into another, whatever the engine of each: from a file to a server,
// back, or from file to file.
#pragma once

#include <QString>
#include <functional>

#include "platform/dao/database.h"

namespace qk {

/// How far a move is, for whoever watches.
struct MoveStep {
  enum class Kind { Copying, Verifying } kind;
  QString table;
  int number = 0, tables = 0;  ///< the table's, from 1, of so many
  qint64 rows = 0;             ///< so far
  bool done = false;           ///< with this table
};

struct MoveResult {
  int tables = 0;
  qint64 rows = 0;
};

struct MoveRequest {
  QString from;
  /// A file that doesn't exist yet, or an empty store that does.
  QString to;
  /// Begins anew over what an interrupted move left in the target. Nothing else is ever removed.
  bool again = false;
  /// What the mark says of the source where its path would tell nobody anything.
  QString origin = {};
};

/// Copies all tables and stored queries, then reads both stores again and compares definitions, counts, sums,
/// digests and the last auto number of every table. The source is only read. The target bears the mark of an
/// unfinished move from before its first table to after the last comparison, so that an interruption at any
/// moment leaves a target that says so.
///
/// Errors with German texts: 3045 the source is open elsewhere, 3251 the target can't hold every character
/// (both before anything is copied), 3204 the target isn't empty, 3356 source or target is an unfinished
/// move, 3197 the comparison found a difference (the source was worked on meanwhile), and those of the
/// stores.
MoveResult moveCompetition(const MoveRequest& request, const std::function<void(const MoveStep&)>& watch);

/// Takes what an interrupted move left out of the target, and its mark.
void clearUnfinishedMove(const QString& path);

/// What a move into a store that is there would refuse of it: 3251, 3204, 3356.
void refuseUsedTarget(const QString& path, bool again);

}  // namespace qk
