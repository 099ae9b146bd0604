#include "masterdata/pages/opened_competition.h"

#include <QFileInfo>

#include "app/ground/feld_wert.h"
#include "app/ground/right_to_change.h"
#include "app/ground/unfinished_move.h"
#include "masterdata/making/weapons.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"

namespace qk {

std::unique_ptr<dao::Database> openForMasterData(const QString& path) {
  // The engine would make a file of that name.
  if (!QFileInfo::exists(path)) throw Error(errors::kFileNotFound, "Diesen Wettkampf gibt es nicht: " + path);
  auto database = dao::Database::open(path);
  refuseUnfinishedMove(*database);
  for (const QString table : {"Wettkampf", "Schützen", "Disziplin"})
    if (!database->hasTable(table)) throw Error(errors::kUnknownTable, "Das ist kein Wettkampf: " + path);
  refuseReadOnly(*database, path);
  ensureWeapons(*database);
  return database;
}

QString titleOf(dao::Database& database, const QString& path) {
  const auto head = database.openRecordset("Select Bezeichnung from Wettkampf");
  const QString name = head->eof() ? QString() : FeldWert(*head, "Bezeichnung").toString().simplified();
  return (name.isEmpty() ? QString("Stammdaten") : name + " – Stammdaten") + " (" + path + ")";
}

}  // namespace qk
