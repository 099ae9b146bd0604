// The catalogue of a store on a PostgreSQL server, as it stood at one version. Definitions are read when
// asked for. Tables that other tools make in the schema are seen; what they change, when the store is opened
// anew.
#pragma once

#include <QHash>
#include <memory>

#include "platform/dao/postgres/postgres_connection.h"
#include "platform/dao/values/catalogue.h"

namespace qk::dao {

class PostgresCatalogue final : public Catalogue {
 public:
  PostgresCatalogue(std::shared_ptr<PostgresConnection> connection, qint64 version);

  qint64 version() const { return version_; }
  const TableInfo* info(const QString& name) const override;
  QStringList tableNames() const override { return names(false); }
  QStringList queryNames() const override { return names(true); }

 private:
  struct Entry {
    QString name;
    qint64 id = 0;
    bool view = false;
    QString comment;
    mutable std::unique_ptr<TableInfo> info;
  };
  std::unique_ptr<TableInfo> readTable(const Entry& entry) const;
  void readFields(const Entry& entry, TableInfo& table) const;
  void readIndexes(const Entry& entry, TableInfo& table) const;
  void findKey(TableInfo& table, const QStringList& primary) const;
  QStringList names(bool views) const;

  std::shared_ptr<PostgresConnection> connection_;
  qint64 version_;
  QHash<QString, std::shared_ptr<Entry>> entries_;  // by folded name
};

}  // namespace qk::dao
