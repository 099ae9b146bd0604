// SQLite: one file, several programs and connections at once (WAL), every commit durable unless asked
// otherwise.
#pragma once

#include <optional>

#include "platform/dao/engine/engine.h"
#include "platform/dao/sqlite/sqlite_catalogue.h"
#include "platform/dao/sqlite/sqlite_connection.h"
#include "platform/dao/sqlite/sqlite_numbers.h"
#include "platform/dao/sqlite/sqlite_writer.h"

struct sqlite3;

namespace qk::dao {

class SqliteEngine final : public Engine {
 public:
  static std::unique_ptr<Engine> open(const QString& path, const OpenOptions& options);
  static std::unique_ptr<Engine> create(const QString& path, const OpenOptions& options);

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
  void hold() override;
  void release() override;
  bool stands() const override { return connection_->isLogThere(); }
  QString stamp() override;
  std::optional<PageWitness> copyHeldPages(const QString& file, const std::function<bool()>& cancelled,
                                           const PartDone& done) override;
  void read(const QString& text, const QVariantList& values,
            const std::function<bool(const NativeRow&)>& take) override;
  int write(const QString& text, const QVariantList& values) override;
  qint64 insert(const TableInfo& table, const NewRow& row, const QVariantList& values) override;
  void transaction(const std::function<void()>& body) override;

  qint64 takeNumber(const TableInfo& table, int block) override;
  void giveBackNumber(const TableInfo& table, qint64 number) override;
  void reserveNumbers(const TableInfo& table) override;
  qint64 lastNumber(const TableInfo& table) override;
  void goOnAfter(const TableInfo& table, qint64 number) override;

  qint64 commitCount() const override { return state_->commits; }
  bool isOpenElsewhere() override { return connection_->isOpenElsewhere(); }
  std::optional<QString> poorEncoding() override { return {}; }

  sqlite3* handle() const { return connection_->handle(); }  ///< for tests of this engine

 private:
  /// What the connection's hooks use.
  struct State {
    std::function<bool()> cancelled = {};  ///< asked while a statement of a reader runs
    qint64 commits = 0;
    int openings = 0;  ///< of the connection: once, and after each loss of the log
  };
  /// A row whose commit went into a log that was lost.
  struct Doubt {
    QString text;
    QVariantList values;
    qint64 assigned = 0;
  };

  SqliteEngine(const QString& path, const OpenOptions& options, SqliteConnection::Access access,
               std::function<bool()> cancelled = {});
  static void furnish(SqliteConnection& connection, const std::shared_ptr<State>& state,
                      const OpenOptions& options);
  bool isStoredInDoubt(const TableInfo& table, const NewRow& row, const QVariantList& values);
  void forgetWhatIsLost();
  void withoutLook(const std::function<void()>& body);
  void noteFact(const QString& kind, const QString& owner, const QString& name, const QString& definition);
  void createIndex(const QString& table, const IndexDef& index);
  void reserveBlock(const TableInfo& table, int count);

  QString path_;
  OpenOptions options_;
  std::shared_ptr<State> state_;
  std::shared_ptr<SqliteConnection> connection_;
  sql::SqliteWriter writer_;
  std::shared_ptr<SqliteCatalogue> catalogue_;
  std::unique_ptr<SqliteNumbers> numbers_;
  std::optional<Doubt> doubt_;
  int openings_ = 0;  // those that numbers and catalogue are of
  int depth_ = 0;     // of nested transactions
};

}  // namespace qk::dao
