// A demo competition with a counter on it, and what stands in its tables as text.
#pragma once

#include <memory>

#include "masterdata/counter/counter.h"
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
  int count(const QString& table, const QString& criterion = "ID > 0") const {
    return row("SELECT Count(*) AS N FROM " + table + " WHERE " + criterion).toInt();
  }

  TestWorkplace place;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<Counter> counter;
};

}  // namespace qk::test
