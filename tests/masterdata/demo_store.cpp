#include "tests/masterdata/demo_store.h"

#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"

namespace qk::test {

namespace {

void makeWithOwnTables(const QString& path) {
  makeDemoCompetition(path);
  const auto database = dao::Database::open(path);
  const Schema own = embeddedSchema("LeerSA.txt");
  for (const dao::TableDef& table : own.tables)
    if (table.name.startsWith("Haering_")) database->createTable(table);
}

const StoreOriginal& original() {
  static const StoreOriginal made(makeWithOwnTables);
  return made;
}

}  // namespace

DemoStore::DemoStore() {
  original().copyTo(path());
  database_ = dao::Database::open(path());
}

QString DemoStore::path() const {
  return folder_.filePath("Demo.qkk");
}

qint64 DemoStore::add(const QString& table, const dao::RowValues& values) const {
  dao::Changes changes(*database_);
  const qint64 key = changes.insert(table, values);
  changes.write();
  return key;
}

QVariant DemoStore::value(const QString& table, qint64 key, const QString& column) const {
  return database_->openRecordset(QString("Select * from [%1] where ID = %2").arg(table).arg(key))
      ->value(column);
}

qint64 DemoStore::count(const QString& table, const QString& condition) const {
  const QString where = condition.isEmpty() ? QString() : " where " + condition;
  return database_->openRecordset("Select Count(*) as Anzahl from [" + table + "]" + where)
      ->value("Anzahl")
      .toLongLong();
}

qint64 DemoStore::addShot(const QString& number, int line, int place) const {
  return add("Haering_Daten", {{"Startnummer", number},
                               {"Liniennummer", line},
                               {"StandnummerOrt", place},
                               {"Schütze", "Wer schießt"}});
}

}  // namespace qk::test
