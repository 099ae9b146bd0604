// Definitions of a SQLite file: tables, fields, indexes, stored queries.
#include "platform/dao/sqlite/sqlite_engine.h"
#include "platform/dao/sqlite/sqlite_schema.h"
#include "platform/dao/values/physical_key.h"
#include "platform/runtime/error.h"

namespace qk::dao {

using sqlite::quotedName;

namespace {

QString nameList(const QStringList& names) {
  QStringList quoted;
  for (const QString& name : names) quoted.append(quotedName(name));
  return quoted.join(", ");
}

QString tableText(const TableDef& table, const QStringList& key) {
  QStringList parts;
  bool numbered = false;
  for (const FieldDef& field : table.fields) {
    const bool inKey = key.contains(field.name, Qt::CaseInsensitive);
    numbered = numbered || field.autoNumber;
    parts.append(sqlite::columnText(field, field.autoNumber, field.required || inKey));
  }
  if (!key.isEmpty() && !numbered) parts.append("PRIMARY KEY (" + nameList(key) + ")");
  return "CREATE TABLE " + quotedName(table.name) + " (" + parts.join(", ") + ")";
}

}  // namespace

void SqliteEngine::createTable(const TableDef& table) {
  const QStringList key = physicalKey(table);
  transaction([&] {
    connection_->write(tableText(table, key));
    for (const FieldDef& field : table.fields)
      if (!field.allowZeroLength) noteFact("field", table.name, field.name, "nonempty");
    for (const IndexDef& index : table.indexes) {
      if (!index.primary || !isKey(index, key))
        createIndex(table.name, index);
      else if (index.name != "PrimaryKey")
        noteFact("key", table.name, index.name, "");
    }
  });
}

void SqliteEngine::createIndex(const QString& table, const IndexDef& index) {
  connection_->write(QString(index.unique || index.primary ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                     quotedName(sqlite::storedIndexName(table, index.name)) + " ON " + quotedName(table) +
                     " (" + nameList(index.fields) + ")");
  QStringList words;
  if (index.primary) words.append("primary");
  if (index.required) words.append("required");
  if (!words.isEmpty()) noteFact("index", table, index.name, words.join(' '));
}

void SqliteEngine::noteFact(const QString& kind, const QString& owner, const QString& name,
                            const QString& definition) {
  const QString& facts = SqliteCatalogue::kFacts;
  connection_->write(
      "CREATE TABLE IF NOT EXISTS " + facts +
      " (kind TEXT NOT NULL, owner TEXT NOT NULL, name TEXT NOT NULL, definition TEXT NOT NULL, "
      "PRIMARY KEY (owner, kind, name))");
  connection_->write(
      "INSERT OR REPLACE INTO " + facts + " (kind, owner, name, definition) VALUES (?, ?, ?, ?)",
      {kind, owner, name, definition});
}

void SqliteEngine::dropTable(const TableInfo& table) {
  const bool facts = catalogue_->hasFacts();
  transaction([&] {
    connection_->write((table.query ? "DROP VIEW " : "DROP TABLE ") + quotedName(table.def.name));
    if (facts)
      connection_->write("DELETE FROM " + SqliteCatalogue::kFacts + " WHERE owner = ?", {table.def.name});
  });
  numbers_->forget(table);
}

/// SQLite takes no further NOT NULL column on a table with rows: the fact stands in the catalogue instead.
void SqliteEngine::appendField(const TableInfo& table, const FieldDef& field) {
  if (field.autoNumber) throw Error(errors::kInvalidArgument);
  transaction([&] {
    connection_->write("ALTER TABLE " + quotedName(table.def.name) + " ADD COLUMN " +
                       sqlite::columnText(field, false, false));
    QStringList words;
    if (field.required) words.append("required");
    if (!field.allowZeroLength) words.append("nonempty");
    if (!words.isEmpty()) noteFact("field", table.def.name, field.name, words.join(' '));
  });
}

void SqliteEngine::appendIndex(const TableInfo& table, const IndexDef& index) {
  transaction([&] { createIndex(table.def.name, index); });
}

void SqliteEngine::createQuery(const QString& name, const sql::Select& select, const QString& text) {
  QStringList columns;
  for (const sql::ResultColumn& column : sql::resultColumns(select, *catalogue()))
    columns.append(column.name);
  transaction([&] {
    connection_->write("CREATE VIEW " + quotedName(name) + " (" + nameList(columns) + ") AS " +
                       writer_.plainText(select));
    noteFact("query", name, "", text);
  });
}

}  // namespace qk::dao
