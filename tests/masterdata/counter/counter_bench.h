// A demo competition with a counter on it, and what stands in its tables as text.
#pragma once

#include <memory>

#include "masterdata/counter/shooter_storing.h"
#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

class CounterBench {
 public:
  CounterBench() {
    static const StoreOriginal original(makeDemoCompetition);
    original.copyTo(path());
    database = dao::Database::open(path());
    counter = std::make_unique<Counter>(*database);
  }

  QString path() const { return place.path("demo.qkk"); }
  /// The first row of a query, its columns with "|" between; empty without one.
  QString row(const QString& query) const {
    const auto rows = database->openRecordset(query);
    if (rows->eof()) return {};
    QStringList cells;
    for (int i = 0; i < rows->fieldCount(); ++i) cells << rows->value(i).toString();
    return cells.join('|');
  }
  QString shooter(qint64 id, const QString& columns) const {
    return row("SELECT " + columns + " FROM Schützen WHERE ID = " + QString::number(id));
  }
  int count(const QString& table, const QString& criterion = "ID > 0") const {
    return row("SELECT Count(*) AS N FROM " + table + " WHERE " + criterion).toInt();
  }

  /// What stands in the form of a new shooter, at this counter or at another one.
  static ShooterEntry next(const Counter& at, const QString& last, const QString& first,
                           const QString& born = "01.02.1980") {
    ShooterEntry entry;
    entry.before = at.row(0);
    entry.data = shooterData(entry.before);
    entry.data.startnummer = at.nextStartNumber();
    entry.data.person = {last, first};
    entry.data.gebDat = born;
    entry.proposed = true;
    return entry;
  }
  ShooterEntry next(const QString& last, const QString& first, const QString& born = "01.02.1980") const {
    return next(*counter, last, first, born);
  }
  /// The form of one who is there, untouched.
  ShooterEntry known(qint64 id) const {
    ShooterEntry entry;
    entry.id = id;
    entry.before = counter->row(id);
    entry.data = shooterData(entry.before);
    entry.club = entry.shownClub = counter->clubs().shown(entry.data.vereinsID);
    entry.team = entry.shownTeam = counter->teams().shown(entry.data.mannID);
    return entry;
  }
  StoringResult store(const ShooterEntry& entry) {
    return ShooterStoring(*counter, place.dialogs).store(entry);
  }

  TestWorkplace place;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<Counter> counter;
};

}  // namespace qk::test
