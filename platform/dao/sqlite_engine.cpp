#include "platform/dao/sqlite_engine.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QUrl>

#include "platform/dao/sql/sqlite_functions.h"
#include "platform/dao/sqlite_errors.h"
#include "platform/runtime/files.h"

namespace qk::dao {
namespace {

constexpr int kBusyMilliseconds = 5000;

int countCommit(void* counter) {
  ++*static_cast<qint64*>(counter);
  return 0;
}

void requireFolder(const QFileInfo& file) {
  if (isForeignPath(file.filePath()) || !file.absoluteDir().exists()) throw Error(3044);
}

/// Told before SQLite has a say: it would take an empty file for an empty database, and make a missing one.
void requireDatabaseFile(const QString& path) {
  const QFileInfo info(path);
  requireFolder(info);
  if (!info.exists()) throw Error(3024);
  if (!info.isFile()) throw Error(3051);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw Error(3051);
  if (file.read(16) != QByteArray("SQLite format 3", 16)) throw Error(3343);
}

}  // namespace

std::unique_ptr<Engine> SqliteEngine::open(const QString& path, const OpenOptions& options) {
  const QString found = Files().resolve(path);
  requireDatabaseFile(found);
  std::unique_ptr<SqliteEngine> engine(new SqliteEngine(found, options));
  engine->catalogue();
  return engine;
}

std::unique_ptr<Engine> SqliteEngine::create(const QString& path, const OpenOptions& options) {
  const QFileInfo info(path);
  requireFolder(info);
  if (info.exists()) throw Error(3204);
  std::unique_ptr<SqliteEngine> engine(new SqliteEngine(path, options));
  engine->write("PRAGMA user_version = 1", {});  // so that the file has its header at once
  engine->catalogue();
  return engine;
}

SqliteEngine::SqliteEngine(const QString& path, const OpenOptions& options) : path_(path), options_(options) {
  connection_ = std::make_shared<QtConnection>("QSQLITE", [this](const QSqlError& error) {
    return sqlite::errorOf(handle_ ? sqlite3_extended_errcode(handle_) : error.nativeErrorCode().toInt(),
                           error.databaseText());
  });
  connect();
  prepareFile();
  numbers_ = std::make_unique<SqliteNumbers>(*connection_);
}

SqliteEngine::~SqliteEngine() {
  if (handle_) sqlite3_commit_hook(handle_, nullptr, nullptr);
}

/// A file in write-ahead mode needs a neighbour to be read; where none can be made nobody writes either.
void SqliteEngine::connect() {
  const QFileInfo info(path_);
  const bool still =
      options_.readOnly && !QFileInfo(info.absolutePath()).isWritable() && !QFileInfo::exists(path_ + "-wal");
  QString name = path_;
  QString options = "QSQLITE_BUSY_TIMEOUT=" + QString::number(kBusyMilliseconds);
  if (options_.readOnly) options += ";QSQLITE_OPEN_READONLY";
  if (still) {
    name = QUrl::fromLocalFile(info.absoluteFilePath()).toString(QUrl::FullyEncoded) + "?immutable=1";
    options += ";QSQLITE_OPEN_URI";
  }
  QSqlDatabase& database = connection_->database();
  database.setDatabaseName(name);
  database.setConnectOptions(options);
  if (!database.open())
    throw sqlite::errorOf(database.lastError().nativeErrorCode().toInt(),
                          database.lastError().databaseText());
  handle_ = *static_cast<sqlite3* const*>(database.driver()->handle().constData());
  sqlite3_extended_result_codes(handle_, 1);
  sql::registerSqliteFunctions(handle_);
  sqlite3_commit_hook(handle_, countCommit, &commits_);
}

void SqliteEngine::prepareFile() {
  if (!options_.readOnly)
    connection_->read("PRAGMA journal_mode = WAL", {}, [](const QVariantList&) { return false; });
  connection_->write(options_.durable ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = OFF");
  connection_->forget();
}

std::shared_ptr<const Catalogue> SqliteEngine::catalogue() {
  qint64 version = 0;
  connection_->read("PRAGMA schema_version", {}, [&](const QVariantList& row) {
    version = row[0].toLongLong();
    return false;
  });
  if (!catalogue_ || catalogue_->version() != version)
    catalogue_ = std::make_shared<SqliteCatalogue>(connection_, version);
  return catalogue_;
}

void SqliteEngine::read(const QString& text, const QVariantList& values,
                        const std::function<bool(const NativeRow&)>& take) {
  connection_->read(text, values, take);
}

int SqliteEngine::write(const QString& text, const QVariantList& values) {
  return connection_->write(text, values);
}

qint64 SqliteEngine::insert(const TableInfo& table, const QString& text, const QVariantList& values) {
  if (depth_ > 0 || !numbers_->isUsedUp(table)) return connection_->insert(text, values);
  qint64 assigned = 0;
  SqliteNumbers::Block next;
  transaction([&] {
    assigned = connection_->insert(text, values);
    next = numbers_->reserve(table);
  });
  numbers_->keep(table, next);
  return assigned;
}

void SqliteEngine::transaction(const std::function<void()>& body) {
  if (depth_ == 0) connection_->write("BEGIN IMMEDIATE");
  ++depth_;
  try {
    body();
    if (depth_ == 1) connection_->write("COMMIT");
  } catch (...) {
    --depth_;
    if (depth_ == 0 && sqlite3_get_autocommit(handle_) == 0) connection_->write("ROLLBACK");
    throw;
  }
  --depth_;
}

qint64 SqliteEngine::takeNumber(const TableInfo& table) {
  if (const auto number = numbers_->take(table)) return *number;
  reserveBlock(table);
  return *numbers_->take(table);
}

void SqliteEngine::giveBackNumber(const TableInfo& table, qint64 number) {
  numbers_->giveBack(table, number);
}

void SqliteEngine::reserveNumbers(const TableInfo& table) {
  if (table.autoNumber >= 0 && !numbers_->has(table)) reserveBlock(table);
}

void SqliteEngine::reserveBlock(const TableInfo& table) {
  SqliteNumbers::Block block;
  transaction([&] { block = numbers_->reserve(table); });
  numbers_->keep(table, block);
}

}  // namespace qk::dao
