#include "platform/dao/sqlite/sqlite_catalogue.h"

#include <algorithm>

#include "platform/dao/engine/stored_query.h"
#include "platform/dao/sql/native_values.h"
#include "platform/dao/sqlite/sqlite_schema.h"

namespace qk::dao {

using sqlite::quotedName;

SqliteCatalogue::SqliteCatalogue(std::shared_ptr<SqliteConnection> connection, qint64 version)
    : connection_(std::move(connection)), version_(version) {
  const QString text =
      "SELECT name, type, sql FROM sqlite_master WHERE type IN ('table', 'view') AND name NOT LIKE "
      "'sqlite\\_%' ESCAPE '\\'";
  connection_->read(text, {}, [this](const QVariantList& row) {
    auto entry = std::make_shared<Entry>();
    entry->name = row[0].toString();
    entry->view = row[1].toString() == "view";
    entry->text = row[2].toString();
    if (entry->name == kFacts)
      hasFacts_ = true;
    else
      entries_.insert(foldedName(entry->name), std::move(entry));
    return true;
  });
}

QStringList SqliteCatalogue::names(bool views) const {
  QStringList found;
  for (const auto& entry : entries_)
    if (entry->view == views) found.append(entry->name);
  found.sort(Qt::CaseInsensitive);
  return found;
}

QStringList SqliteCatalogue::tableNames() const {
  return names(false);
}
QStringList SqliteCatalogue::queryNames() const {
  return names(true);
}

const TableInfo* SqliteCatalogue::info(const QString& name) const {
  auto found = entries_.constFind(name);
  if (found == entries_.cend()) found = entries_.constFind(foldedName(name));
  if (found == entries_.cend()) return nullptr;
  const Entry& entry = **found;
  if (!entry.info) entry.info = readTable(entry);
  return entry.info.get();
}

std::unique_ptr<TableInfo> SqliteCatalogue::readTable(const Entry& entry) const {
  auto table = std::make_unique<TableInfo>();
  table->def.name = entry.name;
  table->query = entry.view;
  if (entry.view && readQuery(*table)) return table;
  QStringList primary;
  readFields(entry, *table, primary);
  if (entry.view) return table;
  readIndexes(*table, primary);
  readFacts(*table);
  return table;
}

void SqliteCatalogue::readFields(const Entry& entry, TableInfo& table, QStringList& primary) const {
  std::vector<std::pair<int, QString>> key;
  bool integerKey = false;
  connection_->read("PRAGMA table_xinfo(" + quotedName(entry.name) + ")", {}, [&](const QVariantList& row) {
    FieldDef field;
    field.name = row[1].toString();
    sqlite::readDeclaredType(row[2].toString(), field);
    field.required = row[3].toInt() != 0;
    if (row[4].isValid()) field.preset = sql::presetOfDefault(row[4].toString(), field.type);
    if (const int place = row[5].toInt(); place > 0) {
      key.emplace_back(place, field.name);
      integerKey = row[2].toString().compare("INTEGER", Qt::CaseInsensitive) == 0;
    }
    if (row[6].toInt() != 1) table.def.fields.push_back(field);  // 1: hidden column of a virtual table
    return true;
  });
  std::sort(key.begin(), key.end());
  for (const auto& [place, name] : key) primary.append(name);

  table.key.names = primary;
  table.key.integer = primary.isEmpty() || (primary.size() == 1 && integerKey);
  if (primary.isEmpty()) {
    QStringList own = {"rowid", "_rowid_", "oid"};
    own.removeIf([&](const QString& name) { return table.def.field(name) != nullptr; });
    table.key.names = own.mid(0, 1);
  }
  if (primary.size() == 1 && integerKey && entry.text.contains("AUTOINCREMENT", Qt::CaseInsensitive)) {
    const auto field =
        std::find_if(table.def.fields.begin(), table.def.fields.end(),
                     [&](const FieldDef& candidate) { return candidate.name == primary.first(); });
    field->autoNumber = true;
    table.autoNumber = static_cast<int>(field - table.def.fields.begin());
  }
}

void SqliteCatalogue::readIndexes(TableInfo& table, const QStringList& primary) const {
  if (!primary.isEmpty()) table.def.indexes.push_back({"PrimaryKey", primary, true, true, true});
  QList<QVariantList> rows;
  connection_->read("PRAGMA index_list(" + quotedName(table.def.name) + ")", {},
                    [&](const QVariantList& row) {
                      if (row[3].toString() != "pk" && row[4].toInt() == 0)
                        rows.prepend(row);  // SQLite lists the newest first
                      return true;
                    });
  for (const QVariantList& row : rows) {
    IndexDef index;
    index.name = sqlite::indexNameOf(table.def.name, row[1].toString());
    index.unique = row[2].toInt() != 0;
    bool plain = true;
    connection_->read("PRAGMA index_info(" + quotedName(row[1].toString()) + ")", {},
                      [&](const QVariantList& column) {
                        plain = plain && column[2].isValid();
                        index.fields.append(column[2].toString());
                        return true;
                      });
    if (plain) table.def.indexes.push_back(index);
  }
}

void SqliteCatalogue::readFacts(TableInfo& table) const {
  if (!hasFacts_) return;
  const QString text = "SELECT kind, name, definition FROM " + kFacts + " WHERE owner = ?";
  connection_->read(text, {table.def.name}, [&](const QVariantList& row) {
    const QString kind = row[0].toString();
    const QString name = row[1].toString();
    const QStringList words = row[2].toString().split(' ');
    if (kind == "field") {
      for (FieldDef& field : table.def.fields)
        if (sameName(field.name, name)) {
          field.required = field.required || words.contains("required");
          field.allowZeroLength = !words.contains("nonempty");
        }
    }
    for (IndexDef& index : table.def.indexes) {
      if (kind == "key" && index.primary && index.name == "PrimaryKey") index.name = name;
      if (kind == "index" && sameName(index.name, name)) {
        index.primary = words.contains("primary");
        index.required = words.contains("required");
      }
    }
    return true;
  });
}

/// A stored query of our own carries its text: it says more of the columns than the view.
bool SqliteCatalogue::readQuery(TableInfo& query) const {
  if (!hasFacts_) return false;
  query.text = connection_
                   ->value("SELECT definition FROM " + kFacts + " WHERE kind = 'query' AND owner = ?",
                           {query.def.name})
                   .toString();
  return describeStoredQuery(query.text, *this, query.def);
}

}  // namespace qk::dao
