// Which rows of a competition name which others, told once: what keeps a row from being deleted, and what
// goes with it.
//
// Results, payments, issued targets and pictures of targets name a shooter by start number, all else by key.
// In the tables of results `MannID` is the club and `VorMannID` the team.
#pragma once

#include <QHash>
#include <QString>
#include <utility>
#include <vector>

#include "platform/dao/changes.h"
#include "platform/dao/database.h"
#include "platform/runtime/error.h"

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

/// Rows that a column is to name from now on.
struct NewReferences {
  QString table, column;         ///< where they will be named
  QString target;                ///< whose rows they are, by key
  QString label;                 ///< what the operator calls the column
  QHash<qint64, QString> names;  ///< by key, what he calls the row; may be empty
};

/// A row that was to be named is gone (Error 3201): "Verein: »SG Grünau« hat inzwischen jemand gelöscht."
class ReferenceGone : public Error {
 public:
  ReferenceGone(const NewReferences& wanted, qint64 key);

  const QString& table() const { return table_; }
  const QString& column() const { return column_; }
  qint64 key() const { return key_; }

 private:
  QString table_, column_;
  qint64 key_;
};

/// Nothing is written unless all of them are there then, asked by one question: write() throws ReferenceGone.
/// The naming table is held meanwhile, as removeRow() holds it or deletes from it, so that none can go in
/// between. The database is that of `changes`.
void requireThere(dao::Database& database, dao::Changes& changes, const NewReferences& wanted);

}  // namespace qk
