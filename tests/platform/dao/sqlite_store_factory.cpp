#include <sqlite3.h>

#include <QTemporaryDir>

#include "platform/dao/sqlite/sqlite_engine.h"
#include "tests/platform/dao/store_factory.h"

namespace qk::dao {
namespace {

class SqliteStore final : public Store {
 public:
  SqliteStore() { Database::create(path(), {.durable = false}); }

  QString path() const override { return folder_.filePath("store.qkk"); }
  std::unique_ptr<Database> connect() override {
    return Database::open(path(), OpenOptions{.durable = false});
  }
  QString otherPath(const QString& name) const override { return folder_.filePath(name); }
  void listen(Database& database, std::function<void(const QString&)> listener) override {
    listener_ = std::move(listener);
    sqlite3_trace_v2(static_cast<SqliteEngine&>(database.engine()).handle(),
                     listener_ ? SQLITE_TRACE_STMT : 0, &hear, this);
  }
  /// The list of numbered tables has one row a table: it may be read whole.
  QStringList scans(Database& database, const QString& nativeText) override {
    QStringList steps;
    database.engine().read("EXPLAIN QUERY PLAN " + nativeText, {}, [&](const NativeRow& row) {
      const QString step = row[3].toString();
      if (step.startsWith("SCAN") && step != "SCAN sqlite_sequence") steps.append(step);
      return true;
    });
    return steps;
  }

 private:
  static int hear(unsigned, void* self, void* statement, void*) {
    static_cast<SqliteStore*>(self)->listener_(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
    return 0;
  }

  std::function<void(const QString&)> listener_;
  QTemporaryDir folder_;
};

}  // namespace

std::unique_ptr<Store> newStore() {
  return std::make_unique<SqliteStore>();
}

}  // namespace qk::dao
