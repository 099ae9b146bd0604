// Writes what a judgement comes to, all of it or nothing, and takes the last one back.
//
// The write lock is held only while rows are written: a line that shoots on the same file waits for no
// longer. What would take an import back lies in a table of its own, Stammdaten_Import, written in the same
// go; so it outlives the program, and one import is kept, the last.
#pragma once

#include <QDateTime>
#include <memory>
#include <optional>

#include "masterdata/lists/judge.h"

namespace qk {

namespace dao {
class Database;
}

namespace lists {

struct TakenOver {
  bool written = false;  ///< false: the judgement no longer holds, and nothing was written
  int added = 0;         ///< rows of the list that were new
  int changed = 0;
  /// Where it no longer holds: the same list against what stands in the competition now.
  std::optional<Judgement> fresh;
};

/// `name`: what the import is called when it is offered to be taken back, as a rule its file. A plan without
/// rows is written at once: nothing. Errors of the store pass, and nothing was written then; the one
/// exception is a server that dies while it answers the last word.
TakenOver takeOver(dao::Database& database, const Judgement& judgement, const QString& name,
                   const QDateTime& now);

struct LastImport {
  QString name;
  QDateTime when;
  int added = 0;
  int changed = 0;
};

/// The one that can be taken back, if any.
std::optional<LastImport> lastImport(dao::Database& database);

struct Undone {
  bool done = false;
  QStringList refusals;  ///< the rows that stand against it, a German sentence each; nothing was changed then
};

/// Takes the last import back. A row that was changed since, or that results, payments or anything else refer
/// to, stands against all of it.
Undone undoLastImport(dao::Database& database);

}  // namespace lists
}  // namespace qk
