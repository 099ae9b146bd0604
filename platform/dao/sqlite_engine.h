// SQLite: one file, several programs and connections at once (WAL), every commit durable unless asked
// otherwise.
#pragma once

#include "platform/dao/engine.h"
#include "platform/dao/sql/sqlite_writer.h"
#include "platform/dao/sqlite_catalogue.h"
#include "platform/dao/sqlite_connection.h"
#include "platform/dao/sqlite_numbers.h"

struct sqlite3;

namespace qk::dao {

class SqliteEngine final : public Engine {
 public:
  static std::unique_ptr<Engine> open(const QString& path, const OpenOptions& options);
  static std::unique_ptr<Engine> create(const QString& path, const OpenOptions& options);

  ~SqliteEngine() override;

  const QString& path() const override { return path_; }
  bool readOnly() const override { return options_.readOnly; }
  const sql::Writer& writer() const override { return writer_; }

  std::shared_ptr<const Catalogue> catalogue() override;
  void createTable(const TableDef& table) override;
  void dropTable(const TableInfo& table) override;
  void appendField(const TableInfo& table, const FieldDef& field) override;
  void appendIndex(const TableInfo& table, const IndexDef& index) override;
  void createQuery(const QString& name, const sql::Select& select, const QString& text) override;

  std::unique_ptr<Engine> reader(std::function<bool()> cancelled) const override;
  void read(const QString& text, const QVariantList& values,
            const std::function<bool(const NativeRow&)>& take) override;
  int write(const QString& text, const QVariantList& values) override;
  qint64 insert(const TableInfo& table, const NewRow& row, const QVariantList& values) override;
  void transaction(const std::function<void()>& body) override;

  qint64 takeNumber(const TableInfo& table) override;
  void giveBackNumber(const TableInfo& table, qint64 number) override;
  void reserveNumbers(const TableInfo& table) override;

  qint64 commitCount() const override { return commits_; }

  sqlite3* handle() const { return connection_->handle(); }  ///< for tests of this engine

 private:
  SqliteEngine(const QString& path, const OpenOptions& options, SqliteConnection::Access access);
  void noteFact(const QString& kind, const QString& owner, const QString& name, const QString& definition);
  void createIndex(const QString& table, const IndexDef& index);
  void reserveBlock(const TableInfo& table);

  QString path_;
  OpenOptions options_;
  std::shared_ptr<SqliteConnection> connection_;
  sql::SqliteWriter writer_;
  std::shared_ptr<SqliteCatalogue> catalogue_;
  std::unique_ptr<SqliteNumbers> numbers_;
  std::function<bool()> cancelled_;  // asked while a statement of a reader runs
  int depth_ = 0;                    // of nested transactions
  qint64 commits_ = 0;
};

}  // namespace qk::dao
