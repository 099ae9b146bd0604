// Which rows of a competition name which others, told once: what keeps a row from being deleted, and what
// goes with it.
//
// Results, payments, issued targets and pictures of targets name a shooter by start number, all else by key.
// In the tables of results `MannID` is the club and `VorMannID` the team.
#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "platform/dao/changes.h"
#include "platform/dao/database.h"

namespace qk {

struct Reference {
  QString table, column;  ///< where it stands
  QString target, by;     ///< whose rows it names, by which of their columns
  /// Refuses: the named row stays. Belongs: a part of the named row, deleted with it.
  enum class Kind { Refuses, Belongs } kind;
  QString one, many;  ///< "Ergebnis", "Ergebnisse"
  /// Columns of the same row that must hold these numbers, or it names something else.
  std::vector<std::pair<QString, int>> onlyWhere = {};
};

const std::vector<Reference>& references();

struct Uses {
  struct Count {
    QString one, many;
    qint64 rows = 0;
    QString text() const;  ///< "1 Ergebnis", "12 Ergebnisse"
  };
  std::vector<Count> refusing;  ///< what keeps the row; empty when it may be deleted
  std::vector<Count> parts;     ///< what goes with it
};

/// "12 Ergebnisse, 3 Zahlungen und 1 Anmeldung".
QString countsText(const std::vector<Uses::Count>& counts);

/// What names the row, counted now. Tables that the competition lacks name nothing. A start number that
/// another shooter bears as well keeps nobody.
Uses usesOf(dao::Database& database, const QString& table, qint64 key);

/// "Schütze 107", "Der Verein »SG Grünau«": the beginning of a sentence.
QString subjectOf(dao::Database& database, const QString& table, qint64 key);

/// Why the row can't be deleted now, with the counts and the way out; empty when it can.
QString refusalOf(dao::Database& database, const QString& table, qint64 key);

/// Deletes the row with its parts when `changes` are written. What refuses is asked once more then, while
/// nobody else writes: write() throws Error 3200 with the text of refusalOf(). The database is that of
/// `changes`.
void removeRow(dao::Database& database, dao::Changes& changes, const QString& table, qint64 key);

}  // namespace qk
