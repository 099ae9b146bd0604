#include "platform/schema/schema_build.h"

#include <QFile>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"

namespace qk {

using dao::Database;
using dao::FieldDef;
using dao::TableDef;

TableData typedRows(const RowSection& section, const TableDef& table, const QString& source) {
  TableData data{table.name, section.columns, {}};
  std::vector<const FieldDef*> fields;
  for (const QString& column : section.columns) {
    fields.push_back(table.field(column));
    if (!fields.back())
      throw Error(errors::kInvalidCall, QString("%1:%2: Zeilen %3: keine Spalte »%4«")
                                            .arg(source)
                                            .arg(section.line)
                                            .arg(section.table, column));
  }
  for (const TextRow& row : section.rows) {
    QVariantList values;
    for (qsizetype i = 0; i < row.cells.size(); ++i)
      values << cellValue(row.cells.at(i), *fields.at(static_cast<size_t>(i)), source, row.line);
    data.rows.push_back(values);
  }
  return data;
}

void insertRows(Database& database, const TableData& data) {
  if (data.rows.empty()) return;
  const auto recordset = database.openRecordset(data.table, dao::RecordsetType::Table);
  std::vector<int> positions;
  for (const QString& column : data.columns) positions.push_back(recordset->fieldPosition(column));
  for (const QVariantList& row : data.rows) {
    recordset->addNew();
    for (qsizetype i = 0; i < row.size(); ++i)
      recordset->setValue(positions.at(static_cast<size_t>(i)), row.at(i));
    recordset->update();
  }
  constexpr size_t kMany = 1000;
  if (data.rows.size() >= kMany) database.learnFigures(data.table);
}

void buildSchema(Database& database, const Schema& schema) {
  for (const TableDef& table : schema.tables) database.createTable(table);
  for (const StoredQuery& query : schema.queries) database.createQuery(query.name, query.text);
  for (const RowSection& section : schema.rows)
    insertRows(database, typedRows(section, database.tableDef(section.table), schema.source));
}

void createDatabase(const QString& path, const std::function<void(Database&)>& fill) {
  auto database = Database::create(path);
  try {
    fill(*database);
  } catch (...) {
    database.reset();
    QFile::remove(path);
    throw;
  }
}

}  // namespace qk
