// Storing a shooter from the counter: what is missing is said, what is doubtful is asked, and then all of it
// is written at once: the shooter, and a club or team that he brings with him.
#pragma once

#include <optional>

#include "masterdata/counter/counter.h"

namespace qk {

class Dialogs;

/// What stands in the form.
struct ShooterEntry {
  qint64 id = 0;                 ///< 0: a new one
  dao::RowValues before;         ///< the row as it was read
  ShooterData data;              ///< with the ids of club and team as they were read
  QString club, team;            ///< as they were typed or chosen
  QString shownClub, shownTeam;  ///< what stood there for those ids: untouched, they stay
  bool proposed = false;         ///< the start number is the one that was offered: another will do as well
};

struct StoringResult {
  enum class Outcome { Stored, Unchanged, Refused, Reload } outcome = Outcome::Refused;
  qint64 id = 0;
  QString column;  ///< Refused: where the keyboard belongs; empty for nowhere
};

class ShooterStoring {
 public:
  /// Both outlive this.
  ShooterStoring(Counter& counter, Dialogs& dialogs) : counter_(counter), dialogs_(dialogs) {}

  /// Asks and writes. Reload: somebody else has changed or deleted the row, and that is to stand. What the
  /// store refuses is reported. The counter's classes are read anew, and its lists where they turn out to be
  /// old; a club or team that was made here isn't in them yet.
  StoringResult store(ShooterEntry entry);

 private:
  enum class Part { Club, Team };
  struct Writing;

  void followClass(ShooterEntry& entry) const;
  static void takeOver(ShooterEntry& entry, const QString& column, const QVariant& value);
  void renumberProposed(ShooterEntry& entry);
  /// False when the operator wants neither a new one nor goes on.
  bool resolve(Writing& writing, Part part);
  /// The column that keeps it from being written; empty when all is known or to be made.
  QString unresolved(Writing& writing);

  StoringResult write(Writing& writing);
  StoringResult writeOnce(Writing& writing);
  void requireNew(dao::Changes& changes, const Writing& writing);
  void requireReferences(dao::Changes& changes, const Writing& writing, const dao::RowValues& changed);
  void requireFreeNumber(dao::Changes& changes, const ShooterEntry& entry);
  /// The other one's values beside one's own. True when one's own are to stand.
  bool overwrites(Writing& writing, const dao::RowChanged& other);
  QString shownValue(const QString& column, const QVariant& value) const;
  StoringResult refused(const ShooterEntry& entry, const QString& why, const QString& column);

  Counter& counter_;
  Dialogs& dialogs_;
};

}  // namespace qk
