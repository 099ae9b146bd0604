// What the counter knows of the open competition: classes, clubs and teams, read when asked to, and who is
// there already. Nothing is written here. Errors of the store pass.
#pragma once

#include <vector>

#include "masterdata/counter/name_list.h"
#include "masterdata/counter/shooter_data.h"
#include "masterdata/people/shooter_class.h"
#include "platform/dao/database.h"

namespace qk {

/// A shooter who is there, as a warning names him.
struct PresentShooter {
  qint64 id = 0;
  QString startnummer, name, gebDat, verein;
};

/// "107  Müller Jörg, 14.05.1928, Äußere Au"
QString lineOf(const PresentShooter& shooter);

// What clubs and teams are called in the competition now.
NameList readClubs(dao::Database& database);
NameList readTeams(dao::Database& database);
NameList readTeamsOf(dao::Database& database, qint32 club);

class Counter {
 public:
  /// The database outlives the counter.
  explicit Counter(dao::Database& database);

  /// Reads classes, clubs and teams anew.
  void refresh();
  /// The classes alone, of which there are few.
  void refreshClasses();
  const ShooterClasses& classes() const { return classes_; }
  const NameList& clubs() const { return clubs_; }
  const NameList& teams() const { return teams_; }
  /// Most characters of a text column of `Schützen`; 0 where there is no bound.
  int lengthOf(const QString& column) const;
  bool hasColumn(const QString& column) const { return empty_.contains(column); }

  /// Behind the highest number that is in the competition now.
  QString nextStartNumber() const;
  /// The row, by column; for id 0 one that holds nothing yet. Error 3167 when it is gone.
  dao::RowValues row(qint64 id) const;
  /// Who has the number, but for `except`.
  std::vector<PresentShooter> holdersOf(const QString& startnummer, qint64 except) const;
  /// Who is called and was born so, but for `except`. Nobody for an empty name.
  std::vector<PresentShooter> namesakes(const QString& name, const QString& gebDat, qint64 except) const;

  dao::Database& database() const { return database_; }

 private:
  std::vector<PresentShooter> present(const QString& criterion, qint64 except) const;

  dao::Database& database_;
  dao::TableDef table_;
  dao::RowValues empty_;
  ShooterClasses classes_;
  NameList clubs_, teams_;
};

}  // namespace qk
