#include "masterdata/lists/import_table.h"

#include "masterdata/rows/import_table_name.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace qk::lists {

namespace {

const QString Table = importTableName();

dao::TableDef importTable() {
  using dao::FieldType;
  dao::TableDef table{Table, {}, {}};
  dao::FieldDef id{"ID", FieldType::Long};
  id.autoNumber = true;
  table.fields = {id,
                  {"Bezeichnung", FieldType::Text, 255},
                  {"Zeitpunkt", FieldType::Date},
                  {"Neu", FieldType::Long},
                  {"Geaendert", FieldType::Long},
                  {"Zeilen", FieldType::LongBinary}};
  table.indexes = {{"PrimaryKey", {"ID"}, true, true}};
  return table;
}

}  // namespace

void ensureImportTable(dao::Database& database) {
  if (database.hasTable(Table)) return;
  try {
    database.createTable(importTable());
  } catch (const Error& error) {
    if (error.number() != errors::kTableExists) throw;  // another desk was faster
  }
}

void recordImport(dao::Changes& changes, const LastImport& import, const std::vector<WrittenRow>& rows) {
  dropImport(changes);
  changes.insert(Table, {{"Bezeichnung", import.name.left(255)},
                         {"Zeitpunkt", import.when},
                         {"Neu", import.added},
                         {"Geaendert", import.changed},
                         {"Zeilen", packed(rows)}});
}

void dropImport(dao::Changes& changes) {
  changes.execute("DELETE * FROM " + Table);
}

std::optional<StoredImport> storedImport(dao::Database& database) {
  if (!database.hasTable(Table)) return {};
  const auto row = database.openRecordset("SELECT * FROM " + Table + " ORDER BY ID DESC");
  if (row->eof()) return {};
  return StoredImport{{row->value("Bezeichnung").toString(), row->value("Zeitpunkt").toDateTime(),
                       row->value("Neu").toInt(), row->value("Geaendert").toInt()},
                      row->value("Zeilen").toByteArray()};
}

std::vector<TableMark> marksOf(dao::Database& database, const QStringList& tables) {
  std::vector<TableMark> marks;
  for (const QString& table : tables) {
    if (!database.hasTable(table)) continue;
    const dao::TableDef def = database.tableDef(table);
    const dao::IndexDef* primary = def.primary();
    const QString key = primary ? primary->fields.value(0) : def.fields.front().name;
    const auto row = database.openRecordset(
        QString("SELECT Count(*) AS Anzahl, Max([%1]) AS Letzte FROM [%2]").arg(key, table));
    marks.push_back({table, row->value("Anzahl"), row->value("Letzte")});
  }
  return marks;
}

bool isStale(const Error& error) {
  return error.number() == errors::kChangedMeanwhile || error.number() == errors::kRecordDeleted;
}

void requireMarks(dao::Changes& changes, dao::Database& database, const std::vector<TableMark>& marks,
                  const QStringList& held) {
  for (const QString& table : held) changes.hold(table);
  changes.require([&database, marks] {
    QStringList tables;
    for (const TableMark& mark : marks) tables << mark.table;
    if (marksOf(database, tables) != marks) throw Error(errors::kChangedMeanwhile);
  });
}

}  // namespace qk::lists
