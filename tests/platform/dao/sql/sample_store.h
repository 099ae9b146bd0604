// A small store for tests: a catalogue and the same tables in a real SQLite database in memory, reached
// through the raw handle.
#pragma once

#include <map>
#include <memory>

#include "platform/dao/sqlite/sqlite_writer.h"

struct sqlite3;

namespace qk::dao::sql::test {

/// A table: "ID* l, Name t, Betrag m", "*" marking primary key columns; a lone whole number among them counts
/// itself. y yes/no, i integer, l long, m money, d double, c date, t text, b binary
TableDef sampleTable(const QString& name, const QString& columns);

class SampleStore : public Catalogue {
 public:
  SampleStore();
  ~SampleStore() override;
  const TableInfo* info(const QString& name) const override;
  QStringList tableNames() const override { return names(false); }
  QStringList queryNames() const override { return names(true); }

  sqlite3* handle() const { return database_; }

  void table(const TableDef& table);
  void table(const QString& name, const QString& columns) { table(sampleTable(name, columns)); }
  /// A stored query, as a view with the result's names.
  void query(const QString& name, const QString& text);

  /// Rows as texts: cells by "|", Null as "NULL", rows in order.
  QStringList native(const QString& text, const QVariantList& values = {}) const;
  /// Translates and runs; an Error of SQLite's own is thrown as 3000 with its message.
  QStringList run(const QString& text) const;
  NativeQuery translate(const QString& text) const;
  int changes() const;

 private:
  QStringList names(bool queries) const;

  std::map<QString, std::unique_ptr<TableInfo>> tables_;
  sqlite3* database_ = nullptr;
};

}  // namespace qk::dao::sql::test
