// A competition of one evening for tests of evaluations, and the template of the print database as the build
// makes it.
#pragma once

#include <memory>

#include "platform/dao/database.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

/// Shooters 107 (club, team, class, registration) and 108 (none of it); 107 has two teilers and a series, 108
/// a teiler. Profiles "Pokal" and "König" are shown, "Geheim" isn't.
class ShootingDay {
 public:
  ShootingDay();

  QString path() const { return place.path("Pokal.qkk"); }
  /// Ends in a separator; holds the template and nothing else.
  QString system() const { return place.path("programm/System/"); }
  QString printTemplate() const { return system() + "ergschdruck.mdb"; }

  TestWorkplace place;
  std::unique_ptr<dao::Database> wettkampf;
};

/// The columns of a query's rows: a line per row, divided by "|", with the word Null where there is none.
QStringList read(dao::Database& db, const QString& query, const QStringList& columns);

}  // namespace qk::test
