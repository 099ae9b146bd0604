// Storing a shooter from the counter: what is missing is said, what is doubtful is asked, and then all of it
// is written at once: the shooter, and a club or team that he brings with him.
#pragma once

#include <optional>

#include "masterdata/counter/counter.h"

namespace qk {

class Dialogs;

/// What stands in the form.
struct ShooterEntry {
  qint64 id = 0;          ///< 0: a new one
  dao::RowValues before;  ///< the row as it was read
  ShooterData data;       ///< with the ids of club and team as they were read
  QString club, team;     ///< as they were typed or chosen
  bool proposed = false;  ///< the start number is the one that was offered: another will do as well
};

struct StoringResult {
  enum class Outcome { Stored, Unchanged, Refused, Reload } outcome = Outcome::Refused;
  qint64 id = 0;
  QString column;  ///< Refused: where the keyboard belongs; empty for nowhere
  QString done;    ///< Stored: what the status line says
};

class ShooterStoring {
 public:
  /// Both outlive this.
  ShooterStoring(Counter& counter, Dialogs& dialogs) : counter_(counter), dialogs_(dialogs) {}

  /// Asks and writes. Reload: somebody else has changed or deleted the row, and that is to stand. What the
  /// store refuses is reported.
  StoringResult store(ShooterEntry entry);

 private:
  enum class Part { Club, Team };

  /// False when the operator wants neither a new one nor goes on.
  bool resolve(Part part, const QString& text, qint32& id, bool& make);
  StoringResult write(ShooterEntry& entry, bool makeClub, bool makeTeam);
  bool overwrites(const ShooterEntry& entry, const dao::RowValues& found);
  QString shownValue(const QString& column, const QVariant& value) const;
  void renumberProposed(ShooterEntry& entry);
  void refuseTakenNumber(dao::Changes& changes, const ShooterEntry& entry);
  StoringResult writingFailed(const Error& error, ShooterEntry& entry, bool makeClub, bool makeTeam);

  Counter& counter_;
  Dialogs& dialogs_;
};

}  // namespace qk
