#include "platform/dao/sqlite/sqlite_engine.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <limits>
#include <utility>

#include "platform/dao/sqlite/sqlite_functions.h"
#include "platform/dao/sqlite/sqlite_pages.h"
#include "platform/dao/sqlite/sqlite_schema.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/held_files.h"

namespace qk::dao {
namespace {

int countCommit(void* counter) {
  ++*static_cast<qint64*>(counter);
  return 0;
}

void requireFolder(const QFileInfo& file) {
  if (isForeignPath(file.filePath()) || !file.absoluteDir().exists()) throw Error(errors::kStorePathNotFound);
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
  if (!info.exists()) throw Error(errors::kStoreNotFound);
  if (!info.isFile()) throw Error(errors::kStoreNotOpened);
  // One that this process has open is a database, and mustn't be opened past the engine.
  unlessHeld(path, [&] {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw Error(errors::kStoreNotOpened);
    if (file.read(16) != QByteArray("SQLite format 3", 16)) throw Error(errors::kUnknownFormat);
  });
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
  return std::unique_ptr<SqliteEngine>(new SqliteEngine(found, options, access));
}

std::unique_ptr<Engine> SqliteEngine::create(const QString& path, const OpenOptions& options) {
  const QFileInfo info(path);
  requireFolder(info);
  if (info.exists()) throw Error(errors::kStoreExists);
  std::unique_ptr<SqliteEngine> engine(new SqliteEngine(path, options, SqliteConnection::Access::Create));
  engine->write("PRAGMA user_version = 1", {});  // so that the file has its header at once
  return engine;
}

SqliteEngine::SqliteEngine(const QString& path, const OpenOptions& options, SqliteConnection::Access access,
                           std::function<bool()> cancelled)
    : path_(path),
      options_(options),
      state_(std::make_shared<State>(State{std::move(cancelled)})),
      connection_(std::make_shared<SqliteConnection>(
          path, access, options.readOnly && isUntouchable(path),
          [state = state_, options](SqliteConnection& connection) { furnish(connection, state, options); })),
      numbers_(std::make_unique<SqliteNumbers>(*connection_)) {}

/// The connection may outlive the engine: what it needs for a new opening is shared.
void SqliteEngine::furnish(SqliteConnection& connection, const std::shared_ptr<State>& state,
                           const OpenOptions& options) {
  sql::registerSqliteFunctions(connection.handle());
  sqlite3_commit_hook(connection.handle(), countCommit, &state->commits);
  if (state->cancelled)
    sqlite3_progress_handler(connection.handle(), kStepsBetweenLooks, isCancelled, &state->cancelled);
  ++state->openings;
  if (!options.readOnly) connection.value("PRAGMA journal_mode = WAL");
  connection.write(options.durable ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = OFF");
}

std::shared_ptr<const Catalogue> SqliteEngine::catalogue() {
  const qint64 version = connection_->value("PRAGMA schema_version").toLongLong();
  forgetWhatIsLost();
  if (!catalogue_ || catalogue_->version() != version)
    catalogue_ = std::make_shared<SqliteCatalogue>(connection_, version);
  return catalogue_;
}

std::unique_ptr<Engine> SqliteEngine::reader(std::function<bool()> cancelled) const {
  return std::unique_ptr<SqliteEngine>(new SqliteEngine(
      path_, OpenOptions{true, true}, SqliteConnection::Access::ReadOnly, std::move(cancelled)));
}

void SqliteEngine::hold() {
  connection_->write("BEGIN");
  connection_->value("PRAGMA schema_version");  // the first read begins it
  forgetWhatIsLost();
}

void SqliteEngine::release() {
  try {
    if (connection_->inTransaction()) connection_->write("ROLLBACK");
  } catch (const Error&) {
    return;  // what was lost is opened anew with the next need
  }
}

/// The engine counts the commits of others for each connection; after a loss the counting begins anew.
QString SqliteEngine::stamp() {
  const QString version = connection_->value("PRAGMA data_version").toString();
  return QString("%1 %2").arg(state_->openings).arg(version);
}

std::optional<PageWitness> SqliteEngine::copyHeldPages(const QString& file,
                                                       const std::function<bool()>& cancelled,
                                                       const PartDone& done) {
  return copyPages(connection_->handle(), file, cancelled, done);
}

void SqliteEngine::read(const QString& text, const QVariantList& values,
                        const std::function<bool(const NativeRow&)>& take) {
  connection_->read(text, values, take);
}

int SqliteEngine::write(const QString& text, const QVariantList& values) {
  if (depth_ > 0) return connection_->write(text, values);
  connection_->beforeCommit();
  const int affected = connection_->write(text, values);
  connection_->afterCommit();
  return affected;
}

qint64 SqliteEngine::insert(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  if (depth_ > 0) return connection_->insert(row.text, values);
  if (isStoredInDoubt(table, row, values)) return doubt_->assigned;
  forgetWhatIsLost();
  doubt_.reset();
  qint64 assigned = 0;
  SqliteNumbers::Block next;
  const bool isUsedUp = numbers_->isUsedUp(table);
  const auto store = [&] {
    assigned = connection_->insert(row.text, values);
    if (isUsedUp) next = numbers_->reserve(table, kNumberBlock);
  };
  connection_->beforeCommit();
  if (isUsedUp)
    withoutLook(store);
  else
    store();
  try {
    connection_->afterCommit();
  } catch (const Error&) {
    doubt_ = Doubt{row.text, values, assigned};
    throw;
  }
  if (isUsedUp) numbers_->keep(table, next);
  return assigned;
}

/// The log was lost just when the row was committed. Put back it may hold the row: then it is stored, and
/// storing it again would double it.
bool SqliteEngine::isStoredInDoubt(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  if (!doubt_ || doubt_->text != row.text || doubt_->values != values) return false;
  QStringList same;
  for (const QString& column : row.columns) same.append(sqlite::quotedName(column) + " IS ?");
  if (same.isEmpty()) return false;
  const QString text =
      "SELECT count(*) FROM " + sqlite::quotedName(table.def.name) + " WHERE " + same.join(" AND ");
  return connection_->value(text, values).toInt() > 0;
}

/// What was reserved and read before may be gone with the log.
void SqliteEngine::forgetWhatIsLost() {
  if (std::exchange(openings_, state_->openings) == state_->openings) return;
  numbers_->forgetAll();
  catalogue_.reset();
}

void SqliteEngine::transaction(const std::function<void()>& body) {
  if (depth_ > 0) return withoutLook(body);
  connection_->beforeCommit();
  withoutLook(body);
  connection_->afterCommit();
}

/// BEGIN … COMMIT, or a part of one under way. Whether the log still stands is the caller's to ask.
void SqliteEngine::withoutLook(const std::function<void()>& body) {
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

qint64 SqliteEngine::takeNumber(const TableInfo& table, int block) {
  forgetWhatIsLost();
  if (const auto number = numbers_->take(table)) return *number;
  reserveBlock(table, block);
  return *numbers_->take(table);
}

void SqliteEngine::giveBackNumber(const TableInfo& table, qint64 number) {
  numbers_->giveBack(table, number);
}

void SqliteEngine::reserveNumbers(const TableInfo& table) {
  if (table.autoNumber >= 0 && !numbers_->has(table)) reserveBlock(table, kNumberBlock);
}

/// A block that was reserved just below the largest number of the type ends above it.
qint64 SqliteEngine::lastNumber(const TableInfo& table) {
  constexpr qint64 kLargest = std::numeric_limits<qint32>::max();
  return table.autoNumber < 0 ? 0 : std::min(numbers_->last(table), kLargest);
}

void SqliteEngine::goOnAfter(const TableInfo& table, qint64 number) {
  if (table.autoNumber < 0) return;
  transaction([&] { numbers_->goOnAfter(table, number); });
  numbers_->forget(table);
}

void SqliteEngine::reserveBlock(const TableInfo& table, int count) {
  SqliteNumbers::Block block;
  transaction([&] { block = numbers_->reserve(table, count); });
  numbers_->keep(table, block);
}

}  // namespace qk::dao
