#include <QTemporaryDir>

#include "platform/dao/engine.h"
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
  QStringList scans(Database& database, const QString& nativeText) override {
    QStringList steps;
    database.engine().read("EXPLAIN QUERY PLAN " + nativeText, {}, [&](const NativeRow& row) {
      if (row[3].toString().startsWith("SCAN")) steps.append(row[3].toString());
      return true;
    });
    return steps;
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace

std::unique_ptr<Store> newStore() {
  return std::make_unique<SqliteStore>();
}

}  // namespace qk::dao
