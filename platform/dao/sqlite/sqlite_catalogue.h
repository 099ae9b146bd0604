// The catalogue of a SQLite file, as it stood at one version of its schema. Definitions are read when asked
// for.
//
// What SQLite can't say stands in a small table of our own, made when the first such fact comes up:
//   kind 'index'  owner table, name index, definition: words out of "primary required"
//   kind 'key'    owner table, name: the name of its primary key
//   kind 'field'  owner table, name field, definition: words out of "required nonempty"
//   kind 'query'  owner query, definition: its text in the query language (the view beside it is its
//   translation)
#pragma once

#include <QHash>
#include <QStringList>
#include <memory>

#include "platform/dao/sqlite/sqlite_connection.h"
#include "platform/dao/values/catalogue.h"

namespace qk::dao {

class SqliteCatalogue final : public Catalogue {
 public:
  inline static const QString kFacts = "dao_catalogue";

  SqliteCatalogue(std::shared_ptr<SqliteConnection> connection, qint64 version);

  qint64 version() const { return version_; }
  const TableInfo* info(const QString& name) const override;
  QStringList tableNames() const override;
  QStringList queryNames() const override;
  bool hasFacts() const { return hasFacts_; }

 private:
  struct Entry {
    QString name;
    QString text;  // as SQLite keeps it
    bool view = false;
    mutable std::unique_ptr<TableInfo> info;
  };
  std::unique_ptr<TableInfo> readTable(const Entry& entry) const;
  void readFields(const Entry& entry, TableInfo& table, QStringList& primary) const;
  void readIndexes(TableInfo& table, const QStringList& primary) const;
  void readFacts(TableInfo& table) const;
  bool readQuery(TableInfo& query) const;
  QStringList names(bool views) const;

  std::shared_ptr<SqliteConnection> connection_;
  qint64 version_;
  bool hasFacts_ = false;
  QHash<QString, std::shared_ptr<Entry>> entries_;  // by folded name
};

}  // namespace qk::dao
