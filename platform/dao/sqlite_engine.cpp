#include "platform/dao/sqlite_engine.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>

#include "platform/dao/sql/sqlite_functions.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk::dao {
namespace {

int countCommit(void* counter) {
  ++*static_cast<qint64*>(counter);
  return 0;
}

void requireFolder(const QFileInfo& file) {
  if (isForeignPath(file.filePath()) || !file.absoluteDir().exists()) throw Error(3044);
}

/// Steps of SQLite's machine between two looks at whether a read was given up: well below a millisecond.
constexpr int kStepsBetweenLooks = 2000;

int isCancelled(void* cancelled) {
  return (*static_cast<std::function<bool()>*>(cancelled))() ? 1 : 0;
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

/// A file in write-ahead mode needs a neighbour even to be read; where none can be made, nobody writes
/// either.
bool isUntouchable(const QString& path) {
  return !QFileInfo(QFileInfo(path).absolutePath()).isWritable() && !QFileInfo::exists(path + "-wal");
}

}  // namespace

std::unique_ptr<Engine> SqliteEngine::open(const QString& path, const OpenOptions& options) {
  const QString found = Files().resolve(path);
  requireDatabaseFile(found);
  const auto access =
      options.readOnly ? SqliteConnection::Access::ReadOnly : SqliteConnection::Access::ReadWrite;
  std::unique_ptr<SqliteEngine> engine(new SqliteEngine(found, options, access));
  engine->catalogue();
  return engine;
}

std::unique_ptr<Engine> SqliteEngine::create(const QString& path, const OpenOptions& options) {
  const QFileInfo info(path);
  requireFolder(info);
  if (info.exists()) throw Error(3204);
  std::unique_ptr<SqliteEngine> engine(new SqliteEngine(path, options, SqliteConnection::Access::Create));
  engine->write("PRAGMA user_version = 1", {});  // so that the file has its header at once
  engine->catalogue();
  return engine;
}

SqliteEngine::SqliteEngine(const QString& path, const OpenOptions& options, SqliteConnection::Access access)
    : path_(path),
      options_(options),
      connection_(std::make_shared<SqliteConnection>(path, access, options.readOnly && isUntouchable(path))),
      numbers_(std::make_unique<SqliteNumbers>(*connection_)) {
  sql::registerSqliteFunctions(handle());
  sqlite3_commit_hook(handle(), countCommit, &commits_);
  if (!options.readOnly) connection_->value("PRAGMA journal_mode = WAL");
  connection_->write(options.durable ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = OFF");
}

SqliteEngine::~SqliteEngine() {
  sqlite3_commit_hook(handle(), nullptr, nullptr);
}

std::shared_ptr<const Catalogue> SqliteEngine::catalogue() {
  const qint64 version = connection_->value("PRAGMA schema_version").toLongLong();
  if (!catalogue_ || catalogue_->version() != version)
    catalogue_ = std::make_shared<SqliteCatalogue>(connection_, version);
  return catalogue_;
}

std::unique_ptr<Engine> SqliteEngine::reader(std::function<bool()> cancelled) const {
  std::unique_ptr<SqliteEngine> engine(
      new SqliteEngine(path_, OpenOptions{true, true}, SqliteConnection::Access::ReadOnly));
  engine->cancelled_ = std::move(cancelled);
  sqlite3_progress_handler(engine->handle(), kStepsBetweenLooks, isCancelled, &engine->cancelled_);
  return engine;
}

void SqliteEngine::read(const QString& text, const QVariantList& values,
                        const std::function<bool(const NativeRow&)>& take) {
  connection_->read(text, values, take);
}

int SqliteEngine::write(const QString& text, const QVariantList& values) {
  return connection_->write(text, values);
}

qint64 SqliteEngine::insert(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  if (depth_ > 0 || !numbers_->isUsedUp(table)) return connection_->insert(row.text, values);
  qint64 assigned = 0;
  SqliteNumbers::Block next;
  transaction([&] {
    assigned = connection_->insert(row.text, values);
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
    if (depth_ == 0 && connection_->inTransaction()) connection_->write("ROLLBACK");
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
