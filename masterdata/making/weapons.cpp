#include "masterdata/making/weapons.h"

#include <map>

#include "masterdata/making/competition.h"
#include "platform/dao/changes.h"
#include "platform/dao/recordset.h"

namespace qk {

namespace {

const QString kTable = "Waffen";

void makeTable(dao::Database& database) {
  try {
    const Schema schema = embeddedSchema("Wettkampf.txt");
    database.createTable(*schema.table(kTable));
  } catch (const Error& error) {
    if (error.number() != errors::kTableExists) throw;  // another desk has just made it
  }
}

/// By number; the short key is empty where only a profile names the weapon.
std::map<qint64, QString> namedWeapons(dao::Database& database) {
  std::map<qint64, QString> named;
  const auto read = [&](const QString& table, bool withKey) {
    const auto rows = database.openRecordset("Select * from " + table + " where WaffenID > 0 order by ID",
                                             dao::RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) {
      QString& key = named[rows->value("WaffenID").toLongLong()];
      if (withKey && key.isEmpty()) key = rows->value("KZ").toString();
    }
  };
  read("DisziplinWaffen", true);
  read("Auswert_Waffen", false);
  return named;
}

}  // namespace

void ensureWeapons(dao::Database& database) {
  if (!database.hasTable(kTable)) makeTable(database);
  auto missing = namedWeapons(database);
  const auto known = database.openRecordset(kTable, dao::RecordsetType::Snapshot);
  for (; !known->eof(); known->moveNext()) missing.erase(known->value("ID").toLongLong());
  dao::Changes changes(database);
  for (const auto& [number, key] : missing)
    changes.insert(kTable, {{"ID", number},
                            {"KZ", key},
                            {"Bezeichnung", key.isEmpty() ? QString("Waffe %1").arg(number) : key}});
  if (!changes.isEmpty()) changes.write();
}

}  // namespace qk
