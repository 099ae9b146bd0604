#include "platform/dao/postgres/postgres_catalogue.h"

#include <algorithm>

#include "platform/dao/engine/stored_query.h"
#include "platform/dao/postgres/postgres_schema.h"

namespace qk::dao {

PostgresCatalogue::PostgresCatalogue(std::shared_ptr<PostgresConnection> connection, qint64 version)
    : connection_(std::move(connection)), version_(version) {
  const QString text =
      "SELECT relname, oid, relkind = 'v', obj_description(oid, 'pg_class') FROM pg_class "
      "WHERE relnamespace = 'dao'::regnamespace AND relkind IN ('r', 'v', 'p') AND relname NOT IN (?, ?)";
  connection_->read(text, {postgres::kVersionTable, postgres::kMarksTable}, [this](const QVariantList& row) {
    auto entry = std::make_shared<Entry>();
    entry->name = row[0].toString();
    entry->id = row[1].toLongLong();
    entry->view = row[2].toInt() != 0;
    entry->comment = row[3].toString();
    entries_.insert(foldedName(entry->name), std::move(entry));
    return true;
  });
}

QStringList PostgresCatalogue::names(bool views) const {
  QStringList found;
  for (const auto& entry : entries_)
    if (entry->view == views) found.append(entry->name);
  found.sort(Qt::CaseInsensitive);
  return found;
}

const TableInfo* PostgresCatalogue::info(const QString& name) const {
  auto found = entries_.constFind(name);
  if (found == entries_.cend()) found = entries_.constFind(foldedName(name));
  if (found == entries_.cend()) return nullptr;
  const Entry& entry = **found;
  if (!entry.info) entry.info = readTable(entry);
  return entry.info.get();
}

std::unique_ptr<TableInfo> PostgresCatalogue::readTable(const Entry& entry) const {
  auto table = std::make_unique<TableInfo>();
  table->def.name = entry.name;
  table->query = entry.view;
  if (entry.view) table->text = entry.comment;
  if (entry.view && describeStoredQuery(entry.comment, *this, table->def)) return table;
  readFields(entry, *table);
  if (!entry.view) readIndexes(entry, *table);
  return table;
}

void PostgresCatalogue::readFields(const Entry& entry, TableInfo& table) const {
  const QString text =
      "SELECT a.attname, t.typname, a.attnotnull, pg_get_expr(d.adbin, d.adrelid), "
      "col_description(a.attrelid, a.attnum) FROM pg_attribute a JOIN pg_type t ON t.oid = a.atttypid "
      "LEFT JOIN pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum "
      "WHERE a.attrelid = ?::oid AND a.attnum > 0 AND NOT a.attisdropped ORDER BY a.attnum";
  connection_->read(text, {entry.id}, [&](const QVariantList& row) {
    const QString name = row[0].toString();
    if (name == postgres::kRowNumber) {
      table.key = {{name}, true};
      return true;
    }
    table.def.fields.push_back(postgres::readColumn(name, row[1].toString(), row[2].toInt() != 0,
                                                    row[3].toString(), row[4].toString()));
    return true;
  });
}

void PostgresCatalogue::readIndexes(const Entry& entry, TableInfo& table) const {
  const QString text =
      "SELECT i.relname, x.indisprimary, x.indisunique, obj_description(i.oid, 'pg_class'), "
      "(SELECT string_agg(a.attname, E'\\x01' ORDER BY k.place) FROM unnest(x.indkey::smallint[]) "
      "WITH ORDINALITY AS k(number, place) JOIN pg_attribute a ON a.attrelid = x.indrelid AND a.attnum = "
      "k.number) "
      "FROM pg_index x JOIN pg_class i ON i.oid = x.indexrelid WHERE x.indrelid = ?::oid "
      "ORDER BY x.indisprimary DESC, i.oid";
  QStringList primary;
  connection_->read(text, {entry.id}, [&](const QVariantList& row) {
    IndexDef index;
    index.name = row[0].toString();
    const bool physical = row[1].toInt() != 0;
    index.primary = index.required = physical;
    index.unique = row[2].toInt() != 0;
    index.fields = row[4].toString().split(u'\x01', Qt::SkipEmptyParts);
    if (physical) primary = index.fields;
    if (index.fields == QStringList{postgres::kRowNumber}) return true;
    if (postgres::readIndex(row[3].toString(), index) && !index.fields.isEmpty())
      table.def.indexes.push_back(index);
    return true;
  });
  findKey(table, primary);
}

void PostgresCatalogue::findKey(TableInfo& table, const QStringList& primary) const {
  for (size_t i = 0; i < table.def.fields.size(); ++i)
    if (table.def.fields[i].autoNumber) table.autoNumber = static_cast<int>(i);
  if (!table.key.names.isEmpty()) return;
  table.key.names = primary.isEmpty() ? QStringList{"ctid"} : primary;  // a table of another tool
  const FieldDef* first = primary.size() == 1 ? table.def.field(primary.first()) : nullptr;
  table.key.integer = first && (first->type == FieldType::Long || first->type == FieldType::Integer);
}

}  // namespace qk::dao
