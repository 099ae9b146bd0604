#include "tests/platform/dao/store_factory.h"

#include <QTemporaryDir>
#include <vector>

#include "platform/dao/postgres/postgres_engine.h"
#include "tests/support/postgres_server.h"

namespace qk::dao {
namespace {

class PostgresStore final : public Store {
 public:
  PostgresStore() {
    server_.writeAddress(path());
    Database::create(path(), {.durable = false});
  }

  QString path() const override { return folder_.filePath("store.qkk"); }
  std::unique_ptr<Database> connect() override {
    return Database::open(path(), OpenOptions{.durable = false});
  }
  /// A file beside it that names another, still unfurnished database.
  QString otherPath(const QString& name) const override { return folder_.filePath(name); }
  void listen(Database& database, std::function<void(const QString&)> listener) override {
    static_cast<PostgresEngine&>(database.engine()).connection().listen(std::move(listener));
  }
  /// The one row of the version may be read whole.
  QStringList scans(Database& database, const QString& nativeText) override {
    QStringList steps;
    if (!nativeText.startsWith("SELECT") && !nativeText.startsWith("UPDATE")) return steps;
    QString text;
    QStringList values;
    for (const QChar c : nativeText) {
      if (c == u'?') values.append("NULL");
      text += c == u'?' ? QString("$%1").arg(values.size()) : QString(c);
    }
    PostgresConnection& connection = static_cast<PostgresEngine&>(database.engine()).connection();
    connection.write("SET plan_cache_mode = force_generic_plan");
    connection.write("PREPARE qk_probe AS " + text);
    const QString run = values.isEmpty() ? "" : "(" + values.join(", ") + ")";
    connection.read("EXPLAIN EXECUTE qk_probe" + run, {}, [&](const NativeRow& row) {
      const QString step = row.first().toString();
      if (step.contains("Seq Scan") && !step.contains("dao_version")) steps.append(step);
      return true;
    });
    connection.write("DEALLOCATE qk_probe");
    return steps;
  }

 private:
  test::ServerDatabase server_;
  QTemporaryDir folder_;
};

}  // namespace

std::unique_ptr<Store> newStore() {
  return std::make_unique<PostgresStore>();
}

}  // namespace qk::dao
