// A competition with just the disciplines, weapons and combinations that a test wants, and an exchange
// folder beside it.
#pragma once

#include <memory>

#include "platform/dao/database.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

struct DisciplineSetup {
  QString name;
  int series = 10;
  bool tenths = false;
  QStringList weapons = {"LG"};
};

class ConfiguredCompetition {
 public:
  explicit ConfiguredCompetition(Complain complain = failTest);

  /// Ids count from 1, and so do the positions in the order of the competition.
  int addDiscipline(const DisciplineSetup& setup);
  int addCombination(const QString& name, const std::vector<int>& disciplines);
  void addKey(const QString& MeldeKZ, const QString& name, const QString& ScheibenKZ);
  /// Sorts by name instead of by position.
  void sortByName(bool disciplines, bool combinations);

  dao::Database& database() { return *database_; }
  /// The exchange folder with its final separator.
  QString folder() const { return place.path("austausch") + "/"; }
  QByteArray content(const QString& name) { return place.files.read(folder() + name); }
  QStringList names(const QString& pattern = "*") { return place.files.list(folder(), pattern); }

  TestWorkplace place;

 private:
  int add(const QString& table, const QList<std::pair<QString, QVariant>>& values);

  std::unique_ptr<dao::Database> database_;
  int disciplines_ = 0;
  int combinations_ = 0;
};

}  // namespace qk::test
