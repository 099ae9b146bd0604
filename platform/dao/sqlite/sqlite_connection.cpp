#include "platform/dao/sqlite/sqlite_connection.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QVarLengthArray>
#include <utility>

#include "platform/dao/sqlite/sqlite_errors.h"

namespace qk::dao {
namespace {

constexpr int kKeptStatements = 200;
constexpr int kBusyMilliseconds = 5000;

int openFlags(SqliteConnection::Access access) {
  switch (access) {
    case SqliteConnection::Access::ReadOnly:
      return SQLITE_OPEN_READONLY;
    case SqliteConnection::Access::ReadWrite:
      return SQLITE_OPEN_READWRITE;
    case SqliteConnection::Access::Create:
      return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  }
  return 0;
}

QVariant columnValue(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      return static_cast<qlonglong>(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement, column);
    case SQLITE_TEXT: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
    }
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
      return QByteArray(bytes, sqlite3_column_bytes(statement, column));
    }
    default:
      return {};
  }
}

/// A statement with values, which it reads where they lie. Afterwards it is reset, so that no cursor stays
/// open, and knows nothing of them any more.
class Bound {
 public:
  explicit Bound(sqlite3_stmt* statement) : statement_(statement) {}
  ~Bound() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }
  Bound(const Bound&) = delete;
  Bound& operator=(const Bound&) = delete;

  bool bind(const QVariantList& values) {
    bytes_.reserve(values.size());
    for (int i = 0; i < values.size(); ++i)
      if (bindOne(i + 1, values[i]) != SQLITE_OK) return false;
    return true;
  }

 private:
  int bindOne(int place, const QVariant& value) {
    switch (value.typeId()) {
      case QMetaType::UnknownType:
        return sqlite3_bind_null(statement_, place);
      case QMetaType::Int:
        return sqlite3_bind_int(statement_, place, value.toInt());
      case QMetaType::Bool:
      case QMetaType::LongLong:
        return sqlite3_bind_int64(statement_, place, value.toLongLong());
      case QMetaType::Double:
        return sqlite3_bind_double(statement_, place, value.toDouble());
      case QMetaType::QByteArray: {
        const QByteArray& bytes = kept(value.toByteArray());
        return sqlite3_bind_blob64(statement_, place, bytes.constData(), sizeOf(bytes), SQLITE_STATIC);
      }
      default: {
        const QByteArray& text = kept(value.toString().toUtf8());
        return sqlite3_bind_text64(statement_, place, text.constData(), sizeOf(text), SQLITE_STATIC,
                                   SQLITE_UTF8);
      }
    }
  }

  const QByteArray& kept(QByteArray&& bytes) {
    bytes_.append(std::move(bytes));
    return bytes_.last();
  }
  static sqlite3_uint64 sizeOf(const QByteArray& bytes) { return static_cast<sqlite3_uint64>(bytes.size()); }

  sqlite3_stmt* statement_;
  QVarLengthArray<QByteArray, 32> bytes_;  // until the destructor has let go of them
};

}  // namespace

void SqliteConnection::Finalize::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

class SqliteConnection::InUse {
 public:
  explicit InUse(SqliteConnection& connection) : connection_(connection) {
    connection_.inUse_.lock();
    try {
      if (connection_.depth_ == 0) {
        connection_.open();
        connection_.furnish();
      }
    } catch (...) {
      connection_.inUse_.unlock();
      throw;
    }
    ++connection_.depth_;
  }
  ~InUse() {
    --connection_.depth_;
    if (connection_.isStale()) connection_.close();
    connection_.inUse_.unlock();
  }
  InUse(const InUse&) = delete;
  InUse& operator=(const InUse&) = delete;

 private:
  SqliteConnection& connection_;
};

SqliteConnection::SqliteConnection(const QString& path, Access access, bool immutable,
                                   const std::function<void(SqliteConnection&)>& furnish)
    : path_(path), access_(access), immutable_(immutable), furnishing_(furnish) {
  const QMutexLocker inUse(&inUse_);
  open();
}

SqliteConnection::~SqliteConnection() {
  const QMutexLocker inUse(&inUse_);
  close();
}

/// A transaction under way ends first: its commit tells that the log is lost.
bool SqliteConnection::isStale() const {
  return handle_ && file_->isLost() && depth_ == 0 && !inTransaction();
}

/// Does nothing where the handle stands on a log that is still there.
void SqliteConnection::open() {
  if (isStale()) close();
  if (handle_) return;
  if (file_) file_->recover();
  findFile();
  file_->recover();  // another one's loss
  openHandle();
  // Learning the tables costs more than all else, and many a line never needs them. One look at the file
  // takes the locks that a connection on the log holds while it stands.
  makeReady([this] {
    if (file_->isLogKnown())
      value("PRAGMA schema_version");
    else
      furnish();
  });
}

/// Half ready is not at all: the handle is closed then, and the next need opens it anew.
void SqliteConnection::makeReady(const std::function<void()>& body) {
  ++depth_;  // what runs here are statements, too
  try {
    body();
  } catch (...) {
    --depth_;
    close();
    throw;
  }
  --depth_;
}

void SqliteConnection::findFile() {
  // Made before the engine opens it: only a file that is there can be held.
  if (file_ && access_ == Access::Create) access_ = Access::ReadWrite;  // it is made once
  if (access_ == Access::Create) QFile(path_).open(QIODevice::WriteOnly | QIODevice::NewOnly);
  file_ = SqliteFile::at(path_);
}

void SqliteConnection::openHandle() {
  QByteArray name = path_.toUtf8();
  if (immutable_) name = QUrl::fromLocalFile(path_).toEncoded() + "?immutable=1";
  handle_ = file_->join(*this, [&] {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(name.constData(), &opened,
                                       openFlags(access_) | (immutable_ ? SQLITE_OPEN_URI : 0), nullptr);
    if (!opened) throw sqlite::errorOf(SQLITE_NOMEM, {});
    if (result == SQLITE_OK) return opened;
    const Error error = sqlite::errorOf(sqlite3_extended_errcode(opened), sqlite3_errmsg(opened));
    sqlite3_close_v2(opened);
    throw error;
  });
  sqlite3_extended_result_codes(handle_, 1);
  sqlite3_busy_timeout(handle_, kBusyMilliseconds);
}

void SqliteConnection::furnish() {
  if (std::exchange(furnished_, true)) return;
  makeReady([this] {
    furnishing_(*this);
    if (immutable_ || value("PRAGMA journal_mode").toString() != "wal") return;
    value("PRAGMA schema_version");
    file_->noteLog(handle_);
  });
}

void SqliteConnection::close() {
  statements_.clear();
  furnished_ = false;
  if (handle_) file_->leave(*this, std::exchange(handle_, nullptr));
}

void SqliteConnection::closeWhenIdle() {
  if (!inUse_.tryLock()) return;
  if (isStale()) close();
  inUse_.unlock();
}

void SqliteConnection::beforeCommit() {
  { const InUse opened(*this); }
  afterCommit();
}

void SqliteConnection::afterCommit() {
  if (isLogThere()) return;
  file_->lose();
  throw Error(errors::kConnectionLost,
              QString("Die Datei »%1« oder ihre Protokolldatei (-wal) wurde von außen entfernt oder "
                      "ersetzt. Was gerade gespeichert wurde, ist nicht sicher gespeichert. Beim "
                      "Wiederholen wird die Datei neu geöffnet und es wird noch einmal gespeichert.")
                  .arg(QFileInfo(path_).fileName()));
}

void SqliteConnection::fail() const {
  throw sqlite::errorOf(sqlite3_extended_errcode(handle()), QString::fromUtf8(sqlite3_errmsg(handle())));
}

bool SqliteConnection::inTransaction() const {
  return handle_ && sqlite3_get_autocommit(handle_) == 0;
}

SqliteConnection::Statement SqliteConnection::prepared(const QString& text) {
  if (const auto found = statements_.constFind(text); found != statements_.cend()) return *found;
  const QByteArray utf8 = text.toUtf8();
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v3(handle(), utf8.constData(), static_cast<int>(utf8.size()) + 1,
                         SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK)
    fail();
  Statement kept(statement, Finalize());
  if (statements_.size() >= kKeptStatements) statements_.clear();
  statements_.insert(text, kept);
  return kept;
}

void SqliteConnection::read(const QString& text, const QVariantList& values,
                            const std::function<bool(const QVariantList&)>& take) {
  const InUse inUse(*this);
  const Statement statement = prepared(text);
  Bound bound(statement.get());
  if (!bound.bind(values)) fail();
  QVariantList row(sqlite3_column_count(statement.get()));
  for (;;) {
    const int result = sqlite3_step(statement.get());
    if (result == SQLITE_DONE) return;
    if (result != SQLITE_ROW) fail();
    for (int i = 0; i < row.size(); ++i) row[i] = columnValue(statement.get(), i);
    if (!take(row)) return;
  }
}

QVariant SqliteConnection::value(const QString& text, const QVariantList& values) {
  QVariant found;
  read(text, values, [&](const QVariantList& row) {
    found = row.first();
    return false;
  });
  return found;
}

void SqliteConnection::run(const QString& text, const QVariantList& values) {
  const Statement statement = prepared(text);
  Bound bound(statement.get());
  if (!bound.bind(values)) fail();
  int result = SQLITE_ROW;
  while (result == SQLITE_ROW) result = sqlite3_step(statement.get());
  if (result != SQLITE_DONE) fail();
}

int SqliteConnection::write(const QString& text, const QVariantList& values) {
  const InUse inUse(*this);
  run(text, values);
  return sqlite3_changes(handle());
}

qint64 SqliteConnection::insert(const QString& text, const QVariantList& values) {
  const InUse inUse(*this);
  run(text, values);
  return sqlite3_last_insert_rowid(handle());
}

}  // namespace qk::dao
