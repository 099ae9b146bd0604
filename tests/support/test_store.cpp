#include "tests/support/test_store.h"

#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <map>
#include <stdexcept>

#include "tests/support/postgres_server.h"

namespace qk::test {
namespace {

/// The databases of this program, by the files that name them.
std::map<QString, std::unique_ptr<ServerDatabase>>& databases() {
  static std::map<QString, std::unique_ptr<ServerDatabase>> all;
  return all;
}

void keep(const QString& path, std::unique_ptr<ServerDatabase> database) {
  std::erase_if(databases(), [](const auto& known) { return !QFileInfo(known.first).dir().exists(); });
  database->writeAddress(path);
  databases()[path] = std::move(database);
}

}  // namespace

class StoreOriginal::Folder {
 public:
  Folder() : folder_(QDir::tempPath() + "/qkXXXXXX") {}
  QString store() const { return folder_.filePath("original"); }

 private:
  QTemporaryDir folder_;
};

bool storesOnServer() {
  static const bool onServer = qEnvironmentVariable("QK_TEST_ENGINE") == "postgres";
  return onServer;
}

void prepareStore(const QString& path) {
  if (storesOnServer()) keep(path, std::make_unique<ServerDatabase>());
}

const ServerDatabase& serverDatabase(const QString& path) {
  return *databases().at(path);
}

void refuse(const QString& path, StoreAct act, const QString& table, const QString& column, int value) {
  const QString word = act == StoreAct::Insert ? "INSERT" : act == StoreAct::Update ? "UPDATE" : "DELETE";
  const QString row = act == StoreAct::Insert ? "new" : "old";
  if (storesOnServer()) {
    const ServerDatabase& database = serverDatabase(path);
    database.native(
        "CREATE OR REPLACE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS "
        "$$ BEGIN RAISE EXCEPTION 'gesperrt'; END $$");
    database.native(QString("CREATE TRIGGER refused_%1 BEFORE %1 ON dao.\"%2\" FOR EACH ROW WHEN "
                            "(%3.\"%4\" = %5) EXECUTE FUNCTION refuse()")
                        .arg(word, table, row, column)
                        .arg(value));
    return;
  }
  sqlite3* store = nullptr;
  const QString trigger = QString(
                              "CREATE TRIGGER refused_%1 BEFORE %1 ON \"%2\" WHEN %3.\"%4\" = %5 "
                              "BEGIN SELECT RAISE(ABORT, 'gesperrt'); END")
                              .arg(word, table, row, column)
                              .arg(value);
  const bool made = sqlite3_open(path.toUtf8().constData(), &store) == SQLITE_OK &&
                    sqlite3_exec(store, trigger.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
  sqlite3_close(store);
  if (!made) throw std::runtime_error("no trigger in " + path.toStdString());
}

void refuseChanges(const QString& path, const QString& table, int id) {
  refuse(path, StoreAct::Update, table, "ID", id);
}

void damage(const QString& path, const QString& table) {
  if (storesOnServer()) {
    const ServerDatabase& database = serverDatabase(path);
    const QString stored = "dao.\"" + table + '"';
    database.native(
        "CREATE FUNCTION damaged() RETURNS boolean LANGUAGE plpgsql AS "
        "$$ BEGIN RAISE EXCEPTION 'invalid page in block 7' USING ERRCODE = 'XX001'; END $$");
    const QString middle = database.native("SELECT (min(\"ID\") + max(\"ID\")) / 2 FROM " + stored).first();
    database.native("ANALYZE " + stored);  // as a server does by itself: so it reads in the order of the key
    database.native("CREATE POLICY damage ON " + stored + " USING (\"ID\" <> " + middle + " OR damaged())");
    database.native("ALTER TABLE " + stored + " ENABLE ROW LEVEL SECURITY, FORCE ROW LEVEL SECURITY");
    return;
  }
  constexpr int kBlock = 4096;
  QFile file(path);
  const bool opened = file.open(QIODevice::ReadWrite) && file.seek(file.size() / kBlock / 2 * kBlock);
  if (!opened || file.write(QByteArray(kBlock, '\0')) != kBlock)
    throw std::runtime_error("can't damage " + path.toStdString());
}

void forbidWriting(const QString& path) {
  if (storesOnServer()) {
    const ServerDatabase& database = serverDatabase(path);
    const QString name = database.native("SELECT current_database()").first();
    database.native("ALTER DATABASE \"" + name + "\" SET default_transaction_read_only = on");
    return;
  }
  // The version of the format that is needed to write: one that nobody knows.
  constexpr qint64 kWriteVersion = 18;
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite) || !file.seek(kWriteVersion) || file.write("\x03", 1) != 1)
    throw std::runtime_error("can't forbid writing " + path.toStdString());
}

StoreOriginal::StoreOriginal(const std::function<void(const QString& path)>& make)
    : folder_(std::make_unique<Folder>()) {
  if (storesOnServer()) {
    database_ = std::make_unique<ServerDatabase>();
    database_->writeAddress(folder_->store());
  }
  make(folder_->store());
}

StoreOriginal::~StoreOriginal() = default;

void StoreOriginal::copyTo(const QString& path) const {
  if (QFile::exists(path)) throw std::runtime_error("a store is there: " + path.toStdString());
  if (database_)
    keep(path, ServerDatabase::copyOf(*database_));
  else if (!QFile::copy(folder_->store(), path))
    throw std::runtime_error("can't copy a store to " + path.toStdString());
}

}  // namespace qk::test
